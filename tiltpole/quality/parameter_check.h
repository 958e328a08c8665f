#pragma once

/// @file
/// Whether stored parameters belong to the pole that is measuring, without a turn.

#include <vector>

#include "tiltpole/export.h"
#include "tiltpole/quality/quality_reason.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole {

/// Holds parameters against ordinary measurements, as after loading a parameter file.
///
/// In one place the strength of the field and its dip are the same in every attitude, and both
/// magnetometers tell one heading. Parameters of another pole leave offsets that change all three
/// with the attitude. The samples should cover different headings: with fewer than three, or all in
/// one attitude, only the difference between the magnetometers can show anything, and an offset
/// that both share in that attitude cannot.
///
/// @param[in] samples       raw samples, taken within a few metres of each other
/// @param[in] correction_A, correction_B  the parameters to check
/// @return nothing when the parameters fit; else one reason for each finding. Parameters that fit
///         give none as long as the noise stays below 1 % of the field. Samples that hold anything
///         but numbers are left out. Cost: linear in the samples. Nothing is thrown but
///         std::bad_alloc.
TILTPOLE_EXPORT std::vector<QualityReason> CheckParameters(
    const std::vector<PoseSensorData>& samples,
    const Incline_MagneticCorrectParameter& correction_A,
    const Incline_MagneticCorrectParameter& correction_B);

}  // namespace tiltpole
