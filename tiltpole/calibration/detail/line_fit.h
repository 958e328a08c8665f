#pragma once

// The straight-line fits: the slope of one coordinate against another, with an intercept.

#include <vector>

#include "tiltpole/calibration/detail/ellipse_fit.h"
#include "tiltpole/calibration/detail/normal_equations.h"

namespace tiltpole::detail {

/// The part of a line fit that depends on where the points lie along the line's axis, not on what
/// is fitted there; kept for as many fits as share the axis.
class LineAxis {
 public:
  explicit LineAxis(const AxisSums& axis)
      : inverse_(Square<2>{{{axis.uu, axis.u}, {axis.u, axis.count}}}) {}

  /// @param[in] products  sum of axis coordinate times fitted coordinate
  /// @param[in] sum       sum of the fitted coordinate
  double Slope(double products, double sum) const {
    return inverse_.Solve(Column<2>{{products, sum}}).at[0];
  }

 private:
  NormalInverse<2> inverse_;
};

/// The slope of @p fitted against @p along.
double FitSlope(const std::vector<double>& fitted, const std::vector<double>& along);

}  // namespace tiltpole::detail
