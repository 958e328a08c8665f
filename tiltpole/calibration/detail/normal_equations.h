#pragma once

// The least-squares solution x = MatInv(AtA) * (At b) of a fit with few unknowns, on the stack.
//
// Every step and its order is that of CSZMatrix::MatInv and of the matrix product, so the results
// are the same bits; a test compares them. Only the size is known to the compiler here, and nothing
// is allocated.
//
// An element is a double, or a vector of doubles that belong to as many systems, solved side by
// side: each lane has its own numbers and takes the steps that it would take alone. Or it is a
// Bounded of these; then the result bounds that of all systems within the bounds.

#include <cstddef>
#include <type_traits>
#include <utility>

#include "tiltpole/calibration/detail/bounded.h"
#include "tiltpole/calibration/detail/lane_conditions.h"
#include "tiltpole/matrix/detail/lanes.h"

namespace tiltpole::detail {

template <std::size_t N, class Element = double>
struct Square {
  Element at[N][N];
};

template <std::size_t N, class Element = double>
struct Column {
  Element at[N];
};

/// Inverts in place by Gauss-Jordan elimination with complete pivoting.
template <std::size_t N, class Element>
class Inversion {
 public:
  /// @return false if the matrix counts as singular: its largest element left vanishes beside 1.
  ///         Of matrices side by side, also if they do not all choose the same pivots; each must
  ///         then be inverted alone. Of bounded elements, also if they leave open which pivots are
  ///         chosen.
  static bool Invert(Square<N, Element>& matrix) {
    return Inversion(matrix).Run(std::make_index_sequence<N>());
  }

 private:
  using Size = decltype(Magnitude(Element()));

  explicit Inversion(Square<N, Element>& matrix) : w_(matrix.at) {}

  // The steps are written out one by one, so that the compiler knows the bounds of every loop.
  template <std::size_t... K>
  bool Run(std::index_sequence<K...>) {
    const bool regular = (Eliminate<K>() && ...);
    if (regular) (UndoInterchange<N - 1 - K>(), ...);
    return regular;
  }

  template <std::size_t K>
  bool Eliminate() {
    const Size largest = Largest<K>();
    if (InAny(largest + 1.0 == 1.0) || !FindPivot<K>(largest) || !PivotIsSure<K>()) return false;
    if (pivotRow_[K] != K) SwapRows(K, pivotRow_[K]);
    if (pivotColumn_[K] != K) SwapColumns(K, pivotColumn_[K]);
    // Row and column K are worked out whole and their pivot entries set right afterwards: loops
    // without a gap turn into vectors.
    const Element pivot = 1.0 / w_[K][K];
    for (std::size_t j = 0; j < N; ++j) w_[K][j] = w_[K][j] * pivot;
    w_[K][K] = pivot;
    for (std::size_t i = 0; i < N; ++i) {
      if (i == K) continue;
      const Element factor = w_[i][K];
      for (std::size_t j = 0; j < N; ++j) w_[i][j] = w_[i][j] - factor * w_[K][j];
      w_[i][K] = -factor * pivot;
    }
    return true;
  }

  /// The largest absolute value from row and column K on, 0 at least; NaN never is the largest.
  /// Column by column, so that the comparisons need not wait for each other.
  template <std::size_t K>
  Size Largest() const {
    Size inColumn[N] = {};
    for (std::size_t i = K; i < N; ++i) {
      for (std::size_t j = K; j < N; ++j) {
        const Size size = Magnitude(w_[i][j]);
        inColumn[j] = size > inColumn[j] ? size : inColumn[j];
      }
    }
    Size largest = {};
    for (std::size_t j = K; j < N; ++j) largest = inColumn[j] > largest ? inColumn[j] : largest;
    return largest;
  }

  /// Where, row by row, that value comes first.
  /// @return whether it does so at the same place for all
  template <std::size_t K>
  bool FindPivot(const Size& largest) {
    auto earlier = largest != largest;  // nowhere: the largest is never NaN
    for (std::size_t i = K; i < N; ++i) {
      for (std::size_t j = K; j < N; ++j) {
        const auto here = Magnitude(w_[i][j]) == largest;
        if (InFirst(here)) {
          pivotRow_[K] = i;
          pivotColumn_[K] = j;
          return InAll(here) && !InAny(earlier);
        }
        earlier = earlier | here;
      }
    }
    return false;
  }

  /// Whether all numbers within the bounds choose the same pivot, and none count as singular. Where
  /// two elements may be equal the choice is open; so an element beside the diagonal, which has a
  /// twin, is never sure.
  template <std::size_t K>
  bool PivotIsSure() const {
    if constexpr (std::is_same_v<Size, Element>) {
      return true;
    } else {
      const Element& pivot = w_[pivotRow_[K]][pivotColumn_[K]];
      const Size least = Magnitude(pivot) - pivot.error * kBoundSlack;
      auto sure = least > kRounding;
      for (std::size_t i = K; i < N; ++i) {
        for (std::size_t j = K; j < N; ++j) {
          if (i == pivotRow_[K] && j == pivotColumn_[K]) continue;
          sure = sure & (Magnitude(w_[i][j]) + w_[i][j].error * kBoundSlack < least);
        }
      }
      return InAll(sure);
    }
  }

  template <std::size_t K>
  void UndoInterchange() {
    if (pivotColumn_[K] != K) SwapRows(K, pivotColumn_[K]);
    if (pivotRow_[K] != K) SwapColumns(K, pivotRow_[K]);
  }

  void SwapRows(std::size_t a, std::size_t b) {
    for (std::size_t j = 0; j < N; ++j) std::swap(w_[a][j], w_[b][j]);
  }

  void SwapColumns(std::size_t a, std::size_t b) {
    for (std::size_t i = 0; i < N; ++i) std::swap(w_[i][a], w_[i][b]);
  }

  Element (&w_)[N][N];
  std::size_t pivotRow_[N] = {};
  std::size_t pivotColumn_[N] = {};
};

/// The inverse of normal equations, kept for as many right-hand sides as need it.
template <std::size_t N, class Element = double>
class NormalInverse {
 public:
  explicit NormalInverse(const Square<N, Element>& AtA)
      : inverse_(AtA), regular_(Inversion<N, Element>::Invert(inverse_)) {}

  /// Whether there is an inverse; side by side, whether there is one for all.
  bool IsRegular() const { return regular_; }

  /// The solution for one right-hand side.
  ///
  /// Deliberate: where AtA is singular the result is At b itself, because the matrix product with
  /// an empty inverse is a size mismatch and gives back its right factor. A degenerate turn is
  /// judged by these numbers, so they must be the same.
  Column<N, Element> Solve(const Column<N, Element>& Atb) const {
    if (!regular_) return Atb;
    Column<N, Element> x;
    for (std::size_t i = 0; i < N; ++i) {
      Element sum = {};
      for (std::size_t k = 0; k < N; ++k) sum += inverse_.at[i][k] * Atb.at[k];
      x.at[i] = sum;
    }
    return x;
  }

 private:
  Square<N, Element> inverse_;
  bool regular_;
};

}  // namespace tiltpole::detail
