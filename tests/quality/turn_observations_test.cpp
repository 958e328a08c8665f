// What a turn's observations are worth in the fit of a magnetometer's error, against the textbook's
// figures for a mean and for a regression: the constants are sought, all terms of the error known.

#include "tiltpole/quality/detail/turn_observations.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

namespace {

using tiltpole::detail::ErrorFit;
using tiltpole::detail::kErrorTerms;
using tiltpole::detail::kOx;
using tiltpole::detail::kStrength;
using tiltpole::detail::kVertical;
using tiltpole::detail::TurnObservations;
using tiltpole::detail::TurnReadings;
using tiltpole::detail::UnknownsRow;

constexpr double kUnit = 2500.0;      // counts of the horizontal field
constexpr double kMean = 0.625;       // of the strengths
constexpr double kMeanUp = -0.25;     // of the vertical parts
constexpr double kOffset = 0.125;     // of the sensor, along x
constexpr double kStep = 1.0 / 16.0;  // what the residuals are counted in

// Neighbours of the strengths' residuals make products of 4 - 3 steps squared among 8 squares;
// those of what the vertical parts have beside, products of 6 - 1 among 8. The two are independent.
constexpr std::array<double, 8> kOfStrength = {1, 1, -1, -1, 1, 1, -1, -1};
constexpr std::array<double, 8> kBeside = {1, 1, 1, 1, -1, -1, -1, -1};
constexpr double kStrengthsAsOne = (1.0 + 1.0 / 8.0) / (1.0 - 1.0 / 8.0);
constexpr double kBesideAsOne = (1.0 + 5.0 / 8.0) / (1.0 - 5.0 / 8.0);
// The vertical parts follow the strengths by this share.
constexpr double kShare = 2.0;

// Fields along x, forwards and backwards in turn, read by a sensor with an offset along x.
TurnReadings TurnWithScatter(double of_strength, double beside) {
  TurnReadings turn;
  for (std::size_t i = 0; i < kOfStrength.size(); ++i) {
    const double strength = kMean + of_strength * kOfStrength[i];
    const double upward = kMeanUp + kShare * of_strength * kOfStrength[i] + beside * kBeside[i];
    const double along_x = i % 2 == 0 ? strength : -strength;
    const double up = upward / along_x;
    turn.Field.push_back({kUnit * (along_x + kOffset), 0.0, 0.0});
    turn.Up.push_back({up, 0.0, std::sqrt(1.0 - up * up)});
  }
  return turn;
}

UnknownsRow TrueSolution() {
  UnknownsRow solution{};
  solution[kOx] = kOffset;
  solution[kStrength] = kMean;
  solution[kVertical] = kMeanUp;
  return solution;
}

// The terms of the error are as good as known.
ErrorFit FitOfConstants(double offset) {
  constexpr double kSure = 1e6;
  ErrorFit fit;
  for (std::size_t term = 0; term < kErrorTerms; ++term) {
    UnknownsRow row{};
    row[term] = kSure;
    fit.Add(row, term == kOx ? kSure * offset : 0.0);
  }
  return fit;
}

ErrorFit SolvedWith(const TurnObservations& turn, double offset = kOffset) {
  ErrorFit fit = FitOfConstants(offset);
  turn.AddTo(fit);
  EXPECT_TRUE(fit.Solve());
  return fit;
}

double Square(double x) { return x * x; }

TEST(TurnObservations, AFitKnowsTheConstantsAsWellAsTheScatterOfTheSamplesAllows) {
  for (const double freedom : {1.0, 0.5}) {
    TurnObservations turn(TurnWithScatter(kStep, 0.5 * kStep), kUnit);
    turn.UpdateScatter(TrueSolution(), freedom);
    EXPECT_NEAR(turn.StrengthDeviation(), kStep / std::sqrt(freedom), 1e-12);
    const ErrorFit fit = SolvedWith(turn);
    EXPECT_NEAR(fit.Solution()[kStrength], kMean, 1e-9);
    EXPECT_NEAR(fit.Solution()[kVertical], kMeanUp, 1e-9);
    const double of_strength = Square(kStep) / freedom * kStrengthsAsOne / 8.0;
    const double beside = Square(0.5 * kStep) / freedom * kBesideAsOne / 8.0;
    EXPECT_NEAR(fit.Inverse()[kStrength][kStrength] / of_strength, 1.0, 1e-6);
    EXPECT_NEAR(fit.Inverse()[kStrength][kVertical] / (kShare * of_strength), 1.0, 1e-6);
    EXPECT_NEAR(fit.Inverse()[kVertical][kVertical] / (kShare * kShare * of_strength + beside), 1.0,
                1e-6);
  }
}

// The offset shows in the scatter then, as nothing but the means is taken off.
TEST(TurnObservations, BeforeAFitTheStrengthsAndTheVerticalPartsCountByTheirScatterAboutTheMeans) {
  const TurnReadings readings = TurnWithScatter(kStep, 0.5 * kStep);
  double up_mean = 0.0;
  double up_square = 0.0;
  for (std::size_t i = 0; i < 8; ++i) {
    const double upward = readings.Field[i].x * readings.Up[i].x / kUnit;
    up_mean += upward / 8.0;
    up_square += upward * upward / 8.0;
  }
  const TurnObservations turn(readings, kUnit);
  const double strength_square = Square(kStep) + Square(kOffset);
  EXPECT_NEAR(turn.StrengthDeviation(), std::sqrt(strength_square), 1e-12);
  const ErrorFit fit = SolvedWith(turn, 0.0);
  EXPECT_NEAR(fit.Solution()[kStrength], kMean, 1e-9);
  EXPECT_NEAR(fit.Solution()[kVertical], up_mean, 1e-9);
  EXPECT_NEAR(fit.Inverse()[kStrength][kStrength] / (strength_square / 8.0), 1.0, 1e-6);
  EXPECT_NEAR(fit.Inverse()[kVertical][kVertical] / ((up_square - Square(up_mean)) / 8.0), 1.0,
              1e-6);
  EXPECT_NEAR(fit.Inverse()[kStrength][kVertical], 0.0, 1e-9);
}

TEST(TurnObservations, NoSolutionMakesATurnWorthLessThanItsMeansDo) {
  TurnObservations turn(TurnWithScatter(kStep, 0.5 * kStep), kUnit);
  const double at_first = turn.StrengthDeviation();
  const double vertical_at_first = SolvedWith(turn, 0.0).Inverse()[kVertical][kVertical];
  UnknownsRow far_off{};
  far_off[kStrength] = 100.0;
  turn.UpdateScatter(far_off, 1.0);
  EXPECT_EQ(turn.StrengthDeviation(), at_first);
  far_off[kStrength] = kMean;
  far_off[kVertical] = 100.0;
  turn.UpdateScatter(far_off, 1.0);
  const ErrorFit fit = SolvedWith(turn, 0.0);
  // All residuals are alike, so that 8 samples, which correlate by 7/8, err as 15.
  EXPECT_LT(fit.Inverse()[kVertical][kVertical], 15.1 * vertical_at_first);
  EXPECT_GT(fit.Inverse()[kVertical][kVertical], 14.9 * vertical_at_first);
}

TEST(TurnObservations, ATurnWithoutScatterCountsAsIfItHadATenMillionth) {
  TurnObservations turn(TurnWithScatter(0.0, 0.0), kUnit);
  turn.UpdateScatter(TrueSolution(), 1.0);
  EXPECT_EQ(turn.StrengthDeviation(), 1e-7);
}

TEST(TurnObservations, TheScatterIsKeptAboveThatOfTheSensorForBothKinds) {
  TurnObservations turn(TurnWithScatter(kStep, 0.5 * kStep), kUnit);
  const double before = turn.StrengthDeviation();
  turn.KeepScatterAbove(0.5 * before);
  EXPECT_EQ(turn.StrengthDeviation(), before);
  turn.KeepScatterAbove(3.0);
  EXPECT_EQ(turn.StrengthDeviation(), 3.0);
  const ErrorFit fit = SolvedWith(turn);
  EXPECT_NEAR(fit.Inverse()[kStrength][kStrength], 9.0 / 8.0, 1e-6);
  EXPECT_NEAR(fit.Inverse()[kVertical][kVertical], 9.0 / 8.0, 1e-6);
}

TEST(TurnObservations, AReadingOfNothingIsLeftOutAndAWeakOneIsNot) {
  TurnReadings readings = TurnWithScatter(kStep, 0.5 * kStep);
  const double without = TurnObservations(readings, kUnit).StrengthDeviation();
  readings.Field.push_back({0.0, 0.0, 0.0});
  readings.Up.push_back({0.0, 0.0, 1.0});
  EXPECT_EQ(TurnObservations(readings, kUnit).StrengthDeviation(), without);
  readings.Field.push_back({1e-3 * kUnit, 0.0, 0.0});
  readings.Up.push_back({0.0, 0.0, 1.0});
  EXPECT_GT(TurnObservations(readings, kUnit).StrengthDeviation(), 1.1 * without);
}

TEST(TurnObservations, ATurnWithoutReadingsAddsNothingAndIsTakenToScatterByTheWholeField) {
  const TurnObservations turn({}, kUnit);
  EXPECT_EQ(turn.StrengthDeviation(), 1.0);
  ErrorFit fit = FitOfConstants(0.0);
  turn.AddTo(fit);
  EXPECT_FALSE(fit.Solve());
}

}  // namespace
