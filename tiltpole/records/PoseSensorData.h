#pragma once

/// @file
/// One sample of the sensor package on the pole, and what the library writes back into it.

#include <cstddef>
#include <cstdint>

namespace tiltpole {

/// One sample of the sensor package: one dual-axis inclination sensor and two three-axis
/// magnetometers.
///
/// The sensor's x axis points forward; with z up the y axis points left of x. Magnetometer B is
/// mounted turned half a turn about the pole's axis relative to A: its x and y axes point against
/// A's, its z axis along A's.
///
/// A plain value: copying copies every field, and the record owns nothing. It goes through the
/// heading computation once; after it the six magnetometer fields hold corrected readings, and a
/// second pass would correct them twice. A host that needs the raw readings again keeps its own
/// copy.
struct PoseSensorData {
  /// Time of day: hours [0], minutes [1], seconds [2].
  struct TimeOfDay {
    std::int32_t Value[3] = {0, 0, 0};  ///< hours, minutes, seconds; not checked

    /// The part to read or to write. Not checked: an index above 2 is undefined behaviour.
    std::int32_t& operator[](std::size_t i) { return Value[i]; }
    /// The part to read. Not checked, either.
    const std::int32_t& operator[](std::size_t i) const { return Value[i]; }
  };

  /// When the sample was taken. Filled by the host; read by the screening of turns alone.
  TimeOfDay Tag;
  /// Inclination of the sensor's x axis to the horizontal (pitch) [degrees]. The host's.
  double InclineX = 0.0;
  /// Inclination of the sensor's y axis to the horizontal (roll) [degrees]. The host's.
  double InclineY = 0.0;
  /// For the host's own use: carried along, never read by the library.
  double Aux[7] = {0.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0};

  /// Magnetometer A [counts]: raw from the host, replaced by the corrected reading.
  double MagneticX_A = 0.0;
  double MagneticY_A = 0.0;  ///< @copydoc MagneticX_A
  double MagneticZ_A = 0.0;  ///< @copydoc MagneticX_A
  /// Magnetometer B [counts]: raw from the host, replaced by the corrected reading.
  double MagneticX_B = 0.0;
  double MagneticY_B = 0.0;  ///< @copydoc MagneticX_B
  double MagneticZ_B = 0.0;  ///< @copydoc MagneticX_B

  /// Heading of the x axis' horizontal projection from magnetometer A, less its bias angle
  /// [degrees, 0 to 360]. Written by the heading computation.
  double Yaw_A = 0.0;
  /// Heading from magnetometer B, less its bias angle [degrees, 0 to 360].
  double Yaw_B = 0.0;
  /// Heading of the y axis' horizontal projection [degrees]; not a number when either tilt is
  /// exactly 0.
  double YawY_A = 0.0;
  /// For the host's own use; the only double that does not start at 0.
  double HostAngle = 90.0;
  /// Direction of the reading about the centre of its turn [degrees]. Written by the screening.
  double Azimuth = 0.0;
  /// 1 when this record's azimuth lies ahead of its predecessor's, 0 otherwise. Written by the
  /// screening; a record without a predecessor keeps its value.
  std::int32_t Forward = 1;
};

}  // namespace tiltpole
