#pragma once

// What the inversion of matrices asks of a comparison, be it of doubles or of doubles side by side.
// That of vectors gives a vector of whole numbers, -1 where it holds.

#include <cstddef>

namespace tiltpole::detail {

inline bool InFirst(bool condition) { return condition; }
inline bool InAll(bool condition) { return condition; }
inline bool InAny(bool condition) { return condition; }

template <class Condition>
inline bool InFirst(const Condition& condition) {
  return condition[0] != 0;
}

template <class Condition>
inline bool InAny(const Condition& condition) {
  bool any = false;
  for (std::size_t lane = 0; lane < sizeof(Condition) / sizeof condition[0]; ++lane) {
    any = any || condition[lane] != 0;
  }
  return any;
}

template <class Condition>
inline bool InAll(const Condition& condition) {
  return !InAny(~condition);
}

}  // namespace tiltpole::detail
