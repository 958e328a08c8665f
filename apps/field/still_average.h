#pragma once

// Averages the tip over a still period.

#include <optional>
#include <vector>

#include "apps/field/measuring.h"
#include "apps/field/stored_point.h"

namespace tiltpole::field {

/// Gathers readings while the pole stands still, and begins anew when it moved. Nothing that was
/// read while it moved gets into an average; only TakeNow() gives a point without a still period,
/// and that point says so.
class StillAverage {
 public:
  /// Begins; asks for a still period of so many seconds of the source's clock.
  void Start(double seconds);
  void Cancel();
  bool IsActive() const { return active_; }

  void Add(const Reading& reading);
  /// Whether the still period is long enough.
  bool IsDone() const;
  /// 0 to 1.
  double Progress() const;
  /// How often the pole moved since Start.
  int Restarts() const { return restarts_; }

  /// The point, and ends. Empty where nothing was read, or no tip can be told.
  /// @param latest  stands in where the pole never stood still
  std::optional<StoredPoint> TakeNow(const std::optional<Reading>& latest,
                                     const CalibrationState& calibration, double pole_length);

 private:
  bool HasWalked(const Reading& reading) const;
  double Duration() const;

  bool active_ = false;
  double wanted_ = 0.0;
  int restarts_ = 0;
  std::vector<Reading> readings_;
};

}  // namespace tiltpole::field
