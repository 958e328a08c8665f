#pragma once

// What the players share: arguments of calls, and what is required of every call.

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "fuzz/bytes.h"
#include "fuzz/c_interface/player.h"
#include "fuzz/require.h"

namespace tiltpole_fuzz {

/// A call ends with the result that its header promises. A failure says what was wrong, and a
/// success leaves what the last failure said.
void Expect(int result, int promised);

/// Whether two structs of the interface, whose places are all of 8 bytes, hold the same: any
/// not-a-number is like any other.
template <class Struct>
bool Same(const Struct& a, const Struct& b) {
  static_assert(sizeof(Struct) % sizeof(double) == 0);
  std::array<double, sizeof(Struct) / sizeof(double)> of_a{};
  std::array<double, sizeof(Struct) / sizeof(double)> of_b{};
  std::memcpy(of_a.data(), &a, sizeof a);
  std::memcpy(of_b.data(), &b, sizeof b);
  for (std::size_t i = 0; i < of_a.size(); ++i) {
    if (std::isnan(of_a[i]) && std::isnan(of_b[i])) continue;
    if (std::memcmp(&of_a[i], &of_b[i], sizeof(double)) != 0) return false;
  }
  return true;
}

/// The result when nothing else is wrong than that one of these is null.
inline int OkUnlessNull(std::initializer_list<const void*> pointers) {
  for (const void* pointer : pointers) {
    if (pointer == nullptr) return TILTPOLE_NULL_POINTER;
  }
  return TILTPOLE_OK;
}

/// Null now and then.
template <class Pointee>
Pointee* OrNull(Bytes& bytes, Pointee* pointer) {
  return bytes.Byte() % 16 == 1 ? nullptr : pointer;
}

/// Null for no elements, and now and then.
template <class Element>
Element* ArrayOrNull(Bytes& bytes, std::vector<Element>& elements) {
  return elements.empty() ? nullptr : OrNull(bytes, elements.data());
}

inline bool NullArray(const void* elements, std::size_t count) {
  return elements == nullptr && count != 0;
}

/// Mostly 0 or 1.
int AnyOfTwo(Bytes& bytes);
inline bool IsOneOfTwo(int value) { return value == 0 || value == 1; }

/// Any index; now and then one of which a narrower integer would keep a small part.
std::size_t AnyIndex(Bytes& bytes);

/// Any text without a zero byte, in an allocation of its own length.
std::string AnyText(Bytes& bytes, std::size_t most);

tiltpole_sample AnySample(Bytes& bytes);
/// Replaces both turns: written out, or of one of the kinds that the calibration's tests know.
void AnyTurns(Bytes& bytes, Shared& shared);
tiltpole_correction AnyCorrection(Bytes& bytes);
/// The first samples of a turn, fewer now and then.
std::vector<tiltpole_sample> SomeOf(Bytes& bytes, const Shared& shared);

}  // namespace tiltpole_fuzz
