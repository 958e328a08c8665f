#include "tiltpole/quality/detail/turn.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "tiltpole/quality/detail/attitude.h"
#include "tiltpole/quality/detail/least_squares.h"
#include "tiltpole/records/detail/angles.h"

namespace tiltpole::detail {
namespace {

// A gap up to this is an ordinary spacing of samples [degrees]; the last digits are for rounding.
constexpr double kLargestGap = 30.0 + 1e-6;

// In the turn's plane.
TurnPoint MeanOf(const TurnPoints& points) {
  TurnPoint mean;
  for (const TurnPoint& p : points) {
    mean.First += p.First;
    mean.Second += p.Second;
  }
  const double n = points.empty() ? 1.0 : static_cast<double>(points.size());
  return {mean.First / n, mean.Second / n, 0.0};
}

struct Scatter {
  double Mean = std::numeric_limits<double>::quiet_NaN();
  double RootMeanSquare = std::numeric_limits<double>::quiet_NaN();
  double Largest = std::numeric_limits<double>::quiet_NaN();
};

Scatter ScatterOf(const std::vector<double>& values) {
  if (values.empty()) return {};
  const auto n = static_cast<double>(values.size());
  Scatter scatter{0.0, 0.0, 0.0};
  for (const double value : values) scatter.Mean += value / n;
  for (const double value : values) {
    const double off = std::fabs(value - scatter.Mean);
    scatter.RootMeanSquare += off * off / n;
    scatter.Largest = std::max(scatter.Largest, off);
  }
  scatter.RootMeanSquare = std::sqrt(scatter.RootMeanSquare);
  return scatter;
}

}  // namespace

TurnPoints PointsInPlane(const std::vector<Vector3>& readings, TurnPlane plane) {
  TurnPoints points;
  points.reserve(readings.size());
  for (const Vector3& r : readings) {
    if (plane == TurnPlane::XY) {
      points.push_back({r.x, r.y, r.z});
    } else {
      points.push_back({r.x, r.z, r.y});
    }
  }
  return points;
}

TurnSpread SpreadOf(const TurnPoints& points) {
  const TurnPoint mean = MeanOf(points);
  double first = 0.0;
  double second = 0.0;
  double both = 0.0;
  const auto n = static_cast<double>(std::max<std::size_t>(points.size(), 1));
  for (const TurnPoint& p : points) {
    const double u = p.First - mean.First;
    const double w = p.Second - mean.Second;
    first += u * u / n;
    second += w * w / n;
    both += u * w / n;
  }
  const double middle = 0.5 * (first + second);
  const double half = std::hypot(0.5 * (first - second), both);
  return {std::sqrt(middle + half), std::sqrt(std::max(0.0, middle - half))};
}

// The circle u^2 + w^2 = D u + E w + F (Kasa's fit), about the mean and in units of the spread, so
// that the three unknowns are of one size.
Circle FitCircle(const TurnPoints& points) {
  const TurnPoint mean = MeanOf(points);
  const double unit = SpreadOf(points).Longer;
  const Circle about_mean{false, mean.First, mean.Second};
  if (!(unit > 0.0) || !std::isfinite(unit)) return about_mean;
  LeastSquares<3> fit;
  for (const TurnPoint& p : points) {
    const double u = (p.First - mean.First) / unit;
    const double w = (p.Second - mean.Second) / unit;
    fit.Add({u, w, 1.0}, u * u + w * w);
  }
  if (!fit.Solve()) return about_mean;
  return {true, mean.First + 0.5 * unit * fit.Solution()[0],
          mean.Second + 0.5 * unit * fit.Solution()[1]};
}

TurnFigures FiguresAbout(const TurnPoints& points, const Circle& circle) {
  std::vector<double> radius;
  std::vector<double> level;
  for (const TurnPoint& p : points) {
    radius.push_back(std::hypot(p.First - circle.First, p.Second - circle.Second));
    level.push_back(p.OutOfPlane);
  }
  const Scatter in_plane = ScatterOf(radius);
  const Scatter out_of_plane = ScatterOf(level);
  TurnFigures figures;
  figures.Samples = static_cast<int>(points.size());
  figures.CentreFirst = circle.First;
  figures.CentreSecond = circle.Second;
  figures.RadiusMean = in_plane.Mean;
  figures.RadiusScatter = in_plane.RootMeanSquare;
  figures.RadiusScatterLargest = in_plane.Largest;
  figures.OutOfPlaneMean = out_of_plane.Mean;
  figures.OutOfPlaneScatter = out_of_plane.RootMeanSquare;
  figures.OutOfPlaneScatterLargest = out_of_plane.Largest;
  return figures;
}

std::vector<double> DirectionsAbout(const TurnPoints& points, const Circle& circle) {
  std::vector<double> directions;
  directions.reserve(points.size());
  for (const TurnPoint& p : points) {
    directions.push_back(
        WrapTo360(ToDegrees(std::atan2(p.Second - circle.Second, p.First - circle.First))));
  }
  return directions;
}

TurnCoverage CoverageOf(std::vector<double> directions) {
  TurnCoverage coverage;
  coverage.Samples = static_cast<int>(directions.size());
  if (directions.empty()) {
    coverage.Missing.push_back({0.0, 360.0});
    return coverage;
  }
  std::sort(directions.begin(), directions.end());
  double missing = 0.0;
  for (std::size_t i = 0; i < directions.size(); ++i) {
    const bool last = i + 1 == directions.size();
    const double next = last ? directions.front() + 360.0 : directions[i + 1];
    if (next - directions[i] <= kLargestGap) continue;
    missing += next - directions[i];
    coverage.Missing.push_back({directions[i], last ? directions.front() : next});
  }
  coverage.CoveredPercent = 100.0 * (360.0 - missing) / 360.0;
  return coverage;
}

}  // namespace tiltpole::detail
