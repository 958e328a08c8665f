#pragma once

// The pictures of the report, each with the caption that it needs.

#include <string>
#include <vector>

#include "apps/tiltpole/report/markup.h"
#include "apps/tiltpole/report/turn_trace.h"
#include "tiltpole/quality/calibration_quality.h"

namespace tiltpole::cli {

/// The readings of a turn in their plane, with the circle that they should lie on.
void DrawTurn(Markup& page, const std::string& title, const char* colour, Turn turn,
              const TurnTrace& trace, const TurnFigures& figures);

/// By which direction the readings of a turn are shown.
enum class Direction {
  Heading,        ///< of corrected readings in the horizontal turn
  VerticalPlane,  ///< of corrected readings in the vertical turn
  OwnAxes,        ///< of raw readings, on the axes of their magnetometer
};

/// How far each reading lies off the circle, by its direction; @p missing directions are shaded.
void DrawResiduals(Markup& page, const std::string& title, const char* colour, Direction direction,
                   const TurnTrace& trace, const std::vector<AzimuthRange>& missing);

/// The heading error to be expected in each direction, with two standard deviations around it.
void DrawHeadingErrors(Markup& page, const HeadingError& a, const HeadingError& b);

/// The directions of a turn as a ring, clockwise from the top, with its gaps.
void DrawCoverage(Markup& page, const std::string& title, const TurnTrace& trace,
                  const TurnCoverage& coverage);

}  // namespace tiltpole::cli
