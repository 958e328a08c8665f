// Why a calibration failed: first what its samples show, then what its messages say.

#include <algorithm>
#include <cmath>

#include "tiltpole/quality/detail/conic.h"
#include "tiltpole/quality/detail/reasons.h"
#include "tiltpole/quality/detail/wording.h"

namespace tiltpole::detail {
namespace {

using M = ConcernedMagnetometer;

// The fit seeks the scales of y and z between 0 and 2.
constexpr double kLargestScaleFound = 1.95;
// The fit decides by the raw turn on which side of 1 the scale of z lies, and looks there only.
constexpr double kScaleNearOne = 0.12;
// Readings further from their ellipse than this share of its size were not made in an even field.
constexpr double kDisturbedShare = 0.03;

bool Mentions(const std::vector<std::wstring>& messages, const wchar_t* words) {
  return std::any_of(messages.begin(), messages.end(), [words](const std::wstring& text) {
    return text.find(words) != std::wstring::npos;
  });
}

void FindScaleBeyondReach(const Conic& conic, M magnetometer, ConcernedTurn turn,
                          Reasons& reasons) {
  const double scale = ScaleNeeded(conic);
  if (!conic.Ellipse || scale < kLargestScaleFound) return;
  const std::wstring axis = turn == ConcernedTurn::Horizontal ? L"y" : L"z";
  reasons.push_back({QualityCode::ScaleBeyondReach, Verdict::Unusable, magnetometer, turn,
                     L"The " + axis + L" axis of " + NameOf(magnetometer) +
                         L" would have to be scaled by " + Tenths(scale) +
                         L", and the fit reaches 2. Have the sensor's axes checked."});
}

void FindDisturbance(const TurnPoints& points, const Conic& conic, M magnetometer,
                     ConcernedTurn turn, Reasons& reasons) {
  if (!conic.Told) return;
  if (!conic.Ellipse) {
    reasons.push_back({QualityCode::EllipseNotFitted, Verdict::Unusable, magnetometer, turn,
                       L"The readings of " + NameOf(magnetometer) + L" over " + NameOf(turn) +
                           L" describe no ellipse. Move away from iron, and turn evenly all the "
                           L"way around."});
    return;
  }
  const double share = ScatterShare(points, conic);
  if (share <= kDisturbedShare) return;
  reasons.push_back({QualityCode::FieldDisturbed, Verdict::Unusable, magnetometer, turn,
                     L"The readings of " + NameOf(magnetometer) + L" over " + NameOf(turn) +
                         L" leave their ellipse by " + Tenths(100.0 * share) +
                         L" % of its size. Move away from iron, vehicles and cables, hold the "
                         L"turn's axis still and turn more slowly."});
}

void FindFaultsOfTurn(const std::vector<Vector3>& readings, M magnetometer, ConcernedTurn turn,
                      Reasons& reasons) {
  const TurnPlane plane = turn == ConcernedTurn::Horizontal ? TurnPlane::XY : TurnPlane::XZ;
  const TurnPoints points = PointsInPlane(readings, plane);
  const Conic conic = FitConic(points);
  FindDisturbance(points, conic, magnetometer, turn, reasons);
  FindScaleBeyondReach(conic, magnetometer, turn, reasons);
}

// A scale of z close to 1 can lie on the other side of 1 once the cross terms are taken off; the
// fit then runs out although nothing is wrong with the turns.
void FindScaleNearOne(const std::vector<Vector3>& vertical, M magnetometer, Reasons& reasons) {
  const Conic conic = FitConic(PointsInPlane(vertical, TurnPlane::XZ));
  if (!conic.Ellipse || std::fabs(ScaleNeeded(conic) - 1.0) > kScaleNearOne) return;
  reasons.push_back(
      {QualityCode::ScaleBeyondReach, Verdict::Unusable, magnetometer, ConcernedTurn::Vertical,
       L"The scale of the z axis of " + NameOf(magnetometer) +
           L" lies so close to 1 that the fit may have looked for it on the wrong side. Repeat the "
           L"turn about the sensor's y axis with the pole facing another direction."});
}

void RepeatMessages(const std::vector<std::wstring>& messages, M magnetometer, Reasons& reasons) {
  if (Mentions(messages, L"around the Z-axis")) {
    reasons.push_back({QualityCode::EllipseNotFitted, Verdict::Unusable, magnetometer,
                       ConcernedTurn::Horizontal,
                       L"No ellipse could be laid through the readings of " + NameOf(magnetometer) +
                           L" over the turn about the pole's axis. Record that turn again."});
  }
  if (Mentions(messages, L"around the Y-axis")) {
    reasons.push_back({QualityCode::EllipseNotFitted, Verdict::Unusable, magnetometer,
                       ConcernedTurn::Vertical,
                       L"No ellipse could be laid through the readings of " + NameOf(magnetometer) +
                           L" over the turn about the sensor's y axis. Record that turn again."});
  }
  if (Mentions(messages, L"Circulating")) {
    reasons.push_back({QualityCode::NotConverged, Verdict::Unusable, magnetometer,
                       ConcernedTurn::Both,
                       L"The fit of " + NameOf(magnetometer) +
                           L" did not settle. Record both turns again: all the way around, evenly, "
                           L"with the axis of each turn held still."});
  }
  if (Mentions(messages, L"Pan calculation")) {
    reasons.push_back({QualityCode::FrameOffsetFailed, Verdict::Unusable, M::Both,
                       ConcernedTurn::Horizontal,
                       L"The offset between the two magnetometers could not be formed. Record the "
                       L"turn about the pole's axis again."});
  }
}

}  // namespace

void FindFaultsOfFit(const RawSession& session, const std::vector<std::wstring>& messages,
                     Reasons& reasons) {
  const bool failed_A = Mentions(messages, L"A calculation");
  const bool failed_B = Mentions(messages, L"B calculation");
  const bool neither = !failed_A && !failed_B;
  if (failed_A || neither) {
    FindFaultsOfTurn(RawReadings_A(session.Horizontal), M::A, ConcernedTurn::Horizontal, reasons);
    FindFaultsOfTurn(RawReadings_A(session.Vertical), M::A, ConcernedTurn::Vertical, reasons);
  }
  if (failed_B || neither) {
    FindFaultsOfTurn(RawReadings_B(session.Horizontal), M::B, ConcernedTurn::Horizontal, reasons);
    FindFaultsOfTurn(RawReadings_B(session.Vertical), M::B, ConcernedTurn::Vertical, reasons);
  }
  if (Mentions(messages, L"Circulating")) {
    if (failed_A) FindScaleNearOne(RawReadings_A(session.Vertical), M::A, reasons);
    if (failed_B) FindScaleNearOne(RawReadings_B(session.Vertical), M::B, reasons);
  }
  const M magnetometer = failed_A == failed_B ? M::Both : (failed_A ? M::A : M::B);
  RepeatMessages(messages, magnetometer, reasons);
  if (!reasons.empty()) return;
  reasons.push_back({QualityCode::NotConverged, Verdict::Unusable, magnetometer,
                     ConcernedTurn::Both,
                     L"The calibration failed without saying why. Record both turns again, all the "
                     L"way around and away from iron."});
}

}  // namespace tiltpole::detail
