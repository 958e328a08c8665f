#pragma once

// Notices when an iteration is back at a state that it has been in, so that everything from here
// on can only repeat.

#include <array>
#include <cmath>
#include <cstddef>

namespace tiltpole::detail {

/// Compares each state with one remembered, which is renewed after 1, 2, 4, 8, ... steps. So every
/// cycle is noticed, at most three times as late as it begins and closes, with the memory of one
/// state and one comparison a step (R. P. Brent, "An improved Monte Carlo factorization algorithm",
/// BIT 20, 1980).
template <std::size_t N>
class Recurrence {
 public:
  /// @return how many steps ago the iteration was in @p state; 0 if that is not known
  int StepsSince(const std::array<double, N>& state) {
    ++step_;
    if (step_ > 1 && Same(state, remembered_)) return step_ - rememberedAt_;
    if (step_ == 2 * rememberedAt_ || step_ == 1) {
      remembered_ = state;
      rememberedAt_ = step_;
    }
    return 0;
  }

 private:
  // Zeros of different sign are different. Any two NaN are the same: which of them it is decides no
  // comparison and no number that comes after.
  static bool Same(const std::array<double, N>& a, const std::array<double, N>& b) {
    for (std::size_t i = 0; i < N; ++i) {
      const bool bothNaN = std::isnan(a[i]) && std::isnan(b[i]);
      if (!bothNaN && (a[i] != b[i] || std::signbit(a[i]) != std::signbit(b[i]))) return false;
    }
    return true;
  }

  std::array<double, N> remembered_{};
  int step_ = 0;
  int rememberedAt_ = 0;
};

}  // namespace tiltpole::detail
