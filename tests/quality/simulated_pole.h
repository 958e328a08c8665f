#pragma once

// A pole in a magnetic field, from first principles: the attitude is a rotation matrix, the tilts
// are the elevations of its axes, a reading is the field seen in it. Nothing here uses the
// library's formulas, so it can be held against them.

#include <array>
#include <cmath>
#include <cstdint>
#include <random>

#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole_test {

inline constexpr double kDegree = 3.14159265358979323846 / 180.0;

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;  // rows

inline Matrix Product(const Matrix& a, const Matrix& b) {
  Matrix out{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t j = 0; j < 3; ++j)
      for (std::size_t k = 0; k < 3; ++k) out[i][j] += a[i][k] * b[k][j];
  return out;
}

inline Vector Product(const Matrix& a, const Vector& v) {
  Vector out{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t k = 0; k < 3; ++k) out[i] += a[i][k] * v[k];
  return out;
}

// The turn by an angle about a unit axis (Rodrigues).
inline Matrix Turn(const Vector& axis, double radians) {
  const double c = std::cos(radians);
  const double s = std::sin(radians);
  const double x = axis[0];
  const double y = axis[1];
  const double z = axis[2];
  return {{{c + x * x * (1 - c), x * y * (1 - c) - z * s, x * z * (1 - c) + y * s},
           {y * x * (1 - c) + z * s, c + y * y * (1 - c), y * z * (1 - c) - x * s},
           {z * x * (1 - c) - y * s, z * y * (1 - c) + x * s, c + z * z * (1 - c)}}};
}

inline constexpr Vector kX = {1.0, 0.0, 0.0};
inline constexpr Vector kY = {0.0, 1.0, 0.0};
inline constexpr Vector kZ = {0.0, 0.0, 1.0};

// World axes are north, west, up, so that a pole with heading 0 and no lean is the identity. The
// columns of an attitude are the sensor's axes (x forward, y left, z up) in the world.
using Attitude = Matrix;

// A plumb pole turned to a heading, then leant by `lean` towards the azimuth `towards` [degrees].
inline Attitude LeaningPole(double heading, double lean, double towards) {
  const Vector axis = {std::sin(towards * kDegree), std::cos(towards * kDegree), 0.0};
  return Product(Turn(axis, lean * kDegree), Turn(kZ, -heading * kDegree));
}

inline double ElevationOfX(const Attitude& pole) { return std::asin(pole[2][0]) / kDegree; }
inline double ElevationOfY(const Attitude& pole) { return std::asin(pole[2][1]) / kDegree; }
inline double HeadingOf(const Attitude& pole) {
  const double heading = std::atan2(-pole[1][0], pole[0][0]) / kDegree;
  return heading < 0.0 ? heading + 360.0 : heading;
}

// The field in north, west, up: the dip is positive downwards.
inline Vector EarthField(double strength, double dip) {
  return {strength * std::cos(dip * kDegree), 0.0, -strength * std::sin(dip * kDegree)};
}

inline Vector SeenBySensor(const Attitude& pole, const Vector& world) {
  Vector out{};
  for (std::size_t i = 0; i < 3; ++i)
    for (std::size_t k = 0; k < 3; ++k) out[i] += pole[k][i] * world[k];
  return out;
}

// Deterministic on every platform, unlike the standard distributions.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}
  double Uniform(double low, double high) {
    return low + (high - low) * static_cast<double>(engine_() >> 11U) * 0x1p-53;
  }
  double Normal() {
    const double radius = std::sqrt(-2.0 * std::log(1.0 - Uniform(0.0, 1.0)));
    return radius * std::cos(2.0 * 180.0 * kDegree * Uniform(0.0, 1.0));
  }

 private:
  std::mt19937_64 engine_;
};

// An ideal sample: the raw readings are the field in each magnetometer's own axes.
inline tiltpole::PoseSensorData IdealSample(const Attitude& pole, const Vector& field) {
  const Vector seen = SeenBySensor(pole, field);
  tiltpole::PoseSensorData sample;
  sample.InclineX = ElevationOfX(pole);
  sample.InclineY = ElevationOfY(pole);
  sample.MagneticX_A = seen[0];
  sample.MagneticY_A = seen[1];
  sample.MagneticZ_A = seen[2];
  sample.MagneticX_B = -seen[0];
  sample.MagneticY_B = -seen[1];
  sample.MagneticZ_B = seen[2];
  return sample;
}

}  // namespace tiltpole_test
