#include "positioning/allocations.h"

#include <cstdlib>
#include <new>

namespace {

long allocations = 0;
long until_failure = -1;

}  // namespace

namespace tiltpole_test {

long Allocations() { return allocations; }

void FailAllocationAfter(long count) { until_failure = count; }

}  // namespace tiltpole_test

void* operator new(std::size_t size) {
  ++allocations;
  if (until_failure == 0) {
    until_failure = -1;
    throw std::bad_alloc();
  }
  if (until_failure > 0) --until_failure;
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
