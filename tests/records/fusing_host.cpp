// Includes no header of the standard library, whose inline functions would be compiled here for a
// processor that runs the whole program.

#include "records/fusing_host.h"

namespace tiltpole_test {

double Fused(double a, double b, double c) { return a * b + c; }

tiltpole::MagneticReading CorrectedByAFusingHost(
    const tiltpole::Incline_MagneticCorrectParameter& par, const tiltpole::MagneticReading& raw) {
  return tiltpole::CorrectReading(par, raw);
}

}  // namespace tiltpole_test
