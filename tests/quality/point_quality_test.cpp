#include "tiltpole/quality/point_quality.h"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "quality/simulated_pole.h"

namespace {

using namespace tiltpole_test;
using tiltpole::CorrectSample;
using tiltpole::JudgePoint;
using tiltpole::PointDeviations;
using tiltpole::PointLimit;
using tiltpole::PointQuality;
using tiltpole::PoseSensorData;
using tiltpole::RigorousTip;
using tiltpole::RigorousTipOptions;
using tiltpole::SolveRigorousTip;

constexpr double kLength = 2.0;
constexpr double kStrength = 5000.0;

PoseSensorData Measured(const Attitude& pole, double dip) {
  return CorrectSample(IdealSample(pole, EarthField(kStrength, dip)), {}, {});
}

// What a pole of this attitude measures in repeated sessions: the tilts and the length with their
// deviations, each magnetometer with noise that turns a level heading by its deviation.
struct Spread {
  double north = 0.0;
  double east = 0.0;
  double height = 0.0;
  double north_east = 0.0;
};

PoseSensorData NoisySample(const PoseSensorData& ideal, double dip,
                           const RigorousTipOptions& options, const PointDeviations& deviations,
                           Random& random) {
  const double level = kStrength * std::cos(dip * kDegree) * kDegree;
  const double a = level * options.HeadingDeviation_A;
  const double b = level * options.HeadingDeviation_B;
  PoseSensorData sample = ideal;
  sample.InclineX += deviations.Tilt * random.Normal();
  sample.InclineY += deviations.Tilt * random.Normal();
  sample.MagneticX_A += a * random.Normal();
  sample.MagneticY_A += a * random.Normal();
  sample.MagneticZ_A += a * random.Normal();
  sample.MagneticX_B += b * random.Normal();
  sample.MagneticY_B += b * random.Normal();
  sample.MagneticZ_B += b * random.Normal();
  return sample;
}

Spread MonteCarlo(const Attitude& pole, double dip, RigorousTipOptions options,
                  const PointDeviations& deviations, std::uint64_t seed) {
  constexpr int kDraws = 8000;
  options.LargestHeadingDifference = 90.0;
  const PoseSensorData ideal = Measured(pole, dip);
  Random random(seed);
  double sum[3] = {};
  Spread square;
  for (int i = 0; i < kDraws; ++i) {
    const double length = kLength + deviations.Length * random.Normal();
    const RigorousTip tip =
        SolveRigorousTip(NoisySample(ideal, dip, options, deviations, random), length, options);
    const double error[3] = {tip.Offset.x + kLength * pole[0][2],
                             tip.Offset.y - kLength * pole[1][2],
                             tip.Offset.h + kLength * pole[2][2]};
    for (int k = 0; k < 3; ++k) sum[k] += error[k] / kDraws;
    square.north += error[0] * error[0] / kDraws;
    square.east += error[1] * error[1] / kDraws;
    square.height += error[2] * error[2] / kDraws;
    square.north_east += error[0] * error[1] / kDraws;
  }
  return {std::sqrt(square.north - sum[0] * sum[0]), std::sqrt(square.east - sum[1] * sum[1]),
          std::sqrt(square.height - sum[2] * sum[2]), square.north_east - sum[0] * sum[1]};
}

void ExpectAgreement(double lean, double dip, double tilt_deviation, double heading_deviation) {
  SCOPED_TRACE("lean " + std::to_string(lean) + ", dip " + std::to_string(dip));
  const Attitude pole = LeaningPole(25.0 + 7.0 * lean, lean, 50.0 + 11.0 * lean);
  RigorousTipOptions options;
  options.LargestHeadingDifference = 90.0;
  options.HeadingDeviation_A = heading_deviation;
  options.HeadingDeviation_B = 1.5 * heading_deviation;
  PointDeviations deviations;
  deviations.Tilt = tilt_deviation;
  const PointQuality quality = JudgePoint(Measured(pole, dip), kLength, options, deviations);
  const Spread found = MonteCarlo(pole, dip, options, deviations, 5);

  EXPECT_NEAR(quality.North / found.north, 1.0, 0.05);
  EXPECT_NEAR(quality.East / found.east, 1.0, 0.05);
  EXPECT_NEAR(quality.Height / found.height, 1.0, 0.05);

  const double n = found.north * found.north;
  const double e = found.east * found.east;
  const double spread = std::hypot(0.5 * (n - e), found.north_east);
  EXPECT_NEAR(quality.SemiMajor / std::sqrt(0.5 * (n + e) + spread), 1.0, 0.05);
  EXPECT_NEAR(quality.SemiMinor / std::sqrt(0.5 * (n + e) - spread), 1.0, 0.05);
  if (quality.SemiMajor < 1.2 * quality.SemiMinor) return;  // nearly a circle: no direction
  const double azimuth = 0.5 * std::atan2(found.north_east, 0.5 * (n - e)) / kDegree;
  EXPECT_NEAR(std::remainder(quality.SemiMajorAzimuth - azimuth, 180.0), 0.0, 3.0);
}

TEST(PointQuality, AgreesWithASimulatedPoleAtUsualDeviations) {
  for (const double lean : {1.0, 2.0, 5.0, 10.0, 20.0, 30.0, 45.0, 60.0}) {
    for (const double dip : {-50.0, 0.0, 65.0}) ExpectAgreement(lean, dip, 0.1, 1.0);
  }
}

TEST(PointQuality, AgreesWithASimulatedPoleAtLargeDeviations) {
  for (const double lean : {1.0, 5.0, 20.0, 45.0, 60.0}) ExpectAgreement(lean, 65.0, 0.3, 2.0);
}

TEST(PointQuality, TheLongAxisOfTheEllipseStandsAcrossTheLeanWhenTheHeadingLimits) {
  RigorousTipOptions options;
  options.HeadingDeviation_A = options.HeadingDeviation_B = 3.0;
  const PointQuality quality =
      JudgePoint(Measured(LeaningPole(70.0, 40.0, 20.0), 60.0), kLength, options);
  EXPECT_EQ(quality.Limit, PointLimit::Heading);
  EXPECT_NEAR(quality.SemiMajorAzimuth, 110.0, 1.0);
  EXPECT_NEAR(quality.SemiMajor,
              kLength * std::sin(40.0 * kDegree) * 3.0 / std::sqrt(2.0) * kDegree, 0.001);
  EXPECT_NE(quality.Statement.find(L"heading"), std::wstring::npos);
}

TEST(PointQuality, OneMagnetometerAloneHasItsOwnDeviation) {
  RigorousTipOptions options;
  options.HeadingDeviation_A = 3.0;
  options.HeadingDeviation_B = 4.0;
  const PoseSensorData sample = Measured(LeaningPole(70.0, 40.0, 20.0), 60.0);
  EXPECT_NEAR(JudgePoint(sample, kLength, options).Heading, 2.4, 1e-12);
  options.Disturbed_A = true;
  EXPECT_NEAR(JudgePoint(sample, kLength, options).Heading, 4.0, 1e-12);
  options.Disturbed_A = false;
  options.Disturbed_B = true;
  EXPECT_NEAR(JudgePoint(sample, kLength, options).Heading, 3.0, 1e-12);
}

TEST(PointQuality, APlumbPolesTipMovesAlikeInEveryDirection) {
  PointDeviations deviations;
  deviations.Tilt = 0.2;
  for (const double dip : {60.0, 90.0}) {
    const PointQuality quality =
        JudgePoint(Measured(LeaningPole(0, 0, 0), dip), kLength, {}, deviations);
    EXPECT_EQ(quality.Limit, PointLimit::Tilt);
    EXPECT_NEAR(quality.North, kLength * 0.2 * kDegree, 1e-9);
    EXPECT_NEAR(quality.East, kLength * 0.2 * kDegree, 1e-9);
    EXPECT_NEAR(quality.Height, deviations.Length, 1e-5);
  }
}

TEST(PointQuality, LengthAndAntennaLimitWhereTheyAreTheWorst) {
  const PoseSensorData sample = Measured(LeaningPole(70.0, 3.0, 20.0), 60.0);
  PointDeviations deviations;
  deviations.Tilt = 0.01;
  deviations.Length = 0.05;
  EXPECT_EQ(JudgePoint(sample, kLength, {}, deviations).Limit, PointLimit::Length);
  deviations.AntennaPlane = deviations.AntennaHeight = 0.1;
  const PointQuality quality = JudgePoint(sample, kLength, {}, deviations);
  EXPECT_EQ(quality.Limit, PointLimit::Antenna);
  EXPECT_NEAR(quality.Height, std::hypot(0.1, 0.05), 1e-3);
}

TEST(PointQuality, SaysSoWhenTheTipCannotBeTold) {
  const PointQuality vertical = JudgePoint(Measured(LeaningPole(10, 35, 100), 90.0), kLength);
  EXPECT_EQ(vertical.Limit, PointLimit::NotTold);
  EXPECT_TRUE(std::isnan(vertical.North));
  EXPECT_TRUE(std::isfinite(vertical.Height));
  PoseSensorData impossible = Measured(LeaningPole(10, 35, 100), 60.0);
  impossible.InclineX = impossible.InclineY = 70.0;
  const PointQuality quality = JudgePoint(impossible, kLength);
  EXPECT_EQ(quality.Limit, PointLimit::NotTold);
  EXPECT_TRUE(std::isnan(quality.Height));
}

// The error of a tilt at the edge of what a tilt can be has no size.
TEST(PointQuality, OfAPoleThatLiesFlatButForTheErrorOfItsTiltIsNotTold) {
  PointDeviations deviations;
  deviations.Tilt = 1.0;
  const PointQuality quality =
      JudgePoint(Measured(LeaningPole(0.0, 89.0, 0.0), 30.0), kLength, {}, deviations);
  EXPECT_TRUE(std::isnan(quality.North));
  EXPECT_EQ(quality.Limit, PointLimit::NotTold);
  EXPECT_FALSE(quality.Statement.empty());
}

// Rounding takes the shorter axis of such an ellipse to either side of 0.
TEST(PointQuality, AnEllipseFromTheHeadingAloneIsALineAndStillANumber) {
  PointDeviations deviations;
  deviations.Tilt = deviations.Length = 0.0;
  RigorousTipOptions options;
  options.HeadingDeviation_A = options.HeadingDeviation_B = 1e-7;
  for (int degrees = 0; degrees < 360; ++degrees) {
    const double heading = degrees + 0.5;
    const PointQuality quality = JudgePoint(
        Measured(LeaningPole(heading, 30.0, heading / 2.0), 60.0), kLength, options, deviations);
    EXPECT_GT(quality.SemiMajor, 0.0);
    EXPECT_GE(quality.SemiMinor, 0.0);
    EXPECT_LT(quality.SemiMinor, 1e-3 * quality.SemiMajor);
  }
}

TEST(PointQuality, AReportThatNobodyHasFilledIsAllZeros) {
  const PointQuality report;
  for (const double value :
       {report.North, report.East, report.Height, report.SemiMajor, report.SemiMinor,
        report.SemiMajorAzimuth, report.FromTilt, report.FromHeading, report.FromLength,
        report.FromAntenna, report.Heading}) {
    EXPECT_EQ(value, 0.0);
  }
  EXPECT_EQ(report.Limit, PointLimit::NotTold);
}

TEST(PointQuality, AHeadingDeviationThatIsNoneCountsAsOneDegree) {
  const PoseSensorData sample = Measured(LeaningPole(40.0, 20.0, 100.0), 60.0);
  const PointQuality expected = JudgePoint(sample, kLength);
  for (const double none : {0.0, -2.0, std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::quiet_NaN()}) {
    RigorousTipOptions options;
    options.HeadingDeviation_A = none;
    options.HeadingDeviation_B = none;
    const PointQuality quality = JudgePoint(sample, kLength, options);
    EXPECT_EQ(quality.Heading, expected.Heading);
    EXPECT_EQ(quality.SemiMajor, expected.SemiMajor);
  }
}

TEST(PointQuality, APoleWithoutLengthHasAnErrorFromTheAntennaAlone) {
  PointDeviations deviations;
  deviations.Length = 0.01;
  deviations.AntennaPlane = 0.02;
  const PointQuality quality =
      JudgePoint(Measured(LeaningPole(40.0, 20.0, 100.0), 60.0), 0.0, {}, deviations);
  EXPECT_EQ(quality.FromLength, 0.0);
  EXPECT_EQ(quality.North, 0.02);
  EXPECT_EQ(quality.Limit, PointLimit::Antenna);
}

}  // namespace
