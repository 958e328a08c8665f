#include "apps/field/calibration_run.h"

#include <chrono>
#include <utility>

namespace tiltpole::field {

void CalibrationRun::Start(Work work) {
  if (IsRunning()) return;
  result_ = std::async(std::launch::async, std::move(work));
}

std::optional<CalibrationOutcome> CalibrationRun::Finished() {
  if (!IsRunning()) return std::nullopt;
  if (result_.wait_for(std::chrono::seconds(0)) != std::future_status::ready) return std::nullopt;
  return result_.get();
}

}  // namespace tiltpole::field
