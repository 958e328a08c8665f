#pragma once

/// @file
/// A point known in both coordinate systems of a similarity transformation.

namespace tiltpole {

/// One pair of points, with its coordinates less the means of all pairs.
struct FourParameterPoint {
  double SourceX = 0.0;  ///< in the system to transform from
  double SourceY = 0.0;  ///< in the system to transform from
  double TargetX = 0.0;  ///< in the system to transform to
  double TargetY = 0.0;  ///< in the system to transform to
  /// @name Working values
  /// Written by CMagneticConvert::CalFourParameter().
  /// @{
  double CentredSourceX = 0.0;  ///< SourceX less the mean of all pairs'
  double CentredSourceY = 0.0;  ///< SourceY less the mean of all pairs'
  double CentredTargetX = 0.0;  ///< TargetX less the mean of all pairs'
  double CentredTargetY = 0.0;  ///< TargetY less the mean of all pairs'
  /// @}
};

}  // namespace tiltpole
