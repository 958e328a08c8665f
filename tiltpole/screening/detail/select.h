#pragma once

#include "tiltpole/screening/detail/extremes.h"
#include "tiltpole/screening/detail/owned_array.h"

namespace tiltpole::detail {

// Thins an array to every (size / n)-th record and the four extreme ones, each of which restarts
// the count.
template <class Plane>
OwnedArray Select(const PoseSensorDataArray* arr, int n) {
  if (arr == nullptr || n < 1) return nullptr;
  const int size = arr->GetSize();
  if (n > size) return std::make_unique<PoseSensorDataArray>(*arr);

  auto selected = std::make_unique<PoseSensorDataArray>();
  const Extremes extremes = FindExtremes<Plane>(*arr);
  // Deliberate: the truncated quotient, so that the selection holds rather more than n records.
  const int step = size / n;
  int sinceLast = 0;
  for (PoseSensorData* rec : *arr) {
    if (rec == nullptr) continue;
    ++sinceLast;
    if (sinceLast < step && !extremes.Hold(rec)) continue;
    selected->Add(rec);
    sinceLast = 0;
  }
  return selected;
}

}  // namespace tiltpole::detail
