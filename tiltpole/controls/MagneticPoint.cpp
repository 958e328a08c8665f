#include "tiltpole/controls/MagneticPoint.h"

#include "tiltpole/platform/saturate.h"

namespace tiltpole {

MagneticPoint InWholeCounts(double x, double y, double z) {
  using detail::TruncateSaturated;
  return {TruncateSaturated(x), TruncateSaturated(y), TruncateSaturated(z)};
}

}  // namespace tiltpole
