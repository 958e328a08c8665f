#include "apps/field/calibration_fit.h"

#include <cmath>

#include "apps/field/library_messages.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

namespace tiltpole::field {
namespace {

bool IsFinite(const Incline_MagneticCorrectParameter& par) {
  return std::isfinite(par.a + par.b + par.c + par.d + par.e + par.x0 + par.y0 + par.z0);
}

// Readings beyond all measure can overflow in the fit, which then ends without a failure.
bool IsFinite(const CInclineSensor_MagneticAdjust& adjust) {
  const Incline_MagneticTranslationParameter translation = adjust.GetCoorTrans();
  return IsFinite(adjust.GetCorrectPar_A()) && IsFinite(adjust.GetCorrectPar_B()) &&
         std::isfinite(translation.dX + translation.dY + translation.dZ);
}

CalibrationQuality Judge(const Turns& turns, const CInclineSensor_Position& position) {
  return JudgeCalibration(turns.horizontal, turns.vertical, position.GetMagneticCorrectPar_A(),
                          position.GetMagneticCorrectPar_B(), position.GetMagneticTranslationPar());
}

}  // namespace

CalibrationOutcome FitTurns(const Turns& turns) {
  CalibrationOutcome outcome;
  TakeLibraryMessages();
  CInclineSensor_MagneticAdjust adjust;
  for (const PoseSensorData& sample : turns.horizontal) adjust.Horizontal_Add(&sample);
  for (const PoseSensorData& sample : turns.vertical) adjust.Vertical_Add(&sample);
  outcome.fitted = adjust.Adjust() != 0 && IsFinite(adjust);
  outcome.messages = TakeLibraryMessages();
  if (!outcome.fitted) {
    outcome.quality = JudgeFailedCalibration(turns.horizontal, turns.vertical, outcome.messages);
    return outcome;
  }
  outcome.position.SetMagneticCorrectPar_A(adjust.GetCorrectPar_A());
  outcome.position.SetMagneticCorrectPar_B(adjust.GetCorrectPar_B());
  outcome.position.SetMagneticTranslationPar(adjust.GetCoorTrans());
  outcome.quality = Judge(turns, outcome.position);
  return outcome;
}

CalibrationOutcome JudgeParameters(const Turns& turns, const CInclineSensor_Position& position) {
  CalibrationOutcome outcome;
  outcome.judged_only = true;
  outcome.position = position;
  outcome.quality = Judge(turns, position);
  return outcome;
}

}  // namespace tiltpole::field
