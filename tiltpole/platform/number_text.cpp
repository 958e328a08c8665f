// Numbers out of text and into it.

#include <array>
#include <charconv>
#include <limits>
#include <optional>

#include "tiltpole/platform/text.h"

namespace tiltpole::detail {
namespace {

bool IsBlank(wchar_t sign) { return sign == L' ' || (sign >= L'\t' && sign <= L'\r'); }

bool IsDigit(wchar_t sign) { return sign >= L'0' && sign <= L'9'; }

void SkipBlanks(std::wstring_view& text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
}

// Takes an optional sign; true for a minus.
bool TakeMinus(std::wstring_view& text) {
  if (text.empty() || (text.front() != L'-' && text.front() != L'+')) return false;
  const bool minus = text.front() == L'-';
  text.remove_prefix(1);
  return minus;
}

bool CanStandInANumber(wchar_t sign) {
  return IsDigit(sign) || (sign >= L'A' && sign <= L'Z') || (sign >= L'a' && sign <= L'z') ||
         sign == L'.' || sign == L'+' || sign == L'-';
}

std::string TakeNumber(std::wstring_view text) {
  std::string number;
  while (!text.empty() && CanStandInANumber(text.front())) {
    number += static_cast<char>(text.front());
    text.remove_prefix(1);
  }
  return number;
}

int HexDigit(char sign) {
  if (sign >= '0' && sign <= '9') return sign - '0';
  if (sign >= 'a' && sign <= 'f') return sign - 'a' + 10;
  if (sign >= 'A' && sign <= 'F') return sign - 'A' + 10;
  return -1;
}

// "0x" starts a hexadecimal number only if a digit follows; else the number is the 0 alone.
bool IsHexadecimal(std::string_view number) {
  if (number.size() < 3 || number[0] != '0' || (number[1] != 'x' && number[1] != 'X')) return false;
  const std::size_t digit = number[2] == '.' ? 3 : 2;
  return digit < number.size() && HexDigit(number[digit]) >= 0;
}

// Where the first digit that counts stands before (positive) or behind the point, plus the
// exponent. It is asked only for numbers that no double can hold, hundreds of places away from 0,
// so its sign tells the too large from the too small.
double OrderOfMagnitude(std::string_view number, char exponent_mark, double bits_per_digit) {
  double places = 0.0;
  bool point_seen = false;
  bool digit_counts = false;
  std::size_t at = 0;
  for (; at < number.size(); ++at) {
    if (number[at] == '.') {
      point_seen = true;
    } else if ((number[at] | 0x20) == exponent_mark) {
      break;
    } else {
      digit_counts = digit_counts || number[at] != '0';
      if (digit_counts && !point_seen) places += bits_per_digit;
      if (!digit_counts && point_seen) places -= bits_per_digit;
    }
  }
  if (at == number.size()) return places;
  number.remove_prefix(at + 1);
  const double minus = number.substr(0, 1) == "-" ? -1.0 : 1.0;
  double exponent = 0.0;
  for (const char sign : number) {
    if (IsDigit(static_cast<wchar_t>(sign))) exponent = exponent * 10.0 + (sign - '0');
  }
  return places + minus * exponent;
}

// The value of a number without its sign, or nothing where there is none.
std::optional<double> ParseMagnitude(std::string_view number) {
  const bool hexadecimal = IsHexadecimal(number);
  if (hexadecimal) number.remove_prefix(2);
  // The sign was taken already; a second one makes this no number. A '+' is none for from_chars.
  if (number.empty() || number.front() == '-') return std::nullopt;

  double value = 0.0;
  const auto format = hexadecimal ? std::chars_format::hex : std::chars_format::general;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value, format);
  if (result.ec == std::errc()) return value;
  if (result.ec != std::errc::result_out_of_range) return std::nullopt;
  number = number.substr(0, static_cast<std::size_t>(result.ptr - number.data()));
  const double order =
      hexadecimal ? OrderOfMagnitude(number, 'p', 4.0) : OrderOfMagnitude(number, 'e', 1.0);
  return order > 0.0 ? std::numeric_limits<double>::infinity() : 0.0;
}

}  // namespace

std::int32_t ParseInt(std::wstring_view text) {
  using Limits = std::numeric_limits<std::int32_t>;
  SkipBlanks(text);
  const bool minus = TakeMinus(text);
  std::int64_t value = 0;
  while (!text.empty() && IsDigit(text.front()) && value <= Limits::max()) {
    value = value * 10 + (text.front() - L'0');
    text.remove_prefix(1);
  }
  if (minus) value = -value;
  if (value < Limits::min()) return Limits::min();
  if (value > Limits::max()) return Limits::max();
  return static_cast<std::int32_t>(value);
}

double ParseDouble(std::wstring_view text) {
  SkipBlanks(text);
  const bool minus = TakeMinus(text);
  const std::optional<double> magnitude = ParseMagnitude(TakeNumber(text));
  if (!magnitude) return 0.0;
  return minus ? -*magnitude : *magnitude;
}

std::wstring FormatFixed(double value, int decimals) {
  // The largest double has 309 digits before the point.
  std::array<char, 512> signs = {};
  const auto result = std::to_chars(signs.data(), signs.data() + signs.size(), value,
                                    std::chars_format::fixed, decimals);
  return {signs.data(), result.ptr};
}

}  // namespace tiltpole::detail
