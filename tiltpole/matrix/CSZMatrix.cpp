// Storage, sizes and element-wise arithmetic.

#include "tiltpole/matrix/CSZMatrix.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <new>

namespace tiltpole {
namespace {

// Not filled; null when there is nothing to store, or no room for it.
double* NewElements(std::uint32_t rows, std::uint32_t cols) {
  // The product of two such counts fits 64 bits; what a machine can address is less on many.
  constexpr std::uint64_t kMostElements =
      std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
  const std::uint64_t count = std::uint64_t{rows} * cols;
  if (count == 0 || count > kMostElements) return nullptr;
  return new (std::nothrow) double[static_cast<std::size_t>(count)];
}

std::uint32_t InclusiveCount(int first, int last) {
  const std::int64_t count = std::int64_t{last} - first + 1;
  return static_cast<std::uint32_t>(
      std::clamp<std::int64_t>(count, 0, std::numeric_limits<std::uint32_t>::max()));
}

std::wstring RightAligned(double value) {
  constexpr std::size_t kWidth = 10;
  // The longest double has 309 digits before the point, beside the sign, the point and 3 decimals.
  char digits[320];
  char* const end =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, 3).ptr;
  const auto length = static_cast<std::size_t>(end - digits);
  std::wstring text(length < kWidth ? kWidth - length : 0, L' ');
  text.append(digits, end);
  return text;
}

}  // namespace

// A walk over the elements ends with the cursors behind the last row and column; without a row the
// column cursor is never set.
void CSZMatrix::EndWalk() const {
  m_i = m_nRow;
  if (m_nRow > 0) m_j = m_nCol;
}

void CSZMatrix::Obtain(unsigned int rows, unsigned int cols) {
  m_pData = NewElements(rows, cols);
  m_nRow = rows;
  m_nCol = cols;
}

void CSZMatrix::Release() {
  delete[] m_pData;
  m_pData = nullptr;
}

void CSZMatrix::BecomeWithoutStorage() {
  Release();
  m_bOK = 0;
}

void CSZMatrix::TakeFrom(CSZMatrix& other) {
  m_pData = other.m_pData;
  m_nRow = other.m_nRow;
  m_nCol = other.m_nCol;
  other.m_pData = nullptr;
  other.m_nRow = 0;
  other.m_nCol = 0;
}

CSZMatrix::CSZMatrix(unsigned int n) : CSZMatrix(n, 1) {}

CSZMatrix::CSZMatrix(unsigned int rows, unsigned int cols)
    : CSZMatrix(rows, cols, Elements::Unfilled) {
  std::fill_n(m_pData, StoredElements(), 0.0);
}

CSZMatrix::CSZMatrix(unsigned int rows, unsigned int cols, Elements /*unfilled*/) {
  Obtain(rows, cols);
  m_bOK = m_pData != nullptr ? 1 : 0;
}

CSZMatrix::CSZMatrix(const CSZMatrix& other) {
  m_nRow = other.m_nRow;
  m_nCol = other.m_nCol;
  if (other.m_pData == nullptr) return;
  Obtain(other.m_nRow, other.m_nCol);
  if (m_pData == nullptr) return;
  std::copy_n(other.m_pData, StoredElements(), m_pData);
  EndWalk();
  m_bOK = 1;
}

CSZMatrix::CSZMatrix(CSZMatrix&& other) noexcept
    : m_i(other.m_i), m_j(other.m_j), m_bOK(other.m_bOK) {
  TakeFrom(other);
}

int CSZMatrix::Alloc(unsigned int n) { return Alloc(n, 1); }

int CSZMatrix::Alloc(unsigned int rows, unsigned int cols) {
  if (rows == 0 || cols == 0) return 0;
  Release();
  Obtain(rows, cols);
  std::fill_n(m_pData, StoredElements(), 0.0);
  m_bOK = m_pData != nullptr ? 1 : 0;
  return 1;
}

void CSZMatrix::operator=(double v) {
  std::fill_n(m_pData, StoredElements(), v);
  EndWalk();
}

int CSZMatrix::operator=(const CSZMatrix& other) {
  if (this != &other) {
    if (!SameSize(other) || other.m_pData == nullptr) Release();
    m_nRow = other.m_nRow;
    m_nCol = other.m_nCol;
    if (m_pData == nullptr && other.m_pData != nullptr) Obtain(m_nRow, m_nCol);
    if (m_pData != nullptr) std::copy_n(other.m_pData, StoredElements(), m_pData);
  }
  return EndAssignment();
}

int CSZMatrix::operator=(CSZMatrix&& other) noexcept {
  if (this == &other) return *this = static_cast<const CSZMatrix&>(other);
  Release();
  TakeFrom(other);
  return EndAssignment();
}

// Where there is nothing to store, nothing can fail.
int CSZMatrix::EndAssignment() const {
  if (m_pData == nullptr && !HasZeroCount()) return 0;
  EndWalk();
  return 1;
}

CSZMatrix CSZMatrix::operator+(const CSZMatrix& b) const {
  m_bOK = SameSize(b) ? 1 : 0;
  if (m_bOK == 0) return b;
  CSZMatrix sum(*this);
  sum += b;
  if (b.LacksStorage()) sum.BecomeWithoutStorage();
  EndWalk();
  return sum;
}

CSZMatrix CSZMatrix::operator-(const CSZMatrix& b) const {
  m_bOK = SameSize(b) ? 1 : 0;
  if (m_bOK == 0) return b;
  CSZMatrix difference(*this);
  difference -= b;
  if (b.LacksStorage()) difference.BecomeWithoutStorage();
  EndWalk();
  return difference;
}

CSZMatrix CSZMatrix::operator+(double s) const {
  CSZMatrix sum(*this);
  sum += s;
  EndWalk();
  m_bOK = 1;
  return sum;
}

CSZMatrix CSZMatrix::operator-(double s) const {
  CSZMatrix difference(*this);
  difference -= s;
  EndWalk();
  m_bOK = 1;
  return difference;
}

CSZMatrix CSZMatrix::operator*(double s) const {
  CSZMatrix scaled(*this);
  for (std::size_t at = 0; at < scaled.StoredElements(); ++at) scaled.m_pData[at] *= s;
  EndWalk();
  m_bOK = 1;
  return scaled;
}

int CSZMatrix::operator+=(const CSZMatrix& b) {
  if (!SameSize(b)) return 0;
  const std::size_t count = std::min(StoredElements(), b.StoredElements());
  for (std::size_t at = 0; at < count; ++at) m_pData[at] += b.m_pData[at];
  EndWalk();
  return 1;
}

int CSZMatrix::operator-=(const CSZMatrix& b) {
  if (!SameSize(b)) return 0;
  const std::size_t count = std::min(StoredElements(), b.StoredElements());
  for (std::size_t at = 0; at < count; ++at) m_pData[at] -= b.m_pData[at];
  EndWalk();
  return 1;
}

int CSZMatrix::operator+=(double s) {
  for (std::size_t at = 0; at < StoredElements(); ++at) m_pData[at] += s;
  EndWalk();
  return 1;
}

int CSZMatrix::operator-=(double s) {
  for (std::size_t at = 0; at < StoredElements(); ++at) m_pData[at] -= s;
  EndWalk();
  return 1;
}

int CSZMatrix::Zeros() {
  if (HasZeroCount()) return 0;
  *this = 0.0;
  return 1;
}

int CSZMatrix::Diagonal(double v) {
  if (HasZeroCount()) return 0;
  const std::uint32_t order = std::min(m_nRow, m_nCol);
  for (m_i = 0; m_i < order; ++m_i) {
    for (m_j = 0; m_j < order; ++m_j) SetData(m_i, m_j, m_i == m_j ? v : 0.0);
  }
  return 1;
}

int CSZMatrix::Symmetry() {
  if (!IsSquare()) return 0;
  for (m_i = 0; m_i < m_nRow; ++m_i) {
    for (m_j = m_i; m_j < m_nCol && m_pData != nullptr; ++m_j) {
      SetData(m_j, m_i, GetData(m_i, m_j));
    }
  }
  return 1;
}

double CSZMatrix::Trace() const {
  m_bOK = IsSquare() ? 1 : 0;
  if (m_bOK == 0) return 0.0;
  double sum = 0.0;
  for (m_i = 0; m_i < m_nRow; ++m_i) {
    if (m_pData != nullptr) sum += GetData(m_i, m_i);
  }
  return sum;
}

// Deliberate: the name promises the sum of all elements, but a host gets the diagonal's, as from
// Trace().
double CSZMatrix::Summation() const { return Trace(); }

CSZMatrix CSZMatrix::Slice(int r0, int c0, int r1, int c1) const {
  CSZMatrix block(InclusiveCount(r0, r1), InclusiveCount(c0, c1));
  for (std::int64_t i = std::max(r0, 0); i <= r1 && i < m_nRow; ++i) {
    for (std::int64_t j = std::max(c0, 0); j <= c1 && j < m_nCol && m_pData != nullptr; ++j) {
      block.SetData(static_cast<std::uint32_t>(i - r0), static_cast<std::uint32_t>(j - c0),
                    GetData(static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j)));
    }
  }
  if (LacksStorage()) block.BecomeWithoutStorage();
  EndWalk();
  return block;
}

std::wstring CSZMatrix::Output() const {
  std::wstring text;
  for (std::uint32_t i = 0; i < m_nRow; ++i) {
    for (std::uint32_t j = 0; j < m_nCol && m_pData != nullptr; ++j) {
      text += RightAligned(GetData(i, j));
    }
    text += L",\r\n";
  }
  return text + L"\r\n";
}

}  // namespace tiltpole
