#pragma once

// The shapes of ellipse fits that need not be carried out to be known.

#include <cstddef>
#include <limits>
#include <vector>

#include "tiltpole/calibration/detail/conic_sums.h"
#include "tiltpole/calibration/detail/shape.h"

namespace tiltpole::detail {

/// The norms of a column, and the sum of its fourth powers as computed: a coefficient of t^4.
struct AxisSize {
  AxisNorms norms;
  double fourthPowers = 0.0;
};

AxisSize SizeOf(const std::vector<double>& column);

/// Bounds of a column times a number, and of the sum of two columns, rounded element by element.
AxisNorms operator*(double factor, const AxisNorms& norms);
AxisNorms operator+(const AxisNorms& a, const AxisNorms& b);

/// How large the numbers of a ScaledPlane are. Only of v do fourth powers stand alone in a sum.
struct PlaneSize {
  AxisNorms u;
  AxisNorms base;
  AxisSize v;
};

/// The ellipse fits of the points (u, base + t v), as far as they are certain without a pass over
/// the samples.
///
/// The sums of a fit are, but for rounding, polynomials in t. So four passes tell them for every t,
/// and the solution by numbers with bounds tells how C can come out beside 0.5, whatever the
/// rounding of the fit itself. Most steps of a bisection are far enough from the circle to be
/// decided so; the last ones are fitted. Only the side of C comes from here: every number that a
/// calibration returns is that of a fit carried out.
class ShapeBounds {
 public:
  explicit ShapeBounds(const ConicSummation& summation) : summation_(summation) {}

  /// The points from now on; the arrays stay the caller's.
  void SetPoints(const ScaledPlane& points, const AxisSums& axis, const PlaneSize& size);

  /// Whether it is worth while to ask. Not of few samples, nor of readings beyond all measure, and
  /// not after GiveUp until there are other points.
  bool AreUseful() const { return useful_; }
  void GiveUp() { useful_ = false; }

  struct Fit {
    double t = 0.0;
    bool isCertain = false;
    Shape shape;
    /// About the scale of a circle; not a number if nothing is known of it.
    double root = std::numeric_limits<double>::quiet_NaN();
  };

  /// The fit for @p t if it is among those evaluated last, else null.
  const Fit* Find(double t) const;

  /// Evaluates the fits for as many scales, from 0 to 2, as the summation has lanes; only for the
  /// first if they do not go together.
  /// @param[in] root  about the scale of a circle, where it pays to know most
  void Evaluate(const double* scales, double root);

 private:
  void SumNodes(double root);
  bool Bound(const double* scales);

  ConicSummation summation_;
  ScaledPlane points_{nullptr, nullptr, nullptr, 0};
  SumsByScale byScale_;
  bool useful_ = false;
  bool summed_ = false;
  std::size_t fitCount_ = 0;
  Fit fits_[kMostLanes];
};

}  // namespace tiltpole::detail
