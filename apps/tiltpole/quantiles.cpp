#include "apps/tiltpole/quantiles.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tiltpole::cli {
namespace {

// Each octave from 2^-40 (a picometre, where values are metres) to 2^40 has as many bins; what lies
// outside falls into the first or the last.
constexpr int kLowestOctave = -40;
constexpr int kOctaves = 80;
constexpr int kBinsPerOctave = 1024;

std::size_t BinOf(double value) {
  int exponent = 0;
  const double mantissa = std::frexp(value, &exponent);  // in [0.5, 1)
  if (value == 0.0 || exponent <= kLowestOctave) return 0;
  if (exponent > kLowestOctave + kOctaves || std::isinf(value)) {
    return std::size_t{kOctaves} * kBinsPerOctave - 1;
  }
  const int within = static_cast<int>((2.0 * mantissa - 1.0) * kBinsPerOctave);
  const int bin = (exponent - kLowestOctave - 1) * kBinsPerOctave + within;
  return static_cast<std::size_t>(bin);
}

double MiddleOf(std::size_t bin) {
  const int octave = static_cast<int>(bin) / kBinsPerOctave + kLowestOctave;
  const int within = static_cast<int>(bin) % kBinsPerOctave;
  return std::ldexp(1.0 + (within + 0.5) / kBinsPerOctave, octave);
}

}  // namespace

void Quantiles::Add(double value) {
  if (std::isnan(value)) {
    ++not_a_number_;
    return;
  }
  largest_ = count_ == 0 ? value : std::max(largest_, value);
  ++count_;
  if (count_ <= kExactCount) exact_.push_back(value);
  if (count_ == kExactCount + 1) {
    histogram_.resize(std::size_t{kOctaves} * kBinsPerOctave);
    for (const double earlier : exact_) ++histogram_[BinOf(earlier)];
  }
  if (count_ > kExactCount) ++histogram_[BinOf(value)];
}

double Quantiles::At(double share) const {
  if (count_ == 0) return std::numeric_limits<double>::quiet_NaN();
  const double wanted = std::ceil(share * static_cast<double>(count_));
  const auto rank = std::clamp<std::uint64_t>(static_cast<std::uint64_t>(wanted), 1, count_);
  if (histogram_.empty()) {
    std::vector<double> values = exact_;
    const auto place = values.begin() + static_cast<std::ptrdiff_t>(rank - 1);
    std::nth_element(values.begin(), place, values.end());
    return *place;
  }
  std::uint64_t below = 0;
  for (std::size_t bin = 0; bin < histogram_.size(); ++bin) {
    below += histogram_[bin];
    if (below >= rank) return std::min(MiddleOf(bin), largest_);
  }
  return largest_;
}

double Quantiles::Largest() const {
  return count_ == 0 ? std::numeric_limits<double>::quiet_NaN() : largest_;
}

}  // namespace tiltpole::cli
