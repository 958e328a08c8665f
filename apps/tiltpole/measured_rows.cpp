#include "apps/tiltpole/measured_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <initializer_list>

#include "apps/session/number_text.h"

namespace tiltpole::cli {
namespace {

// Micrometres, and microdegrees.
constexpr int kDecimals = 6;

using Names = std::initializer_list<const char*>;
constexpr Names kOffsetColumns = {"offset_north", "offset_east", "offset_height"};
constexpr Names kTipColumns = {"tip_north", "tip_east", "tip_height"};
constexpr Names kStateColumns = {"heading_a", "heading_b", "stationary", "interference"};
constexpr Names kDeviationColumns = {"sd_north", "sd_east", "sd_height"};
constexpr Names kErrorColumns = {"error_north", "error_east", "error_height", "error"};

// A column of the input that has the name of a result gives way to it: a header that names a column
// twice cannot be read.
bool IsResult(const std::string& column) {
  for (const Names names :
       {kOffsetColumns, kTipColumns, kStateColumns, kDeviationColumns, kErrorColumns}) {
    if (std::find(names.begin(), names.end(), column) != names.end()) return true;
  }
  return false;
}

}  // namespace

double Length(const xyhCoordinate& vector) { return std::hypot(vector.x, vector.y, vector.h); }

void MeasuredRowWriter::Write(const session::SessionSample& sample, const PoseSensorData& measured,
                              const MeasuredTip& tip) {
  if (!header_written_) WriteHeader();
  time_.clear();
  session::AppendTimeOfDay(time_, sample.sensors.Tag);
  csv_.Text(NameOf(sample.set));
  csv_.Text(time_);
  csv_.Number(sample.sensors.InclineX);
  csv_.Number(sample.sensors.InclineY);
  for (std::size_t i = 0; i < sample.further.size(); ++i) {
    if (!IsResult(columns_.further[i])) csv_.Text(sample.further[i]);
  }
  WriteVector(tip.offset);
  if (columns_.antenna) WriteVector(tip.position);
  csv_.Fixed(measured.Yaw_A, kDecimals);
  csv_.Fixed(measured.Yaw_B, kDecimals);
  csv_.Flag(tip.stationary);
  csv_.Flag(tip.interference);
  if (deviations_) WriteVector(tip.deviations);
  if (columns_.true_tip && columns_.antenna) WriteError(tip.error);
  csv_.EndRow();
}

// With the first row, so that nothing is written when there is none.
void MeasuredRowWriter::WriteHeader() {
  header_written_ = true;
  const auto write = [this](Names names) {
    for (const char* const name : names) csv_.Text(name);
  };
  write({"set", "time", "incline_x", "incline_y"});
  for (const auto& name : columns_.further) {
    if (!IsResult(name)) csv_.Text(name);
  }
  write(kOffsetColumns);
  if (columns_.antenna) write(kTipColumns);
  write(kStateColumns);
  if (deviations_) write(kDeviationColumns);
  if (columns_.true_tip && columns_.antenna) write(kErrorColumns);
  csv_.EndRow();
}

void MeasuredRowWriter::WriteVector(const std::optional<xyhCoordinate>& vector) {
  for (const auto member : {&xyhCoordinate::x, &xyhCoordinate::y, &xyhCoordinate::h}) {
    if (vector) csv_.Fixed((*vector).*member, kDecimals);
    if (!vector) csv_.Empty();
  }
}

void MeasuredRowWriter::WriteError(const std::optional<xyhCoordinate>& error) {
  WriteVector(error);
  if (error) csv_.Fixed(Length(*error), kDecimals);
  if (!error) csv_.Empty();
}

}  // namespace tiltpole::cli
