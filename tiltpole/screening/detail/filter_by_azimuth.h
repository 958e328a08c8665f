#pragma once

#include "tiltpole/screening/detail/owned_array.h"

namespace tiltpole::detail {

// Drops the stretches of an array, sorted by azimuth, in which too many azimuths repeat. Null where
// nothing is left. Each record is looked at in at most ten windows.
OwnedArray FilterByAzimuth(const PoseSensorDataArray* arr);

}  // namespace tiltpole::detail
