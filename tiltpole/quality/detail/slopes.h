#pragma once

// Straight-line fits that know how far to trust samples that follow each other: a pole that sways
// makes neighbours err alike, and a hundred of them know less than a hundred strangers.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "tiltpole/quality/detail/least_squares.h"

namespace tiltpole::detail {

// How many samples err as one: (1 + r) / (1 - r) with the residuals' correlation r from one sample
// to the next, the rule for a first-order autoregression.
inline double SamplesErringAsOne(const std::vector<double>& residuals) {
  constexpr double kLargestCorrelation = 0.98;
  double products = 0.0;
  double squares = 0.0;
  for (std::size_t i = 0; i < residuals.size(); ++i) {
    squares += residuals[i] * residuals[i];
    if (i > 0) products += residuals[i] * residuals[i - 1];
  }
  if (!(squares > 0.0)) return 1.0;
  const double r = std::min(std::max(products / squares, 0.0), kLargestCorrelation);
  return (1.0 + r) / (1.0 - r);
}

// A straight-line dependence on two quantities: value = c + s1 q1 + s2 q2.
struct Slopes {
  bool Told = false;
  std::array<double, 2> Slope{};
  std::array<double, 2> Variance{};
};

inline Slopes FitSlopes(const std::vector<std::array<double, 3>>& rows,
                        const std::vector<double>& values) {
  Slopes result;
  LeastSquares<3> fit;
  for (std::size_t i = 0; i < rows.size(); ++i) fit.Add(rows[i], values[i]);
  if (rows.size() <= 3 || !fit.Solve()) return result;
  result.Told = true;
  std::vector<double> residuals;
  double squares = 0.0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    residuals.push_back(values[i] - DotRows(rows[i], fit.Solution()));
    squares += residuals.back() * residuals.back();
  }
  const double variance =
      squares / static_cast<double>(rows.size() - 3) * SamplesErringAsOne(residuals);
  for (std::size_t i = 0; i < 2; ++i) {
    result.Slope[i] = fit.Solution()[i + 1];
    result.Variance[i] = variance * fit.Inverse()[i + 1][i + 1];
  }
  return result;
}

}  // namespace tiltpole::detail
