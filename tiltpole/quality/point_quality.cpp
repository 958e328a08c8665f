#include "tiltpole/quality/point_quality.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tiltpole/quality/detail/attitude.h"
#include "tiltpole/records/detail/angles.h"

namespace tiltpole {
namespace {

struct Covariance {
  double NorthNorth = 0.0;
  double EastEast = 0.0;
  double NorthEast = 0.0;
  double HeightHeight = 0.0;

  double Total() const { return NorthNorth + EastEast + HeightHeight; }
};

Covariance operator+(const Covariance& a, const Covariance& b) {
  return {a.NorthNorth + b.NorthNorth, a.EastEast + b.EastEast, a.NorthEast + b.NorthEast,
          a.HeightHeight + b.HeightHeight};
}

double Square(double x) { return x * x; }

double NotNegative(double deviation) { return deviation > 0.0 ? deviation : 0.0; }

double DeviationOr1(double deviation) {
  return deviation > 0.0 && std::isfinite(deviation) ? deviation : 1.0;
}

double HeadingDeviation(const RigorousTip& tip, const RigorousTipOptions& options, double common) {
  const double a = DeviationOr1(options.HeadingDeviation_A);
  const double b = DeviationOr1(options.HeadingDeviation_B);
  double own = 0.0;
  if (tip.Source == HeadingSource::Both) own = a * b / std::hypot(a, b);
  if (tip.Source == HeadingSource::Magnetometer_A) own = a;
  if (tip.Source == HeadingSource::Magnetometer_B) own = b;
  return std::hypot(own, common);
}

// One tip of the rule, relative to the tip itself so that squares do not cancel.
class TipAround {
 public:
  TipAround(const PoseSensorData& corrected, double length, const RigorousTipOptions& options,
            const RigorousTip& tip)
      : sample_(corrected), length_(length), options_(options), tip_(tip) {
    // Every node keeps the magnetometers of the tip, also where the two come to disagree.
    options_.Disturbed_A = tip.Source == HeadingSource::Magnetometer_B;
    options_.Disturbed_B = tip.Source == HeadingSource::Magnetometer_A;
    if (tip.Source == HeadingSource::Both) options_.LargestHeadingDifference = 360.0;
  }

  xyhCoordinate At(double tiltX, double tiltY, double heading) const {
    PoseSensorData moved = sample_;
    moved.InclineX += tiltX;
    moved.InclineY += tiltY;
    RigorousTipOptions turned = options_;
    turned.MagneticBiasAngle_A -= heading;
    turned.MagneticBiasAngle_B -= heading;
    const RigorousTip there = SolveRigorousTip(moved, length_, turned);
    return {there.Offset.x - tip_.Offset.x, there.Offset.y - tip_.Offset.y,
            there.Offset.h - tip_.Offset.h};
  }

 private:
  PoseSensorData sample_;
  double length_;
  RigorousTipOptions options_;
  RigorousTip tip_;
};

// The tip's covariance from deviations of the tilts and the heading, by the product of three
// three-point Gauss-Hermite rules.
Covariance Propagate(const TipAround& tip, double tilt, double heading) {
  constexpr double kNode[3] = {-1.7320508075688772, 0.0, 1.7320508075688772};
  constexpr double kWeight[3] = {1.0 / 6.0, 2.0 / 3.0, 1.0 / 6.0};
  xyhCoordinate mean;
  Covariance square;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      for (int k = 0; k < 3; ++k) {
        const double weight = kWeight[i] * kWeight[j] * kWeight[k];
        const xyhCoordinate at = tip.At(kNode[i] * tilt, kNode[j] * tilt, kNode[k] * heading);
        mean.x += weight * at.x;
        mean.y += weight * at.y;
        mean.h += weight * at.h;
        square.NorthNorth += weight * at.x * at.x;
        square.EastEast += weight * at.y * at.y;
        square.NorthEast += weight * at.x * at.y;
        square.HeightHeight += weight * at.h * at.h;
      }
    }
  }
  return {square.NorthNorth - mean.x * mean.x, square.EastEast - mean.y * mean.y,
          square.NorthEast - mean.x * mean.y, square.HeightHeight - mean.h * mean.h};
}

// A plumb pole's tip needs no heading, and its neighbours may have none: the tilts move it alike in
// every direction, and its height by the curvature alone.
Covariance PropagatePlumb(double length, double tilt) {
  const double plane = Square(length * detail::ToRadians(tilt));
  const double height = Square(length * Square(detail::ToRadians(tilt)));
  return {plane, plane, 0.0, height};
}

Covariance FromLength(const RigorousTip& tip, double length, double deviation) {
  const double per_unit = length != 0.0 ? deviation / length : 0.0;
  const double north = tip.Offset.x * per_unit;
  const double east = tip.Offset.y * per_unit;
  return {north * north, east * east, north * east, Square(tip.Offset.h * per_unit)};
}

void FillFigures(const Covariance& covariance, PointQuality& quality) {
  const auto root = [](double variance) { return variance < 0.0 ? 0.0 : std::sqrt(variance); };
  quality.North = root(covariance.NorthNorth);
  quality.East = root(covariance.EastEast);
  quality.Height = root(covariance.HeightHeight);
  const double middle = 0.5 * (covariance.NorthNorth + covariance.EastEast);
  const double half_difference = 0.5 * (covariance.NorthNorth - covariance.EastEast);
  const double spread = std::hypot(half_difference, covariance.NorthEast);
  quality.SemiMajor = root(middle + spread);
  quality.SemiMinor = root(middle - spread);
  const double azimuth = 0.5 * detail::ToDegrees(std::atan2(covariance.NorthEast, half_difference));
  quality.SemiMajorAzimuth = azimuth < 0.0 ? std::fmod(azimuth + 180.0, 180.0) : azimuth;
}

const wchar_t* StatementOf(PointLimit limit) {
  switch (limit) {
    case PointLimit::Tilt:
      return L"The tilts limit this point. Hold the pole still while measuring, and check the "
             L"inclination sensor.";
    case PointLimit::Heading:
      return L"The heading limits this point. Hold the pole closer to plumb, or calibrate the "
             L"magnetometers better.";
    case PointLimit::Length:
      return L"The pole length limits this point. Measure the length from the antenna to the tip "
             L"more closely.";
    case PointLimit::Antenna:
      return L"The antenna's position limits this point. Wait for a better position.";
    case PointLimit::NotTold:
      break;
  }
  return L"The tip cannot be told from this sample. Hold the pole plumb, or move away from iron "
         L"and "
         L"calibrate again.";
}

PointLimit LimitOf(const PointQuality& quality) {
  const double largest =
      std::max({quality.FromTilt, quality.FromHeading, quality.FromLength, quality.FromAntenna});
  if (quality.FromHeading == largest) return PointLimit::Heading;
  if (quality.FromTilt == largest) return PointLimit::Tilt;
  if (quality.FromLength == largest) return PointLimit::Length;
  return PointLimit::Antenna;
}

}  // namespace

PointQuality JudgePoint(const PoseSensorData& corrected, double length,
                        const RigorousTipOptions& options, const PointDeviations& deviations) {
  const RigorousTip tip = SolveRigorousTip(corrected, length, options);
  const double tilt = NotNegative(deviations.Tilt);
  const double plane = Square(NotNegative(deviations.AntennaPlane));
  const double height = Square(NotNegative(deviations.AntennaHeight));
  PointQuality quality;
  quality.Heading = HeadingDeviation(tip, options, NotNegative(deviations.HeadingCommon));

  Covariance by_tilt;
  Covariance by_heading;
  Covariance by_both;
  if (tip.Status == TipStatus::Plumb) {
    by_both = by_tilt = PropagatePlumb(length, tilt);
  } else {
    const TipAround around(corrected, length, options, tip);
    by_tilt = Propagate(around, tilt, 0.0);
    by_heading = Propagate(around, 0.0, quality.Heading);
    by_both = Propagate(around, tilt, quality.Heading);
  }
  const Covariance by_length = FromLength(tip, length, NotNegative(deviations.Length));
  const Covariance by_antenna = {plane, plane, 0.0, height};
  FillFigures(by_both + by_length + by_antenna, quality);
  quality.FromTilt = std::sqrt(std::max(0.0, by_tilt.Total()));
  quality.FromHeading = std::sqrt(std::max(0.0, by_heading.Total()));
  quality.FromLength = std::sqrt(by_length.Total());
  quality.FromAntenna = std::sqrt(by_antenna.Total());
  const bool told = tip.Status == TipStatus::Plumb || tip.Status == TipStatus::Solved;
  quality.Limit = told && std::isfinite(quality.North) ? LimitOf(quality) : PointLimit::NotTold;
  quality.Statement = StatementOf(quality.Limit);
  return quality;
}

}  // namespace tiltpole
