#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "calibration/matrices.h"
#include "calibration/random_session.h"
#include "support/message_capture.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"
#include "tiltpole/calibration/detail/sweep_thinning.h"

namespace tiltpole_test {
namespace {

using tiltpole::CInclineSensor_MagneticAdjust;
using tiltpole::CSZMatrix;
using tiltpole::detail::ThinSweep;

std::vector<double> ColumnOf(const CSZMatrix& matrix, unsigned int j) {
  std::vector<double> column;
  for (unsigned int i = 0; i < matrix.GetRow(); ++i) column.push_back(matrix.GetData(i, j));
  return column;
}

std::vector<double> FirstColumn(const CSZMatrix& matrix) { return ColumnOf(matrix, 0); }

TEST(SweepThinning, KeepsStepsOfThreeDegreesAcrossTheJumpFrom359To1) {
  const CSZMatrix kept = ThinSweep(Rows({{350}, {352}, {355}, {359}, {1}, {5}, {9}}));
  EXPECT_EQ(FirstColumn(kept), (std::vector<double>{350, 355, 359, 1, 5, 9}));
}

TEST(SweepThinning, KeepsAFallingSweepAcrossTheJumpFrom1To359) {
  const CSZMatrix kept = ThinSweep(Rows({{9}, {5}, {4}, {1}, {359}, {357}, {355}, {350}}));
  EXPECT_EQ(FirstColumn(kept), (std::vector<double>{9, 5, 1, 359, 355, 350}));
}

TEST(SweepThinning, ASweepWithoutRowsOrColumnsStaysAsItIs) {
  EXPECT_EQ(ThinSweep(CSZMatrix(0, 3)).GetRow(), 0U);
  EXPECT_EQ(ThinSweep(CSZMatrix(0, 3)).GetCol(), 3U);
  EXPECT_EQ(ThinSweep(CSZMatrix(4, 0)).GetRow(), 4U);
  EXPECT_EQ(ThinSweep(CSZMatrix(4, 0)).GetCol(), 0U);
}

TEST(SweepThinning, AStepOfExactlyThreeIsKeptAndOneBelowIsNot) {
  const CSZMatrix kept = ThinSweep(Rows({{10}, {12.999}, {13}, {20}, {1}}));
  EXPECT_EQ(FirstColumn(kept), (std::vector<double>{10, 13, 20, 1}));
}

TEST(SweepThinning, StepsAgainstTheDirectionOfTheLegAreSkipped) {
  // Rising to the top at 24, wrapping down to the bottom at 1, rising again.
  const CSZMatrix kept = ThinSweep(Rows({{10}, {20}, {15}, {24}, {12}, {16}, {1}, {5}, {3}, {9}}));
  EXPECT_EQ(FirstColumn(kept), (std::vector<double>{10, 20, 24, 12, 1, 5, 9}));
}

TEST(SweepThinning, TheFirstOfEqualMaximaCutsTheLegs) {
  // With the second 30 as the cut, the 20 between them would be skipped.
  const CSZMatrix kept = ThinSweep(Rows({{10}, {30}, {20}, {30}, {1}, {25}}));
  EXPECT_EQ(FirstColumn(kept), (std::vector<double>{10, 30, 20, 1, 25}));
}

TEST(SweepThinning, TheFirstOfEqualMinimaCutsTheLegs) {
  // With the second 1 as the cut, the 20 between them would be skipped and the 5 kept.
  const CSZMatrix kept = ThinSweep(Rows({{10}, {30}, {1}, {20}, {1}, {5}}));
  EXPECT_EQ(FirstColumn(kept), (std::vector<double>{10, 30, 1, 20}));
}

TEST(SweepThinning, AConstantColumnLeavesOnlyTheFirstRow) {
  const CSZMatrix kept = ThinSweep(Rows({{7, 1}, {7, 2}, {7, 3}}));
  ASSERT_EQ(kept.GetRow(), 1U);
  EXPECT_EQ(kept.GetData(0, 1), 1.0);
}

TEST(SweepThinning, ASingleRowStays) {
  EXPECT_EQ(FirstColumn(ThinSweep(Rows({{7, 1}}))), std::vector<double>{7});
}

TEST(SweepThinning, AReadingThatIsNotANumberIsKeptAndSoIsTheOneAfterIt) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const CSZMatrix kept = ThinSweep(Rows({{10, 1}, {20, 2}, {nan, 3}, {21, 4}, {22, 5}, {1, 6}}));
  ASSERT_EQ(kept.GetRow(), 5U);
  EXPECT_EQ(kept.GetData(2, 1), 3.0);
  EXPECT_EQ(kept.GetData(3, 1), 4.0);
  EXPECT_EQ(kept.GetData(4, 1), 6.0);
}

TEST(SweepThinning, AllColumnsOfAKeptRowStay) {
  const CSZMatrix kept = ThinSweep(Rows({{10, 1, 2}, {11, 3, 4}, {14, 5, 6}, {1, 7, 8}}));
  ASSERT_EQ(kept.GetRow(), 3U);
  ASSERT_EQ(kept.GetCol(), 3U);
  EXPECT_EQ(kept.GetData(1, 1), 5.0);
  EXPECT_EQ(kept.GetData(1, 2), 6.0);
  EXPECT_EQ(kept.GetData(2, 2), 8.0);
}

CSZMatrix ConstantRows(unsigned int rows, unsigned int columns, double value) {
  CSZMatrix matrix(rows, columns);
  matrix = value;
  return matrix;
}

TEST(DataFilter, NeverChangesRowZeroNorTheColumnsBeyondTheSixth) {
  CSZMatrix M = Rows({{1, 2, 3, 4, 5, 6, 7}, {2, 4, 6, 8, 10, 12, 14}});
  CInclineSensor_MagneticAdjust().DataFilter(M);
  for (unsigned int j = 0; j < 7; ++j) EXPECT_EQ(M.GetData(0, j), j + 1.0);
  EXPECT_EQ(M.GetData(1, 6), 14.0);
  EXPECT_NE(M.GetData(1, 0), 2.0);
}

// The same filter written for one column: a random walk of variance 16, measured with variance 16.
// Every step is rounded as on matrices, where all that is not on a diagonal is zero.
std::vector<double> SmoothedPlainly(const std::vector<double>& readings) {
  std::vector<double> smoothed = readings;
  double x = readings[0];
  double P = 25.0;
  for (std::size_t i = 1; i < readings.size(); ++i) {
    const double predicted = P + 16.0;
    const double gain = predicted * (1.0 / (predicted + 16.0));
    P = (1.0 - gain) * predicted;
    x = x + gain * (readings[i] - x);
    smoothed[i] = x;
  }
  return smoothed;
}

RC_GTEST_PROP(DataFilter, SmoothesEachColumnLikeAScalarFilterToTheLastBit, ()) {
  Random random(*rc::gen::arbitrary<std::uint32_t>());
  CSZMatrix M(static_cast<unsigned int>(random.Whole(1, 40)), 6);
  const double scale = std::pow(10.0, random.Between(-6, 6));
  for (unsigned int i = 0; i < M.GetRow(); ++i) {
    for (unsigned int j = 0; j < 6; ++j) M.SetData(i, j, scale * random.Between(-1, 1));
  }
  std::vector<std::vector<double>> expected;
  for (unsigned int j = 0; j < 6; ++j) expected.push_back(SmoothedPlainly(ColumnOf(M, j)));
  CInclineSensor_MagneticAdjust().DataFilter(M);
  for (unsigned int j = 0; j < 6; ++j) RC_ASSERT(ColumnOf(M, j) == expected[j]);
}

TEST(DataFilter, TheFirstStepTakes41PartsIn57OfTheChange) {
  CSZMatrix M = Rows({{10, 0, -57, 1, 0, 570}, {67, 57, 0, 1, -57, 0}});
  CInclineSensor_MagneticAdjust().DataFilter(M);
  const double expected[] = {51, 41, -16, 1, -41, 160};
  for (unsigned int j = 0; j < 6; ++j) EXPECT_NEAR(M.GetData(1, j), expected[j], 1e-12);
}

TEST(DataFilter, StartsAfreshAtEveryCall) {
  CInclineSensor_MagneticAdjust adjust;
  CSZMatrix first = Rows({{1, 2, 3, 4, 5, 6}, {9, 9, 9, 9, 9, 9}});
  adjust.DataFilter(first);
  CSZMatrix again = Rows({{1, 2, 3, 4, 5, 6}, {9, 9, 9, 9, 9, 9}});
  adjust.DataFilter(again);
  for (unsigned int j = 0; j < 6; ++j) EXPECT_EQ(again.GetData(1, j), first.GetData(1, j));
}

TEST(DataFilter, LeavesAMatrixWithTooFewColumnsOrWithoutRowsAlone) {
  const MessageCapture messages;
  CInclineSensor_MagneticAdjust adjust;
  CSZMatrix narrow = Rows({{1, 2, 3, 4, 5}, {2, 3, 4, 5, 6}});
  adjust.DataFilter(narrow);
  EXPECT_EQ(narrow.GetData(1, 4), 6.0);
  CSZMatrix empty;
  adjust.DataFilter(empty);
  adjust.MatrixFilter(empty);
  EXPECT_EQ(empty.GetRow(), 0U);
  EXPECT_TRUE(messages.shown.empty());
}

TEST(MatrixFilter, AConstantColumnZeroLeavesOnlyTheFirstRow) {
  CSZMatrix M = ConstantRows(8, 7, 4.0);
  CInclineSensor_MagneticAdjust().MatrixFilter(M);
  EXPECT_EQ(M.GetRow(), 1U);
  EXPECT_EQ(M.GetCol(), 7U);
  EXPECT_EQ(M.GetData(0, 6), 4.0);
}

TEST(MatrixFilter, SmoothesBeforeItThins) {
  const CSZMatrix raw = Rows({{350, 0, 0, 0, 0, 0},
                              {355, 0, 0, 0, 0, 0},
                              {359, 0, 0, 0, 0, 0},
                              {1, 0, 0, 0, 0, 0},
                              {5, 0, 0, 0, 0, 0},
                              {9, 0, 0, 0, 0, 0}});
  CInclineSensor_MagneticAdjust adjust;
  CSZMatrix smoothed = raw;
  adjust.DataFilter(smoothed);
  CSZMatrix filtered = raw;
  adjust.MatrixFilter(filtered);
  EXPECT_EQ(FirstColumn(filtered), FirstColumn(ThinSweep(smoothed)));
  EXPECT_EQ(filtered.GetData(0, 0), 350.0);
  EXPECT_NE(FirstColumn(filtered), FirstColumn(ThinSweep(raw)));
}

TEST(MatrixFilter, AnInfiniteFirstReadingLeavesOnlyItsRow) {
  // No reading after it is smoothed to a number, so there are no extremes but itself.
  CSZMatrix M = ConstantRows(4, 6, 1.0);
  M.SetData(0, 0, -std::numeric_limits<double>::infinity());
  CInclineSensor_MagneticAdjust().MatrixFilter(M);
  EXPECT_EQ(M.GetRow(), 1U);
}

}  // namespace
}  // namespace tiltpole_test
