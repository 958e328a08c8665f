// The three inverses, the transposes and the Cholesky factor.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include <gtest/gtest.h>

#include "support/literal_matrix.h"
#include "support/rows.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;
using tiltpole_test::Rows;
using tiltpole_test::SameElements;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(MatrixInverse, OfADiagonalMatrixHasTheReciprocals) {
  const CSZMatrix inverse = Rows({{2, 0}, {0, 4}}).MatInv();
  ASSERT_EQ(inverse.GetRow(), 2U);
  EXPECT_EQ(inverse.GetData(0, 0), 0.5);
  EXPECT_EQ(inverse.GetData(0, 1), 0.0);
  EXPECT_EQ(inverse.GetData(1, 0), 0.0);
  EXPECT_EQ(inverse.GetData(1, 1), 0.25);
}

TEST(MatrixInverse, ExchangesRowsAndColumnsWhereThePivotNeedsIt) {
  const CSZMatrix inverse = Rows({{0, 1}, {1, 0}}).MatInv();
  EXPECT_EQ(inverse.GetData(0, 0), 0.0);
  EXPECT_EQ(inverse.GetData(0, 1), 1.0);
  EXPECT_EQ(inverse.GetData(1, 0), 1.0);
  EXPECT_EQ(inverse.GetData(1, 1), 0.0);
}

TEST(MatrixInverse, OfASingularMatrixIsEmpty) {
  const CSZMatrix matrix = Rows({{1, 2}, {2, 4}});
  const CSZMatrix inverse = matrix.MatInv();
  EXPECT_EQ(inverse.m_pData, nullptr);
  EXPECT_EQ(inverse.GetRow(), 0U);
  EXPECT_EQ(inverse.GetCol(), 0U);
  EXPECT_EQ(inverse.m_bOK, 0);
  EXPECT_EQ(matrix.m_bOK, 0);
}

TEST(MatrixInverse, OfAMatrixThatIsNotSquareHasItsSizeAndIsNotFilled) {
  const CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  EXPECT_TRUE(SameElements(matrix.MatInv(), CSZMatrix(2, 3)));
  EXPECT_EQ(matrix.m_bOK, 0);
  EXPECT_TRUE(SameElements(~matrix, CSZMatrix(2, 3)));
}

TEST(MatrixInverse, LeavesTheStatusAtZeroAlsoWhenItSucceeds) {
  const CSZMatrix matrix = Rows({{2, 0}, {0, 4}});
  ASSERT_EQ(matrix.m_bOK, 1);
  static_cast<void>(matrix.MatInv());
  EXPECT_EQ(matrix.m_bOK, 0);
  matrix.m_bOK = 1;
  static_cast<void>(~matrix);
  EXPECT_EQ(matrix.m_bOK, 0);
}

TEST(MatrixInverse, TinyElementsCountAsSingularHoweverWellConditioned) {
  CSZMatrix tiny(3, 3);
  tiny.Diagonal(1e-17);
  EXPECT_EQ(tiny.MatInv().GetRow(), 0U);
}

TEST(MatrixInverse, TheSingularityLimitIsHalfTheSpacingAboveOne) {
  const double half_spacing = std::numeric_limits<double>::epsilon() / 2.0;
  EXPECT_EQ(Rows({{half_spacing}}).MatInv().GetRow(), 0U);
  const double above = std::nextafter(half_spacing, 1.0);
  ASSERT_EQ(Rows({{above}}).MatInv().GetRow(), 1U);
  EXPECT_EQ(Rows({{above}}).MatInv().GetData(0), 1.0 / above);
}

TEST(MatrixInverse, LeavesTheMatrixAndItsCursors) {
  CSZMatrix matrix = Rows({{0, 3}, {2, 1}});
  matrix.m_i = 55;
  matrix.m_j = 66;
  static_cast<void>(matrix.MatInv());
  EXPECT_TRUE(SameElements(matrix, Rows({{0, 3}, {2, 1}})));
  EXPECT_EQ(matrix.m_i, 55U);
  EXPECT_EQ(matrix.m_j, 66U);
}

TEST(MatrixInverse, OfAMatrixWithoutRowsAndColumnsIsTheSame) {
  const CSZMatrix inverse = CSZMatrix().MatInv();
  EXPECT_EQ(inverse.GetRow(), 0U);
  EXPECT_EQ(inverse.GetCol(), 0U);
}

TEST(MatrixInverse, OfOnlyNotANumberIsEmptySinceNoElementIsLarger) {
  EXPECT_EQ(Rows({{kNaN, kNaN}, {kNaN, kNaN}}).MatInv().GetRow(), 0U);
}

TEST(MatrixInverse, IsEmptyWhereOnlyNotANumberIsLeftToChooseFrom) {
  // The first 1 is the pivot of the first step, which leaves one element, not a number.
  EXPECT_EQ(Rows({{kNaN, 1}, {1, 1}}).MatInv().GetRow(), 0U);
}

TEST(MatrixInverse, AnInfinitePivotIsTaken) {
  const CSZMatrix inverse = Rows({{kInfinity}}).MatInv();
  ASSERT_EQ(inverse.GetRow(), 1U);
  EXPECT_EQ(inverse.GetData(0), 0.0);
}

TEST(MatrixInverse, IsTheSameByBothNames) {
  const CSZMatrix matrix = Rows({{4, -2, 1}, {0.5, 3, 7}, {-6, 2, 0.25}});
  EXPECT_TRUE(SameElements(~matrix, matrix.MatInv()));
}

TEST(MatrixInverse, MayBeAssignedToItsOperand) {
  CSZMatrix matrix = Rows({{2, 0}, {0, 4}});
  matrix = matrix.MatInv();
  EXPECT_EQ(matrix.GetData(0, 0), 0.5);
  EXPECT_EQ(matrix.GetData(1, 1), 0.25);
}

TEST(CholeskyInverse, OfTwoByTwoIsTheClosedForm) {
  const CSZMatrix matrix = Rows({{4, 2}, {2, 3}});
  const CSZMatrix inverse = matrix.Reverse();
  EXPECT_TRUE(SameElements(inverse, Rows({{0.375, -0.25}, {-0.25, 0.5}})));
  EXPECT_EQ(matrix.m_bOK, 1);
}

TEST(CholeskyInverse, OfTwoByTwoNeedsNoSymmetry) {
  EXPECT_TRUE(SameElements(Rows({{0, 2}, {-4, 1}}).Reverse(), Rows({{0.125, -0.25}, {0.5, 0}})));
}

TEST(CholeskyInverse, OfOneElementIsItsReciprocal) {
  EXPECT_TRUE(SameElements(Rows({{-8}}).Reverse(), Rows({{-0.125}})));
}

TEST(CholeskyInverse, OfThreeByThreeAgreesWithTheGeneralInverseAndIsSymmetric) {
  const CSZMatrix matrix = Rows({{4, 1, 0.5}, {1, 5, -2}, {0.5, -2, 6}});
  const CSZMatrix inverse = matrix.Reverse();
  const CSZMatrix general = matrix.MatInv();
  for (unsigned i = 0; i < 3; ++i) {
    for (unsigned j = 0; j < 3; ++j) {
      EXPECT_NEAR(inverse.GetData(i, j), general.GetData(i, j), 1e-15);
      EXPECT_EQ(inverse.GetData(i, j), inverse.GetData(j, i));
    }
  }
}

TEST(CholeskyInverse, ReadsOnlyTheUpperTriangleFromThreeByThreeOn) {
  const CSZMatrix whole = Rows({{4, 1, 0.5}, {1, 5, -2}, {0.5, -2, 6}});
  const CSZMatrix upper = Rows({{4, 1, 0.5}, {kNaN, 5, -2}, {kNaN, kNaN, 6}});
  EXPECT_TRUE(SameElements(upper.Reverse(), whole.Reverse()));
}

TEST(CholeskyInverse, SetsTheStatusOfASquareMatrixAndWalksWithItsCursors) {
  CSZMatrix matrix = Rows({{4, 1, 0.5}, {1, 5, -2}, {0.5, -2, 6}});
  matrix.m_bOK = 0;
  static_cast<void>(matrix.Reverse());
  EXPECT_EQ(matrix.m_bOK, 1);
  EXPECT_EQ(matrix.m_i, 3U);
  EXPECT_EQ(matrix.m_j, 3U);
}

TEST(CholeskyInverse, OfAMatrixThatIsNotSquareHasItsSizeAndStatusZero) {
  const CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  EXPECT_TRUE(SameElements(matrix.Reverse(), CSZMatrix(2, 3)));
  EXPECT_EQ(matrix.m_bOK, 0);
}

TEST(CholeskyInverse, DoesNotTestForZeroDeterminantsAndPivots) {
  EXPECT_EQ(Rows({{0}}).Reverse().GetData(0), kInfinity);
  const CSZMatrix singular = Rows({{1, 2}, {2, 4}});
  EXPECT_EQ(singular.Reverse().GetData(0, 0), kInfinity);
  EXPECT_EQ(singular.m_bOK, 1);
  const CSZMatrix negative = Rows({{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
  EXPECT_TRUE(std::isnan(negative.Reverse().GetData(0, 0)));
}

TEST(CholeskyInverse, OfAMatrixWithoutRowsAndColumnsSucceeds) {
  const CSZMatrix empty;
  EXPECT_EQ(empty.Reverse().GetRow(), 0U);
  EXPECT_EQ(empty.m_bOK, 1);
}

TEST(MatrixTranspose, ExchangesRowsAndColumns) {
  CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  matrix.m_bOK = 5;
  EXPECT_TRUE(SameElements(matrix.T(), Rows({{1, 4}, {2, 5}, {3, 6}})));
  EXPECT_TRUE(SameElements(matrix.MatTran(), Rows({{1, 4}, {2, 5}, {3, 6}})));
  EXPECT_EQ(matrix.m_bOK, 5);
  EXPECT_EQ(matrix.m_i, 2U);
  EXPECT_EQ(matrix.m_j, 3U);
}

TEST(MatrixTranspose, OfAMatrixWithAZeroCountExchangesTheCounts) {
  const CSZMatrix transpose = CSZMatrix(0, 3).T();
  EXPECT_EQ(transpose.GetRow(), 3U);
  EXPECT_EQ(transpose.GetCol(), 0U);
}

TEST(CholeskyFactor, OfAPositiveDefiniteMatrixIsLowerTriangular) {
  int ok = 7;
  const CSZMatrix lower = Rows({{4, 2}, {2, 3}}).matChole(&ok);
  EXPECT_EQ(ok, 1);
  EXPECT_TRUE(SameElements(lower, Rows({{2, 0}, {1, std::sqrt(2.0)}})));
}

TEST(CholeskyFactor, OfAMatrixThatIsNotPositiveDefiniteIsTheIdentity) {
  int ok = 7;
  const CSZMatrix lower = Rows({{1, 2}, {2, 1}}).matChole(&ok);
  EXPECT_EQ(ok, 0);
  EXPECT_TRUE(SameElements(lower, Rows({{1, 0}, {0, 1}})));
}

TEST(CholeskyFactor, APivotOfZeroIsNotPositive) {
  int ok = 7;
  static_cast<void>(Rows({{1, 1}, {1, 1}}).matChole(&ok));
  EXPECT_EQ(ok, 0);
}

TEST(CholeskyFactor, ReadsOnlyTheUpperTriangle) {
  int ok = 7;
  const CSZMatrix lower = Rows({{4, 2}, {kNaN, 3}}).matChole(&ok);
  EXPECT_EQ(ok, 1);
  EXPECT_TRUE(SameElements(lower, Rows({{2, 0}, {1, std::sqrt(2.0)}})));
}

TEST(CholeskyFactor, APivotThatIsNotANumberIsNotTakenAsAFailure) {
  int ok = 7;
  const CSZMatrix lower = Rows({{kNaN}}).matChole(&ok);
  EXPECT_EQ(ok, 1);
  EXPECT_TRUE(std::isnan(lower.GetData(0)));
}

TEST(CholeskyFactor, LeavesStatusAndCursors) {
  CSZMatrix matrix = Rows({{4, 2}, {2, 3}});
  matrix.m_bOK = 5;
  matrix.m_i = 55;
  matrix.m_j = 66;
  int ok = 7;
  static_cast<void>(matrix.matChole(&ok));
  EXPECT_EQ(matrix.m_bOK, 5);
  EXPECT_EQ(matrix.m_i, 55U);
  EXPECT_EQ(matrix.m_j, 66U);
}

// The status of a process as its parent sees it.
#ifdef _WIN32
constexpr int kMinusFour = -4;
#else
constexpr int kMinusFour = 256 - 4;
#endif

void SayThatHandlersRun() { static_cast<void>(std::fputs("exit handlers run\n", stderr)); }

TEST(CholeskyFactorDeathTest, OfAMatrixThatIsNotSquareEndsTheProcessThroughItsExitHandlers) {
  const CSZMatrix matrix(2, 3);
  EXPECT_EXIT(
      {
        static_cast<void>(std::atexit(SayThatHandlersRun));
        int ok = 7;
        static_cast<void>(matrix.matChole(&ok));
      },
      testing::ExitedWithCode(kMinusFour), "exit handlers run");
}

}  // namespace
