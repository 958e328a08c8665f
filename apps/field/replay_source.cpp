#include "apps/field/replay_source.h"

#include <filesystem>
#include <iostream>

#include "apps/session/input_error.h"

namespace tiltpole::field {
namespace {

// A file without a usable clock could hold all its rows in one second.
constexpr std::size_t kMostRowsInASecond = 1000;
// So that a window stays responsive at any speed.
constexpr std::size_t kMostSamplesAtOnce = 250;

bool SameSecond(const session::SessionSample& a, const session::SessionSample& b) {
  return a.set == b.set && a.sensors.Tag[0] == b.sensors.Tag[0] &&
         a.sensors.Tag[1] == b.sensors.Tag[1] && a.sensors.Tag[2] == b.sensors.Tag[2];
}

}  // namespace

// A fault is shown on a small screen: the file's name is enough there.
ReplaySource::ReplaySource(const std::string& path)
    : file_(path, std::cin),
      reader_(file_.Stream(), std::filesystem::u8path(file_.Name()).filename().u8string()) {}

std::optional<double> ReplaySource::Progress() const {
  if (!file_.Size() || *file_.Size() == 0) return std::nullopt;
  return static_cast<double>(reader_.Table().BytesRead()) / static_cast<double>(*file_.Size());
}

void ReplaySource::Play() {
  if (state_ != SourceState::Paused) return;
  state_ = SourceState::Running;
  // Play says that the pause before the points is over.
  if (!due_.empty()) last_given_ = due_.front().set;
}

void ReplaySource::Pause() {
  if (state_ == SourceState::Running) state_ = SourceState::Paused;
}

bool ReplaySource::ReadRow(session::SessionSample& row) {
  try {
    return reader_.Next(row);
  } catch (const session::InputError& error) {
    fault_ = error.what();
    return false;
  }
}

bool ReplaySource::ReadSecond() {
  if (!begun_) {
    begun_ = true;
    session::SessionSample first;
    if (ReadRow(first)) ahead_ = first;
  } else {
    second_begins_ += 1.0;
  }
  if (!ahead_) return false;
  std::vector<session::SessionSample> rows = {*ahead_};
  ahead_.reset();
  session::SessionSample row;
  while (ReadRow(row)) {
    if (!SameSecond(row, rows.front()) || rows.size() == kMostRowsInASecond) {
      ahead_ = row;
      break;
    }
    rows.push_back(row);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(rows.size());
    due_.push_back(
        {rows[i].sensors, second_begins_ + share, rows[i].set, rows[i].antenna, rows[i].true_tip});
  }
  return true;
}

bool ReplaySource::StopsBeforePoints() const {
  return last_given_ && *last_given_ != SampleSet::Measure &&
         due_.front().set == SampleSet::Measure;
}

std::vector<SourceSample> ReplaySource::Advance(double wall_seconds) {
  std::vector<SourceSample> given;
  if (state_ != SourceState::Running) return given;
  clock_ += wall_seconds * Speed();
  while (given.size() < kMostSamplesAtOnce) {
    if (due_.empty() && !ReadSecond()) {
      state_ = fault_.empty() ? SourceState::Ended : SourceState::Broken;
      return given;
    }
    if (due_.front().seconds > clock_) return given;
    if (StopsBeforePoints()) {
      clock_ = due_.front().seconds;
      state_ = SourceState::Paused;
      return given;
    }
    last_given_ = due_.front().set;
    given.push_back(due_.front());
    due_.pop_front();
  }
  clock_ = given.back().seconds;
  return given;
}

}  // namespace tiltpole::field
