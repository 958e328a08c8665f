#pragma once

// What a fuzzer holds the library to beyond not crashing.

#include <cstdio>
#include <cstdlib>

namespace tiltpole_fuzz {

/// Ends the process, as a sanitizer does, unless what is required holds.
inline void Require(bool holds, const char* required) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", required);
  std::abort();
}

}  // namespace tiltpole_fuzz
