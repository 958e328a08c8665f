#pragma once

// The samples of one turn of the pole, and how much of the circle they cover.

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "apps/field/sample_source.h"
#include "apps/session/missing_ranges.h"
#include "tiltpole/screening/covered_sectors.h"

namespace tiltpole::field {

/// How wide one sector of the coverage is [degrees].
inline constexpr int kSectorWidth = 5;
inline constexpr std::size_t kSectors = 360 / kSectorWidth;

/// A turn about the vertical, or about the sensor's y axis, while it is recorded.
///
/// Directions: in the horizontal turn the heading of the sensor's x axis, from magnetic north and
/// clockwise; in the vertical one the direction of the reading in the plot of the turn, from the x
/// axis and counter-clockwise. Both are raw, about the middle of the readings.
class TurnRecording {
 public:
  explicit TurnRecording(SampleSet turn);
  ~TurnRecording();
  TurnRecording(TurnRecording&&) noexcept;
  TurnRecording& operator=(TurnRecording&&) noexcept;

  void Add(const PoseSensorData& raw);
  void Clear();

  SampleSet Turn() const { return turn_; }
  /// How often the turn was begun anew; who shows the samples begins anew then, too.
  int Clears() const { return clears_; }
  const std::vector<PoseSensorData>& Samples() const { return samples_; }
  /// As the screening of turns counts it, 0 to 100.
  int CoveredPercent() const;
  /// Whether every sector holds a sample.
  bool IsComplete() const;
  /// Which sectors hold a sample, from direction 0 on.
  const SectorSet& Covered() const { return covered_; }
  /// Directions without a sample.
  std::vector<session::MissingRange> Missing() const {
    return session::MissingRanges(covered_, kSectorWidth);
  }
  /// Where the last sample points; empty until there is a middle.
  std::optional<double> LastDirection() const { return last_direction_; }

 private:
  struct Screening;
  template <typename Filter>
  struct ScreeningBy;

  void UpdateSectors();
  double DirectionOf(const PoseSensorData& raw) const;

  SampleSet turn_;
  int clears_ = 0;
  std::vector<PoseSensorData> samples_;
  std::unique_ptr<Screening> screening_;
  SectorSet covered_;
  std::optional<double> last_direction_;
};

}  // namespace tiltpole::field
