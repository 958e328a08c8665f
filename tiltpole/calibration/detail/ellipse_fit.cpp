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

Conic SolveConic(const AxisSums& axis, const double* sums, std::size_t stride) {
  const auto sum = [&](std::size_t which) { return sums[which * stride]; };
  const Square<5> AtA{{{sum(kSS), sum(kSM), sum(kSU), sum(kSW), sum(kS)},
                       {sum(kSM), sum(kMM), sum(kMU), sum(kMW), sum(kM)},
                       {sum(kSU), sum(kMU), axis.uu, sum(kM), axis.u},
                       {sum(kSW), sum(kMW), sum(kM), sum(kWW), sum(kW)},
                       {sum(kS), sum(kM), axis.u, sum(kW), axis.count}}};
  // The last right-hand side sums -w^2. Its negative is the sum of w^2 rounding by rounding; the
  // difference from 0.0 keeps an empty sum at +0.0.
  const Column<5> Atb{{sum(kSR), sum(kMR), sum(kUR), sum(kWR), 0.0 - sum(kWW)}};
  const Column<5> p = NormalInverse<5>(AtA).Solve(Atb);
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
