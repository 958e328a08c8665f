#pragma once

// One row of a session file.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole::session {

/// What a sample was taken for.
enum class SampleSet {
  Horizontal,  ///< while the pole was turned about its vertical axis
  Vertical,    ///< while the pole was turned about the sensor's y axis
  Measure,     ///< at a point to be measured
};

/// The name of a set in a session file: `horizontal`, `vertical` or `measure`.
std::string_view NameOf(SampleSet set);
std::optional<SampleSet> SampleSetFromName(std::string_view name);

/// One row of a session file. Positions are metres: x north, y east, h height.
struct SessionSample {
  SampleSet set = SampleSet::Measure;
  /// Time of day, tilts and raw readings.
  PoseSensorData sensors;
  std::optional<xyhCoordinate> antenna;
  /// Where the tip really was, if that is known.
  std::optional<xyhCoordinate> true_tip;
  /// The fields of further columns, in the order of SessionColumns::further.
  std::vector<std::string> further;
};

/// Which columns a session file has beside those that it must have.
struct SessionColumns {
  bool antenna = false;
  bool true_tip = false;
  std::vector<std::string> further;
};

/// The columns that every session file has, in the order in which they are written.
const std::vector<std::string>& RequiredColumns();
const std::vector<std::string>& AntennaColumns();
const std::vector<std::string>& TrueTipColumns();

}  // namespace tiltpole::session
