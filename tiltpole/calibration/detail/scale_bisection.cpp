#include "tiltpole/calibration/detail/scale_bisection.h"

#include <cmath>

namespace tiltpole::detail {

Bracket BracketAround(double C) {
  if (std::fabs(C - 0.5) < kTolerance) return {1.0, 1.0};
  if (C < 0.5) return {0.0, 1.0};
  if (C > 0.5) return {1.0, 2.0};
  return {1.0, 1.0};
}

void ScaledEllipseFits::SetPoints(const ScaledPlane& points, const AxisSums& axis) {
  points_ = points;
  axis_ = axis;
  fitCount_ = 0;
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
  latest_ = fit;
  return fit.conic;
}

void ScaledEllipseFits::Evaluate(double t, Bracket ahead) {
  ExpectRoot(latest_);
  fitCount_ = summation_->lanes;
  double scales[kMostLanes] = {t};
  if (ahead.Middle() == t) ahead = LikelyHalf(ahead);
  for (std::size_t lane = 1; lane < fitCount_; ++lane) {
    scales[lane] = ahead.Middle();
    ahead = LikelyHalf(ahead);
  }
  for (std::size_t lane = 0; lane < fitCount_; ++lane) fits_[lane] = {scales[lane], false, {}};
  summation_->Sum(points_, scales, sums_);

  double p[5 * kMostLanes];
  if (!summation_->Solve(axis_, sums_, p)) return;  // then each is solved when it is asked for
  for (std::size_t lane = 0; lane < fitCount_; ++lane) {
    const auto coefficient = [&](std::size_t i) { return p[i * fitCount_ + lane]; };
    fits_[lane].conic = {coefficient(0), coefficient(1), coefficient(2), coefficient(3),
                         coefficient(4)};
    fits_[lane].solved = true;
  }
}

Bracket ScaledEllipseFits::LikelyHalf(Bracket bracket) const {
  const double middle = bracket.Middle();
  return expectedRoot_ < middle ? Bracket{bracket.lower, middle} : Bracket{middle, bracket.upper};
}

// An ellipse A u^2 + C w^2 = 1 becomes a circle when w is scaled by sqrt(C / A).
void ScaledEllipseFits::ExpectRoot(const Fit& fit) {
  const double root = fit.t * std::sqrt(fit.conic.C() / fit.conic.A);
  if (std::isfinite(root)) expectedRoot_ = root;
}

FoundScale BisectScale(ScaledEllipseFits& fits, Bracket bracket, int cap) {
  double scale = bracket.Middle();
  for (int step = 0; step < cap; ++step) {
    scale = bracket.Middle();
    const Conic& conic = fits.At(scale, bracket);
    if (!conic.IsEllipse()) return {scale, false};
    const double C = conic.C();
    if (C < 0.5) bracket.upper = scale;
    if (C > 0.5) bracket.lower = scale;
    if (std::fabs(C - 0.5) < kTolerance) return {scale, false};
    // The next step would fit the same scale, with the same result, and move the bracket to where
    // it is: so would all steps that are left, until they are used up.
    if (bracket.Middle() == scale) break;
  }
  return {scale, true};
}

}  // namespace tiltpole::detail
