#include "apps/field/point_rows.h"

#include <limits>
#include <sstream>

#include "apps/session/csv_reader.h"
#include "apps/session/csv_writer.h"
#include "apps/session/input_error.h"
#include "apps/session/number_text.h"

namespace tiltpole::field {
namespace {

constexpr int kLengthDecimals = 4;  // a tenth of a millimetre
constexpr int kAngleDecimals = 3;

constexpr const char* kColumns =
    "point,flags,samples,seconds,north,east,height,offset_north,offset_east,offset_height,"
    "sigma_north,sigma_east,sigma_height,ellipse_major,ellipse_minor,ellipse_azimuth,spread,tilt,"
    "heading,pole_length,calibration,true_error,time\n";

unsigned FlagsFrom(const session::CsvReader& row, std::size_t column) {
  unsigned flags = 0;
  std::istringstream names{std::string(row.Field(column))};
  for (std::string name; std::getline(names, name, '+');) {
    if (name == "ok") continue;
    unsigned flag = 0;
    for (std::size_t i = 0; i < kFlagNames.size(); ++i) {
      if (name == kFlagNames[i]) flag = 1U << i;
    }
    if (flag == 0) row.Fail(column, "'" + name + "' is no flag of a point");
    flags |= flag;
  }
  return flags;
}

// Angles of a plumb pole and the like cannot be told, and are written as such.
double NumberOrNot(const session::CsvReader& row, std::size_t column) {
  if (session::Trimmed(row.Field(column)) == "nan") return std::numeric_limits<double>::quiet_NaN();
  return row.Number(column);
}

}  // namespace

std::string PointHeader() { return kColumns; }

std::string FlagText(unsigned flags) {
  std::string text;
  for (std::size_t i = 0; i < kFlagNames.size(); ++i) {
    if ((flags & (1U << i)) == 0) continue;
    text += (text.empty() ? "" : "+") + std::string(kFlagNames[i]);
  }
  return text.empty() ? "ok" : text;
}

std::string PointRow(const StoredPoint& point) {
  std::ostringstream out;
  session::CsvWriter row(out);
  const auto length = [&row](double value) { row.Fixed(value, kLengthDecimals); };
  const auto angle = [&row](double value) { row.Fixed(value, kAngleDecimals); };
  row.Text(std::to_string(point.number));
  row.Text(FlagText(point.flags));
  row.Text(std::to_string(point.samples));
  row.Fixed(point.seconds, 2);
  if (point.position) {
    length(point.position->x);
    length(point.position->y);
    length(point.position->h);
  } else {
    for (int i = 0; i < 3; ++i) row.Empty();
  }
  for (const double value :
       {point.offset.x, point.offset.y, point.offset.h, point.sigma_north, point.sigma_east,
        point.sigma_height, point.semi_major, point.semi_minor}) {
    length(value);
  }
  angle(point.semi_major_azimuth);
  length(point.spread);
  angle(point.tilt);
  angle(point.heading);
  length(point.pole_length);
  row.Text(point.calibration);
  if (point.true_error) {
    length(*point.true_error);
  } else {
    row.Empty();
  }
  std::string time;
  session::AppendTimeOfDay(time, point.time);
  row.Text(time);
  row.EndRow();
  return out.str();
}

StoredPoint PointFromRow(const std::string& text) {
  std::istringstream in(kColumns + text);
  session::CsvReader row(in, "point");
  if (!row.Next()) throw session::InputError("the row is empty");
  StoredPoint point;
  std::size_t column = 0;
  const auto number = [&row, &column] { return NumberOrNot(row, column++); };
  point.number = static_cast<int>(number());
  point.flags = FlagsFrom(row, column++);
  point.samples = static_cast<int>(number());
  point.seconds = number();
  if (row.Field(column).empty()) {
    column += 3;
  } else {
    const double north = number();
    const double east = number();
    point.position = xyhCoordinate{north, east, number()};
  }
  for (double* const value :
       {&point.offset.x, &point.offset.y, &point.offset.h, &point.sigma_north, &point.sigma_east,
        &point.sigma_height, &point.semi_major, &point.semi_minor, &point.semi_major_azimuth,
        &point.spread, &point.tilt, &point.heading, &point.pole_length}) {
    *value = number();
  }
  point.calibration = row.Field(column++);
  if (!row.Field(column).empty()) {
    point.true_error = number();
  } else {
    ++column;
  }
  const auto time = session::ParseTimeOfDay(row.Field(column));
  if (!time) row.Fail(column, "expected a time of day HH:MM:SS");
  point.time = *time;
  return point;
}

}  // namespace tiltpole::field
