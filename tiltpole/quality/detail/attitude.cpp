#include "tiltpole/quality/detail/attitude.h"

#include <cmath>

#include "tiltpole/records/detail/angles.h"

namespace tiltpole::detail {

Vector3 UpFromTilts(double tiltX, double tiltY) {
  const double x = std::sin(ToRadians(tiltX));
  const double y = std::sin(ToRadians(tiltY));
  return {x, y, std::sqrt(1.0 - x * x - y * y)};
}

// The correction leaves y pointing right and z down.
Vector3 Field_A(const PoseSensorData& corrected) {
  return {corrected.MagneticX_A, -corrected.MagneticY_A, -corrected.MagneticZ_A};
}

Vector3 Field_B(const PoseSensorData& corrected) {
  return {-corrected.MagneticX_B, corrected.MagneticY_B, -corrected.MagneticZ_B};
}

Vector3 NorthFromField(const Vector3& field, const Vector3& up, double bias_degrees) {
  const double strength = Norm(field);
  if (!(strength > 0.0) || !std::isfinite(strength)) return {};
  const Vector3 horizontal = NormalPart((1.0 / strength) * field, up);
  const double share = Norm(horizontal);
  if (!(share > kSmallestHorizontalShare)) return {};
  return TurnedClockwise((1.0 / share) * horizontal, up, ToRadians(bias_degrees));
}

double HeadingOfXAxis(const Vector3& north, const Vector3& up) {
  const Vector3 east = Cross(north, up);
  return WrapTo360(ToDegrees(std::atan2(east.x, north.x)));
}

double WrapTo360(double degrees) {
  const double wrapped = std::fmod(degrees, 360.0);
  if (wrapped >= 0.0) return wrapped;
  const double lifted = wrapped + 360.0;
  return lifted < 360.0 ? lifted : 0.0;
}

double WrapTo180(double degrees) {
  const double wrapped = WrapTo360(degrees);
  return wrapped < 180.0 ? wrapped : wrapped - 360.0;
}

}  // namespace tiltpole::detail
