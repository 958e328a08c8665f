#pragma once

// One calibration from the samples of both turns, with its verdict.

#include <string>
#include <vector>

#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole::field {

/// The raw samples of both turns.
struct Turns {
  std::vector<PoseSensorData> horizontal;
  std::vector<PoseSensorData> vertical;
};

/// What came of fitting parameters, or of judging them.
struct CalibrationOutcome {
  bool fitted =
      false;  ///< false: the fit failed, or nothing was fitted since parameters were judged
  bool judged_only = false;          ///< parameters from elsewhere were held against the turns
  CInclineSensor_Position position;  ///< carries the parameters
  CalibrationQuality quality;
  std::vector<std::wstring> messages;  ///< what the library said meanwhile
};

/// Fits both magnetometers to the turns. May run on any thread; everything it uses is its own.
CalibrationOutcome FitTurns(const Turns& turns);

/// Judges parameters by the turns of the pole at hand.
CalibrationOutcome JudgeParameters(const Turns& turns, const CInclineSensor_Position& position);

}  // namespace tiltpole::field
