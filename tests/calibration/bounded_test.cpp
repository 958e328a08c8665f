// Numbers with bounds: whatever the operands are within theirs, the result lies within its own.

#include "tiltpole/calibration/detail/bounded.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "calibration/random_session.h"
#include "tiltpole/calibration/detail/normal_equations.h"

namespace tiltpole_test {
namespace {

using Number = tiltpole::detail::Bounded<double>;

// Of any sign, over many orders of magnitude.
double AnyNumber(Random& random) {
  return random.Between(-1, 1) * std::pow(10.0, random.Whole(-12, 12));
}

// Exact, or so wide a bound that what lies within does so also when it is rounded.
Number AnyBounded(Random& random) {
  const double value = AnyNumber(random);
  return {value, std::fabs(value) * std::pow(10.0, random.Whole(-12, 1)) * random.Whole(0, 1)};
}

double Within(const Number& number, Random& random) {
  const int place = random.Whole(0, 3);
  const double share = place == 0 ? -1.0 : place == 1 ? 1.0 : random.Between(-1, 1);
  return number.value + share * number.error;
}

bool Holds(const Number& bounded, double number) {
  return Lowest(bounded) <= number && number <= Highest(bounded);
}

RC_GTEST_PROP(Bounded, ResultsOfOperandsWithinTheirBoundsAreWithinTheirs, ()) {
  Random random(*rc::gen::arbitrary<std::uint32_t>());
  for (int i = 0; i < 100; ++i) {
    const Number p = AnyBounded(random);
    const Number q = AnyBounded(random);
    const double a = Within(p, random);
    const double b = Within(q, random);
    RC_ASSERT(Holds(p + q, a + b));
    RC_ASSERT(Holds(p - q, a - b));
    RC_ASSERT(Holds(p * q, a * b));
    RC_ASSERT(Holds(-p, -a));
    RC_ASSERT(Holds(p + b, a + b));
    RC_ASSERT(Holds(b - p, b - a));
    RC_ASSERT(Holds(b * p, b * a));
    if (q.error < std::fabs(q.value) / 1100) RC_ASSERT(Holds(1.0 / q, 1.0 / b));
  }
}

TEST(Bounded, ExactOperandsLeaveNoMoreThanTwoRoundings) {
  const double rounding = std::numeric_limits<double>::epsilon();
  const Number third = {1.0 / 3, 0};
  const Number fifth = {0.2, 0};
  EXPECT_DOUBLE_EQ((third + fifth).error, rounding * (third.value + fifth.value));
  EXPECT_DOUBLE_EQ((third - fifth).error, rounding * (third.value - fifth.value));
  EXPECT_DOUBLE_EQ((third * fifth).error, rounding * (third.value * fifth.value));
  EXPECT_DOUBLE_EQ((1.0 / fifth).error, rounding * 5);
}

TEST(Bounded, TheErrorsOfFactorsGrowWithTheOtherFactor) {
  const Number product = Number{3, 0.5} * Number{-4, 0.25};
  EXPECT_EQ(product.value, -12);
  EXPECT_NEAR(product.error, 3 * 0.25 + 4 * 0.5 + 0.5 * 0.25, 1e-12);
}

TEST(Bounded, ADivisorKnownToLessThanThreeDigitsLeavesNothingKnown) {
  EXPECT_TRUE(std::isfinite((1.0 / Number{2, 2.0 / 1025}).error));
  EXPECT_FALSE(std::isfinite((1.0 / Number{2, 2.0 / 1024}).error));
  EXPECT_FALSE(std::isfinite((1.0 / Number{-2, 2.0 / 1024}).error));
  EXPECT_FALSE(std::isfinite((1.0 / Number{0, 0}).error));
}

TEST(Bounded, AProductThatVanishesByUnderflowKeepsABound) {
  const double tiny = 1e-200;
  EXPECT_GT((Number{tiny, 0} * Number{tiny, 0}).error, 0.0);
}

// The inverse of numbers within bounds is taken with the pivots that all of them choose.
using Lanes = tiltpole::detail::LanesOf<2>;
using BoundedLanes = tiltpole::detail::Bounded<Lanes>;
using BoundedSquare = tiltpole::detail::Square<2, BoundedLanes>;

bool HasInverse(const BoundedSquare& matrix) {
  return tiltpole::detail::NormalInverse<2, BoundedLanes>(matrix).IsRegular();
}

// A diagonal matrix in the first lane; the one in the second has the same numbers.
BoundedSquare Diagonal(double first, double second, double error) {
  const auto both = [](double value, double off) {
    return BoundedLanes{Lanes{value, value}, Lanes{off, off}};
  };
  return {{{both(first, 0), both(0, 0)}, {both(0, 0), both(second, error)}}};
}

TEST(BoundedInverse, IsRefusedWhereAnotherElementMayBeThePivot) {
  EXPECT_TRUE(HasInverse(Diagonal(4, 3, 0.002)));
  EXPECT_TRUE(HasInverse(Diagonal(4, 3.9, 0.002)));
  EXPECT_FALSE(HasInverse(Diagonal(4, 3.999, 0.002)));
  EXPECT_FALSE(HasInverse(Diagonal(4, 4.001, 0.002)));
  EXPECT_FALSE(HasInverse(Diagonal(-4, 3.999, 0.002)));
  EXPECT_FALSE(HasInverse(Diagonal(4, 4, 0)));
}

TEST(BoundedInverse, IsRefusedWhereThePivotMayCountAsNothing) {
  EXPECT_TRUE(HasInverse(Diagonal(4, 1e-10, 1e-14)));
  EXPECT_FALSE(HasInverse(Diagonal(4, 1e-10, 0.9999e-10)));
  EXPECT_FALSE(HasInverse(Diagonal(4, 1e-16, 0)));
}

TEST(BoundedInverse, IsRefusedWhereOneOfTheLanesLeavesTheChoiceOpen) {
  BoundedSquare matrix = Diagonal(4, 3, 0);
  matrix.at[1][1].error = Lanes{0, 1};
  EXPECT_FALSE(HasInverse(matrix));
  matrix.at[1][1].error = Lanes{0, std::numeric_limits<double>::quiet_NaN()};
  EXPECT_FALSE(HasInverse(matrix));
}

}  // namespace
}  // namespace tiltpole_test
