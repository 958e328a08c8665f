#include "apps/field/field_model.h"

#include <exception>
#include <utility>

#include "apps/session/input_error.h"

namespace tiltpole::field {
namespace {

constexpr double kLongestSilence = 2.0;

}  // namespace

FieldModel::FieldModel(double pole_length) : measuring_(pole_length) {}

void FieldModel::SetSource(std::unique_ptr<SampleSource> source) {
  source_ = std::move(source);
  silent_seconds_ = 0.0;
  live_.reset();
  filling_.reset();
  recording_.reset();
  average_.Cancel();
}

TurnRecording& FieldModel::Turn(SampleSet turn) {
  return turn == SampleSet::Horizontal ? horizontal_ : vertical_;
}

const TurnRecording& FieldModel::Turn(SampleSet turn) const {
  return turn == SampleSet::Horizontal ? horizontal_ : vertical_;
}

void FieldModel::Advance(double wall_seconds) {
  TakeOutcome();
  if (!source_) return;
  const std::vector<SourceSample> samples = source_->Advance(wall_seconds);
  for (const SourceSample& sample : samples) Take(sample);
  FollowSource(wall_seconds, !samples.empty());
}

void FieldModel::Take(const SourceSample& sample) {
  filling_ = sample.set ? sample.set : recording_;
  if (filling_ == SampleSet::Measure) filling_.reset();
  if (filling_) Turn(*filling_).Add(sample.sensors);
  live_ = measuring_.Take(sample);
  average_.Add(*live_);
  if (average_.IsDone()) StorePointNow();
}

// A reading that no longer arrives is not live, and nothing is stored from it.
void FieldModel::FollowSource(double wall_seconds, bool samples_arrived) {
  const bool running = source_->State() == SourceState::Running;
  silent_seconds_ = samples_arrived || !running ? 0.0 : silent_seconds_ + wall_seconds;
  const bool over =
      source_->State() == SourceState::Ended || source_->State() == SourceState::Broken;
  if (IsSilent() || over) live_.reset();
  if (IsSilent() || !running) filling_.reset();
}

bool FieldModel::IsSilent() const { return silent_seconds_ > kLongestSilence; }

void FieldModel::ClearTurns() {
  horizontal_.Clear();
  vertical_.Clear();
  outcome_.reset();
}

bool FieldModel::HasTurns() const {
  return !horizontal_.Samples().empty() || !vertical_.Samples().empty();
}

Turns FieldModel::RecordedTurns() const { return {horizontal_.Samples(), vertical_.Samples()}; }

void FieldModel::StartAdjust() {
  recording_.reset();
  outcome_.reset();
  run_.Start([turns = RecordedTurns()] { return FitTurns(turns); });
}

void FieldModel::StartCheck() {
  outcome_.reset();
  run_.Start([turns = RecordedTurns(), position = Calibration().position] {
    return JudgeParameters(turns, position);
  });
}

void FieldModel::TakeOutcome() {
  if (!run_.IsRunning()) return;
  try {
    outcome_ = run_.Finished();
  } catch (const std::exception&) {
    // Not enough memory: nothing is known but that it failed.
    outcome_ = CalibrationOutcome();
  }
  if (outcome_ && (outcome_->fitted || outcome_->judged_only)) {
    SetCalibration(Judged(outcome_->position, outcome_->quality));
  }
}

void FieldModel::SetCalibration(const CalibrationState& calibration) {
  measuring_.SetCalibration(calibration);
  average_.Cancel();
}

void FieldModel::OpenPoints(const std::string& path) {
  points_ = std::make_unique<PointStore>(path);
}

void FieldModel::SetPoleLength(double length) {
  measuring_.SetPoleLength(length);
  average_.Cancel();
}

void FieldModel::StorePointNow() {
  const auto point = average_.TakeNow(live_, Calibration(), PoleLength());
  if (!point) {
    storing_result_ = StoringResult::NotTold;
    return;
  }
  try {
    if (!points_) throw session::OutputError("no points file is open");
    points_->Append(*point);
    storing_result_ = StoringResult::Stored;
  } catch (const session::OutputError& error) {
    storing_fault_ = error.what();
    storing_result_ = StoringResult::NotWritten;
  }
}

StoringResult FieldModel::TakeStoringResult() {
  return std::exchange(storing_result_, StoringResult::None);
}

}  // namespace tiltpole::field
