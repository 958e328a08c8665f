#include "tiltpole/screening/detail/sort_by_azimuth.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "tiltpole/records/detail/angles.h"
#include "tiltpole/screening/detail/rank_set.h"

namespace tiltpole::detail {
namespace {

// A record that takes part, and how many such records stand before it in the array.
struct Entry {
  PoseSensorData* rec;
  std::size_t before;
};

using Entries = std::vector<Entry>;

bool TakesPart(const PoseSensorData* rec) { return rec != nullptr && !std::isnan(rec->Azimuth); }

bool IsSmaller(const Entry& a, const Entry& b) {
  if (a.rec->Azimuth < b.rec->Azimuth) return true;
  if (b.rec->Azimuth < a.rec->Azimuth) return false;
  return a.before < b.before;
}

Entries EntriesByAzimuth(const PoseSensorDataArray& arr) {
  Entries entries;
  for (PoseSensorData* rec : arr) {
    if (TakesPart(rec)) entries.push_back({rec, entries.size()});
  }
  std::sort(entries.begin(), entries.end(), IsSmaller);
  return entries;
}

// One azimuth's records, in the array's order, put into the order of the queue.
//
// Played backwards, the queue needs no rotation: at its end it fills the places 0 ... size - 1 from
// the front. While it held s records, k smaller ones had turned it since the last had joined at its
// back, so that one now stands k places further to the front, round the ring of the places not
// given away yet. The place after it, which takes over its rank once it is out, was the front
// before.
void OrderByQueue(Entries::iterator first, Entries::iterator last, const RankSet& smaller,
                  std::size_t smallerInAll) {
  const Entries joined(first, last);
  RankSet places(joined.size());
  for (std::size_t place = 0; place < joined.size(); ++place) places.Insert(place);

  std::size_t front = 0;
  std::size_t smallerBefore = smallerInAll;
  for (std::size_t s = joined.size(); s > 0; --s) {
    const Entry& youngest = joined[s - 1];
    const std::size_t smallerBeforeYoungest = smaller.CountBelow(youngest.before);
    const std::size_t turns = (smallerBefore - smallerBeforeYoungest) % s;
    const std::size_t rank = (front + s - 1 - turns) % s;
    const std::size_t place = places.AtRank(rank);
    *(first + static_cast<std::ptrdiff_t>(place)) = youngest;
    places.Remove(place);
    front = rank;
    smallerBefore = smallerBeforeYoungest;
  }
}

}  // namespace

void SortByAzimuth(PoseSensorDataArray& arr) {
  Entries entries = EntriesByAzimuth(arr);

  RankSet smaller(entries.size());
  std::size_t smallerInAll = 0;
  for (auto first = entries.begin(); first != entries.end();) {
    const double azimuth = first->rec->Azimuth;
    const auto last = std::find_if(first, entries.end(),
                                   [=](const Entry& e) { return e.rec->Azimuth > azimuth; });
    if (last - first > 1) OrderByQueue(first, last, smaller, smallerInAll);
    for (; first != last; ++first, ++smallerInAll) smaller.Insert(first->before);
  }

  auto next = entries.begin();
  for (PoseSensorData*& rec : arr) {
    if (TakesPart(rec)) rec = (next++)->rec;
  }
}

void MarkRepeats(const PoseSensorDataArray& arr) {
  for (int i = 1; i < arr.GetSize(); ++i) {
    PoseSensorData* rec = arr.GetAt(i);
    const PoseSensorData* previous = arr.GetAt(i - 1);
    if (rec == nullptr || previous == nullptr) continue;
    rec->Forward = rec->Azimuth - previous->Azimuth < kEpsilon ? 0 : 1;
  }
}

}  // namespace tiltpole::detail
