#pragma once

// The options of a rigorous tip in both languages.

#include "tiltpole/c/quality.h"
#include "tiltpole/quality/rigorous_tip.h"

namespace tiltpole::detail {

inline tiltpole_tip_options ToC(const RigorousTipOptions& options) {
  return {{options.MagneticBiasAngle_A, options.MagneticBiasAngle_B},
          {options.HeadingDeviation_A, options.HeadingDeviation_B},
          options.LargestHeadingDifference,
          {options.Disturbed_A ? 1 : 0, options.Disturbed_B ? 1 : 0}};
}

/// The defaults for null.
inline RigorousTipOptions FromC(const tiltpole_tip_options* options) {
  RigorousTipOptions record;
  if (options == nullptr) return record;
  record.MagneticBiasAngle_A = options->bias_angle[0];
  record.MagneticBiasAngle_B = options->bias_angle[1];
  record.HeadingDeviation_A = options->heading_deviation[0];
  record.HeadingDeviation_B = options->heading_deviation[1];
  record.LargestHeadingDifference = options->largest_heading_difference;
  record.Disturbed_A = options->disturbed[0] != 0;
  record.Disturbed_B = options->disturbed[1] != 0;
  return record;
}

}  // namespace tiltpole::detail
