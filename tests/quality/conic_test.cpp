// The conic through the points of a turn: how far a point lies from it, and whether it is an
// ellipse.

#include "tiltpole/quality/detail/conic.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

using tiltpole::detail::Conic;
using tiltpole::detail::FitConic;
using tiltpole::detail::TurnPoint;
using tiltpole::detail::TurnPoints;

// The circle u^2 + w^2 = 1 about (100, 50) in units of 200 counts.
Conic UnitCircle() {
  Conic circle;
  circle.Told = circle.Ellipse = true;
  circle.A = 0.5;
  circle.F = -0.5;
  circle.CentreFirst = 100.0;
  circle.CentreSecond = 50.0;
  circle.Unit = 200.0;
  return circle;
}

TEST(ConicDistance, IsToldInCountsToFirstOrder) {
  EXPECT_NEAR(UnitCircle().DistanceOf(TurnPoint{302.0, 50.0}), 2.0, 0.02);
  EXPECT_NEAR(UnitCircle().DistanceOf(TurnPoint{100.0, -149.0}), 1.0, 0.01);
  EXPECT_EQ(UnitCircle().DistanceOf(TurnPoint{300.0, 50.0}), 0.0);
}

// There the curve is equally far in every direction, and a first order does not tell how far.
TEST(ConicDistance, FromTheVeryMiddleIsTheSizeOfTheConic) {
  EXPECT_EQ(UnitCircle().DistanceOf(TurnPoint{100.0, 50.0}), 200.0);
}

constexpr double kDegree = 3.14159265358979323846 / 180.0;

TurnPoint Turned(double u, double w, double degrees) {
  const double c = std::cos(degrees * kDegree);
  const double s = std::sin(degrees * kDegree);
  return {300.0 + c * u - s * w, -200.0 + s * u + c * w, 0.0};
}

TurnPoints SlenderEllipse(double direction) {
  TurnPoints points;
  for (int degrees = 0; degrees < 360; degrees += 5) {
    points.push_back(Turned(1000.0 * std::cos(degrees * kDegree),
                            125.0 * std::sin(degrees * kDegree), direction));
  }
  return points;
}

TurnPoints SlenderHyperbola(double direction) {
  TurnPoints points;
  for (int i = -10; i <= 10; ++i) {
    const double along = 1000.0 * std::sinh(0.1 * i);
    const double across = 125.0 * std::cosh(0.1 * i);
    points.push_back(Turned(along, across, direction));
    points.push_back(Turned(along, -across, direction));
  }
  return points;
}

TEST(ConicShape, AnEllipseEightTimesAsLongAsWideIsOneInEveryDirection) {
  for (const double direction : {0.0, 30.0, 45.0, 90.0, 135.0}) {
    EXPECT_TRUE(FitConic(SlenderEllipse(direction)).Ellipse) << direction;
  }
}

TEST(ConicShape, AHyperbolaWithAsymptotesAsCloseIsNone) {
  for (const double direction : {0.0, 30.0, 45.0, 90.0, 135.0}) {
    const Conic conic = FitConic(SlenderHyperbola(direction));
    EXPECT_TRUE(conic.Told) << direction;
    EXPECT_FALSE(conic.Ellipse) << direction;
  }
}

// This one is found without any rounding.
TEST(ConicShape, AParabolaIsNone) {
  TurnPoints points;
  for (int w = -4; w <= 4; ++w) points.push_back({10.0 * w * w, 1.0 * w, 0.0});
  const Conic conic = FitConic(points);
  EXPECT_TRUE(conic.Told);
  EXPECT_EQ(conic.B * conic.B, 4.0 * conic.A * (1.0 - conic.A));
  EXPECT_FALSE(conic.Ellipse);
}

}  // namespace
