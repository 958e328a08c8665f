#pragma once

#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/screening/PoseSensorDataArray.h"

namespace tiltpole::detail {

// The records that bound a set in its plane; all null for a set without records.
struct Extremes {
  const PoseSensorData* maxFirst = nullptr;
  const PoseSensorData* minFirst = nullptr;
  const PoseSensorData* maxSecond = nullptr;
  const PoseSensorData* minSecond = nullptr;

  bool Hold(const PoseSensorData* rec) const {
    return rec == maxFirst || rec == minFirst || rec == maxSecond || rec == minSecond;
  }
};

// The first record starts as all four; a later one takes a place only where it lies strictly
// beyond, so of equal records the earliest stays.
template <class Plane>
Extremes FindExtremes(const PoseSensorDataArray& arr) {
  Extremes found;
  for (const PoseSensorData* rec : arr) {
    if (rec == nullptr) continue;
    if (found.maxFirst == nullptr) found = {rec, rec, rec, rec};
    if (rec->MagneticX_A > found.maxFirst->MagneticX_A) found.maxFirst = rec;
    if (rec->MagneticX_A < found.minFirst->MagneticX_A) found.minFirst = rec;
    if (rec->*Plane::kSecond > found.maxSecond->*Plane::kSecond) found.maxSecond = rec;
    if (rec->*Plane::kSecond < found.minSecond->*Plane::kSecond) found.minSecond = rec;
  }
  return found;
}

}  // namespace tiltpole::detail
