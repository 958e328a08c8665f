#include "apps/field/still_average.h"

#include <algorithm>
#include <cmath>

namespace tiltpole::field {
namespace {

// One odd sample must not make a point.
constexpr std::size_t kFewestSamples = 5;
// A pole that is carried upright looks still to its sensors, but its antenna moves. A pole that
// sways within the half degree that counts as still moves its antenna by less.
constexpr double kWalkedDistance = 0.10;

double Distance(const xyhCoordinate& a, const xyhCoordinate& b) {
  return std::hypot(a.x - b.x, a.y - b.y, a.h - b.h);
}

// The tip as an offset that all readings share: from the antenna of the first of them, so that an
// antenna that sways does not blur the average.
xyhCoordinate OffsetFromFirst(const Reading& reading, const Reading& first) {
  if (!reading.position || !first.raw.antenna) return reading.tip.Offset;
  return {reading.position->x - first.raw.antenna->x, reading.position->y - first.raw.antenna->y,
          reading.position->h - first.raw.antenna->h};
}

void AverageTips(const std::vector<Reading>& readings, StoredPoint& point) {
  const auto count = static_cast<double>(readings.size());
  xyhCoordinate mean;
  for (const Reading& reading : readings) {
    const xyhCoordinate offset = OffsetFromFirst(reading, readings.front());
    mean.x += offset.x / count;
    mean.y += offset.y / count;
    mean.h += offset.h / count;
  }
  double squares = 0.0;
  for (const Reading& reading : readings) {
    const double distance = Distance(OffsetFromFirst(reading, readings.front()), mean);
    squares += distance * distance;
  }
  point.spread = std::sqrt(squares / count);
  point.offset = mean;
  const auto& antenna = readings.front().raw.antenna;
  if (antenna) {
    point.position = xyhCoordinate{antenna->x + mean.x, antenna->y + mean.y, antenna->h + mean.h};
  }
}

void Describe(const Reading& last, StoredPoint& point) {
  point.sigma_north = last.quality.North;
  point.sigma_east = last.quality.East;
  point.sigma_height = last.quality.Height;
  point.semi_major = last.quality.SemiMajor;
  point.semi_minor = last.quality.SemiMinor;
  point.semi_major_azimuth = last.quality.SemiMajorAzimuth;
  point.tilt = last.tip.Tilt;
  point.heading = last.tip.Heading;
  point.time = last.raw.sensors.Tag;
  if (point.position && last.raw.true_tip) {
    point.true_error = Distance(*point.position, *last.raw.true_tip);
  }
}

unsigned FlagsOf(const std::vector<Reading>& readings, const CalibrationState& calibration) {
  const auto any = [&readings](auto is) {
    return std::any_of(readings.begin(), readings.end(), is);
  };
  unsigned flags = 0;
  if (any([](const Reading& r) { return !r.still; })) flags |= kPoleMoved;
  if (any([](const Reading& r) { return r.disturbed; })) flags |= kMagnetometersDisagree;
  if (!calibration.calibrated) flags |= kNotCalibrated;
  if (!readings.front().raw.antenna) flags |= kNoAntenna;
  return flags;
}

}  // namespace

void StillAverage::Start(double seconds) {
  readings_.clear();
  restarts_ = 0;
  wanted_ = seconds;
  active_ = true;
}

void StillAverage::Cancel() {
  active_ = false;
  readings_.clear();
}

bool StillAverage::HasWalked(const Reading& reading) const {
  if (readings_.empty()) return false;
  const auto& then = readings_.front().raw.antenna;
  const auto& now = reading.raw.antenna;
  if (then.has_value() != now.has_value()) return true;
  return then && Distance(*then, *now) > kWalkedDistance;
}

void StillAverage::Add(const Reading& reading) {
  if (!active_ || IsDone()) return;
  if (!reading.still || HasWalked(reading)) {
    if (!readings_.empty()) ++restarts_;
    readings_.clear();
  }
  if (reading.still && reading.IsTold()) readings_.push_back(reading);
}

double StillAverage::Duration() const {
  return readings_.empty() ? 0.0 : readings_.back().raw.seconds - readings_.front().raw.seconds;
}

bool StillAverage::IsDone() const {
  return active_ && readings_.size() >= kFewestSamples && Duration() >= wanted_;
}

double StillAverage::Progress() const {
  const double by_time = wanted_ > 0.0 ? Duration() / wanted_ : 1.0;
  const double by_count = static_cast<double>(readings_.size()) / kFewestSamples;
  return std::clamp(std::min(by_time, by_count), 0.0, 1.0);
}

std::optional<StoredPoint> StillAverage::TakeNow(const std::optional<Reading>& latest,
                                                 const CalibrationState& calibration,
                                                 double pole_length) {
  const bool whole = IsDone();
  if (readings_.empty() && latest && latest->IsTold()) readings_.push_back(*latest);
  std::optional<StoredPoint> point;
  if (!readings_.empty()) {
    point.emplace();
    point->samples = static_cast<int>(readings_.size());
    point->seconds = Duration();
    AverageTips(readings_, *point);
    Describe(readings_.back(), *point);
    point->flags = FlagsOf(readings_, calibration) | (whole ? 0U : kShortAverage);
    point->pole_length = pole_length;
    point->calibration = NameOf(calibration);
  }
  Cancel();
  return point;
}

}  // namespace tiltpole::field
