// The figures of a turn and the conic through it, against figures whose geometry is known.

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "tiltpole/quality/detail/conic.h"
#include "tiltpole/quality/detail/turn.h"

namespace {

using tiltpole::TurnCoverage;
using tiltpole::TurnFigures;
using tiltpole::detail::Circle;
using tiltpole::detail::Conic;
using tiltpole::detail::CoverageOf;
using tiltpole::detail::FiguresAbout;
using tiltpole::detail::FitCircle;
using tiltpole::detail::FitConic;
using tiltpole::detail::ScaleNeeded;
using tiltpole::detail::SpreadOf;
using tiltpole::detail::TurnPlane;
using tiltpole::detail::TurnPoint;
using tiltpole::detail::TurnPoints;
using tiltpole::detail::TurnSpread;

constexpr double kDegree = 3.14159265358979323846 / 180.0;

TurnPoint PointAt(double first, double second, double radius, double degrees) {
  return {first + radius * std::cos(degrees * kDegree),
          second + radius * std::sin(degrees * kDegree), 0.0};
}

// An ellipse about (300, -200), its longer axis of 1000 turned by 30 degrees, the shorter of 700.
TurnPoint OnTurnedEllipse(double degrees, double further_out = 0.0) {
  const double u = 1000.0 * std::cos(degrees * kDegree);
  const double w = 700.0 * std::sin(degrees * kDegree);
  // The outward normal of the ellipse at that point.
  const double slope = std::hypot(u / 1000.0 / 1000.0, w / 700.0 / 700.0);
  const double out_u = u + further_out * u / 1000.0 / 1000.0 / slope;
  const double out_w = w + further_out * w / 700.0 / 700.0 / slope;
  const double c = std::cos(30.0 * kDegree);
  const double s = std::sin(30.0 * kDegree);
  return {300.0 + c * out_u - s * out_w, -200.0 + s * out_u + c * out_w, 0.0};
}

TurnPoints TurnedEllipse() {
  TurnPoints points;
  for (int degrees = 0; degrees < 360; degrees += 5) points.push_back(OnTurnedEllipse(degrees));
  return points;
}

TEST(TurnGeometry, TheHorizontalTurnLiesInXAndYAndTheVerticalOneInXAndZ) {
  const TurnPoint flat = PointsInPlane({{1.0, 2.0, 3.0}}, TurnPlane::XY)[0];
  EXPECT_EQ(flat.First, 1.0);
  EXPECT_EQ(flat.Second, 2.0);
  EXPECT_EQ(flat.OutOfPlane, 3.0);
  const TurnPoint upright = PointsInPlane({{1.0, 2.0, 3.0}}, TurnPlane::XZ)[0];
  EXPECT_EQ(upright.First, 1.0);
  EXPECT_EQ(upright.Second, 3.0);
  EXPECT_EQ(upright.OutOfPlane, 2.0);
}

// Four points on two axes a quarter apart: half of each square is that axis' variance, whichever
// way the axes are turned.
TEST(TurnGeometry, TheSpreadIsThatAlongTheLongestDirectionAndAcrossIt) {
  for (const double turned : {0.0, 20.0, 45.0, 110.0}) {
    const TurnPoints points = {
        PointAt(500.0, -300.0, 6.0, turned), PointAt(500.0, -300.0, -6.0, turned),
        PointAt(500.0, -300.0, 2.0, turned + 90.0), PointAt(500.0, -300.0, -2.0, turned + 90.0)};
    const TurnSpread spread = SpreadOf(points);
    EXPECT_NEAR(spread.Longer, 6.0 / std::sqrt(2.0), 1e-9) << turned;
    EXPECT_NEAR(spread.Shorter, 2.0 / std::sqrt(2.0), 1e-9) << turned;
  }
}

TEST(TurnGeometry, NoPointsSpreadByNothing) {
  EXPECT_EQ(SpreadOf({}).Longer, 0.0);
  EXPECT_EQ(SpreadOf({}).Shorter, 0.0);
}

TEST(TurnGeometry, AnUnevenArcOfACircleTellsItsCentre) {
  TurnPoints points;
  for (const double degrees : {10.0, 15.0, 30.0, 70.0, 95.0, 130.0}) {
    points.push_back(PointAt(-700.0, 250.0, 2500.0, degrees));
  }
  const Circle circle = FitCircle(points);
  EXPECT_TRUE(circle.Told);
  EXPECT_NEAR(circle.First, -700.0, 1e-6);
  EXPECT_NEAR(circle.Second, 250.0, 1e-6);
}

TEST(TurnGeometry, ACircleSmallerThanACountHasACentreToo) {
  const Circle circle = FitCircle({PointAt(3.0, 4.0, 0.01, 0.0), PointAt(3.0, 4.0, 0.01, 80.0),
                                   PointAt(3.0, 4.0, 0.01, 110.0), PointAt(3.0, 4.0, 0.01, 150.0)});
  EXPECT_TRUE(circle.Told);
  EXPECT_NEAR(circle.First, 3.0, 1e-9);
  EXPECT_NEAR(circle.Second, 4.0, 1e-9);
}

TEST(TurnGeometry, PointsThatTellNoCircleAreCentredOnTheirMean) {
  for (const TurnPoints& points : {TurnPoints{{1.0, 5.0, 0.0}, {3.0, 9.0, 0.0}, {5.0, 13.0, 0.0}},
                                   TurnPoints{{3.0, 9.0, 0.0}, {3.0, 9.0, 0.0}, {3.0, 9.0, 0.0}}}) {
    const Circle circle = FitCircle(points);
    EXPECT_FALSE(circle.Told);
    EXPECT_EQ(circle.First, 3.0);
    EXPECT_EQ(circle.Second, 9.0);
  }
}

TEST(TurnGeometry, TheFiguresAreMeansAndScatterOfRadiusAndLevel) {
  // Radii 5, 10 and 15 about (1, 2); levels 1, 2 and 6.
  const TurnPoints points = {{4.0, 6.0, 1.0}, {-5.0, 10.0, 2.0}, {1.0, -13.0, 6.0}};
  const TurnFigures figures = FiguresAbout(points, {true, 1.0, 2.0});
  EXPECT_EQ(figures.Samples, 3);
  EXPECT_EQ(figures.CentreFirst, 1.0);
  EXPECT_EQ(figures.CentreSecond, 2.0);
  EXPECT_NEAR(figures.RadiusMean, 10.0, 1e-12);
  EXPECT_NEAR(figures.RadiusScatter, std::sqrt(50.0 / 3.0), 1e-12);
  EXPECT_NEAR(figures.RadiusScatterLargest, 5.0, 1e-12);
  EXPECT_NEAR(figures.OutOfPlaneMean, 3.0, 1e-12);
  EXPECT_NEAR(figures.OutOfPlaneScatter, std::sqrt(14.0 / 3.0), 1e-12);
  EXPECT_NEAR(figures.OutOfPlaneScatterLargest, 3.0, 1e-12);
}

TEST(TurnGeometry, WithoutPointsTheFiguresAreNotNumbers) {
  const TurnFigures figures = FiguresAbout({}, {});
  EXPECT_EQ(figures.Samples, 0);
  EXPECT_TRUE(std::isnan(figures.RadiusMean));
  EXPECT_TRUE(std::isnan(figures.RadiusScatter));
  EXPECT_TRUE(std::isnan(figures.RadiusScatterLargest));
  EXPECT_TRUE(std::isnan(figures.OutOfPlaneMean));
}

TEST(TurnGeometry, DirectionsCountFromTheFirstAxisToTheSecondFrom0To360) {
  const TurnPoints points = {{6.0, 2.0, 0.0}, {5.0, 3.0, 0.0}, {5.0, 1.0, 0.0}, {4.0, 1.0, 0.0}};
  const std::vector<double> directions = DirectionsAbout(points, {true, 5.0, 2.0});
  ASSERT_EQ(directions.size(), 4U);
  EXPECT_NEAR(directions[0], 0.0, 1e-9);
  EXPECT_NEAR(directions[1], 90.0, 1e-9);
  EXPECT_NEAR(directions[2], 270.0, 1e-9);
  EXPECT_NEAR(directions[3], 225.0, 1e-9);
}

TEST(TurnGeometry, AGapIsMissingWhereItIsWiderThan30DegreesByMoreThanRounding) {
  EXPECT_TRUE(CoverageOf({0, 30, 60, 90, 120, 150, 180, 210, 240, 270, 300, 330}).Missing.empty());
  const TurnCoverage coverage =
      CoverageOf({330, 60, 90, 120, 150, 180, 210, 240.0000005, 270.000002, 300, 30, 0});
  ASSERT_EQ(coverage.Missing.size(), 1U);
  EXPECT_EQ(coverage.Missing[0].From, 240.0000005);
  EXPECT_EQ(coverage.Missing[0].To, 270.000002);
  EXPECT_EQ(coverage.Samples, 12);
}

TEST(TurnGeometry, AGapThatIsExactlyThatWideIsNone) {
  const TurnCoverage coverage = CoverageOf({0.0, 30.0 + 1e-6});
  ASSERT_EQ(coverage.Missing.size(), 1U);
  EXPECT_EQ(coverage.Missing[0].From, 30.0 + 1e-6);
  EXPECT_EQ(CoverageOf({0.0, 30.0 + 1.01e-6}).Missing.size(), 2U);
}

TEST(TurnGeometry, WhatNobodyHasLaidIsNoneAndAboutTheOrigin) {
  const Circle circle;
  EXPECT_FALSE(circle.Told);
  const Conic conic;
  EXPECT_FALSE(conic.Told);
  EXPECT_FALSE(conic.Ellipse);
  EXPECT_EQ(conic.Unit, 1.0);
  const TurnPoint point;
  const TurnSpread spread;
  for (const double value : {circle.First, circle.Second, conic.A, conic.B, conic.D, conic.E,
                             conic.F, conic.CentreFirst, conic.CentreSecond, point.First,
                             point.Second, point.OutOfPlane, spread.Longer, spread.Shorter}) {
    EXPECT_EQ(value, 0.0);
  }
}

TEST(TurnGeometry, MissingGapsAreListedInOrderAndLeftOutOfTheCoveredShare) {
  const TurnCoverage coverage = CoverageOf({300, 20, 50, 80, 120, 150, 180, 210});
  ASSERT_EQ(coverage.Missing.size(), 3U);
  EXPECT_EQ(coverage.Missing[0].From, 80.0);
  EXPECT_EQ(coverage.Missing[0].To, 120.0);
  EXPECT_EQ(coverage.Missing[1].From, 210.0);
  EXPECT_EQ(coverage.Missing[1].To, 300.0);
  EXPECT_EQ(coverage.Missing[2].From, 300.0);
  EXPECT_EQ(coverage.Missing[2].To, 20.0);
  EXPECT_NEAR(coverage.CoveredPercent, 100.0 * (360.0 - 40.0 - 90.0 - 80.0) / 360.0, 1e-9);
}

TEST(TurnGeometry, WithoutDirectionsTheWholeCircleIsMissing) {
  const TurnCoverage coverage = CoverageOf({});
  ASSERT_EQ(coverage.Missing.size(), 1U);
  EXPECT_EQ(coverage.Missing[0].From, 0.0);
  EXPECT_EQ(coverage.Missing[0].To, 360.0);
  EXPECT_EQ(coverage.CoveredPercent, 0.0);
}

TEST(ConicFit, ATurnedEllipseIsFittedExactlyAndCalledOne) {
  const Conic conic = FitConic(TurnedEllipse());
  EXPECT_TRUE(conic.Told);
  EXPECT_TRUE(conic.Ellipse);
  for (int degrees = 0; degrees < 360; degrees += 7) {
    EXPECT_NEAR(conic.ResidualAt(OnTurnedEllipse(degrees)), 0.0, 1e-9);
    EXPECT_NEAR(conic.DistanceOf(OnTurnedEllipse(degrees)), 0.0, 1e-6);
  }
}

TEST(ConicFit, TheDistanceOfAPointOffATurnedEllipseIsThatAlongItsNormal) {
  const Conic conic = FitConic(TurnedEllipse());
  for (int degrees = 0; degrees < 360; degrees += 7) {
    EXPECT_NEAR(conic.DistanceOf(OnTurnedEllipse(degrees, 1.0)), 1.0, 2e-3) << degrees;
    EXPECT_NEAR(conic.DistanceOf(OnTurnedEllipse(degrees, -1.0)), 1.0, 2e-3) << degrees;
  }
}

// Of a part of an ellipse the best circle, about which the conic is fitted, has another centre.
TEST(ConicFit, TheDistanceIsThatAlongTheNormalWhereOnlyAnArcWasTurnedToo) {
  TurnPoints arc;
  for (int degrees = 40; degrees < 250; degrees += 3) arc.push_back(OnTurnedEllipse(degrees));
  const Conic conic = FitConic(arc);
  EXPECT_GT(std::hypot(conic.CentreFirst - 300.0, conic.CentreSecond + 200.0), 50.0);
  for (int degrees = 0; degrees < 360; degrees += 7) {
    EXPECT_NEAR(conic.DistanceOf(OnTurnedEllipse(degrees, 1.0)), 1.0, 2e-3) << degrees;
  }
}

TEST(ConicFit, TheScatterIsTheRootMeanSquareDistanceAsAShareOfTheLongerSpread) {
  const Conic conic = FitConic(TurnedEllipse());
  TurnPoints points;
  double spread = 0.0;
  for (int degrees = 0; degrees < 360; degrees += 5) {
    points.push_back(OnTurnedEllipse(degrees, degrees % 10 == 0 ? 3.0 : -1.0));
    spread += std::pow(1000.0 * std::cos(degrees * kDegree), 2) / 72;
  }
  EXPECT_NEAR(ScatterShare(points, conic), std::sqrt(5.0) / std::sqrt(spread), 2e-5);
  EXPECT_EQ(ScatterShare({}, conic), 0.0);
}

TEST(ConicFit, OnePointScattersByItsDistance) {
  const Conic conic = FitConic(TurnedEllipse());
  const TurnPoint point = OnTurnedEllipse(20.0, 3.0);
  EXPECT_NEAR(ScatterShare({point}, conic) * conic.Unit, conic.DistanceOf(point), 1e-12);
}

TEST(ConicFit, AnEllipseSmallerThanACountIsFittedToo) {
  TurnPoints points;
  for (const TurnPoint& point : TurnedEllipse()) {
    points.push_back({1e-4 * point.First, 1e-4 * point.Second, 0.0});
  }
  const Conic conic = FitConic(points);
  EXPECT_TRUE(conic.Ellipse);
  EXPECT_NEAR(ScaleNeeded(conic), ScaleNeeded(FitConic(TurnedEllipse())), 1e-9);
}

TEST(ConicFit, TheCentreOfACircleHasNoDirectionAndCountsAsOneSpreadAway) {
  TurnPoints points;
  for (int degrees = 0; degrees < 360; degrees += 90) {
    points.push_back({10.0 * std::round(std::cos(degrees * kDegree)),
                      10.0 * std::round(std::sin(degrees * kDegree)), 0.0});
  }
  points.push_back({6.0, 8.0, 0.0});
  points.push_back({-6.0, -8.0, 0.0});
  Conic conic = FitConic(points);
  conic.B = conic.D = conic.E = 0.0;  // what rounding leaves
  EXPECT_EQ(conic.DistanceOf({conic.CentreFirst, conic.CentreSecond, 0.0}), conic.Unit);
}

TEST(ConicFit, TheScaleNeededMakesTheSecondAxisAsLongAsTheFirst) {
  for (const double scale : {0.6, 1.0, 1.7}) {
    TurnPoints points;
    for (int degrees = 0; degrees < 360; degrees += 5) {
      points.push_back({50.0 + 1000.0 * std::cos(degrees * kDegree),
                        80.0 + 1000.0 / scale * std::sin(degrees * kDegree), 0.0});
    }
    EXPECT_NEAR(ScaleNeeded(FitConic(points)), scale, 1e-9);
  }
  Conic hyperbola;
  hyperbola.A = -1.0;
  EXPECT_EQ(ScaleNeeded(hyperbola), 0.0);
  hyperbola.A = 0.0;
  EXPECT_EQ(ScaleNeeded(hyperbola), 0.0);
  hyperbola.A = 2.0;
  EXPECT_EQ(ScaleNeeded(hyperbola), 0.0);
}

TEST(ConicFit, AHyperbolaIsToldAndNoEllipse) {
  TurnPoints points;
  for (int i = -4; i <= 4; ++i) {
    const double t = 0.25 * i;
    points.push_back({200.0 * std::cosh(t), 100.0 * std::sinh(t), 0.0});
    points.push_back({-200.0 * std::cosh(t), 100.0 * std::sinh(t), 0.0});
  }
  const Conic conic = FitConic(points);
  EXPECT_TRUE(conic.Told);
  EXPECT_FALSE(conic.Ellipse);
}

TEST(ConicFit, FourPointsTellNoConic) {
  EXPECT_FALSE(FitConic({{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}}).Told);
  EXPECT_FALSE(FitConic({}).Told);
}

// Of a circle of radius R the conic's residual at a radius r is (r^2 - R^2) / 2, in squared counts.
TurnPoints CircleWithOutliers(int count, double radius, double outlier) {
  TurnPoints points;
  for (int i = 0; i < count; ++i) {
    const bool is_outlier = i == 3 || i == 17;
    points.push_back(PointAt(0.0, 0.0, is_outlier ? outlier : radius, 360.0 * i / count));
  }
  return points;
}

TEST(ConicFit, SamplesWhoseResidualReaches1000SquaredCountsAreNotUsed) {
  EXPECT_EQ(SamplesUsed(CircleWithOutliers(200, 1000.0, std::sqrt(1e6 + 2 * 950.0))), 200);
  EXPECT_EQ(SamplesUsed(CircleWithOutliers(200, 1000.0, std::sqrt(1e6 + 2 * 1060.0))), 198);
  EXPECT_EQ(SamplesUsed(CircleWithOutliers(200, 1000.0, std::sqrt(1e6 - 2 * 1060.0))), 198);
}

TEST(ConicFit, OutliersAreLeftOutOnlyWhileMoreThan20SamplesStay) {
  EXPECT_EQ(SamplesUsed(CircleWithOutliers(23, 1000.0, 1002.0)), 21);
  EXPECT_EQ(SamplesUsed(CircleWithOutliers(22, 1000.0, 1002.0)), 22);
}

}  // namespace
