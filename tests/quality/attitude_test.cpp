// Where the vertical and north lie in a sensor's frame, and angles brought into their range.

#include "tiltpole/quality/detail/attitude.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "quality/simulated_pole.h"

namespace {

using namespace tiltpole_test;
using tiltpole::detail::HeadingOfXAxis;
using tiltpole::detail::NorthFromField;
using tiltpole::detail::UpFromTilts;
using tiltpole::detail::Vector3;
using tiltpole::detail::WrapTo180;
using tiltpole::detail::WrapTo360;

constexpr Vector3 kUp = {0.0, 0.0, 1.0};

TEST(AttitudeOfAPole, TheVerticalFollowsFromTheElevationsOfTwoAxes) {
  const Attitude pole = LeaningPole(200.0, 50.0, 310.0);
  const Vector3 up = UpFromTilts(ElevationOfX(pole), ElevationOfY(pole));
  EXPECT_NEAR(up.x, pole[2][0], 1e-12);
  EXPECT_NEAR(up.y, pole[2][1], 1e-12);
  EXPECT_NEAR(up.z, pole[2][2], 1e-12);
  EXPECT_TRUE(std::isnan(UpFromTilts(60.0, 60.0).z));
}

TEST(AttitudeOfAPole, NorthIsTheFieldsHorizontalPartTurnedByTheBias) {
  const Vector3 field = {300.0, 400.0, -1200.0};
  const Vector3 north = NorthFromField(field, kUp, 0.0);
  EXPECT_NEAR(north.x, 0.6, 1e-15);
  EXPECT_NEAR(north.y, 0.8, 1e-15);
  EXPECT_NEAR(north.z, 0.0, 1e-15);
  // A bias is taken off the heading, so north turns clockwise by it.
  const double heading = HeadingOfXAxis(north, kUp);
  EXPECT_NEAR(heading, std::atan2(0.8, 0.6) / kDegree, 1e-12);
  EXPECT_NEAR(HeadingOfXAxis(NorthFromField(field, kUp, 10.0), kUp), heading - 10.0, 1e-12);
  EXPECT_NEAR(HeadingOfXAxis(NorthFromField(field, kUp, 100.0), kUp), heading + 260.0, 1e-12);
}

TEST(AttitudeOfAPole, TheUnitOfAFieldDoesNotMatter) {
  for (const double unit : {1e-6, 1.0, 1e6}) {
    const Vector3 north = NorthFromField({0.3 * unit, 0.4 * unit, -1.2 * unit}, kUp, 0.0);
    EXPECT_NEAR(north.x, 0.6, 1e-15);
    EXPECT_NEAR(north.y, 0.8, 1e-15);
  }
}

TEST(AttitudeOfAPole, AFieldWhoseHorizontalPartIsBelowABillionthTellsNoNorth) {
  EXPECT_NEAR(NorthFromField({0.0, 1.01e-6, 1e3}, kUp, 0.0).y, 1.0, 1e-12);
  EXPECT_EQ(NorthFromField({0.0, 0.99e-6, 1e3}, kUp, 0.0).y, 0.0);
}

TEST(AttitudeOfAPole, AFieldWhoseHorizontalPartIsExactlyABillionthTellsNoNorth) {
  EXPECT_EQ(NorthFromField({0.0, 1e-9, 1.0}, kUp, 0.0).y, 0.0);
}

TEST(AttitudeOfAPole, AFieldOfNoStrengthOrWithoutBoundsTellsNoNorth) {
  for (const double x :
       {0.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    const Vector3 north = NorthFromField({x, 0.0, 0.0}, kUp, 0.0);
    EXPECT_EQ(north.x, 0.0);
    EXPECT_EQ(north.y, 0.0);
    EXPECT_EQ(north.z, 0.0);
  }
}

TEST(AngleRange, AnglesOfAnySizeComeInto0To360) {
  EXPECT_EQ(WrapTo360(0.0), 0.0);
  EXPECT_EQ(WrapTo360(360.0), 0.0);
  EXPECT_EQ(WrapTo360(-360.0), 0.0);
  EXPECT_EQ(WrapTo360(0.25), 0.25);
  EXPECT_EQ(WrapTo360(725.0), 5.0);
  EXPECT_EQ(WrapTo360(359.75), 359.75);
  EXPECT_EQ(WrapTo360(-5.0), 355.0);
  EXPECT_EQ(WrapTo360(-725.0), 355.0);
  // Adding 360 to so little gives 360 itself.
  EXPECT_EQ(WrapTo360(-1e-20), 0.0);
}

TEST(AngleRange, DifferencesComeIntoMinus180To180) {
  EXPECT_EQ(WrapTo180(179.0), 179.0);
  EXPECT_EQ(WrapTo180(180.0), -180.0);
  EXPECT_EQ(WrapTo180(-180.0), -180.0);
  EXPECT_EQ(WrapTo180(181.0), -179.0);
  EXPECT_EQ(WrapTo180(-359.0), 1.0);
}

}  // namespace
