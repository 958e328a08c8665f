#pragma once

// The azimuth along which the pole's tip lies, seen from the antenna: one rule for the geometric
// solution and for the angle that hosts ask for.

#include "tiltpole/positioning/detail/tilt.h"

namespace tiltpole::detail {

// What one angle gives to the sides of the rule's triangle.
struct TriangleSide {
  double cot;
  double csc;
};

struct TriangleSides {
  TriangleSide alpha;
  TriangleSide beta;
  TriangleSide phi;  // the pole's angle to the horizontal
};

// The sides that FindTipAzimuth asks for with these tilts; the others are 0.
TriangleSides NeededSides(const Tilt& tilt);

// All sides: what these tilts and their reverse ask for together.
TriangleSides AllSides(const Tilt& tilt);

// The sides of the reversed tilts. Tangents are odd to the last bit, so none is computed anew.
TriangleSides Reversed(const TriangleSides& sides);

struct TipAzimuth {
  double azimuth = 0.0;      // wrapped once [degrees]
  double offset = 0.0;       // from the heading to the azimuth [degrees]
  bool was_clamped = false;  // the cosine of the triangle's angle lay outside [-1, 1]

  // The azimuth as the rule gives it without clamping: the same, or not a number.
  double Unclamped() const;
};

// The azimuth of the tip for a heading [degrees], with the cosine clamped.
TipAzimuth FindTipAzimuth(const Tilt& tilt, const TriangleSides& sides, double heading);

}  // namespace tiltpole::detail
