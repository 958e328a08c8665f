// The search for a scale. It begins by the coefficient C of the unscaled turn: 0.5 is that of a
// circle, less that of an axis that reads too much, more that of one that reads too little.

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "tiltpole/calibration/detail/scale_bisection.h"

namespace tiltpole_test {
namespace {

using tiltpole::detail::BisectScale;
using tiltpole::detail::Bracket;
using tiltpole::detail::BracketAround;
using tiltpole::detail::Conic;
using tiltpole::detail::FoundScale;
using tiltpole::detail::ScaledEllipseFits;
using tiltpole::detail::ScaleOfCircle;
using tiltpole::detail::ShapeOf;
using tiltpole::detail::SumAxis;

void ExpectBracket(double C, double lower, double upper) {
  Conic unscaled;
  unscaled.A = 1 - C;
  const Bracket bracket = BracketAround(ShapeOf(unscaled));
  EXPECT_EQ(bracket.lower, lower) << C;
  EXPECT_EQ(bracket.upper, upper) << C;
}

TEST(BracketAround, ATurnThatIsRoundWithinTheToleranceKeepsItsScale) {
  ExpectBracket(0.5, 1.0, 1.0);
  ExpectBracket(0.5 - 0.99e-10, 1.0, 1.0);
  ExpectBracket(0.5 + 0.99e-10, 1.0, 1.0);
}

TEST(BracketAround, AScaleBelowOneIsSoughtBetweenZeroAndOne) {
  ExpectBracket(0.5 - 1.01e-10, 0.0, 1.0);
  ExpectBracket(0.49, 0.0, 1.0);
  ExpectBracket(-3.0, 0.0, 1.0);
}

TEST(BracketAround, AScaleAboveOneIsSoughtBetweenOneAndTwo) {
  ExpectBracket(0.5 + 1.01e-10, 1.0, 2.0);
  ExpectBracket(0.51, 1.0, 2.0);
  ExpectBracket(4.0, 1.0, 2.0);
}

TEST(BracketAround, ACoefficientThatIsNotANumberKeepsTheScale) {
  ExpectBracket(std::numeric_limits<double>::quiet_NaN(), 1.0, 1.0);
}

TEST(ScaleOfCircle, StretchesTheSecondAxisByTheRatioOfTheHalfAxes) {
  EXPECT_EQ(ScaleOfCircle(1.0, 0.5, 0.5), 1.0);
  EXPECT_EQ(ScaleOfCircle(0.75, 1.0, 4.0), 1.5);
  EXPECT_EQ(ScaleOfCircle(1.5, 4.0, 1.0), 0.75);
}

TEST(ScaleOfCircle, IsNotANumberWhereTheSquaresHaveDifferentSigns) {
  EXPECT_TRUE(std::isnan(ScaleOfCircle(1.0, -0.5, 1.5)));
  EXPECT_TRUE(std::isnan(ScaleOfCircle(1.0, 1.5, -0.5)));
}

// A circle of which the second axis reads 0.3 of what it should: no scale up to 2 is enough, and
// each step halves what is left of the bracket.
TEST(BisectScale, TakesAsManyStepsAsTheCapAllows) {
  const std::vector<double> u = {5, 4, 0, -4, -5, -4, 0, 4};
  const std::vector<double> v = {0, 0.9, 1.5, 0.9, 0, -0.9, -1.5, -0.9};
  const std::vector<double> base(u.size(), 0.0);
  ScaledEllipseFits fits;
  fits.SetPoints({u.data(), base.data(), v.data(), u.size()}, SumAxis(u));
  const double ends[] = {1.5, 1.75, 1.875};
  for (int cap = 1; cap <= 3; ++cap) {
    const FoundScale found = BisectScale(fits, {1.0, 2.0}, cap);
    EXPECT_EQ(found.scale, ends[cap - 1]);
    EXPECT_TRUE(found.ranOut);
  }
}

TEST(BisectScale, AFitThatIsNotANumberNeitherMovesTheBracketNorEndsTheSearch) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::vector<double> u = {nan, 1, 2, 3, 4, 5};
  const std::vector<double> base(u.size(), 0.0);
  ScaledEllipseFits fits;
  fits.SetPoints({u.data(), base.data(), u.data(), u.size()}, SumAxis(u));
  const FoundScale found = BisectScale(fits, {1.0, 2.0}, 10);
  EXPECT_EQ(found.scale, 1.5);
  EXPECT_TRUE(found.ranOut);
}

}  // namespace
}  // namespace tiltpole_test
