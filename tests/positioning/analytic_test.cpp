// The intersection of three spheres and its building blocks.

#include <cmath>

#include <gtest/gtest.h>

#include "positioning/exposed_position.h"
#include "positioning/true_pole.h"

namespace {

using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;
using tiltpole_test::DistanceBetween;
using tiltpole_test::ExposedPosition;

xyhCoordinate At(double x, double y, double h) {
  xyhCoordinate point;
  point.x = x;
  point.y = y;
  point.h = h;
  return point;
}

class PositionAnalytic : public ::testing::Test {
 protected:
  ExposedPosition position;
  xyhCoordinate result = At(7.0, 8.0, 9.0);
};

TEST_F(PositionAnalytic, ADistanceIsThatOfThePoints) {
  EXPECT_EQ(position.GetDistance(At(0.0, 0.0, 0.0), At(3.0, 4.0, 0.0)), 5.0);
  EXPECT_EQ(position.GetDistance(At(1.0, 1.0, 1.0), At(1.0, 1.0, -1.0)), 2.0);
}

TEST_F(PositionAnalytic, ADistanceUpToAThousandthReadsAsZero) {
  EXPECT_EQ(position.GetDistance(At(0.0, 0.0, 0.0), At(0.0005, 0.0, 0.0)), 0.0);
  EXPECT_EQ(position.GetDistance(At(0.0, 0.0, 0.0), At(0.0, 0.001, 0.0)), 0.0);
  EXPECT_EQ(position.GetDistance(At(0.0, 0.0, 0.0), At(0.0, 0.0, 0.0011)), 0.0011);
}

TEST_F(PositionAnalytic, APointLiesAgainstTheDirectionAsked) {
  const xyhCoordinate east = position.GetInclinePoint(At(0.0, 0.0, 0.0), 2.0, 0.0, 90.0);
  EXPECT_NEAR(east.x, 0.0, 1e-15);
  EXPECT_EQ(east.y, -2.0);
  EXPECT_EQ(east.h, 0.0);
  const xyhCoordinate up = position.GetInclinePoint(At(0.0, 0.0, 0.0), 2.0, 90.0, 90.0);
  EXPECT_NEAR(up.x, 0.0, 1e-15);
  EXPECT_NEAR(up.y, 0.0, 1e-15);
  EXPECT_EQ(up.h, -2.0);
}

TEST_F(PositionAnalytic, APointIsCountedFromTheOneGiven) {
  const xyhCoordinate point = position.GetInclinePoint(At(10.0, 20.0, 30.0), 2.0, 30.0, 0.0);
  EXPECT_NEAR(point.x, 10.0 - std::sqrt(3.0), 1e-14);
  EXPECT_EQ(point.y, 20.0);
  EXPECT_NEAR(point.h, 29.0, 1e-14);
}

TEST_F(PositionAnalytic, SpheresMeetInTheLowerOfTwoPoints) {
  const xyhCoordinate P1 = At(0.0, 0.0, 0.0);
  const xyhCoordinate P2 = At(2.0, 0.0, 1.0);
  const xyhCoordinate P3 = At(0.0, 2.0, 0.0);
  const xyhCoordinate known = At(0.5, 0.25, -1.5);
  EXPECT_EQ(position.GetSolvePoint(P1, P2, P3, DistanceBetween(P1, known),
                                   DistanceBetween(P2, known), DistanceBetween(P3, known), result),
            1);
  EXPECT_NEAR(result.x, known.x, 1e-14);
  EXPECT_NEAR(result.y, known.y, 1e-14);
  EXPECT_NEAR(result.h, known.h, 1e-14);
}

TEST_F(PositionAnalytic, SpheresThroughTheUpperPointGiveItsMirrorImageBelow) {
  const xyhCoordinate P1 = At(0.0, 0.0, 0.0);
  const xyhCoordinate P2 = At(2.0, 0.0, 1.0);
  const xyhCoordinate P3 = At(0.0, 2.0, 0.0);
  const xyhCoordinate upper = At(0.5, 0.25, 1.5);
  EXPECT_EQ(position.GetSolvePoint(P1, P2, P3, DistanceBetween(P1, upper),
                                   DistanceBetween(P2, upper), DistanceBetween(P3, upper), result),
            1);
  // The centres' plane contains the y axis and rises by 1 over 2 along x; its normal is (-1, 0, 2).
  const double along = 2.0 * (-upper.x + 2.0 * upper.h) / 5.0;
  EXPECT_NEAR(result.x, upper.x + along, 1e-14);
  EXPECT_NEAR(result.y, upper.y, 1e-14);
  EXPECT_NEAR(result.h, upper.h - 2.0 * along, 1e-14);
}

TEST_F(PositionAnalytic, SpheresTooSmallToMeetLeaveTheResultAlone) {
  EXPECT_EQ(position.GetSolvePoint(At(0.0, 0.0, 0.0), At(2.0, 0.0, 1.0), At(0.0, 2.0, 0.0), 0.5,
                                   0.5, 0.5, result),
            0);
  EXPECT_EQ(result.x, 7.0);
  EXPECT_EQ(result.y, 8.0);
  EXPECT_EQ(result.h, 9.0);
}

TEST_F(PositionAnalytic, SpheresThatOnlyTouchDoNotMeet) {
  const xyhCoordinate P1 = At(0.0, 0.0, 0.0);
  const xyhCoordinate P2 = At(2.0, 0.0, 1.0);
  const xyhCoordinate P3 = At(0.0, 2.0, 0.0);
  const xyhCoordinate in_their_plane = At(1.0, 0.5, 0.5);
  EXPECT_EQ(position.GetSolvePoint(P1, P2, P3, DistanceBetween(P1, in_their_plane),
                                   DistanceBetween(P2, in_their_plane),
                                   DistanceBetween(P3, in_their_plane), result),
            0);
  EXPECT_EQ(result.h, 9.0);
}

// Three centres in the plane x = 0, from the first of which the points lie a radius away on the x
// axis: the discriminant is four times the squared radius.
TEST_F(PositionAnalytic, SpheresMeetFromADiscriminantOfABillionthOn) {
  const auto found_at = [this](double radius) {
    const double r2 = radius * radius;
    return position.GetSolvePoint(At(0.0, 0.0, 0.0), At(0.0, 1.0, 0.0), At(0.0, 1.0, 1.0), radius,
                                  std::sqrt(r2 + 1.0), std::sqrt(r2 + 2.0), result);
  };
  EXPECT_EQ(found_at(1.57e-5), 0);
  EXPECT_EQ(found_at(1.59e-5), 1);
}

// Two of three equal spheres stand 2^-20 off the first, along y and along h. Every step up to the
// discriminant is exact but the squares of the radius, which was sought so that these end on 1e-9.
TEST_F(PositionAnalytic, SpheresMeetAtADiscriminantOfExactlyABillionth) {
  const double side = 0x1p-20;
  const double radius = 0x1.0983217e21c87p-16;
  EXPECT_EQ(position.GetSolvePoint(At(0.0, 0.0, 0.0), At(0.0, side, 0.0), At(0.0, 0.0, side),
                                   radius, radius, radius, result),
            1);
  const double below = std::nextafter(radius, 0.0);
  EXPECT_EQ(position.GetSolvePoint(At(0.0, 0.0, 0.0), At(0.0, side, 0.0), At(0.0, 0.0, side), below,
                                   below, below, result),
            0);
}

// Three centres in a plane that the x axis meets at a right angle, or nearly so: the two points lie
// on either side of it, at one height or nearly so.
TEST_F(PositionAnalytic, OfTwoPointsAtOneHeightTheOneWithTheSmallerXIsTaken) {
  EXPECT_EQ(position.GetSolvePoint(At(0.0, 0.0, 0.0), At(0.0, 2.0, 1.0), At(0.0, 2.0, -1.0), 3.0,
                                   3.0, 3.0, result),
            1);
  EXPECT_NEAR(result.x, -std::sqrt(7.4375), 1e-14);
}

TEST_F(PositionAnalytic, ThePointWithTheLargerXIsTakenOnlyWhereItIsAMillionthLower) {
  const auto x_of_tip = [this](double turn) {
    EXPECT_EQ(position.GetSolvePoint(At(0.0, 0.0, 0.0), At(-turn, 2.0, 1.0), At(turn, 2.0, -1.0),
                                     3.0, 3.0, 3.0, result),
              1);
    return result.x;
  };
  // The point with the larger x lies 5.45 times the turn lower than the other.
  EXPECT_LT(x_of_tip(-1.8e-7), 0.0);
  EXPECT_GT(x_of_tip(-1.9e-7), 0.0);
  EXPECT_LT(x_of_tip(1e-3), 0.0);
}

TEST_F(PositionAnalytic, CentresAtOneHeightGiveAPointThatIsNotANumber) {
  EXPECT_EQ(position.GetSolvePoint(At(0.0, 0.0, 0.0), At(2.0, 0.0, 0.0), At(0.0, 2.0, 0.0), 2.0,
                                   2.0, 2.0, result),
            1);
  EXPECT_TRUE(std::isnan(result.x));
  EXPECT_TRUE(std::isnan(result.y));
  EXPECT_TRUE(std::isnan(result.h));
}

TEST_F(PositionAnalytic, APlumbPoleHasATipThatIsNotANumber) {
  PoseSensorData data;
  xyhCoordinate tip;
  position.Position(data, 2.0, tip);
  EXPECT_EQ(position.Position_Math(At(0.0, 0.0, 0.0), data, 2.0, result), 1);
  EXPECT_TRUE(std::isnan(result.x));
  EXPECT_TRUE(std::isnan(result.y));
  EXPECT_TRUE(std::isnan(result.h));
}

TEST_F(PositionAnalytic, APoleWithOneAxisExactlyLevelHasATipThatIsNotANumber) {
  PoseSensorData data;
  data.InclineX = 5.0;
  data.MagneticX_A = 5000.0;
  xyhCoordinate tip;
  position.Position(data, 2.0, tip);
  EXPECT_EQ(position.Position_Math(At(0.0, 0.0, 0.0), data, 2.0, result), 1);
  EXPECT_TRUE(std::isnan(result.h));
}

TEST_F(PositionAnalytic, APoleWithoutLengthGivesNoTip) {
  PoseSensorData data;
  data.InclineX = 5.0;
  data.InclineY = 6.0;
  data.Yaw_A = 40.0;
  data.YawY_A = -50.0;
  EXPECT_EQ(position.Position_Math(At(0.0, 0.0, 0.0), data, 0.0, result), 0);
  EXPECT_EQ(result.x, 7.0);
}

TEST_F(PositionAnalytic, TheTipIsCountedFromTheAntennaAndNoMemberIsTouched) {
  const tiltpole_test::TruePole pole = tiltpole_test::TruePole::Leaning(20.0, 130.0, 40.0);
  PoseSensorData data = pole.Sample(5000.0, 60.0);
  data.Yaw_A = pole.HeadingOfX();
  data.YawY_A = pole.HeadingOfY();
  position.PoleTriangleAngle = 1.0;
  EXPECT_EQ(position.Position_Math(At(100.0, 200.0, 300.0), data, 2.0, result), 1);
  const xyhCoordinate tip = pole.Tip(2.0);
  EXPECT_NEAR(result.x, 100.0 + tip.x, 1e-10);
  EXPECT_NEAR(result.y, 200.0 + tip.y, 1e-10);
  EXPECT_NEAR(result.h, 300.0 + tip.h, 1e-10);
  EXPECT_EQ(position.PoleTriangleAngle, 1.0);
}

}  // namespace
