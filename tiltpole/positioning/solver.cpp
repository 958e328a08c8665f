// The pole's tip by the plane trigonometry of its two tilts and its heading.

#include <cmath>

#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/positioning/detail/tilt.h"
#include "tiltpole/positioning/detail/tip_azimuth.h"

namespace tiltpole {
namespace {

using detail::FindTipAzimuth;
using detail::kEpsilon;
using detail::NeededSides;
using detail::Tilt;
using detail::TipAzimuth;
using detail::ToDegrees;
using detail::ToRadians;
using detail::TriangleSides;

constexpr double kLargestLeanDifference = 5.0;  // [degrees]

xyhCoordinate TipAlong(const xyhCoordinate& origin, double pole_to_horizontal, double azimuth,
                       double pole_length) {
  // Through degrees and back, as GetAngleofPoletoHorizontal hands it out: that decides its last
  // bit.
  const double phi = ToRadians(ToDegrees(pole_to_horizontal));
  const double R = ToRadians(azimuth);
  const double reach = pole_length * std::cos(phi);
  xyhCoordinate tip;
  tip.x = origin.x + reach * std::cos(R);
  tip.y = origin.y + reach * std::sin(R);
  tip.h = origin.h - pole_length * std::sin(phi);
  return tip;
}

// Where the pole leans to, opposite to its tip.
double LeanDirection(double azimuth_of_tip) {
  const double direction = azimuth_of_tip - 180.0;
  return direction < kEpsilon ? direction + 360.0 : direction;
}

}  // namespace

double CInclineSensor_Position::GetAngleofPoletoHorizontal(double tiltX, double tiltY) const {
  return ToDegrees(PoleToHorizontal(Tilt(tiltX, tiltY)));
}

double CInclineSensor_Position::GetAngleofPoleProject(double tiltX, double tiltY,
                                                      double heading) const {
  const Tilt tilt(tiltX, tiltY);
  const TriangleSides sides = NeededSides(tilt, PoleToHorizontal(tilt));
  return FindTipAzimuth(tilt, sides, heading).Unclamped();
}

void CInclineSensor_Position::KeepTipAzimuth(const TipAzimuth& tip) {
  PoleProjectOffset = tip.offset;
  // Deliberate: the angle of the triangle that was solved is not kept; this reads the same after
  // every run.
  PoleTriangleAngle = 180.0;
}

int CInclineSensor_Position::Position_Geometry_A(xyhCoordinate origin, PoseSensorData data,
                                                 double pole_length, xyhCoordinate& result) {
  const Tilt tilt(data.InclineX, data.InclineY);
  const double phi = PoleToHorizontal(tilt);
  const TipAzimuth tip = FindTipAzimuth(tilt, NeededSides(tilt, phi), data.Yaw_A);
  KeepTipAzimuth(tip);
  result = TipAlong(origin, phi, tip.azimuth, pole_length);
  return 1;
}

int CInclineSensor_Position::Position_Geometry_B(xyhCoordinate origin, PoseSensorData data,
                                                 double pole_length, xyhCoordinate& result) {
  const Tilt tilt(data.InclineX, data.InclineY);
  // Deliberate: the reversed tilts go in as radians where degrees are expected, so the direction is
  // that of a pole which leans by a 57th of the tilt. What a host sees of it is told in the header.
  const double azimuth = GetAngleofPoleProject(-tilt.alpha, -tilt.beta, data.Yaw_B);
  result = TipAlong(origin, PoleToHorizontal(tilt), detail::WrapOnce(azimuth), pole_length);
  return 1;
}

int CInclineSensor_Position::Position(PoseSensorData& data, double pole_length,
                                      xyhCoordinate& result) {
  const Tilt tilt(data.InclineX, data.InclineY);
  const Tilt reversed = Reversed(tilt);
  UpdateHeading_A(tilt, data);
  UpdateHeading_B(reversed, data);

  if (std::fabs(tilt.alpha) < kEpsilon && std::fabs(tilt.beta) < kEpsilon) {
    // A plumb pole leans nowhere: there are no directions to compare.
    result.x = 0.0;
    result.y = 0.0;
    result.h = -pole_length;
    return 1;
  }

  const double phi = PoleToHorizontal(tilt);
  const TriangleSides sides = AllSides(tilt, phi);
  const TipAzimuth tip_A = FindTipAzimuth(tilt, sides, data.Yaw_A);
  const TipAzimuth tip_B = FindTipAzimuth(reversed, Reversed(sides), data.Yaw_B);
  KeepTipAzimuth(tip_A);
  result = TipAlong(xyhCoordinate(), phi, tip_A.azimuth, pole_length);

  const double lean_A = LeanDirection(tip_A.Unclamped());
  const double lean_B = LeanDirection(tip_B.Unclamped());
  // Deliberate: the difference is not wrapped, so lean directions of 359 and 1 degrees count as a
  // disagreement. A pole that leans to the north can raise the flag without any interference.
  if (std::fabs(lean_B - lean_A) > kLargestLeanDifference) MagneticInterference = 1;
  return 1;
}

}  // namespace tiltpole
