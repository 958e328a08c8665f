#pragma once

// Points as rows of CSV.

#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "apps/field/stored_point.h"

namespace tiltpole::field {

/// The header row, ended by LF.
std::string PointHeader();
/// One row, ended by LF. The time of day comes last: a row that was cut off anywhere cannot be read
/// as a whole one.
std::string PointRow(const StoredPoint& point);
/// Reads the text of one row; session::InputError if it is no whole point.
StoredPoint PointFromRow(const std::string& text);

/// The names of a point's flags, with a plus sign in between; `ok` without any.
std::string FlagText(unsigned flags);

}  // namespace tiltpole::field
