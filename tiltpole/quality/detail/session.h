#pragma once

// The samples of a calibration as the judge sees them: raw and corrected readings of each
// magnetometer, turn by turn, without the samples that hold anything but numbers.

#include <vector>

#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/detail/sensor_error.h"
#include "tiltpole/quality/detail/turn.h"

namespace tiltpole::detail {

using Samples = std::vector<PoseSensorData>;

// The samples whose six readings are finite.
Samples FiniteSamples(const Samples& samples);

// Levels the samples whose tilts no axis can have: those beyond 90 degrees by more than noise, or
// not numbers. Where more than a tenth of a session are such, its tilts are no elevations, and all
// count as missing.
void LevelImpossibleTilts(Samples& horizontal, Samples& vertical);

std::vector<Vector3> RawReadings_A(const Samples& samples);
std::vector<Vector3> RawReadings_B(const Samples& samples);

// Corrected samples as fields in the frame of the sensor; a tilt that is no number counts as 0.
TurnReadings Readings_A(const Samples& corrected);
TurnReadings Readings_B(const Samples& corrected);

Samples Corrected(const Samples& raw, const Incline_MagneticCorrectParameter& correction_A,
                  const Incline_MagneticCorrectParameter& correction_B);

// The figures of raw readings, for a calibration that failed as for one that came out.
void FillFiguresBefore(const std::vector<Vector3>& horizontal, const std::vector<Vector3>& vertical,
                       MagnetometerQuality& quality);

void FillFiguresAfter(const TurnReadings& horizontal, const TurnReadings& vertical,
                      MagnetometerQuality& quality);

HeadingDifference DifferenceOver(const TurnReadings& horizontal_A,
                                 const TurnReadings& horizontal_B);

}  // namespace tiltpole::detail
