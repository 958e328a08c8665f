#include "tiltpole/calibration/detail/shape_bounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tiltpole::detail {
namespace {

constexpr std::size_t kNodes = SumsByScale::kNodes;

/// How far the nodes are apart, beside the root that they surround. Wide enough that a root which
/// is not yet known well lies among them all the same.
constexpr double kNodeDistance = 0.2;

/// The roots that nodes surround. All searches end at 2 at most.
constexpr double kSmallestRoot = 1.0 / 1024;
constexpr double kLargestRoot = 2.0;

/// The 4-norms of readings [counts] up to which no sum of products of them overflows, nor what is
/// made of it.
constexpr double kLargestNorm = 1e60;

bool AreWithinMeasure(const PlaneSize& size) {
  return size.u.four < kLargestNorm && size.base.four < kLargestNorm &&
         size.v.norms.four < kLargestNorm;
}

void PlaceNodes(double root, SumsByScale& by) {
  for (std::size_t i = 0; i < kNodes; ++i) {
    by.node[i] = root * (1 + kNodeDistance * (static_cast<double>(i) - 1.5));
  }
  for (std::size_t i = 0; i < kNodes; ++i) {
    double differences = 1.0;
    for (std::size_t j = 0; j < kNodes; ++j) {
      if (j != i) differences *= by.node[i] - by.node[j];
    }
    by.weight[i] = 1 / differences;
  }
}

ShapeBounds::Fit NothingKnown(double t) {
  ShapeBounds::Fit fit;
  fit.t = t;
  return fit;
}

/// The steps are those of Conic, so that what is certain holds for its roundings too.
ShapeBounds::Fit Judge(double t, const Bounded<double>& A, const Bounded<double>& B) {
  ShapeBounds::Fit fit = NothingKnown(t);
  const Bounded<double> C = 1 - A;
  fit.root = ScaleOfCircle(t, A.value, C.value);
  if (!(Highest(Discriminant(A, B, C)) < 0)) return fit;
  if (Highest(C) < 0.5 - 2 * kTolerance) fit.shape = {true, -1, false};
  if (Lowest(C) > 0.5 + 2 * kTolerance) fit.shape = {true, 1, false};
  fit.isCertain = fit.shape.side != 0;
  return fit;
}

}  // namespace

AxisSize SizeOf(const std::vector<double>& column) {
  double squares = 0.0;
  double fourthPowers = 0.0;
  for (const double value : column) {
    const double square = value * value;
    squares += square;
    fourthPowers += square * square;
  }
  // What the powers of tiny readings lose by underflow: beside a large cross term it counts.
  const double lost = static_cast<double>(column.size()) * std::numeric_limits<double>::min();
  return {{kBoundSlack * std::sqrt(squares + lost),
           kBoundSlack * std::sqrt(std::sqrt(fourthPowers + lost))},
          fourthPowers};
}

AxisNorms operator*(double factor, const AxisNorms& norms) {
  const double size = kBoundSlack * std::fabs(factor);
  return {size * norms.two, size * norms.four};
}

AxisNorms operator+(const AxisNorms& a, const AxisNorms& b) {
  return {kBoundSlack * (a.two + b.two), kBoundSlack * (a.four + b.four)};
}

void ShapeBounds::SetPoints(const ScaledPlane& points, const AxisSums& axis,
                            const PlaneSize& size) {
  points_ = points;
  byScale_.axis = axis;
  byScale_.u = size.u;
  byScale_.base = size.base;
  byScale_.v = size.v.norms;
  byScale_.fourthPowersOfV = size.v.fourthPowers;
  byScale_.one = kBoundSlack * std::sqrt(axis.count);
  byScale_.rounding = kBoundSlack * kRounding / 2 * (axis.count + 16);
  useful_ = points.count >= summation_.fewestToBound && AreWithinMeasure(size);
  summed_ = false;
  fitCount_ = 0;
}

const ShapeBounds::Fit* ShapeBounds::Find(double t) const {
  const Fit* const end = fits_ + fitCount_;
  const Fit* const found = std::find_if(fits_, end, [t](const Fit& fit) { return fit.t == t; });
  return found == end ? nullptr : found;
}

void ShapeBounds::Evaluate(const double* scales, double root) {
  if (!summed_) SumNodes(root);
  fitCount_ = summation_.lanes;
  if (Bound(scales)) return;
  // The lanes are bounded together only if all choose the pivots of the first. If they do not, the
  // first is bounded on its own, in every lane.
  double first[kMostLanes];
  std::fill_n(first, kMostLanes, scales[0]);
  fitCount_ = 1;
  if (!Bound(first)) fits_[0] = NothingKnown(scales[0]);
}

bool ShapeBounds::Bound(const double* scales) {
  Bounded<double> A[kMostLanes];
  Bounded<double> B[kMostLanes];
  if (!summation_.Bound(byScale_, scales, A, B)) return false;
  for (std::size_t lane = 0; lane < fitCount_; ++lane) {
    fits_[lane] = Judge(scales[lane], A[lane], B[lane]);
  }
  return true;
}

void ShapeBounds::SumNodes(double root) {
  PlaceNodes(std::clamp(root, kSmallestRoot, kLargestRoot), byScale_);
  const std::size_t lanes = summation_.lanes;
  const std::size_t atOnce = std::min(lanes, kNodes);
  double sums[kConicSums * kMostLanes];
  for (std::size_t first = 0; first < kNodes; first += atOnce) {
    double scales[kMostLanes] = {};
    std::copy_n(byScale_.node + first, atOnce, scales);
    summation_.Sum(points_, scales, sums);
    for (std::size_t sum = 0; sum < kConicSums; ++sum) {
      std::copy_n(sums + sum * lanes, atOnce, byScale_.sums[sum] + first);
    }
  }
  summed_ = true;
}

}  // namespace tiltpole::detail
