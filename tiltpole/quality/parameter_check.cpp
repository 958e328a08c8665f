#include "tiltpole/quality/parameter_check.h"

#include <cmath>
#include <string>

#include "tiltpole/quality/detail/attitude.h"
#include "tiltpole/quality/detail/session.h"
#include "tiltpole/quality/detail/wording.h"
#include "tiltpole/records/detail/angles.h"

namespace tiltpole {
namespace {

using M = ConcernedMagnetometer;

constexpr double kLargestStrengthScatter = 0.04;   // of the field
constexpr double kLargestDipScatter = 3.0;         // degrees
constexpr double kLargestHeadingDifference = 5.0;  // degrees, as measuring itself has it

// Root mean square of values about their mean, and about 0.
struct Spread {
  double Mean = 0.0;
  double Scatter = 0.0;
  double AboutZero = 0.0;
};

Spread SpreadOf(const std::vector<double>& values) {
  Spread spread;
  const auto n = static_cast<double>(values.size());
  for (const double value : values) spread.Mean += value / n;
  for (const double value : values) {
    spread.Scatter += (value - spread.Mean) * (value - spread.Mean) / n;
    spread.AboutZero += value * value / n;
  }
  spread.Scatter = std::sqrt(spread.Scatter);
  spread.AboutZero = std::sqrt(spread.AboutZero);
  return spread;
}

QualityReason Finding(M magnetometer, const std::wstring& found) {
  return {QualityCode::ParametersOfAnotherPole, Verdict::Unusable, magnetometer,
          ConcernedTurn::Both,
          found +
              L" The parameters belong to another pole, or there is iron nearby. Load this "
              L"pole's parameters, or calibrate it away from iron."};
}

void CheckField(const detail::TurnReadings& readings, M magnetometer,
                std::vector<QualityReason>& reasons) {
  std::vector<double> strengths;
  std::vector<double> dips;
  for (std::size_t i = 0; i < readings.Field.size(); ++i) {
    const double strength = detail::Norm(readings.Field[i]);
    const double down = -detail::Dot(readings.Field[i], readings.Up[i]);
    strengths.push_back(strength);
    dips.push_back(detail::ToDegrees(
        std::atan2(down, std::sqrt(std::fabs(strength * strength - down * down)))));
  }
  const Spread strength = SpreadOf(strengths);
  const double share = strength.Scatter / strength.Mean;
  if (!(share <= kLargestStrengthScatter)) {
    reasons.push_back(Finding(magnetometer, L"The field strength that " +
                                                detail::NameOf(magnetometer) + L" sees varies by " +
                                                detail::Tenths(100.0 * share) +
                                                L" % with the attitude of the pole."));
  }
  const double dip = SpreadOf(dips).Scatter;
  if (!(dip <= kLargestDipScatter)) {
    reasons.push_back(Finding(magnetometer, L"The dip of the field that " +
                                                detail::NameOf(magnetometer) + L" sees varies by " +
                                                detail::Tenths(dip) +
                                                L" degrees with the attitude of the pole."));
  }
}

}  // namespace

std::vector<QualityReason> CheckParameters(const std::vector<PoseSensorData>& samples,
                                           const Incline_MagneticCorrectParameter& correction_A,
                                           const Incline_MagneticCorrectParameter& correction_B) {
  std::vector<QualityReason> reasons;
  const detail::Samples finite = detail::FiniteSamples(samples);
  if (finite.empty()) return reasons;
  const detail::Samples corrected = detail::Corrected(finite, correction_A, correction_B);
  const detail::TurnReadings a = detail::Readings_A(corrected);
  const detail::TurnReadings b = detail::Readings_B(corrected);
  CheckField(a, M::A, reasons);
  CheckField(b, M::B, reasons);
  std::vector<double> differences;
  for (std::size_t i = 0; i < a.Field.size(); ++i) {
    const detail::Vector3& up = a.Up[i];
    differences.push_back(
        detail::WrapTo180(detail::HeadingOfXAxis(detail::NorthFromField(b.Field[i], up, 0.0), up) -
                          detail::HeadingOfXAxis(detail::NorthFromField(a.Field[i], up, 0.0), up)));
  }
  const double difference = SpreadOf(differences).AboutZero;
  if (!(difference <= kLargestHeadingDifference)) {
    reasons.push_back(Finding(M::Both, L"The headings of the two magnetometers differ by " +
                                           detail::Tenths(difference) + L" degrees."));
  }
  return reasons;
}

}  // namespace tiltpole
