#pragma once

// The conic that the calibration lays through a turn, and what it tells about its samples.

#include "tiltpole/quality/detail/turn.h"

namespace tiltpole::detail {

// The conic A u^2 + B u w + (1 - A) w^2 + D u + E w + F = 0 in coordinates about `centre`, in units
// of `unit` counts.
struct Conic {
  bool Told = false;     // false when the points do not determine one
  bool Ellipse = false;  // what the calibration requires: B^2 < 4 A C
  double A = 0.0;
  double B = 0.0;
  double D = 0.0;
  double E = 0.0;
  double F = 0.0;
  double CentreFirst = 0.0;
  double CentreSecond = 0.0;
  double Unit = 1.0;

  double ResidualAt(const TurnPoint& point) const;  // in units of Unit squared
  double DistanceOf(const TurnPoint& point) const;  // from the curve, to first order [counts]
};

Conic FitConic(const TurnPoints& points);

// Root mean square distance of the points from the curve, as a share of the curve's size.
double ScatterShare(const TurnPoints& points, const Conic& conic);

// How much the second axis must be stretched to make the ellipse a circle: the fitted scale.
double ScaleNeeded(const Conic& conic);

// How many samples the calibration's limit on the conic's residual leaves: all of them where fewer
// than 21 would pass.
int SamplesUsed(TurnPoints points);

}  // namespace tiltpole::detail
