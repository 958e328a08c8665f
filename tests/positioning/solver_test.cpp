// The tip, the angles that hosts may ask for, and the comparison of lean directions.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "positioning/exposed_position.h"

namespace {

using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;
using tiltpole_test::ExposedPosition;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kDegree = 3.141592653589793 / 180.0;

class PositionSolver : public ::testing::Test {
 protected:
  PositionSolver() {
    result.x = 7.0;
    result.y = 7.0;
    result.h = 7.0;
  }

  PoseSensorData Tilted(double x, double y) {
    PoseSensorData data;
    data.InclineX = x;
    data.InclineY = y;
    return data;
  }

  // A sample of a pole whose y axis is level, with the headings given: Hx and Hy of each
  // magnetometer are what a field of 100 counts without dip gives, so the readings agree.
  PoseSensorData LeaningForward(double yaw_A, double yaw_B) {
    PoseSensorData data = Tilted(-10.0, 0.0);
    // The corrected reading (X, Y, Z) with Hx = 100 cos(yaw), Hy = -100 sin(yaw) and no vertical
    // part, and the raw one that gives it.
    data.MagneticX_A = 100.0 * std::cos(yaw_A * kDegree) * std::cos(10.0 * kDegree);
    data.MagneticY_A = 100.0 * std::sin(yaw_A * kDegree);
    data.MagneticZ_A = 100.0 * std::cos(yaw_A * kDegree) * std::sin(10.0 * kDegree);
    data.MagneticX_B = 100.0 * std::cos(yaw_B * kDegree) * std::cos(10.0 * kDegree);
    data.MagneticY_B = 100.0 * std::sin(yaw_B * kDegree);
    data.MagneticZ_B = -100.0 * std::cos(yaw_B * kDegree) * std::sin(10.0 * kDegree);
    return data;
  }

  ExposedPosition position;
  xyhCoordinate result;
};

TEST_F(PositionSolver, SolutionAGivesNoTipForATiltThatIsNoNumber) {
  for (const double other : {-10.0, 10.0}) {
    EXPECT_EQ(position.Position_Geometry_A({}, Tilted(other, kNotANumber), 2.0, result), 1);
    EXPECT_TRUE(std::isnan(result.x)) << other;
    EXPECT_TRUE(std::isnan(result.y)) << other;
    EXPECT_EQ(position.Position_Geometry_A({}, Tilted(kNotANumber, other), 2.0, result), 1);
    EXPECT_TRUE(std::isnan(result.x)) << other;
    EXPECT_TRUE(std::isnan(result.y)) << other;
  }
}

TEST_F(PositionSolver, APlumbPoleHasItsTipBelowTheAntenna) {
  PoseSensorData data;
  EXPECT_EQ(position.Position(data, 2.0, result), 1);
  EXPECT_EQ(result.x, 0.0);
  EXPECT_EQ(result.y, 0.0);
  EXPECT_EQ(result.h, -2.0);
}

TEST_F(PositionSolver, APlumbPoleLeavesTheWorkingAnglesAlone) {
  position.PoleTriangleAngle = 1.0;
  position.PoleProjectOffset = 2.0;
  PoseSensorData data = Tilted(5.7e-5, -5.7e-5);
  position.Position(data, 2.0, result);
  EXPECT_EQ(result.h, -2.0);
  EXPECT_EQ(position.PoleTriangleAngle, 1.0);
  EXPECT_EQ(position.PoleProjectOffset, 2.0);
}

TEST_F(PositionSolver, APlumbPoleKeepsTheInterferenceFlagOfTheReadings) {
  PoseSensorData data;
  data.MagneticX_B = 301.0;
  position.Position(data, 2.0, result);
  EXPECT_EQ(position.IsMagneticInterference(), 1);
}

TEST_F(PositionSolver, OneTiltBeyondTheLimitIsEnoughToLean) {
  PoseSensorData data = Tilted(6e-5, 0.0);
  position.Position(data, 2.0, result);
  EXPECT_NE(result.x, 0.0);
}

TEST_F(PositionSolver, PositionWritesTheRecordAndTheFlags) {
  PoseSensorData data = Tilted(3.0, 4.0);
  data.MagneticX_A = 5000.0;
  data.MagneticY_A = 100.0;
  data.MagneticX_B = -5000.0;
  data.MagneticY_B = -100.0;
  EXPECT_EQ(position.Position(data, 2.0, result), 1);
  EXPECT_EQ(data.MagneticY_A, -100.0);
  EXPECT_EQ(data.MagneticY_B, 100.0);
  EXPECT_NE(data.Yaw_A, 0.0);
  EXPECT_NE(data.Yaw_B, 0.0);
  EXPECT_NE(data.YawY_A, 0.0);
  EXPECT_EQ(position.IsStationary(), 0);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
  EXPECT_EQ(data.InclineX, 3.0);
  EXPECT_EQ(data.InclineY, 4.0);
  EXPECT_EQ(data.HostAngle, 90.0);
}

TEST_F(PositionSolver, TheAngleToTheHorizontalOfALevelSensorIs90) {
  EXPECT_EQ(position.GetAngleofPoletoHorizontal(0.0, 0.0), 90.0);
}

TEST_F(PositionSolver, TheAngleToTheHorizontalIsTheComplementOfASingleTilt) {
  EXPECT_DOUBLE_EQ(position.GetAngleofPoletoHorizontal(30.0, 0.0), 60.0);
  EXPECT_DOUBLE_EQ(position.GetAngleofPoletoHorizontal(0.0, -30.0), 60.0);
}

TEST_F(PositionSolver, TiltsThatNoPoleCanHaveGiveAnAngleThatIsNotANumber) {
  EXPECT_TRUE(std::isnan(position.GetAngleofPoletoHorizontal(60.0, 60.0)));
  EXPECT_TRUE(std::isnan(position.GetAngleofPoletoHorizontal(kNotANumber, 0.0)));
}

TEST_F(PositionSolver, ARisingYAxisAloneSendsTheTipToTheLeft) {
  PoseSensorData data = Tilted(0.0, 5.0);
  data.Yaw_A = 200.0;
  EXPECT_EQ(position.Position_Geometry_A(xyhCoordinate(), data, 2.0, result), 1);
  EXPECT_EQ(position.PoleProjectOffset, -90.0);
  EXPECT_NEAR(result.x, 2.0 * std::sin(5.0 * kDegree) * std::cos(110.0 * kDegree), 1e-15);
  EXPECT_NEAR(result.y, 2.0 * std::sin(5.0 * kDegree) * std::sin(110.0 * kDegree), 1e-15);
  EXPECT_EQ(position.GetAngleofPoleProject(0.0, 5.0, 200.0), 110.0);
}

TEST_F(PositionSolver, AFallingYAxisAloneSendsTheTipToTheRight) {
  PoseSensorData data = Tilted(0.0, -5.0);
  data.Yaw_A = 200.0;
  position.Position_Geometry_A(xyhCoordinate(), data, 2.0, result);
  EXPECT_EQ(position.PoleProjectOffset, 90.0);
  EXPECT_EQ(position.GetAngleofPoleProject(0.0, -5.0, 200.0), 290.0);
}

TEST_F(PositionSolver, BothAxesLevelCountAsAFallingYAxis) {
  EXPECT_EQ(position.GetAngleofPoleProject(0.0, 0.0, 200.0), 290.0);
}

TEST_F(PositionSolver, ARisingXAxisAloneSendsTheTipAhead) {
  PoseSensorData data = Tilted(5.0, 0.0);
  data.Yaw_A = 200.0;
  position.Position_Geometry_A(xyhCoordinate(), data, 2.0, result);
  EXPECT_EQ(position.PoleProjectOffset, 0.0);
  EXPECT_EQ(position.GetAngleofPoleProject(5.0, 0.0, 200.0), 200.0);
}

TEST_F(PositionSolver, AFallingXAxisAloneSendsTheTipBack) {
  PoseSensorData data = Tilted(-5.0, 0.0);
  data.Yaw_A = 200.0;
  position.Position_Geometry_A(xyhCoordinate(), data, 2.0, result);
  EXPECT_EQ(position.PoleProjectOffset, 180.0);
  EXPECT_EQ(position.GetAngleofPoleProject(-5.0, 0.0, 200.0), 20.0) << "wrapped once";
}

TEST_F(PositionSolver, AnAzimuthOfExactly360Stays) {
  EXPECT_EQ(position.GetAngleofPoleProject(0.0, -5.0, 270.0), 360.0);
  EXPECT_EQ(position.GetAngleofPoleProject(0.0, 5.0, 90.0), 0.0);
}

TEST_F(PositionSolver, AnAzimuthIsWrappedOnceOnly) {
  EXPECT_EQ(position.GetAngleofPoleProject(0.0, -5.0, 800.0), 530.0);
  EXPECT_EQ(position.GetAngleofPoleProject(0.0, 5.0, -800.0), -530.0);
}

TEST_F(PositionSolver, ATiltBelowTheLimitCountsAsLevel) {
  EXPECT_EQ(position.GetAngleofPoleProject(5.7e-5, 5.0, 0.0), 270.0);
  EXPECT_NE(position.GetAngleofPoleProject(5.8e-5, 5.0, 0.0), 270.0);
  EXPECT_EQ(position.GetAngleofPoleProject(5.0, 5.7e-5, 10.0), 10.0);
  EXPECT_NE(position.GetAngleofPoleProject(5.0, 1e-2, 10.0), 10.0);
}

TEST_F(PositionSolver, EqualTiltsSendTheTipBetweenTheAxes) {
  EXPECT_NEAR(position.GetAngleofPoleProject(1.0, 1.0, 100.0), 55.0, 0.01);
  EXPECT_NEAR(position.GetAngleofPoleProject(-1.0, 1.0, 100.0), 325.0, 0.01);
  EXPECT_NEAR(position.GetAngleofPoleProject(-1.0, -1.0, 100.0), 235.0, 0.01);
  EXPECT_NEAR(position.GetAngleofPoleProject(1.0, -1.0, 100.0), 145.0, 0.01);
}

TEST_F(PositionSolver, TheOffsetLeadsFromTheHeadingToTheAzimuthInEveryRow) {
  for (const double x : {3.0, -3.0}) {
    for (const double y : {4.0, -4.0}) {
      PoseSensorData data = Tilted(x, y);
      data.Yaw_A = 180.0;
      position.Position_Geometry_A(xyhCoordinate(), data, 2.0, result);
      EXPECT_EQ(180.0 + position.PoleProjectOffset, position.GetAngleofPoleProject(x, y, 180.0));
    }
  }
}

TEST_F(PositionSolver, TheTriangleAngleReads180AfterEveryRun) {
  for (const double x : {3.0, 0.0, -3.0}) {
    for (const double y : {4.0, 0.0, -4.0}) {
      position.PoleTriangleAngle = 1.0;
      position.Position_Geometry_A(xyhCoordinate(), Tilted(x, y), 2.0, result);
      EXPECT_EQ(position.PoleTriangleAngle, 180.0);
    }
  }
}

TEST_F(PositionSolver, APoleAt60DegreesWithItsTipToTheEast) {
  PoseSensorData data = Tilted(30.0, 0.0);
  data.Yaw_A = 90.0;
  position.Position_Geometry_A(xyhCoordinate(), data, 1.0, result);
  EXPECT_NEAR(result.x, 0.0, 1e-15);
  EXPECT_NEAR(result.y, 0.5, 1e-15);
  EXPECT_NEAR(result.h, -std::sqrt(3.0) / 2.0, 1e-15);
}

TEST_F(PositionSolver, TheOriginIsAdded) {
  xyhCoordinate origin;
  origin.x = 100.0;
  origin.y = 200.0;
  origin.h = 300.0;
  PoseSensorData data = Tilted(30.0, 0.0);
  data.Yaw_A = 90.0;
  data.Yaw_B = 270.0;
  position.Position_Geometry_A(origin, data, 1.0, result);
  EXPECT_NEAR(result.x, 100.0, 1e-12);
  EXPECT_NEAR(result.y, 200.5, 1e-12);
  EXPECT_NEAR(result.h, 300.0 - std::sqrt(3.0) / 2.0, 1e-12);
  EXPECT_EQ(position.Position_Geometry_B(origin, data, 1.0, result), 1);
  EXPECT_NEAR(result.x, 100.0, 1e-12);
  EXPECT_NEAR(result.y, 200.5, 1e-12);
  EXPECT_NEAR(result.h, 300.0 - std::sqrt(3.0) / 2.0, 1e-12);
}

TEST_F(PositionSolver, SolutionAClampsTheCosineWhereTheAzimuthAloneIsNotANumber) {
  // The tangents of the two tilts multiply to more than 1: no pole stands so, the first row's
  // cosine is below -1.
  EXPECT_TRUE(std::isnan(position.GetAngleofPoleProject(50.0, 50.0, 0.0)));
  position.Position_Geometry_A(xyhCoordinate(), Tilted(50.0, 50.0), 2.0, result);
  EXPECT_FALSE(std::isnan(position.PoleProjectOffset));
  EXPECT_TRUE(std::isnan(result.h)) << "the pole's angle is not a number either";
}

TEST_F(PositionSolver, SolutionAClampsACosineAboveOneToo) {
  // A tilt beyond 90 degrees changes the sign of its tangent.
  EXPECT_TRUE(std::isnan(position.GetAngleofPoleProject(130.0, 50.0, 0.0)));
  position.Position_Geometry_A(xyhCoordinate(), Tilted(130.0, 50.0), 2.0, result);
  EXPECT_EQ(position.PoleProjectOffset, -90.0) << "the sine of a clamped angle of 0 is 0";
}

TEST_F(PositionSolver, SolutionBReadsTheTiltsAsRadiansAndTheHeadingOfB) {
  PoseSensorData data = Tilted(20.0, 30.0);
  data.Yaw_A = 77.0;
  data.Yaw_B = 200.0;
  position.Position_Geometry_B(xyhCoordinate(), data, 2.0, result);
  const double phi = position.GetAngleofPoletoHorizontal(20.0, 30.0) * kDegree;
  const double R = position.GetAngleofPoleProject(-(20.0 * 3.141592653589793 / 180.0),
                                                  -(30.0 * 3.141592653589793 / 180.0), 200.0) *
                   kDegree;
  EXPECT_NEAR(result.x, 2.0 * std::cos(phi) * std::cos(R), 1e-15);
  EXPECT_NEAR(result.y, 2.0 * std::cos(phi) * std::sin(R), 1e-15);
  EXPECT_NEAR(result.h, -2.0 * std::sin(phi), 1e-15);
}

TEST_F(PositionSolver, SolutionBWritesNoMember) {
  position.PoleTriangleAngle = 1.0;
  position.PoleProjectOffset = 2.0;
  position.Position_Geometry_B(xyhCoordinate(), Tilted(3.0, 4.0), 2.0, result);
  EXPECT_EQ(position.PoleTriangleAngle, 1.0);
  EXPECT_EQ(position.PoleProjectOffset, 2.0);
}

TEST_F(PositionSolver, SolutionBTakesTiltsBelowAThreeHundredthOfADegreeAsLevel) {
  PoseSensorData data = Tilted(0.0032, -5.0);
  data.Yaw_B = 180.0;
  position.Position_Geometry_B(xyhCoordinate(), data, 2.0, result);
  EXPECT_NEAR(result.x, 0.0, 1e-15);
}

TEST_F(PositionSolver, LeanDirectionsWithinFiveDegreesAgree) {
  PoseSensorData data = LeaningForward(10.0, 194.9);
  position.Position(data, 2.0, result);
  EXPECT_NEAR(data.Yaw_A, 10.0, 1e-9);
  EXPECT_NEAR(data.Yaw_B, 194.9, 1e-9);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
}

TEST_F(PositionSolver, LeanDirectionsMoreThanFiveDegreesApartShowInterference) {
  PoseSensorData data = LeaningForward(10.0, 195.1);
  position.Position(data, 2.0, result);
  EXPECT_EQ(position.IsMagneticInterference(), 1);
}

TEST_F(PositionSolver, LeanDirectionsOnEitherSideOfNorthShowInterference) {
  PoseSensorData data = LeaningForward(359.0, 181.0);
  position.Position(data, 2.0, result);
  EXPECT_EQ(position.IsMagneticInterference(), 1);
}

TEST_F(PositionSolver, LeanDirectionsThatAreNotANumberShowNone) {
  PoseSensorData data = Tilted(50.0, 50.0);
  EXPECT_EQ(position.Position(data, 2.0, result), 1);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
}

TEST_F(PositionSolver, AgreeingLeanDirectionsDoNotLowerTheFlagOfTheReadings) {
  PoseSensorData data = LeaningForward(10.0, 190.0);
  data.MagneticX_A *= 10.0;
  data.MagneticY_A *= 10.0;
  data.MagneticZ_A *= 10.0;
  position.Position(data, 2.0, result);
  EXPECT_EQ(position.IsMagneticInterference(), 1);
}

TEST_F(PositionSolver, ATiltThatIsNotANumberGivesATipThatIsNotANumber) {
  PoseSensorData data = Tilted(kNotANumber, 3.0);
  EXPECT_EQ(position.Position(data, 2.0, result), 1);
  EXPECT_TRUE(std::isnan(result.x));
  EXPECT_TRUE(std::isnan(result.y));
  EXPECT_TRUE(std::isnan(result.h));
}

TEST_F(PositionSolver, APoleWithoutLengthEndsAtTheAntenna) {
  PoseSensorData data = Tilted(3.0, 4.0);
  position.Position(data, 0.0, result);
  EXPECT_EQ(result.x, 0.0);
  EXPECT_EQ(result.y, 0.0);
  EXPECT_EQ(result.h, 0.0);
}

// 0x1.e0a1bfe608283p-15 degrees are 1e-6 radians to the last bit.
TEST_F(PositionSolver, APoleThatLeansByExactlyTheEpsilonIsNotPlumb) {
  const double epsilon = 0x1.e0a1bfe608283p-15;
  const double below = std::nextafter(epsilon, 0.0);
  for (const bool along_x : {true, false}) {
    PoseSensorData at = along_x ? Tilted(epsilon, 0.0) : Tilted(0.0, epsilon);
    at.MagneticX_A = 100.0;
    position.Position(at, 2.0, result);
    EXPECT_NE(result.h, -2.0) << along_x;
    PoseSensorData plumb = along_x ? Tilted(below, 0.0) : Tilted(0.0, below);
    position.Position(plumb, 2.0, result);
    EXPECT_EQ(result.x, 0.0);
    EXPECT_EQ(result.y, 0.0);
    EXPECT_EQ(result.h, -2.0);
  }
}

// The cosine of the rule's triangle, for tilts of which both are positive.
double CosineOfTriangle(double tiltX, double tiltY) {
  const double alpha = tiltX * 3.141592653589793 / 180.0;
  const double beta = tiltY * 3.141592653589793 / 180.0;
  const double p = 1.0 / std::tan(alpha);
  const double r = 1.0 / std::tan(beta);
  const double csc_alpha = 1.0 / std::sin(alpha);
  const double csc_beta = 1.0 / std::sin(beta);
  const double t = std::sqrt(csc_alpha * csc_alpha + csc_beta * csc_beta);
  return (p * p + r * r - t * t) / (2.0 * p * r);
}

// Rounding takes the cosine of a pole that lies flat to -1, or to either side of it.
TEST_F(PositionSolver, APoleThatLiesFlatHasADirectionUnlessItsCosineIsBeyondMinusOne) {
  int exactly = 0;
  for (int tilt = 1; tilt < 90; ++tilt) {
    const double cosine = CosineOfTriangle(tilt, 90.0 - tilt);
    EXPECT_EQ(std::isnan(position.GetAngleofPoleProject(tilt, 90.0 - tilt, 200.0)), cosine < -1.0)
        << tilt;
    if (cosine == -1.0) ++exactly;
  }
  EXPECT_GT(exactly, 0);
}

TEST_F(PositionSolver, TiltsBeyond90DegreesHaveADirectionUpToACosineOfOne) {
  const double cosine = CosineOfTriangle(100.0, 9.0);
  EXPECT_NEAR(cosine, 0.9, 0.01);
  const double r = 1.0 / std::tan(9.0 * kDegree);
  const double t = std::hypot(1.0 / std::sin(100.0 * kDegree), 1.0 / std::sin(9.0 * kDegree));
  const double offset = std::acos(r * std::sin(std::acos(cosine)) / t) / kDegree;
  EXPECT_NEAR(position.GetAngleofPoleProject(100.0, 9.0, 200.0), 200.0 - offset, 1e-9);
}

TEST_F(PositionSolver, ACosineAboveOneCountsAsOneInTheOffsetThatIsKept) {
  EXPECT_NEAR(CosineOfTriangle(100.0, 10.6), 1.06, 0.01);
  position.Position_Geometry_A(xyhCoordinate(), Tilted(100.0, 10.6), 2.0, result);
  EXPECT_EQ(position.PoleProjectOffset, -90.0);
  EXPECT_TRUE(std::isnan(position.GetAngleofPoleProject(100.0, 10.6, 200.0)));
}

}  // namespace
