#pragma once

/// @file
/// The four-parameter (similarity) transformation between two coordinate systems of the plane.

#include <vector>

#include "tiltpole/estimation/FourParameterPoint.h"
#include "tiltpole/estimation/Magnetic_FourParameter.h"
#include "tiltpole/export.h"

namespace tiltpole {

/// Estimates a similarity transformation from points known in both systems, and applies it.
///
/// With k the scale and R(theta) the counterclockwise rotation, and the centre at the origin,
///
///     target = k R(theta) source + offset
///
/// The estimate is the least-squares solution over all pairs. Coordinates have any unit, the
/// same within one system. The object starts without pairs and as the identity. Nothing throws, but
/// for std::bad_alloc from AddPoint(), which then adds nothing.
class TILTPOLE_EXPORT CMagneticConvert {
 public:
  /// Adds a point known in both systems; for CalFourParameter().
  void AddPoint(double SourceX, double SourceY, double TargetX, double TargetY);

  /// Forgets all pairs; the parameters stay.
  void ClearPoints();

  /// Estimates scale, rotation and offsets from all pairs; the centre stays as it was.
  ///
  /// If the sources do not spread about their mean at all, as one pair does not, the result is the
  /// identity: the offsets are 0 then, even where source and target differ. Give sources that lie
  /// apart: of several at one point the mean can miss that point in its last digit, and scale,
  /// angle and offsets are then whatever the rounding makes of it. Cost: three passes over the
  /// pairs.
  ///
  /// @return 1; 0 if there are no pairs, and then the parameters stay. Coordinates that are not
  ///         numbers flow into the parameters.
  int CalFourParameter();

  /// Sets all parameters. Mind the order: shifts, angle, scale, centre.
  ///
  /// @param[in] OffsetX,OffsetY  shift [target units]
  /// @param[in] Rotation         counterclockwise angle [radians]
  /// @param[in] Scale            factor from source to target lengths
  /// @param[in] CenterX,CenterY  centre for XYtoXY()
  void SetFourParameter(double OffsetX, double OffsetY, double Rotation, double Scale,
                        double CenterX, double CenterY);

  /// A copy of the parameters.
  Magnetic_FourParameter GetFourParameter() const;

  /// Transforms from source to target.
  ///
  /// The terms of a centre (cx, cy) that is not the origin stand inside the scaling:
  /// k (R(theta) (x, y) + (I - R(theta)) (cx, cy) + (1 - k) (cx, cy)) + offset.
  ///
  /// @param[in,out] x,y  the point
  void XYtoXY(double& x, double& y) const;

  /// Transforms from target to source, ignoring the centre: it undoes XYtoXY() only where the
  /// centre is the origin.
  ///
  /// @param[in,out] x,y  the point; infinite or not a number for a scale of 0
  void XYtoXY1(double& x, double& y) const;

 private:
  Magnetic_FourParameter parameter_;
  std::vector<FourParameterPoint> points_;
};

}  // namespace tiltpole
