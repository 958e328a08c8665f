// Two turns of the pole, one calibration, and what it is worth.

#include <cmath>
#include <cstdio>
#include <vector>

#include "tiltpole/tiltpole.h"

namespace {

// Stands in for a sensor: turns about the vertical (headings), or about the y axis (pitches), of 72
// samples in a field of 2500 counts to the north and 4300 downwards; each magnetometer has offsets.
std::vector<tiltpole::PoseSensorData> Turn(bool horizontal) {
  constexpr double kRadian = 3.141592653589793 / 180.0;
  std::vector<tiltpole::PoseSensorData> samples;
  for (int i = 0; i < 72; ++i) {
    const double heading = horizontal ? i * 5.0 * kRadian : 0.0;
    const double pitch = horizontal ? 0.0 : i * 5.0 * kRadian;
    const double north = 2500.0 * std::cos(heading);
    const double x = north * std::cos(pitch) - 4300.0 * std::sin(pitch);
    const double y = 2500.0 * std::sin(heading);
    const double z = -north * std::sin(pitch) - 4300.0 * std::cos(pitch);
    tiltpole::PoseSensorData sample;
    sample.InclineX = std::asin(std::sin(pitch)) / kRadian;
    sample.MagneticX_A = x + 120.0;
    sample.MagneticY_A = y - 80.0;
    sample.MagneticZ_A = z + 40.0;
    sample.MagneticX_B = -x - 60.0;
    sample.MagneticY_B = -y + 30.0;
    sample.MagneticZ_B = z + 10.0;
    samples.push_back(sample);
  }
  return samples;
}

}  // namespace

int main() {
  const auto horizontal = Turn(true);
  const auto vertical = Turn(false);
  // [calibrate]
  // A host without a window of its own takes the messages of a failure itself.
  std::vector<std::wstring> messages;
  tiltpole::SetMessageBoxHandler([&](const std::wstring& text, const std::wstring&,
                                     tiltpole::MessageIcon) { messages.push_back(text); });

  tiltpole::CInclineSensor_MagneticAdjust calibration;
  for (const auto& sample : horizontal) calibration.Horizontal_Add(&sample);
  for (const auto& sample : vertical) calibration.Vertical_Add(&sample);
  const bool adjusted = calibration.Adjust() != 0;
  tiltpole::SetMessageBoxHandler(nullptr);  // the messages go away before the process does
  if (!adjusted) {
    const auto why = tiltpole::JudgeFailedCalibration(horizontal, vertical, messages);
    std::printf("%ls\n", why.Reasons.front().Sentence.c_str());
    return 1;
  }
  const auto quality =
      tiltpole::JudgeCalibration(horizontal, vertical, calibration.GetCorrectPar_A(),
                                 calibration.GetCorrectPar_B(), calibration.GetCoorTrans());
  std::printf("expected heading error: %.2f degrees\n", quality.A.Heading.RootMeanSquare);

  tiltpole::CInclineSensor_Position solver;
  solver.SetMagneticCorrectPar_A(calibration.GetCorrectPar_A());
  solver.SetMagneticCorrectPar_B(calibration.GetCorrectPar_B());
  solver.SetMagneticTranslationPar(calibration.GetCoorTrans());
  solver.ConfigReplace(L"pole.txt");
  // [calibrate]
  return solver.GetMagneticCorrectPar_A().b > 0.99 ? 0 : 1;
}
