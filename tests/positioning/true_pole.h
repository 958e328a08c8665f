#pragma once

// A rigid pole in space, from which ideal tilts, readings and the true tip follow by turning
// vectors alone. Nothing here uses a formula of the library, so that its results can be held
// against it.
//
// The world's axes point north, west and up; the pole's x axis forward, y left and z up the pole to
// the antenna. An attitude is the turn that carries the world's axes into the pole's.

#include <array>
#include <cmath>

#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole_test {

constexpr double kDegree = 3.14159265358979323846 / 180.0;

using Vector = std::array<double, 3>;
using Rotation = std::array<Vector, 3>;  // the turned axes

inline double Dot(const Vector& a, const Vector& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// A vector turned about a unit axis, counter-clockwise seen from the axis' end.
inline Vector Turned(const Vector& v, const Vector& axis, double degrees) {
  const double c = std::cos(degrees * kDegree);
  const double s = std::sin(degrees * kDegree);
  const double along = Dot(axis, v) * (1.0 - c);
  const Vector across = {axis[1] * v[2] - axis[2] * v[1], axis[2] * v[0] - axis[0] * v[2],
                         axis[0] * v[1] - axis[1] * v[0]};
  return {v[0] * c + across[0] * s + axis[0] * along, v[1] * c + across[1] * s + axis[1] * along,
          v[2] * c + across[2] * s + axis[2] * along};
}

inline double Azimuth(const Vector& v) {
  const double degrees = std::atan2(-v[1], v[0]) / kDegree;
  return degrees < 0.0 ? degrees + 360.0 : degrees;
}

inline double Elevation(const Vector& v) {
  return std::atan2(v[2], std::sqrt(v[0] * v[0] + v[1] * v[1])) / kDegree;
}

// The smaller way round between two directions [degrees].
inline double AngleBetween(double a, double b) { return std::fabs(std::remainder(a - b, 360.0)); }

class TruePole {
 public:
  // Turned about itself, then tilted: its antenna end leans by `tilt` towards the azimuth `lean`.
  static TruePole Leaning(double tilt, double lean, double turn) {
    const Vector up = {0.0, 0.0, 1.0};
    // The horizontal axis to the left of the lean direction; the turn carries up into it.
    const Vector axis = Turned({0.0, 1.0, 0.0}, up, -lean);
    return TruePole({Turned(Turned({1.0, 0.0, 0.0}, up, -turn), axis, tilt),
                     Turned(Turned({0.0, 1.0, 0.0}, up, -turn), axis, tilt),
                     Turned(up, axis, tilt)});
  }

  // From level: turned about the vertical to the heading, the x axis raised by the pitch, then
  // turned about the x axis by the roll.
  static TruePole OfHeadingPitchRoll(double heading, double pitch, double roll) {
    const Vector up = {0.0, 0.0, 1.0};
    const Vector left = Turned({0.0, 1.0, 0.0}, up, -heading);
    const Vector forward = Turned(Turned({1.0, 0.0, 0.0}, up, -heading), left, -pitch);
    return TruePole(
        {forward, Turned(left, forward, roll), Turned(Turned(up, left, -pitch), forward, roll)});
  }

  double ElevationOfX() const { return Elevation(axes_[0]); }
  double ElevationOfY() const { return Elevation(axes_[1]); }
  double HeadingOfX() const { return Azimuth(axes_[0]); }
  double HeadingOfY() const { return Azimuth(axes_[1]); }
  double Tilt() const { return 90.0 - Elevation(axes_[2]); }

  // The tip, one length down the pole from the antenna.
  tiltpole::xyhCoordinate Tip(double length) const {
    tiltpole::xyhCoordinate tip;
    tip.x = -length * axes_[2][0];
    tip.y = length * axes_[2][1];
    tip.h = -length * axes_[2][2];
    return tip;
  }

  // What ideal sensors give: elevations, and a field of the strength [counts] that points north and
  // down by the dip [degrees]. Magnetometer B is turned half a turn about the pole.
  tiltpole::PoseSensorData Sample(double strength, double dip) const {
    const Vector field = {strength * std::cos(dip * kDegree), 0.0,
                          -strength * std::sin(dip * kDegree)};
    tiltpole::PoseSensorData sample;
    sample.InclineX = ElevationOfX();
    sample.InclineY = ElevationOfY();
    sample.MagneticX_A = Dot(axes_[0], field);
    sample.MagneticY_A = Dot(axes_[1], field);
    sample.MagneticZ_A = Dot(axes_[2], field);
    sample.MagneticX_B = -sample.MagneticX_A;
    sample.MagneticY_B = -sample.MagneticY_A;
    sample.MagneticZ_B = sample.MagneticZ_A;
    return sample;
  }

 private:
  explicit TruePole(const Rotation& axes) : axes_(axes) {}

  Rotation axes_;
};

inline double DistanceBetween(const tiltpole::xyhCoordinate& a, const tiltpole::xyhCoordinate& b) {
  return std::hypot(std::hypot(a.x - b.x, a.y - b.y), a.h - b.h);
}

}  // namespace tiltpole_test
