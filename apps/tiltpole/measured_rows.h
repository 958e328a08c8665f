#pragma once

// The rows that `tiltpole measure` writes.

#include <optional>
#include <ostream>
#include <string>

#include "apps/session/csv_writer.h"
#include "apps/session/session_sample.h"

namespace tiltpole::cli {

/// What is known of one sample after measuring.
struct MeasuredTip {
  xyhCoordinate offset;
  std::optional<xyhCoordinate> position;
  std::optional<xyhCoordinate> deviations;
  std::optional<xyhCoordinate> error;
  bool stationary = false;
  bool interference = false;
};

/// The length of a vector.
double Length(const xyhCoordinate& vector);

/// Writes measured samples, the header with the first of them.
class MeasuredRowWriter {
 public:
  /// @param out         stays the caller's, as do the columns; both must outlive the writer
  /// @param columns     those of the session
  /// @param deviations  whether standard deviations are written
  MeasuredRowWriter(std::ostream& out, const session::SessionColumns& columns, bool deviations)
      : csv_(out), columns_(columns), deviations_(deviations) {}

  /// @param measured  the sample's record with the headings
  void Write(const session::SessionSample& sample, const PoseSensorData& measured,
             const MeasuredTip& tip);

 private:
  void WriteHeader();
  void WriteVector(const std::optional<xyhCoordinate>& vector);
  void WriteError(const std::optional<xyhCoordinate>& error);

  session::CsvWriter csv_;
  const session::SessionColumns& columns_;
  bool deviations_;
  std::string time_;
  bool header_written_ = false;
};

}  // namespace tiltpole::cli
