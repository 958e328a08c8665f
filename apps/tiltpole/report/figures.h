#pragma once

// The figures of the report as tables.

#include "apps/tiltpole/fitted_parameters.h"
#include "apps/tiltpole/report/markup.h"
#include "tiltpole/quality/calibration_quality.h"

namespace tiltpole::cli {

void WriteTurnFigures(Markup& page, const CalibrationQuality& quality);
void WriteHeadingFigures(Markup& page, const CalibrationQuality& quality);
void WriteFieldFigures(Markup& page, const CalibrationQuality& quality);
void WriteParameters(Markup& page, const FittedParameters& parameters);

}  // namespace tiltpole::cli
