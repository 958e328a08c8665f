#pragma once

// What a report shows of one magnetometer in one turn.

#include <array>
#include <string>

#include "apps/tiltpole/report/page.h"
#include "apps/tiltpole/report/turn_trace.h"

namespace tiltpole::cli {

/// One magnetometer in one turn, before the correction and, where there is one, after it.
struct Course {
  Magnetometer magnetometer;
  Turn turn;
  std::string name;
  TurnTrace before;
  TurnTrace after;
  const TurnFigures* figures_before;
  const TurnFigures* figures_after;

  const char* Colour() const { return magnetometer == Magnetometer::A ? "a" : "b"; }
};

/// A and B in the horizontal turn, then in the vertical one.
using Courses = std::array<Course, 4>;

Courses CoursesOf(const CalibrationReport& report);

}  // namespace tiltpole::cli
