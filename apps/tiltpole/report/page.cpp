#include "apps/tiltpole/report/page.h"

#include "apps/session/ascii_text.h"
#include "apps/session/number_text.h"
#include "apps/tiltpole/quality_output.h"
#include "apps/tiltpole/report/course.h"
#include "apps/tiltpole/report/figures.h"
#include "apps/tiltpole/report/markup.h"
#include "apps/tiltpole/report/pictures.h"
#include "apps/tiltpole/report/style.h"
#include "tiltpole/version.h"

namespace tiltpole::cli {
namespace {

using Samples = std::vector<PoseSensorData>;

const char* MeaningOf(const CalibrationQuality& quality) {
  if (!quality.Calibrated) return "The calibration failed and gave no parameters.";
  switch (quality.Result) {
    case Verdict::Good:
      return "Headings are expected within 2 degrees in every direction.";
    case Verdict::Usable:
      return "Fit for work near plumb; a better calibration is worth the time.";
    case Verdict::Poor:
      return "Do not rely on these parameters before the reasons below are dealt with.";
    case Verdict::Unusable:
      break;
  }
  return "Do not measure with these parameters.";
}

std::string TimesOf(const Samples& samples) {
  std::string text = std::to_string(samples.size()) + " samples";
  if (samples.empty()) return text;
  text += ", ";
  session::AppendTimeOfDay(text, samples.front().Tag);
  text += " to ";
  session::AppendTimeOfDay(text, samples.back().Tag);
  return text;
}

void WriteHead(Markup& page, const CalibrationReport& report) {
  page.Open("head");
  page.Empty("meta", {{"charset", "utf-8"}});
  page.Empty("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
  page.Leaf("title", "Calibration of " + report.session);
  page.Open("style");
  page.Raw(kReportStyle);
  page.Close();
  page.Close();
}

void WriteVerdict(Markup& page, const CalibrationReport& report) {
  const CalibrationQuality& quality = report.quality;
  page.Leaf("h1", "Calibration of the pole's magnetometers");
  page.Leaf("p", "Session: " + report.session, {{"class", "session"}});
  page.Leaf("p", "Horizontal turn: " + TimesOf(report.horizontal) +
                     ". Vertical turn: " + TimesOf(report.vertical) + "." +
                     (report.selection.empty() ? "" : " " + report.selection));
  page.Open("div", {{"class", "verdict " + NameOf(quality.Result)}});
  page.Leaf("strong", "Verdict: " + NameOf(quality.Result));
  page.Leaf("p", MeaningOf(quality));
  if (quality.Calibrated) {
    const auto error = [](const MagnetometerQuality& one) {
      const std::string text = session::FixedText(one.Heading.RootMeanSquare, 2);
      return text == "nan" ? std::string("not told") : text + "°";
    };
    page.Leaf("p", "Expected heading error of a reading: A " + error(quality.A) + ", B " +
                       error(quality.B) + ".");
  }
  page.Close();
}

void WriteReasons(Markup& page, const CalibrationQuality& quality) {
  page.Leaf("h2", quality.Calibrated ? "Reasons" : "Why it failed, and what to do");
  if (quality.Reasons.empty()) page.Leaf("p", "There is nothing to find fault with.");
  page.Open("ul", {{"class", "reasons"}});
  for (const QualityReason& reason : quality.Reasons) {
    const bool remark = reason.Weight == Verdict::Good;
    page.Open("li", {{"class", NameOf(reason.Weight)}});
    page.Leaf("b", remark ? "remark" : NameOf(reason.Weight));
    page.Text(session::NarrowAscii(reason.Sentence));
    page.Close();
  }
  page.Close();
}

void WriteCoverage(Markup& page, const CalibrationQuality& quality, const Courses& courses) {
  page.Leaf("h2", "Directions covered");
  page.Open("div", {{"class", "grid"}});
  const auto trace = [&](const Course& course) -> const TurnTrace& {
    return quality.Calibrated ? course.after : course.before;
  };
  DrawCoverage(page,
               quality.Calibrated ? "Horizontal turn: headings" : "Horizontal turn: x-y plane",
               trace(courses[0]), quality.Horizontal);
  DrawCoverage(page, "Vertical turn: x-z plane", trace(courses[2]), quality.Vertical);
  page.Close();
}

// Side by side wherever there is room for two.
void DrawPair(Markup& page, const Course& course) {
  page.Open("div", {{"class", "grid"}});
  DrawTurn(page, course.name + ", before", course.Colour(), course.turn, course.before,
           *course.figures_before);
  DrawTurn(page, course.name + ", after", course.Colour(), course.turn, course.after,
           *course.figures_after);
  page.Close();
}

void WriteTurns(Markup& page, const CalibrationReport& report, const Courses& courses) {
  page.Leaf("h2", report.parameters ? "The turns before and after" : "The turns as read");
  page.Leaf("p", report.parameters
                     ? "Before: raw readings and the circle that fits them best. After: corrected "
                       "readings, which belong on the circle about zero."
                     : "Raw readings and the circle that fits them best.");
  page.Open("div", {{"class", report.parameters ? "grid broad" : "grid"}});
  for (const Course& course : courses) {
    if (report.parameters) {
      DrawPair(page, course);
    } else {
      DrawTurn(page, course.name, course.Colour(), course.turn, course.before,
               *course.figures_before);
    }
  }
  page.Close();
}

void WriteResiduals(Markup& page, const CalibrationReport& report, const Courses& courses) {
  page.Leaf("h2", "Distance from the circle by direction");
  page.Leaf("p",
            "Dots: readings, outwards positive. The line is their mean in every 10 degrees: a wave "
            "in it is an error that the calibration left, or a pole that leaned while it was "
            "turned; dots far from the line are noise, iron or jerky turning. Shaded: directions "
            "without samples.");
  page.Open("div", {{"class", "grid broad"}});
  const bool corrected = report.parameters.has_value();
  for (const Course& course : courses) {
    const bool horizontal = course.turn == Turn::Horizontal;
    const TurnCoverage& coverage = horizontal ? report.quality.Horizontal : report.quality.Vertical;
    // Coverage is that of magnetometer A; B's own axes point elsewhere.
    const bool same_directions = corrected || course.magnetometer == Magnetometer::A;
    DrawResiduals(page, course.name, course.Colour(),
                  !corrected   ? Direction::OwnAxes
                  : horizontal ? Direction::Heading
                               : Direction::VerticalPlane,
                  corrected ? course.after : course.before,
                  same_directions ? coverage.Missing : std::vector<AzimuthRange>());
  }
  page.Close();
}

void WriteFigures(Markup& page, const CalibrationReport& report) {
  page.Leaf("h2", "Figures");
  WriteTurnFigures(page, report.quality);
  if (!report.parameters) return;
  WriteHeadingFigures(page, report.quality);
  WriteFieldFigures(page, report.quality);
  page.Leaf("h2", "Parameters");
  WriteParameters(page, *report.parameters);
}

void WriteBody(Markup& page, const CalibrationReport& report) {
  const Courses courses = CoursesOf(report);
  page.Open("body");
  WriteVerdict(page, report);
  WriteReasons(page, report.quality);
  WriteCoverage(page, report.quality, courses);
  if (report.parameters) {
    page.Leaf("h2", "Expected heading error by direction");
    DrawHeadingErrors(page, report.quality.A.Heading, report.quality.B.Heading);
  }
  WriteTurns(page, report, courses);
  WriteResiduals(page, report, courses);
  WriteFigures(page, report);
  page.Leaf("footer", "Made by tiltpole " TILTPOLE_VERSION ".");
  page.Close();
}

}  // namespace

std::string ReportPage(const CalibrationReport& report) {
  Markup page;
  page.Raw("<!DOCTYPE html>\n");
  page.Open("html", {{"lang", "en"}});
  WriteHead(page, report);
  WriteBody(page, report);
  page.Close();
  return page.Page();
}

}  // namespace tiltpole::cli
