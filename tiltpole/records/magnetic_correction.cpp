#include "tiltpole/records/magnetic_correction.h"

#include <cmath>

namespace tiltpole {

MagneticReading CorrectReading(const Incline_MagneticCorrectParameter& par,
                               const MagneticReading& raw) {
  return {raw.X - par.x0,                             //
          -(par.a * raw.X + par.b * raw.Y - par.y0),  //
          -(par.c * raw.X + par.d * raw.Y + par.e * raw.Z - par.z0)};
}

MagneticReading ExpectedReading_B(const Incline_MagneticTranslationParameter& trans,
                                  const MagneticReading& corrected_A) {
  return {-(corrected_A.X + trans.dX), -(corrected_A.Y + trans.dY), corrected_A.Z + trans.dZ};
}

double SumOfDifferences(const MagneticReading& a, const MagneticReading& b) {
  return std::fabs(a.X - b.X) + std::fabs(a.Y - b.Y) + std::fabs(a.Z - b.Z);
}

}  // namespace tiltpole
