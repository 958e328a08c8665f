// Looks at each block that is given back, and after each test at all heaps of the process: on
// Windows, where no sanitizer is to be had, this finds whatever was written beyond the end of a
// block or into one that was given back, and what is given back twice. The system marks those
// places only where it is told to; scripts/test.sh tells Wine.

#include <array>
#include <atomic>
#include <cstddef>

#include <gtest/gtest.h>
#include <malloc.h>
#include <windows.h>

namespace {

std::atomic<int> spoilt_blocks{0};

class HeapCheck : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo& /*test*/) override {
    EXPECT_EQ(spoilt_blocks.exchange(0), 0)
        << "blocks were given back with something written beyond them, or a second time";
    std::array<HANDLE, 64> heaps = {};
    const std::size_t count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
    ASSERT_LE(count, heaps.size());
    for (std::size_t i = 0; i < count; ++i) {
      EXPECT_TRUE(HeapValidate(heaps[i], 0, nullptr))
          << "something was written beyond a block, or into one that was given back";
    }
  }
};

const bool is_listening = [] {
  testing::UnitTest::GetInstance()->listeners().Append(new HeapCheck);  // which takes it over
  return true;
}();

}  // namespace

// The linker puts the first in the place of free, also for the run-time's own calls.
extern "C" {
void __wrap_free(void* block);
void __real_free(void* block);

void __wrap_free(void* block) {
  const auto heap = reinterpret_cast<HANDLE>(_get_heap_handle());
  // A block that was given back before may still look sound, but has no size.
  if (block != nullptr &&
      (!HeapValidate(heap, 0, block) || HeapSize(heap, 0, block) == static_cast<SIZE_T>(-1))) {
    ++spoilt_blocks;
  }
  __real_free(block);
}
}
