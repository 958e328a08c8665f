#pragma once

/// @file
/// Where things stand on the inclination gauges, apart from the drawing of them.

#include "tiltpole/platform/drawing.h"

namespace tiltpole::detail {

/// What differs between the two gauges: the half-turn shown, and which way it runs.
struct GaugeRange {
  int smallest;  ///< [degrees], at one end of the scale
  int largest;   ///< [degrees], at the other end
  bool rises;    ///< whether values grow upwards, from the scale's bottom edge
};

constexpr GaugeRange kLeftGauge = {0, 180, true};
constexpr GaugeRange kRightGauge = {180, 360, false};

/// The frames of a gauge, empty before the first face is drawn.
struct GaugeGeometry {
  Rect outer;
  Rect middle;
  Rect scale;  ///< the values run over its height

  static GaugeGeometry In(const Rect& client);

  /// The row of tick 1 to 17, from below.
  int TickRow(int index) const;

  /// The box of the label at the tick in a row.
  Rect LabelBox(int row) const;

  /// The row at which a value is shown [degrees], any double.
  int ValueRow(const GaugeRange& range, double value) const;

  /// The row at which a mark is shown [whole degrees], any int.
  int MarkRow(const GaugeRange& range, int value) const;
};

/// What the label at every third tick says: the angle to the nearer end of the scale.
constexpr int GaugeLabel(int index) { return index <= 9 ? 10 * index : 180 - 10 * index; }

}  // namespace tiltpole::detail
