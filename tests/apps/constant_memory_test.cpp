// Measuring takes no more memory for a long session than for a short one. Counts what the whole
// test program has on the heap, by an allocator of its own.

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <new>
#include <ostream>
#include <streambuf>
#include <string>

#include <gtest/gtest.h>

#include "apps/tiltpole/command_line.h"

namespace {

std::atomic<std::size_t> in_use{0};
std::atomic<std::size_t> most_in_use{0};

// The size stands in front of the block, in a place that keeps the block's alignment.
constexpr std::size_t kPrefix = alignof(std::max_align_t);
static_assert(kPrefix >= sizeof(std::size_t));

void* AllocateOrNull(std::size_t size) noexcept {
  auto* const block = static_cast<char*>(std::malloc(size + kPrefix));
  if (block == nullptr) return nullptr;
  std::memcpy(block, &size, sizeof size);
  const std::size_t now = in_use += size;
  if (now > most_in_use) most_in_use = now;
  return block + kPrefix;
}

void* Allocate(std::size_t size) {
  void* const block = AllocateOrNull(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void Release(void* pointer) {
  if (pointer == nullptr) return;
  char* const block = static_cast<char*>(pointer) - kPrefix;
  std::size_t size = 0;
  std::memcpy(&size, block, sizeof size);
  in_use -= size;
  std::free(block);
}

/// A session of so many rows that is nowhere in memory.
class EndlessSession : public std::streambuf {
 public:
  explicit EndlessSession(int rows) : rows_(rows) { Set(kHeader); }

 private:
  static constexpr const char* kHeader =
      "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b,"
      "antenna_north,antenna_east,antenna_height,true_north,true_east,true_height\n";
  static constexpr const char* kRow =
      "measure,08:00:00,12.5,-7.25,100,200,300,-100,-200,300,10,20,30,10.5,20.25,28\n";

  void Set(const std::string& text) {
    text_ = text;
    setg(text_.data(), text_.data(), text_.data() + text_.size());
  }
  int_type underflow() override {
    if (rows_-- <= 0) return traits_type::eof();
    Set(kRow);
    return traits_type::to_int_type(text_[0]);
  }

  int rows_;
  std::string text_;
};

class Nowhere : public std::streambuf {
  int_type overflow(int_type sign) override { return traits_type::not_eof(sign); }
  std::streamsize xsputn(const char*, std::streamsize size) override { return size; }
};

std::size_t MostMemoryFor(int rows) {
  EndlessSession session(rows);
  Nowhere nowhere;
  std::istream in(&session);
  std::ostream out(&nowhere);
  std::ostream err(&nowhere);
  tiltpole::cli::Console console{in, out, err};
  const std::size_t before = in_use;
  most_in_use = before;
  EXPECT_EQ(tiltpole::cli::RunCommandLine({"measure", "-", "--pole-length", "2", "--no-deviations"},
                                          console),
            0);
  return most_in_use - before;
}

// The quantiles' histograms are there from 20,000 values on.
TEST(ConstantMemory, MeasuringThreeTimesTheRowsTakesNoMoreMemory) {
  const std::size_t once = MostMemoryFor(21'000);
  const std::size_t three_times = MostMemoryFor(63'000);
  EXPECT_GT(once, 100'000u);  // the counting works
  EXPECT_LT(once, 20'000'000u);
  EXPECT_LE(three_times, once + 1000);
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
// The run-time's own come here too, but those of the sanitizers would not.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return AllocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return AllocateOrNull(size);
}
void operator delete(void* pointer) noexcept { Release(pointer); }
void operator delete[](void* pointer) noexcept { Release(pointer); }
void operator delete(void* pointer, std::size_t) noexcept { Release(pointer); }
void operator delete[](void* pointer, std::size_t) noexcept { Release(pointer); }
