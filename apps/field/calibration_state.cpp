#include "apps/field/calibration_state.h"

#include <filesystem>

#include "apps/session/input_error.h"
#include "apps/session/parameter_file.h"

namespace tiltpole::field {
namespace {

// Without a calibration the heading can point anywhere; this stands for it in the figures.
constexpr double kUncalibratedDeviation = 60.0;
// Parameters that nobody held against this pole: what a verdict of "good" would still allow.
constexpr double kUncheckedDeviation = 2.0;

void SetDeviations(CalibrationState& state, double degrees) {
  state.options.HeadingDeviation_A = degrees;
  state.options.HeadingDeviation_B = degrees;
}

}  // namespace

CalibrationState Uncalibrated() {
  CalibrationState state;
  SetDeviations(state, kUncalibratedDeviation);
  return state;
}

CalibrationState Judged(const CInclineSensor_Position& position,
                        const CalibrationQuality& quality) {
  CalibrationState state;
  state.position = position;
  state.verdict = quality.Result;
  state.calibrated = quality.Result != Verdict::Unusable;
  state.options = TipOptionsFrom(quality);
  state.options.MagneticBiasAngle_A = position.GetMagneticBiasAngle_A();
  state.options.MagneticBiasAngle_B = position.GetMagneticBiasAngle_B();
  return state;
}

LoadedParameters LoadParameters(const std::string& path) {
  const session::ParameterFileContent content = session::ReadParameterFile(path);
  if (!content.problems.empty()) throw session::InputError(path, content.problems.front());
  LoadedParameters loaded;
  loaded.warnings = content.warnings;
  loaded.state.position = content.position;
  loaded.state.calibrated = content.calibrated;
  SetDeviations(loaded.state,
                loaded.state.calibrated ? kUncheckedDeviation : kUncalibratedDeviation);
  loaded.state.options.MagneticBiasAngle_A = content.position.GetMagneticBiasAngle_A();
  loaded.state.options.MagneticBiasAngle_B = content.position.GetMagneticBiasAngle_B();
  return loaded;
}

void SaveParameters(const std::string& path, const CInclineSensor_Position& position) {
  if (position.ConfigReplace(std::filesystem::u8path(path).wstring()) != 0) return;
  throw session::OutputError(path + ": cannot be written");
}

std::string NameOf(const CalibrationState& state) {
  if (state.verdict) {
    switch (*state.verdict) {
      case Verdict::Good:
        return "good";
      case Verdict::Usable:
        return "usable";
      case Verdict::Poor:
        return "poor";
      case Verdict::Unusable:
        return "unusable";
    }
  }
  return state.calibrated ? "not checked" : "none";
}

}  // namespace tiltpole::field
