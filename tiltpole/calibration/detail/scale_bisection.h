#pragma once

// The search for the scale of one axis that makes the ellipse of a turn a circle.

#include "tiltpole/calibration/detail/shape.h"
#include "tiltpole/calibration/detail/shape_bounds.h"

namespace tiltpole::detail {

/// Where a scale is searched for.
struct Bracket {
  double lower;
  double upper;

  double Middle() const { return (lower + upper) / 2; }
};

/// All scales that are searched for; the bracket of a fit that no bisection is known to follow.
inline constexpr Bracket kAnyScale{0.0, 2.0};

/// The bracket that the fit of the unscaled readings points to. One on neither side of a circle,
/// also for a coefficient that is not a number, points nowhere, and the scale stays 1.
Bracket BracketAround(const Shape& unscaled);

/// The ellipse fits of the points (u, base + t v) for one t after another.
///
/// A bisection asks for one t at a time, and each answer decides the next t. Here the t that are
/// likely to follow are evaluated in the same pass over the samples, in the lanes of a vector, and
/// handed out when the bisection comes to ask for just these. A wrong guess costs time and nothing
/// else: no fit is ever used for another t than its own. Where bounds decide an answer, there is no
/// pass at all.
class ScaledEllipseFits {
 public:
  explicit ScaledEllipseFits(const ConicSummation& summation = FastestConicSummation())
      : summation_(summation), bounds_(summation) {}

  /// The points to fit from now on; the arrays stay the caller's. Fits of the points before are
  /// dropped.
  void SetPoints(const ScaledPlane& points, const AxisSums& axis);
  /// With the size of the points, fits that it makes certain are judged without a pass.
  void SetPoints(const ScaledPlane& points, const AxisSums& axis, const PlaneSize& size);

  /// The fit for @p t. @p ahead is the bracket of the bisection that asks or will ask next.
  const Conic& At(double t, Bracket ahead);

  /// Its shape alone, if possible without the fit.
  Shape ShapeAt(double t, Bracket ahead);

 private:
  struct Fit {
    double t;
    bool solved;
    Conic conic;
  };

  void Evaluate(double t, Bracket ahead);
  void LikelyScales(double t, Bracket ahead, double* scales) const;
  Bracket LikelyHalf(Bracket bracket) const;
  void ExpectRoot(double root);

  ConicSummation summation_;
  ScaledPlane points_{nullptr, nullptr, nullptr, 0};
  AxisSums axis_;
  std::size_t fitCount_ = 0;
  Fit fits_[kMostLanes] = {};
  double sums_[kConicSums * kMostLanes] = {};
  ShapeBounds bounds_;
  double expectedRoot_ = 1.0;
};

struct FoundScale {
  double scale;
  /// The steps were used up before the fit was a circle.
  bool ranOut;
};

/// Halves the bracket until the fit is a circle, at most @p cap times. A fit that is no ellipse
/// ends the search where it stands, without a word.
FoundScale BisectScale(ScaledEllipseFits& fits, Bracket bracket, int cap);

}  // namespace tiltpole::detail
