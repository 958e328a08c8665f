#pragma once

// Reads session files.

#include <array>
#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <vector>

#include "apps/session/csv_reader.h"
#include "apps/session/session_sample.h"

namespace tiltpole::session {

/// Reads a session file row by row, in constant memory: CSV whose columns are found by name, in
/// any order. Further columns are carried along as text. Whatever is wrong is thrown as InputError.
class SessionReader {
 public:
  /// Reads the header.
  /// @param in    stays the caller's, and must outlive the reader
  /// @param name  what messages call the file
  SessionReader(std::istream& in, std::string name);

  const SessionColumns& Columns() const { return columns_; }

  /// Reads the next row into @p sample, whose storage is used again; false at the end.
  bool Next(SessionSample& sample);

  /// The table that the rows come from: its name, the line of the row read last, the bytes read.
  const CsvReader& Table() const { return csv_; }

 private:
  using Triple = std::array<std::size_t, 3>;

  std::optional<Triple> FindTriple(const std::vector<std::string>& names) const;
  std::optional<xyhCoordinate> ReadTriple(const std::optional<Triple>& places) const;
  void FindFurther();

  CsvReader csv_;
  SessionColumns columns_;
  std::vector<std::size_t> required_;
  std::optional<Triple> antenna_;
  std::optional<Triple> true_tip_;
  std::vector<std::size_t> further_;
};

}  // namespace tiltpole::session
