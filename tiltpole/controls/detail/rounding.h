#pragma once

/// @file
/// From a computed place to a pixel.

#include "tiltpole/platform/drawing.h"
#include "tiltpole/platform/saturate.h"

namespace tiltpole::detail {

constexpr double kPi = 3.141592653589793;

/// Adds one half and truncates towards zero, so that below -0.5 the result is the next pixel
/// towards zero. Deliberate: it is the rounding of all the controls. Not-a-number gives 0, and what
/// is beyond the range of an int its nearest end.
constexpr int RoundToPixel(double coordinate) { return TruncateSaturated(coordinate + 0.5); }

/// A box moved outwards by so many pixels at its left, top, right and bottom edges.
constexpr Rect GrownRect(const Rect& box, int left, int top, int right, int bottom) {
  return {SaturatedDifference(box.left, left), SaturatedDifference(box.top, top),
          SaturatedSum(box.right, right), SaturatedSum(box.bottom, bottom)};
}

/// The box around a point, with edges so many pixels to the left and above, and to the right and
/// below.
constexpr Rect BoxAround(Point center, int before, int after) {
  return GrownRect({center.x, center.y, center.x, center.y}, before, before, after, after);
}
constexpr Rect BoxAround(Point center, int radius) { return BoxAround(center, radius, radius); }

/// The point moved to the right and downwards.
constexpr Point Moved(Point point, int right, int down) {
  return {SaturatedSum(point.x, right), SaturatedSum(point.y, down)};
}

}  // namespace tiltpole::detail
