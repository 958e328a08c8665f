// The four-parameter transformation.

#include "tiltpole/estimation/CMagneticConvert.h"

#include <cmath>
#include <complex>
#include <cstddef>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

using tiltpole::CMagneticConvert;
using tiltpole::FourParameterPoint;
using tiltpole::Magnetic_FourParameter;

constexpr double kPi = 3.141592653589793;

struct Point {
  double x;
  double y;
};

Point Forward(const CMagneticConvert& convert, Point p) {
  convert.XYtoXY(p.x, p.y);
  return p;
}

Point Back(const CMagneticConvert& convert, Point p) {
  convert.XYtoXY1(p.x, p.y);
  return p;
}

// Twice as large, turned by a right angle to the left, shifted by (10, 20).
void AddPairsOfARightAngle(CMagneticConvert& convert) {
  convert.AddPoint(0, 0, 10, 20);
  convert.AddPoint(1, 0, 10, 22);
  convert.AddPoint(0, 1, 8, 20);
  convert.AddPoint(1, 1, 8, 22);
}

TEST(FourParameterRecords, HaveTheirFieldsInOrder) {
  const Magnetic_FourParameter parameter{1, 2, 3, 4, 5, 6};
  EXPECT_EQ(parameter.Scale, 1);
  EXPECT_EQ(parameter.Rotation, 2);
  EXPECT_EQ(parameter.OffsetX, 3);
  EXPECT_EQ(parameter.OffsetY, 4);
  EXPECT_EQ(parameter.CenterX, 5);
  EXPECT_EQ(parameter.CenterY, 6);
  const FourParameterPoint point{1, 2, 3, 4, 5, 6, 7, 8};
  EXPECT_EQ(point.SourceX, 1);
  EXPECT_EQ(point.SourceY, 2);
  EXPECT_EQ(point.TargetX, 3);
  EXPECT_EQ(point.TargetY, 4);
  EXPECT_EQ(point.CentredSourceX, 5);
  EXPECT_EQ(point.CentredSourceY, 6);
  EXPECT_EQ(point.CentredTargetX, 7);
  EXPECT_EQ(point.CentredTargetY, 8);
}

TEST(FourParameterRecords, APairThatNobodyHasFilledIsAllZeros) {
  const FourParameterPoint point;
  for (const double value :
       {point.SourceX, point.SourceY, point.TargetX, point.TargetY, point.CentredSourceX,
        point.CentredSourceY, point.CentredTargetX, point.CentredTargetY}) {
    EXPECT_EQ(value, 0.0);
  }
}

TEST(FourParameterTransformation, StartsAsTheIdentity) {
  const CMagneticConvert convert;
  const Point there = Forward(convert, {3.5, -7.25});
  EXPECT_EQ(there.x, 3.5);
  EXPECT_EQ(there.y, -7.25);
  const Point back = Back(convert, {3.5, -7.25});
  EXPECT_EQ(back.x, 3.5);
  EXPECT_EQ(back.y, -7.25);
}

TEST(FourParameterTransformation, TakesItsParametersInTheOrderShiftAngleScaleCentre) {
  CMagneticConvert convert;
  convert.SetFourParameter(1, 2, 3, 4, 5, 6);
  const Magnetic_FourParameter parameter = convert.GetFourParameter();
  EXPECT_EQ(parameter.OffsetX, 1);
  EXPECT_EQ(parameter.OffsetY, 2);
  EXPECT_EQ(parameter.Rotation, 3);
  EXPECT_EQ(parameter.Scale, 4);
  EXPECT_EQ(parameter.CenterX, 5);
  EXPECT_EQ(parameter.CenterY, 6);
}

TEST(FourParameterEstimate, WithoutPairsReturnsZeroAndChangesNothing) {
  CMagneticConvert convert;
  convert.SetFourParameter(1, 2, 3, 4, 5, 6);
  EXPECT_EQ(convert.CalFourParameter(), 0);
  const Magnetic_FourParameter parameter = convert.GetFourParameter();
  EXPECT_EQ(parameter.OffsetX, 1);
  EXPECT_EQ(parameter.OffsetY, 2);
  EXPECT_EQ(parameter.Rotation, 3);
  EXPECT_EQ(parameter.Scale, 4);
  EXPECT_EQ(parameter.CenterX, 5);
  EXPECT_EQ(parameter.CenterY, 6);
}

TEST(FourParameterEstimate, FindsScaleAngleAndShiftOfARightAngle) {
  CMagneticConvert convert;
  AddPairsOfARightAngle(convert);
  EXPECT_EQ(convert.CalFourParameter(), 1);
  const Magnetic_FourParameter parameter = convert.GetFourParameter();
  EXPECT_EQ(parameter.Scale, 2.0);
  EXPECT_EQ(parameter.Rotation, kPi / 2.0);
  EXPECT_NEAR(parameter.OffsetX, 10.0, 1e-14) << "the cosine of a right angle is not exactly 0";
  EXPECT_NEAR(parameter.OffsetY, 20.0, 1e-14);
}

TEST(FourParameterEstimate, MapsEachSourceOntoItsTargetAndBack) {
  CMagneticConvert convert;
  AddPairsOfARightAngle(convert);
  convert.CalFourParameter();
  const Point targets[2][2] = {{{10, 20}, {8, 20}}, {{10, 22}, {8, 22}}};
  for (const int x : {0, 1}) {
    for (const int y : {0, 1}) {
      const Point target = targets[x][y];
      const Point there = Forward(convert, {1.0 * x, 1.0 * y});
      EXPECT_NEAR(there.x, target.x, 1e-14);
      EXPECT_NEAR(there.y, target.y, 1e-14);
      const Point back = Back(convert, target);
      EXPECT_NEAR(back.x, x, 1e-14);
      EXPECT_NEAR(back.y, y, 1e-14);
    }
  }
}

TEST(FourParameterEstimate, LeavesTheCentre) {
  CMagneticConvert convert;
  convert.SetFourParameter(0, 0, 0, 1, 5, 6);
  AddPairsOfARightAngle(convert);
  convert.CalFourParameter();
  EXPECT_EQ(convert.GetFourParameter().CenterX, 5.0);
  EXPECT_EQ(convert.GetFourParameter().CenterY, 6.0);
}

TEST(FourParameterEstimate, OfSourcesAtOnePointIsTheIdentityWithoutShift) {
  CMagneticConvert convert;
  convert.SetFourParameter(9, 9, 9, 9, 5, 6);
  convert.AddPoint(3, 4, 10, 20);
  convert.AddPoint(3, 4, 30, 40);
  EXPECT_EQ(convert.CalFourParameter(), 1);
  const Magnetic_FourParameter parameter = convert.GetFourParameter();
  EXPECT_EQ(parameter.Scale, 1.0);
  EXPECT_EQ(parameter.Rotation, 0.0);
  EXPECT_EQ(parameter.OffsetX, 0.0);
  EXPECT_EQ(parameter.OffsetY, 0.0);
  EXPECT_EQ(parameter.CenterX, 5.0);
  EXPECT_EQ(parameter.CenterY, 6.0);
}

TEST(FourParameterEstimate, OfOnePairIsTheIdentityWithoutShift) {
  CMagneticConvert convert;
  convert.SetFourParameter(9, 9, 9, 9, 5, 6);
  convert.AddPoint(3, 4, 10, 20);
  EXPECT_EQ(convert.CalFourParameter(), 1);
  const Magnetic_FourParameter parameter = convert.GetFourParameter();
  EXPECT_EQ(parameter.Scale, 1.0);
  EXPECT_EQ(parameter.Rotation, 0.0);
  EXPECT_EQ(parameter.OffsetX, 0.0);
  EXPECT_EQ(parameter.OffsetY, 0.0);
}

// The mean of three times 0.1 lies off 0.1 by its rounding.
TEST(FourParameterEstimate, OfSourcesAtOnePointThatTheirMeanMissesIsArbitrary) {
  CMagneticConvert convert;
  for (const double i : {0.0, 1.0, 2.0}) convert.AddPoint(0.1, 0.1, 10.0 + i, 20.0 + 2.0 * i);
  EXPECT_EQ(convert.CalFourParameter(), 1);
  EXPECT_NE(convert.GetFourParameter().Scale, 1.0);
  EXPECT_NE(convert.GetFourParameter().OffsetX, 0.0);
}

TEST(FourParameterEstimate, OfTargetsAtOnePointHasScaleZero) {
  CMagneticConvert convert;
  convert.AddPoint(0, 0, 10, 20);
  convert.AddPoint(2, 0, 10, 20);
  EXPECT_EQ(convert.CalFourParameter(), 1);
  EXPECT_EQ(convert.GetFourParameter().Scale, 0.0);
  EXPECT_EQ(convert.GetFourParameter().OffsetX, 10.0);
  EXPECT_EQ(convert.GetFourParameter().OffsetY, 20.0);
}

TEST(FourParameterEstimate, MayBeRepeatedWithMorePairs) {
  CMagneticConvert convert;
  convert.AddPoint(0, 0, 10, 20);
  convert.CalFourParameter();
  AddPairsOfARightAngle(convert);
  EXPECT_EQ(convert.CalFourParameter(), 1);
  EXPECT_NEAR(convert.GetFourParameter().Scale, 2.0, 1e-14);
  EXPECT_NEAR(convert.GetFourParameter().Rotation, kPi / 2.0, 1e-14);
}

TEST(FourParameterEstimate, ClearingForgetsThePairsAndKeepsTheParameters) {
  CMagneticConvert convert;
  AddPairsOfARightAngle(convert);
  convert.CalFourParameter();
  convert.ClearPoints();
  EXPECT_EQ(convert.CalFourParameter(), 0);
  EXPECT_EQ(convert.GetFourParameter().Scale, 2.0);
  convert.AddPoint(0, 0, 0, 0);
  convert.AddPoint(1, 0, 1, 0);
  EXPECT_EQ(convert.CalFourParameter(), 1);
  EXPECT_EQ(convert.GetFourParameter().Scale, 1.0);
}

TEST(FourParameterEstimate, CoordinatesThatAreNotNumbersFlowIntoTheParameters) {
  CMagneticConvert convert;
  convert.AddPoint(std::numeric_limits<double>::quiet_NaN(), 0, 1, 1);
  convert.AddPoint(1, 0, 2, 2);
  EXPECT_EQ(convert.CalFourParameter(), 1);
  EXPECT_TRUE(std::isnan(convert.GetFourParameter().Scale));
}

TEST(FourParameterForward, KeepsTheTermsOfTheCentreInsideTheScaling) {
  CMagneticConvert convert;
  convert.SetFourParameter(100, 200, 0, 3, 5, 7);
  // Without rotation p = (1 - 3) * centre = (-10, -14), which is then scaled by 3 itself.
  const Point there = Forward(convert, {1, 2});
  EXPECT_EQ(there.x, 3.0 * (1.0 - 10.0) + 100.0);
  EXPECT_EQ(there.y, 3.0 * (2.0 - 14.0) + 200.0);
}

TEST(FourParameterForward, WithScaleOneTurnsAboutTheCentre) {
  CMagneticConvert convert;
  convert.SetFourParameter(0, 0, kPi / 2.0, 1, 5, 7);
  const Point centre = Forward(convert, {5, 7});
  EXPECT_NEAR(centre.x, 5.0, 1e-14);
  EXPECT_NEAR(centre.y, 7.0, 1e-14);
  const Point east = Forward(convert, {6, 7});
  EXPECT_NEAR(east.x, 5.0, 1e-14);
  EXPECT_NEAR(east.y, 8.0, 1e-14);
}

TEST(FourParameterInverse, IgnoresTheCentre) {
  CMagneticConvert with_centre;
  with_centre.SetFourParameter(10, 20, 0.5, 2, 5, 7);
  CMagneticConvert without;
  without.SetFourParameter(10, 20, 0.5, 2, 0, 0);
  const Point a = Back(with_centre, {3, 4});
  const Point b = Back(without, {3, 4});
  EXPECT_EQ(a.x, b.x);
  EXPECT_EQ(a.y, b.y);
}

TEST(FourParameterInverse, DoesNotUndoATurnAboutAnotherCentre) {
  CMagneticConvert convert;
  convert.SetFourParameter(0, 0, kPi / 2.0, 1, 5, 7);
  const Point back = Back(convert, Forward(convert, {5, 7}));
  EXPECT_GT(std::hypot(back.x - 5.0, back.y - 7.0), 1.0);
}

TEST(FourParameterInverse, DividesByAScaleOfZero) {
  CMagneticConvert convert;
  convert.SetFourParameter(0, 0, 0, 0, 0, 0);
  const Point back = Back(convert, {1, 0});
  EXPECT_FALSE(std::isfinite(back.x));
  EXPECT_TRUE(std::isnan(back.y));
}

// Coordinates of a site, in metres.
double Coordinate() { return *rc::gen::inRange(-10'000'000, 10'000'001) / 1000.0; }

// Another way to the same map: a similarity of the plane is z -> k e^(i theta) z + offset.
struct Similarity {
  std::complex<double> factor;
  std::complex<double> offset;

  Point operator()(Point p) const {
    const std::complex<double> image = factor * std::complex<double>(p.x, p.y) + offset;
    return {image.real(), image.imag()};
  }
};

Similarity AnySimilarity() {
  const double scale = *rc::gen::inRange(100, 10'000) / 1000.0;
  const double angle = *rc::gen::inRange(-3141, 3142) / 1000.0;
  return {std::polar(scale, angle), {Coordinate(), Coordinate()}};
}

TEST(FourParameterProperty, ASimilarityEstimatedFromExactPairsMapsThem) {
  EXPECT_TRUE(rc::check([] {
    const Similarity truth = AnySimilarity();
    CMagneticConvert convert;
    std::vector<Point> sources{{0, 0}, {100, 0}};
    for (int extra = *rc::gen::inRange(0, 20); extra > 0; --extra) {
      sources.push_back({Coordinate() / 10.0, Coordinate() / 10.0});
    }
    for (const Point& source : sources) {
      convert.AddPoint(source.x, source.y, truth(source).x, truth(source).y);
    }
    RC_ASSERT(convert.CalFourParameter() == 1);
    for (const Point& source : sources) {
      const Point image = Forward(convert, source);
      RC_ASSERT(std::fabs(image.x - truth(source).x) < 1e-9);
      RC_ASSERT(std::fabs(image.y - truth(source).y) < 1e-9);
    }
  }));
}

TEST(FourParameterProperty, TheInverseUndoesTheForwardMapWithTheCentreAtTheOrigin) {
  EXPECT_TRUE(rc::check([] {
    CMagneticConvert convert;
    convert.SetFourParameter(Coordinate(), Coordinate(), *rc::gen::inRange(-3141, 3142) / 1000.0,
                             *rc::gen::inRange(500, 10'000) / 1000.0, 0, 0);
    const Point p{Coordinate(), Coordinate()};
    const Point back = Back(convert, Forward(convert, p));
    RC_ASSERT(std::fabs(back.x - p.x) < 1e-9);
    RC_ASSERT(std::fabs(back.y - p.y) < 1e-9);
  }));
}

double SumOfSquares(const CMagneticConvert& convert, const std::vector<FourParameterPoint>& pairs) {
  double sum = 0.0;
  for (const FourParameterPoint& pair : pairs) {
    const Point image = Forward(convert, {pair.SourceX, pair.SourceY});
    sum += std::pow(image.x - pair.TargetX, 2) + std::pow(image.y - pair.TargetY, 2);
  }
  return sum;
}

TEST(FourParameterProperty, NoNeighbouringParametersFitNoisyPairsBetter) {
  EXPECT_TRUE(rc::check([] {
    std::vector<FourParameterPoint> pairs;
    CMagneticConvert best;
    for (int count = *rc::gen::inRange(2, 12); count > 0; --count) {
      FourParameterPoint pair;
      pair.SourceX = Coordinate() / 1000.0 + count;
      pair.SourceY = Coordinate() / 1000.0;
      pair.TargetX = Coordinate() / 1000.0;
      pair.TargetY = Coordinate() / 1000.0;
      best.AddPoint(pair.SourceX, pair.SourceY, pair.TargetX, pair.TargetY);
      pairs.push_back(pair);
    }
    RC_ASSERT(best.CalFourParameter() == 1);
    const Magnetic_FourParameter p = best.GetFourParameter();
    const double least = SumOfSquares(best, pairs);
    for (const double step : {-0.01, 0.01}) {
      const double steps[4][4] = {
          {step, 0, 0, 0}, {0, step, 0, 0}, {0, 0, step, 0}, {0, 0, 0, step}};
      for (const auto& d : steps) {
        CMagneticConvert beside;
        beside.SetFourParameter(p.OffsetX + d[0], p.OffsetY + d[1], p.Rotation + d[2],
                                p.Scale + d[3], 0, 0);
        RC_ASSERT(SumOfSquares(beside, pairs) >= least * (1.0 - 1e-12));
      }
    }
  }));
}

// The estimate as its procedure reads, one sum after the other.
Magnetic_FourParameter PlainEstimate(const std::vector<FourParameterPoint>& pairs) {
  const auto n = static_cast<double>(pairs.size());
  double mx = 0, my = 0, mX = 0, mY = 0;
  for (const auto& pair : pairs) mx = mx + pair.SourceX;
  for (const auto& pair : pairs) my = my + pair.SourceY;
  for (const auto& pair : pairs) mX = mX + pair.TargetX;
  for (const auto& pair : pairs) mY = mY + pair.TargetY;
  mx = mx / n;
  my = my / n;
  mX = mX / n;
  mY = mY / n;
  double xY = 0, yX = 0, xX = 0, yY = 0, xx = 0, yy = 0;
  for (const auto& p : pairs) xY = xY + (p.SourceX - mx) * (p.TargetY - mY);
  for (const auto& p : pairs) yX = yX + (p.SourceY - my) * (p.TargetX - mX);
  for (const auto& p : pairs) xX = xX + (p.SourceX - mx) * (p.TargetX - mX);
  for (const auto& p : pairs) yY = yY + (p.SourceY - my) * (p.TargetY - mY);
  for (const auto& p : pairs) xx = xx + (p.SourceX - mx) * (p.SourceX - mx);
  for (const auto& p : pairs) yy = yy + (p.SourceY - my) * (p.SourceY - my);
  const double ns = xY - yX;
  const double nc = xX + yY;
  const double den = xx + yy;
  Magnetic_FourParameter parameter;
  if (den == 0.0) return parameter;
  const double theta = std::atan2(ns, nc);
  const double k = std::sqrt(ns * ns + nc * nc) / den;
  parameter.Rotation = theta;
  parameter.Scale = k;
  parameter.OffsetX = mX - k * std::cos(theta) * mx + k * std::sin(theta) * my;
  parameter.OffsetY = mY - k * std::sin(theta) * mx - k * std::cos(theta) * my;
  return parameter;
}

TEST(FourParameterProperty, TheEstimateHasTheBitsOfThePlainWriting) {
  EXPECT_TRUE(rc::check([] {
    std::vector<FourParameterPoint> pairs;
    CMagneticConvert convert;
    for (int count = *rc::gen::inRange(1, 30); count > 0; --count) {
      FourParameterPoint pair;
      pair.SourceX = Coordinate() / 3.0;
      pair.SourceY = Coordinate() / 3.0;
      pair.TargetX = Coordinate() / 3.0;
      pair.TargetY = Coordinate() / 3.0;
      convert.AddPoint(pair.SourceX, pair.SourceY, pair.TargetX, pair.TargetY);
      pairs.push_back(pair);
    }
    convert.CalFourParameter();
    const Magnetic_FourParameter found = convert.GetFourParameter();
    const Magnetic_FourParameter plain = PlainEstimate(pairs);
    RC_ASSERT(found.Scale == plain.Scale);
    RC_ASSERT(found.Rotation == plain.Rotation);
    RC_ASSERT(found.OffsetX == plain.OffsetX);
    RC_ASSERT(found.OffsetY == plain.OffsetY);
  }));
}

TEST(FourParameterProperty, BothMapsHaveTheBitsOfThePlainWriting) {
  EXPECT_TRUE(rc::check([] {
    const double dx = Coordinate(), dy = Coordinate(), cx = Coordinate(), cy = Coordinate();
    const double theta = *rc::gen::inRange(-3141, 3142) / 1000.0;
    const double k = *rc::gen::inRange(-3000, 3000) / 1024.0;
    CMagneticConvert convert;
    convert.SetFourParameter(dx, dy, theta, k, cx, cy);
    const Point p{Coordinate() / 3.0, Coordinate() / 3.0};
    const double c = std::cos(theta);
    const double s = std::sin(theta);
    const Point there = Forward(convert, p);
    RC_ASSERT(there.x == k * (c * p.x - s * p.y + ((1 - c) * cx + s * cy + (1 - k) * cx)) + dx);
    RC_ASSERT(there.y == k * (s * p.x + c * p.y + ((1 - c) * cy - s * cx + (1 - k) * cy)) + dy);
    RC_PRE(k != 0.0);
    const Point back = Back(convert, p);
    RC_ASSERT(back.x == -(dx * c + dy * s) / k + (p.x * c + p.y * s) / k);
    RC_ASSERT(back.y == (dx * s - dy * c) / k + (-p.x * s + p.y * c) / k);
  }));
}

}  // namespace
