#pragma once

// The circle of one turn of one magnetometer: its figures, its shape, the directions it covers.

#include <vector>

#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/detail/vector3.h"

namespace tiltpole::detail {

// The plane that a turn's readings lie in, and the axis that they keep.
enum class TurnPlane { XY, XZ };

// One reading of a turn, in its plane and out of it.
struct TurnPoint {
  double First = 0.0;
  double Second = 0.0;
  double OutOfPlane = 0.0;
};

using TurnPoints = std::vector<TurnPoint>;

TurnPoints PointsInPlane(const std::vector<Vector3>& readings, TurnPlane plane);

struct Circle {
  bool Told = false;  // false when the points do not determine one; the centre is then their mean
  double First = 0.0;
  double Second = 0.0;
};

Circle FitCircle(const TurnPoints& points);

TurnFigures FiguresAbout(const TurnPoints& points, const Circle& circle);

// How the points spread about their mean: standard deviations along the longer and the shorter
// principal axis in the plane.
struct TurnSpread {
  double Longer = 0.0;
  double Shorter = 0.0;
};

TurnSpread SpreadOf(const TurnPoints& points);

// Directions [degrees] of the points about a centre, anticlockwise from the first axis: with y left
// of x, headings.
std::vector<double> DirectionsAbout(const TurnPoints& points, const Circle& circle);

TurnCoverage CoverageOf(std::vector<double> directions);

}  // namespace tiltpole::detail
