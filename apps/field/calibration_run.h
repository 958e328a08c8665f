#pragma once

// A calibration in the background.

#include <functional>
#include <future>
#include <optional>

#include "apps/field/calibration_fit.h"
#include "apps/field/library_messages.h"

namespace tiltpole::field {

/// Runs one calibration at a time on a thread of its own, to which everything that it works on
/// belongs. Ask Finished() now and then.
class CalibrationRun {
 public:
  using Work = std::function<CalibrationOutcome()>;

  CalibrationRun() = default;
  /// Waits for a calibration that is under way.
  ~CalibrationRun() = default;
  CalibrationRun(const CalibrationRun&) = delete;
  CalibrationRun& operator=(const CalibrationRun&) = delete;

  /// Begins, unless one is under way.
  void Start(Work work);
  bool IsRunning() const { return result_.valid(); }
  /// The outcome, once; std::exception where there was not enough memory.
  std::optional<CalibrationOutcome> Finished();

 private:
  LibraryMessages messages_;
  // Destroyed first, and waits for the thread then.
  std::future<CalibrationOutcome> result_;
};

}  // namespace tiltpole::field
