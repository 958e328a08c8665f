#pragma once

// From figures to findings: what is wrong, how much it matters, and what the operator can do.

#include <string>
#include <vector>

#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/detail/session.h"
#include "tiltpole/quality/detail/turn.h"

namespace tiltpole::detail {

using Reasons = std::vector<QualityReason>;

// A session without the samples that hold anything but numbers.
struct RawSession {
  Samples Horizontal;
  Samples Vertical;
  int Left_Out = 0;  // samples that were not finite
};

// What the raw samples show, whether the calibration came out or not: too few, alike, on a line,
// not numbers.
void FindFaultsOfSamples(const RawSession& session, Reasons& reasons);

void FindMissingDirections(const CalibrationQuality& quality, Reasons& reasons);

// What the corrected samples show.
void FindFaultsOfHeading(const CalibrationQuality& quality, Reasons& reasons);
void FindFaultsOfField(const CalibrationQuality& quality, Reasons& reasons);
void FindFaultsOfParameters(const Incline_MagneticCorrectParameter& correction,
                            ConcernedMagnetometer magnetometer, Reasons& reasons);
// Parameters that leave a clean turn far from the circle about the origin were made elsewhere.
void FindForeignParameters(const TurnReadings& horizontal, const TurnReadings& vertical,
                           ConcernedMagnetometer magnetometer, Reasons& reasons);
// A lean that turns with the sensor shifts the centre of the turn, which the fit takes for an
// offset.
void FindLean(const TurnReadings& horizontal, double dip, Reasons& reasons);
void FindMissingTilts(const TurnReadings& vertical, Reasons& reasons);
void FindUnfitTranslation(const Samples& corrected,
                          const Incline_MagneticTranslationParameter& translation,
                          Reasons& reasons);

// What a failed calibration's raw samples and messages tell about it.
void FindFaultsOfFit(const RawSession& session, const std::vector<std::wstring>& messages,
                     Reasons& reasons);

// Sorts by weight, worst first, and takes the verdict from it.
void Conclude(CalibrationQuality& quality);

}  // namespace tiltpole::detail
