#pragma once

// The parameters that measuring uses, and how far they can be trusted.

#include <optional>
#include <string>
#include <vector>

#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/quality/calibration_quality.h"

namespace tiltpole::field {

/// Where parameters come from and what is known of them.
struct CalibrationState {
  CInclineSensor_Position position;  ///< carries the parameters
  /// False for the defaults, and for parameters that the pole's own turns prove unusable.
  bool calibrated = false;
  /// The verdict of the pole's own turns; empty for parameters that were only loaded.
  std::optional<Verdict> verdict;
  RigorousTipOptions options;  ///< the headings' standard deviations
};

/// The parameters at the start: nothing is calibrated.
CalibrationState Uncalibrated();

/// Parameters with the verdict of the pole's own turns.
CalibrationState Judged(const CInclineSensor_Position& position, const CalibrationQuality& quality);

/// What was read from a parameter file.
struct LoadedParameters {
  CalibrationState state;
  /// What is odd about the file; not empty where its parameters are used with care only.
  std::vector<std::string> warnings;
};

/// Reads a parameter file; session::InputError says what is wrong with it, and nothing was changed.
/// @param path  UTF-8
LoadedParameters LoadParameters(const std::string& path);

/// Writes a parameter file, whole or not at all; session::OutputError if that fails.
void SaveParameters(const std::string& path, const CInclineSensor_Position& position);

/// For the points file: `none`, `not checked`, `good`, `usable`, `poor` or `unusable`.
std::string NameOf(const CalibrationState& state);

}  // namespace tiltpole::field
