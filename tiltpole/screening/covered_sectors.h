#pragma once

/// @file
/// Which parts of the circle a turn has covered.

#include <bitset>
#include <cstdint>

#include "tiltpole/export.h"
#include "tiltpole/screening/PoseSensorDataArray.h"

namespace tiltpole {

/// Sectors of the circle, the one that begins at azimuth 0 first.
using SectorSet = std::bitset<360>;

/// Which sectors of the circle hold a record, by the records' azimuths as they stand.
/// GetRecordRate() and IsRecordOK() of both screenings count these; a host can show where a turn
/// has gaps.
///
/// @param[in] records      the records; null entries fill nothing
/// @param[in] sectorAngle  width of a sector [degrees]; the circle has 360 / sectorAngle sectors,
///                         the quotient truncated, so a rest of it may belong to none
/// @return one for each sector that holds a record, zero for the others and beyond the last sector.
///         A record exactly on a border fills no sector. All zero for an angle below 1. One pass
///         over the records, at most.
TILTPOLE_EXPORT SectorSet CoveredSectors(const PoseSensorDataArray& records,
                                         std::int32_t sectorAngle);

}  // namespace tiltpole
