// Inverses, transposes and the Cholesky factor.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>

#include "tiltpole/matrix/CSZMatrix.h"
#include "tiltpole/matrix/detail/pair.h"

namespace tiltpole {
namespace {

using detail::Load;
using detail::Pair;
using detail::Store;

// The larger magnitude; one that is not a number never wins.
template <class Lanes>
Lanes LargerMagnitude(Lanes value, Lanes largest) {
  const Lanes magnitude = detail::Magnitude(value);
  return magnitude > largest ? magnitude : largest;
}

double LargestMagnitude(const double* from, const double* end) {
  Pair largest = {};
#pragma GCC unroll 4
  for (; from + 2 <= end; from += 2) largest = LargerMagnitude(Load<Pair>(from), largest);
  const double pairs = LargerMagnitude<double>(largest[0], largest[1]);
  return from < end ? LargerMagnitude(*from, pairs) : pairs;
}

// Element by element, so pairs keep the bits.
void SubtractMultiple(double* row, double factor, const double* other, std::size_t count) {
  std::size_t j = 0;
#pragma GCC unroll 4
  for (; j + 2 <= count; j += 2) {
    Store(row + j, Load<Pair>(row + j) - factor * Load<Pair>(other + j));
  }
  if (j < count) row[j] -= factor * other[j];
}

// Gauss-Jordan elimination in the place of the matrix, with complete pivoting.
class GaussJordan {
 public:
  GaussJordan(double* elements, std::uint32_t order) : elements_(elements), order_(order) {
    if (order <= kFewPivots) return;
    many_pivots_.reset(new (std::nothrow) Pivot[order]);
    pivots_ = many_pivots_.get();
  }

  // False for a singular matrix, and when there is no room to note the pivots.
  bool Invert() {
    if (pivots_ == nullptr) return false;
    for (std::uint32_t i = 0; i < order_; ++i) ConsiderRow(i, 0);
    for (std::uint32_t k = 0; k < order_; ++k) {
      // Deliberate: the limit is absolute, not scaled by the matrix. A host sees one of tiny
      // elements come back as singular.
      if (largest_ + 1.0 == 1.0) return false;
      SwapRows(k, pivots_[k].row);
      SwapColumns(k, pivots_[k].column);
      Eliminate(k);
    }
    for (std::uint32_t k = order_; k-- > 0;) {
      SwapRows(k, pivots_[k].column);
      SwapColumns(k, pivots_[k].row);
    }
    return true;
  }

 private:
  struct Pivot {
    std::uint32_t row;
    std::uint32_t column;
  };
  // Up to this order the pivots need no allocation, a good part of the cost of a small inverse.
  static constexpr std::uint32_t kFewPivots = 32;

  double* Row(std::uint32_t i) { return elements_ + static_cast<std::size_t>(i) * order_; }

  // Looks in row i for the pivot of step k. Rows come in their order and only a larger element
  // replaces the largest, so the first of several equal ones becomes the pivot.
  void ConsiderRow(std::uint32_t i, std::uint32_t k) {
    const double* const row = Row(i);
    const double size = LargestMagnitudeFrom(row, k);
    if (!(size > largest_)) return;
    largest_ = size;
    std::uint32_t j = k;
    while (std::fabs(row[j]) != size) ++j;
    pivots_[k] = {i, j};
  }

  // Loads the pairs that the elimination stored, from an even column on: what was stored in other
  // pieces is slow to load.
  double LargestMagnitudeFrom(const double* row, std::uint32_t column) {
    const std::uint32_t odd = column % 2;
    const double size = LargestMagnitude(row + column + odd, row + order_);
    return odd == 1 ? LargerMagnitude(row[column], size) : size;
  }

  void SwapRows(std::uint32_t a, std::uint32_t b) {
    if (a != b) std::swap_ranges(Row(a), Row(a) + order_, Row(b));
  }

  void SwapColumns(std::uint32_t a, std::uint32_t b) {
    if (a == b) return;
    for (std::uint32_t i = 0; i < order_; ++i) std::swap(Row(i)[a], Row(i)[b]);
  }

  void Eliminate(std::uint32_t k) {
    double* const pivot_row = Row(k);
    const double inverse = 1.0 / pivot_row[k];
    for (std::uint32_t j = 0; j < order_; ++j) pivot_row[j] *= inverse;
    pivot_row[k] = inverse;
    largest_ = 0.0;
    for (std::uint32_t i = 0; i < order_; ++i) {
      if (i == k) continue;
      double* const row = Row(i);
      const double factor = row[k];
      SubtractMultiple(row, factor, pivot_row, order_);
      row[k] = -factor * inverse;
      // The next pivot is looked for while the row is at hand.
      if (i > k) ConsiderRow(i, k + 1);
    }
  }

  double* elements_;
  std::uint32_t order_;
  double largest_ = 0.0;
  std::array<Pivot, kFewPivots> few_pivots_;
  std::unique_ptr<Pivot[]> many_pivots_;
  Pivot* pivots_ = few_pivots_.data();
};

// The three steps of the inverse through the factor A = transpose(U) * U, in the upper triangle of
// the result. The counters are the cursors of the matrix that is inverted.
void FactorUpper(CSZMatrix& r, std::uint32_t& i, std::uint32_t& j) {
  const std::uint32_t n = r.GetRow();
  for (i = 0; i < n; ++i) {
    for (j = i; j < n; ++j) {
      double rest = r.GetData(i, j);
      for (std::uint32_t k = 0; k < i; ++k) rest -= r.GetData(k, i) * r.GetData(k, j);
      r.SetData(i, j, j == i ? std::sqrt(rest) : rest / r.GetData(i, i));
    }
  }
}

void InvertUpper(CSZMatrix& r, std::uint32_t& i, std::uint32_t& j) {
  const std::uint32_t n = r.GetRow();
  for (i = 0; i < n; ++i) {
    r.SetData(i, i, 1.0 / r.GetData(i, i));
    for (j = i + 1; j < n; ++j) {
      double sum = 0.0;
      for (std::uint32_t k = i; k < j; ++k) sum -= r.GetData(i, k) * r.GetData(k, j);
      r.SetData(i, j, sum / r.GetData(j, j));
    }
  }
}

void MultiplyByTranspose(CSZMatrix& r, std::uint32_t& i, std::uint32_t& j) {
  const std::uint32_t n = r.GetRow();
  for (i = 0; i < n; ++i) {
    for (j = i; j < n; ++j) {
      double sum = 0.0;
      for (std::uint32_t k = j; k < n; ++k) sum += r.GetData(i, k) * r.GetData(j, k);
      r.SetData(i, j, sum);
    }
  }
}

}  // namespace

CSZMatrix CSZMatrix::MatInv() const {
  // Deliberate: the flag reads 0 after every inversion; a host looks at the rows of the result.
  m_bOK = 0;
  if (!IsSquare()) return CSZMatrix(m_nRow, m_nCol);
  CSZMatrix inverse(*this);
  if (inverse.m_pData == nullptr) return inverse;
  if (!GaussJordan(inverse.m_pData, m_nCol).Invert()) return CSZMatrix();
  return inverse;
}

CSZMatrix CSZMatrix::operator~() const { return MatInv(); }

CSZMatrix CSZMatrix::Reverse() const {
  m_bOK = 0;
  if (!IsSquare()) return CSZMatrix(m_nRow, m_nCol);
  CSZMatrix r(*this);
  m_bOK = 1;
  if (r.m_pData == nullptr) {
    EndWalk();
  } else if (m_nRow == 1) {
    r.SetData(0, 0, 1.0 / GetData(0, 0));
  } else if (m_nRow == 2) {
    const double det = GetData(0, 0) * GetData(1, 1) - GetData(0, 1) * GetData(1, 0);
    r.SetData(0, 0, GetData(1, 1) / det);
    r.SetData(0, 1, -GetData(0, 1) / det);
    r.SetData(1, 0, -GetData(1, 0) / det);
    r.SetData(1, 1, GetData(0, 0) / det);
  } else {
    FactorUpper(r, m_i, m_j);
    InvertUpper(r, m_i, m_j);
    MultiplyByTranspose(r, m_i, m_j);
    r.Symmetry();
    EndWalk();
  }
  return r;
}

CSZMatrix CSZMatrix::T() const {
  CSZMatrix transpose(m_nCol, m_nRow);
  if (LacksStorage()) transpose.BecomeWithoutStorage();
  if (m_pData != nullptr && transpose.m_pData != nullptr) {
    for (std::uint32_t i = 0; i < m_nRow; ++i) {
      for (std::uint32_t j = 0; j < m_nCol; ++j) {
        transpose.m_pData[transpose.Position(j, i)] = GetData(i, j);
      }
    }
  }
  EndWalk();
  return transpose;
}

CSZMatrix CSZMatrix::MatTran() const { return T(); }

CSZMatrix CSZMatrix::matChole(int* ok) const {
  *ok = 1;
  // Deliberate: the only place of the class that does not return; hosts see the exit status.
  if (!IsSquare()) std::exit(-4);
  CSZMatrix lower(m_nCol, m_nCol);
  if (LacksStorage()) lower.BecomeWithoutStorage();
  if (m_pData == nullptr || lower.m_pData == nullptr) return lower;
  for (std::uint32_t i = 0; i < m_nCol; ++i) {
    for (std::uint32_t j = i; j < m_nCol; ++j) {
      double rest = GetData(i, j);
      for (std::uint32_t k = i; k-- > 0;) rest -= lower.GetData(i, k) * lower.GetData(j, k);
      if (i != j) {
        lower.SetData(j, i, rest / lower.GetData(i, i));
      } else if (rest <= 0.0) {
        *ok = 0;
        lower.Diagonal(1.0);
        return lower;
      } else {
        lower.SetData(i, i, std::sqrt(rest));
      }
    }
  }
  return lower;
}

}  // namespace tiltpole
