#include "apps/tiltpole/report/turn_trace.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tiltpole::cli {
namespace {

// No magnetometer counts so far; beyond it the values along the axes would not be readable.
constexpr double kLargestDrawn = 1e12;
constexpr std::size_t kFarthestPoints = 200;
constexpr double kDegreesPerRadian = 57.29577951308232;

struct Axes {
  double x, y, z;
};

Axes OwnAxes(const PoseSensorData& s, Magnetometer magnetometer) {
  if (magnetometer == Magnetometer::A) return {s.MagneticX_A, s.MagneticY_A, s.MagneticZ_A};
  return {s.MagneticX_B, s.MagneticY_B, s.MagneticZ_B};
}

// The correction turns the signs of y and z; B is mounted half a turn from A.
Axes SensorAxes(const PoseSensorData& s, Magnetometer magnetometer) {
  if (magnetometer == Magnetometer::A) return {s.MagneticX_A, -s.MagneticY_A, -s.MagneticZ_A};
  return {-s.MagneticX_B, s.MagneticY_B, -s.MagneticZ_B};
}

bool IsDrawable(double value) { return std::fabs(value) < kLargestDrawn; }

double Azimuth(double first, double second) {
  const double degrees = std::atan2(second, first) * kDegreesPerRadian;
  return degrees < 0.0 ? degrees + 360.0 : degrees;
}

template <typename AxesOf>
TurnTrace TraceOf(const std::vector<PoseSensorData>& samples, Magnetometer magnetometer, Turn turn,
                  TurnTrace trace, AxesOf axes_of) {
  if (!IsDrawable(trace.radius) || !IsDrawable(trace.centre_first) ||
      !IsDrawable(trace.centre_second)) {
    return {};
  }
  for (const PoseSensorData& sample : samples) {
    const Axes axes = axes_of(sample, magnetometer);
    const double second = turn == Turn::Horizontal ? axes.y : axes.z;
    if (!IsDrawable(axes.x) || !IsDrawable(second)) continue;
    const double off_first = axes.x - trace.centre_first;
    const double off_second = second - trace.centre_second;
    trace.points.push_back({axes.x, second, Azimuth(off_first, off_second),
                            std::hypot(off_first, off_second) - trace.radius});
  }
  return trace;
}

}  // namespace

TurnTrace TraceBefore(const std::vector<PoseSensorData>& raw, Magnetometer magnetometer, Turn turn,
                      const TurnFigures& figures) {
  return TraceOf(raw, magnetometer, turn,
                 {figures.CentreFirst, figures.CentreSecond, figures.RadiusMean, {}}, OwnAxes);
}

TurnTrace TraceAfter(const std::vector<PoseSensorData>& corrected, Magnetometer magnetometer,
                     Turn turn, const TurnFigures& figures) {
  return TraceOf(corrected, magnetometer, turn, {0.0, 0.0, figures.RadiusMean, {}}, SensorAxes);
}

std::vector<TracePoint> Thinned(const TurnTrace& trace) {
  const std::size_t count = trace.points.size();
  if (count <= kMostPoints) return trace.points;
  std::vector<std::size_t> places(count);
  std::iota(places.begin(), places.end(), std::size_t{0});
  const auto farthest_end = places.begin() + kFarthestPoints;
  std::nth_element(places.begin(), farthest_end, places.end(), [&](std::size_t a, std::size_t b) {
    return std::fabs(trace.points[a].distance) > std::fabs(trace.points[b].distance);
  });
  std::sort(farthest_end, places.end());

  std::vector<TracePoint> shown;
  for (auto place = places.begin(); place != farthest_end; ++place) {
    shown.push_back(trace.points[*place]);
  }
  constexpr std::size_t kEven = kMostPoints - kFarthestPoints;
  const std::size_t others = count - kFarthestPoints;
  for (std::size_t i = 0; i < kEven; ++i) {
    // i * others / kEven, without a product that could overflow.
    const std::size_t step = others / kEven * i + others % kEven * i / kEven;
    shown.push_back(trace.points[places[kFarthestPoints + step]]);
  }
  return shown;
}

}  // namespace tiltpole::cli
