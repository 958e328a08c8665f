#include "apps/session/missing_ranges.h"

#include <cstddef>

namespace tiltpole::session {
namespace {

void JoinThroughZero(std::vector<MissingRange>& ranges) {
  if (ranges.size() < 2 || ranges.front().from != 0 || ranges.back().to != 360) return;
  ranges.back().to = ranges.front().to;
  ranges.erase(ranges.begin());
}

}  // namespace

std::vector<MissingRange> MissingRanges(const SectorSet& covered, int sector_angle) {
  std::vector<MissingRange> ranges;
  for (int from = 0; from + sector_angle <= 360; from += sector_angle) {
    if (covered[static_cast<std::size_t>(from / sector_angle)]) continue;
    const bool goes_on = !ranges.empty() && ranges.back().to == from;
    if (goes_on) ranges.back().to += sector_angle;
    if (!goes_on) ranges.push_back({from, from + sector_angle});
  }
  JoinThroughZero(ranges);
  return ranges;
}

}  // namespace tiltpole::session
