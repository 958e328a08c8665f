#include "tiltpole/quality/detail/session.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tiltpole/quality/detail/attitude.h"
#include "tiltpole/quality/detail/conic.h"
#include "tiltpole/records/detail/angles.h"

namespace tiltpole::detail {
namespace {

bool IsFinite(const PoseSensorData& s) {
  return std::isfinite(s.MagneticX_A) && std::isfinite(s.MagneticY_A) &&
         std::isfinite(s.MagneticZ_A) && std::isfinite(s.MagneticX_B) &&
         std::isfinite(s.MagneticY_B) && std::isfinite(s.MagneticZ_B);
}

// Of an axis [degrees]; the last few are for the noise of a pole that lies flat.
constexpr double kSteepestTilt = 95.0;

bool HasPossibleTilts(const PoseSensorData& s) {
  return std::fabs(s.InclineX) <= kSteepestTilt && std::fabs(s.InclineY) <= kSteepestTilt;
}

// Noise takes the tilts of a pole that lies flat a little beyond what perpendicular axes can have.
Vector3 UpOf(const PoseSensorData& sample) {
  Vector3 up = UpFromTilts(sample.InclineX, sample.InclineY);
  if (!std::isfinite(up.x) || !std::isfinite(up.y)) return {0.0, 0.0, 1.0};
  if (!std::isfinite(up.z)) up.z = 0.0;
  return up;
}

// A circle about the origin, where corrected readings belong.
Circle AboutOrigin() { return {true, 0.0, 0.0}; }

}  // namespace

Samples FiniteSamples(const Samples& samples) {
  Samples finite;
  std::copy_if(samples.begin(), samples.end(), std::back_inserter(finite), IsFinite);
  return finite;
}

void LevelImpossibleTilts(Samples& horizontal, Samples& vertical) {
  std::size_t possible = 0;
  for (const Samples* turn : {&horizontal, &vertical}) {
    possible +=
        static_cast<std::size_t>(std::count_if(turn->begin(), turn->end(), HasPossibleTilts));
  }
  const std::size_t count = horizontal.size() + vertical.size();
  const bool elevations = (count - possible) * 10 <= count;
  for (Samples* turn : {&horizontal, &vertical}) {
    for (PoseSensorData& sample : *turn) {
      if (!elevations || !HasPossibleTilts(sample)) sample.InclineX = sample.InclineY = 0.0;
    }
  }
}

std::vector<Vector3> RawReadings_A(const Samples& samples) {
  std::vector<Vector3> readings;
  for (const PoseSensorData& s : samples) {
    readings.push_back({s.MagneticX_A, s.MagneticY_A, s.MagneticZ_A});
  }
  return readings;
}

std::vector<Vector3> RawReadings_B(const Samples& samples) {
  std::vector<Vector3> readings;
  for (const PoseSensorData& s : samples) {
    readings.push_back({s.MagneticX_B, s.MagneticY_B, s.MagneticZ_B});
  }
  return readings;
}

TurnReadings Readings_A(const Samples& corrected) {
  TurnReadings readings;
  for (const PoseSensorData& sample : corrected) {
    readings.Field.push_back(Field_A(sample));
    readings.Up.push_back(UpOf(sample));
  }
  return readings;
}

TurnReadings Readings_B(const Samples& corrected) {
  TurnReadings readings;
  for (const PoseSensorData& sample : corrected) {
    readings.Field.push_back(Field_B(sample));
    readings.Up.push_back(UpOf(sample));
  }
  return readings;
}

Samples Corrected(const Samples& raw, const Incline_MagneticCorrectParameter& correction_A,
                  const Incline_MagneticCorrectParameter& correction_B) {
  Samples corrected;
  for (const PoseSensorData& sample : raw) {
    corrected.push_back(CorrectSample(sample, correction_A, correction_B));
  }
  return corrected;
}

void FillFiguresBefore(const std::vector<Vector3>& horizontal, const std::vector<Vector3>& vertical,
                       MagnetometerQuality& quality) {
  const TurnPoints flat = PointsInPlane(horizontal, TurnPlane::XY);
  const TurnPoints upright = PointsInPlane(vertical, TurnPlane::XZ);
  quality.HorizontalBefore = FiguresAbout(flat, FitCircle(flat));
  quality.VerticalBefore = FiguresAbout(upright, FitCircle(upright));
}

void FillFiguresAfter(const TurnReadings& horizontal, const TurnReadings& vertical,
                      MagnetometerQuality& quality) {
  const TurnPoints flat = PointsInPlane(horizontal.Field, TurnPlane::XY);
  const TurnPoints upright = PointsInPlane(vertical.Field, TurnPlane::XZ);
  quality.HorizontalAfter = FiguresAbout(flat, AboutOrigin());
  quality.VerticalAfter = FiguresAbout(upright, AboutOrigin());
  quality.HorizontalUsed = SamplesUsed(flat);
  quality.VerticalUsed = SamplesUsed(upright);
  quality.HorizontalDropped = quality.HorizontalAfter.Samples - quality.HorizontalUsed;
  quality.VerticalDropped = quality.VerticalAfter.Samples - quality.VerticalUsed;
  const TurnFigures& level = quality.HorizontalAfter;
  const TurnFigures& steep = quality.VerticalAfter;
  quality.FieldStrength = std::hypot(level.RadiusMean, level.OutOfPlaneMean);
  quality.FieldStrengthVertical = std::hypot(steep.RadiusMean, steep.OutOfPlaneMean);
  quality.Dip = ToDegrees(std::atan2(-level.OutOfPlaneMean, level.RadiusMean));
}

HeadingDifference DifferenceOver(const TurnReadings& horizontal_A,
                                 const TurnReadings& horizontal_B) {
  std::vector<double> differences;
  for (std::size_t i = 0; i < horizontal_A.Field.size(); ++i) {
    const Vector3& up = horizontal_A.Up[i];
    const double a = HeadingOfXAxis(NorthFromField(horizontal_A.Field[i], up, 0.0), up);
    const double b = HeadingOfXAxis(NorthFromField(horizontal_B.Field[i], up, 0.0), up);
    differences.push_back(WrapTo180(b - a));
  }
  HeadingDifference difference;
  if (differences.empty()) {
    difference.Mean = difference.StandardDeviation = difference.Largest =
        std::numeric_limits<double>::quiet_NaN();
    return difference;
  }
  const auto n = static_cast<double>(differences.size());
  for (const double d : differences) {
    difference.Mean += d / n;
    difference.Largest = std::max(difference.Largest, std::fabs(d));
  }
  for (const double d : differences) {
    difference.StandardDeviation += (d - difference.Mean) * (d - difference.Mean) / n;
  }
  difference.StandardDeviation = std::sqrt(difference.StandardDeviation);
  return difference;
}

}  // namespace tiltpole::detail
