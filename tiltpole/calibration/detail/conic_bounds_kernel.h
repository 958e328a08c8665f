#pragma once

// What an ellipse fit can come to, from the sums at a few other scales and without a pass over the
// samples. Like conic_sums_kernel.h compiled for processors that not every machine has, and held to
// the same rule.

#include <cstddef>

#include "tiltpole/calibration/detail/bounded.h"
#include "tiltpole/calibration/detail/conic_sums_kernel.h"

namespace tiltpole::detail {

/// Upper bounds of the 2-norm and of the 4-norm of a column of numbers.
struct AxisNorms {
  double two = 0.0;
  double four = 0.0;
};

/// The sums of a ScaledPlane at four scales, and what says how they go on between them.
///
/// But for rounding, each sum is a polynomial in t: w = base + t v is linear, and no term has more
/// than four factors w. The term w^4 has the coefficient v^4 of t^4 and is in two of the sums, SS
/// and SR; all else is of degree 3 and given by four values.
struct SumsByScale {
  static constexpr std::size_t kNodes = 4;

  AxisSums axis;
  AxisNorms u;
  AxisNorms base;
  AxisNorms v;
  /// The 2-norm of the column of ones.
  double one = 0.0;
  double fourthPowersOfV = 0.0;
  /// What the rounding of a sum of products comes to at most, beside the product of its two
  /// columns' norms: count + 16 roundings.
  double rounding = 0.0;

  /// The scales, rising.
  double node[kNodes] = {};
  /// Of Lagrange's interpolation: 1 over the product of a node's differences from the others.
  double weight[kNodes] = {};
  double sums[kConicSums][kNodes] = {};
};

/// The weights of the nodes at some scale.
template <class Lanes>
struct Interpolation {
  Lanes share[SumsByScale::kNodes];
  /// The product of the differences from all nodes: where a polynomial t^4 is beside the cubic
  /// through its values at the nodes.
  Lanes quartic;
  /// How much larger than the errors at the nodes the error of the cubic can be.
  Lanes growth;

  Interpolation(const SumsByScale& by, const Lanes& t) {
    Lanes away[SumsByScale::kNodes];
    for (std::size_t i = 0; i < SumsByScale::kNodes; ++i) away[i] = t - by.node[i];
    const Lanes lower = away[0] * away[1];
    const Lanes upper = away[2] * away[3];
    share[0] = away[1] * upper * by.weight[0];
    share[1] = away[0] * upper * by.weight[1];
    share[2] = lower * away[3] * by.weight[2];
    share[3] = lower * away[2] * by.weight[3];
    quartic = lower * upper;
    growth = Magnitude(share[0]) + Magnitude(share[1]) + Magnitude(share[2]) + Magnitude(share[3]);
  }
};

/// The sums at the scales @p t, from 0 to 2, to within what the rounding of SumConics and of the
/// interpolation can make of them.
///
/// Let g = |base| + t |v|. Beside these sizes, w is off by 2 roundings of g, m by 3 of |u| g, w^2
/// by 5 of g^2 and s by 6 of u^2 + g^2; so a product of two elements p q of the design is off by 13
/// at most, and adding n of them up takes n - 1 more. n + 16 roundings of the sum of all |p q|,
/// taken with g in place of w, cover that, and by Cauchy and Schwarz that sum is at most the
/// product of the columns' norms. The norms in turn come from those of u, base and v by Minkowski's
/// inequality.
///
/// Interpolation: a share has 12 roundings, its product with a sum 1 and adding up 5; 20 cover
/// them.
///
/// All this is relative to the sums; what they lose by underflow is left out. It may be: nothing is
/// certain of a fit without a pivot above kRounding in every column, and beside such columns it is
/// nothing. The norms must not have lost anything themselves, since a large cross term makes much
/// of a small norm; see SizeOf.
template <class Lanes>
inline void BoundSums(const SumsByScale& by, const Lanes& t, Bounded<Lanes>* sum) {
  const Interpolation<Lanes> at(by, t);
  for (std::size_t k = 0; k < kConicSums; ++k) {
    const double* const nodes = by.sums[k];
    sum[k].value = at.share[0] * nodes[0] + at.share[1] * nodes[1] + at.share[2] * nodes[2] +
                   at.share[3] * nodes[3];
  }
  const Lanes ofFourthPowers = at.quartic * by.fourthPowersOfV;
  sum[kSS].value += ofFourthPowers;
  sum[kSR].value += ofFourthPowers;

  // The rounding of the sums counts once for those of a fit at t, and as often as the nodes' do.
  const Lanes unit = by.rounding * (1.0 + at.growth) + 10 * kRounding * at.growth;
  // The sums at the nodes have the errors of their own scales, the fit has that of t.
  const Lanes largestNode = Lanes{} + by.node[SumsByScale::kNodes - 1];
  const Lanes widest = t > largestNode ? t : largestNode;
  const Lanes wFour = by.base.four + widest * by.v.four;
  const Lanes u = Lanes{} + by.u.two;
  const Lanes w = by.base.two + widest * by.v.two;
  const Lanes r = wFour * wFour;
  const Lanes m = wFour * by.u.four;
  const Lanes s = r + by.u.four * by.u.four;
  const Lanes offS = unit * s;
  const Lanes offM = unit * m;
  const Lanes offU = unit * u;
  const Lanes offW = unit * w;
  const Lanes offFourthPowers = by.rounding * Magnitude(ofFourthPowers);
  sum[kSS].error = offS * s + offFourthPowers;
  sum[kSM].error = offS * m;
  sum[kSU].error = offS * u;
  sum[kSW].error = offS * w;
  sum[kS].error = offS * by.one;
  sum[kMM].error = offM * m;
  sum[kMU].error = offM * u;
  sum[kMW].error = offM * w;
  sum[kM].error = offU * w;
  sum[kWW].error = offW * w;
  sum[kW].error = offW * by.one;
  sum[kSR].error = offS * r + offFourthPowers;
  sum[kMR].error = offM * r;
  sum[kUR].error = offU * r;
  sum[kWR].error = offW * r;
}

/// See ConicSummation::Bound.
template <std::size_t kCount>
inline bool BoundConicsInLanes(const SumsByScale& by, const double* t, Bounded<double>* A,
                               Bounded<double>* B) {
  using Lanes = LanesOf<kCount>;
  Lanes scales;
  LoadLanes<kCount>(t, scales);
  Bounded<Lanes> sums[kConicSums];
  BoundSums(by, scales, sums);
  const ConicEquations<Bounded<Lanes>> equations(by.axis, sums);
  const NormalInverse<5, Bounded<Lanes>> inverse(equations.AtA);
  if (!inverse.IsRegular()) return false;
  const Column<5, Bounded<Lanes>> solution = inverse.Solve(equations.Atb);
  for (std::size_t lane = 0; lane < kCount; ++lane) {
    A[lane] = {solution.at[0].value[lane], solution.at[0].error[lane]};
    B[lane] = {solution.at[1].value[lane], solution.at[1].error[lane]};
  }
  return true;
}

}  // namespace tiltpole::detail
