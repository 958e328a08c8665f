#pragma once

/// @file
/// A position in a local plane grid with height.

namespace tiltpole {

/// A plane position with height, in the unit of the pole length that the host passes to the
/// solver.
struct xyhCoordinate {
  double x = 0.0;  ///< grows along heading 0
  double y = 0.0;  ///< grows along heading 90 degrees
  double h = 0.0;  ///< height, grows upwards
};

}  // namespace tiltpole
