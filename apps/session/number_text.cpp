#include "apps/session/number_text.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <system_error>

#include "apps/session/input_error.h"

namespace tiltpole::session {
namespace {

// A double in fixed notation has up to 309 digits before the point.
constexpr std::size_t kLongestNumber = 400;

std::optional<std::int32_t> TwoDigits(std::string_view text, std::int32_t limit) {
  const auto digit = [](char sign) { return sign >= '0' && sign <= '9'; };
  if (!digit(text[0]) || !digit(text[1])) return std::nullopt;
  const std::int32_t value = (text[0] - '0') * 10 + (text[1] - '0');
  if (value >= limit) return std::nullopt;
  return value;
}

void AppendTwoDigits(std::string& text, std::int32_t value) {
  text += static_cast<char>('0' + value / 10 % 10);
  text += static_cast<char>('0' + value % 10);
}

}  // namespace

std::string_view Trimmed(std::string_view text) {
  const auto blank = [](char sign) { return sign == ' ' || sign == '\t'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

std::optional<double> ParseNumber(std::string_view text) {
  text = Trimmed(text);
  // Spreadsheets write a plus sign now and then; the conversion itself takes none.
  if (text.size() > 1 && text[0] == '+' && text[1] != '-') text.remove_prefix(1);
  double value = 0.0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<PoseSensorData::TimeOfDay> ParseTimeOfDay(std::string_view text) {
  text = Trimmed(text);
  if (text.size() != 8 || text[2] != ':' || text[5] != ':') return std::nullopt;
  const auto hours = TwoDigits(text.substr(0, 2), 24);
  const auto minutes = TwoDigits(text.substr(3, 2), 60);
  const auto seconds = TwoDigits(text.substr(6, 2), 60);
  if (!hours || !minutes || !seconds) return std::nullopt;
  PoseSensorData::TimeOfDay time;
  time[0] = *hours;
  time[1] = *minutes;
  time[2] = *seconds;
  return time;
}

void AppendNumber(std::string& text, double value) {
  char buffer[kLongestNumber];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  text.append(buffer, result.ptr);
}

void AppendFixed(std::string& text, double value, int decimals) {
  char buffer[kLongestNumber];
  if (!std::isfinite(value)) {
    AppendNumber(text, value);
    return;
  }
  const auto result =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  std::string_view written(buffer, static_cast<std::size_t>(result.ptr - buffer));
  if (written.front() == '-' && written.find_first_not_of("-0.") == std::string_view::npos) {
    written.remove_prefix(1);
  }
  text += written;
}

void AppendTimeOfDay(std::string& text, const PoseSensorData::TimeOfDay& time) {
  AppendTwoDigits(text, time[0]);
  text += ':';
  AppendTwoDigits(text, time[1]);
  text += ':';
  AppendTwoDigits(text, time[2]);
}

std::string FixedText(double value, int decimals) {
  std::string text;
  AppendFixed(text, value, decimals);
  return text;
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t longest = 40;
  std::string result = "'";
  for (const char sign : text.substr(0, longest)) {
    const auto byte = static_cast<unsigned char>(sign);
    result += byte < 0x20 || byte == 0x7f ? '?' : sign;
  }
  if (text.size() > longest) result += "...";
  return result + "'";
}

}  // namespace tiltpole::session
