// The small fits that the report rests on, against numbers worked out by hand.

#include "tiltpole/quality/detail/slopes.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "tiltpole/quality/detail/least_squares.h"

namespace {

using tiltpole::detail::FitSlopes;
using tiltpole::detail::LeastSquares;
using tiltpole::detail::SamplesErringAsOne;
using tiltpole::detail::Slopes;

TEST(LeastSquaresFit, TheBestLineAndItsCovarianceAreThoseOfTheTextbook) {
  // y = 1, 3, 4 at x = 0, 1, 2: slope 1.5, intercept 7/6; the inverse of [[3, 3], [3, 5]].
  LeastSquares<2> fit;
  fit.Add({1.0, 0.0}, 1.0);
  fit.Add({1.0, 1.0}, 3.0);
  fit.Add({1.0, 2.0}, 4.0);
  ASSERT_TRUE(fit.Solve());
  EXPECT_NEAR(fit.Solution()[0], 7.0 / 6.0, 1e-14);
  EXPECT_NEAR(fit.Solution()[1], 1.5, 1e-14);
  EXPECT_NEAR(fit.Inverse()[0][0], 5.0 / 6.0, 1e-14);
  EXPECT_NEAR(fit.Inverse()[0][1], -0.5, 1e-14);
  EXPECT_NEAR(fit.Inverse()[1][0], -0.5, 1e-14);
  EXPECT_NEAR(fit.Inverse()[1][1], 0.5, 1e-14);
}

TEST(LeastSquaresFit, AFitThatGoesOnAfterASolutionIsThatOfAllObservations) {
  LeastSquares<2> at_once;
  LeastSquares<2> in_steps;
  for (LeastSquares<2>* fit : {&at_once, &in_steps}) {
    fit->Add({1.0, 0.5}, 2.0);
    fit->Add({0.25, 1.0}, 5.0);
  }
  ASSERT_TRUE(in_steps.Solve());
  for (LeastSquares<2>* fit : {&at_once, &in_steps}) {
    fit->Add({2.0, 1.0}, 6.0);
    ASSERT_TRUE(fit->Solve());
  }
  EXPECT_EQ(in_steps.Solution(), at_once.Solution());
  EXPECT_EQ(in_steps.Inverse(), at_once.Inverse());
}

TEST(LeastSquaresFit, UnknownsThatNoObservationSeparatesAreNotSolved) {
  LeastSquares<2> fit;
  EXPECT_FALSE(fit.Solve());
  fit.Add({1.0, 2.0}, 1.0);
  fit.Add({3.0, 6.0}, 2.0);
  EXPECT_FALSE(fit.Solve());
}

// What is left of the second pivot is the share of the column that the first does not explain.
TEST(LeastSquaresFit, AColumnIsToldApartDownToAMillionthOfAMillionth) {
  const auto solves = [](double share) {
    LeastSquares<2> fit;
    fit.Add({1.0, 1000.0}, 0.0);
    fit.Add({0.0, 1000.0 * std::sqrt(share)}, 0.0);
    return fit.Solve();
  };
  EXPECT_TRUE(solves(1.05e-12));
  EXPECT_FALSE(solves(0.95e-12));
}

TEST(LeastSquaresFit, AQuadraticFormIsTheVarianceOfAWeightedSum) {
  const std::array<std::array<double, 2>, 2> covariance = {{{4.0, 1.0}, {1.0, 9.0}}};
  EXPECT_EQ(tiltpole::detail::QuadraticForm(covariance, std::array<double, 2>{2.0, -1.0}),
            16.0 - 4.0 + 9.0);
}

TEST(SamplesErringAsOne, StrangersCountEachAndSoDoNeighboursThatErrOppositely) {
  EXPECT_EQ(SamplesErringAsOne({1.0, 0.0, -1.0, 0.0, 1.0}), 1.0);
  EXPECT_EQ(SamplesErringAsOne({1.0, -1.0, 1.0, -1.0}), 1.0);
}

TEST(SamplesErringAsOne, ACorrelationOfAHalfMakesThreeErrAsOne) {
  // Products 1 * 2 + 2 * 1 + 1 * 0 + 0 * 1 + 1 * 1 = 5, squares 1 + 4 + 1 + 0 + 1 + 1 = 8.
  EXPECT_NEAR(SamplesErringAsOne({1.0, 2.0, 1.0, 0.0, 1.0, 1.0}), (1 + 0.625) / (1 - 0.625), 1e-14);
}

TEST(SamplesErringAsOne, AtMostAHundredLess1ErrAsOne) {
  EXPECT_NEAR(SamplesErringAsOne(std::vector<double>(1000, 3.0)), 1.98 / 0.02, 1e-9);
  EXPECT_NEAR(SamplesErringAsOne(std::vector<double>(25, 3.0)), 49.0, 1e-9);
}

TEST(SamplesErringAsOne, WithoutAnyErrorEachCounts) {
  EXPECT_EQ(SamplesErringAsOne({}), 1.0);
  EXPECT_EQ(SamplesErringAsOne({0.0, 0.0}), 1.0);
}

TEST(SlopesFit, APlaneWithoutErrorIsFoundExactly) {
  std::vector<std::array<double, 3>> rows;
  std::vector<double> values;
  for (int i = 0; i < 6; ++i) {
    const double x = i;
    const double z = i * i - 3.0 * i;
    rows.push_back({1.0, x, z});
    values.push_back(7.0 - 2.0 * x + 0.5 * z);
  }
  const Slopes slopes = FitSlopes(rows, values);
  ASSERT_TRUE(slopes.Told);
  EXPECT_NEAR(slopes.Slope[0], -2.0, 1e-12);
  EXPECT_NEAR(slopes.Slope[1], 0.5, 1e-12);
  EXPECT_NEAR(slopes.Variance[0], 0.0, 1e-20);
}

TEST(SlopesFit, TheVarianceIsThatOfTheResidualsOverTheSpreadOfTheRows) {
  // Rows without correlation: x is -1 or 1, z is -2 or 2. The residuals 1, -1, -1, 1 sum to
  // nothing along both, and the sum of their squares over 4 - 3 degrees of freedom is 4.
  const std::vector<std::array<double, 3>> rows = {
      {1.0, -1.0, -2.0}, {1.0, -1.0, 2.0}, {1.0, 1.0, -2.0}, {1.0, 1.0, 2.0}};
  const Slopes slopes = FitSlopes(rows, {1.0 - 3.0, -1.0 - 3.0, -1.0 + 3.0, 1.0 + 3.0});
  ASSERT_TRUE(slopes.Told);
  EXPECT_NEAR(slopes.Slope[0], 3.0, 1e-12);
  EXPECT_NEAR(slopes.Slope[1], 0.0, 1e-12);
  // Neighbours err oppositely more often than alike, so none err as one.
  EXPECT_NEAR(slopes.Variance[0], 4.0 / 4.0, 1e-12);
  EXPECT_NEAR(slopes.Variance[1], 4.0 / 16.0, 1e-12);
}

TEST(SlopesFit, NeighboursThatErrAlikeMakeTheVarianceLarger) {
  // Twice the rows of before, each after itself.
  std::vector<std::array<double, 3>> rows;
  std::vector<double> values;
  for (const double x : {-1.0, 1.0}) {
    for (const double z : {-2.0, 2.0}) {
      const double residual = x * z > 0.0 ? 1.0 : -1.0;
      for (int i = 0; i < 2; ++i) {
        rows.push_back({1.0, x, z});
        values.push_back(residual);
      }
    }
  }
  // 8 squares over 8 - 3; products 1 - 1 + 1 + 1 + 1 - 1 + 1 = 3 of squares 8.
  const double as_one = (1.0 + 3.0 / 8.0) / (1.0 - 3.0 / 8.0);
  EXPECT_NEAR(FitSlopes(rows, values).Variance[0], 8.0 / 5.0 * as_one / 8.0, 1e-12);
}

TEST(SlopesFit, ThreeRowsLeaveNothingToTellAVarianceFrom) {
  const std::vector<std::array<double, 3>> rows = {
      {1.0, 0.0, 0.0}, {1.0, 1.0, 0.0}, {1.0, 0.0, 1.0}};
  EXPECT_FALSE(FitSlopes(rows, {1.0, 2.0, 3.0}).Told);
}

}  // namespace
