#include "tiltpole/calibration/detail/shape.h"

#include <cmath>

namespace tiltpole::detail {

Shape ShapeOf(const Conic& conic) {
  const double C = conic.C();
  return {conic.IsEllipse(), int{C > 0.5} - int{C < 0.5}, std::fabs(C - 0.5) < kTolerance};
}

double ScaleOfCircle(double t, double A, double C) { return t * std::sqrt(C / A); }

}  // namespace tiltpole::detail
