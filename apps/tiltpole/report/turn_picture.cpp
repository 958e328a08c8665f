#include <algorithm>
#include <cmath>
#include <vector>

#include "apps/tiltpole/report/chart.h"
#include "apps/tiltpole/report/pictures.h"

namespace tiltpole::cli {
namespace {

constexpr double kWidth = 320.0;
constexpr double kHeight = 292.0;

// Half of the view's width: nearly all points and the whole circle. A few stray readings would
// otherwise shrink the circle to a dot; they are shown on the edge.
double HalfView(const TurnTrace& trace, const std::vector<TracePoint>& shown) {
  constexpr double kShareInside = 0.95;
  constexpr double kMargin = 1.12;
  std::vector<double> reach;
  reach.reserve(shown.size());
  for (const TracePoint& point : shown) reach.push_back(trace.radius + point.distance);
  std::sort(reach.begin(), reach.end());
  double half = trace.radius;
  if (!reach.empty()) {
    const auto place = static_cast<std::size_t>(kShareInside * static_cast<double>(reach.size()));
    const double most = reach[std::min(place, reach.size() - 1)];
    half = std::max(half, std::min(reach.back(), 1.5 * most));
  }
  // Readings that are all alike have no circle.
  const double least = 1.0 + 1e-6 * std::hypot(trace.centre_first, trace.centre_second);
  return std::max(kMargin * half, least);
}

void DrawCircle(Markup& page, const Chart& chart, const TurnTrace& trace) {
  constexpr double kArm = 5.0;
  const double x = chart.x(trace.centre_first);
  const double y = chart.y(trace.centre_second);
  page.Empty("circle", {{"class", "circle"},
                        {"cx", Place(x)},
                        {"cy", Place(y)},
                        {"r", Place(chart.x(trace.centre_first + trace.radius) - x)}});
  Line(page, "centre", x - kArm, y, x + kArm, y);
  Line(page, "centre", x, y - kArm, x, y + kArm);
}

std::string Caption(const TurnTrace& trace, const TurnFigures& figures, std::size_t shown,
                    int beyond) {
  if (figures.Samples == 0) return "There are no samples.";
  if (trace.points.empty()) return "The readings are too large to be drawn.";
  std::string text = "Radius " + session::FixedText(figures.RadiusMean, 0) + " counts, scatter " +
                     session::FixedText(figures.RadiusScatter, 1) + " (largest " +
                     session::FixedText(figures.RadiusScatterLargest, 1) + ")";
  if (trace.centre_first != 0.0 || trace.centre_second != 0.0) {
    text += ", centre " + session::FixedText(trace.centre_first, 0) + ", " +
            session::FixedText(trace.centre_second, 0);
  }
  text += ". " + std::to_string(figures.Samples) + " samples";
  if (shown < trace.points.size()) {
    text += ", of which " + std::to_string(shown) + " are shown, those farthest off among them";
  }
  if (beyond > 0) text += "; " + std::to_string(beyond) + " lie beyond the picture, at its edge";
  return text + ".";
}

}  // namespace

void DrawTurn(Markup& page, const std::string& title, const char* colour, Turn turn,
              const TurnTrace& trace, const TurnFigures& figures) {
  const std::vector<TracePoint> shown = Thinned(trace);
  Dots dots;
  page.Open("figure", {{"class", colour}});
  page.Leaf("h4", title);
  if (!shown.empty()) {
    const double half = HalfView(trace, shown);
    const Chart chart = {{trace.centre_first - half, trace.centre_first + half, 52.0, 300.0},
                         {trace.centre_second - half, trace.centre_second + half, 256.0, 8.0}};
    for (const TracePoint& point : shown) dots.Add(chart, point.first, point.second);
    OpenPicture(page, "turn", kWidth, kHeight, title);
    Axes(page, chart, RoundTicks(chart.x), RoundTicks(chart.y), "x [counts]",
         turn == Turn::Horizontal ? "y [counts]" : "z [counts]");
    DrawCircle(page, chart, trace);
    dots.Draw(page);
    page.Close();
  }
  page.Leaf("figcaption", Caption(trace, figures, shown.size(), dots.Beyond()));
  page.Close();
}

}  // namespace tiltpole::cli
