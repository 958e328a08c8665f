#include "tiltpole/quality/detail/turn_observations.h"

#include <algorithm>
#include <cmath>

#include "tiltpole/quality/detail/slopes.h"

namespace tiltpole::detail {
namespace {

UnknownsRow RowOf(const ErrorRow& error, std::size_t constant) {
  UnknownsRow row{};
  std::copy(error.begin(), error.end(), row.begin());
  row[constant] = 1.0;
  return row;
}

double Bounded(double square, double largest) {
  return std::min(std::max(std::sqrt(std::max(0.0, square)), kSmallestDeviation), largest);
}

}  // namespace

TurnObservations::TurnObservations(const TurnReadings& turn, double unit) {
  for (std::size_t i = 0; i < turn.Field.size(); ++i) {
    const Vector3 field = (1.0 / unit) * turn.Field[i];
    const double strength = Norm(field);
    if (!(strength > 0.0)) continue;
    strength_.push_back({RowOf(ErrorAlong((1.0 / strength) * field, field), kStrength), strength});
    vertical_.push_back({RowOf(ErrorAlong(turn.Up[i], field), kVertical), Dot(field, turn.Up[i])});
  }
  if (strength_.empty()) return;
  // Before the first fit nothing is known but the constants, and no later scatter can be above what
  // they leave: a fit that gave a turn up would weigh it less and less.
  UpdateScatter(Means(), 1.0);
  share_ = 0.0;
  vertical_deviation_ = Bounded(vertical_square_, largest_vertical_deviation_);
  largest_strength_deviation_ = strength_deviation_;
  largest_vertical_deviation_ = vertical_deviation_;
  strength_as_one_ = vertical_as_one_ = 1.0;
}

void TurnObservations::AddTo(ErrorFit& fit) const {
  for (std::size_t i = 0; i < strength_.size(); ++i) {
    AddWeighted(strength_[i], 1.0 / (strength_deviation_ * std::sqrt(strength_as_one_)), fit);
    AddWeighted(Remainder(i), 1.0 / (vertical_deviation_ * std::sqrt(vertical_as_one_)), fit);
  }
}

void TurnObservations::UpdateScatter(const UnknownsRow& solution, double freedom) {
  const double n = static_cast<double>(strength_.size()) * freedom;
  const std::vector<double> strength = Residuals(strength_, solution);
  const std::vector<double> vertical = Residuals(vertical_, solution);
  double product = 0.0;
  double strength_square = 0.0;
  vertical_square_ = 0.0;
  for (std::size_t i = 0; i < strength.size(); ++i) {
    strength_square += strength[i] * strength[i] / n;
    vertical_square_ += vertical[i] * vertical[i] / n;
    product += strength[i] * vertical[i] / n;
  }
  strength_deviation_ = Bounded(strength_square, largest_strength_deviation_);
  share_ = product / (strength_deviation_ * strength_deviation_);
  vertical_deviation_ = Bounded(vertical_square_ - share_ * product, largest_vertical_deviation_);
  std::vector<double> remainder;
  remainder.reserve(strength.size());
  for (std::size_t i = 0; i < strength.size(); ++i) {
    remainder.push_back(vertical[i] - share_ * strength[i]);
  }
  strength_as_one_ = SamplesErringAsOne(strength);
  vertical_as_one_ = SamplesErringAsOne(remainder);
}

void TurnObservations::KeepScatterAbove(double deviation) {
  strength_deviation_ = std::max(strength_deviation_, deviation);
  vertical_deviation_ = std::max(vertical_deviation_, deviation);
}

std::vector<double> TurnObservations::Residuals(const std::vector<Observation>& observations,
                                                const UnknownsRow& solution) {
  std::vector<double> residuals;
  residuals.reserve(observations.size());
  for (const Observation& o : observations) {
    residuals.push_back(o.Value - DotRows(o.Coefficients, solution));
  }
  return residuals;
}

void TurnObservations::AddWeighted(Observation observation, double weight, ErrorFit& fit) {
  for (double& coefficient : observation.Coefficients) coefficient *= weight;
  fit.Add(observation.Coefficients, weight * observation.Value);
}

// The vertical part without what the strength's noise brings into it.
TurnObservations::Observation TurnObservations::Remainder(std::size_t i) const {
  Observation remainder = vertical_[i];
  for (std::size_t k = 0; k < kUnknowns; ++k) {
    remainder.Coefficients[k] -= share_ * strength_[i].Coefficients[k];
  }
  remainder.Value -= share_ * strength_[i].Value;
  return remainder;
}

UnknownsRow TurnObservations::Means() const {
  UnknownsRow mean{};
  const auto n = static_cast<double>(strength_.size());
  for (std::size_t i = 0; i < strength_.size(); ++i) {
    mean[kStrength] += strength_[i].Value / n;
    mean[kVertical] += vertical_[i].Value / n;
  }
  return mean;
}

}  // namespace tiltpole::detail
