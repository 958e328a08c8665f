#pragma once

// A pole whose truth is known.

#include <cstdint>

#include "apps/session/attitude.h"
#include "apps/session/random.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole::session {

/// What is wrong with one magnetometer. With a field (x, y, z) along its axes [counts] it reads,
/// but for noise,
///
///     x            + offset.x
///     cross_yx x + scale_y y + offset.y
///     cross_zx x + cross_zy y + scale_z z + offset.z
///
/// Scales are against the x axis, whose gain defines the count: this is the family of errors that
/// a correction of the library undoes exactly.
struct MagnetometerErrors {
  Vector3 offset;         ///< [counts]
  double scale_y = 1.0;   ///< gain of y against x
  double scale_z = 1.0;   ///< gain of z against x
  double cross_yx = 0.0;  ///< share of x in y
  double cross_zx = 0.0;  ///< share of x in z
  double cross_zy = 0.0;  ///< share of y in z
  double noise = 0.0;     ///< standard deviation of each axis [counts]
};

/// The correction that undoes the errors exactly.
Incline_MagneticCorrectParameter TrueCorrection(const MagnetometerErrors& errors);

/// Errors as a pole off the shelf has them, for each of the two magnetometers.
MagnetometerErrors TypicalErrors_A();
MagnetometerErrors TypicalErrors_B();

/// The pole, its sensors and the field around it.
///
/// A field of 5000 counts suits the library's fixed limits: its 300 counts between the two
/// magnetometers are then about five degrees of heading, well above the sensors' noise.
struct PoleSettings {
  double pole_length = 2.0;        ///< antenna to tip [m]
  double field_strength = 5000.0;  ///< of the whole field [counts]
  double dip = 65.0;               ///< of the field below the horizontal plane [degrees]
  MagnetometerErrors errors_a;
  MagnetometerErrors errors_b;
  double tilt_noise = 0.0;  ///< standard deviation of each tilt [degrees]
  double count_step = 0.0;  ///< readings are multiples of this [counts]; 0 leaves them whole
  double tilt_step = 0.0;   ///< tilts are multiples of this [degrees]; 0 leaves them whole
};

/// A rigid pole with an inclination sensor and two magnetometers, B mounted half a turn about the
/// pole's axis from A, in a uniform magnetic field whose horizontal part points north.
///
/// Nothing here comes from the library's formulas: readings are the field in the pole's axes, tilts
/// the elevations of its two axes, the tip lies one pole length below the antenna along the pole.
class SimulatedPole {
 public:
  SimulatedPole(const PoleSettings& settings, std::uint64_t seed)
      : settings_(settings), random_(seed) {}

  /// One sample of all sensors; the time of day is left to the caller.
  PoseSensorData Read(const Attitude& attitude);
  /// From the antenna to the tip [m].
  xyhCoordinate TipOffset(const Attitude& attitude) const;

  const PoleSettings& Settings() const { return settings_; }

 private:
  Vector3 ReadMagnetometer(const Vector3& field, const MagnetometerErrors& errors);
  double ReadTilt(double elevation);

  PoleSettings settings_;
  Random random_;
};

/// The nearest multiple of @p step; @p value itself for a step of 0.
double RoundToStep(double value, double step);

}  // namespace tiltpole::session
