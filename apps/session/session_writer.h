#pragma once

// Writes session files.

#include <ostream>

#include "apps/session/csv_writer.h"
#include "apps/session/session_sample.h"

namespace tiltpole::session {

/// Writes a session file row by row. Numbers are written so that they read back as the same
/// doubles.
class SessionWriter {
 public:
  /// Writes the header.
  /// @param out  stays the caller's, and must outlive the writer
  SessionWriter(std::ostream& out, const SessionColumns& columns);

  /// Writes one row. A position that the sample lacks stays empty; one without a column of its own
  /// is left out.
  void Write(const SessionSample& sample);

 private:
  void WritePosition(const std::optional<xyhCoordinate>& position);

  CsvWriter csv_;
  SessionColumns columns_;
  std::string time_;
};

}  // namespace tiltpole::session
