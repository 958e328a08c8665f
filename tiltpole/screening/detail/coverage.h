#pragma once

#include <cstdint>

#include "tiltpole/screening/PoseSensorDataArray.h"

namespace tiltpole::detail {

// How much of the circle a set covers, by its records' azimuths as they stand. The circle is cut
// into 360 / sectorAngle sectors (truncated, so a rest of it may belong to none). One pass over the
// set, for any sector angle.

// Whether every sector holds a record.
bool IsEverySectorFilled(const PoseSensorDataArray& records, std::int32_t sectorAngle);

// The filled share of the circle [percent].
int FilledPercentage(const PoseSensorDataArray& records, std::int32_t sectorAngle);

// Whether some neighbours of the array lie more than 60 degrees apart.
bool HasGap(const PoseSensorDataArray& arr);

}  // namespace tiltpole::detail
