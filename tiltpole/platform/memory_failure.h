#pragma once

/// @file
/// What the backends of the windows do where a windowing system calls them: its code is not written
/// for exceptions, so none may come out.

#include <new>

namespace tiltpole::detail {

/// Does some work.
/// @return false when memory ran out in the middle of it
template <typename Work>
bool HadMemoryFor(Work work) {
  try {
    work();
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

}  // namespace tiltpole::detail
