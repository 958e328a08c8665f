#include "tiltpole/quality/detail/conic.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tiltpole/quality/detail/least_squares.h"

namespace tiltpole::detail {
namespace {

// The calibration keeps samples with a residual below this [counts squared] ...
constexpr double kInlierResidual = 1000.0;
// ... as soon as more than this many pass.
constexpr std::size_t kMostIgnoredInliers = 20;
// Screening again and again comes to rest long before this.
constexpr int kMostScreenings = 50;

}  // namespace

double Conic::ResidualAt(const TurnPoint& point) const {
  const double u = (point.First - CentreFirst) / Unit;
  const double w = (point.Second - CentreSecond) / Unit;
  return A * u * u + B * u * w + (1.0 - A) * w * w + D * u + E * w + F;
}

double Conic::DistanceOf(const TurnPoint& point) const {
  const double u = (point.First - CentreFirst) / Unit;
  const double w = (point.Second - CentreSecond) / Unit;
  const double slope = std::hypot(2.0 * A * u + B * w + D, B * u + 2.0 * (1.0 - A) * w + E);
  return slope > 0.0 ? std::fabs(ResidualAt(point)) / slope * Unit : Unit;
}

Conic FitConic(const TurnPoints& points) {
  Conic conic;
  const Circle circle = FitCircle(points);
  conic.CentreFirst = circle.First;
  conic.CentreSecond = circle.Second;
  conic.Unit = SpreadOf(points).Longer;
  if (!(conic.Unit > 0.0) || !std::isfinite(conic.Unit)) return conic;
  LeastSquares<5> fit;
  for (const TurnPoint& point : points) {
    const double u = (point.First - conic.CentreFirst) / conic.Unit;
    const double w = (point.Second - conic.CentreSecond) / conic.Unit;
    fit.Add({u * u - w * w, u * w, u, w, 1.0}, -w * w);
  }
  if (!fit.Solve()) return conic;
  conic.Told = true;
  conic.A = fit.Solution()[0];
  conic.B = fit.Solution()[1];
  conic.D = fit.Solution()[2];
  conic.E = fit.Solution()[3];
  conic.F = fit.Solution()[4];
  conic.Ellipse = conic.B * conic.B < 4.0 * conic.A * (1.0 - conic.A);
  return conic;
}

double ScatterShare(const TurnPoints& points, const Conic& conic) {
  double sum = 0.0;
  for (const TurnPoint& point : points) {
    const double distance = conic.DistanceOf(point);
    sum += distance * distance;
  }
  const auto n = static_cast<double>(std::max<std::size_t>(points.size(), 1));
  return std::sqrt(sum / n) / conic.Unit;
}

double ScaleNeeded(const Conic& conic) {
  return conic.A > 0.0 ? std::sqrt(std::max(0.0, 1.0 - conic.A) / conic.A) : 0.0;
}

int SamplesUsed(TurnPoints points) {
  for (int i = 0; i < kMostScreenings; ++i) {
    const Conic conic = FitConic(points);
    if (!conic.Told) break;
    TurnPoints kept;
    const double limit = kInlierResidual / (conic.Unit * conic.Unit);
    for (const TurnPoint& point : points) {
      if (std::fabs(conic.ResidualAt(point)) < limit) kept.push_back(point);
    }
    if (kept.size() <= kMostIgnoredInliers || kept.size() == points.size()) break;
    points = std::move(kept);
  }
  return static_cast<int>(points.size());
}

}  // namespace tiltpole::detail
