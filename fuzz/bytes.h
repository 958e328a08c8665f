#pragma once

// Makes numbers, choices and texts of a fuzzer's input: any bytes mean something, and a small
// change of the bytes is a small change of what they mean. An input that has run out gives zeros.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>

namespace tiltpole_fuzz {

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

  bool Empty() const { return left_ == 0; }

  std::uint8_t Byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }
  bool Flag() { return (Byte() & 1U) != 0; }
  /// From low to high, both included; at most 256 different ones.
  int Between(int low, int high) { return low + Byte() % (high - low + 1); }

  std::int32_t Int() {
    std::uint32_t bits = 0;
    for (int i = 0; i < 4; ++i) bits = bits << 8U | Byte();
    std::int32_t value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }

  /// Any int, the remarkable ones and small ones more often.
  std::int32_t AnyInt() {
    constexpr std::int32_t kRemarkable[] = {0, 1, -1, std::numeric_limits<std::int32_t>::max(),
                                            std::numeric_limits<std::int32_t>::min()};
    switch (Byte() % 4) {
      case 0:
        return kRemarkable[Byte() % std::size(kRemarkable)];
      case 1:
        return Between(-128, 127);
      case 2:
        return Between(-128, 127) * 256 + Byte();
      default:
        return Int();
    }
  }

  /// Any double, likewise.
  double AnyDouble() {
    constexpr double kRemarkable[] = {0.0,
                                      -0.0,
                                      1.0,
                                      -1.0,
                                      std::numeric_limits<double>::infinity(),
                                      -std::numeric_limits<double>::infinity(),
                                      std::numeric_limits<double>::quiet_NaN(),
                                      std::numeric_limits<double>::max(),
                                      std::numeric_limits<double>::lowest(),
                                      std::numeric_limits<double>::min(),
                                      std::numeric_limits<double>::denorm_min(),
                                      1e-6,
                                      1e-17,
                                      180.0,
                                      360.0};
    switch (Byte() % 8) {
      case 0:
        return kRemarkable[Byte() % std::size(kRemarkable)];
      case 1:
        return AnyInt();
      case 2: {
        std::uint64_t bits = 0;
        for (int i = 0; i < 8; ++i) bits = bits << 8U | Byte();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
      }
      case 3:
        return Between(-128, 127);
      default:
        return Count();
    }
  }

  /// What a sensor reads: a few thousand counts with a fraction of sixteenths.
  double Count() { return (Between(-128, 127) * 256 + Byte()) / 16.0; }

  /// The rest of the input.
  std::string Rest() { return Text(left_); }
  std::string Text(std::size_t most) {
    const std::size_t length = most < left_ ? most : left_;
    std::string text(reinterpret_cast<const char*>(data_), length);
    data_ += length;
    left_ -= length;
    return text;
  }

 private:
  const std::uint8_t* data_;
  std::size_t left_;
};

}  // namespace tiltpole_fuzz
