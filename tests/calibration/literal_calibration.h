#pragma once

// The literal writing of a whole calibration. Compiled with optimisation in every build, since it
// runs fits by the hundred thousand.

#include <limits>
#include <vector>

#include "support/message_capture.h"
#include "tiltpole/matrix/CSZMatrix.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole_test {

struct CorrectionOutcome {
  int result = 0;
  tiltpole::Incline_MagneticCorrectParameter par;
  std::vector<ShownMessage> shown;
  int passes = 0;
  long ellipseFits = 0;
  long lineFits = 0;
};

struct CalibrationOutcome {
  int result = 0;
  tiltpole::Incline_MagneticCorrectParameter par_A;
  tiltpole::Incline_MagneticCorrectParameter par_B;
  tiltpole::Incline_MagneticTranslationParameter trans;
  std::vector<ShownMessage> shown;
  int passes = 0;
  long ellipseFits = 0;
  long lineFits = 0;
  bool tookTooLong = false;
};

struct Session {
  std::vector<tiltpole::PoseSensorData> horizontal;
  std::vector<tiltpole::PoseSensorData> vertical;
};

/// The correction of one magnetometer with every loop capped at @p cap.
CorrectionOutcome LiteralMagCorrPara(const tiltpole::CSZMatrix& horizontal,
                                     const tiltpole::CSZMatrix& vertical, int cap = 1000);

/// The calibration of both magnetometers, from default records. Gives up where that takes far more
/// than @p mostFits; the outcome says so and holds nothing else.
CalibrationOutcome LiteralAdjust(const Session& session,
                                 long mostFits = std::numeric_limits<long>::max());

/// The same with the library's own matrix class.
CalibrationOutcome LiteralAdjustWithCSZMatrix(const Session& session);

/// One ellipse fit: 1 or 0 and the five coefficients.
struct EllipseOutcome {
  int result = 0;
  std::vector<double> coefficients;
};
EllipseOutcome LiteralEllipseFit(const tiltpole::CSZMatrix& data, int plane);

/// One pair of line fits.
std::vector<double> LiteralLineFit(const tiltpole::CSZMatrix& data, int axis);

}  // namespace tiltpole_test
