#pragma once

// The wall between C and the library: every function of the interface runs inside Guarded, which
// turns what is thrown into a result and keeps the sentence for tiltpole_last_error().

#include <new>

#include "tiltpole/c/types.h"

namespace tiltpole::detail {

/// Keeps the sentence for this thread; allocates nothing.
/// @return the result, so that a function can fail in one line
int Failed(int result, const char* sentence) noexcept;

/// The result for something thrown that is not std::bad_alloc.
int FailedUnexpectedly() noexcept;

template <class Work>
int Guarded(const Work& work) noexcept {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return Failed(TILTPOLE_OUT_OF_MEMORY, "there is no memory for this");
  } catch (...) {
    return FailedUnexpectedly();
  }
}

inline int NullPointer() noexcept {
  return Failed(TILTPOLE_NULL_POINTER, "a handle or a pointer that is needed is null");
}

template <class... Pointers>
bool AnyNull(const Pointers*... pointers) noexcept {
  return (... || (pointers == nullptr));
}

/// Whether an array says that it has elements but not where.
inline bool NullArray(const void* elements, std::size_t count) noexcept {
  return elements == nullptr && count != 0;
}

inline bool IsOneOfTwo(int value) noexcept { return value == 0 || value == 1; }

inline int BadMagnetometer() noexcept {
  return Failed(TILTPOLE_BAD_ARGUMENT, "a magnetometer is 0 (A) or 1 (B)");
}

inline int BadTurn() noexcept {
  return Failed(TILTPOLE_BAD_ARGUMENT, "a turn is 0 (horizontal) or 1 (vertical)");
}

/// Makes what a handle stands for.
template <class Handle, class... Arguments>
int Create(Handle** handle, Arguments... arguments) {
  return Guarded([&] {
    if (AnyNull(handle)) return NullPointer();
    *handle = new Handle{arguments...};
    return static_cast<int>(TILTPOLE_OK);
  });
}

}  // namespace tiltpole::detail
