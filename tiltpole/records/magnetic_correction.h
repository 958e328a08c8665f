#pragma once

/// @file
/// The magnetometer correction that the parameter records define, written once: measuring applies
/// it and the calibration fits it.
///
/// The arithmetic is compiled with the library, not with its hosts: a host's compiler may fuse
/// multiplications and additions, and its readings would differ from the library's in the last bit.

#include "tiltpole/export.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"

namespace tiltpole {

/// A reading of one three-axis magnetometer [counts].
struct MagneticReading {
  double X = 0.0;  ///< on the x axis
  double Y = 0.0;  ///< on the y axis
  double Z = 0.0;  ///< on the z axis
};

/// The corrected reading of a magnetometer; see Incline_MagneticCorrectParameter for the formula.
///
/// @param[in] par  the magnetometer's correction
/// @param[in] raw  its raw reading [counts]
/// @return the corrected reading; not-a-number and infinities flow through.
TILTPOLE_EXPORT MagneticReading CorrectReading(const Incline_MagneticCorrectParameter& par,
                                               const MagneticReading& raw);

/// What magnetometer B should read, corrected, where A reads @p corrected_A.
///
/// @param[in] trans        the translation between the two frames
/// @param[in] corrected_A  magnetometer A's corrected reading [counts]
TILTPOLE_EXPORT MagneticReading ExpectedReading_B(const Incline_MagneticTranslationParameter& trans,
                                                  const MagneticReading& corrected_A);

/// How far two readings lie apart: the sum of the absolute differences of their components
/// [counts].
TILTPOLE_EXPORT double SumOfDifferences(const MagneticReading& a, const MagneticReading& b);

/// Measuring reports interference where B's corrected reading lies further than this from
/// ExpectedReading_B() [counts, by SumOfDifferences()].
inline constexpr double kInterferenceDistance = 300.0;

}  // namespace tiltpole
