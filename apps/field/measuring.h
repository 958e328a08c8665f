#pragma once

// From one sample to what the operator sees of it.

#include <optional>

#include "apps/field/calibration_state.h"
#include "apps/field/sample_source.h"
#include "tiltpole/quality/point_quality.h"
#include "tiltpole/quality/rigorous_tip.h"

namespace tiltpole::field {

/// One sample, worked out.
struct Reading {
  SourceSample raw;
  RigorousTip tip;       ///< offset, heading and tilt
  PointQuality quality;  ///< of the offset alone; the antenna's own uncertainty comes on top
  bool still = false;
  /// The magnetometers contradict each other: by their readings, or by their headings.
  bool disturbed = false;
  /// The tip in the antenna's frame [m]; empty without an antenna position.
  std::optional<xyhCoordinate> position;
  /// Whether all of the offset could be told.
  bool IsTold() const { return tip.Status == TipStatus::Solved || tip.Status == TipStatus::Plumb; }
};

/// Measures with one set of parameters. The tip is the rigorous one, so that it holds at any tilt;
/// the flags are those of CInclineSensor_Position.
class Measuring {
 public:
  explicit Measuring(double pole_length) : pole_length_(pole_length) {}

  void SetCalibration(const CalibrationState& calibration) { calibration_ = calibration; }
  const CalibrationState& Calibration() const { return calibration_; }
  void SetPoleLength(double length) { pole_length_ = length; }
  double PoleLength() const { return pole_length_; }

  Reading Take(const SourceSample& sample);

 private:
  CalibrationState calibration_ = Uncalibrated();
  double pole_length_;
};

}  // namespace tiltpole::field
