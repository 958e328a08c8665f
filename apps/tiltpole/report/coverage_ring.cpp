#include <cmath>

#include "apps/tiltpole/report/chart.h"
#include "apps/tiltpole/report/pictures.h"

namespace tiltpole::cli {
namespace {

constexpr double kWidth = 300.0;
constexpr double kHeight = 250.0;
constexpr double kMiddleX = 150.0;
constexpr double kMiddleY = 125.0;
constexpr double kRing = 84.0;
constexpr double kSamplesRing = 66.0;

struct Point {
  double x, y;
};

// Clockwise from the top, as a compass shows them.
Point On(double radius, double degrees) {
  const double angle = degrees * 3.141592653589793 / 180.0;
  return {kMiddleX + radius * std::sin(angle), kMiddleY - radius * std::cos(angle)};
}

void DrawRing(Markup& page, const char* kind) {
  page.Empty(
      "circle",
      {{"class", kind}, {"cx", Place(kMiddleX)}, {"cy", Place(kMiddleY)}, {"r", Place(kRing)}});
}

double Width(const AzimuthRange& range) {
  return range.From < range.To ? range.To - range.From : range.To + 360.0 - range.From;
}

void DrawArc(Markup& page, const AzimuthRange& range) {
  const double width = Width(range);
  if (width >= 359.9) {
    DrawRing(page, "gap");
    DrawRing(page, "gap-mark");
    return;
  }
  const Point from = On(kRing, range.From);
  const Point to = On(kRing, range.To);
  for (const char* const kind : {"gap", "gap-mark"}) {
    page.Empty("path", {{"class", kind},
                        {"d", "M" + Place(from.x) + " " + Place(from.y) + "A" + Place(kRing) + " " +
                                  Place(kRing) + " 0 " + (width > 180.0 ? "1" : "0") + " 1 " +
                                  Place(to.x) + " " + Place(to.y)}});
  }
}

void LabelDirections(Markup& page) {
  Label(page, kMiddleX, kMiddleY - kRing - 16.0, "middle", "0°");
  Label(page, kMiddleX + kRing + 14.0, kMiddleY + 4.0, "start", "90°");
  Label(page, kMiddleX, kMiddleY + kRing + 24.0, "middle", "180°");
  Label(page, kMiddleX - kRing - 14.0, kMiddleY + 4.0, "end", "270°");
}

// Where the samples crowd and where they are few.
void DrawSamples(Markup& page, const TurnTrace& trace) {
  const Chart whole = {{0.0, kWidth, 0.0, kWidth}, {0.0, kHeight, 0.0, kHeight}};
  Dots dots;
  for (const TracePoint& sample : Thinned(trace)) {
    const Point place = On(kSamplesRing, sample.azimuth);
    dots.Add(whole, place.x, place.y);
  }
  dots.Draw(page);
}

std::string MissingText(const TurnCoverage& coverage) {
  if (coverage.Missing.empty()) return "No direction is missing.";
  std::string text;
  for (const AzimuthRange& range : coverage.Missing) {
    text += (text.empty() ? "Missing: " : ", ") + session::FixedText(range.From, 0) + "° to " +
            session::FixedText(range.To, 0) + "°";
  }
  return text + ".";
}

}  // namespace

void DrawCoverage(Markup& page, const std::string& title, const TurnTrace& trace,
                  const TurnCoverage& coverage) {
  page.Open("figure");
  page.Leaf("h4", title);
  OpenPicture(page, "coverage", kWidth, kHeight, title);
  DrawRing(page, "ring");
  for (const AzimuthRange& range : coverage.Missing) DrawArc(page, range);
  DrawSamples(page, trace);
  LabelDirections(page);
  page.Leaf("text", session::FixedText(coverage.CoveredPercent, 0) + " %",
            {{"class", "big"},
             {"x", Place(kMiddleX)},
             {"y", Place(kMiddleY + 2.0)},
             {"text-anchor", "middle"}});
  Label(page, kMiddleX, kMiddleY + 20.0, "middle", "covered");
  page.Close();
  page.Leaf("figcaption", MissingText(coverage));
  page.Close();
}

}  // namespace tiltpole::cli
