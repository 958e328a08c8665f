#pragma once

/// @file
/// A point known in both coordinate systems of a similarity transformation.

namespace tiltpole {

/// One pair of points, with its coordinates less the means of all pairs.
struct FourParameterPoint {
  double SourceX = 0.0;
  double SourceY = 0.0;
  double TargetX = 0.0;
  double TargetY = 0.0;
  /// @name Working values
  /// Written by CMagneticConvert::CalFourParameter().
  /// @{
  double CentredSourceX = 0.0;
  double CentredSourceY = 0.0;
  double CentredTargetX = 0.0;
  double CentredTargetY = 0.0;
  /// @}
};

}  // namespace tiltpole
