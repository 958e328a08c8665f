#pragma once

/// @file
/// The verdict on a calibration and the reasons for it.

#include <string>

namespace tiltpole {

/// How far a calibration can be trusted, from best to worst.
enum class Verdict {
  Good,      ///< headings are expected within 2 degrees in every direction
  Usable,    ///< fit for work near plumb; a better one is worth the time
  Poor,      ///< headings may be off by many degrees
  Unusable,  ///< do not measure with it
};

/// What was found; the number of each never changes, so a host can key its own texts on it.
enum class QualityCode {
  ReadingsNotFinite = 1,       ///< a sample holds something that is not a number
  TooFewSamples = 2,           ///< fewer than the fit needs, or than it needs to be trusted
  ReadingsAlike = 3,           ///< the pole was not turned
  ReadingsOnALine = 4,         ///< only a short arc was turned, or one axis reads nothing
  DirectionsMissing = 5,       ///< part of the circle holds no sample
  FieldDisturbed = 6,          ///< the readings leave their ellipse: iron, or jerky turning
  ScaleBeyondReach = 7,        ///< the axes' scales differ by more than the fit can mend
  EllipseNotFitted = 8,        ///< the readings of a turn describe no ellipse
  NotConverged = 9,            ///< the fit did not settle
  FrameOffsetFailed = 10,      ///< the offset between the magnetometers could not be formed
  HeadingUncertain = 11,       ///< the expected heading error is large
  MagnetometersDisagree = 12,  ///< the headings of A and B differ by more than their errors explain
  ScalesImplausible = 13,      ///< a fitted scale is unlike any healthy sensor's
  StrengthImplausible = 14,    ///< the two turns, or the two magnetometers, see different fields
  DipSteep = 15,               ///< the field is nearly vertical: little of it tells a heading
  DipsDiffer = 16,             ///< A and B see the field under different dips
  SamplesDropped = 17,         ///< the fit rests on a small part of the samples
  ParametersOfAnotherPole = 18,  ///< a clean turn that these parameters do not fit at all
  TiltsMissing = 19,             ///< the vertical turn's tilts do not follow it
  PoleLeaned = 21,               ///< the pole leaned to one side of the sensor all along its turn
  TranslationUnfit = 20,         ///< B is not where A and the translation expect it
};

/// Which magnetometer a reason is about.
enum class ConcernedMagnetometer { Both, A, B };

/// Which turn a reason is about.
enum class ConcernedTurn { Both, Horizontal, Vertical };

/// One finding: what, how bad, where, and what to do about it.
struct QualityReason {
  QualityCode Code = QualityCode::NotConverged;  ///< what was found
  /// The verdict can be no better than this; Good for a remark.
  Verdict Weight = Verdict::Usable;
  ConcernedMagnetometer Magnetometer = ConcernedMagnetometer::Both;  ///< where
  ConcernedTurn Turn = ConcernedTurn::Both;                          ///< in which turn
  std::wstring Sentence;  ///< English, for the operator: what was found and what to do
};

}  // namespace tiltpole
