#include "apps/tiltpole/tip_solutions.h"

#include <algorithm>
#include <limits>

namespace tiltpole::cli {

std::size_t TipSolutionIndex(const std::string& name) {
  return static_cast<std::size_t>(std::find(kTipSolutions.begin(), kTipSolutions.end(), name) -
                                  kTipSolutions.begin());
}

TipOffsets SolveTip(CInclineSensor_Position& position, PoseSensorData& sample, double pole_length,
                    const RigorousTipOptions& options) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  TipOffsets offsets;
  offsets.fill(xyhCoordinate{none, none, none});
  // First, since it corrects the readings and finds the headings that the others start from.
  position.Position(sample, pole_length, offsets[0]);
  position.Position_Geometry_B(xyhCoordinate(), sample, pole_length, offsets[1]);
  position.Position_Math(xyhCoordinate(), sample, pole_length, offsets[2]);
  offsets[3] = SolveRigorousTip(sample, pole_length, options).Offset;
  return offsets;
}

}  // namespace tiltpole::cli
