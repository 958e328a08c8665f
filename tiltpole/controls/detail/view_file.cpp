#include "tiltpole/controls/detail/view_file.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "tiltpole/platform/file.h"
#include "tiltpole/platform/program_path.h"
#include "tiltpole/platform/text.h"

namespace tiltpole::detail {
namespace {

#ifdef _WIN32
constexpr wchar_t kSeparator = L'\\';
#else
constexpr wchar_t kSeparator = L'/';
#endif

constexpr std::size_t kLongestProgramPath = 260;
constexpr std::size_t kLongestViewFile = 999;

// The text up to the next comma, which is taken off the rest together with the comma; none where
// the rest is empty.
std::optional<std::wstring_view> TakeField(std::wstring_view& rest) {
  if (rest.empty()) return std::nullopt;
  const std::size_t comma = rest.find(L',');
  const std::wstring_view field = rest.substr(0, comma);
  rest.remove_prefix(comma == std::wstring_view::npos ? rest.size() : comma + 1);
  return field;
}

}  // namespace

std::wstring FolderOf(const std::wstring& program) {
  const std::wstring counted = program.substr(0, kLongestProgramPath);
  return counted.substr(0, counted.rfind(kSeparator));
}

std::wstring ProgramFolder() { return FolderOf(ProgramPath()); }

std::wstring ViewFilePath(const PlotKind& kind, const std::wstring& folder) {
  return folder + kSeparator + kind.view_file;
}

std::wstring ViewLine(const PlotKind& kind, const PlotView& view) {
  return kind.view_prefix + std::to_wstring(view.left_x) + L", " + std::to_wstring(view.bottom_v) +
         L", " + FormatFixed(view.scale, 6) + L",\r\n";
}

void ApplyViewText(const PlotKind& kind, const std::wstring& text, PlotView& view) {
  const std::wstring_view prefix = kind.view_prefix;
  const std::size_t place = text.find(prefix);
  if (place == std::wstring::npos) return;
  std::wstring_view rest = std::wstring_view(text).substr(place + prefix.size());
  if (const auto field = TakeField(rest)) view.left_x = ParseInt(*field);
  if (const auto field = TakeField(rest)) view.bottom_v = ParseInt(*field);
  if (const auto field = TakeField(rest)) view.scale = ParseDouble(*field);
}

int SaveView(const PlotKind& kind, const std::wstring& path, const PlotView& view) {
  // Made first: without room for it the old file must stay.
  const std::string line = NarrowText(ViewLine(kind, view));
  PlatformFile file;
  if (!file.Create(path)) return 0;
  file.Write(line);
  return 1;
}

int LoadView(const PlotKind& kind, const std::wstring& path, PlotView& view) {
  PlatformFile file;
  std::string bytes;
  if (!file.OpenExisting(path) || !file.Read(bytes, kLongestViewFile)) return 0;
  // The text ends at a zero byte, should there be one.
  ApplyViewText(kind, WideText(bytes.substr(0, bytes.find('\0'))), view);
  return 1;
}

}  // namespace tiltpole::detail
