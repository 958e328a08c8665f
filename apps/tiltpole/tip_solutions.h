#pragma once

// The ways of working out the tip, by the names that the command line has for them.

#include <array>
#include <cstddef>
#include <string>

#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/quality/rigorous_tip.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole::cli {

inline constexpr std::array<const char*, 4> kTipSolutions = {"position", "geometry-b", "math",
                                                             "rigorous"};

/// Index of a solution's name.
std::size_t TipSolutionIndex(const std::string& name);

/// Offsets of the tip from the antenna, one a solution; not numbers where a solution has none.
using TipOffsets = std::array<xyhCoordinate, 4>;

/// Works out the tip in all ways. The sample gets its corrected readings and headings, and
/// @p position its flags for it. @p options are those of the rigorous tip.
TipOffsets SolveTip(CInclineSensor_Position& position, PoseSensorData& sample, double pole_length,
                    const RigorousTipOptions& options);

}  // namespace tiltpole::cli
