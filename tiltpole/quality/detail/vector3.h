#pragma once

// Just enough vectors in the sensor's frame (x forward, y left, z up the pole) to follow a pole's
// attitude without angles.

#include <cmath>

namespace tiltpole::detail {

struct Vector3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

inline Vector3 operator+(const Vector3& a, const Vector3& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Vector3 operator-(const Vector3& a, const Vector3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline Vector3 operator*(double s, const Vector3& a) { return {s * a.x, s * a.y, s * a.z}; }

inline double Dot(const Vector3& a, const Vector3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

inline Vector3 Cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double Norm(const Vector3& a) { return std::sqrt(Dot(a, a)); }

// The part of a that is normal to the unit vector `normal`.
inline Vector3 NormalPart(const Vector3& a, const Vector3& normal) {
  return a - Dot(a, normal) * normal;
}

// a turned clockwise as seen from the tip of the unit vector `axis`, to which it is normal: the way
// in which headings grow.
inline Vector3 TurnedClockwise(const Vector3& a, const Vector3& axis, double radians) {
  return std::cos(radians) * a + std::sin(radians) * Cross(a, axis);
}

}  // namespace tiltpole::detail
