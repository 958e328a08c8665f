#pragma once

// The azimuth along which the pole's tip lies, seen from the antenna: one rule for the geometric
// solution and for the angle that hosts ask for. Inline, since a sample asks it twice and its calls
// are what a sample costs.

#include <cmath>
#include <limits>

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

struct TipAzimuth {
  double azimuth = 0.0;      // wrapped once [degrees]
  double offset = 0.0;       // from the heading to the azimuth [degrees]
  bool was_clamped = false;  // the cosine of the triangle's angle lay outside [-1, 1]

  // The azimuth as the rule gives it without clamping: the same, or not a number.
  double Unclamped() const {
    return was_clamped ? std::numeric_limits<double>::quiet_NaN() : azimuth;
  }
};

enum class Lean {
  LevelX,    // the x axis is level
  LevelY,    // the y axis is level, the x axis is not
  BothUp,    // both axes rise
  DownUp,    // the x axis falls, the y axis rises
  BothDown,  // both axes fall
  UpDown     // the x axis rises and the y axis falls; also where a tilt is not a number, none level
};

inline Lean LeanOf(const Tilt& tilt) {
  if (std::fabs(tilt.alpha) < kEpsilon) return Lean::LevelX;
  if (std::fabs(tilt.beta) < kEpsilon) return Lean::LevelY;
  if (tilt.alpha > 0.0 && tilt.beta > 0.0) return Lean::BothUp;
  if (tilt.alpha < 0.0 && tilt.beta > 0.0) return Lean::DownUp;
  if (tilt.alpha < 0.0 && tilt.beta < 0.0) return Lean::BothDown;
  return Lean::UpDown;
}

inline TriangleSide SideAlpha(const Tilt& tilt) {
  return {1.0 / std::tan(tilt.alpha), 1.0 / tilt.sin_alpha};
}

inline TriangleSide SideBeta(const Tilt& tilt) {
  return {1.0 / std::tan(tilt.beta), 1.0 / tilt.sin_beta};
}

inline TriangleSide SidePhi(double phi) { return {1.0 / std::tan(phi), 1.0 / std::sin(phi)}; }

inline TriangleSide Reversed(const TriangleSide& side) { return {-side.cot, -side.csc}; }

inline TriangleSide Absolute(const TriangleSide& side) {
  return {std::fabs(side.cot), std::fabs(side.csc)};
}

// The triangle that the four rows have in common: the sides p and r, and opposite to their angle
// the hypotenuse t of the two cosecants.
struct Triangle {
  Triangle(const TriangleSide& first, const TriangleSide& second)
      : p(first.cot), r(second.cot), t(std::sqrt(first.csc * first.csc + second.csc * second.csc)) {
    double cosine = (p * p + r * r - t * t) / (2.0 * p * r);
    was_clamped = cosine > 1.0 || cosine < -1.0;
    if (was_clamped) cosine = cosine > 1.0 ? 1.0 : -1.0;
    angle = std::acos(cosine);
  }

  // The angle opposite to a side, p or r.
  double AngleAt(double side) const { return std::acos(side * std::sin(angle) / t); }

  double p;
  double r;
  double t;
  double angle;
  bool was_clamped;
};

inline TipAzimuth Turned(double heading, double offset, bool was_clamped) {
  return {WrapOnce(heading + offset), offset, was_clamped};
}

// The sides that FindTipAzimuth asks for with these tilts and the pole's angle to the horizontal;
// the others are 0.
inline TriangleSides NeededSides(const Tilt& tilt, double phi) {
  switch (LeanOf(tilt)) {
    case Lean::LevelX:
    case Lean::LevelY:
      return {};
    case Lean::BothUp:
      return {SideAlpha(tilt), SideBeta(tilt), {}};
    case Lean::DownUp:
    case Lean::BothDown:
      return {SideAlpha(tilt), {}, SidePhi(phi)};
    case Lean::UpDown:
      break;
  }
  return {{}, SideBeta(tilt), SidePhi(phi)};
}

// All sides: what these tilts and their reverse ask for together.
inline TriangleSides AllSides(const Tilt& tilt, double phi) {
  return {SideAlpha(tilt), SideBeta(tilt), SidePhi(phi)};
}

// The sides of the reversed tilts. Tangents are odd to the last bit, so none is computed anew.
inline TriangleSides Reversed(const TriangleSides& sides) {
  return {Reversed(sides.alpha), Reversed(sides.beta), sides.phi};
}

// The azimuth of the tip for a heading [degrees], with the cosine clamped.
//
// Deliberate: the rows are not symmetric. The first builds its triangle from both tilts, the others
// from one tilt and the pole's angle to the horizontal, the last from the tilt that the second and
// the third leave out. With exact numbers all rows agree with the geometry; which one is taken
// decides the last bits, and those hosts compare.
inline TipAzimuth FindTipAzimuth(const Tilt& tilt, const TriangleSides& sides, double heading) {
  switch (LeanOf(tilt)) {
    case Lean::LevelX:
      return Turned(heading, tilt.beta > 0.0 ? -90.0 : 90.0, false);
    case Lean::LevelY:
      if (tilt.alpha > 0.0) return {WrapOnce(heading), 0.0, false};
      return Turned(heading, 180.0, false);
    case Lean::BothUp: {
      const Triangle triangle(sides.alpha, sides.beta);
      const double offset = ToDegrees(triangle.AngleAt(triangle.r));
      return Turned(heading, -offset, triangle.was_clamped);
    }
    case Lean::DownUp: {
      const Triangle triangle(Absolute(sides.alpha), sides.phi);
      return Turned(heading, -ToDegrees(triangle.angle), triangle.was_clamped);
    }
    case Lean::BothDown: {
      const Triangle triangle(Absolute(sides.alpha), sides.phi);
      return Turned(heading, ToDegrees(triangle.angle), triangle.was_clamped);
    }
    case Lean::UpDown:
      break;
  }
  const Triangle triangle(Absolute(sides.beta), sides.phi);
  return Turned(heading, ToDegrees(triangle.AngleAt(triangle.p)), triangle.was_clamped);
}

}  // namespace tiltpole::detail
