#include "apps/session/attitude.h"

#include <cmath>

namespace tiltpole::session {
namespace {

constexpr double kDegree = 0.017453292519943295769;

Vector3 operator*(double k, const Vector3& v) { return {k * v.x, k * v.y, k * v.z}; }
Vector3 operator+(const Vector3& a, const Vector3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
double Dot(const Vector3& a, const Vector3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vector3 Cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// Turns v about the unit vector axis (Rodrigues).
Vector3 Turned(const Vector3& v, const Vector3& axis, const SineCosine& angle) {
  return angle.cosine * v + angle.sine * Cross(axis, v) +
         (1.0 - angle.cosine) * Dot(axis, v) * axis;
}

double Elevation(const Vector3& axis) {
  return std::atan2(axis.z, std::hypot(axis.x, axis.y)) / kDegree;
}

// Taylor's series on [-45, 45] degrees, enough terms for the last bit.
double SineOf(double x) {
  double sum = 0.0;
  for (int k = 19; k >= 3; k -= 2) sum = (1.0 - sum) * x * x / ((k - 1) * k);
  return x * (1.0 - sum);
}
double CosineOf(double x) {
  double sum = 0.0;
  for (int k = 20; k >= 2; k -= 2) sum = (1.0 - sum) * x * x / ((k - 1) * k);
  return 1.0 - sum;
}

}  // namespace

SineCosine SineCosineOf(double degrees) {
  if (!std::isfinite(degrees)) return {std::sin(degrees), std::cos(degrees)};
  const double within = std::remainder(degrees, 360.0);
  const double quarter = std::nearbyint(within / 90.0);
  const double rest = (within - 90.0 * quarter) * kDegree;
  const SineCosine base{SineOf(rest), CosineOf(rest)};
  switch (static_cast<int>(quarter)) {
    case 0:
      return base;
    case 1:
      return {base.cosine, -base.sine};
    case -1:
      return {-base.cosine, base.sine};
    default:
      return {-base.sine, -base.cosine};
  }
}

Attitude Attitude::Plumb(double heading) {
  const auto [sine, cosine] = SineCosineOf(heading);
  // Clockwise seen from above is a negative turn about up, with west as the second axis.
  return {{cosine, -sine, 0.0}, {sine, cosine, 0.0}, {0.0, 0.0, 1.0}};
}

Attitude Attitude::Leaned(double tilt, double lean) const {
  const auto [sine, cosine] = SineCosineOf(lean);
  const Vector3 across = {sine, cosine, 0.0};  // up x the direction of the lean
  const SineCosine angle = SineCosineOf(tilt);
  return {Turned(forward_, across, angle), Turned(left_, across, angle),
          Turned(up_, across, angle)};
}

Attitude Attitude::TurnedAboutY(double angle) const {
  // Positive about y would take x down.
  const SineCosine turn = SineCosineOf(-angle);
  return {Turned(forward_, left_, turn), left_, Turned(up_, left_, turn)};
}

Vector3 Attitude::ToPole(const Vector3& world) const {
  return {Dot(forward_, world), Dot(left_, world), Dot(up_, world)};
}

double Attitude::Heading() const {
  const double heading = std::atan2(-forward_.y, forward_.x) / kDegree;
  return heading < 0.0 ? heading + 360.0 : heading;
}

double Attitude::ElevationX() const { return Elevation(forward_); }

double Attitude::ElevationY() const { return Elevation(left_); }

double Attitude::Tilt() const { return std::atan2(std::hypot(up_.x, up_.y), up_.z) / kDegree; }

}  // namespace tiltpole::session
