#include "faults/file_faults.h"

#include <cerrno>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's own names.
// Each __wrap_x takes the calls of x in this program, the library's included; __real_x is x.
extern "C" {
std::FILE* __real_fopen(const char* path, const char* mode);
int __real_fstat(int handle, struct stat* status);
int __real_fseek(std::FILE* file, long offset, int origin);
std::size_t __real_fread(void* to, std::size_t size, std::size_t count, std::FILE* file);
std::size_t __real_fwrite(const void* from, std::size_t size, std::size_t count, std::FILE* file);
int __real_fflush(std::FILE* file);
int __real_fsync(int handle);
int __real_fclose(std::FILE* file);
int __real_rename(const char* from, const char* to);
int __real_access(const char* path, int mode);
int __real_ferror(std::FILE* file);
}

namespace {

using tiltpole_test::FileCall;

enum class Fault { None, Fail, Shorten, Remove };

Fault fault = Fault::None;
FileCall faulty = FileCall::Open;
int left = 0;
std::size_t most = 0;
std::string removed;
bool happened = false;
bool stream_error = false;

void Choose(Fault what, FileCall call, int after) {
  fault = what;
  faulty = call;
  left = after;
  happened = false;
  stream_error = false;
}

// Whether the fault is due at this call.
bool IsDue(FileCall call, Fault what) {
  if (fault != what || call != faulty || happened) return false;
  if (left-- > 0) return false;
  happened = true;
  return true;
}

bool Fails(FileCall call) {
  if (!IsDue(call, Fault::Fail)) return false;
  errno = call == FileCall::Open || call == FileCall::Access ? EACCES : ENOSPC;
  return true;
}

void Removing(FileCall call) {
  if (IsDue(call, Fault::Remove)) unlink(removed.c_str());
}

}  // namespace

namespace tiltpole_test {

void FailFileCall(FileCall call, int after) { Choose(Fault::Fail, call, after); }

void ShortenFileCall(FileCall call, std::size_t bytes) {
  Choose(Fault::Shorten, call, 0);
  most = bytes;
}

void RemoveAfterFileCall(FileCall call, const std::string& path) {
  Choose(Fault::Remove, call, 0);
  removed = path;
}

bool StopFileFaults() {
  fault = Fault::None;
  stream_error = false;
  return happened;
}

}  // namespace tiltpole_test

extern "C" {

std::FILE* __wrap_fopen(const char* path, const char* mode) {
  if (Fails(FileCall::Open)) return nullptr;
  std::FILE* const file = __real_fopen(path, mode);
  Removing(FileCall::Open);
  return file;
}

int __wrap_fstat(int handle, struct stat* status) {
  return Fails(FileCall::Status) ? -1 : __real_fstat(handle, status);
}

int __wrap_fseek(std::FILE* file, long offset, int origin) {
  return Fails(FileCall::Seek) ? -1 : __real_fseek(file, offset, origin);
}

std::size_t __wrap_fread(void* to, std::size_t size, std::size_t count, std::FILE* file) {
  if (Fails(FileCall::Read)) {
    stream_error = true;
    return 0;
  }
  if (IsDue(FileCall::Read, Fault::Shorten) && count > most) count = most;
  return __real_fread(to, size, count, file);
}

std::size_t __wrap_fwrite(const void* from, std::size_t size, std::size_t count, std::FILE* file) {
  if (Fails(FileCall::Write)) return 0;
  if (IsDue(FileCall::Write, Fault::Shorten) && count > most) count = most;
  return __real_fwrite(from, size, count, file);
}

int __wrap_fflush(std::FILE* file) { return Fails(FileCall::Flush) ? EOF : __real_fflush(file); }

int __wrap_fsync(int handle) { return Fails(FileCall::Sync) ? -1 : __real_fsync(handle); }

// The file is closed all the same, as by the real one.
int __wrap_fclose(std::FILE* file) {
  const int result = __real_fclose(file);
  return Fails(FileCall::Close) ? EOF : result;
}

int __wrap_rename(const char* from, const char* to) {
  return Fails(FileCall::Rename) ? -1 : __real_rename(from, to);
}

int __wrap_access(const char* path, int mode) {
  if (Fails(FileCall::Access)) return -1;
  const int result = __real_access(path, mode);
  Removing(FileCall::Access);
  return result;
}

int __wrap_ferror(std::FILE* file) { return stream_error ? 1 : __real_ferror(file); }
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
