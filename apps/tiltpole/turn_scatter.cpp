#include "apps/tiltpole/turn_scatter.h"

#include <algorithm>
#include <cmath>

namespace tiltpole::cli {
namespace {

struct PlanePoint {
  double u = 0.0;
  double v = 0.0;
};

PlanePoint InPlane(const MagneticReading& reading, TurnPlane plane) {
  return {reading.X, plane == TurnPlane::XY ? reading.Y : reading.Z};
}

TurnScatter ScatterAbout(const PlanePoint& centre, const std::vector<PlanePoint>& points) {
  TurnScatter scatter;
  if (points.empty()) return scatter;
  const auto radius = [&centre](const PlanePoint& point) {
    return std::hypot(point.u - centre.u, point.v - centre.v);
  };
  const auto count = static_cast<double>(points.size());
  for (const auto& point : points) scatter.radius += radius(point) / count;
  double squares = 0.0;
  for (const auto& point : points) {
    const double deviation = std::fabs(radius(point) - scatter.radius);
    squares += deviation * deviation;
    scatter.largest = std::max(scatter.largest, deviation);
  }
  scatter.rms = std::sqrt(squares / count);
  return scatter;
}

PlanePoint MiddleOfBox(const std::vector<PlanePoint>& points) {
  if (points.empty()) return {};
  PlanePoint low = points[0];
  PlanePoint high = points[0];
  for (const auto& point : points) {
    low = {std::min(low.u, point.u), std::min(low.v, point.v)};
    high = {std::max(high.u, point.u), std::max(high.v, point.v)};
  }
  return {(low.u + high.u) / 2.0, (low.v + high.v) / 2.0};
}

}  // namespace

TurnScatter ScatterBefore(const std::vector<MagneticReading>& raw, TurnPlane plane) {
  std::vector<PlanePoint> points;
  for (const auto& reading : raw) points.push_back(InPlane(reading, plane));
  return ScatterAbout(MiddleOfBox(points), points);
}

TurnScatter ScatterAfter(const std::vector<MagneticReading>& raw, TurnPlane plane,
                         const Incline_MagneticCorrectParameter& correction) {
  std::vector<PlanePoint> points;
  for (const auto& reading : raw) {
    points.push_back(InPlane(CorrectReading(correction, reading), plane));
  }
  return ScatterAbout({}, points);
}

}  // namespace tiltpole::cli
