#pragma once

// The ellipse fit: a conic A u^2 + B u w + C w^2 + D u + E w + F = 0 with A + C = 1 through the
// points of one plane, by least squares on the algebraic residual.

#include <cstddef>
#include <vector>

#include "tiltpole/calibration/detail/conic_sums.h"
#include "tiltpole/calibration/detail/normal_equations.h"

namespace tiltpole::detail {

/// Below 0 for an ellipse. Also for numbers with bounds, which must take the same steps.
template <class Number>
Number Discriminant(const Number& A, const Number& B, const Number& C) {
  return B * B - 4 * A * C;
}

struct Conic {
  double A = 0.0;
  double B = 0.0;
  double D = 0.0;
  double E = 0.0;
  double F = 0.0;

  double C() const { return 1 - A; }

  /// Deliberate: a conic that is not a number counts as an ellipse, since the comparison is false.
  /// Readings with NaN therefore end in "circulating", not in "fitting failed".
  bool IsEllipse() const { return !(Discriminant(A, B, C()) >= 0); }

  double CentreU() const { return (B * E - 2 * C() * D) / Denominator(); }
  double CentreW() const { return (B * D - 2 * A * E) / Denominator(); }

  /// How far a point is from fulfilling the equation, in squared counts.
  double Residual(double u, double w) const {
    return A * (u * u) + B * u * w + C() * (w * w) + D * u + E * w + F;
  }

 private:
  double Denominator() const { return 4 * A * C() - B * B; }
};

/// The sums of a plane's first axis.
AxisSums SumAxis(const std::vector<double>& u);

/// The fit from its sums. @p sums is the first of one lane, the next ones @p lanes apart.
Conic SolveConic(const AxisSums& axis, const double* sums, std::size_t lanes);

/// Whether an ellipse can be fitted at all. Where not, the operator is told: columns first, so that
/// an empty session is told of its missing points.
bool CanFitEllipse(unsigned int columns, std::size_t rows);

}  // namespace tiltpole::detail
