// Wide text and UTF-8, one into the other.

#include "tiltpole/platform/text.h"

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

}  // namespace tiltpole::detail
