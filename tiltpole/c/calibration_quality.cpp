// The quality of a calibration.

#include "tiltpole/quality/calibration_quality.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tiltpole/c/detail/guard.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/c/detail/tip.h"
#include "tiltpole/c/quality.h"
#include "tiltpole/platform/text.h"
#include "tiltpole/quality/parameter_check.h"

using namespace tiltpole::detail;
using tiltpole::ConcernedMagnetometer;
using tiltpole::ConcernedTurn;
using tiltpole::Verdict;

static_assert(static_cast<int>(Verdict::Good) == TILTPOLE_VERDICT_GOOD);
static_assert(static_cast<int>(Verdict::Usable) == TILTPOLE_VERDICT_USABLE);
static_assert(static_cast<int>(Verdict::Poor) == TILTPOLE_VERDICT_POOR);
static_assert(static_cast<int>(Verdict::Unusable) == TILTPOLE_VERDICT_UNUSABLE);
// Both come first, so that -1 is both and 0 the first of the two.
static_assert(static_cast<int>(ConcernedMagnetometer::Both) == 0);
static_assert(static_cast<int>(ConcernedMagnetometer::A) == TILTPOLE_MAGNETOMETER_A + 1);
static_assert(static_cast<int>(ConcernedMagnetometer::B) == TILTPOLE_MAGNETOMETER_B + 1);
static_assert(static_cast<int>(ConcernedTurn::Both) == 0);
static_assert(static_cast<int>(ConcernedTurn::Horizontal) == TILTPOLE_TURN_HORIZONTAL + 1);
static_assert(static_cast<int>(ConcernedTurn::Vertical) == TILTPOLE_TURN_VERTICAL + 1);

struct tiltpole_calibration_quality {
  explicit tiltpole_calibration_quality(tiltpole::CalibrationQuality judged)
      : report(std::move(judged)) {
    for (const auto& reason : report.Reasons) sentences.push_back(NarrowText(reason.Sentence));
  }

  const tiltpole::MagnetometerQuality& Of(int magnetometer) const {
    return magnetometer == TILTPOLE_MAGNETOMETER_A ? report.A : report.B;
  }
  const tiltpole::TurnCoverage& CoverageOf(int turn) const {
    return turn == TILTPOLE_TURN_HORIZONTAL ? report.Horizontal : report.Vertical;
  }

  tiltpole::CalibrationQuality report;
  std::vector<std::string> sentences;
};

namespace {

template <class Items>
uint32_t Size(const Items& items) {
  return static_cast<uint32_t>(items.size());
}

tiltpole_turn_figures FiguresToC(const tiltpole::TurnFigures& figures, int used, int dropped) {
  return {figures.CentreFirst,
          figures.CentreSecond,
          figures.RadiusMean,
          figures.RadiusScatter,
          figures.RadiusScatterLargest,
          figures.OutOfPlaneMean,
          figures.OutOfPlaneScatter,
          figures.OutOfPlaneScatterLargest,
          figures.Samples,
          used,
          dropped,
          0};
}

tiltpole_magnetometer_quality MagnetometerToC(const tiltpole::MagnetometerQuality& of) {
  const auto& heading = of.Heading;
  return {{FiguresToC(of.HorizontalBefore, of.HorizontalUsed, of.HorizontalDropped),
           FiguresToC(of.VerticalBefore, of.VerticalUsed, of.VerticalDropped)},
          {FiguresToC(of.HorizontalAfter, of.HorizontalUsed, of.HorizontalDropped),
           FiguresToC(of.VerticalAfter, of.VerticalUsed, of.VerticalDropped)},
          heading.Mean,
          heading.StandardDeviation,
          heading.RootMeanSquare,
          heading.Largest,
          heading.Systematic,
          heading.Noise,
          heading.Tilted,
          heading.TiltedLargest,
          of.FieldStrength,
          of.FieldStrengthVertical,
          of.Dip};
}

}  // namespace

int tiltpole_judge_calibration(const tiltpole_sample* horizontal, size_t horizontal_count,
                               const tiltpole_sample* vertical, size_t vertical_count,
                               const tiltpole_correction* correction_a,
                               const tiltpole_correction* correction_b,
                               const tiltpole_translation* translation,
                               tiltpole_calibration_quality** quality) {
  return Guarded([&] {
    if (AnyNull(correction_a, correction_b) || AnyNull(translation) || AnyNull(quality) ||
        NullArray(horizontal, horizontal_count) || NullArray(vertical, vertical_count)) {
      return NullPointer();
    }
    *quality = new tiltpole_calibration_quality(tiltpole::JudgeCalibration(
        FromC(horizontal, horizontal_count), FromC(vertical, vertical_count), FromC(*correction_a),
        FromC(*correction_b), FromC(*translation)));
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_judge_failed_calibration(const tiltpole_sample* horizontal, size_t horizontal_count,
                                      const tiltpole_sample* vertical, size_t vertical_count,
                                      const char* const* messages, size_t message_count,
                                      tiltpole_calibration_quality** quality) {
  return Guarded([&] {
    if (AnyNull(quality) || NullArray(horizontal, horizontal_count) ||
        NullArray(vertical, vertical_count) || NullArray(messages, message_count)) {
      return NullPointer();
    }
    std::vector<std::wstring> texts;
    for (size_t i = 0; i < message_count; ++i) {
      if (AnyNull(messages[i])) return NullPointer();
      texts.push_back(WideText(messages[i]));
    }
    *quality = new tiltpole_calibration_quality(tiltpole::JudgeFailedCalibration(
        FromC(horizontal, horizontal_count), FromC(vertical, vertical_count), texts));
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_check_parameters(const tiltpole_sample* samples, size_t count,
                              const tiltpole_correction* correction_a,
                              const tiltpole_correction* correction_b,
                              tiltpole_calibration_quality** quality) {
  return Guarded([&] {
    if (AnyNull(correction_a, correction_b) || AnyNull(quality) || NullArray(samples, count)) {
      return NullPointer();
    }
    tiltpole::CalibrationQuality report;
    report.Calibrated = true;
    report.Result = Verdict::Good;
    report.Reasons = tiltpole::CheckParameters(FromC(samples, count), FromC(*correction_a),
                                               FromC(*correction_b));
    for (const auto& reason : report.Reasons) {
      report.Result = std::max(report.Result, reason.Weight);
    }
    *quality = new tiltpole_calibration_quality(std::move(report));
    return static_cast<int>(TILTPOLE_OK);
  });
}

void tiltpole_calibration_quality_destroy(tiltpole_calibration_quality* quality) { delete quality; }

int tiltpole_quality_summary_of(const tiltpole_calibration_quality* quality,
                                tiltpole_quality_summary* summary) {
  if (AnyNull(quality) || AnyNull(summary)) return NullPointer();
  const auto& report = quality->report;
  *summary = {report.Difference.Mean,
              report.Difference.StandardDeviation,
              report.Difference.Largest,
              report.ScaleRatioY,
              report.ScaleRatioZ,
              report.FieldStrengthRatio,
              report.DipDifference,
              {report.Horizontal.CoveredPercent, report.Vertical.CoveredPercent},
              {report.Horizontal.Samples, report.Vertical.Samples},
              static_cast<int32_t>(report.Result),
              report.Calibrated ? 1 : 0,
              Size(report.Reasons),
              {Size(report.Horizontal.Missing), Size(report.Vertical.Missing)},
              {Size(report.A.Heading.ByHeading), Size(report.B.Heading.ByHeading)},
              0};
  return TILTPOLE_OK;
}

int tiltpole_quality_magnetometer(const tiltpole_calibration_quality* quality, int magnetometer,
                                  tiltpole_magnetometer_quality* figures) {
  if (AnyNull(quality) || AnyNull(figures)) return NullPointer();
  if (!IsOneOfTwo(magnetometer)) return BadMagnetometer();
  *figures = MagnetometerToC(quality->Of(magnetometer));
  return TILTPOLE_OK;
}

int tiltpole_quality_heading_errors(const tiltpole_calibration_quality* quality, int magnetometer,
                                    tiltpole_heading_error* errors, size_t capacity,
                                    size_t* count) {
  if (AnyNull(quality) || AnyNull(count) || NullArray(errors, capacity)) return NullPointer();
  if (!IsOneOfTwo(magnetometer)) return BadMagnetometer();
  const auto& all = quality->Of(magnetometer).Heading.ByHeading;
  *count = all.size();
  for (size_t i = 0; i < std::min(capacity, all.size()); ++i) {
    errors[i] = {all[i].Heading, all[i].Error, all[i].Deviation};
  }
  return TILTPOLE_OK;
}

int tiltpole_quality_reason_at(const tiltpole_calibration_quality* quality, size_t index,
                               tiltpole_quality_reason* reason) {
  if (AnyNull(quality) || AnyNull(reason)) return NullPointer();
  if (index >= quality->sentences.size()) {
    return Failed(TILTPOLE_NOT_FOUND, "the report has fewer reasons");
  }
  const auto& found = quality->report.Reasons[index];
  *reason = {static_cast<int32_t>(found.Code), static_cast<int32_t>(found.Weight),
             static_cast<int32_t>(found.Magnetometer) - 1, static_cast<int32_t>(found.Turn) - 1,
             quality->sentences[index].c_str()};
  return TILTPOLE_OK;
}

int tiltpole_quality_missing_at(const tiltpole_calibration_quality* quality, int turn, size_t index,
                                tiltpole_azimuth_range* range) {
  if (AnyNull(quality) || AnyNull(range)) return NullPointer();
  if (!IsOneOfTwo(turn)) return BadTurn();
  const auto& missing = quality->CoverageOf(turn).Missing;
  if (index >= missing.size()) return Failed(TILTPOLE_NOT_FOUND, "the turn has fewer gaps");
  *range = {missing[index].From, missing[index].To};
  return TILTPOLE_OK;
}

int tiltpole_quality_tip_options(const tiltpole_calibration_quality* quality,
                                 tiltpole_tip_options* options) {
  if (AnyNull(quality) || AnyNull(options)) return NullPointer();
  *options = ToC(tiltpole::TipOptionsFrom(quality->report));
  return TILTPOLE_OK;
}
