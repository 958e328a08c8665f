#pragma once

/// @file
/// The platform's files, by wide paths.
///
/// A path is wide text; on Windows it goes to the system as it is, elsewhere as UTF-8. Nothing here
/// looks at the process's locale.

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include "tiltpole/export.h"

namespace tiltpole {

/// One file of the platform: opened, read whole or written, closed.
///
/// An operation that fails says so and leaves the object usable; none shows a message, and none
/// throws, but for std::bad_alloc where there is no memory for the path.
/// The destructor closes a file that is still open. An object owns its handle and cannot be copied.
class TILTPOLE_EXPORT PlatformFile {
 public:
  PlatformFile() = default;
  ~PlatformFile();
  PlatformFile(const PlatformFile&) = delete;
  PlatformFile& operator=(const PlatformFile&) = delete;

  /// Opens a file that exists, for reading; a file that was open is closed first.
  ///
  /// @return whether it could be opened. A folder can be opened on some systems, but not read.
  bool OpenExisting(const std::wstring& path);

  /// Opens a file for writing and makes it empty; creates it if there is none. A file that was open
  /// is closed first.
  ///
  /// @return whether it could be opened; when not, nothing was changed
  bool Create(const std::wstring& path);

  /// Whether a file is open.
  bool IsOpen() const { return file_ != nullptr; }

  /// Reads the file from its start: as many bytes as its length says, or the first @p most.
  ///
  /// @param[out] bytes  what was read; unchanged on failure
  /// @param[in] most    an upper limit for the bytes read
  /// @return whether it could be read; false also for a folder and when memory does not suffice
  bool Read(std::string& bytes, std::size_t most = static_cast<std::size_t>(-1));

  /// Appends bytes to a file that was opened for writing.
  ///
  /// @return whether they were accepted; the medium may still refuse them later, see Flush
  bool Write(std::string_view bytes);

  /// Brings everything written so far onto the medium and waits for it.
  ///
  /// @return true when every byte written since the file was opened has arrived
  bool Flush();

  /// Closes the file, if one is open.
  ///
  /// @return true when every byte written was handed to the system
  bool Close();

 private:
  std::FILE* file_ = nullptr;
  bool for_reading_ = false;
  bool all_written_ = true;
};

namespace detail {

/// Whether something stands at the path: a file, readable or not, or a folder.
TILTPOLE_EXPORT bool PathExists(const std::wstring& path);

/// What the system's paths are made of.
#ifdef _WIN32
using PathCharacter = wchar_t;
#else
using PathCharacter = char;
#endif

/// Brings what a file holds onto the medium and waits for it, whoever wrote it. A folder's names
/// are brought where the system can do so.
///
/// @param[in] path  in the system's own writing
/// @return true when all of it has arrived
TILTPOLE_EXPORT bool BringToMedium(const PathCharacter* path);

/// Puts a file in the place of another in one step, on the medium too: whoever opens @p path, also
/// after a power cut, finds either the old file or the new one, whole.
///
/// @return whether it was done; when not, both files are as they were
TILTPOLE_EXPORT bool MoveOverFile(const std::wstring& from, const std::wstring& path);

/// Removes a file; nothing happens when there is none, or no memory for the path.
TILTPOLE_EXPORT void RemoveFile(const std::wstring& path) noexcept;

}  // namespace detail
}  // namespace tiltpole
