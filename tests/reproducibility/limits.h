#pragma once

// The figures of docs/reproducibility.md: how far results may lie from those of the machine that
// wrote the tables, and functions from the truth, on any target.

#include <cstdint>
#include <map>
#include <string>

namespace tiltpole_test {

inline double LargestResultDifference(const std::string& name) {
  static const std::map<std::string, double> limits = {
      {"Filter_XY: Azimuth [degrees]", 1e-15},
      {"Filter_XZ: Azimuth [degrees]", 1e-15},
      {"GetAngleofPoleProject [degrees]", 2e-13},
      {"GetAngleofPoletoHorizontal [degrees]", 2e-14},
      {"JudgePoint: deviations [m]", 1e-16},
      {"Position: YawY_A [degrees]", 3e-14},
      {"Position: Yaw_A [degrees]", 2e-14},
      {"Position: Yaw_B [degrees]", 2e-14},
      {"Position: tip [m]", 3e-15},
      {"Position_Geometry_B: tip [m]", 2e-15},
      {"Position_Math: tip [m]", 5e-16},
      {"SolveRigorousTip: tip [m]", 2e-16},
  };
  const auto found = limits.find(name);
  return found == limits.end() ? 0.0 : found->second;  // the transformation differs nowhere
}

// In steps from one double to the next; from the correctly rounded value, which none is further off
// than its neighbour on any target.
inline std::uint64_t LargestFunctionDifference(const std::string& /*name*/) { return 1; }

}  // namespace tiltpole_test
