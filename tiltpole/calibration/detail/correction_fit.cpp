#include "tiltpole/calibration/detail/correction_fit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "tiltpole/calibration/detail/warnings.h"

namespace tiltpole::detail {
namespace {

/// How far a reading may be from fulfilling the equation of its turn's ellipse [squared counts].
constexpr double kLargestResidual = 1000.0;
/// A set shrinks to its inliers only if at least this many are left.
constexpr std::ptrdiff_t kFewestInliers = 21;

/// Leaves the readings that lie on the conic.
/// @param[in] w      of each reading, the second coordinate in the conic's plane; x is the first
/// @param[in] marks  room for a mark for each reading
/// @return whether the set has shrunk
template <class SecondAxis>
bool KeepInliers(const Conic& conic, SecondAxis w, std::vector<char>& marks, Readings& readings) {
  marks.resize(readings.Count());
  for (std::size_t i = 0; i < readings.Count(); ++i) {
    marks[i] = std::fabs(conic.Residual(readings.x[i], w(i))) < kLargestResidual ? 1 : 0;
  }
  const std::ptrdiff_t kept = std::count(marks.begin(), marks.end(), 1);
  if (kept < kFewestInliers || kept == std::ptrdiff_t(readings.Count())) return false;
  KeepMarked(marks, readings);
  return true;
}

}  // namespace

CorrectionFit::CorrectionFit(Readings horizontal, Readings vertical,
                             const ConicSummation& summation)
    : horizontal_(std::move(horizontal)),
      vertical_(std::move(vertical)),
      horizontalBase_(horizontal_.Count()),
      horizontalY_(horizontal_.Count()),
      horizontalFits_(summation),
      verticalBase_(vertical_.Count()),
      verticalFits_(summation),
      inliers_(std::max(horizontal_.Count(), vertical_.Count())) {}

int CorrectionFit::Run(Incline_MagneticCorrectParameter& out, int cap) {
  cap_ = cap;
  HorizontalSetChanged();
  VerticalSetChanged();
  for (int pass = 0; pass < cap_; ++pass) {
    // From a state seen before, the passes since then follow again and again up to the cap. None
    // of them left the loop or showed anything, so nothing but the expiry is still to come.
    if (PassWouldRepeat()) {
      converged_ = false;
      break;
    }
    const PassEnd end = RunPass();
    if (end == PassEnd::Fail) return 0;
    if (end == PassEnd::Leave) break;
    // Deliberate: a fit that needs more passes than half the cap is reported as failed even if it
    // settles later, and yet it goes on: a later pass can still fail with a message of its own.
    if (pass == cap_ / 2 - 1) converged_ = false;
  }
  if (!converged_) {
    WarnOfFailure(L"Circulating abnormal exit calibration parameters might be wrong!");
    return 0;
  }
  out = par_;
  return 1;
}

// A pass starts from the cross terms, e and the two sets, which only shrink. It sets b before it
// uses it, and the centres are results alone.
bool CorrectionFit::PassWouldRepeat() {
  return passes_.StepsSince({par_.a, par_.c, par_.d, par_.e,
                             static_cast<double>(horizontal_.Count()),
                             static_cast<double>(vertical_.Count())}) != 0;
}

CorrectionFit::PassEnd CorrectionFit::RunPass() {
  if (!FitScaleOfY()) {
    WarnOfFailure(L"Ellipse fitting failed, around the Z-axis data is incorrect!");
    return PassEnd::Fail;
  }
  const bool restOfZ = FitCrossTermsOfZ();
  if (!FitScaleOfZ()) {
    WarnOfFailure(L"Ellipse fitting failed, around the Y-axis data is incorrect!");
    return PassEnd::Fail;
  }
  const bool restOfY = FitCrossTermOfY();
  // Deliberate: without an ellipse the centres stay those of the pass before, and the fit counts as
  // done.
  if (!CentreHorizontalTurn() || !CentreVerticalTurn()) return PassEnd::Leave;
  return restOfZ && restOfY ? PassEnd::Leave : PassEnd::GoOn;
}

/// b, which makes the horizontal turn a circle in x-y'.
bool CorrectionFit::FitScaleOfY() {
  if (!CanFitEllipse(horizontal_.columns, horizontal_.Count())) return false;
  const Shape unscaled = horizontalFits_.ShapeAt(1.0, kAnyScale);
  if (!unscaled.isEllipse) return false;
  const FoundScale found = BisectScale(horizontalFits_, BracketAround(unscaled), cap_);
  if (found.ranOut) converged_ = false;
  par_.b = found.scale;
  return true;
}

/// c and d, which make z' independent of x and y' over the horizontal turn.
/// @return whether they have stayed where they were
bool CorrectionFit::FitCrossTermsOfZ() {
  const std::vector<double>& x = horizontal_.x;
  const std::vector<double>& y = horizontal_.y;
  const std::vector<double>& z = horizontal_.z;
  for (std::size_t i = 0; i < y.size(); ++i) horizontalY_[i] = horizontalBase_[i] + par_.b * y[i];
  const LineAxis alongX(horizontalX_);
  const LineAxis alongY(SumAxis(horizontalY_));

  std::array<double, 2> terms = {par_.c, par_.d};
  const auto slopesFor = [&](const std::array<double, 2>& cd) -> std::array<double, 2> {
    double xz = 0.0;
    double yz = 0.0;
    double sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
      const double corrected = cd[0] * x[i] + cd[1] * y[i] + par_.e * z[i];
      xz += x[i] * corrected;
      yz += horizontalY_[i] * corrected;
      sum += corrected;
    }
    return {alongX.Slope(xz, sum), alongY.Slope(yz, sum)};
  };
  const CrossTermMoves<2> moved = RemoveSlopes(terms, par_.e, slopesFor, cap_);
  if (moved.ranOut) converged_ = false;
  par_.c = terms[0];
  par_.d = terms[1];
  return moved.AtRest();
}

/// e, which makes the vertical turn a circle in x-z'.
bool CorrectionFit::FitScaleOfZ() {
  if (!CanFitEllipse(vertical_.columns, vertical_.Count())) return false;
  // Deliberate: the raw readings choose the bracket, other than for b. Where they are round and the
  // corrected ones are not, e stays 1 and the search runs out.
  if (!rawVertical_.isEllipse) return false;
  for (std::size_t i = 0; i < vertical_.Count(); ++i) {
    verticalBase_[i] = par_.c * vertical_.x[i] + par_.d * vertical_.y[i];
  }
  verticalFits_.SetPoints(
      {vertical_.x.data(), verticalBase_.data(), vertical_.z.data(), vertical_.Count()}, verticalX_,
      {verticalSizeX_.norms, par_.c * verticalSizeX_.norms + par_.d * verticalSizeY_.norms,
       verticalSizeZ_});
  const FoundScale found = BisectScale(verticalFits_, BracketAround(rawVertical_), cap_);
  if (found.ranOut) converged_ = false;
  par_.e = found.scale;
  return true;
}

/// a, which makes y' independent of x over the vertical turn.
/// @return whether it has stayed where it was
bool CorrectionFit::FitCrossTermOfY() {
  const std::vector<double>& x = vertical_.x;
  const std::vector<double>& y = vertical_.y;
  const LineAxis alongX(verticalX_);
  std::array<double, 1> terms = {par_.a};
  const auto slopesFor = [&](const std::array<double, 1>& a) -> std::array<double, 1> {
    double xy = 0.0;
    double sum = 0.0;
    for (std::size_t i = 0; i < x.size(); ++i) {
      const double corrected = a[0] * x[i] + par_.b * y[i];
      xy += x[i] * corrected;
      sum += corrected;
    }
    return {alongX.Slope(xy, sum)};
  };
  const CrossTermMoves<1> moved = RemoveSlopes(terms, par_.b, slopesFor, cap_);
  if (moved.ranOut) converged_ = false;
  par_.a = terms[0];
  CrossTermOfYChanged();
  return moved.AtRest();
}

/// x0 and y0; readings far from the turn's ellipse are left out from the next pass on.
bool CorrectionFit::CentreHorizontalTurn() {
  const Conic conic = horizontalFits_.At(par_.b, kAnyScale);
  if (!conic.IsEllipse()) return false;
  par_.x0 = conic.CentreU();
  par_.y0 = conic.CentreW();
  const auto correctedY = [this](std::size_t i) {
    return horizontalBase_[i] + par_.b * horizontal_.y[i];
  };
  if (KeepInliers(conic, correctedY, inliers_, horizontal_)) HorizontalSetChanged();
  return true;
}

/// z0; readings far from the turn's ellipse are left out from the next pass on.
bool CorrectionFit::CentreVerticalTurn() {
  // The search for e has ended at this very scale: c, d and e are still those of then.
  const Conic conic = verticalFits_.At(par_.e, kAnyScale);
  if (!conic.IsEllipse()) return false;
  par_.z0 = conic.CentreW();
  const auto correctedZ = [this](std::size_t i) {
    return verticalBase_[i] + par_.e * vertical_.z[i];
  };
  if (KeepInliers(conic, correctedZ, inliers_, vertical_)) VerticalSetChanged();
  return true;
}

void CorrectionFit::HorizontalSetChanged() {
  horizontalX_ = SumAxis(horizontal_.x);
  horizontalSizeX_ = SizeOf(horizontal_.x);
  horizontalSizeY_ = SizeOf(horizontal_.y);
  horizontalBase_.resize(horizontal_.Count());
  horizontalY_.resize(horizontal_.Count());
  CrossTermOfYChanged();
}

void CorrectionFit::CrossTermOfYChanged() {
  for (std::size_t i = 0; i < horizontal_.Count(); ++i) {
    horizontalBase_[i] = par_.a * horizontal_.x[i];
  }
  horizontalFits_.SetPoints(
      {horizontal_.x.data(), horizontalBase_.data(), horizontal_.y.data(), horizontal_.Count()},
      horizontalX_, {horizontalSizeX_.norms, par_.a * horizontalSizeX_.norms, horizontalSizeY_});
}

void CorrectionFit::VerticalSetChanged() {
  verticalX_ = SumAxis(vertical_.x);
  verticalSizeX_ = SizeOf(vertical_.x);
  verticalSizeY_ = SizeOf(vertical_.y);
  verticalSizeZ_ = SizeOf(vertical_.z);
  verticalBase_.assign(vertical_.Count(), 0.0);
  verticalFits_.SetPoints(
      {vertical_.x.data(), verticalBase_.data(), vertical_.z.data(), vertical_.Count()},
      verticalX_);
  rawVertical_ = verticalFits_.ShapeAt(1.0, kAnyScale);
}

}  // namespace tiltpole::detail
