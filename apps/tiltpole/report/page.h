#pragma once

// The report on a calibration as one page that needs nothing else: no network, no script.

#include <optional>
#include <string>
#include <vector>

#include "apps/tiltpole/fitted_parameters.h"
#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole::cli {

struct CalibrationReport {
  std::string session;    ///< its name, UTF-8
  std::string selection;  ///< how the samples were chosen from it; empty where all were taken
  const std::vector<PoseSensorData>& horizontal;  ///< raw
  const std::vector<PoseSensorData>& vertical;    ///< raw
  std::optional<FittedParameters> parameters;     ///< nothing where the calibration failed
  const CalibrationQuality& quality;
};

/// HTML that an XML parser takes as well. The same report gives the same bytes everywhere.
std::string ReportPage(const CalibrationReport& report);

}  // namespace tiltpole::cli
