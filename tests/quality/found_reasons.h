#pragma once

// Looks for a reason among those found, and for words in what it says.

#include <string>
#include <vector>

#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/quality_reason.h"

namespace tiltpole_test {

/// The first reason with the code, or null.
inline const tiltpole::QualityReason* Find(const std::vector<tiltpole::QualityReason>& reasons,
                                           tiltpole::QualityCode code) {
  for (const tiltpole::QualityReason& reason : reasons)
    if (reason.Code == code) return &reason;
  return nullptr;
}

inline const tiltpole::QualityReason* Find(const tiltpole::CalibrationQuality& quality,
                                           tiltpole::QualityCode code) {
  return Find(quality.Reasons, code);
}

inline bool Has(const tiltpole::CalibrationQuality& quality, tiltpole::QualityCode code) {
  return Find(quality, code) != nullptr;
}

inline bool Says(const tiltpole::QualityReason& reason, const wchar_t* words) {
  return reason.Sentence.find(words) != std::wstring::npos;
}

}  // namespace tiltpole_test
