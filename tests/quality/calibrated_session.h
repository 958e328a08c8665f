#pragma once

// A simulated session, calibrated by the library and judged.

#include <string>
#include <vector>

#include "quality/simulated_session.h"
#include "support/message_capture.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"
#include "tiltpole/quality/calibration_quality.h"

namespace tiltpole_test {

struct Calibrated {
  int result = 0;
  tiltpole::Incline_MagneticCorrectParameter A;
  tiltpole::Incline_MagneticCorrectParameter B;
  tiltpole::Incline_MagneticTranslationParameter translation;
  std::vector<std::wstring> messages;
  tiltpole::CalibrationQuality quality;
};

inline Calibrated CalibrateAndJudge(const std::vector<tiltpole::PoseSensorData>& horizontal,
                                    const std::vector<tiltpole::PoseSensorData>& vertical) {
  tiltpole::CInclineSensor_MagneticAdjust adjust;
  for (const tiltpole::PoseSensorData& sample : horizontal) adjust.Horizontal_Add(&sample);
  for (const tiltpole::PoseSensorData& sample : vertical) adjust.Vertical_Add(&sample);
  Calibrated out;
  const MessageCapture capture;
  out.result = adjust.Adjust();
  for (const ShownMessage& message : capture.shown) out.messages.push_back(message.text);
  out.A = adjust.GetCorrectPar_A();
  out.B = adjust.GetCorrectPar_B();
  out.translation = adjust.GetCoorTrans();
  out.quality = out.result == 1
                    ? JudgeCalibration(horizontal, vertical, out.A, out.B, out.translation)
                    : JudgeFailedCalibration(horizontal, vertical, out.messages);
  return out;
}

inline SimulatedSession RandomSession(Random& random, double noise_share, double sway) {
  SimulatedSession session;
  session.dip = random.Uniform(30.0, 70.0) * (random.Uniform(0.0, 1.0) < 0.5 ? -1.0 : 1.0);
  session.A = RandomMagnetometer(random, session.strength, noise_share * session.strength);
  session.B = RandomMagnetometer(random, session.strength, noise_share * session.strength);
  session.from = random.Uniform(0.0, 360.0);
  session.vertical_heading = random.Uniform(0.0, 360.0);
  session.sway = sway;
  session.tilt_noise = 0.05;
  session.samples = 70;
  return session;
}

// Lets every raw axis answer to all three of the field's: more than the correction can undo.
inline void AddCrossTerms(Random& random, double size, SimulatedMagnetometer& sensor) {
  sensor.gain[0][1] = random.Uniform(-size, size);
  sensor.gain[0][2] = random.Uniform(-size, size);
  sensor.gain[1][2] = random.Uniform(-size, size);
}

}  // namespace tiltpole_test
