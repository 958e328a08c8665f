// Numbers and names in the sentences of the reports.

#include "tiltpole/quality/detail/wording.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

using tiltpole::ConcernedMagnetometer;
using tiltpole::ConcernedTurn;
using tiltpole::detail::NameOf;
using tiltpole::detail::Tenths;
using tiltpole::detail::Whole;

TEST(Wording, NumbersAreRoundedToTheNearestWhole) {
  EXPECT_EQ(Whole(41.5), L"42");
  EXPECT_EQ(Whole(41.4), L"41");
  EXPECT_EQ(Whole(-0.4), L"0");
}

TEST(Wording, TenthsAreRoundedAwayFromZeroAndAZeroHasNoSign) {
  EXPECT_EQ(Tenths(1.24), L"1.2");
  EXPECT_EQ(Tenths(1.25), L"1.3");
  EXPECT_EQ(Tenths(-1.25), L"-1.3");
  EXPECT_EQ(Tenths(-1.27), L"-1.3");
  EXPECT_EQ(Tenths(9.96), L"10.0");
  EXPECT_EQ(Tenths(-0.06), L"-0.1");
  EXPECT_EQ(Tenths(-0.04), L"0.0");
  EXPECT_EQ(Tenths(0.04), L"0.0");
}

TEST(Wording, WhatIsNoNumberIsNotWrittenAsOne) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Tenths(std::numeric_limits<double>::quiet_NaN()), L"an unknown number of");
  EXPECT_EQ(Tenths(kInfinity), L"an unknown number of");
  EXPECT_EQ(Tenths(-kInfinity), L"an unknown number of");
}

TEST(Wording, EveryMagnetometerAndEveryTurnHasAName) {
  EXPECT_EQ(NameOf(ConcernedMagnetometer::A), L"magnetometer A");
  EXPECT_EQ(NameOf(ConcernedMagnetometer::B), L"magnetometer B");
  EXPECT_EQ(NameOf(ConcernedMagnetometer::Both), L"both magnetometers");
  EXPECT_EQ(NameOf(ConcernedTurn::Horizontal), L"the turn about the pole's axis");
  EXPECT_EQ(NameOf(ConcernedTurn::Vertical), L"the turn about the sensor's y axis");
  EXPECT_EQ(NameOf(ConcernedTurn::Both), L"both turns");
}

}  // namespace
