#pragma once

// The plain structs of the interface and the library's records, one into the other.

#include <cstddef>
#include <vector>

#include "tiltpole/c/types.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole::detail {

PoseSensorData FromC(const tiltpole_sample& sample);
tiltpole_sample ToC(const PoseSensorData& record);

Incline_MagneticCorrectParameter FromC(const tiltpole_correction& correction);
tiltpole_correction ToC(const Incline_MagneticCorrectParameter& record);

inline Incline_MagneticTranslationParameter FromC(const tiltpole_translation& translation) {
  return {translation.dx, translation.dy, translation.dz};
}
inline tiltpole_translation ToC(const Incline_MagneticTranslationParameter& translation) {
  return {translation.dX, translation.dY, translation.dZ};
}

inline xyhCoordinate FromC(const tiltpole_xyh& point) { return {point.x, point.y, point.h}; }
inline tiltpole_xyh ToC(const xyhCoordinate& point) { return {point.x, point.y, point.h}; }

inline std::vector<PoseSensorData> FromC(const tiltpole_sample* samples, std::size_t count) {
  std::vector<PoseSensorData> records;
  records.reserve(count);
  for (std::size_t i = 0; i < count; ++i) records.push_back(FromC(samples[i]));
  return records;
}

}  // namespace tiltpole::detail
