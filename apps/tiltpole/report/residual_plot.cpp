#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "apps/tiltpole/report/chart.h"
#include "apps/tiltpole/report/pictures.h"

namespace tiltpole::cli {
namespace {

constexpr double kWidth = 420.0;
constexpr double kHeight = 230.0;
constexpr std::size_t kSectors = 36;

// Nearly all residuals; the few beyond are shown on the edge.
double HalfView(const std::vector<TracePoint>& shown) {
  constexpr double kShareInside = 0.95;
  std::vector<double> off;
  off.reserve(shown.size());
  for (const TracePoint& point : shown) off.push_back(std::fabs(point.distance));
  std::sort(off.begin(), off.end());
  const auto place = static_cast<std::size_t>(kShareInside * static_cast<double>(off.size()));
  const double most = off[std::min(place, off.size() - 1)];
  return std::max(1.1 * std::min(off.back(), 2.0 * most), 1.0);
}

void ShadeMissing(Markup& page, const Chart& chart, const std::vector<AzimuthRange>& missing) {
  const auto shade = [&](double from, double to) {
    page.Empty("rect", {{"class", "missing"},
                        {"x", Place(chart.x(from))},
                        {"y", Place(chart.y.place_to)},
                        {"width", Place(chart.x(to) - chart.x(from))},
                        {"height", Place(chart.y.place_from - chart.y.place_to)}});
  };
  for (const AzimuthRange& range : missing) {
    if (range.From < range.To) {
      shade(range.From, range.To);
    } else {
      shade(range.From, 360.0);
      shade(0.0, range.To);
    }
  }
}

// The mean in every ten degrees: a wave in it is what the calibration left.
void DrawMeans(Markup& page, const Chart& chart, const TurnTrace& trace) {
  std::array<double, kSectors> sum{};
  std::array<int, kSectors> count{};
  for (const TracePoint& point : trace.points) {
    const auto sector = std::min(static_cast<std::size_t>(point.azimuth / 10.0), kSectors - 1);
    sum[sector] += point.distance;
    ++count[sector];
  }
  std::string path;
  bool drawing = false;
  for (std::size_t i = 0; i < kSectors; ++i) {
    const double mean = count[i] > 0 ? sum[i] / count[i] : 0.0;
    if (count[i] == 0 || !chart.y.Holds(mean)) {
      drawing = false;
      continue;
    }
    path += (drawing ? "L" : "M") + Place(chart.x(10.0 * static_cast<double>(i) + 5.0)) + " " +
            Place(chart.y(mean));
    drawing = true;
  }
  if (!path.empty()) page.Empty("path", {{"class", "mean"}, {"d", path}});
}

const char* NameOf(Direction direction) {
  switch (direction) {
    case Direction::Heading:
      return "heading";
    case Direction::VerticalPlane:
      return "direction in the x-z plane";
    case Direction::OwnAxes:
      break;
  }
  return "direction in the picture of the turn";
}

std::string Caption(const TurnTrace& trace, Direction direction, int beyond) {
  if (trace.points.empty()) return "There is nothing to show.";
  std::string text;
  if (direction == Direction::Heading) {
    text = "One degree of heading is " +
           session::FixedText(trace.radius * 3.141592653589793 / 180.0, 1) + " counts here.";
  }
  if (beyond > 0) {
    text += (text.empty() ? "" : " ") + std::to_string(beyond) +
            " readings lie beyond the picture, at its edge.";
  }
  return text;
}

}  // namespace

void DrawResiduals(Markup& page, const std::string& title, const char* colour, Direction direction,
                   const TurnTrace& trace, const std::vector<AzimuthRange>& missing) {
  const std::vector<TracePoint> shown = Thinned(trace);
  Dots dots;
  page.Open("figure", {{"class", colour}});
  page.Leaf("h4", title);
  if (!shown.empty()) {
    const double half = HalfView(shown);
    const Chart chart = {{0.0, 360.0, 52.0, 402.0}, {-half, half, 188.0, 8.0}};
    for (const TracePoint& point : shown) dots.Add(chart, point.azimuth, point.distance);
    OpenPicture(page, "residuals", kWidth, kHeight, title);
    ShadeMissing(page, chart, missing);
    Axes(page, chart, AzimuthTicks(), RoundTicks(chart.y), NameOf(direction),
         "off the circle [counts]");
    dots.Draw(page);
    DrawMeans(page, chart, trace);
    page.Close();
  }
  const std::string caption = Caption(trace, direction, dots.Beyond());
  if (!caption.empty()) page.Leaf("figcaption", caption);
  page.Close();
}

}  // namespace tiltpole::cli
