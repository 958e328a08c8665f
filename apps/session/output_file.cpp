#include "apps/session/output_file.h"

#include <random>
#include <system_error>

#include "apps/session/input_error.h"
#include "tiltpole/platform/file.h"

#ifdef _WIN32
#include <cwchar>
#endif

namespace tiltpole::session {
namespace fs = std::filesystem;
namespace {

[[noreturn]] void Fail(const std::string& name, const std::string& message) {
  throw OutputError((name == "-" ? "standard output" : name) + ": " + message);
}

// A rename replaces a symbolic link itself, but the user means the file that it points at.
fs::path ResolveLink(const fs::path& path) {
  std::error_code error;
  if (!fs::is_symlink(path, error)) return path;
  const auto resolved = fs::weakly_canonical(path, error);
  return error ? path : resolved;
}

// Without the target's own name, which may be as long as the system lets a name be.
fs::path PendingName(const fs::path& target) {
  std::random_device random;
  return target.parent_path() / (".tiltpole-" + std::to_string(random()) + ".part");
}

bool IsReplaceable(const fs::path& path) {
  std::error_code error;
  const auto status = fs::status(path, error);
  return !fs::exists(status) || fs::is_regular_file(status);
}

// Not all of it need be there yet.
fs::path WholePath(const fs::path& path) {
  std::error_code error;
  const fs::path whole = fs::weakly_canonical(fs::absolute(path, error), error);
  return error ? path : whole;
}

bool IsSameName(const fs::path& a, const fs::path& b) {
#ifdef _WIN32
  return _wcsicmp(a.c_str(), b.c_str()) == 0;
#else
  return a == b;
#endif
}

}  // namespace

bool AreOneOutput(const std::string& a, const std::string& b) {
  if (a == "-" || b == "-") return a == b;
  const fs::path path_a = fs::u8path(a);
  const fs::path path_b = fs::u8path(b);
  std::error_code error;
  if (fs::is_character_file(path_a, error)) return false;
  return fs::equivalent(path_a, path_b, error) || IsSameName(WholePath(path_a), WholePath(path_b));
}

PendingFile::PendingFile(const std::string& path)
    : name_(path), target_(ResolveLink(fs::u8path(path))) {
  std::error_code error;
  if (path.empty()) Fail("''", "is no file name");
  if (fs::is_directory(target_, error)) Fail(name_, "is a folder, not a file");
  pending_ = path != "-" && IsReplaceable(target_) ? PendingName(target_) : target_;
  if (pending_ != target_) while_pending_.emplace(pending_);
}

PendingFile::~PendingFile() {
  std::error_code error;
  if (pending_ != target_) fs::remove(pending_, error);
}

void PendingFile::Commit() {
  if (pending_ == target_) return;
  if (!detail::BringToMedium(pending_.c_str())) Fail(name_, "cannot be written to its end");
  std::error_code error;
  if (fs::exists(target_, error)) {
    fs::permissions(pending_, fs::status(target_, error).permissions(), error);
  }
  fs::rename(pending_, target_, error);
  if (error) Fail(name_, "cannot be put in place: " + error.message());
  detail::BringToMedium((target_.parent_path() / ".").c_str());
  pending_ = target_;
  while_pending_.reset();
}

OutputFile::OutputFile(const std::string& path, std::ostream& standard_output)
    : name_(path), standard_output_(standard_output), pending_(path) {
  if (IsStandardOutput()) return;
  file_.open(pending_.Path(), std::ios::binary);
  if (!file_) Fail(name_, "cannot be opened for writing");
}

void OutputFile::Commit() {
  Stream().flush();
  const bool written = Stream().good();
  if (file_.is_open()) file_.close();
  if (!written || file_.fail()) Fail(name_, "cannot be written to its end");
  pending_.Commit();
}

}  // namespace tiltpole::session
