#include "tiltpole/screening/covered_sectors.h"

#include <cstddef>

#include "tiltpole/screening/detail/coverage.h"

namespace tiltpole {

// Both borders of a sector are outside of it. The azimuth's whole degrees give the sector exactly:
// for i = whole / angle, i * angle <= whole <= azimuth < whole + 1 <= (i + 1) * angle, so a
// quotient that is rounded up cannot put a record into its neighbour sector.
SectorSet CoveredSectors(const PoseSensorDataArray& records, std::int32_t sectorAngle) {
  SectorSet covered;
  const int sectors = detail::SectorCount(sectorAngle);
  int count = 0;
  for (const PoseSensorData* rec : records) {
    if (count == sectors) break;
    if (rec == nullptr) continue;
    const double azimuth = rec->Azimuth;
    if (!(azimuth > 0.0 && azimuth < sectors * sectorAngle)) continue;
    const int sector = static_cast<int>(azimuth) / sectorAngle;
    if (azimuth == sector * sectorAngle || covered[static_cast<std::size_t>(sector)]) continue;
    covered[static_cast<std::size_t>(sector)] = true;
    ++count;
  }
  return covered;
}

}  // namespace tiltpole
