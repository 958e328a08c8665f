#include "tiltpole/calibration/detail/ellipse_fit.h"

#include "tiltpole/calibration/detail/warnings.h"

namespace tiltpole::detail {

AxisSums SumAxis(const std::vector<double>& u) {
  AxisSums sums;
  for (const double value : u) {
    sums.u += value;
    sums.uu += value * value;
  }
  sums.count = static_cast<double>(u.size());
  return sums;
}

Conic SolveConic(const AxisSums& axis, const double* sums, std::size_t lanes) {
  double ofThisLane[kConicSums];
  for (std::size_t sum = 0; sum < kConicSums; ++sum) ofThisLane[sum] = sums[sum * lanes];
  const ConicEquations<double> equations(axis, ofThisLane);
  const Column<5> p = NormalInverse<5>(equations.AtA).Solve(equations.Atb);
  return {p.at[0], p.at[1], p.at[2], p.at[3], p.at[4]};
}

bool CanFitEllipse(unsigned int columns, std::size_t rows) {
  if (columns != 3) {
    WarnOfInput(L"The data array must be three!");
    return false;
  }
  if (rows < 5) {
    WarnOfInput(L"The points less than 5, could not fit!");
    return false;
  }
  return true;
}

}  // namespace tiltpole::detail
