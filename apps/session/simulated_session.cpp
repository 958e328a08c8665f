#include "apps/session/simulated_session.h"

#include <cmath>

namespace tiltpole::session {
namespace {

constexpr std::int64_t kSamplesPerSecond = 10;
constexpr std::int64_t kStart = std::int64_t{8} * 3600;
constexpr std::int64_t kDay = std::int64_t{24} * 3600;
constexpr double kPositionStep = 1e-9;
// Off the cardinal directions, so that no axis happens to lie along the field during a turn.
constexpr double kVerticalTurnHeading = 30.0;
// Turning by this angle from point to point leans the pole evenly in all directions.
constexpr double kGoldenAngle = 137.50776405003785;

PoseSensorData::TimeOfDay TimeOfRow(std::int64_t row) {
  const std::int64_t second = (kStart + row / kSamplesPerSecond) % kDay;
  PoseSensorData::TimeOfDay time;
  time[0] = static_cast<std::int32_t>(second / 3600);
  time[1] = static_cast<std::int32_t>(second / 60 % 60);
  time[2] = static_cast<std::int32_t>(second % 60);
  return time;
}

}  // namespace

SimulatedSession::SimulatedSession(const SessionPlan& plan, SimulatedPole& pole, std::uint64_t seed)
    : plan_(plan), pole_(pole), random_(~seed) {
  while (points_in_line_ * points_in_line_ < plan_.points) ++points_in_line_;
}

SessionColumns SimulatedSession::Columns() {
  SessionColumns columns;
  columns.antenna = true;
  columns.true_tip = true;
  return columns;
}

bool SimulatedSession::Next(SessionSample& sample) {
  if (row_ >= Rows()) return false;
  sample.antenna.reset();
  sample.true_tip.reset();
  const std::int64_t per_turn = plan_.samples_per_turn;
  if (row_ < 2 * per_turn) {
    sample.set = row_ < per_turn ? SampleSet::Horizontal : SampleSet::Vertical;
    sample.sensors = pole_.Read(AttitudeInTurn(sample.set, row_ % per_turn));
  } else {
    const std::int64_t point = row_ - 2 * per_turn;
    const Attitude attitude = AttitudeAtPoint(point);
    sample.set = SampleSet::Measure;
    sample.sensors = pole_.Read(attitude);
    Place(sample, point, attitude);
  }
  sample.sensors.Tag = TimeOfRow(row_);
  ++row_;
  return true;
}

Attitude SimulatedSession::AttitudeInTurn(SampleSet set, std::int64_t index) const {
  const double angle =
      360.0 * static_cast<double>(index) / static_cast<double>(plan_.samples_per_turn);
  const Attitude steady = set == SampleSet::Horizontal
                              ? Attitude::Plumb(angle)
                              : Attitude::Plumb(kVerticalTurnHeading).TurnedAboutY(angle);
  return steady.Leaned(plan_.wobble * SineCosineOf(3.0 * angle).sine, 7.0 * angle);
}

Attitude SimulatedSession::AttitudeAtPoint(std::int64_t index) {
  const auto number = static_cast<double>(index);
  const double tilt = plan_.largest_tilt * (number + 0.5) / static_cast<double>(plan_.points);
  const double heading = 360.0 * random_.Uniform();
  return Attitude::Plumb(heading).Leaned(tilt, std::fmod(kGoldenAngle * number, 360.0));
}

void SimulatedSession::Place(SessionSample& sample, std::int64_t index,
                             const Attitude& attitude) const {
  const std::int64_t line = index / points_in_line_;
  const std::int64_t place = index % points_in_line_;
  xyhCoordinate tip;
  tip.x = 1000.0 + 5.0 * static_cast<double>(line);
  tip.y = 2000.0 + 5.0 * static_cast<double>(place);
  tip.h = 50.0 + static_cast<double>((line + place) % 7) / 10.0;
  const xyhCoordinate offset = pole_.TipOffset(attitude);
  xyhCoordinate antenna;
  antenna.x = RoundToStep(tip.x - offset.x, kPositionStep);
  antenna.y = RoundToStep(tip.y - offset.y, kPositionStep);
  antenna.h = RoundToStep(tip.h - offset.h, kPositionStep);
  sample.true_tip = tip;
  sample.antenna = antenna;
}

}  // namespace tiltpole::session
