#pragma once

// Parameter files, looked at more closely than measuring does.

#include <string>
#include <vector>

#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace tiltpole::session {

/// An entry of a parameter file.
struct ParameterEntry {
  std::string key;
  double value = 0.0;  ///< as measuring takes it
};

/// What is in a parameter file.
struct ParameterFileContent {
  /// Measures with the file's parameters.
  CInclineSensor_Position position;
  std::vector<ParameterEntry> entries;
  /// Why the file cannot be relied on: entries that are missing or no numbers.
  std::vector<std::string> problems;
  /// What is odd, but may be meant so.
  std::vector<std::string> warnings;
  /// Whether a correction is anything but the default.
  bool calibrated = false;
};

/// Reads and checks a parameter file; InputError if it cannot be read at all.
/// @param path  UTF-8
ParameterFileContent ReadParameterFile(const std::string& path);

/// Writes a parameter file that appears whole or not at all; OutputError if that fails.
void WriteParameterFile(const std::string& path, const CInclineSensor_Position& position);

}  // namespace tiltpole::session
