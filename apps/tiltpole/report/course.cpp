#include "apps/tiltpole/report/course.h"

#include <vector>

#include "tiltpole/quality/rigorous_tip.h"

namespace tiltpole::cli {
namespace {

using Samples = std::vector<PoseSensorData>;

Samples Corrected(const Samples& raw, const CalibrationReport& report) {
  Samples corrected;
  if (!report.parameters) return corrected;
  for (const PoseSensorData& sample : raw) {
    corrected.push_back(
        CorrectSample(sample, report.parameters->correction_a, report.parameters->correction_b));
  }
  return corrected;
}

Course CourseOf(const CalibrationReport& report, Magnetometer magnetometer, Turn turn) {
  const bool is_a = magnetometer == Magnetometer::A;
  const bool horizontal = turn == Turn::Horizontal;
  const MagnetometerQuality& quality = is_a ? report.quality.A : report.quality.B;
  const Samples& raw = horizontal ? report.horizontal : report.vertical;
  Course course;
  course.magnetometer = magnetometer;
  course.turn = turn;
  course.name =
      std::string(is_a ? "A" : "B") + (horizontal ? ", horizontal turn" : ", vertical turn");
  course.figures_before = horizontal ? &quality.HorizontalBefore : &quality.VerticalBefore;
  course.figures_after = horizontal ? &quality.HorizontalAfter : &quality.VerticalAfter;
  course.before = TraceBefore(raw, magnetometer, turn, *course.figures_before);
  if (report.parameters) {
    course.after = TraceAfter(Corrected(raw, report), magnetometer, turn, *course.figures_after);
  }
  return course;
}

}  // namespace

Courses CoursesOf(const CalibrationReport& report) {
  return {CourseOf(report, Magnetometer::A, Turn::Horizontal),
          CourseOf(report, Magnetometer::B, Turn::Horizontal),
          CourseOf(report, Magnetometer::A, Turn::Vertical),
          CourseOf(report, Magnetometer::B, Turn::Vertical)};
}

}  // namespace tiltpole::cli
