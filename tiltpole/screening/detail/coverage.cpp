#include "tiltpole/screening/detail/coverage.h"

#include <cmath>

#include "tiltpole/screening/covered_sectors.h"

namespace tiltpole::detail {
namespace {

constexpr int kFullCircle = 360;      // degrees
constexpr double kLargestGap = 60.0;  // degrees

int FilledSectors(const PoseSensorDataArray& records, std::int32_t sectorAngle) {
  return static_cast<int>(CoveredSectors(records, sectorAngle).count());
}

}  // namespace

int SectorCount(std::int32_t sectorAngle) {
  // No angle, or a negative one, makes no sectors.
  return sectorAngle < 1 ? 0 : kFullCircle / sectorAngle;
}

bool IsEverySectorFilled(const PoseSensorDataArray& records, std::int32_t sectorAngle) {
  if (sectorAngle < 1) return false;
  const int sectors = SectorCount(sectorAngle);
  if (records.GetSize() < sectors) return false;
  // An angle beyond the full circle leaves no sector, and so none that could be missing.
  return FilledSectors(records, sectorAngle) == sectors;
}

int FilledPercentage(const PoseSensorDataArray& records, std::int32_t sectorAngle) {
  if (SectorCount(sectorAngle) == 0) return 0;
  const int filled = FilledSectors(records, sectorAngle);
  return static_cast<int>(std::lround(filled * sectorAngle * 100.0 / kFullCircle));
}

// Deliberate: only neighbours in the array are compared. The gap from the last record round to the
// first counts for nothing.
bool HasGap(const PoseSensorDataArray& arr) {
  const PoseSensorData* previous = nullptr;
  for (const PoseSensorData* rec : arr) {
    if (rec == nullptr) continue;
    if (previous != nullptr && std::fabs(rec->Azimuth - previous->Azimuth) > kLargestGap) {
      return true;
    }
    previous = rec;
  }
  return false;
}

}  // namespace tiltpole::detail
