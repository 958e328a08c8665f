#pragma once

// Files that a signal must not leave behind.

#include <cstddef>
#include <filesystem>

namespace tiltpole::session {

/// From now on a signal that ends the program (Ctrl-C, a closed terminal or pipe, a polite kill)
/// first removes the files of every RemovedBySignal. A signal that is ignored stays so, as under
/// nohup. For the start of main; does nothing on Windows, where an open file cannot be removed.
void LetSignalsRemoveFiles();

/// A file in the making, to be removed when a signal ends the program during this object's life.
class RemovedBySignal {
 public:
  /// Beyond a handful of objects at a time, and beyond the system's limit for a path, the file
  /// stays.
  explicit RemovedBySignal(const std::filesystem::path& path);
  ~RemovedBySignal();
  RemovedBySignal(const RemovedBySignal&) = delete;
  RemovedBySignal& operator=(const RemovedBySignal&) = delete;

 private:
  std::size_t place_;  // among those that the signals know
};

}  // namespace tiltpole::session
