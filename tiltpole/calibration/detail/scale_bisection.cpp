#include "tiltpole/calibration/detail/scale_bisection.h"

#include <cmath>

namespace tiltpole::detail {

Bracket BracketAround(const Shape& unscaled) {
  if (unscaled.isCircle || unscaled.side == 0) return {1.0, 1.0};
  return unscaled.side < 0 ? Bracket{0.0, 1.0} : Bracket{1.0, 2.0};
}

void ScaledEllipseFits::SetPoints(const ScaledPlane& points, const AxisSums& axis) {
  points_ = points;
  axis_ = axis;
  fitCount_ = 0;
  bounds_.GiveUp();  // of no known size
}

void ScaledEllipseFits::SetPoints(const ScaledPlane& points, const AxisSums& axis,
                                  const PlaneSize& size) {
  SetPoints(points, axis);
  bounds_.SetPoints(points, axis, size);
}

Shape ScaledEllipseFits::ShapeAt(double t, Bracket ahead) {
  if (bounds_.AreUseful()) {
    if (bounds_.Find(t) == nullptr) {
      double scales[kMostLanes];
      LikelyScales(t, ahead, scales);
      bounds_.Evaluate(scales, expectedRoot_);
    }
    const ShapeBounds::Fit& fit = *bounds_.Find(t);
    ExpectRoot(fit.root);
    if (fit.isCertain) return fit.shape;
    // A search closes in on the circle, so what follows is still harder to tell.
    bounds_.GiveUp();
  }
  return ShapeOf(At(t, ahead));
}

const Conic& ScaledEllipseFits::At(double t, Bracket ahead) {
  std::size_t lane = 0;
  while (lane < fitCount_ && fits_[lane].t != t) ++lane;
  if (lane == fitCount_) {
    Evaluate(t, ahead);
    lane = 0;
  }
  Fit& fit = fits_[lane];
  if (!fit.solved) {
    fit.conic = SolveConic(axis_, sums_ + lane, fitCount_);
    fit.solved = true;
  }
  ExpectRoot(ScaleOfCircle(t, fit.conic.A, fit.conic.C()));
  return fit.conic;
}

void ScaledEllipseFits::Evaluate(double t, Bracket ahead) {
  fitCount_ = summation_.lanes;
  double scales[kMostLanes];
  LikelyScales(t, ahead, scales);
  for (std::size_t lane = 0; lane < fitCount_; ++lane) fits_[lane] = {scales[lane], false, {}};
  summation_.Sum(points_, scales, sums_);

  double p[5 * kMostLanes];
  if (!summation_.Solve(axis_, sums_, p)) return;  // then each is solved when it is asked for
  for (std::size_t lane = 0; lane < fitCount_; ++lane) {
    const auto coefficient = [&](std::size_t i) { return p[i * fitCount_ + lane]; };
    fits_[lane].conic = {coefficient(0), coefficient(1), coefficient(2), coefficient(3),
                         coefficient(4)};
    fits_[lane].solved = true;
  }
}

void ScaledEllipseFits::LikelyScales(double t, Bracket ahead, double* scales) const {
  scales[0] = t;
  if (ahead.Middle() == t) ahead = LikelyHalf(ahead);
  for (std::size_t lane = 1; lane < summation_.lanes; ++lane) {
    scales[lane] = ahead.Middle();
    ahead = LikelyHalf(ahead);
  }
}

Bracket ScaledEllipseFits::LikelyHalf(Bracket bracket) const {
  const double middle = bracket.Middle();
  return expectedRoot_ < middle ? Bracket{bracket.lower, middle} : Bracket{middle, bracket.upper};
}

void ScaledEllipseFits::ExpectRoot(double root) {
  if (std::isfinite(root)) expectedRoot_ = root;
}

FoundScale BisectScale(ScaledEllipseFits& fits, Bracket bracket, int cap) {
  double scale = bracket.Middle();
  for (int step = 0; step < cap; ++step) {
    scale = bracket.Middle();
    const Shape shape = fits.ShapeAt(scale, bracket);
    if (!shape.isEllipse) return {scale, false};
    if (shape.side < 0) bracket.upper = scale;
    if (shape.side > 0) bracket.lower = scale;
    if (shape.isCircle) return {scale, false};
    // The next step would fit the same scale, with the same result, and move the bracket to where
    // it is: so would all steps that are left, until they are used up.
    if (bracket.Middle() == scale) break;
  }
  return {scale, true};
}

}  // namespace tiltpole::detail
