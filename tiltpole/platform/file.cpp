#include "tiltpole/platform/file.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <utility>

#include "tiltpole/platform/text.h"

#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tiltpole {
namespace {

enum class Mode { Read, Write };

#ifdef _WIN32

std::FILE* Open(const std::wstring& path, Mode mode) {
  return _wfopen(path.c_str(), mode == Mode::Read ? L"rb" : L"wb");
}

std::int64_t Length(std::FILE* file) { return _filelengthi64(_fileno(file)); }

bool BringToMedium(std::FILE* file) { return _commit(_fileno(file)) == 0; }

#else

std::FILE* Open(const std::wstring& path, Mode mode) {
  return std::fopen(detail::NarrowText(path).c_str(), mode == Mode::Read ? "rbe" : "wbe");
}

std::int64_t Length(std::FILE* file) {
  struct stat status = {};
  return fstat(fileno(file), &status) == 0 ? static_cast<std::int64_t>(status.st_size) : -1;
}

bool BringToMedium(std::FILE* file) { return fsync(fileno(file)) == 0; }

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

#endif

}  // namespace

PlatformFile::~PlatformFile() { Close(); }

bool PlatformFile::OpenExisting(const std::wstring& path) {
  Close();
  file_ = Open(path, Mode::Read);
  for_reading_ = true;
  return IsOpen();
}

bool PlatformFile::Create(const std::wstring& path) {
  Close();
  file_ = Open(path, Mode::Write);
  for_reading_ = false;
  return IsOpen();
}

bool PlatformFile::Read(std::string& bytes, std::size_t most) {
  // Not every C library fails by itself when a file is read that was opened for writing.
  if (!IsOpen() || !for_reading_) return false;
  const std::int64_t length = Length(file_);
  if (length < 0 || std::fseek(file_, 0, SEEK_SET) != 0) return false;
  try {
    std::string content;
    content.resize(static_cast<std::size_t>(
        std::min<std::uint64_t>(static_cast<std::uint64_t>(length), most)));
    content.resize(std::fread(content.data(), 1, content.size(), file_));
    if (std::ferror(file_) != 0) return false;
    bytes = std::move(content);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

bool PlatformFile::Write(std::string_view bytes) {
  if (!IsOpen()) return false;
  const bool accepted = std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
  all_written_ = all_written_ && accepted;
  return accepted;
}

bool PlatformFile::Flush() {
  if (!IsOpen()) return false;
  all_written_ = std::fflush(file_) == 0 && BringToMedium(file_) && all_written_;
  return all_written_;
}

bool PlatformFile::Close() {
  if (!IsOpen()) return all_written_;
  const bool closed = std::fclose(file_) == 0;
  file_ = nullptr;
  return std::exchange(all_written_, true) && closed;
}

namespace detail {

#ifdef _WIN32

bool PathExists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool BringToMedium(const wchar_t* path) {
  std::FILE* const file = _wfopen(path, L"r+b");
  if (file == nullptr) return false;
  const bool arrived = tiltpole::BringToMedium(file);
  std::fclose(file);
  return arrived;
}

bool MoveOverFile(const std::wstring& from, const std::wstring& path) {
  return MoveFileExW(from.c_str(), path.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

void RemoveFile(const std::wstring& path) noexcept { DeleteFileW(path.c_str()); }

#else

bool PathExists(const std::wstring& path) { return access(NarrowText(path).c_str(), F_OK) == 0; }

bool BringToMedium(const char* path) {
  const int handle = open(path, O_RDONLY | O_CLOEXEC);
  if (handle < 0) return false;
  const bool arrived = fsync(handle) == 0;
  close(handle);
  return arrived;
}

bool MoveOverFile(const std::wstring& from, const std::wstring& path) {
  const std::string source = NarrowText(from);
  const std::string target = NarrowText(path);
  const std::string folder = FolderOf(target);
  if (std::rename(source.c_str(), target.c_str()) != 0) return false;
  // A file's new name is on the medium only when its folder is.
  BringToMedium(folder.c_str());
  return true;
}

void RemoveFile(const std::wstring& path) noexcept {
  try {
    unlink(NarrowText(path).c_str());
  } catch (const std::exception&) {
    // Without memory for the path the file stays.
  }
}

#endif

}  // namespace detail
}  // namespace tiltpole
