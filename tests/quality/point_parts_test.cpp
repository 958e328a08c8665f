// What each deviation contributes to a point, against the first derivatives of the tip: at small
// deviations nothing else counts.

#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "quality/simulated_pole.h"
#include "tiltpole/quality/point_quality.h"

namespace {

using namespace tiltpole_test;
using tiltpole::JudgePoint;
using tiltpole::PointDeviations;
using tiltpole::PointLimit;
using tiltpole::PointQuality;
using tiltpole::PoseSensorData;
using tiltpole::RigorousTip;
using tiltpole::RigorousTipOptions;
using tiltpole::SolveRigorousTip;

constexpr double kLength = 2.0;

PoseSensorData Measured(const Attitude& pole, double dip) {
  return tiltpole::CorrectSample(IdealSample(pole, EarthField(5000.0, dip)), {}, {});
}

// North, east and height of the tip.
Vector TipOf(const PoseSensorData& sample) {
  const RigorousTip tip = SolveRigorousTip(sample, kLength);
  return {tip.Offset.x, tip.Offset.y, tip.Offset.h};
}

// How the tip moves for one degree of an axis' tilt.
Vector MoveByTilt(const PoseSensorData& sample, double PoseSensorData::*axis) {
  constexpr double kStep = 1e-3;
  PoseSensorData more = sample;
  PoseSensorData less = sample;
  more.*axis += kStep;
  less.*axis -= kStep;
  const Vector to = TipOf(more);
  const Vector from = TipOf(less);
  Vector move{};
  for (std::size_t i = 0; i < 3; ++i) move[i] = (to[i] - from[i]) / (2 * kStep);
  return move;
}

double SquareOf(const Vector& v) { return v[0] * v[0] + v[1] * v[1] + v[2] * v[2]; }

struct Scene {
  PoseSensorData sample = Measured(LeaningPole(70.0, 25.0, 20.0), 60.0);
  RigorousTipOptions options;
  PointDeviations deviations;

  Scene() {
    options.HeadingDeviation_A = 0.03;
    options.HeadingDeviation_B = 0.04;
    deviations = {0.01, 0.01, 0.0003, 0.0002, 0.0005};
  }

  PointQuality Judge() const { return JudgePoint(sample, kLength, options, deviations); }
};

TEST(PointParts, TheHeadingTurnsTheTipAboutTheAntenna) {
  const Scene scene;
  const PointQuality quality = scene.Judge();
  const double heading = std::hypot(0.03 * 0.04 / 0.05, 0.01);
  EXPECT_NEAR(quality.Heading, heading, 1e-12);
  EXPECT_NEAR(quality.FromHeading / (kLength * std::sin(25.0 * kDegree) * heading * kDegree), 1.0,
              1e-5);
}

TEST(PointParts, TheTiltsMoveTheTipByTheirDerivatives) {
  const Scene scene;
  const double square = SquareOf(MoveByTilt(scene.sample, &PoseSensorData::InclineX)) +
                        SquareOf(MoveByTilt(scene.sample, &PoseSensorData::InclineY));
  EXPECT_NEAR(scene.Judge().FromTilt / (0.01 * std::sqrt(square)), 1.0, 1e-5);
}

TEST(PointParts, TheLengthMovesTheTipAlongThePoleAndTheAntennaMovesItWhole) {
  const PointQuality quality = Scene().Judge();
  EXPECT_NEAR(quality.FromLength, 0.0003, 1e-12);
  EXPECT_NEAR(quality.FromAntenna, std::sqrt(2 * 0.0002 * 0.0002 + 0.0005 * 0.0005), 1e-15);
}

TEST(PointParts, TheFiguresAreThoseOfTheSumOfAllParts) {
  const Scene scene;
  const Vector tip = TipOf(scene.sample);
  const double heading = std::hypot(0.03 * 0.04 / 0.05, 0.01) * kDegree;
  const double per_length = 0.0003 / kLength;
  const Vector moves[] = {MoveByTilt(scene.sample, &PoseSensorData::InclineX),
                          MoveByTilt(scene.sample, &PoseSensorData::InclineY)};
  double north = std::pow(0.0002, 2) + std::pow(tip[1] * heading, 2);
  double east = std::pow(0.0002, 2) + std::pow(tip[0] * heading, 2);
  double both = -tip[0] * tip[1] * heading * heading;
  double height = std::pow(0.0005, 2) + std::pow(tip[2] * per_length, 2);
  north += std::pow(tip[0] * per_length, 2);
  east += std::pow(tip[1] * per_length, 2);
  both += tip[0] * tip[1] * per_length * per_length;
  for (const Vector& move : moves) {
    north += std::pow(0.01 * move[0], 2);
    east += std::pow(0.01 * move[1], 2);
    both += 0.01 * 0.01 * move[0] * move[1];
    height += std::pow(0.01 * move[2], 2);
  }
  const PointQuality quality = scene.Judge();
  EXPECT_NEAR(quality.North / std::sqrt(north), 1.0, 1e-5);
  EXPECT_NEAR(quality.East / std::sqrt(east), 1.0, 1e-5);
  EXPECT_NEAR(quality.Height / std::sqrt(height), 1.0, 1e-5);
  // The ellipse holds the same: variance along a direction is the square of its axes' parts in it.
  const double azimuth = quality.SemiMajorAzimuth * kDegree;
  const double major = quality.SemiMajor * quality.SemiMajor;
  const double minor = quality.SemiMinor * quality.SemiMinor;
  const double c = std::cos(azimuth);
  const double s = std::sin(azimuth);
  EXPECT_NEAR((major * c * c + minor * s * s) / north, 1.0, 1e-5);
  EXPECT_NEAR((major * s * s + minor * c * c) / east, 1.0, 1e-5);
  EXPECT_NEAR((major - minor) * c * s / both, 1.0, 1e-5);
  EXPECT_GE(quality.SemiMajorAzimuth, 0.0);
  EXPECT_LT(quality.SemiMajorAzimuth, 180.0);
}

TEST(PointParts, AnAxisWestOfNorthIsGivenByItsOtherEnd) {
  Scene scene;
  scene.options.HeadingDeviation_A = scene.options.HeadingDeviation_B = 2.0;
  // Across a lean to 20 degrees lies 110, across one to 70 lies 160.
  for (const double towards : {20.0, 70.0, 130.0}) {
    scene.sample = Measured(LeaningPole(10.0, 40.0, towards), 60.0);
    EXPECT_NEAR(scene.Judge().SemiMajorAzimuth, std::fmod(towards + 90.0, 180.0), 1.0);
  }
}

TEST(PointParts, APlumbPolesHeightFallsByTheSquareOfItsTilt) {
  PointDeviations deviations;
  deviations.Tilt = 2.0;
  deviations.Length = 0.0;
  const PointQuality quality =
      JudgePoint(Measured(LeaningPole(0, 0, 0), 60.0), kLength, {}, deviations);
  const double tilt = 2.0 * kDegree;
  EXPECT_NEAR(quality.Height, kLength * tilt * tilt, 1e-12);
  EXPECT_NEAR(quality.FromTilt, kLength * std::sqrt(2 * tilt * tilt + std::pow(tilt, 4)), 1e-12);
  EXPECT_EQ(quality.FromHeading, 0.0);
}

TEST(PointParts, APlumbPolesEllipseIsACircle) {
  const PointQuality quality = JudgePoint(Measured(LeaningPole(0, 0, 0), 60.0), kLength);
  EXPECT_EQ(quality.SemiMajor, quality.North);
  EXPECT_EQ(quality.SemiMinor, quality.North);
  EXPECT_EQ(quality.East, quality.North);
}

TEST(PointParts, APoleThatLeansByNextToNothingIsAsUncertainAsAPlumbOne) {
  PointDeviations deviations;
  deviations.Tilt = 2.0;
  deviations.Length = 0.0;
  const PointQuality plumb =
      JudgePoint(Measured(LeaningPole(0, 0, 0), 60.0), kLength, {}, deviations);
  for (const double towards : {0.0, 45.0, 160.0}) {
    const PointQuality quality =
        JudgePoint(Measured(LeaningPole(30.0, 1e-6, towards), 60.0), kLength, {}, deviations);
    EXPECT_NEAR(quality.North / plumb.North, 1.0, 0.01);
    EXPECT_NEAR(quality.East / plumb.East, 1.0, 0.01);
    EXPECT_NEAR(quality.Height / plumb.Height, 1.0, 0.01);
    EXPECT_NEAR(quality.FromTilt / plumb.FromTilt, 1.0, 0.01);
  }
}

// The tip turns about the antenna, so that it also comes closer to where the antenna stands: by the
// square of the angle over the root of 2, and always towards the antenna.
TEST(PointParts, ALargeErrorOfTheHeadingBendsTheEllipseAlongTheLean) {
  Scene scene;
  scene.deviations = {0.0, 6.0, 0.0, 0.0, 0.0};
  scene.options.HeadingDeviation_A = scene.options.HeadingDeviation_B = 1e-9;
  const double radius = kLength * std::sin(25.0 * kDegree);
  const double angle = 6.0 * kDegree;
  for (const double towards : {0.0, 45.0, 135.0, 300.0}) {
    scene.sample = Measured(LeaningPole(70.0, 25.0, towards), 60.0);
    const PointQuality quality = scene.Judge();
    EXPECT_NEAR(quality.SemiMajor / (radius * angle), 1.0, 0.01);
    EXPECT_NEAR(quality.SemiMinor / (radius * angle * angle / std::sqrt(2.0)), 1.0, 0.02);
    EXPECT_NEAR(quality.FromHeading, std::hypot(quality.SemiMajor, quality.SemiMinor), 1e-12);
    EXPECT_NEAR(std::remainder(quality.SemiMajorAzimuth - towards - 90.0, 180.0), 0.0, 1e-6);
  }
}

TEST(PointParts, WithoutAHeadingItsDeviationIsThatOfWhatBothShare) {
  const PoseSensorData sample = Measured(LeaningPole(0, 0, 0), 90.0);
  EXPECT_EQ(JudgePoint(sample, kLength).Heading, 0.0);
  EXPECT_EQ(JudgePoint(sample, kLength, {}, {0.1, 0.25, 0.0, 0.0, 0.0}).Heading, 0.25);
}

TEST(PointParts, AnErrorOfTheLengthIsAlongAPoleOfAnyLength) {
  for (const double length : {0.5, 1.0, 2.0}) {
    const Scene scene;
    PointDeviations deviations;
    deviations.Length = 0.01;
    EXPECT_NEAR(JudgePoint(scene.sample, length, {}, deviations).FromLength, 0.01, 1e-12);
  }
}

// Next to north the last bits decide on which side of it the axis is found.
TEST(PointParts, AnAxisNextToNorthHasAnAzimuthBelow180) {
  PoseSensorData sample;
  sample.MagneticX_A = 1000.0;
  sample.MagneticX_B = -1000.0;
  sample.MagneticZ_A = sample.MagneticZ_B = 1700.0;
  sample.InclineX = -30.0;
  RigorousTipOptions options;
  options.HeadingDeviation_A = options.HeadingDeviation_B = 1e-9;
  for (const double aside : {1e-14, 3e-15, 1e-15, -1e-15, -3e-15, -1e-14}) {
    sample.MagneticY_A = aside;
    sample.MagneticY_B = -aside;
    const PointQuality quality = JudgePoint(sample, kLength, options, {0.0, 0.0, 0.01, 0.0, 0.0});
    EXPECT_GE(quality.SemiMajorAzimuth, 0.0);
    EXPECT_LT(quality.SemiMajorAzimuth, 180.0);
    EXPECT_NEAR(std::remainder(quality.SemiMajorAzimuth, 180.0), 0.0, 1e-9);
  }
}

TEST(PointParts, DeviationsBelowZeroCountAsNone) {
  Scene scene;
  scene.deviations = {-0.01, -0.01, -0.01, -0.01, -0.01};
  const PointQuality quality = scene.Judge();
  EXPECT_EQ(quality.FromTilt, 0.0);
  EXPECT_EQ(quality.FromLength, 0.0);
  EXPECT_EQ(quality.FromAntenna, 0.0);
  EXPECT_NEAR(quality.Heading, 0.024, 1e-12);
}

// The limit is what the two headings differ by and a little more: tilts that are off move the
// difference to either side of it.
Scene WithHeadingsApart(double more) {
  Scene scene;
  const Attitude pole = LeaningPole(70.0, 60.0, 20.0);
  const PoseSensorData turned = Measured(Product(pole, Turn(kZ, 4.9 * kDegree)), 60.0);
  scene.sample = Measured(pole, 60.0);
  scene.sample.MagneticX_B = turned.MagneticX_B;
  scene.sample.MagneticY_B = turned.MagneticY_B;
  scene.sample.MagneticZ_B = turned.MagneticZ_B;
  scene.deviations.Tilt = 3.0;
  scene.options.LargestHeadingDifference =
      std::fabs(SolveRigorousTip(scene.sample, kLength).HeadingDifference) + more;
  return scene;
}

TEST(PointParts, MagnetometersThatAgreeStayInUseWhereverTheirNodesLie) {
  Scene scene = WithHeadingsApart(1e-6);
  const PointQuality at_the_limit = scene.Judge();
  scene.options.LargestHeadingDifference = 90.0;
  EXPECT_EQ(at_the_limit.FromTilt, scene.Judge().FromTilt);
}

TEST(PointParts, AMagnetometerThatDisagreesStaysOutWhereverItsNodesLie) {
  Scene scene = WithHeadingsApart(-1e-6);
  const PointQuality at_the_limit = scene.Judge();
  scene.options.LargestHeadingDifference = 0.0;
  EXPECT_EQ(at_the_limit.FromTilt, scene.Judge().FromTilt);
}

TEST(PointParts, EachLimitHasASentenceOfItsOwn) {
  Scene scene;
  const auto says = [&scene](PointLimit limit, const wchar_t* words) {
    const PointQuality quality = scene.Judge();
    return quality.Limit == limit && quality.Statement.find(words) != std::wstring::npos;
  };
  scene.deviations = {3.0, 0.0, 0.0, 0.0, 0.0};
  EXPECT_TRUE(says(PointLimit::Tilt, L"The tilts limit"));
  scene.deviations = {0.0, 3.0, 0.0, 0.0, 0.0};
  EXPECT_TRUE(says(PointLimit::Heading, L"The heading limits"));
  scene.deviations = {0.0, 0.0, 3.0, 0.0, 0.0};
  EXPECT_TRUE(says(PointLimit::Length, L"The pole length limits"));
  scene.deviations = {0.0, 0.0, 0.0, 3.0, 0.0};
  EXPECT_TRUE(says(PointLimit::Antenna, L"The antenna's position limits"));
  scene.sample.InclineX = 200.0;
  scene.sample.InclineY = 80.0;
  EXPECT_TRUE(says(PointLimit::NotTold, L"cannot be told"));
}

TEST(PointParts, AHostThatStatesNothingGetsATenthOfADegreeAndAMillimetre) {
  const PointDeviations deviations;
  EXPECT_EQ(deviations.Tilt, 0.1);
  EXPECT_EQ(deviations.HeadingCommon, 0.0);
  EXPECT_EQ(deviations.Length, 0.001);
  EXPECT_EQ(deviations.AntennaPlane, 0.0);
  EXPECT_EQ(deviations.AntennaHeight, 0.0);
}

TEST(PointParts, ATipThatNobodyHasSolvedIsImpossibleAndAllZeros) {
  const RigorousTip tip;
  EXPECT_EQ(tip.Status, tiltpole::TipStatus::TiltsImpossible);
  EXPECT_EQ(tip.Source, tiltpole::HeadingSource::None);
  EXPECT_FALSE(tip.Agree);
  for (const double value : {tip.Offset.x, tip.Offset.y, tip.Offset.h, tip.HeadingDifference,
                             tip.Heading, tip.Heading_A, tip.Heading_B, tip.Tilt, tip.Dip}) {
    EXPECT_EQ(value, 0.0);
  }
}

}  // namespace
