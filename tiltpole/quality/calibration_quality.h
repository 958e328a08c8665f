#pragma once

/// @file
/// How good a calibration is, in degrees of heading, and why it failed.

#include <string>
#include <vector>

#include "tiltpole/export.h"
#include "tiltpole/quality/quality_reason.h"
#include "tiltpole/quality/rigorous_tip.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole {

/// The circle that one magnetometer traced in one turn: x and y in the horizontal turn, x and z in
/// the vertical one [counts]. Figures are not numbers when there is no sample.
struct TurnFigures {
  int Samples = 0;  ///< that the figures rest on
  /// Centre of the best circle before correction; after it, the mean wave of the radius tells how
  /// far the circle still lies off the origin.
  double CentreFirst = 0.0;
  double CentreSecond = 0.0;  ///< @copydoc CentreFirst
  /// Mean distance from the centre (before) or from the origin (after).
  double RadiusMean = 0.0;
  double RadiusScatter = 0.0;             ///< root mean square of the distances from RadiusMean
  double RadiusScatterLargest = 0.0;      ///< largest of them
  double OutOfPlaneMean = 0.0;            ///< mean of the third axis
  double OutOfPlaneScatter = 0.0;         ///< root mean square of the third axis about its mean
  double OutOfPlaneScatterLargest = 0.0;  ///< largest of them
};

/// The expected heading error in one direction.
struct HeadingErrorAt {
  double Heading = 0.0;    ///< [degrees]
  double Error = 0.0;      ///< what every measurement there shares [degrees]
  double Deviation = 0.0;  ///< standard deviation of Error as it is known [degrees]
};

/// The heading error that measurements with a plumb pole will show, against the true heading of the
/// sensor's x axis from magnetic north [degrees].
///
/// Told from the samples, without knowing the truth: an offset or a scale that is wrong makes the
/// corrected circle's radius wave once or twice a turn, and the heading's error is the same wave a
/// quarter of a period on. The constant part follows from how far the corrected y axis answers to
/// x in the vertical turn. Readings are taken to the horizontal by the samples' tilts where these
/// make the turn rounder. What the waves leave of the radius is noise, and is taken to be as large
/// along the circle as across it.
struct HeadingError {
  double Mean = 0.0;               ///< over all directions
  double StandardDeviation = 0.0;  ///< about the mean: directions and the noise of one reading
  double RootMeanSquare = 0.0;     ///< of one reading in any direction
  /// Largest over the directions of |Error| and two of its deviations, without reading noise; at
  /// most 180.
  double Largest = 0.0;
  /// Root mean square of the part that every measurement in a direction shares.
  double Systematic = 0.0;
  double Noise = 0.0;  ///< standard deviation of one reading about it
  /// Root mean square of one reading with the pole tilted by 30 degrees, in any direction.
  double Tilted = 0.0;
  /// Largest with the pole tilted by 30 degrees, in any direction; at most 180.
  double TiltedLargest = 0.0;
  std::vector<HeadingErrorAt> ByHeading;  ///< 72 directions, 0, 5 ... 355
};

/// One magnetometer's part of the report.
struct MagnetometerQuality {
  TurnFigures HorizontalBefore;        ///< the horizontal turn, raw
  TurnFigures HorizontalAfter;         ///< the horizontal turn, corrected
  TurnFigures VerticalBefore;          ///< the vertical turn, raw
  TurnFigures VerticalAfter;           ///< the vertical turn, corrected
  HeadingError Heading;                ///< expected with this magnetometer alone
  double FieldStrength = 0.0;          ///< from the horizontal turn [counts of the x axis]
  double FieldStrengthVertical = 0.0;  ///< from the vertical turn; the same in a good calibration
  double Dip = 0.0;                    ///< of the field, downwards positive [degrees]
  /// Samples that the fit rests on, and those left out by its limit of 1000 on the residual of the
  /// conic, which applies while more than 20 pass. Worked out anew with the final parameters, so
  /// it can differ from the fit's own history by the samples near the limit.
  int HorizontalUsed = 0;
  int HorizontalDropped = 0;  ///< @copydoc HorizontalUsed
  int VerticalUsed = 0;       ///< @copydoc HorizontalUsed
  int VerticalDropped = 0;    ///< @copydoc HorizontalUsed
};

/// Directions without a sample, clockwise [degrees, 0 to 360]: 0 to 360 where there is none at all.
struct AzimuthRange {
  double From = 0.0;  ///< not below To where the range passes 0
  double To = 0.0;    ///< the end
};

/// Which directions a turn covered, by magnetometer A: headings of the x axis in the horizontal
/// turn, directions of the reading in the x-z plot in the vertical one.
struct TurnCoverage {
  int Samples = 0;                    ///< of the turn, the readings finite
  double CoveredPercent = 0.0;        ///< of the circle, outside the missing ranges
  std::vector<AzimuthRange> Missing;  ///< gaps above 30 degrees, by From
};

/// B's heading less A's over the horizontal turn [degrees].
struct HeadingDifference {
  double Mean = 0.0;               ///< over the turn
  double StandardDeviation = 0.0;  ///< about the mean
  double Largest = 0.0;            ///< largest without its sign
};

/// The report on a calibration.
struct CalibrationQuality {
  Verdict Result = Verdict::Unusable;  ///< how far to trust it
  std::vector<QualityReason> Reasons;  ///< worst first; empty for a calibration without fault
  bool Calibrated = false;             ///< false in the report on a failed calibration
  MagnetometerQuality A;               ///< magnetometer A's part
  MagnetometerQuality B;               ///< magnetometer B's part
  TurnCoverage Horizontal;             ///< which headings the horizontal turn covered
  TurnCoverage Vertical;               ///< which directions the vertical turn covered
  HeadingDifference Difference;        ///< between the two magnetometers
  double ScaleRatioY = 0.0;            ///< A's b over B's
  double ScaleRatioZ = 0.0;            ///< A's e over B's
  double FieldStrengthRatio = 0.0;     ///< A's over B's: the ratio of the x axes' gains
  double DipDifference = 0.0;          ///< A's dip less B's [degrees]
};

/// Judges a calibration by the samples that it was made from, or parameters of any origin by the
/// samples of a pole.
///
/// Checked on simulated poles of 200 random sensors a case, with axes that swayed by up to 3
/// degrees, noise to 1 % of the field and cross terms to 0.05 beyond what the correction can undo:
/// over each population the expected root mean square is within 5 % of the true one, plumb and
/// tilted by 30 degrees, and for single sensors within 20 % in about nine cases of ten (three of
/// four where half of the circle is missing). Without tilts in the samples a population agrees
/// within 15 %, a single sensor in about half of the cases, so the verdict is then never Good. No
/// calibration called Good was off by more than 1.9 degrees in any direction. What cannot be seen:
/// a field that is disturbed alike in every direction, and declination.
///
/// @param[in] horizontal   raw samples of the turn about the z axis, in order of arrival
/// @param[in] vertical     raw samples of the turn about the y axis
/// @param[in] correction_A, correction_B, translation  the parameters to judge
/// @return the report. Samples whose readings are anything but finite numbers are left out and said
///         so. Tilts that no axis can have, beyond 95 degrees, count as 0; where more than a tenth
///         are such (an angle that counts a whole turn), all count as missing.
///         Cost: linear in the samples, but for one sort; a few microseconds a sample.
///         Nothing is thrown but std::bad_alloc; the same holds for the two below.
TILTPOLE_EXPORT CalibrationQuality JudgeCalibration(
    const std::vector<PoseSensorData>& horizontal, const std::vector<PoseSensorData>& vertical,
    const Incline_MagneticCorrectParameter& correction_A,
    const Incline_MagneticCorrectParameter& correction_B,
    const Incline_MagneticTranslationParameter& translation);

/// Says why CInclineSensor_MagneticAdjust::Adjust returned 0.
///
/// @param[in] horizontal, vertical  the samples that Adjust was given
/// @param[in] messages  the texts of the messages that it showed, in order
/// @return a report with the verdict Unusable, at least one reason, coverage and the figures before
///         correction. The reasons that the samples show come before those that only repeat the
///         messages.
TILTPOLE_EXPORT CalibrationQuality JudgeFailedCalibration(
    const std::vector<PoseSensorData>& horizontal, const std::vector<PoseSensorData>& vertical,
    const std::vector<std::wstring>& messages);

/// The options of a rigorous tip that a calibration's quality suggests: the expected heading errors
/// as deviations, the biases left at 0.
TILTPOLE_EXPORT RigorousTipOptions TipOptionsFrom(const CalibrationQuality& quality);

}  // namespace tiltpole
