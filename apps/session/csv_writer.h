#pragma once

// Writes CSV rows, a field at a time.

#include <ostream>
#include <string>
#include <string_view>

namespace tiltpole::session {

/// Rows of comma-separated fields, ended by LF; a field is quoted where it must be.
class CsvWriter {
 public:
  /// @param out  stays the caller's, and must outlive the writer
  explicit CsvWriter(std::ostream& out) : out_(out) {}

  void Text(std::string_view text);
  /// The shortest text that reads back as the same double.
  void Number(double value);
  /// A number with so many digits after the point.
  void Fixed(double value, int decimals);
  void Flag(bool set) { Text(set ? "1" : "0"); }
  void Empty() { Text({}); }
  void EndRow();

 private:
  void Separate();

  std::ostream& out_;
  std::string row_;
  bool first_ = true;
};

}  // namespace tiltpole::session
