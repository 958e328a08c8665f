#include "apps/session/session_sample.h"

namespace tiltpole::session {

std::string_view NameOf(SampleSet set) {
  switch (set) {
    case SampleSet::Horizontal:
      return "horizontal";
    case SampleSet::Vertical:
      return "vertical";
    case SampleSet::Measure:
      break;
  }
  return "measure";
}

std::optional<SampleSet> SampleSetFromName(std::string_view name) {
  for (const auto set : {SampleSet::Horizontal, SampleSet::Vertical, SampleSet::Measure}) {
    if (name == NameOf(set)) return set;
  }
  return std::nullopt;
}

const std::vector<std::string>& RequiredColumns() {
  static const std::vector<std::string> columns = {"set",     "time",    "incline_x", "incline_y",
                                                   "mag_x_a", "mag_y_a", "mag_z_a",   "mag_x_b",
                                                   "mag_y_b", "mag_z_b"};
  return columns;
}

const std::vector<std::string>& AntennaColumns() {
  static const std::vector<std::string> columns = {"antenna_north", "antenna_east",
                                                   "antenna_height"};
  return columns;
}

const std::vector<std::string>& TrueTipColumns() {
  static const std::vector<std::string> columns = {"true_north", "true_east", "true_height"};
  return columns;
}

}  // namespace tiltpole::session
