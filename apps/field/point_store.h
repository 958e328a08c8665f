#pragma once

// The points file: every point is on the medium before the operator sees it in the table.

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "apps/field/stored_point.h"

namespace tiltpole::field {

/// Points in the order in which they were taken, and the file that they are appended to.
///
/// A file that is there already is taken up: its points are read, new ones follow. Nothing in it is
/// ever changed or removed; rows that cannot be read, such as one that was cut off by a power cut,
/// are passed over and counted.
class PointStore {
 public:
  /// Opens or creates the file; session::OutputError or session::InputError if that is not
  /// possible.
  /// @param path  UTF-8
  explicit PointStore(const std::string& path);

  /// Gives the point its number, writes it and waits until it has arrived on the medium. On
  /// session::OutputError it is not among the points.
  void Append(StoredPoint point);

  const std::vector<StoredPoint>& Points() const { return points_; }
  int UnreadableRows() const { return unreadable_rows_; }
  /// Whether a path leads to the points file, by whatever name: relative, over a link, or another
  /// writing of it. Who replaces the file there takes it away from under the points to come.
  /// @param path  UTF-8
  bool IsAt(const std::string& path) const;

 private:
  struct CloseFile {
    // Nothing is left that closing could lose: every row has arrived on the medium.
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
  };

  void TakeUp(const std::string& content);
  void Write(const std::string& text);

  std::string path_;             ///< as it was given, for messages
  std::filesystem::path place_;  ///< wherever the program's folder is later on
  std::vector<StoredPoint> points_;
  int unreadable_rows_ = 0;
  bool row_is_cut_off_ = false;
  std::unique_ptr<std::FILE, CloseFile> file_;
};

}  // namespace tiltpole::field
