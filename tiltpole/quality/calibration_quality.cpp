#include "tiltpole/quality/calibration_quality.h"

#include <cmath>

#include "tiltpole/quality/detail/reasons.h"
#include "tiltpole/quality/detail/sensor_error.h"
#include "tiltpole/quality/detail/session.h"
#include "tiltpole/quality/detail/turn.h"

namespace tiltpole {
namespace {

using detail::Samples;
using detail::TurnPlane;
using detail::TurnReadings;

detail::RawSession SessionOf(const Samples& horizontal, const Samples& vertical) {
  detail::RawSession session;
  session.Horizontal = detail::FiniteSamples(horizontal);
  session.Vertical = detail::FiniteSamples(vertical);
  session.Left_Out = static_cast<int>(horizontal.size() - session.Horizontal.size() +
                                      vertical.size() - session.Vertical.size());
  detail::LevelImpossibleTilts(session.Horizontal, session.Vertical);
  return session;
}

void FillBefore(const detail::RawSession& session, CalibrationQuality& quality) {
  detail::FillFiguresBefore(detail::RawReadings_A(session.Horizontal),
                            detail::RawReadings_A(session.Vertical), quality.A);
  detail::FillFiguresBefore(detail::RawReadings_B(session.Horizontal),
                            detail::RawReadings_B(session.Vertical), quality.B);
}

TurnCoverage CoverageAbout(const std::vector<detail::Vector3>& readings, TurnPlane plane) {
  const detail::TurnPoints points = detail::PointsInPlane(readings, plane);
  return detail::CoverageOf(detail::DirectionsAbout(points, detail::FitCircle(points)));
}

// The readings of both magnetometers over both turns, corrected.
struct CorrectedSession {
  Samples Horizontal;
  TurnReadings Horizontal_A, Horizontal_B, Vertical_A, Vertical_B;
};

CorrectedSession Correct(const detail::RawSession& session,
                         const Incline_MagneticCorrectParameter& correction_A,
                         const Incline_MagneticCorrectParameter& correction_B) {
  CorrectedSession corrected;
  corrected.Horizontal = detail::Corrected(session.Horizontal, correction_A, correction_B);
  const Samples vertical = detail::Corrected(session.Vertical, correction_A, correction_B);
  corrected.Horizontal_A = detail::Readings_A(corrected.Horizontal);
  corrected.Horizontal_B = detail::Readings_B(corrected.Horizontal);
  corrected.Vertical_A = detail::Readings_A(vertical);
  corrected.Vertical_B = detail::Readings_B(vertical);
  return corrected;
}

HeadingError HeadingErrorOf(const TurnReadings& horizontal, const TurnReadings& vertical) {
  return detail::ExpectedHeadingError(detail::EstimateSensorError(horizontal, vertical));
}

void FillAfter(const CorrectedSession& session, CalibrationQuality& quality) {
  detail::FillFiguresAfter(session.Horizontal_A, session.Vertical_A, quality.A);
  detail::FillFiguresAfter(session.Horizontal_B, session.Vertical_B, quality.B);
  quality.A.Heading = HeadingErrorOf(session.Horizontal_A, session.Vertical_A);
  quality.B.Heading = HeadingErrorOf(session.Horizontal_B, session.Vertical_B);
  quality.Difference = detail::DifferenceOver(session.Horizontal_A, session.Horizontal_B);
  quality.FieldStrengthRatio = quality.A.FieldStrength / quality.B.FieldStrength;
  quality.DipDifference = quality.A.Dip - quality.B.Dip;
}

}  // namespace

CalibrationQuality JudgeCalibration(const std::vector<PoseSensorData>& horizontal,
                                    const std::vector<PoseSensorData>& vertical,
                                    const Incline_MagneticCorrectParameter& correction_A,
                                    const Incline_MagneticCorrectParameter& correction_B,
                                    const Incline_MagneticTranslationParameter& translation) {
  CalibrationQuality quality;
  quality.Calibrated = true;
  const detail::RawSession raw = SessionOf(horizontal, vertical);
  const CorrectedSession corrected = Correct(raw, correction_A, correction_B);
  FillBefore(raw, quality);
  FillAfter(corrected, quality);
  quality.ScaleRatioY = correction_A.b / correction_B.b;
  quality.ScaleRatioZ = correction_A.e / correction_B.e;
  quality.Horizontal = CoverageAbout(corrected.Horizontal_A.Field, TurnPlane::XY);
  quality.Vertical = CoverageAbout(corrected.Vertical_A.Field, TurnPlane::XZ);

  detail::Reasons& reasons = quality.Reasons;
  detail::FindFaultsOfSamples(raw, reasons);
  detail::FindMissingDirections(quality, reasons);
  detail::FindForeignParameters(corrected.Horizontal_A, corrected.Vertical_A,
                                ConcernedMagnetometer::A, reasons);
  detail::FindForeignParameters(corrected.Horizontal_B, corrected.Vertical_B,
                                ConcernedMagnetometer::B, reasons);
  detail::FindFaultsOfHeading(quality, reasons);
  detail::FindFaultsOfField(quality, reasons);
  detail::FindFaultsOfParameters(correction_A, ConcernedMagnetometer::A, reasons);
  detail::FindFaultsOfParameters(correction_B, ConcernedMagnetometer::B, reasons);
  detail::FindLean(corrected.Horizontal_A, quality.A.Dip, reasons);
  detail::FindMissingTilts(corrected.Vertical_A, reasons);
  detail::FindUnfitTranslation(corrected.Horizontal, translation, reasons);
  detail::Conclude(quality);
  return quality;
}

CalibrationQuality JudgeFailedCalibration(const std::vector<PoseSensorData>& horizontal,
                                          const std::vector<PoseSensorData>& vertical,
                                          const std::vector<std::wstring>& messages) {
  CalibrationQuality quality;
  const detail::RawSession raw = SessionOf(horizontal, vertical);
  FillBefore(raw, quality);
  quality.Horizontal = CoverageAbout(detail::RawReadings_A(raw.Horizontal), TurnPlane::XY);
  quality.Vertical = CoverageAbout(detail::RawReadings_A(raw.Vertical), TurnPlane::XZ);
  detail::FindFaultsOfSamples(raw, quality.Reasons);
  detail::FindMissingDirections(quality, quality.Reasons);
  // Where little of a turn was made, that is why the fit failed.
  for (QualityReason& reason : quality.Reasons) {
    if (reason.Weight == Verdict::Poor) reason.Weight = Verdict::Unusable;
  }
  detail::FindFaultsOfFit(raw, messages, quality.Reasons);
  detail::Conclude(quality);
  return quality;
}

RigorousTipOptions TipOptionsFrom(const CalibrationQuality& quality) {
  RigorousTipOptions options;
  const auto told = [](double deviation) { return std::isfinite(deviation) && deviation > 0.0; };
  if (told(quality.A.Heading.RootMeanSquare)) {
    options.HeadingDeviation_A = quality.A.Heading.RootMeanSquare;
  }
  if (told(quality.B.Heading.RootMeanSquare)) {
    options.HeadingDeviation_B = quality.B.Heading.RootMeanSquare;
  }
  return options;
}

}  // namespace tiltpole
