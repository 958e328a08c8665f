#pragma once

namespace tiltpole::detail {

// The azimuth of a reading about the centre of its turn [degrees], from its offsets d1 on the
// plane's first and d2 on its second axis [counts]. In (0, 360] but for a reading so close to the
// second axis that its angle is below the epsilon, which ends up that little beyond 360.
double AzimuthAboutCenter(double d1, double d2);

}  // namespace tiltpole::detail
