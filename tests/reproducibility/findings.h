#pragma once

// What the battery found: digests of results that must not differ by a bit, and a sample of those
// that depend on the platform's trigonometric functions.

#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tiltpole_test {

inline std::uint64_t BitsOf(double value) {
  // Processors differ in which of the many values they give that are not a number.
  if (std::isnan(value)) return 0x7FF8000000000000U;
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

// FNV-1a over 64 bits (Fowler, Noll, Vo), a byte at a time from the lowest.
class Digest {
 public:
  void Add(double value) { AddBits(BitsOf(value)); }
  void Add(int value) { AddBits(static_cast<std::uint64_t>(static_cast<std::int64_t>(value))); }
  void Add(std::string_view bytes) {
    for (const char byte : bytes) AddByte(static_cast<unsigned char>(byte));
  }
  std::uint64_t Value() const { return value_; }

 private:
  void AddBits(std::uint64_t bits) {
    for (int i = 0; i < 64; i += 8) AddByte(static_cast<unsigned char>(bits >> i));
  }
  void AddByte(unsigned char byte) { value_ = (value_ ^ byte) * 0x100000001B3U; }

  std::uint64_t value_ = 0xCBF29CE484222325U;
};

struct Findings {
  // Additions, multiplications, divisions and square roots alone, and bytes of files.
  std::map<std::string, Digest> exact;
  // Yes or no, how many, and which: answers that rest on trigonometric results, but on no last bit
  // of them in this battery.
  std::map<std::string, Digest> decisions;
  // Results that pass through trigonometric functions, a few hundred of each kind.
  std::map<std::string, std::vector<double>> traced;
  // All results of these kinds, to tell a target on which every one of them is the same.
  std::map<std::string, Digest> whole;
  // How often what the battery is about came to pass.
  std::map<std::string, int> counts;
};

void RunPositions(Findings& findings);
void RunScreenings(Findings& findings);
void RunCalibrations(Findings& findings);
void RunMatrices(Findings& findings);
void RunTransformations(Findings& findings);

}  // namespace tiltpole_test
