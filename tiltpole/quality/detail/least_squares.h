#pragma once

// Least squares of a few unknowns, by the normal equations.

#include <array>
#include <cmath>
#include <cstddef>

namespace tiltpole::detail {

// Collects observations row * x = value, then gives x and the inverse of the normal matrix, from
// which the covariance of x follows. Callers scale their unknowns to about the same size.
template <std::size_t N>
class LeastSquares {
 public:
  using Row = std::array<double, N>;

  void Add(const Row& row, double value) {
    for (std::size_t i = 0; i < N; ++i) {
      right_[i] += row[i] * value;
      for (std::size_t j = i; j < N; ++j) normal_[i][j] += row[i] * row[j];
    }
  }

  // False, with nothing solved, when the observations do not tell all unknowns.
  bool Solve() {
    std::array<Row, N> left = normal_;
    for (std::size_t i = 0; i < N; ++i) {
      for (std::size_t j = 0; j < i; ++j) left[i][j] = left[j][i];
    }
    for (std::size_t i = 0; i < N; ++i) inverse_[i] = Row{};
    for (std::size_t i = 0; i < N; ++i) inverse_[i][i] = 1.0;
    for (std::size_t k = 0; k < N; ++k) {
      if (!Eliminate(left, k)) return false;
    }
    for (std::size_t i = 0; i < N; ++i) {
      x_[i] = 0.0;
      for (std::size_t j = 0; j < N; ++j) x_[i] += inverse_[i][j] * right_[j];
    }
    return true;
  }

  const Row& Solution() const { return x_; }
  const std::array<Row, N>& Inverse() const { return inverse_; }

 private:
  // The normal matrix is positive definite when all unknowns are told, so the diagonal serves as
  // pivot; one that has lost all but rounding means they are not.
  bool Eliminate(std::array<Row, N>& left, std::size_t k) {
    constexpr double kSmallestPivotShare = 1e-12;
    const double pivot = left[k][k];
    if (!(pivot > kSmallestPivotShare * normal_[k][k])) return false;
    for (std::size_t j = 0; j < N; ++j) {
      left[k][j] /= pivot;
      inverse_[k][j] /= pivot;
    }
    for (std::size_t i = 0; i < N; ++i) {
      if (i == k) continue;
      const double factor = left[i][k];
      for (std::size_t j = 0; j < N; ++j) {
        left[i][j] -= factor * left[k][j];
        inverse_[i][j] -= factor * inverse_[k][j];
      }
    }
    return true;
  }

  std::array<Row, N> normal_{};  // its upper half; the lower one mirrors it
  std::array<Row, N> inverse_{};
  Row right_{};
  Row x_{};
};

template <std::size_t N>
double DotRows(const std::array<double, N>& a, const std::array<double, N>& b) {
  double sum = 0.0;
  for (std::size_t i = 0; i < N; ++i) sum += a[i] * b[i];
  return sum;
}

// row^T * matrix * row: the variance of what the row forms from the unknowns.
template <std::size_t N>
double QuadraticForm(const std::array<std::array<double, N>, N>& matrix,
                     const std::array<double, N>& row) {
  double sum = 0.0;
  for (std::size_t i = 0; i < N; ++i) sum += row[i] * DotRows(matrix[i], row);
  return sum;
}

}  // namespace tiltpole::detail
