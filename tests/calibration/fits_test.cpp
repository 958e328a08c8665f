#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/literal_calibration.h"
#include "calibration/matrices.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "support/message_capture.h"

namespace tiltpole_test {
namespace {

using tiltpole::CSZMatrix;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(OverDeterminedEquations, ASolvableSystemIsSolved) {
  const CSZMatrix x = AdjustAccess().OverDeterminedEquationSolution(Rows({{2, 0}, {0, 4}, {0, 0}}),
                                                                    Rows({{6}, {2}, {0}}));
  ASSERT_EQ(x.GetRow(), 2U);
  ASSERT_EQ(x.GetCol(), 1U);
  EXPECT_EQ(x.GetData(0), 3.0);
  EXPECT_EQ(x.GetData(1), 0.5);
}

TEST(OverDeterminedEquations, TheMeanIsTheBestConstant) {
  const CSZMatrix x = AdjustAccess().OverDeterminedEquationSolution(Rows({{1}, {1}, {1}, {1}}),
                                                                    Rows({{1}, {2}, {3}, {6}}));
  EXPECT_EQ(x.GetData(0), 3.0);
}

TEST(OverDeterminedEquations, RowCountsThatDifferAreToldAndGiveZeros) {
  const MessageCapture messages;
  const CSZMatrix x =
      AdjustAccess().OverDeterminedEquationSolution(Rows({{1, 2}, {3, 4}}), Rows({{1}}));
  EXPECT_EQ(messages.shown, (std::vector<ShownMessage>{
                                ExclamationMessage(L"Two input matrix must have the same line!")}));
  ASSERT_EQ(x.GetRow(), 2U);
  ASSERT_EQ(x.GetCol(), 1U);
  EXPECT_EQ(x.GetData(0), 0.0);
  EXPECT_EQ(x.GetData(1), 0.0);
}

TEST(OverDeterminedEquations, ASingularSystemGivesBackItsRightSide) {
  // At A = [[2, 2], [2, 2]] has no inverse; At b = (3, 3) comes back.
  const MessageCapture messages;
  const CSZMatrix x =
      AdjustAccess().OverDeterminedEquationSolution(Rows({{1, 1}, {1, 1}}), Rows({{1}, {2}}));
  ASSERT_EQ(x.GetRow(), 2U);
  EXPECT_EQ(x.GetData(0), 3.0);
  EXPECT_EQ(x.GetData(1), 3.0);
  EXPECT_TRUE(messages.shown.empty());
}

TEST(EllipseFit, FivePointsOfACircleGiveEqualSquaresAndNoMixedTerm) {
  CSZMatrix p;
  const CSZMatrix data = Rows({{8, -2, 0}, {-2, -2, 0}, {3, 3, 0}, {3, -7, 0}, {6, 2, 0}});
  ASSERT_EQ(AdjustAccess().EllipseFit(data, 2, p), 1);
  ASSERT_EQ(p.GetRow(), 5U);
  ASSERT_EQ(p.GetCol(), 1U);
  EXPECT_NEAR(p.GetData(0), 0.5, 1e-12);
  EXPECT_NEAR(p.GetData(1), 0.0, 1e-12);
  // (x - 3)^2 + (y + 2)^2 = 25, halved.
  EXPECT_NEAR(p.GetData(2), -3.0, 1e-11);
  EXPECT_NEAR(p.GetData(3), 2.0, 1e-11);
  EXPECT_NEAR(p.GetData(4), -6.0, 1e-11);
}

TEST(EllipseFit, ThePlaneChoosesTheCoordinates) {
  CSZMatrix p;
  ASSERT_EQ(AdjustAccess().EllipseFit(ExactCircle(0, 2, 10, 20, 7), 1, p), 1);
  EXPECT_NEAR(p.GetData(2), -10.0, 1e-9);
  EXPECT_NEAR(p.GetData(3), -20.0, 1e-9);
  ASSERT_EQ(AdjustAccess().EllipseFit(ExactCircle(1, 2, 10, 20, 7), 0, p), 1);
  EXPECT_NEAR(p.GetData(2), -10.0, 1e-9);
  EXPECT_NEAR(p.GetData(3), -20.0, 1e-9);
}

TEST(EllipseFit, AHyperbolaFailsWithoutAMessageAndStillGivesItsCoefficients) {
  const MessageCapture messages;
  CSZMatrix p;
  // x^2 / 4 - y^2 = 1
  const CSZMatrix data = Rows({{2, 0, 0},
                               {-2, 0, 0},
                               {4, std::sqrt(3.0), 0},
                               {-4, std::sqrt(3.0), 0},
                               {4, -std::sqrt(3.0), 0},
                               {6, std::sqrt(8.0), 0}});
  EXPECT_EQ(AdjustAccess().EllipseFit(data, 2, p), 0);
  EXPECT_TRUE(messages.shown.empty());
  ASSERT_EQ(p.GetRow(), 5U);
  EXPECT_NEAR(p.GetData(0), -1.0 / 3.0, 1e-10);
}

TEST(EllipseFit, FourPointsAreTooFew) {
  const MessageCapture messages;
  CSZMatrix p = Rows({{42}});
  EXPECT_EQ(AdjustAccess().EllipseFit(Rows({{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}}), 2, p),
            0);
  EXPECT_EQ(messages.shown,
            (std::vector<ShownMessage>{StopMessage(L"The points less than 5, could not fit!")}));
  EXPECT_EQ(p.GetData(0), 42.0);
}

TEST(EllipseFit, TwoColumnsAreToldBeforeTheNumberOfPoints) {
  const MessageCapture messages;
  CSZMatrix p;
  EXPECT_EQ(AdjustAccess().EllipseFit(Rows({{1, 0}, {0, 1}}), 2, p), 0);
  EXPECT_EQ(messages.shown,
            (std::vector<ShownMessage>{StopMessage(L"The data array must be three!")}));
}

TEST(EllipseFit, ACircleInTwoColumnsIsNoDataToFit) {
  const MessageCapture messages;
  CSZMatrix p = Rows({{42}});
  const CSZMatrix circle = Rows({{8, -2}, {-2, -2}, {3, 3}, {3, -7}, {6, 2}, {7, 1}});
  EXPECT_EQ(AdjustAccess().EllipseFit(circle, 2, p), 0);
  EXPECT_EQ(p.GetData(0), 42.0);
}

TEST(EllipseFit, NoPointsInThreeColumnsAreTooFewPoints) {
  const MessageCapture messages;
  CSZMatrix p;
  EXPECT_EQ(AdjustAccess().EllipseFit(CSZMatrix(0, 3), 2, p), 0);
  EXPECT_EQ(messages.shown,
            (std::vector<ShownMessage>{StopMessage(L"The points less than 5, could not fit!")}));
}

TEST(EllipseFit, ACoefficientThatIsNotANumberCountsAsAnEllipse) {
  CSZMatrix data = ExactCircle(0, 1, 0, 0, 0);
  data.SetData(3, 1, kNaN);
  CSZMatrix p;
  EXPECT_EQ(AdjustAccess().EllipseFit(data, 2, p), 1);
  EXPECT_TRUE(std::isnan(p.GetData(0)));
}

TEST(EllipseFit, AnUnknownPlaneIsNoEllipseAndAllZeros) {
  const CSZMatrix circle = ExactCircle(0, 2, 10, 20, 7);
  for (const int plane : {3, -1}) {
    CSZMatrix p;
    EXPECT_EQ(AdjustAccess().EllipseFit(circle, plane, p), 0);
    ASSERT_EQ(p.GetRow(), 5U);
    for (unsigned int i = 0; i < 5; ++i) EXPECT_EQ(p.GetData(i), 0.0) << plane << ' ' << i;
  }
}

TEST(LineFit, EachAxisIsFittedAgainstTheOtherTwoInTheirOrder) {
  // On this grid every pair of coordinates is uncorrelated but for the stated slopes.
  CSZMatrix data = Rows({{1, 1, 0}, {1, -1, 0}, {-1, 1, 0}, {-1, -1, 0}});
  for (unsigned int i = 0; i < 4; ++i) {
    data.SetData(i, 2, 2 * data.GetData(i, 0) + 3 * data.GetData(i, 1) + 1);
  }
  const CSZMatrix ofZ = AdjustAccess().LineFit(data, 2);
  EXPECT_EQ(ofZ.GetData(0), 2.0);
  EXPECT_EQ(ofZ.GetData(1), 3.0);
  // x against y is level; x against z falls out of var(z) = 4 + 9.
  const CSZMatrix ofX = AdjustAccess().LineFit(data, 0);
  EXPECT_EQ(ofX.GetData(0), 0.0);
  EXPECT_NEAR(ofX.GetData(1), 2.0 / 13.0, 1e-15);
  const CSZMatrix ofY = AdjustAccess().LineFit(data, 1);
  EXPECT_EQ(ofY.GetData(0), 0.0);
  EXPECT_NEAR(ofY.GetData(1), 3.0 / 13.0, 1e-15);
}

TEST(LineFit, WithCorrelatedCoordinatesTheSlopesAreNotThoseOfThePlane) {
  // y = x, so each line takes the whole change of z = 2x + 3y + 1.
  const CSZMatrix slopes =
      AdjustAccess().LineFit(Rows({{0, 0, 1}, {1, 1, 6}, {2, 2, 11}, {3, 3, 16}}), 2);
  EXPECT_NEAR(slopes.GetData(0), 5.0, 1e-12);
  EXPECT_NEAR(slopes.GetData(1), 5.0, 1e-12);
}

TEST(LineFit, TwoPointsAreEnough) {
  const MessageCapture messages;
  const CSZMatrix slopes = AdjustAccess().LineFit(Rows({{0, 0, 1}, {2, 4, 9}}), 2);
  EXPECT_TRUE(messages.shown.empty());
  ASSERT_EQ(slopes.GetRow(), 2U);
  EXPECT_EQ(slopes.GetData(0), 4.0);
  EXPECT_EQ(slopes.GetData(1), 2.0);
}

TEST(LineFit, AnAxisThatThereIsNotGivesZeros) {
  const MessageCapture messages;
  for (const int axis : {-1, 3}) {
    const CSZMatrix slopes = AdjustAccess().LineFit(Rows({{0, 0, 1}, {1, 1, 6}, {2, 2, 11}}), axis);
    EXPECT_EQ(slopes.GetRow(), 2U);
    EXPECT_EQ(slopes.GetData(0), 0.0);
    EXPECT_EQ(slopes.GetData(1), 0.0);
  }
  EXPECT_TRUE(messages.shown.empty());
}

TEST(LineFit, TwoColumnsAreToldAndGiveZeros) {
  const MessageCapture messages;
  const CSZMatrix slopes = AdjustAccess().LineFit(Rows({{1, 0}, {2, 3}, {4, 7}}), 2);
  EXPECT_EQ(messages.shown,
            (std::vector<ShownMessage>{StopMessage(L"The data array must be three!")}));
  ASSERT_EQ(slopes.GetRow(), 2U);
  ASSERT_EQ(slopes.GetCol(), 1U);
  EXPECT_EQ(slopes.GetData(0), 0.0);
  EXPECT_EQ(slopes.GetData(1), 0.0);
}

TEST(LineFit, OnePointIsToldAndGivesAnEmptyMatrix) {
  const MessageCapture messages;
  const CSZMatrix slopes = AdjustAccess().LineFit(Rows({{1, 0, 0}}), 2);
  EXPECT_EQ(messages.shown,
            (std::vector<ShownMessage>{StopMessage(L"The points less than 2, could not fit!")}));
  EXPECT_EQ(slopes.GetRow(), 0U);
}

RC_GTEST_PROP(Fits, AgreeWithTheLiteralWritingToTheLastBit, ()) {
  const auto kind = static_cast<Kind>(*rc::gen::inRange(0, static_cast<int>(Kind::kKinds)));
  const Turns turns =
      RandomTurns(kind, *rc::gen::inRange(5, 60), 0, *rc::gen::arbitrary<std::uint32_t>());
  const CSZMatrix data = MatrixOf(turns.horizontal);
  for (const int plane : {0, 1, 2}) {
    CSZMatrix p;
    const int result = AdjustAccess().EllipseFit(data, plane, p);
    const EllipseOutcome literal = LiteralEllipseFit(data, plane);
    RC_ASSERT(result == literal.result);
    for (unsigned int i = 0; i < 5; ++i) {
      RC_ASSERT(SameBits(p.GetData(i), literal.coefficients[i]));
    }
    const CSZMatrix slopes = AdjustAccess().LineFit(data, plane);
    const std::vector<double> literalSlopes = LiteralLineFit(data, plane);
    RC_ASSERT(SameBits(slopes.GetData(0), literalSlopes[0]));
    RC_ASSERT(SameBits(slopes.GetData(1), literalSlopes[1]));
  }
}

// The library solves its fits on the stack; the matrix class is the other way to the same bits.
RC_GTEST_PROP(Fits, AgreeWithTheNormalEquationsOnMatrices, ()) {
  const auto kind = static_cast<Kind>(*rc::gen::inRange(0, static_cast<int>(Kind::kKinds)));
  const Turns turns =
      RandomTurns(kind, *rc::gen::inRange(5, 60), 0, *rc::gen::arbitrary<std::uint32_t>());
  const CSZMatrix data = MatrixOf(turns.horizontal);
  CSZMatrix design(data.GetRow(), 5);
  CSZMatrix rightSide(data.GetRow(), 1);
  for (unsigned int i = 0; i < data.GetRow(); ++i) {
    const double u = data.GetData(i, 0);
    const double w = data.GetData(i, 1);
    const double row[] = {u * u - w * w, u * w, u, w, 1};
    for (unsigned int j = 0; j < 5; ++j) design.SetData(i, j, row[j]);
    rightSide.SetData(i, -(w * w));
  }
  const CSZMatrix expected = AdjustAccess().OverDeterminedEquationSolution(design, rightSide);
  CSZMatrix p;
  AdjustAccess().EllipseFit(data, 2, p);
  for (unsigned int i = 0; i < 5; ++i) RC_ASSERT(SameBits(p.GetData(i), expected.GetData(i)));
}

}  // namespace
}  // namespace tiltpole_test
