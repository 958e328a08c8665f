#pragma once

// A host whose compiler fuses multiplications and additions wherever the processor can.

#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole_test {

/// a * b + c as such a host computes it.
double Fused(double a, double b, double c);

tiltpole::MagneticReading CorrectedByAFusingHost(
    const tiltpole::Incline_MagneticCorrectParameter& par, const tiltpole::MagneticReading& raw);

}  // namespace tiltpole_test
