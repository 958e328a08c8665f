#include "tiltpole/screening/detail/coverage.h"

#include <bitset>
#include <cmath>
#include <cstddef>

namespace tiltpole::detail {
namespace {

constexpr int kFullCircle = 360;      // degrees
constexpr double kLargestGap = 60.0;  // degrees

// Both borders of a sector are outside of it. The azimuth's whole degrees give the sector exactly:
// for i = whole / angle, i * angle <= whole <= azimuth < whole + 1 <= (i + 1) * angle, so a
// quotient that is rounded up cannot put a record into its neighbour sector.
int CountFilledSectors(const PoseSensorDataArray& records, int sectorAngle, int sectors) {
  std::bitset<kFullCircle> filled;
  int count = 0;
  for (const PoseSensorData* rec : records) {
    if (rec == nullptr) continue;
    const double azimuth = rec->Azimuth;
    if (!(azimuth > 0.0 && azimuth < sectors * sectorAngle)) continue;
    const int sector = static_cast<int>(azimuth) / sectorAngle;
    if (azimuth == sector * sectorAngle || filled[static_cast<std::size_t>(sector)]) continue;
    filled[static_cast<std::size_t>(sector)] = true;
    if (++count == sectors) break;
  }
  return count;
}

}  // namespace

bool IsEverySectorFilled(const PoseSensorDataArray& records, std::int32_t sectorAngle) {
  if (sectorAngle < 1) return false;
  const int sectors = kFullCircle / sectorAngle;
  if (records.GetSize() < sectors) return false;
  // An angle beyond the full circle leaves no sector, and so none that could be missing.
  return CountFilledSectors(records, sectorAngle, sectors) == sectors;
}

int FilledPercentage(const PoseSensorDataArray& records, std::int32_t sectorAngle) {
  // No angle, or a negative one, makes no sectors.
  if (sectorAngle < 1) return 0;
  const int filled = CountFilledSectors(records, sectorAngle, kFullCircle / sectorAngle);
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
