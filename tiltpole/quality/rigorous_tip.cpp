#include "tiltpole/quality/rigorous_tip.h"

#include <cmath>
#include <limits>

#include "tiltpole/quality/detail/attitude.h"
#include "tiltpole/records/detail/angles.h"
#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole {
namespace {

using detail::Cross;
using detail::Dot;
using detail::Norm;
using detail::Vector3;

// Directions further apart than this have no mean worth the name, whatever limit the host sets
// [degrees].
constexpr double kLargestAveragedDifference = 90.0;

// A lean below this moves the tip by less than the accuracy promised [radians].
constexpr double kPlumbLean = 1e-10;

constexpr double kNotTold = std::numeric_limits<double>::quiet_NaN();

struct Direction {
  Vector3 field;
  Vector3 north;
  bool told = false;
};

Direction DirectionOf(const Vector3& field, const Vector3& up, double bias) {
  const Vector3 north = detail::NorthFromField(field, up, bias);
  return {field, north, Norm(north) > 0.5};
}

double HeadingOf(const Direction& direction, const Vector3& up) {
  return direction.told ? detail::HeadingOfXAxis(direction.north, up) : kNotTold;
}

double DipOf(const Direction& direction, const Vector3& up) {
  const double down = -Dot(direction.field, up);
  const double level = Norm(detail::NormalPart(direction.field, up));
  return detail::ToDegrees(std::atan2(down, level));
}

// B's heading less A's: clockwise from B's north to A's. The same axis has the larger heading where
// north lies further anticlockwise.
double DifferenceOf(const Direction& a, const Direction& b, const Vector3& up) {
  if (!a.told || !b.told) return kNotTold;
  const double radians = std::atan2(Dot(Cross(b.north, up), a.north), Dot(b.north, a.north));
  return detail::WrapTo180(detail::ToDegrees(radians));
}

double WeightOf(double deviation) {
  return deviation > 0.0 && std::isfinite(deviation) ? 1.0 / (deviation * deviation) : 1.0;
}

Vector3 WeightedNorth(const Direction& a, const Direction& b, const RigorousTipOptions& options) {
  const double weight_A = WeightOf(options.HeadingDeviation_A);
  const double weight_B = WeightOf(options.HeadingDeviation_B);
  const double share_B = weight_B / (weight_A + weight_B);
  const Vector3 sum = (1.0 - share_B) * a.north + share_B * b.north;
  return (1.0 / Norm(sum)) * sum;
}

HeadingSource SourceOf(const Direction& a, const Direction& b, bool agree,
                       const RigorousTipOptions& options) {
  const bool usable_A = a.told && !options.Disturbed_A;
  const bool usable_B = b.told && !options.Disturbed_B;
  if (usable_A && usable_B && agree) return HeadingSource::Both;
  if (usable_A) return HeadingSource::Magnetometer_A;
  if (usable_B) return HeadingSource::Magnetometer_B;
  return HeadingSource::None;
}

void PlaceTip(const Vector3& up, const Vector3& north, double length, RigorousTip& tip) {
  const Vector3 east = Cross(north, up);
  tip.Offset.x = -length * north.z;
  tip.Offset.y = -length * east.z;
}

void UseHeading(const Direction& a, const Direction& b, const Vector3& up,
                const RigorousTipOptions& options, RigorousTip& tip, Vector3& north) {
  switch (tip.Source) {
    case HeadingSource::Magnetometer_A:
      north = a.north;
      tip.Dip = DipOf(a, up);
      break;
    case HeadingSource::Magnetometer_B:
      north = b.north;
      tip.Dip = DipOf(b, up);
      break;
    case HeadingSource::Both:
      north = WeightedNorth(a, b, options);
      tip.Dip = 0.5 * (DipOf(a, up) + DipOf(b, up));
      break;
    case HeadingSource::None:
      return;
  }
  tip.Heading = detail::HeadingOfXAxis(north, up);
}

RigorousTip NothingTold() {
  RigorousTip tip;
  tip.Offset.x = tip.Offset.y = tip.Offset.h = kNotTold;
  tip.HeadingDifference = tip.Heading = tip.Heading_A = tip.Heading_B = kNotTold;
  tip.Tilt = tip.Dip = kNotTold;
  return tip;
}

}  // namespace

RigorousTip SolveRigorousTip(const PoseSensorData& corrected, double length,
                             const RigorousTipOptions& options) {
  RigorousTip tip = NothingTold();
  const Vector3 up = detail::UpFromTilts(corrected.InclineX, corrected.InclineY);
  if (!std::isfinite(up.z)) return tip;
  tip.Offset.h = -length * up.z;
  tip.Tilt = detail::ToDegrees(std::atan2(std::hypot(up.x, up.y), up.z));

  const Direction a = DirectionOf(detail::Field_A(corrected), up, options.MagneticBiasAngle_A);
  const Direction b = DirectionOf(detail::Field_B(corrected), up, options.MagneticBiasAngle_B);
  tip.Heading_A = HeadingOf(a, up);
  tip.Heading_B = HeadingOf(b, up);
  tip.HeadingDifference = DifferenceOf(a, b, up);
  tip.Agree = std::fabs(tip.HeadingDifference) <= options.LargestHeadingDifference &&
              std::fabs(tip.HeadingDifference) <= kLargestAveragedDifference;
  tip.Source = SourceOf(a, b, tip.Agree, options);

  Vector3 north;
  UseHeading(a, b, up, options, tip, north);
  if (std::hypot(up.x, up.y) < kPlumbLean) {
    tip.Status = TipStatus::Plumb;
    tip.Offset.x = tip.Offset.y = 0.0;
  } else if (tip.Source == HeadingSource::None) {
    tip.Status = TipStatus::HeadingCannotBeTold;
  } else {
    tip.Status = TipStatus::Solved;
    PlaceTip(up, north, length, tip);
  }
  return tip;
}

PoseSensorData CorrectSample(const PoseSensorData& raw,
                             const Incline_MagneticCorrectParameter& correction_A,
                             const Incline_MagneticCorrectParameter& correction_B) {
  const MagneticReading a =
      CorrectReading(correction_A, {raw.MagneticX_A, raw.MagneticY_A, raw.MagneticZ_A});
  const MagneticReading b =
      CorrectReading(correction_B, {raw.MagneticX_B, raw.MagneticY_B, raw.MagneticZ_B});
  PoseSensorData corrected = raw;
  corrected.MagneticX_A = a.X;
  corrected.MagneticY_A = a.Y;
  corrected.MagneticZ_A = a.Z;
  corrected.MagneticX_B = b.X;
  corrected.MagneticY_B = b.Y;
  corrected.MagneticZ_B = b.Z;
  return corrected;
}

}  // namespace tiltpole
