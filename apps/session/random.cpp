#include "apps/session/random.h"

#include <cmath>

namespace tiltpole::session {
namespace {

constexpr double kLn2 = 0.693147180559945309417;
constexpr double kSqrtHalf = 0.707106781186547524401;

// The natural logarithm from additions, multiplications and divisions alone. The mathematics
// libraries differ in its last bit from platform to platform; these do not.
double Log(double x) {
  int exponent = 0;
  double mantissa = std::frexp(x, &exponent);
  if (mantissa < kSqrtHalf) {
    mantissa *= 2.0;
    --exponent;
  }
  const double s = (mantissa - 1.0) / (mantissa + 1.0);
  double sum = 0.0;
  for (int k = 23; k >= 1; k -= 2) sum = sum * s * s + 1.0 / k;
  return 2.0 * s * sum + exponent * kLn2;
}

}  // namespace

std::uint64_t Random::Next() {
  state_ += 0x9E3779B97F4A7C15u;
  std::uint64_t z = state_;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  return z ^ (z >> 31);
}

double Random::Uniform() { return static_cast<double>(Next() >> 11) * 0x1p-53; }

double Random::Normal() {
  if (has_spare_) {
    has_spare_ = false;
    return spare_;
  }
  double u = 0.0;
  double v = 0.0;
  double square = 0.0;
  do {
    u = 2.0 * Uniform() - 1.0;
    v = 2.0 * Uniform() - 1.0;
    square = u * u + v * v;
  } while (square >= 1.0 || square == 0.0);
  const double factor = std::sqrt(-2.0 * Log(square) / square);
  spare_ = v * factor;
  has_spare_ = true;
  return u * factor;
}

}  // namespace tiltpole::session
