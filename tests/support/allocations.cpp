#include "support/allocations.h"

#include <cstdlib>

namespace {

long made = 0;
long living = 0;
long until_failure = -1;
bool failed = false;

void* Allocate(std::size_t size) noexcept {
  ++made;
  if (until_failure == 0) {
    until_failure = -1;
    failed = true;
    return nullptr;
  }
  if (until_failure > 0) --until_failure;
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory != nullptr) ++living;
  return memory;
}

void* AllocateOrThrow(std::size_t size) {
  void* const memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void Free(void* memory) noexcept {
  if (memory == nullptr) return;
  --living;
  std::free(memory);
}

}  // namespace

namespace tiltpole_test {

long AllocationsMade() { return made; }

long LivingAllocations() { return living; }

void FailAllocationAfter(long count) {
  until_failure = count;
  failed = false;
}

bool StopFailing() {
  until_failure = -1;
  return failed;
}

}  // namespace tiltpole_test

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return Allocate(size);
}
void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept { Free(memory); }
