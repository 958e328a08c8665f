#pragma once

// Files that appear whole or not at all.

#include <filesystem>
#include <fstream>
#include <optional>
#include <ostream>
#include <string>

#include "apps/session/removed_by_signal.h"

namespace tiltpole::session {

/// Whether two outputs would meet: in one file, by whatever paths, or on standard output. A device
/// takes both, one after the other.
/// @param a, b  UTF-8; `-` means standard output
bool AreOneOutput(const std::string& a, const std::string& b);

/// A file in the making: written under another name in the same folder, and put in place of the
/// old one by Commit, when it is whole on the medium: after a power cut, too, the old file or the
/// new one stands there. Without Commit the old file stays as it was and nothing is left behind,
/// nor by a signal where LetSignalsRemoveFiles was called. A program that is ended by force leaves
/// the file in the making, `.tiltpole-<number>.part`.
///
/// What cannot be replaced by a rename (a device, a named pipe) is written in place.
class PendingFile {
 public:
  /// @param path  UTF-8
  explicit PendingFile(const std::string& path);
  ~PendingFile();
  PendingFile(const PendingFile&) = delete;
  PendingFile& operator=(const PendingFile&) = delete;

  /// Where to write.
  const std::filesystem::path& Path() const { return pending_; }
  /// Puts the file, which the writer has closed, in its place, and waits for the medium;
  /// OutputError if that fails.
  void Commit();

 private:
  std::string name_;
  std::filesystem::path target_;
  std::filesystem::path pending_;
  std::optional<RemovedBySignal> while_pending_;
};

/// A stream to a file that appears whole or not at all, or to standard output for `-`.
class OutputFile {
 public:
  /// @param path             UTF-8; `-` means @p standard_output
  /// @param standard_output  stays the caller's, and must outlive this object
  OutputFile(const std::string& path, std::ostream& standard_output);

  std::ostream& Stream() { return file_.is_open() ? file_ : standard_output_; }
  /// Whether rows and a summary would meet on standard output.
  bool IsStandardOutput() const { return name_ == "-"; }
  /// Ends the output; OutputError if any of it could not be written.
  void Commit();

 private:
  std::string name_;
  std::ostream& standard_output_;
  // Declared before the stream, so that the stream is closed before the file is removed.
  PendingFile pending_;
  std::ofstream file_;
};

}  // namespace tiltpole::session
