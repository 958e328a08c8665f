#pragma once

// What the corrected readings of both turns tell about the errors that the correction left in one
// magnetometer, and what these do to a heading.

#include <array>
#include <cstddef>
#include <vector>

#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/detail/vector3.h"

namespace tiltpole::detail {

// The corrected readings of one turn in the sensor's frame, and the upward verticals by the tilts.
struct TurnReadings {
  std::vector<Vector3> Field;
  std::vector<Vector3> Up;
};

// The remaining error of a corrected reading: reading = field + E field + o, with o in units of the
// horizontal field. A common scale of all axes turns no heading, so Eyy stands for -Exx.
enum ErrorTerm : std::size_t {
  kExx,
  kExy,
  kExz,
  kEyx,
  kEyz,
  kEzx,
  kEzy,
  kEzz,
  kOx,
  kOy,
  kOz,
  kErrorTerms
};

using ErrorRow = std::array<double, kErrorTerms>;

// What the error adds along a direction to the reading of a field.
ErrorRow ErrorAlong(const Vector3& direction, const Vector3& field);

struct SensorError {
  bool Told = false;  // false when the turns do not show all terms
  ErrorRow Terms{};
  std::array<ErrorRow, kErrorTerms> Covariance{};
  double HorizontalField = 0.0;  // [counts]
  double Down = 0.0;             // vertical field over horizontal, downwards positive
  double Noise = 0.0;            // of one axis of one reading, as a share of the horizontal field
};

SensorError EstimateSensorError(const TurnReadings& horizontal, const TurnReadings& vertical);

HeadingError ExpectedHeadingError(const SensorError& error);

}  // namespace tiltpole::detail
