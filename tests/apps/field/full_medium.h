#pragma once

// A medium without room, where a process can be kept from writing.

#ifndef _WIN32

#include <csignal>

#include <sys/resource.h>

namespace tiltpole_test {

/// No file grows beyond so many bytes, as if the medium were full, for as long as it lives.
class FullMedium {
 public:
  explicit FullMedium(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_limit_);
    const rlimit limit{bytes, old_limit_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullMedium() {
    setrlimit(RLIMIT_FSIZE, &old_limit_);
    static_cast<void>(std::signal(SIGXFSZ, old_handler_));  // it was there before
  }
  FullMedium(const FullMedium&) = delete;
  FullMedium& operator=(const FullMedium&) = delete;

 private:
  void (*old_handler_)(int);
  rlimit old_limit_{};
};

}  // namespace tiltpole_test

#endif
