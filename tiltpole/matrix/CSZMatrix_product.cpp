// The matrix product.
//
// Every element is a sum of its own that starts at 0.0 and takes its terms in the order of k. The
// tiles below only carry several such sums at the same time, so they cannot change a bit.

#include <cstddef>

#include "tiltpole/matrix/CSZMatrix.h"
#include "tiltpole/matrix/detail/pair.h"

namespace tiltpole {
namespace {

using detail::Load;
using detail::Pair;
using detail::Store;

struct Factors {
  const double* a;
  const double* b;
  double* product;
  std::size_t depth;
  std::size_t columns;
};

// The sums of kRows rows and kWide times the lanes' columns, kept in registers over all of k.
template <class Lanes, std::size_t kRows, std::size_t kWide>
void Tile(const Factors& f, std::size_t row, std::size_t column) {
  constexpr std::size_t kLanes = detail::kLanesIn<Lanes>;
  const double* const a = f.a + row * f.depth;
  const double* b = f.b + column;
  Lanes sums[kRows][kWide] = {};
  for (std::size_t k = 0; k < f.depth; ++k, b += f.columns) {
    for (std::size_t j = 0; j < kWide; ++j) {
      const auto right = Load<Lanes>(b + j * kLanes);
      for (std::size_t i = 0; i < kRows; ++i) sums[i][j] += a[i * f.depth + k] * right;
    }
  }
  double* const product = f.product + row * f.columns + column;
  for (std::size_t i = 0; i < kRows; ++i) {
    for (std::size_t j = 0; j < kWide; ++j) {
      Store(product + i * f.columns + j * kLanes, sums[i][j]);
    }
  }
}

template <std::size_t kRows>
void RowBand(const Factors& f, std::size_t row) {
  std::size_t column = 0;
  for (; column + 4 <= f.columns; column += 4) Tile<Pair, kRows, 2>(f, row, column);
  for (; column + 2 <= f.columns; column += 2) Tile<Pair, kRows, 1>(f, row, column);
  for (; column < f.columns; ++column) Tile<double, kRows, 1>(f, row, column);
}

}  // namespace

CSZMatrix CSZMatrix::operator*(const CSZMatrix& b) const {
  // Deliberate: the flag reads 0 after every product, so a host cannot tell success by it.
  m_bOK = 0;
  if (m_nCol != b.m_nRow) return b;
  if (m_nCol == 0) return CSZMatrix(m_nRow, b.m_nCol);
  CSZMatrix product(m_nRow, b.m_nCol, Elements::Unfilled);
  if (LacksStorage() || b.LacksStorage()) {
    product.BecomeWithoutStorage();
    return product;
  }
  if (product.m_pData == nullptr) return product;
  const Factors factors{m_pData, b.m_pData, product.m_pData, m_nCol, b.m_nCol};
  std::size_t row = 0;
  for (; row + 4 <= m_nRow; row += 4) RowBand<4>(factors, row);
  switch (m_nRow - row) {
    case 3:
      RowBand<3>(factors, row);
      break;
    case 2:
      RowBand<2>(factors, row);
      break;
    case 1:
      RowBand<1>(factors, row);
      break;
    default:
      break;
  }
  return product;
}

}  // namespace tiltpole
