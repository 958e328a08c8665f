#include "apps/session/simulated_pole.h"

#include <cmath>

namespace tiltpole::session {

// The errors are a lower-triangular matrix with 1 in its corner; the correction is its inverse, and
// the offsets are subtracted after it.
Incline_MagneticCorrectParameter TrueCorrection(const MagnetometerErrors& errors) {
  Incline_MagneticCorrectParameter par;
  par.a = -errors.cross_yx / errors.scale_y;
  par.b = 1.0 / errors.scale_y;
  par.c = (errors.cross_zy * errors.cross_yx / errors.scale_y - errors.cross_zx) / errors.scale_z;
  par.d = -errors.cross_zy / (errors.scale_y * errors.scale_z);
  par.e = 1.0 / errors.scale_z;
  par.x0 = errors.offset.x;
  par.y0 = par.a * errors.offset.x + par.b * errors.offset.y;
  par.z0 = par.c * errors.offset.x + par.d * errors.offset.y + par.e * errors.offset.z;
  return par;
}

MagnetometerErrors TypicalErrors_A() {
  MagnetometerErrors errors;
  errors.offset = {600.0, -450.0, 300.0};
  errors.scale_y = 0.94;
  errors.scale_z = 1.07;
  errors.cross_yx = 0.03;
  errors.cross_zx = -0.02;
  errors.cross_zy = 0.015;
  return errors;
}

MagnetometerErrors TypicalErrors_B() {
  MagnetometerErrors errors;
  errors.offset = {-350.0, 500.0, -700.0};
  errors.scale_y = 1.05;
  errors.scale_z = 0.92;
  errors.cross_yx = -0.025;
  errors.cross_zx = 0.03;
  errors.cross_zy = 0.02;
  return errors;
}

double RoundToStep(double value, double step) {
  if (step == 0.0) return value;
  // Dividing by a whole number keeps decimal steps decimal: 12.3, not 12.300000000000001.
  const double per_unit = 1.0 / step;
  const double steps = std::nearbyint(per_unit);
  const double rounded = std::fabs(per_unit - steps) < 1e-9 * steps
                             ? std::nearbyint(value * steps) / steps
                             : std::nearbyint(value / step) * step;
  return rounded + 0.0;  // no negative zero
}

PoseSensorData SimulatedPole::Read(const Attitude& attitude) {
  const SineCosine dip = SineCosineOf(settings_.dip);
  const Vector3 field_in_world = {settings_.field_strength * dip.cosine, 0.0,
                                  -settings_.field_strength * dip.sine};
  const Vector3 field_a = attitude.ToPole(field_in_world);
  const Vector3 field_b = {-field_a.x, -field_a.y, field_a.z};
  const Vector3 reading_a = ReadMagnetometer(field_a, settings_.errors_a);
  const Vector3 reading_b = ReadMagnetometer(field_b, settings_.errors_b);

  PoseSensorData sample;
  sample.InclineX = ReadTilt(attitude.ElevationX());
  sample.InclineY = ReadTilt(attitude.ElevationY());
  sample.MagneticX_A = reading_a.x;
  sample.MagneticY_A = reading_a.y;
  sample.MagneticZ_A = reading_a.z;
  sample.MagneticX_B = reading_b.x;
  sample.MagneticY_B = reading_b.y;
  sample.MagneticZ_B = reading_b.z;
  return sample;
}

Vector3 SimulatedPole::ReadMagnetometer(const Vector3& field, const MagnetometerErrors& errors) {
  const Vector3 ideal = {field.x + errors.offset.x,
                         errors.cross_yx * field.x + errors.scale_y * field.y + errors.offset.y,
                         errors.cross_zx * field.x + errors.cross_zy * field.y +
                             errors.scale_z * field.z + errors.offset.z};
  const double x = RoundToStep(ideal.x + errors.noise * random_.Normal(), settings_.count_step);
  const double y = RoundToStep(ideal.y + errors.noise * random_.Normal(), settings_.count_step);
  const double z = RoundToStep(ideal.z + errors.noise * random_.Normal(), settings_.count_step);
  return {x, y, z};
}

double SimulatedPole::ReadTilt(double elevation) {
  return RoundToStep(elevation + settings_.tilt_noise * random_.Normal(), settings_.tilt_step);
}

xyhCoordinate SimulatedPole::TipOffset(const Attitude& attitude) const {
  const Vector3 up = attitude.Up();
  xyhCoordinate offset;
  offset.x = -settings_.pole_length * up.x;
  offset.y = settings_.pole_length * up.y;  // y counts to the west, the offset to the east
  offset.h = -settings_.pole_length * up.z;
  return offset;
}

}  // namespace tiltpole::session
