// The expected heading error against the true one, over populations of random sensors.

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "quality/calibrated_session.h"

namespace {

using namespace tiltpole_test;
using tiltpole::HeadingError;
using tiltpole::Verdict;

struct Population {
  double noise_share;  // of the field, on each axis of each reading
  double sway;         // of the turns' axes [degrees]
  double cross;        // terms beyond what the correction can undo
  double through;      // how far the turns go [degrees]
};

struct Outcome {
  int sensors = 0;
  int within_20_percent = 0;
  double expected_square = 0.0;
  double true_square = 0.0;
  double expected_tilted_square = 0.0;
  double true_tilted_square = 0.0;
  int good = 0;
  double largest_true_error_when_good = 0.0;  // plumb and tilted by 30 degrees
};

void Add(const SimulatedSession& session, const SimulatedMagnetometer& sensor, double side,
         const tiltpole::Incline_MagneticCorrectParameter& correction, const HeadingError& expected,
         bool good, Outcome& outcome) {
  const TrueError plumb = TrueErrorAtTilt(session, sensor, side, correction, 0.0);
  const TrueError tilted = TrueErrorAtTilt(session, sensor, side, correction, 30.0);
  const double noise = sensor.noise / sensor.gain[0][0] /
                       (session.strength * std::cos(session.dip * kDegree)) / kDegree;
  const double truth = plumb.mean_square + noise * noise;
  const double square = expected.RootMeanSquare * expected.RootMeanSquare;
  ++outcome.sensors;
  outcome.expected_square += square;
  outcome.true_square += truth;
  outcome.expected_tilted_square += expected.Tilted * expected.Tilted;
  outcome.true_tilted_square += tilted.mean_square + noise * noise;
  if (std::fabs(std::sqrt(square / truth) - 1.0) < 0.2) ++outcome.within_20_percent;
  if (!good) return;
  outcome.largest_true_error_when_good =
      std::max({outcome.largest_true_error_when_good, plumb.largest, tilted.largest});
}

Outcome Simulate(const Population& population, int sessions, std::uint64_t seed) {
  Random random(seed);
  Outcome outcome;
  for (int i = 0; i < sessions; ++i) {
    SimulatedSession session = RandomSession(random, population.noise_share, population.sway);
    session.through = population.through;
    AddCrossTerms(random, population.cross, session.A);
    AddCrossTerms(random, population.cross, session.B);
    RecordTurns(session, random);
    const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
    if (calibrated.result != 1) continue;
    const bool good = calibrated.quality.Result == Verdict::Good;
    if (good) ++outcome.good;
    Add(session, session.A, 1.0, calibrated.A, calibrated.quality.A.Heading, good, outcome);
    Add(session, session.B, -1.0, calibrated.B, calibrated.quality.B.Heading, good, outcome);
  }
  return outcome;
}

void ExpectRight(const Population& population, int sessions, double share_within_20_percent) {
  const Outcome outcome = Simulate(population, sessions, 2026);
  EXPECT_GE(outcome.sensors, 2 * sessions * 9 / 10);
  EXPECT_NEAR(std::sqrt(outcome.expected_square / outcome.true_square), 1.0, 0.2);
  EXPECT_NEAR(std::sqrt(outcome.expected_tilted_square / outcome.true_tilted_square), 1.0, 0.2);
  EXPECT_GE(outcome.within_20_percent, share_within_20_percent * outcome.sensors);
  EXPECT_LE(outcome.largest_true_error_when_good, 2.0);
}

TEST(ExpectedHeadingError, AgreesWithTheTruthOver200SensorsTurnedByAnUnsteadyHand) {
  ExpectRight({0.002, 1.0, 0.0, 360.0}, 105, 0.85);
}

TEST(ExpectedHeadingError, AgreesWithTheTruthForSensorsThatTheCorrectionCannotUndo) {
  ExpectRight({0.002, 0.3, 0.02, 360.0}, 30, 0.85);
  ExpectRight({0.002, 1.0, 0.05, 360.0}, 30, 0.85);
}

TEST(ExpectedHeadingError, AgreesWithTheTruthForNoisySensors) {
  ExpectRight({0.005, 0.3, 0.0, 360.0}, 30, 0.8);
}

TEST(ExpectedHeadingError, AgreesWithTheTruthForSteadyTurns) {
  ExpectRight({0.002, 0.0, 0.0, 360.0}, 30, 0.8);
}

TEST(ExpectedHeadingError, AgreesWithTheTruthForTurnsThatLackAFifth) {
  ExpectRight({0.002, 0.5, 0.0, 288.0}, 30, 0.8);
}

TEST(ExpectedHeadingError, SteadyTurnsOfSoundSensorsAreGood) {
  const Outcome outcome = Simulate({0.001, 0.2, 0.0, 360.0}, 20, 7);
  EXPECT_GE(outcome.good, 18);
}

TEST(ExpectedHeadingError, TellsTheErrorOfParametersThatAreWrongByAKnownAmount) {
  Random random(3);
  SimulatedSession session = RandomSession(random, 0.0005, 0.2);
  RecordTurns(session, random);
  Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  ASSERT_EQ(calibrated.result, 1);
  // An offset of 5 % of the horizontal field along y turns headings by 0.05 cos(heading).
  calibrated.A.y0 += 0.05 * calibrated.quality.A.HorizontalAfter.RadiusMean;
  const tiltpole::CalibrationQuality quality = JudgeCalibration(
      session.horizontal, session.vertical, calibrated.A, calibrated.B, calibrated.translation);
  ASSERT_EQ(quality.A.Heading.ByHeading.size(), 72U);
  for (const tiltpole::HeadingErrorAt& at : quality.A.Heading.ByHeading) {
    const double truth =
        TrueHeadingError(session, session.A, 1.0, calibrated.A, LeaningPole(at.Heading, 0, 0));
    EXPECT_NEAR(at.Error, truth, 0.25) << at.Heading;
  }
  EXPECT_NEAR(quality.A.Heading.Systematic, 0.05 / std::sqrt(2.0) / kDegree, 0.3);
  EXPECT_NE(quality.Result, Verdict::Good);
}

TEST(ExpectedHeadingError, SeesAVerticalTurnAboutAnAxisThatIsNotYWhenTiltsAreRecorded) {
  // The operator turns the pole about an axis 3 degrees off y; the fit takes that axis for y, and
  // every heading is off by as much.
  Random random(4);
  SimulatedSession session = RandomSession(random, 0.0005, 0.0);
  RecordTurns(session, random);
  session.vertical.clear();
  const Vector axis = {std::sin(3.0 * kDegree), std::cos(3.0 * kDegree), 0.0};
  for (int i = 0; i < session.samples; ++i) {
    const Attitude pole = Product(LeaningPole(session.vertical_heading, 0, 0),
                                  Turn(axis, 2.0 * 180.0 * kDegree * i / session.samples));
    session.vertical.push_back(SampleOf(session, pole, random));
  }
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  ASSERT_EQ(calibrated.result, 1);
  const TrueError truth = TrueErrorAtTilt(session, session.A, 1.0, calibrated.A, 0.0);
  EXPECT_GT(std::sqrt(truth.mean_square), 1.5);
  EXPECT_NEAR(calibrated.quality.A.Heading.Systematic / std::sqrt(truth.mean_square), 1.0, 0.2);
  EXPECT_NE(calibrated.quality.Result, Verdict::Good);
}

// The readings keep their part along x, so how y answers to it does not show.
TEST(ExpectedHeadingError, IsNotToldFromAVerticalTurnAboutX) {
  Random random(5);
  SimulatedSession session;
  RecordTurns(session, random);
  session.vertical.clear();
  for (int i = 0; i < session.samples; ++i) {
    const Attitude pole = Product(LeaningPole(session.vertical_heading, 0, 0),
                                  Turn(kX, 360.0 * kDegree * i / session.samples));
    session.vertical.push_back(SampleOf(session, pole, random));
  }
  const tiltpole::CalibrationQuality quality =
      JudgeCalibration(session.horizontal, session.vertical, {}, {}, {});
  EXPECT_TRUE(std::isnan(quality.A.Heading.RootMeanSquare));
  EXPECT_TRUE(std::isnan(quality.B.Heading.RootMeanSquare));
  EXPECT_EQ(quality.Result, Verdict::Unusable);
}

}  // namespace
