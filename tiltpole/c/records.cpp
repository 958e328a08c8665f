#include "tiltpole/c/detail/records.h"

#include <algorithm>
#include <iterator>

namespace tiltpole::detail {

PoseSensorData FromC(const tiltpole_sample& sample) {
  PoseSensorData record;
  std::copy(std::begin(sample.time), std::end(sample.time), record.Tag.Value);
  record.InclineX = sample.incline_x;
  record.InclineY = sample.incline_y;
  std::copy(std::begin(sample.aux), std::end(sample.aux), record.Aux);
  record.MagneticX_A = sample.magnetic_a[0];
  record.MagneticY_A = sample.magnetic_a[1];
  record.MagneticZ_A = sample.magnetic_a[2];
  record.MagneticX_B = sample.magnetic_b[0];
  record.MagneticY_B = sample.magnetic_b[1];
  record.MagneticZ_B = sample.magnetic_b[2];
  record.Yaw_A = sample.yaw_a;
  record.Yaw_B = sample.yaw_b;
  record.YawY_A = sample.yaw_y_a;
  record.HostAngle = sample.host_angle;
  record.Azimuth = sample.azimuth;
  record.Forward = sample.forward;
  return record;
}

tiltpole_sample ToC(const PoseSensorData& record) {
  tiltpole_sample sample = {};
  std::copy(std::begin(record.Tag.Value), std::end(record.Tag.Value), sample.time);
  sample.incline_x = record.InclineX;
  sample.incline_y = record.InclineY;
  std::copy(std::begin(record.Aux), std::end(record.Aux), sample.aux);
  sample.magnetic_a[0] = record.MagneticX_A;
  sample.magnetic_a[1] = record.MagneticY_A;
  sample.magnetic_a[2] = record.MagneticZ_A;
  sample.magnetic_b[0] = record.MagneticX_B;
  sample.magnetic_b[1] = record.MagneticY_B;
  sample.magnetic_b[2] = record.MagneticZ_B;
  sample.yaw_a = record.Yaw_A;
  sample.yaw_b = record.Yaw_B;
  sample.yaw_y_a = record.YawY_A;
  sample.host_angle = record.HostAngle;
  sample.azimuth = record.Azimuth;
  sample.forward = record.Forward;
  return sample;
}

Incline_MagneticCorrectParameter FromC(const tiltpole_correction& correction) {
  Incline_MagneticCorrectParameter record;
  record.a = correction.a;
  record.b = correction.b;
  record.c = correction.c;
  record.d = correction.d;
  record.e = correction.e;
  record.x0 = correction.x0;
  record.y0 = correction.y0;
  record.z0 = correction.z0;
  return record;
}

tiltpole_correction ToC(const Incline_MagneticCorrectParameter& record) {
  return {record.a, record.b, record.c, record.d, record.e, record.x0, record.y0, record.z0};
}

}  // namespace tiltpole::detail
