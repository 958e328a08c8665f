#pragma once

// What a successful calibration gives, and its fields by name.

#include <array>
#include <utility>

#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"

namespace tiltpole::cli {

struct FittedParameters {
  Incline_MagneticCorrectParameter correction_a;
  Incline_MagneticCorrectParameter correction_b;
  Incline_MagneticTranslationParameter translation;
};

inline constexpr std::array<std::pair<const char*, double Incline_MagneticCorrectParameter::*>, 8>
    kCorrectionFields = {{{"a", &Incline_MagneticCorrectParameter::a},
                          {"b", &Incline_MagneticCorrectParameter::b},
                          {"c", &Incline_MagneticCorrectParameter::c},
                          {"d", &Incline_MagneticCorrectParameter::d},
                          {"e", &Incline_MagneticCorrectParameter::e},
                          {"x0", &Incline_MagneticCorrectParameter::x0},
                          {"y0", &Incline_MagneticCorrectParameter::y0},
                          {"z0", &Incline_MagneticCorrectParameter::z0}}};

}  // namespace tiltpole::cli
