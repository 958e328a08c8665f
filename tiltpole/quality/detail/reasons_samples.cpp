// What raw samples show before any fit.

#include <algorithm>
#include <cmath>

#include "tiltpole/quality/detail/reasons.h"
#include "tiltpole/quality/detail/wording.h"

namespace tiltpole::detail {
namespace {

// The ellipse fit has five unknowns.
constexpr int kFewestForFit = 5;
// With fewer the noise of single samples reaches the parameters.
constexpr int kFewestForTrust = 30;
// A turn whose readings spread less than this share of the reading did not happen.
constexpr double kAlikeShare = 0.01;
// The shorter spread of an arc of 25 degrees is about this share of its longer one.
constexpr double kLineShare = 0.05;

void FindTooFew(int samples, ConcernedTurn turn, Reasons& reasons) {
  if (samples >= kFewestForTrust) return;
  const bool enough = samples >= kFewestForFit;
  reasons.push_back({QualityCode::TooFewSamples, enough ? Verdict::Usable : Verdict::Unusable,
                     ConcernedMagnetometer::Both, turn,
                     L"There are " + Whole(samples) + L" samples of " + NameOf(turn) +
                         (enough ? L"; 100 make it trustworthy"
                                 : L"; the fit needs 5, and 100 make it trustworthy") +
                         L". Turn once around more slowly, or record more often."});
}

// Of one reading at least.
double MeanStrength(const std::vector<Vector3>& readings) {
  double sum = 0.0;
  for (const Vector3& reading : readings) sum += Norm(reading);
  return sum / static_cast<double>(readings.size());
}

void FindNoTurn(const std::vector<Vector3>& readings, ConcernedMagnetometer magnetometer,
                ConcernedTurn turn, Reasons& reasons) {
  if (readings.empty()) return;
  const TurnPlane plane = turn == ConcernedTurn::Horizontal ? TurnPlane::XY : TurnPlane::XZ;
  const TurnSpread spread = SpreadOf(PointsInPlane(readings, plane));
  if (spread.Longer <= kAlikeShare * MeanStrength(readings)) {
    reasons.push_back({QualityCode::ReadingsAlike, Verdict::Unusable, magnetometer, turn,
                       L"The readings of " + NameOf(magnetometer) + L" hardly change over " +
                           NameOf(turn) + L". Turn the pole once around while recording."});
  } else if (spread.Shorter <= kLineShare * spread.Longer) {
    reasons.push_back({QualityCode::ReadingsOnALine, Verdict::Unusable, magnetometer, turn,
                       L"The readings of " + NameOf(magnetometer) + L" over " + NameOf(turn) +
                           L" lie on a line. Turn the pole all the way around; if it was, one "
                           L"axis of the magnetometer does not work."});
  }
}

void FindMissingIn(const TurnCoverage& coverage, ConcernedTurn turn, Reasons& reasons) {
  constexpr double kPoorPercent = 75.0;
  const Verdict weight = coverage.CoveredPercent < kPoorPercent ? Verdict::Poor : Verdict::Usable;
  for (const AzimuthRange& range : coverage.Missing) {
    const std::wstring which = Whole(range.From) + L" to " + Whole(range.To) + L" degrees";
    const std::wstring sentence =
        turn == ConcernedTurn::Horizontal
            ? L"Turn the pole through the directions " + which + L" as well."
            : L"Turn the pole about the sensor's y axis all the way around: the plot of the turn "
              L"is empty from " +
                  which + L".";
    reasons.push_back(
        {QualityCode::DirectionsMissing, weight, ConcernedMagnetometer::Both, turn, sentence});
  }
}

}  // namespace

void FindFaultsOfSamples(const RawSession& session, Reasons& reasons) {
  if (session.Left_Out > 0) {
    reasons.push_back({QualityCode::ReadingsNotFinite, Verdict::Poor, ConcernedMagnetometer::Both,
                       ConcernedTurn::Both,
                       Whole(session.Left_Out) +
                           L" samples hold readings that are not numbers. Check the connection to "
                           L"the sensor and record again."});
  }
  FindTooFew(static_cast<int>(session.Horizontal.size()), ConcernedTurn::Horizontal, reasons);
  FindTooFew(static_cast<int>(session.Vertical.size()), ConcernedTurn::Vertical, reasons);
  using M = ConcernedMagnetometer;
  FindNoTurn(RawReadings_A(session.Horizontal), M::A, ConcernedTurn::Horizontal, reasons);
  FindNoTurn(RawReadings_A(session.Vertical), M::A, ConcernedTurn::Vertical, reasons);
  FindNoTurn(RawReadings_B(session.Horizontal), M::B, ConcernedTurn::Horizontal, reasons);
  FindNoTurn(RawReadings_B(session.Vertical), M::B, ConcernedTurn::Vertical, reasons);
}

void FindMissingDirections(const CalibrationQuality& quality, Reasons& reasons) {
  if (quality.Horizontal.Samples > 0) {
    FindMissingIn(quality.Horizontal, ConcernedTurn::Horizontal, reasons);
  }
  if (quality.Vertical.Samples > 0) {
    FindMissingIn(quality.Vertical, ConcernedTurn::Vertical, reasons);
  }
}

void Conclude(CalibrationQuality& quality) {
  std::stable_sort(
      quality.Reasons.begin(), quality.Reasons.end(),
      [](const QualityReason& a, const QualityReason& b) { return a.Weight > b.Weight; });
  quality.Result = quality.Calibrated ? Verdict::Good : Verdict::Unusable;
  if (!quality.Reasons.empty() && quality.Reasons.front().Weight > quality.Result) {
    quality.Result = quality.Reasons.front().Weight;
  }
}

}  // namespace tiltpole::detail
