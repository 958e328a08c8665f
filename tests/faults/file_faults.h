#pragma once

// Lets one call of the C library's file functions fail: the linker puts these in their places.

#include <string>
#include <vector>

namespace tiltpole_test {

/// The functions that can be made to fail.
enum class FileCall { Open, Status, Seek, Read, Write, Flush, Sync, Close, Rename, Access };

/// What the next call of the function does that is not among the first `after`.
void FailFileCall(FileCall call, int after = 0);

/// A read or write of that call ends after so many bytes, which is no failure by itself.
void ShortenFileCall(FileCall call, std::size_t bytes);

/// When the function is called next, the file is removed after it.
void RemoveAfterFileCall(FileCall call, const std::string& path);

/// Lets all succeed again.
/// @return whether the chosen call has been made
bool StopFileFaults();

}  // namespace tiltpole_test
