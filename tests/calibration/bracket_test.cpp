// Where the search for a scale begins, by the coefficient C that the unscaled turn has: 0.5 is that
// of a circle, less that of an axis that reads too much, more that of one that reads too little.

#include <limits>

#include <gtest/gtest.h>

#include "tiltpole/calibration/detail/scale_bisection.h"

namespace tiltpole_test {
namespace {

using tiltpole::detail::Bracket;
using tiltpole::detail::BracketAround;

void ExpectBracket(double C, double lower, double upper) {
  const Bracket bracket = BracketAround(C);
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

}  // namespace
}  // namespace tiltpole_test
