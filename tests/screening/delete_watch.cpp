#include "screening/delete_watch.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

struct WatchedAddress {
  void* address;
  int deletions;
};

// Not a vector: its own memory would come back here.
constexpr int kMostWatched = 100;
WatchedAddress g_watched[kMostWatched];
int g_count = 0;

bool CountDeletion(const void* address) {
  for (int i = 0; i < g_count; ++i) {
    if (g_watched[i].address != address) continue;
    ++g_watched[i].deletions;
    return true;
  }
  return false;
}

void Release(void* address) noexcept {
  if (!CountDeletion(address)) std::free(address);
}

}  // namespace

void* operator new(std::size_t size) {
  void* address = std::malloc(size == 0 ? 1 : size);
  if (address == nullptr) throw std::bad_alloc();
  return address;
}

void operator delete(void* address) noexcept { Release(address); }
void operator delete(void* address, std::size_t) noexcept { Release(address); }

namespace tiltpole::test {

void DeleteWatch::Start(void* address) {
  if (g_count == kMostWatched) std::abort();
  g_watched[g_count++] = {address, 0};
}

int DeleteWatch::DeletedTimes(int times) const {
  int count = 0;
  for (int i = 0; i < g_count; ++i) {
    if (g_watched[i].deletions == times) ++count;
  }
  return count;
}

// An object that was never deleted stays allocated, for the leak check to find.
DeleteWatch::~DeleteWatch() {
  for (int i = 0; i < g_count; ++i) {
    if (g_watched[i].deletions > 0) std::free(g_watched[i].address);
  }
  g_count = 0;
}

}  // namespace tiltpole::test
