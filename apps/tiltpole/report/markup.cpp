#include "apps/tiltpole/report/markup.h"

#include <cstddef>
#include <cstdint>

namespace tiltpole::cli {
namespace {

constexpr const char* kReplacement = "\xEF\xBF\xBD";

// How many bytes the lead byte of a sequence announces; 0 for a byte that leads none.
std::size_t SequenceLength(unsigned char lead) {
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead < 0xE0) return 2;
  if (lead >= 0xE0 && lead < 0xF0) return 3;
  return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

// The code point at the start of @p text, which holds its whole sequence; 0 where that is broken.
std::uint32_t Decoded(std::string_view text, std::size_t length) {
  constexpr std::uint32_t kLeadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  constexpr std::uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  std::uint32_t code = static_cast<unsigned char>(text[0]) & kLeadBits[length];
  for (std::size_t i = 1; i < length; ++i) {
    const auto next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0U) != 0x80U) return 0;
    code = code << 6U | (next & 0x3FU);
  }
  return code < kSmallest[length] ? 0 : code;
}

bool MayStandInXml(std::uint32_t code) {
  if (code < 0x20) return code == '\t' || code == '\n';
  return code < 0xD800 || (code >= 0xE000 && code < 0xFFFE) ||
         (code >= 0x10000 && code <= 0x10FFFF);
}

const char* Entity(char sign) {
  switch (sign) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return nullptr;
  }
}

void AppendEscaped(std::string& page, std::string_view text) {
  while (!text.empty()) {
    std::size_t length = SequenceLength(static_cast<unsigned char>(text[0]));
    const bool whole = length > 0 && length <= text.size();
    if (!whole || !MayStandInXml(Decoded(text, length))) {
      page += kReplacement;
      length = 1;
    } else if (const char* const entity = Entity(text[0])) {
      page += entity;
    } else {
      page += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
}

}  // namespace

void Markup::Tag(const char* name, Attributes attributes, const char* end) {
  page_ += '<';
  page_ += name;
  for (const auto& [key, value] : attributes) {
    page_ += ' ';
    page_ += key;
    page_ += "=\"";
    AppendEscaped(page_, value);
    page_ += '"';
  }
  page_ += end;
}

void Markup::Open(const char* name, Attributes attributes) {
  Tag(name, attributes, ">");
  open_.push_back(name);
}

void Markup::Close() {
  page_ += "</";
  page_ += open_.back();
  page_ += ">\n";
  open_.pop_back();
}

void Markup::Leaf(const char* name, std::string_view text, Attributes attributes) {
  Open(name, attributes);
  Text(text);
  Close();
}

void Markup::Empty(const char* name, Attributes attributes) { Tag(name, attributes, "/>\n"); }

void Markup::Text(std::string_view text) { AppendEscaped(page_, text); }

}  // namespace tiltpole::cli
