#pragma once

// Everything that the windows show and do, without a window.

#include <memory>
#include <optional>
#include <string>

#include "apps/field/calibration_run.h"
#include "apps/field/measuring.h"
#include "apps/field/point_store.h"
#include "apps/field/sample_source.h"
#include "apps/field/still_average.h"
#include "apps/field/turn_recording.h"

namespace tiltpole::field {

/// How the attempt to store a point ended.
enum class StoringResult {
  None,        ///< nothing ended since the last look
  Stored,      ///< it is in the file
  NotTold,     ///< there is no reading, or its tip cannot be told
  NotWritten,  ///< the file does not take it, see StoringFault()
};

/// One source, both turns, the parameters in force, and the points.
class FieldModel {
 public:
  explicit FieldModel(double pole_length);

  /// @name The source
  /// @{
  void SetSource(std::unique_ptr<SampleSource> source);
  SampleSource* Source() const { return source_.get(); }
  /// Lets so much time pass: takes samples, measures, and looks after what is under way.
  void Advance(double wall_seconds);
  /// Whether samples should be arriving and none have for two seconds.
  bool IsSilent() const;
  /// The last sample, worked out, as long as samples arrive.
  const std::optional<Reading>& Live() const { return live_; }
  /// @}

  /// @name Calibrating
  /// @{
  TurnRecording& Turn(SampleSet turn);
  const TurnRecording& Turn(SampleSet turn) const;
  /// Which turn samples go to when they do not say so themselves; none to stop.
  void Record(std::optional<SampleSet> turn) { recording_ = turn; }
  std::optional<SampleSet> Recording() const { return recording_; }
  /// Which turn the last samples went to.
  std::optional<SampleSet> Filling() const { return filling_; }
  void ClearTurns();
  /// Whether there is anything of a turn to fit or to judge by.
  bool HasTurns() const;
  /// Fits new parameters in the background. They come into force when the fit succeeds.
  void StartAdjust();
  /// Judges the parameters in force by the turns, in the background.
  void StartCheck();
  CalibrationRun& Run() { return run_; }
  const std::optional<CalibrationOutcome>& Outcome() const { return outcome_; }
  void ForgetOutcome() { outcome_.reset(); }
  const CalibrationState& Calibration() const { return measuring_.Calibration(); }
  /// Puts parameters in force that come from elsewhere.
  void SetCalibration(const CalibrationState& calibration);
  /// @}

  /// @name Points
  /// @{
  /// Opens the points file; see PointStore for what it throws. Without one nothing can be stored.
  void OpenPoints(const std::string& path);
  const PointStore* Points() const { return points_.get(); }
  void SetPoleLength(double length);
  double PoleLength() const { return measuring_.PoleLength(); }
  /// Begins a point; it is stored when the pole has stood still for so many seconds.
  void StartPoint(double still_seconds) { average_.Start(still_seconds); }
  void CancelPoint() { average_.Cancel(); }
  /// Stores what there is by now, flagged with what is wrong with it.
  void StorePointNow();
  const StillAverage& Average() const { return average_; }
  /// How the last attempt ended, once.
  StoringResult TakeStoringResult();
  const std::string& StoringFault() const { return storing_fault_; }
  /// @}

 private:
  Turns RecordedTurns() const;
  void Take(const SourceSample& sample);
  void TakeOutcome();
  void FollowSource(double wall_seconds, bool samples_arrived);

  std::unique_ptr<SampleSource> source_;
  double silent_seconds_ = 0.0;
  std::optional<Reading> live_;
  TurnRecording horizontal_{SampleSet::Horizontal};
  TurnRecording vertical_{SampleSet::Vertical};
  std::optional<SampleSet> recording_;
  std::optional<SampleSet> filling_;
  Measuring measuring_;
  StillAverage average_;
  std::unique_ptr<PointStore> points_;
  StoringResult storing_result_ = StoringResult::None;
  std::string storing_fault_;
  std::optional<CalibrationOutcome> outcome_;
  CalibrationRun run_;
};

}  // namespace tiltpole::field
