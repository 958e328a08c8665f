// A point is the average over a still period, or says that it is not.

#include "apps/field/still_average.h"

#include <gtest/gtest.h>

namespace tiltpole::field {
namespace {

constexpr double kPoleLength = 2.0;

Reading ReadingAt(double seconds, bool still = true) {
  Reading reading;
  reading.raw.seconds = seconds;
  reading.raw.antenna = xyhCoordinate{100.0, 200.0, 10.0};
  reading.tip.Status = TipStatus::Solved;
  reading.tip.Offset = {0.3, 0.4, -1.9};
  reading.position = xyhCoordinate{100.3, 200.4, 8.1};
  reading.still = still;
  return reading;
}

CalibrationState Calibrated() {
  CalibrationState state;
  state.calibrated = true;
  state.verdict = Verdict::Good;
  return state;
}

void Feed(StillAverage& average, double from, double to, bool still = true) {
  for (double seconds = from; seconds <= to; seconds += 0.1) {
    average.Add(ReadingAt(seconds, still));
  }
}

TEST(StillAverage, IsDoneAfterTheStillPeriodAndHasNoFlags) {
  StillAverage average;
  average.Start(2.0);
  Feed(average, 0.0, 1.95);
  EXPECT_FALSE(average.IsDone());
  EXPECT_NEAR(average.Progress(), 0.95, 0.01);
  Feed(average, 2.0, 2.2);
  ASSERT_TRUE(average.IsDone());
  const auto point = average.TakeNow({}, Calibrated(), kPoleLength);
  ASSERT_TRUE(point);
  EXPECT_EQ(point->flags, 0U);
  EXPECT_NEAR(point->position->x, 100.3, 1e-9);
  EXPECT_EQ(point->calibration, "good");
  EXPECT_FALSE(average.IsActive());
}

TEST(StillAverage, BeginsAnewWhenThePoleMoves) {
  StillAverage average;
  average.Start(2.0);
  Feed(average, 0.0, 1.9);
  average.Add(ReadingAt(2.0, false));
  EXPECT_EQ(average.Restarts(), 1);
  Feed(average, 2.1, 3.9);
  EXPECT_FALSE(average.IsDone());
  Feed(average, 4.0, 4.3);
  EXPECT_TRUE(average.IsDone());
  EXPECT_EQ(average.TakeNow({}, Calibrated(), kPoleLength)->flags, 0U);
}

TEST(StillAverage, NeverEndsWhileThePoleMoves) {
  StillAverage average;
  average.Start(1.0);
  Feed(average, 0.0, 60.0, false);
  EXPECT_FALSE(average.IsDone());
}

TEST(StillAverage, SaysOfAPointTakenInMotionThatThePoleMoved) {
  StillAverage average;
  average.Start(1.0);
  Feed(average, 0.0, 3.0, false);
  const auto point = average.TakeNow(ReadingAt(3.1, false), Calibrated(), kPoleLength);
  ASSERT_TRUE(point);
  EXPECT_EQ(point->flags, kPoleMoved | kShortAverage);
  EXPECT_EQ(point->samples, 1);
}

TEST(StillAverage, SaysOfAPointThatTheMagnetometersDisagreed) {
  StillAverage average;
  average.Start(1.0);
  Feed(average, 0.0, 0.5);
  Reading disturbed = ReadingAt(0.6);
  disturbed.disturbed = true;
  average.Add(disturbed);
  Feed(average, 0.7, 1.5);
  ASSERT_TRUE(average.IsDone());
  EXPECT_EQ(average.TakeNow({}, Calibrated(), kPoleLength)->flags, kMagnetometersDisagree);
}

TEST(StillAverage, SaysOfAPointThatNothingWasCalibrated) {
  StillAverage average;
  average.Start(1.0);
  Feed(average, 0.0, 1.5);
  const auto point = average.TakeNow({}, Uncalibrated(), kPoleLength);
  EXPECT_EQ(point->flags, kNotCalibrated);
  EXPECT_EQ(point->calibration, "none");
}

TEST(StillAverage, SaysThatTheAntennaIsUnknown) {
  StillAverage average;
  average.Start(0.5);
  for (double seconds = 0.0; seconds < 1.0; seconds += 0.1) {
    Reading reading = ReadingAt(seconds);
    reading.raw.antenna.reset();
    reading.position.reset();
    average.Add(reading);
  }
  const auto point = average.TakeNow({}, Calibrated(), kPoleLength);
  EXPECT_EQ(point->flags, kNoAntenna);
  EXPECT_FALSE(point->position);
  EXPECT_NEAR(point->offset.y, 0.4, 1e-12);
}

TEST(StillAverage, BeginsAnewWhenThePoleIsCarriedUpright) {
  StillAverage average;
  average.Start(2.0);
  Feed(average, 0.0, 1.0);
  Reading carried = ReadingAt(1.1);
  carried.raw.antenna->x += 0.5;
  average.Add(carried);
  EXPECT_EQ(average.Restarts(), 1);
}

TEST(StillAverage, GivesNoPointWhereNoTipCanBeTold) {
  StillAverage average;
  average.Start(1.0);
  Reading vertical_field = ReadingAt(0.0);
  vertical_field.tip.Status = TipStatus::HeadingCannotBeTold;
  average.Add(vertical_field);
  EXPECT_FALSE(average.TakeNow(vertical_field, Calibrated(), kPoleLength));
}

TEST(StillAverage, MeasuresTheSpreadOfTheTips) {
  StillAverage average;
  average.Start(0.5);
  for (int i = 0; i < 8; ++i) {
    Reading reading = ReadingAt(0.1 * i);
    reading.position->x += i % 2 == 0 ? 0.01 : -0.01;
    average.Add(reading);
  }
  EXPECT_NEAR(average.TakeNow({}, Calibrated(), kPoleLength)->spread, 0.01, 1e-3);
}

}  // namespace
}  // namespace tiltpole::field
