#include "tiltpole/calibration/detail/line_fit.h"

namespace tiltpole::detail {

double FitSlope(const std::vector<double>& fitted, const std::vector<double>& along) {
  double products = 0.0;
  double sum = 0.0;
  for (std::size_t i = 0; i < fitted.size(); ++i) {
    products += along[i] * fitted[i];
    sum += fitted[i];
  }
  return LineAxis(SumAxis(along)).Slope(products, sum);
}

}  // namespace tiltpole::detail
