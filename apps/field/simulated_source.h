#pragma once

// A simulated pole that the operator moves.

#include <cstdint>
#include <string>
#include <vector>

#include "apps/field/sample_source.h"
#include "apps/session/simulated_pole.h"

namespace tiltpole::field {

/// A live pole with imperfect sensors, 20 samples a second, whose tip stands on a point of a known
/// place while its top is pushed over and turned.
class SimulatedSource : public SampleSource {
 public:
  SimulatedSource(std::uint64_t seed, double pole_length);

  std::vector<SourceSample> Advance(double wall_seconds) override;
  SourceState State() const override { return state_; }
  void Play() override { state_ = SourceState::Running; }
  void Pause() override { state_ = SourceState::Paused; }
  std::string Name() const override { return {}; }

  /// @name How the pole stands
  /// @{
  void PushOver(double tilt, double lean);
  void TurnBy(double degrees) { heading_ += degrees; }
  void TurnOverBy(double degrees) { over_ += degrees; }
  /// Turns on and on about the pole's axis, at so many degrees a second; 0 stops.
  void SetTurning(double rate) { turning_ = rate; }
  /// Turns on and on about the sensor's y axis.
  void SetTurningOver(double rate) { turning_over_ = rate; }
  /// Back to plumb, not turned over.
  void StandPlumb();
  /// Puts the tip on the next point, five metres on.
  void WalkOn() { ++place_; }
  session::Attitude Current() const;
  double Tilt() const { return tilt_; }
  double Lean() const { return lean_; }
  /// @}
  /// @name What can go wrong
  /// @{
  /// Iron near magnetometer A.
  void SetIron(bool near) { iron_ = near; }
  bool Iron() const { return iron_; }
  /// No samples, although the source counts as running.
  void SetUnplugged(bool unplugged) { unplugged_ = unplugged; }
  bool Unplugged() const { return unplugged_; }
  /// @}

 private:
  SourceSample Read();

  session::SimulatedPole pole_;
  SourceState state_ = SourceState::Running;
  double clock_ = 0.0;
  std::int64_t samples_ = 0;
  double heading_ = 0.0;
  double over_ = 0.0;
  double tilt_ = 0.0;
  double lean_ = 0.0;
  double turning_ = 0.0;
  double turning_over_ = 0.0;
  int place_ = 0;
  bool iron_ = false;
  bool unplugged_ = false;
};

}  // namespace tiltpole::field
