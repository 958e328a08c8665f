#pragma once

// A pole's attitude as the sensor sees it: where the vertical and where north lie in the sensor's
// frame. What measures and what judges a measurement share it.

#include "tiltpole/quality/detail/vector3.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole::detail {

// A horizontal field below this share of the whole field tells no direction: it is what rounding
// leaves of a vertical one.
inline constexpr double kSmallestHorizontalShare = 1e-9;

// The upward vertical, from the tilts as elevations of the x and the y axis [degrees]. Not a number
// where the two cannot belong to perpendicular axes. The pole is taken to stand on its tip: tilts
// alone do not tell an upside-down pole.
Vector3 UpFromTilts(double tiltX, double tiltY);

// The field in the sensor's frame, from the corrected readings [counts of each one's x axis].
// Magnetometer B's is turned from its mounting, half a turn about the pole.
Vector3 Field_A(const PoseSensorData& corrected);
Vector3 Field_B(const PoseSensorData& corrected);

// The unit vector towards the heading 0 of one magnetometer: its field's horizontal part, with the
// bias turned away. Zero when the field tells no direction.
Vector3 NorthFromField(const Vector3& field, const Vector3& up, double bias_degrees);

// Heading of the x axis' horizontal projection [degrees, 0 to 360).
double HeadingOfXAxis(const Vector3& north, const Vector3& up);

// An angle of any size into [0, 360), or into [-180, 180).
double WrapTo360(double degrees);
double WrapTo180(double degrees);

}  // namespace tiltpole::detail
