#pragma once

// What the pictures of a turn show of it: each reading's place in the plane, its direction and its
// distance from the circle.

#include <cstddef>
#include <vector>

#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole::cli {

enum class Magnetometer { A, B };
enum class Turn { Horizontal, Vertical };

struct TracePoint {
  double first = 0.0;     ///< x [counts]
  double second = 0.0;    ///< y in the horizontal turn, z in the vertical one [counts]
  double azimuth = 0.0;   ///< about the circle's centre, from the first axis [degrees, 0 to 360)
  double distance = 0.0;  ///< from the circle, outwards positive [counts]
};

struct TurnTrace {
  double centre_first = 0.0;
  double centre_second = 0.0;
  double radius = 0.0;
  std::vector<TracePoint> points;  ///< what can be drawn: finite, and not beyond all measure
};

/// Raw readings about the circle that fits them best, on the magnetometer's own axes.
TurnTrace TraceBefore(const std::vector<PoseSensorData>& raw, Magnetometer magnetometer, Turn turn,
                      const TurnFigures& figures);

/// Corrected readings about the origin, on the axes of the sensor: B's are turned from its
/// mounting.
TurnTrace TraceAfter(const std::vector<PoseSensorData>& corrected, Magnetometer magnetometer,
                     Turn turn, const TurnFigures& figures);

/// No picture shows more points than this.
inline constexpr std::size_t kMostPoints = 2000;

/// At most kMostPoints of the trace's points: evenly taken ones, and those farthest off the circle,
/// which are what the reader looks for.
std::vector<TracePoint> Thinned(const TurnTrace& trace);

}  // namespace tiltpole::cli
