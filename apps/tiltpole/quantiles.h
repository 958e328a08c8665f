#pragma once

// Median and other quantiles of many values in bounded memory.

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tiltpole::cli {

/// Quantiles of values that are not negative: exact for up to kExactCount of them, beyond that from
/// a histogram whose bins are a thousandth of their value wide. The largest is always exact.
class Quantiles {
 public:
  static constexpr std::size_t kExactCount = 20000;

  /// Takes a value; one that is not a number is counted apart.
  void Add(double value);

  /// How many numbers there were.
  std::uint64_t Count() const { return count_; }
  /// How many values were not a number.
  std::uint64_t NotANumberCount() const { return not_a_number_; }
  /// The smallest value that at least @p share of all do not exceed; not a number without values.
  double At(double share) const;
  double Largest() const;

 private:
  std::vector<double> exact_;
  std::vector<std::uint64_t> histogram_;
  std::uint64_t count_ = 0;
  std::uint64_t not_a_number_ = 0;
  double largest_ = 0.0;
};

}  // namespace tiltpole::cli
