#pragma once

// What `tiltpole measure` tells about all samples together.

#include <array>
#include <cstdint>
#include <ostream>
#include <vector>

#include <nlohmann/json.hpp>

#include "apps/tiltpole/quantiles.h"
#include "apps/tiltpole/tip_solutions.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole::cli {

/// Counts, headings and tip errors, in bounded memory.
class MeasureSummary {
 public:
  /// @param solution  which of the solutions the errors by tilt are of
  explicit MeasureSummary(std::size_t solution);

  /// A sample as SolveTip has left it.
  void AddSample(const PoseSensorData& sample, bool stationary, bool interference);
  /// The distance of each solution's tip from the true one [m].
  void AddErrors(double tilt, const std::array<double, 4>& errors);

  std::uint64_t Samples() const { return samples_; }
  void PrintText(std::ostream& out) const;
  nlohmann::ordered_json ToJson() const;

 private:
  struct TiltBand {
    double from;
    double to;
    Quantiles errors;
  };

  bool HasTruth() const;

  std::size_t solution_;
  std::uint64_t samples_ = 0;
  std::uint64_t stationary_ = 0;
  std::uint64_t interference_ = 0;
  Quantiles heading_difference_;
  std::array<Quantiles, 4> errors_;
  std::vector<TiltBand> bands_;
};

}  // namespace tiltpole::cli
