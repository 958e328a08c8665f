#include "apps/field/simulated_source.h"

#include <algorithm>
#include <cmath>

namespace tiltpole::field {
namespace {

constexpr double kSamplesPerSecond = 20.0;
constexpr std::size_t kMostSamplesAtOnce = 250;
constexpr double kLargestTilt = 60.0;

session::PoleSettings SettingsOf(double pole_length) {
  session::PoleSettings settings;
  settings.pole_length = pole_length;
  settings.errors_a = session::TypicalErrors_A();
  settings.errors_b = session::TypicalErrors_B();
  settings.errors_a.noise = 4.0;
  settings.errors_b.noise = 4.0;
  settings.tilt_noise = 0.02;
  return settings;
}

PoseSensorData::TimeOfDay TimeOf(double seconds) {
  constexpr std::int32_t kStart = 8 * 3600;
  constexpr double kDay = 24.0 * 3600.0;
  const auto second = static_cast<std::int32_t>(std::fmod(kStart + seconds, kDay));
  PoseSensorData::TimeOfDay time;
  time[0] = second / 3600;
  time[1] = second / 60 % 60;
  time[2] = second % 60;
  return time;
}

}  // namespace

SimulatedSource::SimulatedSource(std::uint64_t seed, double pole_length)
    : pole_(SettingsOf(pole_length), seed) {}

void SimulatedSource::PushOver(double tilt, double lean) {
  tilt_ = std::clamp(tilt, 0.0, kLargestTilt);
  lean_ = lean;
}

void SimulatedSource::StandPlumb() {
  tilt_ = 0.0;
  over_ = 0.0;
}

session::Attitude SimulatedSource::Current() const {
  return session::Attitude::Plumb(heading_).TurnedAboutY(over_).Leaned(tilt_, lean_);
}

std::vector<SourceSample> SimulatedSource::Advance(double wall_seconds) {
  std::vector<SourceSample> given;
  if (state_ != SourceState::Running) return given;
  clock_ += wall_seconds * Speed();
  while (given.size() < kMostSamplesAtOnce &&
         static_cast<double>(samples_) / kSamplesPerSecond <= clock_) {
    heading_ = std::fmod(heading_ + turning_ / kSamplesPerSecond + 360.0, 360.0);
    over_ = std::fmod(over_ + turning_over_ / kSamplesPerSecond + 360.0, 360.0);
    SourceSample sample = Read();
    ++samples_;
    if (!unplugged_) given.push_back(sample);
  }
  clock_ = std::min(clock_, static_cast<double>(samples_) / kSamplesPerSecond);
  return given;
}

SourceSample SimulatedSource::Read() {
  const session::Attitude attitude = Current();
  SourceSample sample;
  sample.seconds = static_cast<double>(samples_) / kSamplesPerSecond;
  sample.sensors = pole_.Read(attitude);
  sample.sensors.Tag = TimeOf(sample.seconds);
  if (iron_) {
    sample.sensors.MagneticX_A += 500.0;
    sample.sensors.MagneticY_A -= 350.0;
  }
  const xyhCoordinate tip{1000.0 + 5.0 * place_, 2000.0, 50.0};
  const xyhCoordinate offset = pole_.TipOffset(attitude);
  sample.true_tip = tip;
  sample.antenna = xyhCoordinate{tip.x - offset.x, tip.y - offset.y, tip.h - offset.h};
  return sample;
}

}  // namespace tiltpole::field
