#pragma once

// A point as it is kept.

#include <array>
#include <optional>
#include <string>

#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole::field {

/// What has to be said of a point; a sum of these.
enum PointFlag : unsigned {
  kPoleMoved = 1,              ///< taken while the pole moved
  kMagnetometersDisagree = 2,  ///< they contradicted each other meanwhile
  kNotCalibrated = 4,          ///< the parameters are the defaults, or were found unusable
  kShortAverage = 8,           ///< averaged for less time than was asked for
  kNoAntenna = 16,             ///< the offset is known, the antenna's position is not
};

/// The names of the flags in files, in the order of their bits.
inline constexpr std::array<const char*, 5> kFlagNames = {
    "pole_moved", "magnetometers_disagree", "not_calibrated", "short_average", "no_antenna"};

/// One point. Lengths are metres: x north, y east, h height; angles degrees.
struct StoredPoint {
  int number = 0;
  unsigned flags = 0;
  int samples = 0;       ///< averaged
  double seconds = 0.0;  ///< from the first of them to the last
  std::optional<xyhCoordinate> position;
  xyhCoordinate offset;  ///< from the antenna to the tip
  /// Standard deviations of the offset, from tilt, heading and pole length.
  double sigma_north = 0.0;
  double sigma_east = 0.0;
  double sigma_height = 0.0;
  double semi_major = 0.0;
  double semi_minor = 0.0;
  double semi_major_azimuth = 0.0;
  double spread = 0.0;  ///< root mean square distance of the averaged tips from their mean
  double tilt = 0.0;
  double heading = 0.0;
  double pole_length = 0.0;
  std::string calibration;  ///< see NameOf(CalibrationState)
  /// Distance from the true tip, where the source knows it.
  std::optional<double> true_error;
  PoseSensorData::TimeOfDay time;  ///< of the last sample
};

}  // namespace tiltpole::field
