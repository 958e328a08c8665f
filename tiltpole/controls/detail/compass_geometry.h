#pragma once

/// @file
/// Where things stand on the compass, apart from the drawing of them.

#include "tiltpole/platform/drawing.h"

namespace tiltpole::detail {

/// The corners of the needle, a kite.
struct CompassNeedle {
  Point side_a;
  Point tip;
  Point side_b;
  Point tail;
};

/// The measures of a dial, all 0 before the first face is drawn.
struct CompassGeometry {
  Point center;
  int size = 0;         ///< the diameter; negative in a window of less than 5 pixels
  int needle_unit = 0;  ///< the needle is 4.5 of these wide
  int outer = 0;        ///< radius of the outer ring
  int middle = 0;       ///< radius where the marks begin
  int inner = 0;        ///< radius where the ticks begin and the marks end

  static CompassGeometry In(const Rect& client);

  /// Twelve of the 36 ticks are as long as this, the others half as long.
  double TickLength() const;

  /// The square around a circle about the centre.
  Rect Circle(int radius) const;

  /// The point at a radius, in a direction given by the angle a: the bearing less half a turn.
  Point At(double radius, double a) const;

  /// The tick of the bearing 10 * index degrees: its ends on the ring and inside of it.
  Point TickStart(int index) const;
  Point TickEnd(int index) const;

  /// The box of the label at that tick.
  Rect LabelBox(int index) const;

  /// The ends of the mark at a bearing [degrees], across the band between the inner rings.
  Point MarkStart(int bearing) const;
  Point MarkEnd(int bearing) const;

  CompassNeedle Needle(double heading) const;
};

/// Whether every third tick, which is long and has a label.
constexpr bool IsMajorTick(int index) { return index % 3 == 0; }

}  // namespace tiltpole::detail
