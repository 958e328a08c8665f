#pragma once

// Where a turn has gaps, for those who turn the pole.

#include <vector>

#include "tiltpole/screening/covered_sectors.h"

namespace tiltpole::session {

/// A stretch of directions without a sample [degrees]; from is the larger one where it runs
/// through 0.
struct MissingRange {
  int from = 0;
  int to = 0;

  friend bool operator==(const MissingRange& a, const MissingRange& b) {
    return a.from == b.from && a.to == b.to;
  }
};

/// The stretches that no covered sector belongs to, by direction; one through 0 comes last.
/// @param sector_angle  width of a sector, which divides 360 [degrees]
std::vector<MissingRange> MissingRanges(const SectorSet& covered, int sector_angle);

}  // namespace tiltpole::session
