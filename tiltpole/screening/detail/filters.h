#pragma once

// The filters that look at one record at a time: samples of a pole that stood still, and samples
// off the circle.

#include <cmath>
#include <cstdint>

#include "tiltpole/screening/PoseSensorCenterParameter.h"
#include "tiltpole/screening/PoseSensorDataArray.h"
#include "tiltpole/screening/detail/center.h"
#include "tiltpole/screening/detail/owned_array.h"

namespace tiltpole::detail {

inline constexpr double kStillSampleDistance = 30.0;    // counts
inline constexpr std::int32_t kStillSampleSeconds = 3;  // seconds

// The seconds from one time of day to a later one, in 32 bits that wrap around, so that a host's
// meaningless tags cannot overflow. Deliberate: the clock is not carried over midnight, so a nearly
// still sample just after midnight counts as earlier and is dropped.
inline std::int32_t SecondsBetween(const PoseSensorData& earlier, const PoseSensorData& later) {
  const auto secondOfDay = [](const PoseSensorData& rec) {
    return static_cast<std::uint32_t>(rec.Tag[0]) * 3600U +
           static_cast<std::uint32_t>(rec.Tag[1]) * 60U + static_cast<std::uint32_t>(rec.Tag[2]);
  };
  return static_cast<std::int32_t>(secondOfDay(later) - secondOfDay(earlier));
}

template <class Plane>
bool HasMoved(const PoseSensorData& last, const PoseSensorData& rec) {
  const double moved = Length(rec.MagneticX_A - last.MagneticX_A,  //
                              rec.*Plane::kSecond - last.*Plane::kSecond);
  return moved >= kStillSampleDistance || SecondsBetween(last, rec) >= kStillSampleSeconds;
}

template <class Plane>
OwnedArray FilterByTime(const PoseSensorDataArray* arr) {
  if (arr == nullptr) return nullptr;
  auto kept = std::make_unique<PoseSensorDataArray>();
  const PoseSensorData* last = nullptr;
  for (PoseSensorData* rec : *arr) {
    if (rec == nullptr) continue;
    if (last != nullptr && !HasMoved<Plane>(*last, *rec)) continue;
    kept->Add(rec);
    last = rec;
  }
  return NullIfEmpty(std::move(kept));
}

template <class Plane>
bool IsOnCircle(const PoseSensorData& rec, const PoseSensorCenterParameter& center) {
  const double offCircle = DistanceFromCenter<Plane>(rec, center) - center.Radius;
  const double offPlane = rec.*Plane::kThird - center.*Plane::kCenterThird;
  return std::fabs(offCircle) < Plane::kRadiusTolerance &&
         std::fabs(offPlane) < Plane::kLevelTolerance;
}

template <class Plane>
OwnedArray FilterByDistance(const PoseSensorDataArray* arr,
                            const PoseSensorCenterParameter& center) {
  if (arr == nullptr) return nullptr;
  auto kept = std::make_unique<PoseSensorDataArray>();
  for (PoseSensorData* rec : *arr) {
    if (rec != nullptr && IsOnCircle<Plane>(*rec, center)) kept->Add(rec);
  }
  return NullIfEmpty(std::move(kept));
}

}  // namespace tiltpole::detail
