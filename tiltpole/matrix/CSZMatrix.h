#pragma once

/// @file
/// The dense matrix on which the magnetometer calibration and the Kalman filter work.

#include <cstddef>
#include <cstdint>
#include <string>

#include "tiltpole/export.h"

namespace tiltpole {

/// A rectangular array of doubles with value semantics: copies are deep, moves are cheap.
///
/// The class is forgiving rather than strict. Nothing throws or asserts (but for std::bad_alloc
/// from Output()); sizes that do not match are told by a 0 result, by the status flag #m_bOK of the
/// left operand, or by a copy of one operand in place of the result, as each operation says. The
/// one exception is matChole().
///
/// - Elements lie row by row: element (i, j) is `m_pData[i * m_nCol + j]`, indices from 0.
/// - Elements that were never set are 0.0.
/// - A matrix asked for with a zero count has no storage but reports the counts asked for. So does
///   one whose storage could not be obtained, with #m_bOK at 0. Operations treat both as having no
///   elements to read or write; only GetData() does not look. A matrix computed from elements that
///   found no storage has none either, so a host may look at the end of a calculation only.
/// - Copies, the element-wise operations, the transposes, Symmetry(), Slice(), Trace(), and
///   Reverse() from 3 x 3 on keep their place in the object's cursors #m_i and #m_j; the product,
///   MatInv(), matChole() and Output() leave them alone. Read-only operations set the status flag,
///   too; these three are `mutable`. So one matrix must not be used by two threads at once, not
///   even for reading.
/// - The order of all floating-point operations is fixed, so results are the same bits everywhere.
class TILTPOLE_EXPORT CSZMatrix {
 public:
  /// @name The parts of a matrix
  /// A host may read all of them. It changes sizes and storage only through the operations.
  /// @{
  double* m_pData = nullptr;  ///< the elements, owned; null when there is no storage
  std::uint32_t m_nRow = 0;   ///< number of rows
  std::uint32_t m_nCol = 0;   ///< number of columns
  /// Row cursor. After a walk it equals #m_nRow; after Diagonal() the order of the block.
  mutable std::uint32_t m_i = 0;
  /// Column cursor. After a walk over at least one row it equals #m_nCol; after Diagonal() the
  /// order of the block. Trace() leaves it alone.
  mutable std::uint32_t m_j = 0;
  /// Status of the last operation that sets it: 1 success, 0 failure or not yet set.
  mutable int m_bOK = 0;
  /// @}

  /// @name Construction
  /// @{

  /// An empty matrix: no storage, 0 rows, 0 columns.
  CSZMatrix() = default;

  /// A column vector.
  /// @param[in] n  number of rows. #m_bOK is 1 if the storage was obtained, else (and for 0) 0.
  explicit CSZMatrix(unsigned int n);

  /// A matrix of zeros. #m_bOK is 1 if the storage was obtained, else (and for a zero count) 0.
  CSZMatrix(unsigned int rows, unsigned int cols);

  /// A deep copy. #m_bOK is 1 if there were elements and they were copied, else 0.
  CSZMatrix(const CSZMatrix& other);

  /// Takes the other's storage, counts, cursors and flag as they are; @p other becomes empty.
  CSZMatrix(CSZMatrix&& other) noexcept;

  /// Gives the storage back.
  virtual ~CSZMatrix() { delete[] m_pData; }
  /// @}

  /// @name Size and elements
  /// @{

  /// Same as `Alloc(n, 1)`.
  int Alloc(unsigned int n);

  /// Gives the matrix a new size; the elements are lost and start at 0.0.
  ///
  /// @return 0 if a count is 0, and then nothing changes; else 1, also when the storage could not
  ///         be obtained, which only #m_bOK tells (1 obtained, 0 not).
  int Alloc(unsigned int rows, unsigned int cols);

  /// The number of rows, also where there is no storage.
  unsigned int GetRow() const { return m_nRow; }
  /// The number of columns, also where there is no storage.
  unsigned int GetCol() const { return m_nCol; }

  /// Element (i, j). Not checked: an index outside the matrix is undefined behaviour.
  double GetData(unsigned int i, unsigned int j) const { return m_pData[Position(i, j)]; }

  /// Element (i, 0), the i-th entry of a column vector. Not checked.
  double GetData(unsigned int i) const { return m_pData[Position(i, 0)]; }

  /// Stores @p v at (i, j).
  /// @return 1; 0 if the place is outside the matrix, and then nothing is written.
  int SetData(unsigned int i, unsigned int j, double v) {
    if (i >= m_nRow || j >= m_nCol || m_pData == nullptr) return 0;
    m_pData[Position(i, j)] = v;
    return 1;
  }

  /// Stores @p v at (i, 0).
  /// @return 1; 0 if there is no such row, and then nothing is written.
  int SetData(unsigned int i, double v) { return SetData(i, 0, v); }
  /// @}

  /// @name Assignment
  /// None of these touches #m_bOK.
  /// @{

  /// Every element becomes @p v; the size stays.
  void operator=(double v);

  /// Takes size and elements of @p other. The storage is kept where the sizes are equal.
  /// @return 1; 0 if storage could not be obtained (by this matrix now or by @p other before).
  int operator=(const CSZMatrix& other);

  /// Takes over the storage of @p other, which becomes empty; else as the copying assignment.
  int operator=(CSZMatrix&& other) noexcept;
  /// @}

  /// @name Arithmetic with a new matrix as its result
  /// @{

  /// Element-wise sum. #m_bOK of this is 1; if the sizes differ, it is 0 and the result is a copy
  /// of @p b.
  CSZMatrix operator+(const CSZMatrix& b) const;

  /// Element-wise difference this - b; flag and mismatch as with the sum.
  CSZMatrix operator-(const CSZMatrix& b) const;

  /// The matrix product this x b. If b's rows do not equal this's columns, a copy of @p b.
  ///
  /// #m_bOK of this is 0 afterwards in every case, so it does not tell whether the sizes matched.
  /// Cost: rows x columns of this x columns of b multiplications, one allocation.
  CSZMatrix operator*(const CSZMatrix& b) const;

  CSZMatrix operator+(double s) const;  ///< @p s added to every element; #m_bOK of this is 1
  CSZMatrix operator-(double s) const;  ///< @p s taken from every element; #m_bOK of this is 1
  CSZMatrix operator*(double s) const;  ///< every element times @p s; #m_bOK of this is 1
  /// @}

  /// @name Arithmetic in place
  /// None of these touches #m_bOK.
  /// @{
  int operator+=(const CSZMatrix& b);  ///< @return 1; 0 if the sizes differ (nothing changes)
  int operator-=(const CSZMatrix& b);  ///< @return 1; 0 if the sizes differ (nothing changes)
  int operator+=(double s);            ///< @return 1
  int operator-=(double s);            ///< @return 1
  /// @}

  /// @name The matrix as a whole
  /// @{

  /// Every element becomes 0.0.
  /// @return 1; 0 if a count is 0.
  int Zeros();

  /// Sets the leading m x m block, m the smaller count, to @p v on its diagonal and 0.0 beside it.
  /// What lies outside that block stays as it was.
  /// @return 1; 0 if a count is 0.
  int Diagonal(double v);

  /// Copies the upper triangle onto the lower.
  /// @return 1; 0 if the matrix is not square.
  int Symmetry();

  /// The sum of the diagonal, with #m_bOK = 1; if the matrix is not square 0.0, with #m_bOK = 0.
  double Trace() const;

  /// The same as Trace(): the sum of the diagonal, not of all elements.
  double Summation() const;

  /// The block of rows r0..r1 and columns c0..c1, both ends inclusive.
  ///
  /// The indices may lie outside this matrix; elements of the block without a counterpart are 0.0.
  /// A block that ends before it begins has a count of 0.
  CSZMatrix Slice(int r0, int c0, int r1, int c1) const;

  /// The matrix as text: each element in 10 characters with 3 decimals (`%10.3f`, with a point in
  /// every locale), `,\r\n` after each row and one more `\r\n` at the end.
  std::wstring Output() const;
  /// @}

  /// @name Inverses, transposes, Cholesky factor
  /// Three inverses with different demands. Each returns, for a matrix that is not square, one of
  /// the same size filled with 0.0 (also where the matrix itself found no storage), and leaves
  /// #m_bOK at 0.
  /// @{

  /// The inverse by Gauss-Jordan elimination in place with complete pivoting.
  ///
  /// The matrix counts as singular when the largest magnitude of the elements left, added to 1.0,
  /// gives 1.0. That test is absolute: a matrix whose elements all have magnitudes below 1.1e-16 is
  /// singular however well conditioned it is.
  ///
  /// @return the inverse; for a singular matrix one without rows and columns, and so too above
  /// order
  ///         32 where there is no room to note the pivots. #m_bOK of this is 0 afterwards in every
  ///         case, so look at the rows of the result.
  CSZMatrix MatInv() const;

  /// The same as MatInv().
  CSZMatrix operator~() const;

  /// The inverse of a symmetric positive-definite matrix through its Cholesky factor; for 1 x 1 and
  /// 2 x 2 the closed form, which holds for any invertible matrix.
  ///
  /// Only the upper triangle is read from 3 x 3 on. Nothing is tested: a determinant of zero or a
  /// pivot that is not positive gives infinities or not-a-number. #m_bOK of this is 1 afterwards.
  CSZMatrix Reverse() const;

  /// The transpose.
  CSZMatrix T() const;

  /// The same as T().
  CSZMatrix MatTran() const;

  /// The lower-triangular Cholesky factor L with A = L * transpose(L). Only the upper triangle of
  /// this is read.
  ///
  /// A matrix that is not square ends the process by `exit(-4)`: exit handlers run.
  ///
  /// @param[out] ok  1; 0 if the matrix is not positive definite, and then the result is the
  ///                 identity. Must not be null.
  CSZMatrix matChole(int* ok) const;
  /// @}

 private:
  // For results of which every element is about to be written.
  enum class Elements { Unfilled };
  CSZMatrix(unsigned int rows, unsigned int cols, Elements unfilled);

  std::size_t Position(std::uint32_t i, std::uint32_t j) const {
    return static_cast<std::size_t>(i) * m_nCol + j;
  }
  std::size_t StoredElements() const {
    return m_pData == nullptr ? 0 : static_cast<std::size_t>(m_nRow) * m_nCol;
  }
  bool SameSize(const CSZMatrix& b) const { return m_nRow == b.m_nRow && m_nCol == b.m_nCol; }
  bool IsSquare() const { return m_nRow == m_nCol; }
  // Elements were asked for, but there was no room for them.
  bool LacksStorage() const { return m_pData == nullptr && !HasZeroCount(); }
  bool HasZeroCount() const { return m_nRow == 0 || m_nCol == 0; }
  void Obtain(unsigned int rows, unsigned int cols);
  void Release();
  void BecomeWithoutStorage();
  void TakeFrom(CSZMatrix& other);
  int EndAssignment() const;
  void EndWalk() const;
};

}  // namespace tiltpole
