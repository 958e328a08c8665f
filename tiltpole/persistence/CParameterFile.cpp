#include "tiltpole/persistence/CParameterFile.h"

#include <utility>

#include "tiltpole/platform/text.h"

namespace tiltpole {
namespace {

constexpr std::size_t kLongestLine = 99;  // bytes
constexpr int kDecimals = 10;

std::wstring_view UpToZero(const std::wstring& text) { return text.c_str(); }

std::wstring Bracketed(const std::wstring& key) {
  return std::wstring(L"[").append(UpToZero(key)).append(L"]");
}

}  // namespace

CParameterFile::~CParameterFile() { AbandonReplacement(); }

void CParameterFile::AbandonReplacement() {
  Close();
  if (!replaced_path_.empty()) detail::RemoveFile(path_beside_);
  replaced_path_.clear();
}

int CParameterFile::OpenForRead(const std::wstring& path) {
  AbandonReplacement();
  if (!detail::PathExists(path) || !OpenExisting(path)) return 0;
  std::string bytes;
  const bool read = Read(bytes);
  Close();
  if (!read) return 0;
  text_ = detail::WideText(bytes.c_str());
  return 1;
}

int CParameterFile::OpenForWrite(const std::wstring& path) {
  AbandonReplacement();
  return Create(path) ? 1 : 0;
}

int CParameterFile::OpenForReplace(const std::wstring& path) {
  AbandonReplacement();
  // Copied first: without room for it no file must have been created.
  std::wstring replaced_path(UpToZero(path));
  path_beside_ = replaced_path + L".new";
  if (replaced_path.empty() || !Create(path_beside_)) return 0;
  replaced_path_ = std::move(replaced_path);
  return 1;
}

int CParameterFile::Replace() {
  if (replaced_path_.empty()) return 0;
  const bool on_the_medium = Flush();
  const bool replaced =
      Close() && on_the_medium && detail::MoveOverFile(path_beside_, replaced_path_);
  if (replaced) replaced_path_.clear();
  AbandonReplacement();
  return replaced ? 1 : 0;
}

std::wstring_view CParameterFile::FindValue(const std::wstring& key) const {
  const std::wstring pattern = Bracketed(key);
  const std::size_t found = text_.find(pattern);
  if (found == std::wstring::npos) return {};
  const std::size_t begin = found + pattern.size();
  const std::size_t end = text_.find(L'\r', begin);
  // Deliberate: an entry on a last line that nothing ends counts as missing.
  if (end == std::wstring::npos) return {};
  return std::wstring_view(text_).substr(begin, end - begin);
}

int CParameterFile::ReadString(const std::wstring& key, std::wstring& value) const {
  const std::wstring_view found = FindValue(key);
  if (found.empty()) return 0;
  value = found;
  return 1;
}

int CParameterFile::ReadInt(const std::wstring& key, std::int32_t& value) const {
  const std::wstring_view found = FindValue(key);
  if (found.empty()) return 0;
  value = detail::ParseInt(found);
  return 1;
}

int CParameterFile::ReadDouble(const std::wstring& key, double& value) const {
  const std::wstring_view found = FindValue(key);
  if (found.empty()) return 0;
  value = detail::ParseDouble(found);
  return 1;
}

void CParameterFile::WriteString(const std::wstring& key, const std::wstring& value) {
  WriteLine(key, UpToZero(value));
}

void CParameterFile::WriteInt(const std::wstring& key, std::int32_t value) {
  WriteLine(key, std::to_wstring(value));
}

void CParameterFile::WriteDouble(const std::wstring& key, double value) {
  WriteLine(key, detail::FormatFixed(value, kDecimals));
}

void CParameterFile::WriteLine(const std::wstring& key, std::wstring_view value) {
  const std::wstring line = Bracketed(key).append(value).append(L"\r\n");
  Write(detail::CutNarrowText(detail::NarrowText(line), kLongestLine));
}

}  // namespace tiltpole
