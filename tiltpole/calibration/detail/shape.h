#pragma once

// What the search for a scale asks of an ellipse fit.

#include "tiltpole/calibration/detail/ellipse_fit.h"

namespace tiltpole::detail {

/// The closeness at which the searches stop: of the coefficient C of a fit to 0.5, that of a
/// circle, and of the moves of a cross term, counts per count, to none.
inline constexpr double kTolerance = 1e-10;

struct Shape {
  bool isEllipse = false;
  /// -1 if the coefficient C is less than that of a circle, 1 if it is more; 0 if it is neither.
  int side = 0;
  /// Whether it is that of a circle to within kTolerance.
  bool isCircle = false;
};

Shape ShapeOf(const Conic& conic);

/// About the scale that makes a circle of a conic with the coefficients @p A and @p C at the scale
/// @p t: an ellipse A u^2 + C w^2 = 1 becomes one when w is scaled by sqrt(C / A). Not a number
/// where A and C have different signs.
double ScaleOfCircle(double t, double A, double C);

}  // namespace tiltpole::detail
