#pragma once

// Numbers and times of day as text, the same bytes in every locale.

#include <optional>
#include <string>
#include <string_view>

#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole::session {

/// A finite decimal number that fills @p text but for blanks around it; nothing for anything else:
/// empty text, further characters, not-a-number, infinities, numbers beyond the range of a double.
std::optional<double> ParseNumber(std::string_view text);

/// A time of day HH:MM:SS from 00:00:00 to 23:59:59, blanks around it allowed.
std::optional<PoseSensorData::TimeOfDay> ParseTimeOfDay(std::string_view text);

/// Appends the shortest text that reads back as the same double.
void AppendNumber(std::string& text, double value);

/// Appends @p value with so many digits after the point. What rounds to zero has no sign.
void AppendFixed(std::string& text, double value, int decimals);

/// Appends HH:MM:SS.
void AppendTimeOfDay(std::string& text, const PoseSensorData::TimeOfDay& time);

/// As AppendFixed, by itself.
std::string FixedText(double value, int decimals);

/// Without the blanks and tabs at both ends.
std::string_view Trimmed(std::string_view text);

}  // namespace tiltpole::session
