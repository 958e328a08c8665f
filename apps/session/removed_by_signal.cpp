#include "apps/session/removed_by_signal.h"

#ifndef _WIN32
#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <string>

#include <unistd.h>
#endif

namespace tiltpole::session {

#ifdef _WIN32

void LetSignalsRemoveFiles() {}
RemovedBySignal::RemovedBySignal(const std::filesystem::path&) : place_(0) {}
RemovedBySignal::~RemovedBySignal() = default;

#else
namespace {

// In storage that never goes away, and free of locks and allocation: a signal comes at any time.
struct Place {
  std::atomic<bool> taken{false};
  std::array<char, PATH_MAX> path{};
};
static_assert(std::atomic<bool>::is_always_lock_free);
std::array<Place, 4> places;

void RemoveAndEnd(int signal) {
  for (const Place& place : places) {
    if (place.taken) unlink(place.path.data());
  }
  // Waits until this function returns; then it finds its default action and ends the program.
  static_cast<void>(raise(signal));
}

}  // namespace

void LetSignalsRemoveFiles() {
  struct sigaction action = {};
  action.sa_handler = RemoveAndEnd;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigfillset(&action.sa_mask);
  for (const int signal : {SIGHUP, SIGINT, SIGPIPE, SIGTERM}) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
}

RemovedBySignal::RemovedBySignal(const std::filesystem::path& path) : place_(0) {
  while (place_ < places.size() && places[place_].taken) ++place_;
  const std::string& native = path.native();
  if (place_ == places.size() || native.size() >= PATH_MAX) {
    place_ = places.size();
    return;
  }
  places[place_].path[native.copy(places[place_].path.data(), PATH_MAX - 1)] = '\0';
  places[place_].taken = true;
}

RemovedBySignal::~RemovedBySignal() {
  if (place_ < places.size()) places[place_].taken = false;
}

#endif

}  // namespace tiltpole::session
