#pragma once

/// @file
/// The offset between the corrected frames of the two magnetometers.

namespace tiltpole {

/// The offset between the corrected frames of magnetometers A and B [counts].
///
/// Where A reads (X, Y, Z) after correction, B is expected to read
/// (-(X + dX), -(Y + dY), Z + dZ): A's reading shifted, with x and y turned to B's mounting.
/// tiltpole::ExpectedReading_B forms it.
struct Incline_MagneticTranslationParameter {
  double dX = 0.0;  ///< offset on the x axis
  double dY = 0.0;  ///< offset on the y axis
  double dZ = 0.0;  ///< offset on the z axis
};

}  // namespace tiltpole
