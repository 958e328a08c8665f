#pragma once

/// @file
/// All of the library but the controls, which a host includes by their own names.

#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"
#include "tiltpole/estimation/CKFilter.h"
#include "tiltpole/estimation/CMagneticConvert.h"
#include "tiltpole/matrix/CSZMatrix.h"
#include "tiltpole/persistence/CParameterFile.h"
#include "tiltpole/platform/message_box.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/positioning/parameter_keys.h"
#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/parameter_check.h"
#include "tiltpole/quality/point_quality.h"
#include "tiltpole/quality/quality_reason.h"
#include "tiltpole/quality/rigorous_tip.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/magnetic_correction.h"
#include "tiltpole/records/xyhCoordinate.h"
#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"
#include "tiltpole/screening/PoseSensorCenterParameter.h"
#include "tiltpole/screening/PoseSensorDataArray.h"
#include "tiltpole/screening/covered_sectors.h"
#include "tiltpole/version.h"
