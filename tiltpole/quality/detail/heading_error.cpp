// From the errors left in one magnetometer to the headings that it will give.

#include <algorithm>
#include <cmath>
#include <limits>

#include "tiltpole/quality/detail/least_squares.h"
#include "tiltpole/quality/detail/sensor_error.h"
#include "tiltpole/records/detail/angles.h"

namespace tiltpole::detail {
namespace {

constexpr int kDirections = 72;
constexpr int kLeans = 12;
constexpr double kTilt = 30.0;

// North and the vertical in the frame of a sensor with a heading, leant by `tilt` so that `towards`
// (from its x axis, clockwise) goes down [radians].
struct Attitude {
  Vector3 north;
  Vector3 up;
};

Attitude AttitudeAt(double heading, double tilt, double towards) {
  const Vector3 lean = {std::cos(towards), -std::sin(towards), 0.0};
  const Vector3 up = std::cos(tilt) * Vector3{0.0, 0.0, 1.0} - std::sin(tilt) * lean;
  const Vector3 forward = NormalPart({1.0, 0.0, 0.0}, up);
  return {TurnedClockwise((1.0 / Norm(forward)) * forward, up, -heading), up};
}

struct Part {
  double Error = 0.0;
  double Variance = 0.0;
};

Part PartAt(const SensorError& error, const Attitude& attitude) {
  const Vector3 field = attitude.north - error.Down * attitude.up;
  const ErrorRow row = ErrorAlong(Cross(attitude.north, attitude.up), field);
  // A reading pulled towards east shows a north that lies clockwise of the true one, so the heading
  // comes out smaller.
  return {-DotRows(row, error.Terms), QuadraticForm(error.Covariance, row)};
}

// An error estimated with an uncertainty. Where the fit of the parameters took an error to nothing
// in these very samples, the estimate is nothing too and the uncertainty is what remains of it;
// where the estimate stands out of its uncertainty, it is the error. Adding the two would count the
// noise of the samples twice.
double ExpectedSquare(const Part& part) { return std::max(part.Error * part.Error, part.Variance); }

// The first order of a large error exceeds half a turn, which no heading can be off.
double LargestOf(const Part& part) {
  return std::min(std::fabs(part.Error) + 2.0 * std::sqrt(std::max(0.0, part.Variance)), kPi);
}

// Over all directions and ways to lean.
struct TiltedError {
  double MeanSquare = 0.0;
  double Largest = 0.0;
};

TiltedError TiltedErrorOf(const SensorError& error) {
  TiltedError tilted;
  for (int i = 0; i < kDirections; ++i) {
    for (int j = 0; j < kLeans; ++j) {
      const Part part = PartAt(
          error, AttitudeAt(2.0 * kPi * i / kDirections, ToRadians(kTilt), 2.0 * kPi * j / kLeans));
      tilted.MeanSquare += ExpectedSquare(part) / (kDirections * kLeans);
      tilted.Largest = std::max(tilted.Largest, LargestOf(part));
    }
  }
  return tilted;
}

HeadingError NotTold() {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  HeadingError told;
  told.Mean = told.StandardDeviation = told.RootMeanSquare = told.Largest = nan;
  told.Systematic = told.Noise = told.Tilted = told.TiltedLargest = nan;
  return told;
}

}  // namespace

HeadingError ExpectedHeadingError(const SensorError& error) {
  if (!error.Told) return NotTold();
  HeadingError expected;
  double mean_square = 0.0;
  for (int i = 0; i < kDirections; ++i) {
    const double heading = 2.0 * kPi * i / kDirections;
    const Part part = PartAt(error, AttitudeAt(heading, 0.0, 0.0));
    const double deviation = std::sqrt(std::max(0.0, part.Variance));
    expected.ByHeading.push_back(
        {360.0 * i / kDirections, ToDegrees(part.Error), ToDegrees(deviation)});
    expected.Mean += part.Error / kDirections;
    mean_square += ExpectedSquare(part) / kDirections;
    expected.Largest = std::max(expected.Largest, LargestOf(part));
  }
  const double total = mean_square + error.Noise * error.Noise;
  expected.StandardDeviation =
      ToDegrees(std::sqrt(std::max(0.0, total - expected.Mean * expected.Mean)));
  expected.Mean = ToDegrees(expected.Mean);
  expected.Largest = ToDegrees(expected.Largest);
  expected.Systematic = ToDegrees(std::sqrt(mean_square));
  expected.Noise = ToDegrees(error.Noise);
  expected.RootMeanSquare = ToDegrees(std::sqrt(total));
  const TiltedError tilted = TiltedErrorOf(error);
  expected.Tilted = ToDegrees(std::sqrt(tilted.MeanSquare + error.Noise * error.Noise));
  expected.TiltedLargest = ToDegrees(tilted.Largest);
  return expected;
}

}  // namespace tiltpole::detail
