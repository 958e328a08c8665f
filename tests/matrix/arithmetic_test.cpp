// Sums, differences and products, their flags, cursors and mismatches.

#include <cmath>

#include <gtest/gtest.h>

#include "support/literal_matrix.h"
#include "support/rows.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;
using tiltpole_test::Rows;
using tiltpole_test::SameElements;

TEST(MatrixSum, AddsElementByElementAndSetsTheStatus) {
  CSZMatrix a = Rows({{1, 2, 3}, {4, 5, 6}});
  const CSZMatrix b = Rows({{10, 20, 30}, {40, 50, 60}});
  a.m_bOK = 0;
  const CSZMatrix sum = a + b;
  EXPECT_TRUE(SameElements(sum, Rows({{11, 22, 33}, {44, 55, 66}})));
  EXPECT_EQ(a.m_bOK, 1);
  EXPECT_EQ(sum.m_bOK, 1);
}

TEST(MatrixSum, WalksWithTheLeftOperandsCursors) {
  const CSZMatrix a(2, 3);
  CSZMatrix b(2, 3);
  b.m_i = 77;
  b.m_j = 88;
  static_cast<void>(a + b);
  EXPECT_EQ(a.m_i, 2U);
  EXPECT_EQ(a.m_j, 3U);
  EXPECT_EQ(b.m_i, 77U);
  EXPECT_EQ(b.m_j, 88U);
}

TEST(MatrixSum, OfDifferentSizesIsACopyOfTheRightOperand) {
  CSZMatrix a(2, 2);
  a.m_i = 55;
  a.m_j = 66;
  const CSZMatrix b = Rows({{1, 2, 3}, {4, 5, 6}});
  const CSZMatrix result = a + b;
  EXPECT_TRUE(SameElements(result, b));
  EXPECT_NE(result.m_pData, b.m_pData);
  EXPECT_EQ(result.m_bOK, 1);
  EXPECT_EQ(a.m_bOK, 0);
  EXPECT_EQ(a.m_i, 55U);
  EXPECT_EQ(a.m_j, 66U);
}

TEST(MatrixSum, EqualRowsAloneDoNotMakeEqualSizes) {
  const CSZMatrix a(2, 2);
  static_cast<void>(a + CSZMatrix(2, 3));
  EXPECT_EQ(a.m_bOK, 0);
  static_cast<void>(a + CSZMatrix(3, 2));
  EXPECT_EQ(a.m_bOK, 0);
}

TEST(MatrixSum, OfAMatrixWithItselfDoublesIt) {
  const CSZMatrix a = Rows({{1, 2}, {3, 4}});
  EXPECT_TRUE(SameElements(a + a, Rows({{2, 4}, {6, 8}})));
  EXPECT_TRUE(SameElements(a, Rows({{1, 2}, {3, 4}})));
}

TEST(MatrixSum, OfTwoEmptyMatricesSucceeds) {
  const CSZMatrix a;
  const CSZMatrix sum = a + CSZMatrix();
  EXPECT_EQ(a.m_bOK, 1);
  EXPECT_EQ(sum.m_bOK, 0);
  EXPECT_EQ(sum.GetRow(), 0U);
}

TEST(MatrixDifference, SubtractsElementByElementAndSetsTheStatus) {
  CSZMatrix a = Rows({{11, 22}, {33, 44}});
  a.m_bOK = 0;
  const CSZMatrix difference = a - Rows({{1, 2}, {3, 4}});
  EXPECT_TRUE(SameElements(difference, Rows({{10, 20}, {30, 40}})));
  EXPECT_EQ(a.m_bOK, 1);
  EXPECT_EQ(a.m_i, 2U);
  EXPECT_EQ(a.m_j, 2U);
}

TEST(MatrixDifference, OfDifferentSizesIsACopyOfTheRightOperand) {
  const CSZMatrix a(2, 2);
  const CSZMatrix b = Rows({{1, 2, 3}});
  EXPECT_TRUE(SameElements(a - b, b));
  EXPECT_EQ(a.m_bOK, 0);
}

TEST(MatrixDifference, OfAMatrixFromItselfIsZero) {
  const CSZMatrix a = Rows({{1, 2}, {3, 4}});
  EXPECT_TRUE(SameElements(a - a, CSZMatrix(2, 2)));
}

TEST(MatrixProduct, MultipliesRowsByColumns) {
  const CSZMatrix product = Rows({{1, 2}, {3, 4}}) * Rows({{5, 6}, {7, 8}});
  EXPECT_TRUE(SameElements(product, Rows({{19, 22}, {43, 50}})));
}

TEST(MatrixProduct, HasTheRowsOfTheLeftAndTheColumnsOfTheRight) {
  const CSZMatrix product = Rows({{1, 2, 3}}) * Rows({{1, 2}, {3, 4}, {5, 6}});
  EXPECT_TRUE(SameElements(product, Rows({{22, 28}})));
}

TEST(MatrixProduct, LeavesTheStatusAtZeroAlsoWhenItSucceeds) {
  const CSZMatrix a = Rows({{1, 2}, {3, 4}});
  ASSERT_EQ(a.m_bOK, 1);
  const CSZMatrix product = a * Rows({{5, 6}, {7, 8}});
  EXPECT_EQ(a.m_bOK, 0);
  EXPECT_EQ(product.m_bOK, 1);
}

TEST(MatrixProduct, OfSizesThatDoNotMatchIsACopyOfTheRightOperand) {
  const CSZMatrix a(2, 2);
  const CSZMatrix b = Rows({{1, 2}, {3, 4}, {5, 6}});
  EXPECT_TRUE(SameElements(a * b, b));
  EXPECT_EQ(a.m_bOK, 0);
}

TEST(MatrixProduct, LeavesTheCursorsOfBothOperands) {
  CSZMatrix a(2, 2);
  CSZMatrix b(2, 2);
  a.m_i = 55;
  a.m_j = 66;
  b.m_i = 77;
  b.m_j = 88;
  static_cast<void>(a * b);
  EXPECT_EQ(a.m_i, 55U);
  EXPECT_EQ(a.m_j, 66U);
  EXPECT_EQ(b.m_i, 77U);
  EXPECT_EQ(b.m_j, 88U);
}

TEST(MatrixProduct, OverNoColumnsIsAMatrixOfZeros) {
  const CSZMatrix product = CSZMatrix(2, 0) * CSZMatrix(0, 3);
  EXPECT_TRUE(SameElements(product, CSZMatrix(2, 3)));
}

TEST(MatrixProduct, AddsTheTermsInTheOrderOfTheLeftColumns) {
  // 1 + 1e17 - 1e17 is 0 in this order and 1 in others.
  const CSZMatrix product = Rows({{1, 1e17, -1e17}}) * Rows({{1}, {1}, {1}});
  EXPECT_EQ(product.GetData(0, 0), 0.0);
}

TEST(MatrixProduct, ASumOfNegativeZerosIsZeroSinceItStartsAtZero) {
  const CSZMatrix product = Rows({{-0.0}}) * Rows({{1.0}});
  EXPECT_FALSE(std::signbit(product.GetData(0, 0)));
}

TEST(MatrixProduct, MayBeAssignedToOneOfItsOperands) {
  CSZMatrix a = Rows({{1, 2}, {3, 4}});
  a = a * a;
  EXPECT_TRUE(SameElements(a, Rows({{7, 10}, {15, 22}})));
}

TEST(MatrixProduct, WithASingularInverseIsAMismatchLikeAnyOther) {
  const CSZMatrix inverse = Rows({{1, 2}, {2, 4}}).MatInv();
  const CSZMatrix b = Rows({{1}, {2}});
  EXPECT_TRUE(SameElements(inverse * b, b));
}

TEST(MatrixWithNumber, AddsSubtractsAndMultipliesEveryElementAndSetsTheStatus) {
  CSZMatrix a = Rows({{1, 2, 3}, {4, 5, 6}});
  a.m_bOK = 0;
  EXPECT_TRUE(SameElements(a + 10.0, Rows({{11, 12, 13}, {14, 15, 16}})));
  EXPECT_EQ(a.m_bOK, 1);
  a.m_bOK = 0;
  EXPECT_TRUE(SameElements(a - 1.0, Rows({{0, 1, 2}, {3, 4, 5}})));
  EXPECT_EQ(a.m_bOK, 1);
  a.m_bOK = 0;
  EXPECT_TRUE(SameElements(a * 2.0, Rows({{2, 4, 6}, {8, 10, 12}})));
  EXPECT_EQ(a.m_bOK, 1);
  EXPECT_TRUE(SameElements(a, Rows({{1, 2, 3}, {4, 5, 6}})));
}

TEST(MatrixWithNumber, WalksWithItsOwnCursors) {
  CSZMatrix a(2, 3);
  static_cast<void>(a + 1.0);
  EXPECT_EQ(a.m_i, 2U);
  EXPECT_EQ(a.m_j, 3U);
  a.m_i = a.m_j = 0;
  static_cast<void>(a - 1.0);
  EXPECT_EQ(a.m_i, 2U);
  EXPECT_EQ(a.m_j, 3U);
  a.m_i = a.m_j = 0;
  static_cast<void>(a * 1.0);
  EXPECT_EQ(a.m_i, 2U);
  EXPECT_EQ(a.m_j, 3U);
}

TEST(MatrixInPlace, AddsAndSubtractsAMatrixWithoutTouchingTheStatus) {
  CSZMatrix a = Rows({{1, 2}, {3, 4}});
  const CSZMatrix b = Rows({{10, 20}, {30, 40}});
  a.m_bOK = 0;
  EXPECT_EQ(a += b, 1);
  EXPECT_TRUE(SameElements(a, Rows({{11, 22}, {33, 44}})));
  EXPECT_EQ(a.m_bOK, 0);
  a.m_bOK = 5;
  EXPECT_EQ(a -= b, 1);
  EXPECT_TRUE(SameElements(a, Rows({{1, 2}, {3, 4}})));
  EXPECT_EQ(a.m_bOK, 5);
  EXPECT_EQ(a.m_i, 2U);
  EXPECT_EQ(a.m_j, 2U);
  EXPECT_EQ(b.m_i, 0U);
}

TEST(MatrixInPlace, DifferentSizesChangeNothing) {
  CSZMatrix a = Rows({{1, 2}, {3, 4}});
  a.m_i = 55;
  a.m_j = 66;
  const CSZMatrix b(2, 3);
  EXPECT_EQ(a += b, 0);
  EXPECT_EQ(a -= b, 0);
  EXPECT_TRUE(SameElements(a, Rows({{1, 2}, {3, 4}})));
  EXPECT_EQ(a.m_bOK, 1);
  EXPECT_EQ(a.m_i, 55U);
  EXPECT_EQ(a.m_j, 66U);
}

TEST(MatrixInPlace, AddsAndSubtractsANumberWithoutTouchingTheStatus) {
  CSZMatrix a = Rows({{1, 2}, {3, 4}});
  a.m_bOK = 0;
  EXPECT_EQ(a += 10.0, 1);
  EXPECT_TRUE(SameElements(a, Rows({{11, 12}, {13, 14}})));
  EXPECT_EQ(a -= 1.0, 1);
  EXPECT_TRUE(SameElements(a, Rows({{10, 11}, {12, 13}})));
  EXPECT_EQ(a.m_bOK, 0);
  EXPECT_EQ(a.m_i, 2U);
  EXPECT_EQ(a.m_j, 2U);
}

TEST(MatrixInPlace, TakesTheMatrixItselfAsOperand) {
  CSZMatrix a = Rows({{1, 2}, {3, 4}});
  EXPECT_EQ(a += a, 1);
  EXPECT_TRUE(SameElements(a, Rows({{2, 4}, {6, 8}})));
  EXPECT_EQ(a -= a, 1);
  EXPECT_TRUE(SameElements(a, CSZMatrix(2, 2)));
}

TEST(MatrixInPlace, AnEmptyMatrixSucceeds) {
  CSZMatrix a;
  EXPECT_EQ(a += 1.0, 1);
  EXPECT_EQ(a -= 1.0, 1);
  EXPECT_EQ(a += CSZMatrix(), 1);
}

}  // namespace
