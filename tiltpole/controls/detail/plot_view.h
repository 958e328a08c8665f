#pragma once

/// @file
/// From readings to pixels and back, apart from the drawing.

#include <optional>
#include <vector>

#include "tiltpole/controls/detail/plot_kind.h"
#include "tiltpole/platform/drawing.h"

namespace tiltpole::detail {

/// A scale below this would divide by nothing: every reading then stands at the point (0, 0).
constexpr double kSmallestScale = 1e-6;

/// The pixel at which a world point is shown in a client area.
Point ClientPoint(const PlotView& view, const Rect& client, int world_x, int world_v);

/// The world point that a pixel shows, truncated towards zero; x and v stand for it in the result.
Point WorldPoint(const PlotView& view, const Rect& client, Point pixel);

/// The view that shows all points in the middle of a client area, with a margin of one half.
///
/// All points alike give a scale of 0; an empty client area gives one that is no number or
/// infinite.
/// @return none with fewer than two points
std::optional<PlotView> FittedView(const std::vector<MagneticPoint>& points,
                                   std::int32_t MagneticPoint::*vertical, const Rect& client);

}  // namespace tiltpole::detail
