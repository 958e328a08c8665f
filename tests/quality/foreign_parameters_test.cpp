// When parameters are said to belong to another pole: a clean turn that they leave off the origin,
// or out of round.

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "tiltpole/quality/detail/reasons.h"
#include "tiltpole/quality/detail/turn.h"

namespace {

using tiltpole::ConcernedMagnetometer;
using tiltpole::ConcernedTurn;
using tiltpole::QualityCode;
using tiltpole::Verdict;
using tiltpole::detail::Circle;
using tiltpole::detail::FiguresAbout;
using tiltpole::detail::FindForeignParameters;
using tiltpole::detail::FitCircle;
using tiltpole::detail::PointsInPlane;
using tiltpole::detail::Reasons;
using tiltpole::detail::TurnPlane;
using tiltpole::detail::TurnPoints;
using tiltpole::detail::TurnReadings;

constexpr double kFullTurn = 2.0 * 3.14159265358979323846;

struct Ellipse {
  double first = 0.0;  // of the centre
  double second = 0.0;
  double stretch = 1.0;  // of the first axis, beside the second
  double jitter = 0.0;   // neighbours lie this share further out and further in
  double radius = 1000.0;
};

TurnReadings Turn(const Ellipse& ellipse, bool vertical) {
  TurnReadings turn;
  for (int i = 0; i < 72; ++i) {
    const double angle = kFullTurn * i / 72;
    const double radius =
        ellipse.radius * (i % 2 == 0 ? 1.0 + ellipse.jitter : 1.0 - ellipse.jitter);
    const double u = ellipse.first + ellipse.stretch * radius * std::cos(angle);
    const double w = ellipse.second + radius * std::sin(angle);
    if (vertical) {
      turn.Field.push_back({u, 0.0, w});
    } else {
      turn.Field.push_back({u, w, 0.0});
    }
  }
  return turn;
}

Reasons FaultsOf(const Ellipse& horizontal, const Ellipse& vertical) {
  Reasons reasons;
  FindForeignParameters(Turn(horizontal, false), Turn(vertical, true), ConcernedMagnetometer::B,
                        reasons);
  return reasons;
}

void ExpectFault(const Reasons& reasons, ConcernedTurn turn) {
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].Code, QualityCode::ParametersOfAnotherPole);
  EXPECT_EQ(reasons[0].Weight, Verdict::Unusable);
  EXPECT_EQ(reasons[0].Magnetometer, ConcernedMagnetometer::B);
  EXPECT_EQ(reasons[0].Turn, turn);
}

TEST(ForeignParameters, RoundTurnsAboutTheOriginFit) { EXPECT_TRUE(FaultsOf({}, {}).empty()); }

// The mean distance from the circle's own centre is its radius, wherever it stands.
TEST(ForeignParameters, TheHorizontalTurnMayStandATenthOfItsRadiusOffTheOrigin) {
  EXPECT_TRUE(FaultsOf({59.9, -79.9}, {}).empty());
  ExpectFault(FaultsOf({-60.1, 80.1}, {}), ConcernedTurn::Horizontal);
}

TEST(ForeignParameters, OfTheVerticalTurnOnlyTheOffsetOfZCounts) {
  EXPECT_TRUE(FaultsOf({}, {900.0, 99.9}).empty());
  EXPECT_TRUE(FaultsOf({}, {0.0, -99.9}).empty());
  ExpectFault(FaultsOf({}, {0.0, 100.1}), ConcernedTurn::Vertical);
  ExpectFault(FaultsOf({}, {0.0, -100.1}), ConcernedTurn::Vertical);
}

TEST(ForeignParameters, ATurnMayBeATenthOutOfRound) {
  for (const double stretch : {1.099, 0.901}) {
    EXPECT_TRUE(FaultsOf({0.0, 0.0, stretch}, {0.0, 0.0, stretch}).empty());
  }
  for (const double stretch : {1.101, 0.899}) {
    ExpectFault(FaultsOf({0.0, 0.0, stretch}, {}), ConcernedTurn::Horizontal);
    ExpectFault(FaultsOf({}, {0.0, 0.0, stretch}), ConcernedTurn::Vertical);
  }
}

// Of turns of many sizes one comes to the very limit, whose last bits the fit decides.
TEST(ForeignParameters, ATurnExactlyATenthOfItsRadiusOffTheOriginFits) {
  for (double further = 1.0; further < 2.0; further += 1e-3) {
    const TurnReadings turn = Turn({100.0 * further, 0.0, 1.0, 0.0, 1000.0 * further}, false);
    const TurnPoints points = PointsInPlane(turn.Field, TurnPlane::XY);
    const Circle circle = FitCircle(points);
    const double offset = std::hypot(circle.First, circle.Second);
    if (offset / FiguresAbout(points, circle).RadiusMean != 0.1) continue;
    Reasons reasons;
    FindForeignParameters(turn, Turn({}, true), ConcernedMagnetometer::B, reasons);
    EXPECT_TRUE(reasons.empty());
    return;
  }
  FAIL() << "no turn comes to the limit";
}

// Neighbours a share d out and in leave the circle by d of its radius, and their spread is the
// radius over the root of 2.
TEST(ForeignParameters, ATurnThatScattersByMoreThanATwentiethTellsNothing) {
  const double limit = 0.05 / std::sqrt(2.0);
  ExpectFault(FaultsOf({300.0, 0.0, 1.0, 0.99 * limit}, {}), ConcernedTurn::Horizontal);
  EXPECT_TRUE(FaultsOf({300.0, 0.0, 1.0, 1.01 * limit}, {}).empty());
  ExpectFault(FaultsOf({}, {0.0, 300.0, 1.0, 0.99 * limit}), ConcernedTurn::Vertical);
  EXPECT_TRUE(FaultsOf({}, {0.0, 300.0, 1.0, 1.01 * limit}).empty());
}

TEST(ForeignParameters, ATurnWithoutSamplesTellsNothing) {
  Reasons reasons;
  FindForeignParameters({}, {}, ConcernedMagnetometer::A, reasons);
  EXPECT_TRUE(reasons.empty());
}

}  // namespace
