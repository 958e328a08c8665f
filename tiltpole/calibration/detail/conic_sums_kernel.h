#pragma once

// The one pass over the samples of an ellipse fit and its solution, written once for any width of
// vector. This is also compiled for processors that not every machine has; so there nothing may be
// instantiated for plain doubles, lest the program's only copy of it be one that a processor does
// not know.

#include <cstddef>

#include "tiltpole/calibration/detail/normal_equations.h"
#include "tiltpole/matrix/detail/lanes.h"

namespace tiltpole::detail {

/// A plane of the readings in which the second axis is still to be scaled by t: the points
/// (u, base + t v).
struct ScaledPlane {
  const double* u;
  const double* base;
  const double* v;
  std::size_t count;
};

/// The sums of a fit that the first axis of the plane alone decides.
struct AxisSums {
  double count = 0.0;
  double u = 0.0;
  double uu = 0.0;
};

/// The sums that the normal equations of an ellipse fit need, by the names of their factors: with
/// w = base + t v the design row is [s, m, u, w, 1], s = u^2 - w^2 and m = u w, and the right-hand
/// side is r = -w^2. Those of u alone do not depend on t and are in AxisSums.
enum ConicSum {
  kSS,
  kSM,
  kSU,
  kSW,
  kS,
  kMM,
  kMU,
  kMW,
  kM,
  kWW,
  kW,
  kSR,
  kMR,
  kUR,
  kWR,
  kConicSums
};

/// Sums for several values of t at once, each in a lane of its own.
///
/// The bits are those of the products At A and At b of written-out matrices:
/// - each sum starts at 0.0 and takes one term a sample, in the order of the samples; lanes never
///   meet, so no sum is split or reordered;
/// - each term is a product of two rounded elements of the design, as it is there;
/// - AtA is symmetric bit by bit, and a product with the column of ones changes nothing, so one sum
///   can serve several elements (m summed is also u times w summed);
/// - adding (-w^2) x and subtracting w^2 x round alike.
template <class Lanes>
inline void SumConics(const ScaledPlane& plane, const Lanes& t, Lanes* sums) {
  Lanes ss{}, sm{}, su{}, sw{}, s1{}, mm{}, mu{}, mw{}, m1{}, ww{}, w1{}, sr{}, mr{}, ur{}, wr{};
  for (std::size_t k = 0; k < plane.count; ++k) {
    const double u = plane.u[k];
    const Lanes w = plane.base[k] + t * plane.v[k];
    const Lanes squared = w * w;
    const Lanes s = u * u - squared;
    const Lanes m = u * w;
    ss += s * s;
    sm += s * m;
    su += s * u;
    sw += s * w;
    s1 += s;
    mm += m * m;
    mu += m * u;
    mw += m * w;
    m1 += m;
    ww += squared;
    w1 += w;
    sr -= s * squared;
    mr -= m * squared;
    ur -= u * squared;
    wr -= w * squared;
  }
  sums[kSS] = ss;
  sums[kSM] = sm;
  sums[kSU] = su;
  sums[kSW] = sw;
  sums[kS] = s1;
  sums[kMM] = mm;
  sums[kMU] = mu;
  sums[kMW] = mw;
  sums[kM] = m1;
  sums[kWW] = ww;
  sums[kW] = w1;
  sums[kSR] = sr;
  sums[kMR] = mr;
  sums[kUR] = ur;
  sums[kWR] = wr;
}

/// The normal equations of an ellipse fit.
template <class Element>
struct ConicEquations {
  Square<5, Element> AtA;
  Column<5, Element> Atb;

  ConicEquations(const AxisSums& axis, const Element* sum) {
    const Element zero = {};
    const Element uu = zero + axis.uu;
    const Element u = zero + axis.u;
    const Element count = zero + axis.count;
    AtA = {{{sum[kSS], sum[kSM], sum[kSU], sum[kSW], sum[kS]},
            {sum[kSM], sum[kMM], sum[kMU], sum[kMW], sum[kM]},
            {sum[kSU], sum[kMU], uu, sum[kM], u},
            {sum[kSW], sum[kMW], sum[kM], sum[kWW], sum[kW]},
            {sum[kS], sum[kM], u, sum[kW], count}}};
    // The last right-hand side sums -w^2. Its negative is the sum of w^2 rounding by rounding; the
    // difference from 0.0 keeps an empty sum at +0.0.
    Atb = {{sum[kSR], sum[kMR], sum[kUR], sum[kWR], zero - sum[kWW]}};
  }
};

template <std::size_t kCount>
inline void LoadLanes(const double* from, LanesOf<kCount>& to) {
  for (std::size_t lane = 0; lane < kCount; ++lane) to[lane] = from[lane];
}

template <std::size_t kCount>
inline void StoreLanes(const LanesOf<kCount>& from, double* to) {
  for (std::size_t lane = 0; lane < kCount; ++lane) to[lane] = from[lane];
}

/// See ConicSummation::Sum.
template <std::size_t kCount>
inline void SumConicsInLanes(const ScaledPlane& plane, const double* t, double* sums) {
  LanesOf<kCount> scales;
  LoadLanes<kCount>(t, scales);
  LanesOf<kCount> inLanes[kConicSums];
  SumConics(plane, scales, inLanes);
  for (std::size_t sum = 0; sum < kConicSums; ++sum) {
    StoreLanes<kCount>(inLanes[sum], sums + sum * kCount);
  }
}

/// See ConicSummation::Solve.
template <std::size_t kCount>
inline bool SolveConicsInLanes(const AxisSums& axis, const double* sums, double* coefficients) {
  using Lanes = LanesOf<kCount>;
  Lanes inLanes[kConicSums];
  for (std::size_t sum = 0; sum < kConicSums; ++sum) {
    LoadLanes<kCount>(sums + sum * kCount, inLanes[sum]);
  }
  const ConicEquations<Lanes> equations(axis, inLanes);
  const NormalInverse<5, Lanes> inverse(equations.AtA);
  if (!inverse.IsRegular()) return false;
  const Column<5, Lanes> solution = inverse.Solve(equations.Atb);
  for (std::size_t i = 0; i < 5; ++i) StoreLanes<kCount>(solution.at[i], coefficients + i * kCount);
  return true;
}

}  // namespace tiltpole::detail
