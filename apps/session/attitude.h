#pragma once

// How a rigid pole stands: a rotation, from first principles.

namespace tiltpole::session {

/// A direction in the world (north, west, up) or in the pole's own axes (forward, left, up).
struct Vector3 {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

/// The attitude of the pole: where its axes point in the world.
///
/// x points forward, y to the left, z along the pole to its top; the world's axes are north, west
/// and up, so that a plumb pole with heading 0 has its axes along them. Headings and azimuths run
/// clockwise from north. All angles are degrees.
class Attitude {
 public:
  /// A plumb pole whose x axis points to @p heading.
  static Attitude Plumb(double heading);

  /// This attitude after the top has been pushed over by @p tilt towards the azimuth @p lean, about
  /// the horizontal axis that lies across.
  Attitude Leaned(double tilt, double lean) const;
  /// This attitude after a turn about the pole's own y axis, x rising.
  Attitude TurnedAboutY(double angle) const;

  /// The pole's axes in the world.
  Vector3 Forward() const { return forward_; }
  Vector3 Left() const { return left_; }
  Vector3 Up() const { return up_; }

  /// A direction of the world as the pole sees it.
  Vector3 ToPole(const Vector3& world) const;

  /// Azimuth of the x axis' horizontal projection, 0 to 360.
  double Heading() const;
  /// Elevation of the x axis above the horizontal plane.
  double ElevationX() const;
  /// Elevation of the y axis above the horizontal plane.
  double ElevationY() const;
  /// Angle between the pole and the plumb line.
  double Tilt() const;

 private:
  Attitude(const Vector3& forward, const Vector3& left, const Vector3& up)
      : forward_(forward), left_(left), up_(up) {}

  Vector3 forward_;
  Vector3 left_;
  Vector3 up_;
};

/// Sine and cosine of an angle in degrees, the same bits on every platform and exact at multiples
/// of 90 degrees.
struct SineCosine {
  double sine = 0.0;
  double cosine = 1.0;
};
SineCosine SineCosineOf(double degrees);

}  // namespace tiltpole::session
