// Headings from tilt and magnetometers, and the two flags that a sample sets.

#include <cmath>

#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/positioning/detail/tilt.h"
#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole {
namespace {

using detail::kEpsilon;
using detail::ToDegrees;

constexpr double kStillReadingDistance = 1000.0;  // sum of absolute differences [counts]
constexpr double kStillTiltDifference = 0.5;      // [degrees]
constexpr double kMountingAngle_B = 0.0;          // of magnetometer B about the pole [radians]

// Clockwise from magnetic north to the x axis' horizontal projection, 0 to 2 pi [radians].
//
// Deliberate: a field without a direction reads as heading 0, and so does one with a component that
// is not a number. Nothing tells a host of it.
double HeadingOfField(const detail::Tilt& tilt, const MagneticReading& field) {
  const double Hy = tilt.cos_beta * field.Y - tilt.sin_beta * field.Z;
  const double Hx = tilt.cos_alpha * field.X + tilt.sin_alpha * tilt.sin_beta * field.Y +
                    tilt.sin_alpha * tilt.cos_beta * field.Z;
  if (std::fabs(Hx) < kEpsilon) {
    if (Hy > kEpsilon) return detail::kThreeHalvesPi;
    return Hy < -kEpsilon ? detail::kHalfPi : 0.0;
  }
  if (Hx > kEpsilon && Hy < -kEpsilon) return -std::atan(Hy / Hx);
  if (Hx > kEpsilon && Hy > kEpsilon) return detail::kTwoPi - std::atan(Hy / Hx);
  if (Hx < -kEpsilon) return detail::kPi - std::atan(Hy / Hx);
  return 0.0;
}

// The angle between the horizontal projections of the sensor's x and y axes [degrees]. The ratio
// equals -tan(alpha) tan(beta).
//
// Deliberate: evaluated as written, without clamping and without a guard. A tilt of exactly 0 makes
// it 0/0, so YawY_A is not a number then, though the angle itself would be 90.
double AngleBetweenAxes(const detail::Tilt& tilt) {
  const double sin2_alpha = tilt.sin_alpha * tilt.sin_alpha;
  const double cos2_alpha = tilt.cos_alpha * tilt.cos_alpha;
  const double sin2_beta = tilt.sin_beta * tilt.sin_beta;
  const double cos2_beta = tilt.cos_beta * tilt.cos_beta;
  return ToDegrees(
      std::acos((cos2_alpha * sin2_beta + cos2_beta * sin2_alpha - sin2_beta - sin2_alpha) /
                (2.0 * tilt.cos_alpha * tilt.cos_beta * tilt.sin_alpha * tilt.sin_beta)));
}

}  // namespace

int CInclineSensor_Position::CalculateYaw_A(PoseSensorData& data) {
  UpdateHeading_A(detail::Tilt(data.InclineX, data.InclineY), data);
  return 1;
}

int CInclineSensor_Position::CalculateYaw_B(PoseSensorData& data) {
  UpdateHeading_B(Reversed(detail::Tilt(data.InclineX, data.InclineY)), data);
  return 1;
}

void CInclineSensor_Position::UpdateHeading_A(const detail::Tilt& tilt, PoseSensorData& data) {
  // Deliberate: the correction overwrites the reading, so a record that passes twice is corrected
  // twice.
  const MagneticReading field =
      CorrectReading(MagneticA, {data.MagneticX_A, data.MagneticY_A, data.MagneticZ_A});
  data.MagneticX_A = field.X;
  data.MagneticY_A = field.Y;
  data.MagneticZ_A = field.Z;
  UpdateStationary(field, data.InclineX, data.InclineY);
  data.Yaw_A = detail::WrapOnce(ToDegrees(HeadingOfField(tilt, field)) - MagneticBiasAngle_A);
  data.YawY_A = data.Yaw_A - AngleBetweenAxes(tilt);
}

// Deliberate: while the pole stands still the reference stays the first sample of that time, so a
// slow drift adds up until it passes a limit. The limits are asked as "greater", so a sample with a
// value that is not a number counts as still.
void CInclineSensor_Position::UpdateStationary(const MagneticReading& field, double inclineX,
                                               double inclineY) {
  const MagneticReading last = {LastMagneticX_A, LastMagneticY_A, LastMagneticZ_A};
  const bool moved = SumOfDifferences(field, last) > kStillReadingDistance ||
                     std::fabs(inclineX - LastInclineX) > kStillTiltDifference ||
                     std::fabs(inclineY - LastInclineY) > kStillTiltDifference;
  Stationary = moved ? 0 : 1;
  if (!moved) return;
  LastMagneticX_A = field.X;
  LastMagneticY_A = field.Y;
  LastMagneticZ_A = field.Z;
  LastInclineX = inclineX;
  LastInclineY = inclineY;
}

void CInclineSensor_Position::UpdateHeading_B(const detail::Tilt& reversed, PoseSensorData& data) {
  MagneticReading field =
      CorrectReading(MagneticB, {data.MagneticX_B, data.MagneticY_B, data.MagneticZ_B});
  // Asks magnetometer A's fields as they stand in the record: CalculateYaw_A must have corrected
  // them before.
  const MagneticReading expected =
      ExpectedReading_B(CoorTrans, {data.MagneticX_A, data.MagneticY_A, data.MagneticZ_A});
  MagneticInterference = SumOfDifferences(expected, field) > kInterferenceDistance ? 1 : 0;

  const double cosine = std::cos(kMountingAngle_B);
  const double sine = std::sin(kMountingAngle_B);
  field = {field.X * cosine + field.Y * sine, -field.X * sine + field.Y * cosine, field.Z};
  data.MagneticX_B = field.X;
  data.MagneticY_B = field.Y;
  data.MagneticZ_B = field.Z;
  data.Yaw_B = detail::WrapOnce(ToDegrees(HeadingOfField(reversed, field)) +
                                ToDegrees(kMountingAngle_B) - MagneticBiasAngle_B);
}

double CInclineSensor_Position::ConverseYaw_True(double x, double y) const {
  if (std::fabs(x) < kEpsilon) {
    if (y > 0.0) return 90.0;
    return y < 0.0 ? 270.0 : 0.0;
  }
  // Deliberate: unlike the headings, y is compared with exactly 0.
  if (x > 0.0 && y > 0.0) return ToDegrees(std::atan(y / x));
  if (x < 0.0) return 180.0 + ToDegrees(std::atan(y / x));
  if (x > 0.0 && y < 0.0) return 360.0 + ToDegrees(std::atan(y / x));
  return 0.0;
}

}  // namespace tiltpole
