#pragma once

// The calibration object with its protected operations open to tests.

#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

namespace tiltpole_test {

class AdjustAccess : public tiltpole::CInclineSensor_MagneticAdjust {
 public:
  using CInclineSensor_MagneticAdjust::EllipseFit;
  using CInclineSensor_MagneticAdjust::LineFit;
  using CInclineSensor_MagneticAdjust::MagCorrPara;
  using CInclineSensor_MagneticAdjust::MagneticCoordinateOffset;
  using CInclineSensor_MagneticAdjust::OverDeterminedEquationSolution;
};

}  // namespace tiltpole_test
