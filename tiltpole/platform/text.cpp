#include "tiltpole/platform/text.h"

#include <array>
#include <charconv>
#include <limits>
#include <optional>

namespace tiltpole::detail {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kLargestCharacter = 0x10FFFF;

bool IsSurrogate(char32_t sign) { return sign >= 0xD800 && sign <= 0xDFFF; }
bool IsHighSurrogate(char32_t sign) { return sign >= 0xD800 && sign <= 0xDBFF; }
bool IsLowSurrogate(char32_t sign) { return sign >= 0xDC00 && sign <= 0xDFFF; }

// Takes the character at the front of a wide text.
char32_t TakeCharacter(std::wstring_view& text) {
  const char32_t first = static_cast<char32_t>(text.front());
  text.remove_prefix(1);
  if (sizeof(wchar_t) == 2 && IsHighSurrogate(first) && !text.empty() &&
      IsLowSurrogate(static_cast<char32_t>(text.front()))) {
    const char32_t second = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
  }
  return first > kLargestCharacter || IsSurrogate(first) ? kReplacement : first;
}

void AppendBytes(std::string& bytes, char32_t sign) {
  const auto append = [&bytes](char32_t byte) {
    bytes += static_cast<char>(static_cast<unsigned char>(byte));
  };
  const auto append_rest = [&append, sign](int shift) { append(0x80 | ((sign >> shift) & 0x3F)); };
  if (sign < 0x80) {
    append(sign);
  } else if (sign < 0x800) {
    append(0xC0 | (sign >> 6));
    append_rest(0);
  } else if (sign < 0x10000) {
    append(0xE0 | (sign >> 12));
    append_rest(6);
    append_rest(0);
  } else {
    append(0xF0 | (sign >> 18));
    append_rest(12);
    append_rest(6);
    append_rest(0);
  }
}

unsigned char Byte(char sign) { return static_cast<unsigned char>(sign); }

bool ContinuesASequence(char sign) { return (Byte(sign) & 0xC0) == 0x80; }

// A lead byte of UTF-8: how many bytes follow it, the bits that it gives, and the smallest
// character that may be written with so many bytes.
struct Lead {
  std::size_t following;
  char32_t bits;
  char32_t smallest;
};

bool ReadLead(unsigned char byte, Lead& lead) {
  if (byte >= 0xC0 && byte < 0xE0) {
    lead = {1, byte & 0x1FU, 0x80};
  } else if (byte >= 0xE0 && byte < 0xF0) {
    lead = {2, byte & 0x0FU, 0x800};
  } else if (byte >= 0xF0 && byte < 0xF8) {
    lead = {3, byte & 0x07U, 0x10000};
  } else {
    return false;
  }
  return true;
}

// Takes the character at the front of a UTF-8 text, or a single byte that starts none.
char32_t TakeCharacter(std::string_view& bytes) {
  const unsigned char first = Byte(bytes.front());
  bytes.remove_prefix(1);
  if (first < 0x80) return first;
  Lead lead = {};
  if (!ReadLead(first, lead) || bytes.size() < lead.following) return kReplacement;
  char32_t sign = lead.bits;
  for (const char next : bytes.substr(0, lead.following)) {
    if (!ContinuesASequence(next)) return kReplacement;
    sign = (sign << 6) | (Byte(next) & 0x3FU);
  }
  if (sign < lead.smallest || sign > kLargestCharacter || IsSurrogate(sign)) return kReplacement;
  bytes.remove_prefix(lead.following);
  return sign;
}

void AppendWide(std::wstring& text, char32_t sign) {
  if (sizeof(wchar_t) == 2 && sign >= 0x10000) {
    text += static_cast<wchar_t>(0xD800 + ((sign - 0x10000) >> 10));
    text += static_cast<wchar_t>(0xDC00 + ((sign - 0x10000) & 0x3FF));
  } else {
    text += static_cast<wchar_t>(sign);
  }
}

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
    } else if ((number[at] | 0x20) == exponent_mark || HexDigit(number[at]) < 0) {
      break;
    } else {
      digit_counts = digit_counts || number[at] != '0';
      if (digit_counts && !point_seen) places += bits_per_digit;
      if (!digit_counts && point_seen) places -= bits_per_digit;
    }
  }
  if (at == number.size()) return places;
  number.remove_prefix(at + 1);
  const double minus = !number.empty() && number.front() == '-' ? -1.0 : 1.0;
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
  // The sign was taken already; a second one makes this no number.
  if (number.empty() || number.front() == '-' || number.front() == '+') return std::nullopt;

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

std::string NarrowText(std::wstring_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  while (!text.empty()) AppendBytes(bytes, TakeCharacter(text));
  return bytes;
}

std::wstring WideText(std::string_view bytes) {
  std::wstring text;
  text.reserve(bytes.size());
  while (!bytes.empty()) AppendWide(text, TakeCharacter(bytes));
  return text;
}

std::string_view CutNarrowText(std::string_view bytes, std::size_t limit) {
  if (bytes.size() <= limit) return bytes;
  while (limit > 0 && ContinuesASequence(bytes[limit])) --limit;
  return bytes.substr(0, limit);
}

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
