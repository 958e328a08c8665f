// What the reports are made of: numbers and names in sentences, distances from a conic.

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tiltpole/quality/detail/conic.h"
#include "tiltpole/quality/detail/wording.h"

namespace {

using tiltpole::ConcernedMagnetometer;
using tiltpole::ConcernedTurn;
using tiltpole::detail::Conic;
using tiltpole::detail::NameOf;
using tiltpole::detail::Tenths;
using tiltpole::detail::TurnPoint;

TEST(Wording, TenthsAreRoundedAwayFromZeroAndAZeroHasNoSign) {
  EXPECT_EQ(Tenths(1.25), L"1.3");
  EXPECT_EQ(Tenths(-1.25), L"-1.3");
  EXPECT_EQ(Tenths(-0.06), L"-0.1");
  EXPECT_EQ(Tenths(-0.04), L"0.0");
  EXPECT_EQ(Tenths(0.04), L"0.0");
}

TEST(Wording, WhatIsNoNumberIsNotWrittenAsOne) {
  EXPECT_EQ(Tenths(std::numeric_limits<double>::quiet_NaN()), L"an unknown number of");
  EXPECT_EQ(Tenths(-std::numeric_limits<double>::infinity()), L"an unknown number of");
}

TEST(Wording, EveryMagnetometerAndEveryTurnHasAName) {
  EXPECT_EQ(NameOf(ConcernedMagnetometer::A), L"magnetometer A");
  EXPECT_EQ(NameOf(ConcernedMagnetometer::B), L"magnetometer B");
  EXPECT_EQ(NameOf(ConcernedMagnetometer::Both), L"both magnetometers");
  EXPECT_EQ(NameOf(ConcernedTurn::Horizontal), L"the turn about the pole's axis");
  EXPECT_EQ(NameOf(ConcernedTurn::Vertical), L"the turn about the sensor's y axis");
  EXPECT_EQ(NameOf(ConcernedTurn::Both), L"both turns");
}

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

}  // namespace
