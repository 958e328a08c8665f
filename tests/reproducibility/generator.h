#pragma once

// The battery's inputs, from integers, additions, multiplications and divisions alone: the same
// bits on every target.

#include <cstdint>

namespace tiltpole_test {

// SplitMix64 (Steele, Lea, Flood: Fast Splittable Pseudorandom Number Generators, 2014).
class Generator {
 public:
  explicit Generator(std::uint64_t seed) : state_(seed) {}

  std::uint64_t Next() {
    state_ += 0x9E3779B97F4A7C15U;
    std::uint64_t z = state_;
    z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31U);
  }
  double Uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(Next() >> 11U) * 0x1p-53);
  }

 private:
  std::uint64_t state_;
};

struct CirclePoint {
  double first;
  double second;
};

// A point on the unit circle, counter-clockwise; `turns` from 0 to 1, at no even speed.
inline CirclePoint OnCircle(double turns) {
  const int quadrant = static_cast<int>(turns * 4.0) & 3;
  const double t = turns * 4.0 - static_cast<int>(turns * 4.0);
  const double first = (1.0 - t * t) / (1.0 + t * t);
  const double second = 2.0 * t / (1.0 + t * t);
  switch (quadrant) {
    case 0:
      return {first, second};
    case 1:
      return {-second, first};
    case 2:
      return {-first, -second};
    default:
      return {second, -first};
  }
}

}  // namespace tiltpole_test
