#pragma once

// Whether a class declares its members in an order that hosts were promised.

#include <cstddef>
#include <functional>

namespace tiltpole_test {

// Members of one access come in memory in the order of their declaration.
template <class... Members>
bool StandInThisOrder(const Members*... members) {
  const void* places[] = {members...};
  for (std::size_t i = 1; i < sizeof...(members); ++i)
    if (!std::less<>()(places[i - 1], places[i])) return false;
  return true;
}

}  // namespace tiltpole_test
