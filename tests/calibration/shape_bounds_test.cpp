// What is certain of an ellipse fit without a pass over the samples, against the fit carried out.

#include "tiltpole/calibration/detail/shape_bounds.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "calibration/random_session.h"
#include "tiltpole/calibration/detail/conic_sums.h"
#include "tiltpole/calibration/detail/scale_bisection.h"

namespace tiltpole_test {
namespace {

using tiltpole::detail::AxisSums;
using tiltpole::detail::BisectScale;
using tiltpole::detail::Bounded;
using tiltpole::detail::Conic;
using tiltpole::detail::ConicSummation;
using tiltpole::detail::ConicSummationsOfThisProcessor;
using tiltpole::detail::FoundScale;
using tiltpole::detail::kConicSums;
using tiltpole::detail::kMostLanes;
using tiltpole::detail::PlaneSize;
using tiltpole::detail::ScaledEllipseFits;
using tiltpole::detail::ScaledPlane;
using tiltpole::detail::Shape;
using tiltpole::detail::ShapeBounds;
using tiltpole::detail::ShapeOf;
using tiltpole::detail::SizeOf;
using tiltpole::detail::SumAxis;
using tiltpole::detail::SumsByScale;

// The x-y plane of a turn with y' = a x + t y, the arrays and what is known of them.
struct Plane {
  std::vector<double> u;
  std::vector<double> base;
  std::vector<double> v;
  double a;

  Plane(const Turn& turn, double crossTerm) : a(crossTerm) {
    for (const Reading& reading : turn) {
      u.push_back(reading[0]);
      base.push_back(a * reading[0]);
      v.push_back(reading[1]);
    }
  }

  ScaledPlane Points() const { return {u.data(), base.data(), v.data(), u.size()}; }
  AxisSums Axis() const { return SumAxis(u); }
  PlaneSize Size() const { return {SizeOf(u).norms, a * SizeOf(u).norms, SizeOf(v)}; }
};

Plane RandomPlane(Kind kind, std::uint64_t seed) {
  Random random(seed);
  const int count = random.Whole(5, 400);
  const double a = random.Whole(0, 3) == 0 ? 0.0 : random.Between(-0.4, 0.4);
  return Plane(RandomTurns(kind, count, 0, seed).horizontal, a);
}

std::vector<ConicSummation> WaysThatBoundAnyNumber() {
  std::vector<ConicSummation> ways = ConicSummationsOfThisProcessor();
  for (ConicSummation& way : ways) way.fewestToBound = 0;
  return ways;
}

Kind AnyKind() { return static_cast<Kind>(*rc::gen::inRange(0, static_cast<int>(Kind::kKinds))); }

// Where a search asks, and ever closer to the scale where it ends.
std::vector<double> ScalesAround(double root, Random& random) {
  std::vector<double> scales = {0.0, 0.5, 1.0, 1.5, 2.0, random.Between(0, 2)};
  for (double distance = 0.5; distance > 1e-13; distance *= random.Between(0.2, 0.6)) {
    scales.push_back(root + distance);
    if (distance < root) scales.push_back(root - distance);
  }
  return scales;
}

struct Comparison {
  int certain = 0;
  int left = 0;
  bool agree = true;
};

// The bounds of fits at many scales against the fits themselves.
Comparison CompareWithFits(const Plane& plane, const ConicSummation& way, Random& random) {
  ScaledEllipseFits fits(way);
  fits.SetPoints(plane.Points(), plane.Axis());
  const FoundScale found = BisectScale(fits, {0.0, 2.0}, 100);
  const double root = found.scale > 0 ? found.scale : 1.0;
  ShapeBounds bounds(way);
  bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
  const double guess = random.Whole(0, 3) == 0 ? random.Between(0.1, 3) : root;
  std::vector<double> scales = ScalesAround(root, random);
  scales.resize(scales.size() / way.lanes * way.lanes);
  Comparison comparison;
  for (std::size_t i = 0; i < scales.size(); i += way.lanes) {
    bounds.Evaluate(scales.data() + i, guess);
    for (std::size_t lane = 0; lane < way.lanes; ++lane) {
      const ShapeBounds::Fit* const bounded = bounds.Find(scales[i + lane]);
      if (bounded == nullptr || !bounded->isCertain) {
        ++comparison.left;
        continue;
      }
      ++comparison.certain;
      const Shape shape = ShapeOf(fits.At(scales[i + lane], {0.0, 2.0}));
      comparison.agree = comparison.agree && shape.isEllipse == bounded->shape.isEllipse &&
                         shape.side == bounded->shape.side &&
                         shape.isCircle == bounded->shape.isCircle;
    }
  }
  return comparison;
}

RC_GTEST_PROP(ShapeBounds, WhatIsCertainIsWhatTheFitComesTo, ()) {
  const Kind kind = AnyKind();
  const auto seed = *rc::gen::arbitrary<std::uint32_t>();
  for (const ConicSummation& way : WaysThatBoundAnyNumber()) {
    Random random(seed);
    RC_ASSERT(CompareWithFits(RandomPlane(kind, seed), way, random).agree);
  }
}

TEST(ShapeBounds, MostOfTheStepsToACircleAreCertain) {
  for (const ConicSummation& way : WaysThatBoundAnyNumber()) {
    Comparison all;
    for (std::uint64_t seed = 0; seed < 50; ++seed) {
      Random random(seed);
      const Comparison one = CompareWithFits(RandomPlane(Kind::SoftIron, seed), way, random);
      EXPECT_TRUE(one.agree) << seed;
      all.certain += one.certain;
      all.left += one.left;
    }
    EXPECT_GT(all.certain, all.left) << way.lanes << " lanes";
  }
}

SumsByScale kept;

bool KeepSums(const SumsByScale& by, const double*, Bounded<double>*, Bounded<double>*) {
  kept = by;
  return false;
}

// The sums at nodes 0.7, 0.9, 1.1 and 1.3.
SumsByScale SumsAround1(const ScaledPlane& points, const AxisSums& axis, const PlaneSize& size,
                        ConicSummation way) {
  way.Bound = KeepSums;
  ShapeBounds bounds(way);
  bounds.SetPoints(points, axis, size);
  const double scales[kMostLanes] = {};
  bounds.Evaluate(scales, 1.0);
  return kept;
}

SumsByScale SumsAround1(const Plane& plane, const ConicSummation& way) {
  return SumsAround1(plane.Points(), plane.Axis(), plane.Size(), way);
}

bool SumsAreWithinTheirBounds(const ScaledPlane& points, const SumsByScale& by, double t) {
  const double both[2] = {t, t};
  double sums[2 * kConicSums];
  ConicSummationsOfThisProcessor().front().Sum(points, both, sums);
  Bounded<double> bounded[kConicSums];
  tiltpole::detail::BoundSums(by, t, bounded);
  for (std::size_t sum = 0; sum < kConicSums; ++sum) {
    const double summed = sums[2 * sum];
    if (!(Lowest(bounded[sum]) <= summed && summed <= Highest(bounded[sum]))) return false;
  }
  return true;
}

RC_GTEST_PROP(ShapeBounds, TheSumsOfAFitAreWithinTheirBounds, ()) {
  const ConicSummation way = ConicSummationsOfThisProcessor().front();
  const auto seed = *rc::gen::arbitrary<std::uint32_t>();
  Random random(seed);
  const Plane plane = RandomPlane(*rc::gen::element(Kind::Ideal, Kind::SoftIron, Kind::Outliers,
                                                    Kind::Garbage, Kind::FarAway, Kind::Tiny),
                                  seed);
  const SumsByScale by = SumsAround1(plane, way);
  for (int i = 0; i < 20; ++i) {
    RC_ASSERT(SumsAreWithinTheirBounds(plane.Points(), by, random.Between(0, 2)));
    RC_ASSERT(SumsAreWithinTheirBounds(plane.Points(), by, random.Between(0.9, 1.1)));
  }
}

// y is so small that its squares, or their squares, underflow; d makes as much of it as of x.
TEST(ShapeBounds, TheSumsAreWithinTheirBoundsWhereALargeCrossTermScalesTinyReadings) {
  Random random(1);
  for (const int exponent : {0, -270, -280, -560, -1000}) {
    std::vector<double> u;
    std::vector<double> y;
    std::vector<double> base;
    std::vector<double> v;
    const double d = std::ldexp(1.0, -exponent);
    for (int i = 0; i < 300; ++i) {
      const double angle = 0.02 * i;
      u.push_back(std::cos(angle));
      y.push_back(std::ldexp(300 + std::sin(angle), exponent));
      base.push_back(d * y.back());
      v.push_back(1e-3 * random.Between(-1, 1));
    }
    const ScaledPlane points = {u.data(), base.data(), v.data(), u.size()};
    const PlaneSize size = {SizeOf(u).norms, d * SizeOf(y).norms, SizeOf(v)};
    const SumsByScale by =
        SumsAround1(points, SumAxis(u), size, ConicSummationsOfThisProcessor().front());
    for (const double t : {0.0, 1.05, 1.7, 2.0}) {
      EXPECT_TRUE(SumsAreWithinTheirBounds(points, by, t)) << exponent << " at " << t;
    }
  }
}

// The columns of the design, by the names of the sums' factors.
enum Column { kColumnS, kColumnM, kColumnU, kColumnW, kColumnOne, kColumnR };

double NormOf(Column column, const Plane& plane, double t) {
  double squares = 0.0;
  for (std::size_t i = 0; i < plane.u.size(); ++i) {
    const double u = std::fabs(plane.u[i]);
    const double w = std::fabs(t * plane.v[i]);
    const double elements[] = {u * u + w * w, u * w, u, w, 1.0, w * w};
    squares += elements[column] * elements[column];
  }
  return std::sqrt(squares);
}

// By how much, at most, errors of 1 at the nodes change the cubic through them.
double GrowthAt(double t) {
  const double nodes[] = {0.7, 0.9, 1.1, 1.3};
  double growth = 0.0;
  for (const double node : nodes) {
    double share = 1.0;
    for (const double other : nodes) {
      if (other != node) share *= (t - other) / (node - other);
    }
    growth += std::fabs(share);
  }
  return growth;
}

// On a circle about the origin without a cross term, where u and w have a constant sum of squares,
// no norm is larger than it must be but those that bound a product or a sum by its parts.
TEST(ShapeBounds, TheErrorsOfTheSumsAreTheRoundingsOfTheirTermsAndOfAddingThemUp) {
  using Lanes = tiltpole::detail::LanesOf<2>;
  Random random(11);
  const int count = 12;
  const Plane plane(TurnAbout(2, count, 300, 0, Sensor(), random), 0.0);
  const SumsByScale by = SumsAround1(plane, ConicSummationsOfThisProcessor().front());
  const double t[2] = {1.05, 1.7};
  Bounded<Lanes> bounded[kConicSums];
  tiltpole::detail::BoundSums(by, Lanes{t[0], t[1]}, bounded);
  const std::array<Column, 2> columns[kConicSums] = {
      {kColumnS, kColumnS},   {kColumnS, kColumnM}, {kColumnS, kColumnU},   {kColumnS, kColumnW},
      {kColumnS, kColumnOne}, {kColumnM, kColumnM}, {kColumnM, kColumnU},   {kColumnM, kColumnW},
      {kColumnU, kColumnW},   {kColumnW, kColumnW}, {kColumnW, kColumnOne}, {kColumnS, kColumnR},
      {kColumnM, kColumnR},   {kColumnU, kColumnR}, {kColumnW, kColumnR}};
  const double unit = std::numeric_limits<double>::epsilon() / 2;
  for (std::size_t lane = 0; lane < 2; ++lane) {
    const double growth = GrowthAt(t[lane]);
    const double roundings = (count + 16) * (1 + growth) + 20 * growth;
    const double widest = std::fmax(t[lane], 1.3);
    for (std::size_t sum = 0; sum < kConicSums; ++sum) {
      const double norms =
          NormOf(columns[sum][0], plane, widest) * NormOf(columns[sum][1], plane, widest);
      const double error = bounded[sum].error[lane] / (unit * roundings * norms);
      EXPECT_GT(error, 0.999) << sum << " at " << t[lane];
      EXPECT_LT(error, 3.0) << sum << " at " << t[lane];
    }
    for (const auto sum : {tiltpole::detail::kWW, tiltpole::detail::kW}) {
      const double norms =
          NormOf(columns[sum][0], plane, widest) * NormOf(columns[sum][1], plane, widest);
      EXPECT_NEAR(bounded[sum].error[lane] / (unit * roundings * norms), 1.0, 0.01) << sum;
    }
  }
}

// The part of the fourth powers is taken from their own sum, and is rounded as that is.
TEST(ShapeBounds, TheErrorOfTheFourthPowersComesOnTop) {
  const Plane plane = RandomPlane(Kind::Ideal, 1);
  SumsByScale by = SumsAround1(plane, ConicSummationsOfThisProcessor().front());
  const double t = 1.7;
  const double added = 1e6 * by.fourthPowersOfV;
  Bounded<double> before[kConicSums];
  tiltpole::detail::BoundSums(by, t, before);
  by.fourthPowersOfV += added;
  Bounded<double> after[kConicSums];
  tiltpole::detail::BoundSums(by, t, after);
  const double quartic = (t - 0.7) * (t - 0.9) * (t - 1.1) * (t - 1.3);
  for (const auto sum : {tiltpole::detail::kSS, tiltpole::detail::kSR}) {
    const double larger = after[sum].error - before[sum].error;
    EXPECT_NEAR(larger / (by.rounding * quartic * added), 1.0, 1e-3);
  }
}

// base and t v are large and cancel but for the circle's height, and with it digits of w.
TEST(ShapeBounds, LeaveMoreFitsOpenWhereTheScaledAxisLosesItsDigits) {
  Random random(4);
  const Turn circle = TurnAbout(2, 100, 300, 0, Sensor(), random);
  Turn steep = circle;
  const double a = -1e6;
  for (std::size_t i = 0; i < circle.size(); ++i) steep[i][1] = circle[i][1] - a * circle[i][0];
  const Plane plane(steep, a);
  for (const ConicSummation& way : WaysThatBoundAnyNumber()) {
    Random same(5);
    const Comparison usual = CompareWithFits(Plane(circle, 0.0), way, same);
    same = Random(5);
    const Comparison comparison = CompareWithFits(plane, way, same);
    EXPECT_TRUE(comparison.agree);
    EXPECT_LT(comparison.certain, usual.certain / 2);
  }
}

TEST(ShapeBounds, AreNotUsefulForReadingsThatAreNoNumbers) {
  for (const double bad :
       {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    Plane plane(RandomTurns(Kind::SoftIron, 300, 0, 5).horizontal, 0.1);
    plane.v[7] = bad;
    ShapeBounds bounds(ConicSummationsOfThisProcessor().front());
    bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
    EXPECT_FALSE(bounds.AreUseful());
  }
}

TEST(ShapeBounds, OfReadingsBeyondAllMeasureAreNotUseful) {
  for (const double size : {1e57, 1e62}) {
    Random random(12);
    const Plane circle(TurnAbout(2, 300, size, 0, Sensor(), random), 0.0);
    Plane flat = circle;
    for (double& value : flat.v) value /= size;
    Plane narrow = circle;
    for (double& value : narrow.u) value /= size;
    Plane steep = narrow;
    steep.v = narrow.u;
    for (std::size_t i = 0; i < steep.u.size(); ++i) steep.base[i] = size * steep.u[i];
    steep.a = size;
    for (const Plane& plane : {flat, narrow, steep}) {
      for (const ConicSummation& way : WaysThatBoundAnyNumber()) {
        ShapeBounds bounds(way);
        bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
        EXPECT_EQ(bounds.AreUseful(), size < 1e60);
      }
    }
  }
}

TEST(ShapeBounds, AreRightWhateverRootTheySurround) {
  const Plane plane(RandomTurns(Kind::SoftIron, 60, 0, 5).horizontal, 0.1);
  for (const ConicSummation& way : WaysThatBoundAnyNumber()) {
    int certain = 0;
    for (const double root : {0.0, 1e-300, 1e-3, 0.3, 2.5, 1e103, 1e300}) {
      ScaledEllipseFits fits(way);
      fits.SetPoints(plane.Points(), plane.Axis());
      ShapeBounds bounds(way);
      bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
      const double scales[kMostLanes] = {0.5, 0.75, 1.0, 1.25, 1.5, 1.75, 2.0, 0.25};
      bounds.Evaluate(scales, root);
      for (std::size_t lane = 0; lane < way.lanes; ++lane) {
        const ShapeBounds::Fit* const bounded = bounds.Find(scales[lane]);
        if (bounded == nullptr || !bounded->isCertain) continue;
        ++certain;
        EXPECT_EQ(bounded->shape.side, ShapeOf(fits.At(scales[lane], {0.0, 2.0})).side) << root;
      }
    }
    EXPECT_GT(certain, 0);
  }
}

// With a scale of 0 the second axis is a multiple of the first, and no pivots are left.
TEST(ShapeBounds, AScaleThatKeepsTheOthersFromBeingBoundedTogetherLeavesTheFirst) {
  const Plane plane(RandomTurns(Kind::SoftIron, 60, 0, 5).horizontal, 0.1);
  for (const ConicSummation& way : WaysThatBoundAnyNumber()) {
    ShapeBounds bounds(way);
    bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
    const double scales[kMostLanes] = {1.75, 0.0};
    bounds.Evaluate(scales, 1.0);
    ASSERT_NE(bounds.Find(1.75), nullptr);
    EXPECT_TRUE(bounds.Find(1.75)->isCertain);
    EXPECT_EQ(bounds.Find(0.0), nullptr);
    const double others[kMostLanes] = {0.0, 1.75};
    bounds.Evaluate(others, 1.0);
    ASSERT_NE(bounds.Find(0.0), nullptr);
    EXPECT_FALSE(bounds.Find(0.0)->isCertain);
    EXPECT_TRUE(std::isnan(bounds.Find(0.0)->root));
  }
}

// 0.7 u^2 + u w + 0.3 w^2 = 10000: both squares have positive coefficients, and yet it is none.
TEST(ShapeBounds, NeverTakeAHyperbolaForAnEllipse) {
  Turn hyperbola;
  for (int i = 0; i < 120; ++i) {
    const double u = -300 + 5.0 * i;
    const double root = std::sqrt(0.16 * u * u + 12000);
    hyperbola.push_back({u, (-u + (i % 2 == 0 ? root : -root)) / 0.6, 0});
  }
  const Plane plane(hyperbola, 0.0);
  for (const ConicSummation& way : WaysThatBoundAnyNumber()) {
    ScaledEllipseFits fits(way);
    fits.SetPoints(plane.Points(), plane.Axis());
    EXPECT_FALSE(fits.At(1.0, {0.0, 2.0}).IsEllipse());
    ShapeBounds bounds(way);
    bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
    const std::vector<double> scales(kMostLanes, 1.0);
    bounds.Evaluate(scales.data(), 1.0);
    EXPECT_FALSE(bounds.Find(1.0)->isCertain);
  }
}

TEST(ShapeBounds, OfOtherPointsAreForgotten) {
  const Plane plane(RandomTurns(Kind::SoftIron, 60, 0, 5).horizontal, 0.1);
  ShapeBounds bounds(WaysThatBoundAnyNumber().front());
  bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
  const double scales[kMostLanes] = {1.5, 1.25};
  bounds.Evaluate(scales, 1.0);
  ASSERT_NE(bounds.Find(1.5), nullptr);
  bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
  EXPECT_EQ(bounds.Find(1.5), nullptr);
}

TEST(ShapeBounds, BoundTheCoefficientsOfTheFitItself) {
  for (const ConicSummation& way : ConicSummationsOfThisProcessor()) {
    int compared = 0;
    for (std::uint64_t seed = 0; seed < 40; ++seed) {
      Random random(seed);
      const Plane plane = RandomPlane(Kind::SoftIron, seed);
      const SumsByScale by = SumsAround1(plane, way);
      const double t = random.Between(0.5, 1.6);
      double scales[kMostLanes];
      std::fill_n(scales, kMostLanes, t);
      Bounded<double> A[kMostLanes];
      Bounded<double> B[kMostLanes];
      if (!way.Bound(by, scales, A, B)) continue;
      ++compared;
      ScaledEllipseFits fits(way);
      fits.SetPoints(plane.Points(), plane.Axis());
      const Conic conic = fits.At(t, {0.0, 2.0});
      for (std::size_t lane = 0; lane < way.lanes; ++lane) {
        EXPECT_LE(std::fabs(A[lane].value - conic.A), A[lane].error) << seed;
        EXPECT_LE(std::fabs(B[lane].value - conic.B), B[lane].error) << seed;
        EXPECT_LT(B[lane].error, 20 * A[lane].error) << seed;
        EXPECT_GT(B[lane].error, A[lane].error / 20) << seed;
      }
    }
    EXPECT_GT(compared, 20);
  }
}

// Of one scale at a time, without vectors.
TEST(ShapeBounds, BoundEachLaneAsItsScaleAlone) {
  for (const ConicSummation& way : ConicSummationsOfThisProcessor()) {
    const Plane plane = RandomPlane(Kind::SoftIron, 3);
    const SumsByScale by = SumsAround1(plane, way);
    double scales[kMostLanes];
    for (std::size_t lane = 0; lane < way.lanes; ++lane) {
      scales[lane] = 0.9 + 0.03 * static_cast<double>(lane);
    }
    Bounded<double> A[kMostLanes];
    Bounded<double> B[kMostLanes];
    ASSERT_TRUE(way.Bound(by, scales, A, B)) << way.lanes;
    for (std::size_t lane = 0; lane < way.lanes; ++lane) {
      Bounded<double> sums[kConicSums];
      tiltpole::detail::BoundSums(by, scales[lane], sums);
      const tiltpole::detail::ConicEquations<Bounded<double>> equations(by.axis, sums);
      const auto alone =
          tiltpole::detail::NormalInverse<5, Bounded<double>>(equations.AtA).Solve(equations.Atb);
      EXPECT_EQ(A[lane].value, alone.at[0].value);
      EXPECT_EQ(A[lane].error, alone.at[0].error);
      EXPECT_EQ(B[lane].value, alone.at[1].value);
      EXPECT_EQ(B[lane].error, alone.at[1].error);
    }
  }
}

TEST(AxisNorms, AreUpperBoundsWhereThePowersOfReadingsUnderflow) {
  for (const int exponent : {-200, -260, -280, -400, -530, -560, -1000, -1060}) {
    const std::vector<double> tiny = {std::ldexp(3.0, exponent), std::ldexp(4.0, exponent)};
    const tiltpole::detail::AxisNorms norms = SizeOf(tiny).norms;
    EXPECT_GE(norms.two, std::ldexp(5.0, exponent)) << exponent;
    EXPECT_GE(norms.four, std::ldexp(std::pow(81 + 256, 0.25), exponent)) << exponent;
  }
}

TEST(AxisNorms, OfMultiplesAndSumsAreUpperBoundsByLittle) {
  const tiltpole::detail::AxisNorms one = {3, 2};
  const tiltpole::detail::AxisNorms other = {5, 7};
  for (const double factor : {2.0, -2.0}) {
    EXPECT_GT((factor * one).two, 6);
    EXPECT_LT((factor * one).two, 6.01);
    EXPECT_GT((factor * one).four, 4);
    EXPECT_LT((factor * one).four, 4.01);
  }
  EXPECT_GT((one + other).two, 8);
  EXPECT_LT((one + other).two, 8.01);
  EXPECT_GT((one + other).four, 9);
  EXPECT_LT((one + other).four, 9.01);
}

TEST(ShapeBounds, AreUsefulFromTheSizeOfASetOnThatAPassCostsMoreFor) {
  const ConicSummation way = ConicSummationsOfThisProcessor().front();
  const auto count = static_cast<int>(way.fewestToBound);
  for (const int off : {-1, 0}) {
    const Plane plane(RandomTurns(Kind::Noisy, count + off, 0, 6).horizontal, 0.1);
    ShapeBounds bounds(way);
    EXPECT_FALSE(bounds.AreUseful());
    bounds.SetPoints(plane.Points(), plane.Axis(), plane.Size());
    EXPECT_EQ(bounds.AreUseful(), off == 0);
    bounds.GiveUp();
    EXPECT_FALSE(bounds.AreUseful());
  }
}

int passes = 0;
ConicSummation counted;

void CountPass(const ScaledPlane& plane, const double* t, double* sums) {
  ++passes;
  counted.Sum(plane, t, sums);
}

int PassesOfASearch(const Plane& plane, const ConicSummation& way, bool withBounds) {
  counted = way;
  ConicSummation counting = way;
  counting.Sum = CountPass;
  ScaledEllipseFits fits(counting);
  if (withBounds) {
    fits.SetPoints(plane.Points(), plane.Axis(), plane.Size());
  } else {
    fits.SetPoints(plane.Points(), plane.Axis());
  }
  passes = 0;
  EXPECT_FALSE(BisectScale(fits, {0.0, 2.0}, 1000).ranOut);
  return passes;
}

TEST(ScaledEllipseFits, AskForFewerPassesWhereBoundsDecide) {
  const Plane plane(RandomTurns(Kind::SoftIron, 300, 0, 8).horizontal, 0.1);
  for (const ConicSummation& way : WaysThatBoundAnyNumber()) {
    EXPECT_LT(PassesOfASearch(plane, way, true), PassesOfASearch(plane, way, false)) << way.lanes;
  }
}

}  // namespace
}  // namespace tiltpole_test
