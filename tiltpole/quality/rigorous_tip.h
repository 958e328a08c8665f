#pragma once

/// @file
/// The pole tip without small-angle shortcuts: attitude, heading and tip as one rotation.

#include "tiltpole/export.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole {

/// Which magnetometers a heading came from.
enum class HeadingSource {
  None,            ///< neither told a direction, or none was needed
  Magnetometer_A,  ///< A alone
  Magnetometer_B,  ///< B alone, turned from its mounting
  Both,            ///< the weighted mean of both directions
};

/// How a rigorous tip came out.
enum class TipStatus {
  Solved,  ///< all of the tip is told
  Plumb,   ///< leans by less than 1e-10 rad: the tip is below the antenna, whatever the heading
  HeadingCannotBeTold,  ///< the pole leans, but the field is vertical or a reading not a number
  TiltsImpossible,      ///< the tilts cannot belong to perpendicular axes, or are not numbers
};

/// What the rigorous tip takes for granted about the two magnetometers.
struct RigorousTipOptions {
  double MagneticBiasAngle_A = 0.0;  ///< subtracted from A's heading [degrees]
  double MagneticBiasAngle_B = 0.0;  ///< subtracted from B's heading [degrees]
  /// Set to leave A out, for instance since iron is known to be near it.
  bool Disturbed_A = false;
  /// Set to leave B out.
  bool Disturbed_B = false;
  /// Standard deviation of each heading [degrees, above 0]: the weights are 1 over their squares.
  /// The calibration's quality gives them.
  double HeadingDeviation_A = 1.0;
  double HeadingDeviation_B = 1.0;  ///< @copydoc HeadingDeviation_A
  /// Headings further apart than this do not agree [degrees]; above 90 it counts as 90.
  double LargestHeadingDifference = 5.0;
};

/// The tip and what it rests on.
struct RigorousTip {
  /// What of the tip could be told.
  TipStatus Status = TipStatus::TiltsImpossible;
  /// Offset of the tip from the antenna, in the unit of the pole length. x and y are not numbers
  /// when the heading cannot be told; none is a number when the tilts are impossible.
  xyhCoordinate Offset;
  /// Which magnetometers the heading came from.
  HeadingSource Source = HeadingSource::None;
  /// Whether both told a direction and these agree within the limit. When they do not, and neither
  /// was said to be disturbed, the heading is A's and this is false.
  bool Agree = false;
  /// B's heading less A's, wrapped [degrees, -180 to 180); not a number unless both tell one.
  double HeadingDifference = 0.0;
  /// Heading of the x axis' horizontal projection that the tip rests on [degrees, 0 to 360), and
  /// the two magnetometers' own; not a number where there is none.
  double Heading = 0.0;
  double Heading_A = 0.0;  ///< @copydoc Heading
  double Heading_B = 0.0;  ///< @copydoc Heading
  /// Angle between the pole and the plumb line [degrees].
  double Tilt = 0.0;
  /// Dip of the field that the heading came from, downwards positive [degrees, -90 to 90]; not a
  /// number where there is none. With both magnetometers, their mean.
  double Dip = 0.0;
};

/// The tip of a tilted pole from corrected readings, by its attitude as a rotation.
///
/// The tilts are the elevations of the sensor's x and y axes above the horizontal plane, so the
/// upward vertical in the sensor's frame (x forward, y left, z up the pole) is
/// u = (sin a, sin b, sqrt(1 - sin^2 a - sin^2 b)). The field's part normal to u points north, less
/// the bias; the tip lies one pole length down the z axis. With ideal sensors the offset is exact
/// to 1e-9 of the pole length at every heading, for tilts up to 80 degrees and dips from -70 to 70
/// degrees. CInclineSensor_Position::Position takes the y tilt for a turn about x in its heading
/// instead, which costs millimetres at 15 degrees of tilt; its results stay as they are.
///
/// Headings are magnetic, clockwise, less the bias angles. When both magnetometers agree, the
/// horizontal unit vectors towards north are averaged by their weights.
///
/// @param[in] corrected  a sample whose six magnetometer fields hold corrected readings, as
///                       Position and CorrectSample leave them
/// @param[in] length     pole length, antenna to tip, in any unit
/// @param[in] options    biases, weights, and which magnetometer is known to be disturbed
/// @return the tip; TipStatus says what could not be told. A deviation that is not above 0 counts
///         as 1. Cost: a dozen trigonometric functions, no memory.
TILTPOLE_EXPORT RigorousTip SolveRigorousTip(const PoseSensorData& corrected, double length,
                                             const RigorousTipOptions& options = {});

/// A copy of a sample with both raw readings replaced by corrected ones; nothing else changes.
TILTPOLE_EXPORT PoseSensorData CorrectSample(const PoseSensorData& raw,
                                             const Incline_MagneticCorrectParameter& correction_A,
                                             const Incline_MagneticCorrectParameter& correction_B);

}  // namespace tiltpole
