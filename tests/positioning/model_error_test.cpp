// How far the solutions are from the truth with ideal sensors: the figures that the header gives to
// hosts.

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "positioning/exposed_position.h"
#include "positioning/true_pole.h"

namespace {

using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;
using tiltpole_test::AngleBetween;
using tiltpole_test::DistanceBetween;
using tiltpole_test::ExposedPosition;
using tiltpole_test::kDegree;
using tiltpole_test::TruePole;

constexpr double kLength = 2.0;  // [metres]
// Position_Geometry_B takes an axis as level within 1e-6 where it expects radians of degrees.
constexpr double kLevelForB = 1e-6 / kDegree / kDegree;  // [degrees]
constexpr double kStep = 5.0;  // of the lean directions and of the turns [degrees]

struct Worst {
  double heading = 0.0;  // [degrees]
  double tip = 0.0;      // [millimetres]
};

// The worst case over headings, lean directions and dips, with elevations as tilts.
Worst OfPosition(double tilt) {
  Worst worst;
  ExposedPosition position;
  for (const double dip : {-70.0, 0.0, 70.0}) {
    for (double lean = 0.0; lean < 360.0; lean += kStep) {
      for (double turn = 0.0; turn < 360.0; turn += kStep) {
        const TruePole pole = TruePole::Leaning(tilt, lean, turn);
        PoseSensorData data = pole.Sample(5000.0, dip);
        xyhCoordinate tip;
        position.Position(data, kLength, tip);
        worst.heading = std::max(worst.heading, AngleBetween(data.Yaw_A, pole.HeadingOfX()));
        worst.tip = std::max(worst.tip, 1000.0 * DistanceBetween(tip, pole.Tip(kLength)));
      }
    }
  }
  return worst;
}

// The same for a sensor that reports the turn about the x axis as the inclination of y.
Worst OfPositionWithRoll(double tilt) {
  Worst worst;
  ExposedPosition position;
  for (double heading = 0.0; heading < 360.0; heading += 90.0) {
    for (double direction = 0.0; direction < 360.0; direction += 0.5) {
      const double pitch = std::asin(std::sin(tilt * kDegree) * std::cos(direction * kDegree));
      const double roll = std::acos(std::min(1.0, std::cos(tilt * kDegree) / std::cos(pitch)));
      const double signed_roll = direction < 180.0 ? roll : -roll;
      const TruePole pole =
          TruePole::OfHeadingPitchRoll(heading, pitch / kDegree, signed_roll / kDegree);
      EXPECT_NEAR(pole.Tilt(), tilt, 1e-6);
      PoseSensorData data = pole.Sample(5000.0, 70.0);
      data.InclineX = pitch / kDegree;
      data.InclineY = signed_roll / kDegree;
      xyhCoordinate tip;
      position.Position(data, kLength, tip);
      worst.heading = std::max(worst.heading, AngleBetween(data.Yaw_A, heading));
      worst.tip = std::max(worst.tip, 1000.0 * DistanceBetween(tip, pole.Tip(kLength)));
    }
  }
  return worst;
}

// Poles that lean by `tilt` in many directions, turned to many headings, none near one where an
// axis is level.
std::vector<TruePole> WithBothAxesTilted(double tilt) {
  std::vector<TruePole> poles;
  for (double lean = 0.25; lean < 360.0; lean += 15.0) {
    for (double turn = 0.5; turn < 360.0; turn += 1.0) {
      poles.push_back(TruePole::Leaning(tilt, lean, turn));
    }
  }
  return poles;
}

// The same with an axis almost `elevation` above or below level.
std::vector<TruePole> WithAnAxisNearlyLevel(double tilt, double elevation) {
  const double off = 0.999 * std::asin(std::sin(elevation * kDegree) / std::sin(tilt * kDegree));
  std::vector<TruePole> poles;
  for (double lean = 0.25; lean < 360.0; lean += 15.0) {
    for (double turn = lean; turn < lean + 360.0; turn += 90.0) {
      poles.push_back(TruePole::Leaning(tilt, lean, turn + off / kDegree));
      poles.push_back(TruePole::Leaning(tilt, lean, turn - off / kDegree));
    }
  }
  return poles;
}

double OfGeometry_B(const std::vector<TruePole>& poles) {
  double worst = 0.0;
  ExposedPosition position;
  for (const TruePole& pole : poles) {
    PoseSensorData data = pole.Sample(5000.0, 70.0);
    data.Yaw_B = std::fmod(pole.HeadingOfX() + 180.0, 360.0);
    xyhCoordinate tip;
    position.Position_Geometry_B(xyhCoordinate(), data, kLength, tip);
    worst = std::max(worst, 1000.0 * DistanceBetween(tip, pole.Tip(kLength)));
  }
  return worst;
}

double OfMathAgainstPosition(const std::vector<TruePole>& poles) {
  double worst = 0.0;
  ExposedPosition position;
  for (const TruePole& pole : poles) {
    PoseSensorData data = pole.Sample(5000.0, 70.0);
    xyhCoordinate tip;
    position.Position(data, kLength, tip);
    xyhCoordinate math;
    EXPECT_EQ(position.Position_Math(xyhCoordinate(), data, kLength, math), 1);
    worst = std::max(worst, 1000.0 * DistanceBetween(tip, math));
  }
  return worst;
}

struct WorstTip {
  double error = 0.0;  // [millimetres]
  int not_found = 0;
};

// With true headings, for an antenna at these coordinates [metres].
WorstTip OfMathAbout(const xyhCoordinate& antenna) {
  WorstTip worst;
  ExposedPosition position;
  for (const double tilt : {1.0, 5.0, 15.0, 45.0}) {
    for (const TruePole& pole : WithBothAxesTilted(tilt)) {
      PoseSensorData data = pole.Sample(5000.0, 70.0);
      data.Yaw_A = pole.HeadingOfX();
      data.YawY_A = pole.HeadingOfY();
      xyhCoordinate tip;
      if (position.Position_Math(antenna, data, kLength, tip) == 0) {
        ++worst.not_found;
        continue;
      }
      tip = {tip.x - antenna.x, tip.y - antenna.y, tip.h - antenna.h};
      worst.error = std::max(worst.error, 1000.0 * DistanceBetween(tip, pole.Tip(kLength)));
    }
  }
  return worst;
}

TEST(PositionModelError, At5DegreesOfTilt) {
  const Worst worst = OfPosition(5.0);
  EXPECT_NEAR(worst.heading, 0.021, 0.0005);
  EXPECT_NEAR(worst.tip, 0.063, 0.0005);
}

TEST(PositionModelError, At10DegreesOfTilt) {
  const Worst worst = OfPosition(10.0);
  EXPECT_NEAR(worst.heading, 0.17, 0.005);
  EXPECT_NEAR(worst.tip, 1.0, 0.05);
}

TEST(PositionModelError, At15DegreesOfTilt) {
  const Worst worst = OfPosition(15.0);
  EXPECT_NEAR(worst.heading, 0.58, 0.005);
  EXPECT_NEAR(worst.tip, 5.2, 0.05);
}

TEST(PositionModelError, At20DegreesOfTilt) {
  const Worst worst = OfPosition(20.0);
  EXPECT_NEAR(worst.heading, 1.4, 0.05);
  EXPECT_NEAR(worst.tip, 17.0, 0.5);
}

TEST(PositionModelError, At30DegreesOfTilt) {
  const Worst worst = OfPosition(30.0);
  EXPECT_NEAR(worst.heading, 4.8, 0.05);
  EXPECT_NEAR(worst.tip, 84.0, 0.5);
}

TEST(PositionModelError, At45DegreesOfTilt) {
  const Worst worst = OfPosition(45.0);
  EXPECT_NEAR(worst.heading, 17.0, 0.5);
  EXPECT_NEAR(worst.tip, 413.0, 1.0);
}

TEST(PositionModelError, ASensorThatReportsTheRollHasExactHeadings) {
  EXPECT_LE(OfPositionWithRoll(30.0).heading, 1e-9);
}

TEST(PositionModelError, ASensorThatReportsTheRollHasAnErrorOfTheTip) {
  EXPECT_NEAR(OfPositionWithRoll(5.0).tip, 0.26, 0.005);
  EXPECT_NEAR(OfPositionWithRoll(10.0).tip, 2.1, 0.05);
  EXPECT_NEAR(OfPositionWithRoll(15.0).tip, 7.2, 0.05);
  EXPECT_NEAR(OfPositionWithRoll(20.0).tip, 17.0, 0.5);
  EXPECT_NEAR(OfPositionWithRoll(30.0).tip, 64.0, 0.5);
  EXPECT_NEAR(OfPositionWithRoll(45.0).tip, 275.0, 1.0);
}

TEST(PositionModelError, OfGeometryBGivenTheTrueHeading) {
  EXPECT_NEAR(OfGeometry_B(WithBothAxesTilted(5.0)), 0.35, 0.005);
  EXPECT_NEAR(OfGeometry_B(WithBothAxesTilted(10.0)), 2.8, 0.05);
  EXPECT_NEAR(OfGeometry_B(WithBothAxesTilted(15.0)), 9.4, 0.05);
  EXPECT_NEAR(OfGeometry_B(WithBothAxesTilted(20.0)), 22.0, 0.5);
  EXPECT_NEAR(OfGeometry_B(WithBothAxesTilted(30.0)), 76.0, 0.5);
  EXPECT_NEAR(OfGeometry_B(WithBothAxesTilted(45.0)), 263.0, 0.5);
}

TEST(PositionModelError, OfGeometryBWithAnAxisThatItTakesAsLevel) {
  for (const double tilt : {0.1, 0.5, 1.0, 3.0}) {
    EXPECT_NEAR(OfGeometry_B(WithAnAxisNearlyLevel(tilt, kLevelForB)), 0.11, 0.005) << tilt;
    EXPECT_LE(OfGeometry_B(WithBothAxesTilted(tilt)), 0.11) << tilt;
  }
  EXPECT_NEAR(OfGeometry_B(WithAnAxisNearlyLevel(kLevelForB, kLevelForB)), 0.16, 0.005);
}

TEST(PositionModelError, TheAnalyticSolutionAgreesWithPosition) {
  for (const double tilt : {0.1, 5.0, 45.0, 60.0}) {
    EXPECT_LE(OfMathAgainstPosition(WithBothAxesTilted(tilt)), 1e-6) << tilt;
  }
  EXPECT_LE(OfMathAgainstPosition(WithBothAxesTilted(0.01)), 0.002);
}

TEST(PositionModelError, TheAnalyticSolutionTakesNoAxisAsLevel) {
  const double level = 1e-6 / kDegree;
  for (const double tilt : {0.01, 0.1, 5.0, 30.0, 60.0}) {
    const double difference = OfMathAgainstPosition(WithAnAxisNearlyLevel(tilt, level));
    EXPECT_LE(difference, 0.004) << tilt;
    EXPECT_GE(difference, 0.0019) << tilt;
  }
}

TEST(PositionModelError, OfTheAnalyticSolutionGrowsWithTheAntennasCoordinates) {
  EXPECT_LE(OfMathAbout({0.0, 0.0, 0.0}).error, 1e-9);
  EXPECT_NEAR(OfMathAbout({100.0, 200.0, 300.0}).error, 0.2, 0.15);
  EXPECT_NEAR(OfMathAbout({1000.0, 1000.0, 100.0}).error, 20.0, 15.0);
  EXPECT_GE(OfMathAbout({50'000.0, 540'000.0, 100.0}).error, 1000.0);
  EXPECT_GE(OfMathAbout({50'000.0, 540'000.0, 100.0}).not_found, 1);
}

}  // namespace
