// How the samples of a session are read: tilts that no axis has, readings as fields in the sensor's
// frame, and the difference of the two magnetometers' headings.

#include "tiltpole/quality/detail/session.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "quality/simulated_pole.h"

namespace {

using namespace tiltpole_test;
using tiltpole::HeadingDifference;
using tiltpole::MagnetometerQuality;
using tiltpole::PoseSensorData;
using tiltpole::detail::DifferenceOver;
using tiltpole::detail::FillFiguresAfter;
using tiltpole::detail::FillFiguresBefore;
using tiltpole::detail::LevelImpossibleTilts;
using tiltpole::detail::Readings_A;
using tiltpole::detail::Readings_B;
using tiltpole::detail::Samples;
using tiltpole::detail::TurnReadings;
using tiltpole::detail::Vector3;

PoseSensorData WithTilts(double x, double y) {
  PoseSensorData sample;
  sample.InclineX = x;
  sample.InclineY = y;
  return sample;
}

TEST(SessionTilts, OfUpTo95DegreesEitherWayArePossible) {
  for (const double tilt : {95.0, -95.0}) {
    Samples horizontal = {WithTilts(tilt, 1.0), WithTilts(2.0, tilt)};
    Samples vertical;
    LevelImpossibleTilts(horizontal, vertical);
    EXPECT_EQ(horizontal[0].InclineX, tilt);
    EXPECT_EQ(horizontal[1].InclineY, tilt);
  }
}

TEST(SessionTilts, ASampleWithOneImpossibleTiltIsLevelledInBoth) {
  for (const double tilt : {95.001, -95.001, std::numeric_limits<double>::quiet_NaN()}) {
    Samples horizontal(8, WithTilts(3.0, 4.0));
    Samples vertical(12, WithTilts(5.0, 6.0));
    horizontal[2].InclineX = tilt;
    vertical[7].InclineY = tilt;
    LevelImpossibleTilts(horizontal, vertical);
    EXPECT_EQ(horizontal[2].InclineX, 0.0);
    EXPECT_EQ(horizontal[2].InclineY, 0.0);
    EXPECT_EQ(vertical[7].InclineX, 0.0);
    EXPECT_EQ(vertical[7].InclineY, 0.0);
    EXPECT_EQ(horizontal[3].InclineX, 3.0);
    EXPECT_EQ(vertical[6].InclineY, 6.0);
  }
}

TEST(SessionTilts, OfWhichMoreThanATenthAreImpossibleAllCountAsMissing) {
  Samples horizontal(8, WithTilts(3.0, 4.0));
  Samples vertical(11, WithTilts(5.0, 6.0));
  horizontal[2].InclineX = vertical[7].InclineX = 100.0;
  LevelImpossibleTilts(horizontal, vertical);
  for (const Samples* turn : {&horizontal, &vertical}) {
    for (const PoseSensorData& sample : *turn) {
      EXPECT_EQ(sample.InclineX, 0.0);
      EXPECT_EQ(sample.InclineY, 0.0);
    }
  }
}

TEST(SessionReadings, AreTheFieldWithXForwardYLeftAndZUpOfBothMagnetometers) {
  PoseSensorData corrected;
  corrected.MagneticX_A = 1.0;
  corrected.MagneticY_A = -2.0;
  corrected.MagneticZ_A = -3.0;
  corrected.MagneticX_B = -1.0;
  corrected.MagneticY_B = 2.0;
  corrected.MagneticZ_B = -3.0;
  for (const TurnReadings& readings : {Readings_A({corrected}), Readings_B({corrected})}) {
    EXPECT_EQ(readings.Field[0].x, 1.0);
    EXPECT_EQ(readings.Field[0].y, 2.0);
    EXPECT_EQ(readings.Field[0].z, 3.0);
    EXPECT_EQ(readings.Up[0].x, 0.0);
    EXPECT_EQ(readings.Up[0].y, 0.0);
    EXPECT_EQ(readings.Up[0].z, 1.0);
  }
}

TEST(SessionReadings, TheVerticalIsThatOfThePoleAndOneThatLiesFlatHasNoneAlongIt) {
  const Attitude pole = LeaningPole(20.0, 35.0, 130.0);
  const Vector up = SeenBySensor(pole, kZ);
  for (const bool of_A : {true, false}) {
    const Samples samples = {WithTilts(ElevationOfX(pole), ElevationOfY(pole)),
                             WithTilts(90.0, 1.0),
                             WithTilts(std::numeric_limits<double>::quiet_NaN(), 1.0),
                             WithTilts(1.0, std::numeric_limits<double>::quiet_NaN())};
    const TurnReadings readings = of_A ? Readings_A(samples) : Readings_B(samples);
    EXPECT_NEAR(readings.Up[0].x, up[0], 1e-12);
    EXPECT_NEAR(readings.Up[0].y, up[1], 1e-12);
    EXPECT_NEAR(readings.Up[0].z, up[2], 1e-12);
    EXPECT_EQ(readings.Up[1].x, 1.0);
    EXPECT_EQ(readings.Up[1].z, 0.0);
    for (const std::size_t unknown : {2U, 3U}) {
      EXPECT_EQ(readings.Up[unknown].x, 0.0);
      EXPECT_EQ(readings.Up[unknown].y, 0.0);
      EXPECT_EQ(readings.Up[unknown].z, 1.0);
    }
  }
}

std::vector<Vector3> Circle(double first, double second, double radius, bool vertical) {
  std::vector<Vector3> readings;
  for (int i = 0; i < 36; ++i) {
    const double u = first + radius * std::cos(10.0 * i * kDegree);
    const double w = second + radius * std::sin(10.0 * i * kDegree);
    readings.push_back(vertical ? Vector3{u, 7.0, w} : Vector3{u, w, -40.0});
  }
  return readings;
}

TEST(SessionFigures, BeforeTheCorrectionAreAboutTheCircleAndAfterItAboutTheOrigin) {
  MagnetometerQuality quality;
  FillFiguresBefore(Circle(100.0, 200.0, 300.0, false), Circle(50.0, 60.0, 70.0, true), quality);
  EXPECT_NEAR(quality.HorizontalBefore.CentreFirst, 100.0, 1e-9);
  EXPECT_NEAR(quality.HorizontalBefore.CentreSecond, 200.0, 1e-9);
  EXPECT_NEAR(quality.VerticalBefore.CentreFirst, 50.0, 1e-9);
  EXPECT_NEAR(quality.VerticalBefore.CentreSecond, 60.0, 1e-9);
  EXPECT_NEAR(quality.VerticalBefore.RadiusMean, 70.0, 1e-9);

  const TurnReadings horizontal = {Circle(100.0, 0.0, 3000.0, false), {}};
  const TurnReadings vertical = {Circle(0.0, 0.0, 5000.0, true), {}};
  FillFiguresAfter(horizontal, vertical, quality);
  EXPECT_EQ(quality.HorizontalAfter.CentreFirst, 0.0);
  EXPECT_EQ(quality.HorizontalAfter.CentreSecond, 0.0);
  EXPECT_NEAR(quality.HorizontalAfter.RadiusScatterLargest, 100.0, 2.0);
  EXPECT_NEAR(quality.FieldStrength, std::hypot(quality.HorizontalAfter.RadiusMean, 40.0), 1e-9);
  EXPECT_NEAR(quality.FieldStrengthVertical, std::hypot(5000.0, 7.0), 1e-9);
  EXPECT_NEAR(quality.Dip, std::atan2(40.0, quality.HorizontalAfter.RadiusMean) / kDegree, 1e-12);
  EXPECT_EQ(quality.HorizontalUsed, 36);
  EXPECT_EQ(quality.HorizontalDropped, 0);
  EXPECT_EQ(quality.VerticalUsed, 36);
  EXPECT_EQ(quality.VerticalDropped, 0);
}

TEST(SessionFigures, OfATurnRoundToAFractionOfACountAreToldAsFine) {
  const TurnReadings horizontal = {Circle(0.1, 0.0, 3000.0, false), {}};
  MagnetometerQuality quality;
  FillFiguresAfter(horizontal, {}, quality);
  EXPECT_NEAR(quality.HorizontalAfter.RadiusScatter, 0.1 / std::sqrt(2.0), 1e-5);
  EXPECT_NEAR(quality.HorizontalAfter.RadiusScatterLargest, 0.1, 1e-5);
  EXPECT_NEAR(quality.HorizontalAfter.OutOfPlaneScatterLargest, 0.0, 1e-9);
}

// A field that heads by the given angle to the right of the x axis of a plumb pole.
Vector3 FieldToTheRight(double degrees) {
  return {std::cos(degrees * kDegree), -std::sin(degrees * kDegree), -1.0};
}

TEST(HeadingDifference, IsThatOfBFromAAcrossNorthToo) {
  TurnReadings A;
  TurnReadings B;
  const double headings_A[] = {10.0, 359.0, 180.0, 1.0};
  const double headings_B[] = {12.0, 3.0, 179.0, 358.0};  // 2, 4, -1 and -3 further
  for (int i = 0; i < 4; ++i) {
    A.Field.push_back(FieldToTheRight(-headings_A[i]));
    B.Field.push_back(FieldToTheRight(-headings_B[i]));
    A.Up.push_back({0.0, 0.0, 1.0});
  }
  B.Up = A.Up;
  const HeadingDifference difference = DifferenceOver(A, B);
  EXPECT_NEAR(difference.Mean, 0.5, 1e-9);
  EXPECT_NEAR(difference.StandardDeviation,
              std::sqrt((1.5 * 1.5 + 3.5 * 3.5 + 1.5 * 1.5 + 3.5 * 3.5) / 4), 1e-9);
  EXPECT_NEAR(difference.Largest, 4.0, 1e-9);
}

TEST(HeadingDifference, ThatIsAlwaysTheSameDoesNotScatterHoweverOftenItIsSeen) {
  TurnReadings A;
  TurnReadings B;
  for (int count = 1; count <= 60; ++count) {
    A.Field.push_back(FieldToTheRight(0.0));
    B.Field.push_back(FieldToTheRight(3.7));
    A.Up.push_back({0.0, 0.0, 1.0});
    B.Up = A.Up;
    EXPECT_LT(DifferenceOver(A, B).StandardDeviation, 1e-9) << count;
  }
}

TEST(HeadingDifference, OfNoSamplesIsNotANumber) {
  const HeadingDifference difference = DifferenceOver({}, {});
  EXPECT_TRUE(std::isnan(difference.Mean));
  EXPECT_TRUE(std::isnan(difference.StandardDeviation));
  EXPECT_TRUE(std::isnan(difference.Largest));
}

}  // namespace
