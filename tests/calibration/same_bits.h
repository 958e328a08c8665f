#pragma once

// Equality of parameters to the last bit.

#include "support/same_bits.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"

namespace tiltpole_test {

inline bool SameBits(const tiltpole::Incline_MagneticCorrectParameter& p,
                     const tiltpole::Incline_MagneticCorrectParameter& q) {
  return SameBits(p.x0, q.x0) && SameBits(p.y0, q.y0) && SameBits(p.z0, q.z0) &&
         SameBits(p.a, q.a) && SameBits(p.b, q.b) && SameBits(p.c, q.c) && SameBits(p.d, q.d) &&
         SameBits(p.e, q.e);
}

inline bool SameBits(const tiltpole::Incline_MagneticTranslationParameter& p,
                     const tiltpole::Incline_MagneticTranslationParameter& q) {
  return SameBits(p.dX, q.dX) && SameBits(p.dY, q.dY) && SameBits(p.dZ, q.dZ);
}

}  // namespace tiltpole_test
