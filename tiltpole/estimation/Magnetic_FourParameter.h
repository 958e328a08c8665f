#pragma once

/// @file
/// The parameters of a similarity transformation of the plane.

namespace tiltpole {

/// Scale, rotation, shift and centre of a similarity transformation; the identity by default.
struct Magnetic_FourParameter {
  double Scale = 1.0;     ///< factor from source to target lengths
  double Rotation = 0.0;  ///< counterclockwise angle [radians]
  double OffsetX = 0.0;   ///< shift in x [target units]
  double OffsetY = 0.0;   ///< shift in y [target units]
  double CenterX = 0.0;   ///< x of the centre, read by CMagneticConvert::XYtoXY only
  double CenterY = 0.0;   ///< y of the centre, read by CMagneticConvert::XYtoXY only
};

}  // namespace tiltpole
