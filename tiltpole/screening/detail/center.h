#pragma once

// The circle of a record set: the middle of its bounding box, the mean distance from it, and the
// level of its plane.

#include <cmath>

#include "tiltpole/screening/PoseSensorCenterParameter.h"
#include "tiltpole/screening/PoseSensorDataArray.h"
#include "tiltpole/screening/detail/extremes.h"

namespace tiltpole::detail {

inline double Length(double d1, double d2) { return std::sqrt(d1 * d1 + d2 * d2); }

template <class Plane>
double DistanceFromCenter(const PoseSensorData& rec, const PoseSensorCenterParameter& center) {
  return Length(rec.MagneticX_A - center.CenterX,
                rec.*Plane::kSecond - center.*Plane::kCenterSecond);
}

// The mean of what `value` gives for each record; the set holds at least one.
template <class Value>
double MeanOverRecords(const PoseSensorDataArray& arr, Value value) {
  double sum = 0.0;
  int count = 0;
  for (const PoseSensorData* rec : arr) {
    if (rec == nullptr) continue;
    sum += value(*rec);
    ++count;
  }
  return sum / count;
}

template <class Plane>
double LevelOfPlane(const PoseSensorDataArray& arr, const Extremes& extremes) {
  const auto level = [](const PoseSensorData& rec) { return rec.*Plane::kThird; };
  if constexpr (Plane::kLevelFromExtremesOnly) {
    // A record that is extreme twice counts twice.
    return (level(*extremes.maxFirst) + level(*extremes.minFirst) + level(*extremes.maxSecond) +
            level(*extremes.minSecond)) /
           4;
  } else {
    return MeanOverRecords(arr, level);
  }
}

template <class Plane>
int CalculateCenter(const PoseSensorDataArray* arr, PoseSensorCenterParameter& center) {
  if (arr == nullptr) return 0;
  const Extremes extremes = FindExtremes<Plane>(*arr);
  if (extremes.maxFirst == nullptr) return Plane::kCenterResultWithoutRecords;

  center.Valid = 1;
  center.CenterX = (extremes.minFirst->MagneticX_A + extremes.maxFirst->MagneticX_A) / 2;
  center.*Plane::kCenterSecond =
      (extremes.minSecond->*Plane::kSecond + extremes.maxSecond->*Plane::kSecond) / 2;
  center.*Plane::kCenterThird = LevelOfPlane<Plane>(*arr, extremes);
  center.Radius = MeanOverRecords(*arr, [&center](const PoseSensorData& rec) {
    return DistanceFromCenter<Plane>(rec, center);
  });
  return 1;
}

}  // namespace tiltpole::detail
