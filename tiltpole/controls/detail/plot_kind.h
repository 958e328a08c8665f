#pragma once

/// @file
/// Everything that differs between the two scatter plots.

#include <cstdint>

#include "tiltpole/controls/MagneticPoint.h"
#include "tiltpole/platform/drawing.h"

namespace tiltpole::detail {

/// Which part of the world a plot shows, as it is kept in the view file.
struct PlotView {
  std::int32_t left_x = 0;    ///< the world's x at the left edge [counts]
  std::int32_t bottom_v = 0;  ///< the world's vertical component at the bottom edge [counts]
  double scale = 0.0;         ///< [counts per pixel]
};

struct PlotKind {
  std::int32_t MagneticPoint::*vertical;  ///< the component plotted upwards, v
  PlotView first_view;
  Color track_color;
  int missed_limit;  ///< more track points than these outside of the view fit it anew
  const wchar_t* vertical_label;
  const wchar_t* view_file;    ///< the view file's name
  const wchar_t* view_prefix;  ///< what the line in it starts with
  const wchar_t* window_class;
};

// Deliberate: the XZ plot starts with the origin at its left edge, not in the middle as the XY plot
// does, and loses patience sooner.
inline constexpr PlotKind kPlotXY = {
    &MagneticPoint::y,       {-500, -500, 2.5},    Rgb(255, 255, 255), 10, L"Y",
    L"GraphMagnetic_XY.cfg", L"GRAPHMAGNETIC_XY:", L"GraphMagnetic_XY"};
inline constexpr PlotKind kPlotXZ = {
    &MagneticPoint::z,       {0, -500, 3.0},       Rgb(0, 255, 0),     5, L"Z",
    L"GraphMagnetic_XZ.cfg", L"GRAPHMAGNETIC_XZ:", L"GraphMagnetic_XZ"};

}  // namespace tiltpole::detail
