#pragma once

// The report on a calibration, for people and for programs.

#include <ostream>
#include <string>

#include <nlohmann/json.hpp>

#include "tiltpole/quality/calibration_quality.h"

namespace tiltpole::cli {

/// `good`, `usable`, `poor` or `unusable`.
std::string NameOf(Verdict verdict);

/// The report as tables, the verdict and its reasons at the end.
void PrintQuality(const CalibrationQuality& quality, std::ostream& out);

/// The reasons alone, a line each.
void PrintReasons(const CalibrationQuality& quality, std::ostream& out);

/// All of the report. What is not a number becomes null.
nlohmann::ordered_json ToJson(const CalibrationQuality& quality);

}  // namespace tiltpole::cli
