#include "tiltpole/positioning/detail/tip_azimuth.h"

#include <cmath>
#include <limits>

namespace tiltpole::detail {
namespace {

enum class Lean {
  LevelX,    // the x axis is level
  LevelY,    // the y axis is level, the x axis is not
  BothUp,    // both axes rise
  DownUp,    // the x axis falls, the y axis rises
  BothDown,  // both axes fall
  UpDown     // the x axis rises, the y axis falls, or a tilt is not a number
};

Lean LeanOf(const Tilt& tilt) {
  if (std::fabs(tilt.alpha) < kEpsilon) return Lean::LevelX;
  if (std::fabs(tilt.beta) < kEpsilon) return Lean::LevelY;
  if (tilt.alpha > 0.0 && tilt.beta > 0.0) return Lean::BothUp;
  if (tilt.alpha < 0.0 && tilt.beta > 0.0) return Lean::DownUp;
  if (tilt.alpha < 0.0 && tilt.beta < 0.0) return Lean::BothDown;
  return Lean::UpDown;
}

TriangleSide SideAlpha(const Tilt& tilt) {
  return {1.0 / std::tan(tilt.alpha), 1.0 / tilt.sin_alpha};
}

TriangleSide SideBeta(const Tilt& tilt) { return {1.0 / std::tan(tilt.beta), 1.0 / tilt.sin_beta}; }

TriangleSide SidePhi(const Tilt& tilt) {
  const double phi = PoleToHorizontal(tilt);
  return {1.0 / std::tan(phi), 1.0 / std::sin(phi)};
}

TriangleSide Reversed(const TriangleSide& side) { return {-side.cot, -side.csc}; }

TriangleSide Absolute(const TriangleSide& side) {
  return {std::fabs(side.cot), std::fabs(side.csc)};
}

// A triangle with two sides given and the third closing a right angle with each of two further
// ones: all that the four rows have in common.
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

TipAzimuth Turned(double heading, double offset, bool was_clamped) {
  return {WrapOnce(heading + offset), offset, was_clamped};
}

}  // namespace

TriangleSides NeededSides(const Tilt& tilt) {
  switch (LeanOf(tilt)) {
    case Lean::LevelX:
    case Lean::LevelY:
      return {};
    case Lean::BothUp:
      return {SideAlpha(tilt), SideBeta(tilt), {}};
    case Lean::DownUp:
    case Lean::BothDown:
      return {SideAlpha(tilt), {}, SidePhi(tilt)};
    case Lean::UpDown:
      break;
  }
  return {{}, SideBeta(tilt), SidePhi(tilt)};
}

TriangleSides AllSides(const Tilt& tilt) {
  return {SideAlpha(tilt), SideBeta(tilt), SidePhi(tilt)};
}

TriangleSides Reversed(const TriangleSides& sides) {
  return {Reversed(sides.alpha), Reversed(sides.beta), sides.phi};
}

double TipAzimuth::Unclamped() const {
  return was_clamped ? std::numeric_limits<double>::quiet_NaN() : azimuth;
}

// Deliberate: the rows are not symmetric. The first builds its triangle from both tilts, the others
// from one tilt and the pole's angle to the horizontal, the last from the tilt that the second and
// the third leave out. With exact numbers all rows agree with the geometry; which one is taken
// decides the last bits, and those hosts compare.
TipAzimuth FindTipAzimuth(const Tilt& tilt, const TriangleSides& sides, double heading) {
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
