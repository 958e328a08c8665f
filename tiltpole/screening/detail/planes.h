#pragma once

// Where the two screenings differ, at one glance. Everything else about them is written once, over
// these tables. The first axis of both planes is MagneticX_A.

#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/screening/PoseSensorCenterParameter.h"

namespace tiltpole::detail {

// The turn about the pole's axis.
struct PlaneXY {
  static constexpr auto kSecond = &PoseSensorData::MagneticY_A;
  static constexpr auto kThird = &PoseSensorData::MagneticZ_A;
  static constexpr auto kCenterSecond = &PoseSensorCenterParameter::CenterY;
  static constexpr auto kCenterThird = &PoseSensorCenterParameter::CenterZ;

  static constexpr double kRadiusTolerance = 200.0;  // counts
  static constexpr double kLevelTolerance = 100.0;   // counts

  // The level of the plane is the mean over every record.
  static constexpr bool kLevelFromExtremesOnly = false;
  static constexpr int kCenterResultWithoutRecords = 0;
  static constexpr bool kClearInvalidatesCenter = true;
};

// The turn about the sensor's y axis. Deliberately unlike PlaneXY in more than the axes: hosts
// poll both objects side by side and rely on each as it is.
struct PlaneXZ {
  static constexpr auto kSecond = &PoseSensorData::MagneticZ_A;
  static constexpr auto kThird = &PoseSensorData::MagneticY_A;
  static constexpr auto kCenterSecond = &PoseSensorCenterParameter::CenterZ;
  static constexpr auto kCenterThird = &PoseSensorCenterParameter::CenterY;

  static constexpr double kRadiusTolerance = 500.0;  // counts
  static constexpr double kLevelTolerance = 200.0;   // counts

  // The level of the plane is the mean over the four extreme records.
  static constexpr bool kLevelFromExtremesOnly = true;
  // A set without records counts as fitted, although the centre stays as it was.
  static constexpr int kCenterResultWithoutRecords = 1;
  // The old centre outlives Clear, so the first nine records of the next turn get azimuths about
  // it at once.
  static constexpr bool kClearInvalidatesCenter = false;
};

}  // namespace tiltpole::detail
