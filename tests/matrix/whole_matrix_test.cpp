// Zeros, Diagonal, Symmetry, Trace, Summation, Slice.

#include <gtest/gtest.h>

#include "support/literal_matrix.h"
#include "support/rows.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;
using tiltpole_test::Rows;
using tiltpole_test::SameElements;

TEST(MatrixZeros, SetsEveryElementToZero) {
  CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  matrix.m_bOK = 5;
  EXPECT_EQ(matrix.Zeros(), 1);
  EXPECT_TRUE(SameElements(matrix, CSZMatrix(2, 3)));
  EXPECT_EQ(matrix.m_bOK, 5);
  EXPECT_EQ(matrix.m_i, 2U);
  EXPECT_EQ(matrix.m_j, 3U);
}

TEST(MatrixZeros, ReturnsZeroForAZeroCount) {
  CSZMatrix no_rows(0, 3);
  no_rows.m_i = 55;
  EXPECT_EQ(no_rows.Zeros(), 0);
  EXPECT_EQ(no_rows.m_i, 55U);
  EXPECT_EQ(CSZMatrix(3, 0).Zeros(), 0);
  EXPECT_EQ(CSZMatrix().Zeros(), 0);
}

TEST(MatrixDiagonal, SetsASquareMatrixToAMultipleOfTheIdentity) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  matrix.m_bOK = 5;
  EXPECT_EQ(matrix.Diagonal(2.0), 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{2, 0}, {0, 2}})));
  EXPECT_EQ(matrix.m_bOK, 5);
}

TEST(MatrixDiagonal, LeavesTheColumnsBesideTheLeadingBlock) {
  CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  EXPECT_EQ(matrix.Diagonal(2.0), 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{2, 0, 3}, {0, 2, 6}})));
  EXPECT_EQ(matrix.m_i, 2U);
  EXPECT_EQ(matrix.m_j, 2U);
}

TEST(MatrixDiagonal, LeavesTheRowsBelowTheLeadingBlock) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}, {5, 6}});
  EXPECT_EQ(matrix.Diagonal(2.0), 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{2, 0}, {0, 2}, {5, 6}})));
}

TEST(MatrixDiagonal, ReturnsZeroForAZeroCount) {
  EXPECT_EQ(CSZMatrix(0, 3).Diagonal(1.0), 0);
  EXPECT_EQ(CSZMatrix(3, 0).Diagonal(1.0), 0);
}

TEST(MatrixSymmetry, CopiesTheUpperTriangleOntoTheLower) {
  CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  matrix.m_bOK = 5;
  EXPECT_EQ(matrix.Symmetry(), 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{1, 2, 3}, {2, 5, 6}, {3, 6, 9}})));
  EXPECT_EQ(matrix.m_bOK, 5);
  EXPECT_EQ(matrix.m_i, 3U);
  EXPECT_EQ(matrix.m_j, 3U);
}

TEST(MatrixSymmetry, ReturnsZeroForAMatrixThatIsNotSquare) {
  CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  EXPECT_EQ(matrix.Symmetry(), 0);
  EXPECT_TRUE(SameElements(matrix, Rows({{1, 2, 3}, {4, 5, 6}})));
}

TEST(MatrixTrace, IsTheSumOfTheDiagonal) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  matrix.m_bOK = 0;
  matrix.m_j = 66;
  EXPECT_EQ(matrix.Trace(), 5.0);
  EXPECT_EQ(matrix.m_bOK, 1);
  EXPECT_EQ(matrix.m_i, 2U);
  EXPECT_EQ(matrix.m_j, 66U);
}

TEST(MatrixTrace, OfAMatrixThatIsNotSquareIsZeroWithStatusZero) {
  CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  matrix.m_i = 55;
  EXPECT_EQ(matrix.Trace(), 0.0);
  EXPECT_EQ(matrix.m_bOK, 0);
  EXPECT_EQ(matrix.m_i, 55U);
}

TEST(MatrixSummation, IsTheSumOfTheDiagonalAndNotOfAllElements) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  matrix.m_bOK = 0;
  EXPECT_EQ(matrix.Summation(), 5.0);
  EXPECT_EQ(matrix.m_bOK, 1);
}

TEST(MatrixSummation, OfAMatrixThatIsNotSquareIsZeroWithStatusZero) {
  const CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  EXPECT_EQ(matrix.Summation(), 0.0);
  EXPECT_EQ(matrix.m_bOK, 0);
}

TEST(MatrixSlice, TakesBothEndsInclusive) {
  CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  matrix.m_bOK = 5;
  const CSZMatrix block = matrix.Slice(0, 0, 1, 1);
  EXPECT_TRUE(SameElements(block, Rows({{1, 2}, {4, 5}})));
  EXPECT_EQ(block.m_bOK, 1);
  EXPECT_EQ(matrix.m_bOK, 5);
}

TEST(MatrixSlice, MayBeOneElement) {
  const CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  EXPECT_TRUE(SameElements(matrix.Slice(1, 2, 1, 2), Rows({{6}})));
}

TEST(MatrixSlice, FillsOnlyWhatLiesInsideTheMatrix) {
  const CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  EXPECT_TRUE(SameElements(matrix.Slice(1, 1, 3, 3), Rows({{5, 6, 0}, {8, 9, 0}, {0, 0, 0}})));
}

TEST(MatrixSlice, ComparesItsEndsAsSignedNumbers) {
  const CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  EXPECT_TRUE(SameElements(matrix.Slice(-1, -1, 0, 1), Rows({{0, 0, 0}, {0, 1, 2}})));
}

TEST(MatrixSlice, BesideTheMatrixIsNotFilled) {
  const CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  EXPECT_TRUE(SameElements(matrix.Slice(5, 5, 6, 7), CSZMatrix(2, 3)));
  EXPECT_TRUE(SameElements(matrix.Slice(-3, -3, -2, -2), CSZMatrix(2, 2)));
}

TEST(MatrixSlice, ThatEndsBeforeItBeginsHasNoStorage) {
  const CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  const CSZMatrix no_rows = matrix.Slice(1, 0, 0, 1);
  EXPECT_EQ(no_rows.m_pData, nullptr);
  EXPECT_EQ(no_rows.m_bOK, 0);
  EXPECT_EQ(no_rows.GetRow(), 0U);
  EXPECT_EQ(no_rows.GetCol(), 2U);
  EXPECT_EQ(matrix.Slice(5, 0, 0, 1).GetRow(), 0U);
}

TEST(MatrixSlice, WalksTheWholeMatrixWithItsCursors) {
  const CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  static_cast<void>(matrix.Slice(0, 0, 0, 0));
  EXPECT_EQ(matrix.m_i, 2U);
  EXPECT_EQ(matrix.m_j, 3U);
}

}  // namespace
