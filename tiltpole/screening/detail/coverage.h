#pragma once

#include <cstdint>

#include "tiltpole/screening/PoseSensorDataArray.h"

namespace tiltpole::detail {

// How much of the circle a set covers, by its records' azimuths as they stand and in sectors as
// CoveredSectors() cuts them. One pass over the set, for any sector angle.

// How many sectors there are; 0 for an angle below 1.
int SectorCount(std::int32_t sectorAngle);

// Whether every sector holds a record.
bool IsEverySectorFilled(const PoseSensorDataArray& records, std::int32_t sectorAngle);

// The filled share of the circle [percent].
int FilledPercentage(const PoseSensorDataArray& records, std::int32_t sectorAngle);

// Whether some neighbours of the array lie more than 60 degrees apart.
bool HasGap(const PoseSensorDataArray& arr);

}  // namespace tiltpole::detail
