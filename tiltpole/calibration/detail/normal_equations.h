#pragma once

// The least-squares solution x = MatInv(AtA) * (At b) of a fit with few unknowns, on the stack.
//
// Every step and its order is that of CSZMatrix::MatInv and of the matrix product, so the results
// are the same bits; a test compares them. Only the size is known to the compiler here, and nothing
// is allocated.

#include <cmath>
#include <cstddef>
#include <utility>

namespace tiltpole::detail {

template <std::size_t N>
struct Square {
  double at[N][N];
};

template <std::size_t N>
struct Column {
  double at[N];
};

/// Inverts in place by Gauss-Jordan elimination with complete pivoting.
/// @return false if the matrix counts as singular: its largest element left vanishes beside 1.
template <std::size_t N>
bool Invert(Square<N>& matrix) {
  auto& w = matrix.at;
  std::size_t pivotRow[N];
  std::size_t pivotColumn[N];
  for (std::size_t k = 0; k < N; ++k) {
    double largest = 0.0;
    for (std::size_t i = k; i < N; ++i) {
      for (std::size_t j = k; j < N; ++j) {
        const double size = std::fabs(w[i][j]);
        if (size > largest) {
          largest = size;
          pivotRow[k] = i;
          pivotColumn[k] = j;
        }
      }
    }
    if (largest + 1.0 == 1.0) return false;
    if (pivotRow[k] != k) {
      for (std::size_t j = 0; j < N; ++j) std::swap(w[k][j], w[pivotRow[k]][j]);
    }
    if (pivotColumn[k] != k) {
      for (std::size_t i = 0; i < N; ++i) std::swap(w[i][k], w[i][pivotColumn[k]]);
    }
    w[k][k] = 1.0 / w[k][k];
    for (std::size_t j = 0; j < N; ++j) {
      if (j != k) w[k][j] = w[k][j] * w[k][k];
    }
    for (std::size_t i = 0; i < N; ++i) {
      if (i == k) continue;
      for (std::size_t j = 0; j < N; ++j) {
        if (j != k) w[i][j] = w[i][j] - w[i][k] * w[k][j];
      }
    }
    for (std::size_t i = 0; i < N; ++i) {
      if (i != k) w[i][k] = -w[i][k] * w[k][k];
    }
  }
  for (std::size_t k = N; k-- > 0;) {
    if (pivotColumn[k] != k) {
      for (std::size_t j = 0; j < N; ++j) std::swap(w[k][j], w[pivotColumn[k]][j]);
    }
    if (pivotRow[k] != k) {
      for (std::size_t i = 0; i < N; ++i) std::swap(w[i][k], w[i][pivotRow[k]]);
    }
  }
  return true;
}

/// The inverse of normal equations, kept for as many right-hand sides as need it.
template <std::size_t N>
class NormalInverse {
 public:
  explicit NormalInverse(const Square<N>& AtA) : inverse_(AtA), regular_(Invert(inverse_)) {}

  /// The solution for one right-hand side.
  ///
  /// Deliberate: where AtA is singular the result is At b itself, because the matrix product with
  /// an empty inverse is a size mismatch and gives back its right factor. A degenerate turn is
  /// judged by these numbers, so they must be the same.
  Column<N> Solve(const Column<N>& Atb) const {
    if (!regular_) return Atb;
    Column<N> x;
    for (std::size_t i = 0; i < N; ++i) {
      double sum = 0.0;
      for (std::size_t k = 0; k < N; ++k) sum += inverse_.at[i][k] * Atb.at[k];
      x.at[i] = sum;
    }
    return x;
  }

 private:
  Square<N> inverse_;
  bool regular_;
};

}  // namespace tiltpole::detail
