#pragma once

// What one turn contributes to the fit of a magnetometer's remaining error.

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "tiltpole/quality/detail/least_squares.h"
#include "tiltpole/quality/detail/sensor_error.h"

namespace tiltpole::detail {

// The fit's unknowns: the terms of the error, then the strength of the field and its vertical part.
inline constexpr std::size_t kStrength = kErrorTerms;
inline constexpr std::size_t kVertical = kErrorTerms + 1;
inline constexpr std::size_t kUnknowns = kErrorTerms + 2;
using UnknownsRow = std::array<double, kUnknowns>;
using ErrorFit = LeastSquares<kUnknowns>;

// A scatter below this would silence all other observations [share of the horizontal field].
inline constexpr double kSmallestDeviation = 1e-7;

// One turn: of every sample the strength of the field and its vertical part. The two share the
// magnetometer's noise, and the vertical part alone the noise of the tilts; how far they scatter
// together is found in the fit, and decides what each is worth.
class TurnObservations {
 public:
  // Readings are taken in units of `unit` counts.
  TurnObservations(const TurnReadings& turn, double unit);

  void AddTo(ErrorFit& fit) const;

  // Finds the scatter anew about a solution. `freedom` is the share of the observations that the
  // unknowns leave free.
  void UpdateScatter(const UnknownsRow& solution, double freedom);

  // With few samples a fit can take one kind of observation to nothing and then trust it alone; but
  // all of them come from one sensor, and none is much better than another.
  void KeepScatterAbove(double deviation);

  double StrengthDeviation() const { return strength_deviation_; }

 private:
  struct Observation {
    UnknownsRow Coefficients{};
    double Value = 0.0;
  };

  static std::vector<double> Residuals(const std::vector<Observation>& observations,
                                       const UnknownsRow& solution);
  static void AddWeighted(Observation observation, double weight, ErrorFit& fit);
  Observation Remainder(std::size_t i) const;
  UnknownsRow Means() const;

  std::vector<Observation> strength_;
  std::vector<Observation> vertical_;
  double strength_deviation_ = 1.0;
  double vertical_deviation_ = 1.0;  // of the remainder
  double vertical_square_ = 0.0;
  double largest_strength_deviation_ = std::numeric_limits<double>::infinity();
  double largest_vertical_deviation_ = std::numeric_limits<double>::infinity();
  double share_ = 0.0;  // how much of the strength's scatter the vertical part shows
  double strength_as_one_ = 1.0;
  double vertical_as_one_ = 1.0;
};

}  // namespace tiltpole::detail
