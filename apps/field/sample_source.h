#pragma once

// Where samples come from: a session file that is played back, or a pole that is simulated live.

#include <optional>
#include <string>
#include <vector>

#include "apps/session/session_sample.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole::field {

using session::SampleSet;

/// One sample, as it arrives.
struct SourceSample {
  PoseSensorData sensors;  ///< raw
  double seconds = 0.0;    ///< since the source began, by the source's own clock
  /// What the sample was taken for; empty where the operator says it while it arrives.
  std::optional<SampleSet> set;
  std::optional<xyhCoordinate> antenna;   ///< north, east, height [m]
  std::optional<xyhCoordinate> true_tip;  ///< where that is known [m]
};

enum class SourceState {
  Paused,   ///< waits for Play
  Running,  ///< samples should be arriving
  Ended,    ///< everything was played
  Broken,   ///< the rest cannot be read, see Fault()
};

/// A source gives what has arrived since it was last asked; it has no thread and no timer.
class SampleSource {
 public:
  SampleSource() = default;
  virtual ~SampleSource() = default;
  SampleSource(const SampleSource&) = delete;
  SampleSource& operator=(const SampleSource&) = delete;

  /// Lets so much time pass and gives the samples that fall into it.
  /// @param wall_seconds  the operator's time; the source's clock runs Speed() times as fast
  virtual std::vector<SourceSample> Advance(double wall_seconds) = 0;
  virtual SourceState State() const = 0;
  /// What is wrong with a broken source, one line.
  virtual std::string Fault() const { return {}; }
  virtual void Play() = 0;
  virtual void Pause() = 0;
  /// What the source is called, for the operator: a file's name, or empty.
  virtual std::string Name() const = 0;
  /// How much of it was played, 0 to 1, where it has an end.
  virtual std::optional<double> Progress() const { return std::nullopt; }

  double Speed() const { return speed_; }
  /// @param speed  above 0
  void SetSpeed(double speed) { speed_ = speed; }

 private:
  double speed_ = 1.0;
};

}  // namespace tiltpole::field
