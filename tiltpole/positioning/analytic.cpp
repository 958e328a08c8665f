// The pole's tip by the intersection of three spheres.

#include <cmath>

#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/records/detail/angles.h"

namespace tiltpole {
namespace {

using detail::kEpsilon;
using detail::ToRadians;

constexpr double kArmLength = 2.0;              // in the unit of the pole length
constexpr double kSmallestDiscriminant = 1e-9;  // below, the spheres do not meet or only touch
constexpr double kSmallestDistance2 = 1e-6;

}  // namespace

xyhCoordinate CInclineSensor_Position::GetInclinePoint(xyhCoordinate point, double length,
                                                       double elevation, double azimuth) const {
  const double e = ToRadians(elevation);
  const double z = ToRadians(azimuth);
  const double reach = length * std::cos(e);
  xyhCoordinate result;
  result.x = point.x - reach * std::cos(z);
  result.y = point.y - reach * std::sin(z);
  result.h = point.h - length * std::sin(e);
  return result;
}

double CInclineSensor_Position::GetDistance(xyhCoordinate from, xyhCoordinate to) const {
  const double dx = to.x - from.x;
  const double dy = to.y - from.y;
  const double dh = to.h - from.h;
  const double distance2 = dx * dx + dy * dy + dh * dh;
  // Deliberate: the limit is one of squares, so every distance up to a thousandth reads as 0.
  return distance2 > kSmallestDistance2 ? std::sqrt(distance2) : 0.0;
}

int CInclineSensor_Position::GetSolvePoint(xyhCoordinate P1, xyhCoordinate P2, xyhCoordinate P3,
                                           double r1, double r2, double r3,
                                           xyhCoordinate& result) const {
  const double k1 = r1 * r1 - P1.x * P1.x - P1.y * P1.y - P1.h * P1.h;
  const double k2 = r2 * r2 - P2.x * P2.x - P2.y * P2.y - P2.h * P2.h;
  const double k3 = r3 * r3 - P3.x * P3.x - P3.y * P3.y - P3.h * P3.h;
  const double dx12 = P2.x - P1.x;
  const double dy12 = P2.y - P1.y;
  const double dh12 = P2.h - P1.h;
  const double dx23 = P3.x - P2.x;
  const double dy23 = P3.y - P2.y;
  const double dh23 = P3.h - P2.h;
  const double e12 = (k1 - k2) / 2.0;
  const double e23 = (k2 - k3) / 2.0;

  // The line in which the two radical planes meet: h = H0 - H1 x, y = Y0 - Y1 x. Deliberate: no
  // denominator is guarded. Three centres at one height make them 0; not-a-number then passes the
  // test of the discriminant, and the point found is not a number.
  const double H0 = (dy23 * e12 - dy12 * e23) / (dh12 * dy23 - dy12 * dh23);
  const double H1 = (dx12 * dy23 - dx23 * dy12) / (dh12 * dy23 - dy12 * dh23);
  const double Y0 = (dh23 * e12 - dh12 * e23) / (dy12 * dh23 - dy23 * dh12);
  const double Y1 = (dx12 * dh23 - dx23 * dh12) / (dy12 * dh23 - dy23 * dh12);

  const double u = Y0 - P1.y;
  const double w = H0 - P1.h;
  const double a = 1.0 + Y1 * Y1 + H1 * H1;
  const double b = -2.0 * (P1.x + u * Y1 + H1 * w);
  const double c = P1.x * P1.x + u * u + w * w - r1 * r1;
  const double discriminant = b * b - 4.0 * a * c;
  if (discriminant < kSmallestDiscriminant) return 0;

  xyhCoordinate S1;
  S1.x = (-b + std::sqrt(discriminant)) / (2.0 * a);
  S1.y = Y0 - Y1 * S1.x;
  S1.h = H0 - H1 * S1.x;
  xyhCoordinate S2;
  S2.x = (-b - std::sqrt(discriminant)) / (2.0 * a);
  S2.y = Y0 - Y1 * S2.x;
  S2.h = H0 - H1 * S2.x;
  // The tip is the lower one; near-equal heights go to the second.
  result = S2.h - S1.h < kEpsilon ? S2 : S1;
  return 1;
}

int CInclineSensor_Position::Position_Math(xyhCoordinate antenna, PoseSensorData data,
                                           double pole_length, xyhCoordinate& result) {
  const xyhCoordinate on_x_axis = GetInclinePoint(antenna, kArmLength, data.InclineX, data.Yaw_A);
  const xyhCoordinate on_y_axis = GetInclinePoint(antenna, kArmLength, data.InclineY, data.YawY_A);
  // The pole meets each axis at a right angle at the antenna.
  const double to_arm_end = std::sqrt(pole_length * pole_length + kArmLength * kArmLength);
  return GetSolvePoint(antenna, on_x_axis, on_y_axis, pole_length, to_arm_end, to_arm_end, result);
}

}  // namespace tiltpole
