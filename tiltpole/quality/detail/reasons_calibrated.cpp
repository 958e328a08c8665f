// What corrected samples show about the parameters that corrected them.

#include <algorithm>
#include <cmath>

#include "tiltpole/quality/detail/conic.h"
#include "tiltpole/quality/detail/reasons.h"
#include "tiltpole/quality/detail/wording.h"
#include "tiltpole/records/detail/angles.h"
#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole::detail {
namespace {

using M = ConcernedMagnetometer;

// Limits of one figure, each the most that the verdict allows.
struct Limits {
  double Good;
  double Usable;
  double Poor;
};

// Degrees of heading, bounds at two deviations: a calibration called good stays below 2 degrees.
constexpr Limits kLargestError = {1.5, 5.0, 15.0};
constexpr Limits kTiltedError = {1.8, 6.0, 20.0};
constexpr Limits kReadingNoise = {1.0, 3.0, 10.0};
constexpr Limits kHeadingDifference = {3.0, 5.0, 15.0};
// Shares and degrees of the field.
constexpr Limits kStrengthDifference = {0.03, 0.1, 0.3};
constexpr Limits kStrengthRatio = {1.5, 2.5, 5.0};
constexpr Limits kDip = {75.0, 80.0, 87.0};
constexpr Limits kDipDifference = {2.0, 5.0, 20.0};

// Not a number is worse than any limit.
Verdict WeightOf(double figure, const Limits& limits) {
  if (figure <= limits.Good) return Verdict::Good;
  if (figure <= limits.Usable) return Verdict::Usable;
  return figure <= limits.Poor ? Verdict::Poor : Verdict::Unusable;
}

void AddUnlessGood(Reasons& reasons, const QualityReason& reason) {
  if (reason.Weight != Verdict::Good) reasons.push_back(reason);
}

void FindFaultsOfHeading(const HeadingError& error, M magnetometer, Reasons& reasons) {
  if (std::isnan(error.RootMeanSquare)) {
    reasons.push_back({QualityCode::HeadingUncertain, Verdict::Unusable, magnetometer,
                       ConcernedTurn::Both,
                       L"How far the headings of " + NameOf(magnetometer) +
                           L" are off cannot be told from these samples. Record both turns again, "
                           L"each all the way around."});
    return;
  }
  AddUnlessGood(
      reasons, {QualityCode::HeadingUncertain, WeightOf(error.Largest, kLargestError), magnetometer,
                ConcernedTurn::Both,
                L"The headings of " + NameOf(magnetometer) + L" may be off by up to " +
                    Tenths(error.Largest) +
                    L" degrees. Hold the pole's axis still while turning, all the way around and "
                    L"away from iron, and calibrate again."});
  AddUnlessGood(reasons,
                {QualityCode::HeadingUncertain, WeightOf(error.TiltedLargest, kTiltedError),
                 magnetometer, ConcernedTurn::Vertical,
                 L"With the pole tilted by 30 degrees, headings of " + NameOf(magnetometer) +
                     L" may be off by up to " + Tenths(error.TiltedLargest) +
                     L" degrees. Repeat the turn about the sensor's y axis more evenly."});
  AddUnlessGood(
      reasons, {QualityCode::FieldDisturbed, WeightOf(error.Noise, kReadingNoise), magnetometer,
                ConcernedTurn::Both,
                L"The readings of " + NameOf(magnetometer) + L" scatter by " + Tenths(error.Noise) +
                    L" degrees of heading about what a turn in an even field gives. Move "
                    L"away from iron, vehicles and cables, and turn more slowly."});
}

}  // namespace

void FindFaultsOfHeading(const CalibrationQuality& quality, Reasons& reasons) {
  FindFaultsOfHeading(quality.A.Heading, M::A, reasons);
  FindFaultsOfHeading(quality.B.Heading, M::B, reasons);
  const double largest = quality.Difference.Largest;
  AddUnlessGood(reasons,
                {QualityCode::MagnetometersDisagree, WeightOf(largest, kHeadingDifference), M::Both,
                 ConcernedTurn::Horizontal,
                 L"The headings of the two magnetometers differ by up to " + Tenths(largest) +
                     L" degrees. Look for iron near one of them, and calibrate again."});
}

void FindFaultsOfField(const CalibrationQuality& quality, Reasons& reasons) {
  for (const M magnetometer : {M::A, M::B}) {
    const MagnetometerQuality& one = magnetometer == M::A ? quality.A : quality.B;
    const double off = std::fabs(one.FieldStrengthVertical / one.FieldStrength - 1.0);
    AddUnlessGood(reasons,
                  {QualityCode::StrengthImplausible, WeightOf(off, kStrengthDifference),
                   magnetometer, ConcernedTurn::Both,
                   L"The field of " + NameOf(magnetometer) + L" differs by " + Tenths(100.0 * off) +
                       L" % between the two turns. Make both turns in the same place, "
                       L"away from iron."});
    const double dip = std::fabs(one.Dip);
    AddUnlessGood(reasons, {QualityCode::DipSteep, WeightOf(dip, kDip), magnetometer,
                            ConcernedTurn::Horizontal,
                            L"The field of " + NameOf(magnetometer) + L" dips by " + Tenths(dip) +
                                L" degrees, so little of it tells a heading. Away from the "
                                L"magnetic poles this means iron nearby."});
    if (one.HorizontalUsed * 2 < one.HorizontalAfter.Samples ||
        one.VerticalUsed * 2 < one.VerticalAfter.Samples) {
      reasons.push_back({QualityCode::SamplesDropped, Verdict::Good, magnetometer,
                         ConcernedTurn::Both,
                         L"The fit of " + NameOf(magnetometer) + L" rests on " +
                             Whole(one.HorizontalUsed) + L" and " + Whole(one.VerticalUsed) +
                             L" samples of the two turns that lie closest to the ellipses. Nothing "
                             L"need be done while the expected heading error is small."});
    }
  }
  const double ratio = std::max(quality.FieldStrengthRatio, 1.0 / quality.FieldStrengthRatio);
  AddUnlessGood(reasons,
                {QualityCode::StrengthImplausible, WeightOf(ratio, kStrengthRatio), M::Both,
                 ConcernedTurn::Horizontal,
                 L"One magnetometer sees a field " + Tenths(ratio) +
                     L" times as strong as the other. Have the sensor checked, or look for iron "
                     L"near one of them."});
  const double difference = std::fabs(quality.DipDifference);
  AddUnlessGood(reasons,
                {QualityCode::DipsDiffer, WeightOf(difference, kDipDifference), M::Both,
                 ConcernedTurn::Horizontal,
                 L"The magnetometers see the field dip by angles " + Tenths(difference) +
                     L" degrees apart. Look for iron near one of them, and calibrate again."});
}

void FindFaultsOfParameters(const Incline_MagneticCorrectParameter& correction, M magnetometer,
                            Reasons& reasons) {
  constexpr double kSmallestScale = 0.5;
  constexpr double kLargestScale = 1.9;
  constexpr double kLargestCrossTerm = 0.3;
  const auto scale_is_sound = [](double scale) {
    return scale >= kSmallestScale && scale <= kLargestScale;
  };
  const double cross =
      std::max({std::fabs(correction.a), std::fabs(correction.c), std::fabs(correction.d)});
  if (scale_is_sound(correction.b) && scale_is_sound(correction.e) && cross <= kLargestCrossTerm) {
    return;
  }
  reasons.push_back(
      {QualityCode::ScalesImplausible, Verdict::Usable, magnetometer, ConcernedTurn::Both,
       L"The scales of " + NameOf(magnetometer) + L" are unlike a sound sensor's (y " +
           Tenths(correction.b) + L", z " + Tenths(correction.e) +
           L"). Calibrate again away from iron; if it stays, have the sensor "
           L"checked."});
}

void FindForeignParameters(const TurnReadings& horizontal, const TurnReadings& vertical,
                           M magnetometer, Reasons& reasons) {
  constexpr double kCleanShare = 0.05;
  constexpr double kLargestOffset = 0.1;
  constexpr double kLargestStretch = 0.1;
  for (const ConcernedTurn turn : {ConcernedTurn::Horizontal, ConcernedTurn::Vertical}) {
    const bool flat = turn == ConcernedTurn::Horizontal;
    const TurnPoints points = flat ? PointsInPlane(horizontal.Field, TurnPlane::XY)
                                   : PointsInPlane(vertical.Field, TurnPlane::XZ);
    const Conic conic = FitConic(points);
    if (!conic.Ellipse || ScatterShare(points, conic) > kCleanShare) continue;
    // The turn about y keeps z's offset; its x offset belongs to the other turn.
    const double offset =
        (flat ? std::hypot(conic.CentreFirst, conic.CentreSecond) : std::fabs(conic.CentreSecond)) /
        FiguresAbout(points, FitCircle(points)).RadiusMean;
    if (offset <= kLargestOffset && std::fabs(ScaleNeeded(conic) - 1.0) <= kLargestStretch) {
      continue;
    }
    reasons.push_back({QualityCode::ParametersOfAnotherPole, Verdict::Unusable, magnetometer, turn,
                       L"The samples of " + NameOf(turn) + L" are clean, but the parameters of " +
                           NameOf(magnetometer) +
                           L" do not fit them: they belong to another pole, or something on this "
                           L"one has changed. Calibrate this pole."});
  }
}

void FindLean(const TurnReadings& horizontal, double dip, Reasons& reasons) {
  if (horizontal.Up.empty()) return;
  Vector3 mean;
  for (const Vector3& up : horizontal.Up) mean = mean + up;
  const double lean = ToDegrees(std::atan2(std::hypot(mean.x, mean.y), mean.z));
  const double in_heading = std::min(lean * std::fabs(std::tan(ToRadians(dip))), 180.0);
  AddUnlessGood(reasons,
                {QualityCode::PoleLeaned, WeightOf(in_heading, kLargestError), M::Both,
                 ConcernedTurn::Horizontal,
                 L"While it was turned about its axis the pole leaned by " + Tenths(lean) +
                     L" degrees to the same side of the sensor, which puts headings off by up to " +
                     Tenths(in_heading) +
                     L" degrees. Keep the pole plumb while turning it, and check that the sensor "
                     L"sits straight on it."});
}

void FindMissingTilts(const TurnReadings& vertical, Reasons& reasons) {
  constexpr double kSmallestSweep = 0.2;
  if (vertical.Up.empty()) return;
  double smallest = vertical.Up.front().x;
  double largest = smallest;
  for (const Vector3& up : vertical.Up) {
    smallest = std::min(smallest, up.x);
    largest = std::max(largest, up.x);
  }
  if (largest - smallest > kSmallestSweep) return;
  reasons.push_back(
      {QualityCode::TiltsMissing, Verdict::Usable, M::Both, ConcernedTurn::Vertical,
       L"The tilts do not follow the turn about the sensor's y axis, so an axis that "
       L"swayed would not be seen and the heading error is only a rough estimate. "
       L"Record the tilts with the samples, as elevations of the sensor's x and y axes "
       L"in degrees."});
}

void FindUnfitTranslation(const Samples& corrected,
                          const Incline_MagneticTranslationParameter& translation,
                          Reasons& reasons) {
  std::size_t beyond = 0;
  for (const PoseSensorData& s : corrected) {
    const MagneticReading expected =
        ExpectedReading_B(translation, {s.MagneticX_A, s.MagneticY_A, s.MagneticZ_A});
    const double off = SumOfDifferences(expected, {s.MagneticX_B, s.MagneticY_B, s.MagneticZ_B});
    if (!(off <= kInterferenceDistance)) ++beyond;
  }
  if (beyond * 10 <= corrected.size()) return;
  reasons.push_back(
      {QualityCode::TranslationUnfit, Verdict::Good, M::Both, ConcernedTurn::Horizontal,
       L"In " + Whole(100.0 * static_cast<double>(beyond) / static_cast<double>(corrected.size())) +
           L" % of the turn magnetometer B reads so far from where A expects it that measuring "
           L"will report interference, although nothing may be near."});
}

}  // namespace tiltpole::detail
