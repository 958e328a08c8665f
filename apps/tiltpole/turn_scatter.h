#pragma once

// How round a turn is.

#include <vector>

#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole::cli {

/// The two axes in whose plane the readings of a turn trace a circle.
enum class TurnPlane {
  XY,  ///< about the vertical
  XZ,  ///< about the y axis
};

/// The distances of a turn's readings from the centre of their circle [counts].
struct TurnScatter {
  double radius = 0.0;   ///< their mean
  double rms = 0.0;      ///< their deviation from it
  double largest = 0.0;  ///< the largest deviation
};

/// The scatter of raw readings, about the middle of their box: no better centre is known yet.
TurnScatter ScatterBefore(const std::vector<MagneticReading>& raw, TurnPlane plane);

/// The scatter of the corrected readings, about the origin, where the correction puts the centre.
TurnScatter ScatterAfter(const std::vector<MagneticReading>& raw, TurnPlane plane,
                         const Incline_MagneticCorrectParameter& correction);

}  // namespace tiltpole::cli
