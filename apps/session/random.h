#pragma once

// Random numbers that are the same on every platform.

#include <cstdint>

namespace tiltpole::session {

/// A generator whose numbers depend on the seed alone. The standard's distributions are left to
/// each library, so the same seed would give another session elsewhere.
///
/// The integers are those of SplitMix64 (Steele, Lea, Flood: Fast Splittable Pseudorandom Number
/// Generators, 2014).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next();
  /// Evenly in [0, 1).
  double Uniform();
  /// Normally, with mean 0 and standard deviation 1 (Marsaglia's polar method).
  double Normal();

 private:
  std::uint64_t state_;
  double spare_ = 0.0;
  bool has_spare_ = false;
};

}  // namespace tiltpole::session
