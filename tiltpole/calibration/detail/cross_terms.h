#pragma once

// The removal of the slopes that one coordinate shows against others over a turn.

#include <array>
#include <cmath>
#include <cstddef>

#include "tiltpole/calibration/detail/recurrence.h"
#include "tiltpole/calibration/detail/shape.h"

namespace tiltpole::detail {

/// The cap on every loop of the calibration.
inline constexpr int kIterationCap = 1000;

template <std::size_t N>
struct CrossTermMoves {
  /// How far each term has moved in all.
  std::array<double, N> sum{};
  /// The steps were used up while terms still moved.
  bool ranOut = false;

  bool AtRest() const {
    for (const double moved : sum) {
      if (!(std::fabs(moved) < kTolerance)) return false;
    }
    return true;
  }
};

/// Moves the terms against the slopes that they leave, until a step moves none of them by as much
/// as kTolerance, at most @p cap times.
///
/// @param[in,out] terms      the cross terms
/// @param[in]     weight     of the slopes: the scale of the axis that shows them
/// @param[in]     slopesFor  the slopes that given terms leave
/// @param[in]     cap        at most kIterationCap
template <std::size_t N, class SlopesFor>
CrossTermMoves<N> RemoveSlopes(std::array<double, N>& terms, double weight, SlopesFor slopesFor,
                               int cap) {
  CrossTermMoves<N> moved;
  std::array<std::array<double, N>, kIterationCap> moves;
  Recurrence<N> recurrence;
  std::size_t period = 0;
  for (std::size_t step = 0; step < static_cast<std::size_t>(cap); ++step) {
    // The moves depend on the terms alone. Once the terms are back at values that they have had,
    // the moves repeat those from there on and need no fit; they are still made and summed one by
    // one, since a sum of rounded steps is not a multiple.
    if (period == 0) period = static_cast<std::size_t>(recurrence.StepsSince(terms));
    std::array<double, N>& move = moves[step];
    if (period != 0) {
      move = moves[step - period];
    } else {
      const std::array<double, N> slopes = slopesFor(terms);
      for (std::size_t i = 0; i < N; ++i) move[i] = -weight * slopes[i];
    }
    bool still = true;
    for (std::size_t i = 0; i < N; ++i) {
      moved.sum[i] += move[i];
      terms[i] += move[i];
      still = still && std::fabs(move[i]) < kTolerance;
    }
    if (still) return moved;
  }
  moved.ranOut = true;
  return moved;
}

}  // namespace tiltpole::detail
