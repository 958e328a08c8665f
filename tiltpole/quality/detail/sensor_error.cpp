// Two things do not change however the pole is held: the strength of the field, and its part along
// the vertical, which the tilts give. A sensor with an error sees them change, each term in a way
// of its own, so that a least-squares fit over both turns tells the terms. A heading's constant
// error shows there only as far as the field had a part along y in the vertical turn; that turn's
// axis, which is y, tells it too.

#include "tiltpole/quality/detail/sensor_error.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tiltpole/quality/detail/slopes.h"
#include "tiltpole/quality/detail/turn_observations.h"

namespace tiltpole::detail {
namespace {

struct Means {
  double Flat = 0.0;
  double Upward = 0.0;
};

Means MeansOver(const TurnReadings& turn) {
  Means means;
  const auto n = static_cast<double>(turn.Field.size());
  for (std::size_t i = 0; i < turn.Field.size(); ++i) {
    means.Flat += Norm(NormalPart(turn.Field[i], turn.Up[i])) / n;
    means.Upward += Dot(turn.Field[i], turn.Up[i]) / n;
  }
  return means;
}

// The tilts leave open whether the pole stands on its tip or on its antenna; the field tells, since
// its vertical part stays. Samples for which both come near it are left out, and so are those near
// lying flat, where a small error of the tilts is a large one of the vertical.
TurnReadings WithSideTold(const TurnReadings& turn, double upward_field) {
  constexpr double kSmallestSplit = 0.2;  // of the field
  constexpr double kFlattest = 0.35;      // the vertical's part along the pole
  TurnReadings told;
  for (std::size_t i = 0; i < turn.Field.size(); ++i) {
    const Vector3& field = turn.Field[i];
    const Vector3& up = turn.Up[i];
    const Vector3 other = {up.x, up.y, -up.z};
    if (up.z < kFlattest) continue;
    if (std::fabs(Dot(field, up) - Dot(field, other)) < kSmallestSplit * Norm(field)) continue;
    const bool on_tip =
        std::fabs(Dot(field, up) - upward_field) <= std::fabs(Dot(field, other) - upward_field);
    told.Field.push_back(field);
    told.Up.push_back(on_tip ? up : other);
  }
  return told;
}

// How y answers to x and z over the vertical turn.
Slopes SideSlopes(const std::vector<Vector3>& readings) {
  std::vector<std::array<double, 3>> rows;
  std::vector<double> side;
  for (const Vector3& reading : readings) {
    rows.push_back({1.0, reading.x, reading.z});
    side.push_back(reading.y);
  }
  return FitSlopes(rows, side);
}

// A turn about an axis that is not quite y lets y answer to x without any error of the sensor; then
// the vertical answers in the same way, and what it answers beyond its own noise is taken off.
void AddSide(const Slopes& field, const Slopes& up, std::size_t which, std::size_t term,
             ErrorFit& fit) {
  double value = field.Slope[which];
  double variance = field.Variance[which];
  if (up.Told && up.Slope[which] != 0.0) {
    const double square = up.Slope[which] * up.Slope[which];
    const double sure = std::max(0.0, 1.0 - up.Variance[which] / square);
    value -= sure * up.Slope[which];
    variance += sure * up.Variance[which];
  }
  const double weight = 1.0 / std::max(std::sqrt(variance), kSmallestDeviation);
  UnknownsRow row{};
  row[term] = weight;
  fit.Add(row, weight * value);
}

}  // namespace

ErrorRow ErrorAlong(const Vector3& direction, const Vector3& field) {
  ErrorRow row{};
  row[kExx] = direction.x * field.x - direction.y * field.y;
  row[kExy] = direction.x * field.y;
  row[kExz] = direction.x * field.z;
  row[kEyx] = direction.y * field.x;
  row[kEyz] = direction.y * field.z;
  row[kEzx] = direction.z * field.x;
  row[kEzy] = direction.z * field.y;
  row[kEzz] = direction.z * field.z;
  row[kOx] = direction.x;
  row[kOy] = direction.y;
  row[kOz] = direction.z;
  return row;
}

SensorError EstimateSensorError(const TurnReadings& horizontal, const TurnReadings& vertical) {
  constexpr int kReweightings = 6;
  constexpr double kSmallestShareOfNoise = 0.2;
  constexpr std::size_t kFewestSamples = 8;
  SensorError error;
  const Means means = MeansOver(horizontal);
  const Slopes side = SideSlopes(vertical.Field);
  if (!(means.Flat > 0.0) || !side.Told) return error;

  const TurnReadings told = WithSideTold(vertical, means.Upward);
  const Slopes lean = SideSlopes(told.Up);
  TurnObservations flat(horizontal, means.Flat);
  TurnObservations upright(told, means.Flat);
  const std::size_t values = 2 * (horizontal.Field.size() + told.Field.size());
  if (told.Field.size() < kFewestSamples || horizontal.Field.size() < kFewestSamples) return error;
  const double freedom = 1.0 - static_cast<double>(kUnknowns) / static_cast<double>(values);
  ErrorFit fit;
  for (int pass = 0; pass < kReweightings; ++pass) {
    fit = {};
    flat.AddTo(fit);
    upright.AddTo(fit);
    AddSide(side, lean, 0, kEyx, fit);
    AddSide(side, lean, 1, kEyz, fit);
    if (!fit.Solve()) return error;
    flat.UpdateScatter(fit.Solution(), freedom);
    upright.UpdateScatter(fit.Solution(), freedom);
    const double same_noise =
        kSmallestShareOfNoise * std::max(flat.StrengthDeviation(), upright.StrengthDeviation());
    flat.KeepScatterAbove(same_noise);
    upright.KeepScatterAbove(same_noise);
  }
  error.Told = true;
  for (std::size_t i = 0; i < kErrorTerms; ++i) {
    error.Terms[i] = fit.Solution()[i];
    for (std::size_t j = 0; j < kErrorTerms; ++j) error.Covariance[i][j] = fit.Inverse()[i][j];
  }
  error.HorizontalField = means.Flat;
  error.Down = -means.Upward / means.Flat;
  error.Noise = flat.StrengthDeviation();
  return error;
}

}  // namespace tiltpole::detail
