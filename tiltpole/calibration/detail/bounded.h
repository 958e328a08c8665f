#pragma once

// Numbers that are known to within a bound.
//
// Every operation carries the bounds of its operands on and adds its own rounding. So the same
// steps, taken on any numbers within the bounds, rounded or exact, end within the bound of the
// result (running error analysis: N. J. Higham, "Accuracy and Stability of Numerical Algorithms",
// 2nd edition, SIAM 2002, section 3.3).

#include <limits>

#include "tiltpole/matrix/detail/lanes.h"

namespace tiltpole::detail {

/// The two roundings of an operation, beside its result: in the steps bounded and in these here. A
/// rounding is half of epsilon at most.
inline constexpr double kRounding = std::numeric_limits<double>::epsilon();

/// More than an operation can lose by underflow.
inline constexpr double kUnderflow = 1e-300;

/// A divisor must be known better than this, beside its size.
inline constexpr double kLargestShare = 1.0 / 1024;

/// The bounds are rounded as well. They are sums and products of numbers that are not negative, so
/// even ten thousand roundings take less than this share off them; who asks for the range makes up
/// for it.
inline constexpr double kBoundSlack = 1.0 + 1.0 / 1024;

/// A number, or several in lanes.
template <class Element>
struct Bounded {
  Element value;
  /// How far from it the number may be. Infinite or not a number if nothing is known.
  Element error;
};

template <class Element>
inline Bounded<Element> operator-(const Bounded<Element>& a) {
  return {-a.value, a.error};
}

template <class Element>
inline Bounded<Element> operator+(const Bounded<Element>& a, const Bounded<Element>& b) {
  const Element sum = a.value + b.value;
  return {sum, a.error + b.error + kRounding * Magnitude(sum)};
}

template <class Element>
inline Bounded<Element> operator+(const Bounded<Element>& a, double b) {
  const Element sum = a.value + b;
  return {sum, a.error + kRounding * Magnitude(sum)};
}

template <class Element>
inline Bounded<Element>& operator+=(Bounded<Element>& a, const Bounded<Element>& b) {
  return a = a + b;
}

template <class Element>
inline Bounded<Element> operator-(const Bounded<Element>& a, const Bounded<Element>& b) {
  return a + -b;
}

template <class Element>
inline Bounded<Element> operator-(double a, const Bounded<Element>& b) {
  return -b + a;
}

template <class Element>
inline Bounded<Element> operator*(const Bounded<Element>& a, const Bounded<Element>& b) {
  const Element largest = Magnitude(b.value) + b.error;
  const Element off = b.error + kRounding * largest + kUnderflow;
  return {a.value * b.value, Magnitude(a.value) * off + a.error * largest + kUnderflow};
}

template <class Element>
inline Bounded<Element> operator*(double a, const Bounded<Element>& b) {
  return Bounded<Element>{Element{} + a, Element{}} * b;
}

template <class Element>
inline Bounded<Element> operator/(double a, const Bounded<Element>& b) {
  const Element quotient = a / b.value;
  const Element share = b.error / Magnitude(b.value);
  const Element unknown = Element{} + std::numeric_limits<double>::infinity();
  // 1 / (1 - share) is less than 1 + 2 share.
  const Element off = share * (1.0 + 2 * kLargestShare) + kRounding;
  return {quotient, share < kLargestShare ? Magnitude(quotient) * off + kUnderflow : unknown};
}

/// The size of the value.
template <class Element>
inline Element Magnitude(const Bounded<Element>& a) {
  return Magnitude(a.value);
}

template <class Element>
inline Element Lowest(const Bounded<Element>& a) {
  return a.value - a.error * kBoundSlack;
}

template <class Element>
inline Element Highest(const Bounded<Element>& a) {
  return a.value + a.error * kBoundSlack;
}

}  // namespace tiltpole::detail
