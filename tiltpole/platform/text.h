#pragma once

/// @file
/// Text and numbers on their way into and out of files, without any locale.
///
/// Text in memory is wide, text in files is narrow. The narrow text is UTF-8 on every target, so
/// that ASCII is a byte a sign and a file written on one target reads the same on every other.
/// None of these functions looks at the process's locale or changes it: a host that runs in a
/// comma-decimal locale reads and writes the same bytes.

#include <cstdint>
#include <string>
#include <string_view>

#include "tiltpole/export.h"

namespace tiltpole::detail {

/// The UTF-8 bytes of a wide text. A value that is no character (half of a surrogate pair, or
/// beyond U+10FFFF) becomes U+FFFD. Zero characters are carried like any other.
TILTPOLE_EXPORT std::string NarrowText(std::wstring_view text);

/// The wide text of UTF-8 bytes. Every byte that is part of no valid sequence becomes U+FFFD; where
/// a wide character has 16 bits, a character beyond them becomes a surrogate pair.
TILTPOLE_EXPORT std::wstring WideText(std::string_view bytes);

/// The first bytes of a UTF-8 text, at most @p limit; no character is cut in two.
TILTPOLE_EXPORT std::string_view CutNarrowText(std::string_view bytes, std::size_t limit);

/// The decimal integer that a text starts with, as wcstol reads it in the C locale: leading white
/// space, an optional sign, digits; whatever follows is ignored.
///
/// @return the value; 0 without a digit; the nearest end of the 32-bit range beyond it, also where
///         the platform's long is wider
TILTPOLE_EXPORT std::int32_t ParseInt(std::wstring_view text);

/// The number that a text starts with, as wcstod reads it in the C locale: leading white space, an
/// optional sign, then a decimal number with a point and an exponent, a hexadecimal one
/// ("0x1.8p3"), "inf", "infinity" or "nan" in any case; whatever follows is ignored.
///
/// @return the double nearest to the number; 0.0 when there is none; an infinity when it is too
///         large for a double, a zero of its sign when it is too small
TILTPOLE_EXPORT double ParseDouble(std::wstring_view text);

/// A number in fixed notation, as "%.*f" writes it in the C locale: all digits of a large value, no
/// exponent, correctly rounded; "inf", "-inf", "nan" and "-nan" for what is no finite number.
///
/// @param[in] value     the number
/// @param[in] decimals  digits after the point, 0 to 100
TILTPOLE_EXPORT std::wstring FormatFixed(double value, int decimals);

}  // namespace tiltpole::detail
