#pragma once

// The one pass over the samples of an ellipse fit, written once for any width of vector. Included
// only where it is compiled for one processor; so it must not bring in inline functions of others.

#include <cstddef>

namespace tiltpole::detail {

/// A plane of the readings in which the second axis is still to be scaled by t: the points
/// (u, base + t v).
struct ScaledPlane {
  const double* u;
  const double* base;
  const double* v;
  std::size_t count;
};

/// The sums that the normal equations of an ellipse fit need, by the names of their factors: with
/// w = base + t v the design row is [s, m, u, w, 1], s = u^2 - w^2 and m = u w, and the right-hand
/// side is r = -w^2. Those of u alone do not depend on t and are in PlaneSums.
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

}  // namespace tiltpole::detail
