#include "apps/tiltpole/report/chart.h"

#include <algorithm>
#include <cmath>

namespace tiltpole::cli {
namespace {

double Clamped(const Scale& scale, double value) {
  return std::min(std::max(value, scale.from), scale.to);
}

}  // namespace

std::vector<Tick> RoundTicks(const Scale& scale) {
  constexpr double kFewestSteps = 3.0;
  constexpr int kMostTicks = 10;
  const double widest = (scale.to - scale.from) / kFewestSteps;
  const double power = std::floor(std::log10(widest));
  const double unit = std::pow(10.0, power);
  const double step = widest >= 5.0 * unit ? 5.0 * unit : widest >= 2.0 * unit ? 2.0 * unit : unit;
  const int decimals = static_cast<int>(std::min(std::max(-power, 0.0), 6.0));
  std::vector<Tick> ticks;
  const double first = std::ceil(scale.from / step);
  for (int i = 0; i < kMostTicks; ++i) {
    const double value = (first + i) * step;
    if (value > scale.to) break;
    ticks.push_back({value, session::FixedText(value, decimals)});
  }
  return ticks;
}

std::vector<Tick> AzimuthTicks() {
  return {{0.0, "0°"}, {90.0, "90°"}, {180.0, "180°"}, {270.0, "270°"}, {360.0, "360°"}};
}

void OpenPicture(Markup& page, const char* kind, double width, double height,
                 const std::string& name) {
  page.Open("svg", {{"class", kind},
                    {"viewBox", "0 0 " + Place(width) + " " + Place(height)},
                    {"role", "img"},
                    {"aria-label", name}});
}

void Line(Markup& page, const char* kind, double x1, double y1, double x2, double y2) {
  page.Empty("line", {{"class", kind},
                      {"x1", Place(x1)},
                      {"y1", Place(y1)},
                      {"x2", Place(x2)},
                      {"y2", Place(y2)}});
}

void Label(Markup& page, double x, double y, const char* anchor, const std::string& text) {
  page.Leaf("text", text, {{"x", Place(x)}, {"y", Place(y)}, {"text-anchor", anchor}});
}

void Axes(Markup& page, const Chart& chart, const std::vector<Tick>& x_ticks,
          const std::vector<Tick>& y_ticks, const std::string& x_name, const std::string& y_name) {
  const double left = chart.x.place_from;
  const double right = chart.x.place_to;
  const double bottom = chart.y.place_from;
  const double top = chart.y.place_to;
  page.Empty("rect", {{"class", "frame"},
                      {"x", Place(left)},
                      {"y", Place(top)},
                      {"width", Place(right - left)},
                      {"height", Place(bottom - top)}});
  for (const Tick& tick : x_ticks) {
    const double x = chart.x(tick.value);
    Line(page, tick.value == 0.0 ? "zero" : "grid", x, top, x, bottom);
    Label(page, x, bottom + 14.0, "middle", tick.text);
  }
  for (const Tick& tick : y_ticks) {
    const double y = chart.y(tick.value);
    Line(page, tick.value == 0.0 ? "zero" : "grid", left, y, right, y);
    Label(page, left - 4.0, y + 4.0, "end", tick.text);
  }
  Label(page, 0.5 * (left + right), bottom + 30.0, "middle", x_name);
  const std::string turn = "rotate(-90 10.0 " + Place(0.5 * (top + bottom)) + ")";
  page.Leaf("text", y_name,
            {{"x", "10.0"},
             {"y", Place(0.5 * (top + bottom))},
             {"text-anchor", "middle"},
             {"transform", turn}});
}

void Dots::Add(const Chart& chart, double x, double y) {
  const bool inside = chart.x.Holds(x) && chart.y.Holds(y);
  std::string& path = inside ? inside_path_ : beyond_path_;
  ++(inside ? inside_ : beyond_);
  path += 'M';
  session::AppendFixed(path, chart.x(Clamped(chart.x, x)), 1);
  path += ' ';
  session::AppendFixed(path, chart.y(Clamped(chart.y, y)), 1);
  // A line without length, which round ends make a dot.
  path += "h0";
}

void Dots::Draw(Markup& page) const {
  constexpr int kFew = 100;  // small dots so far apart would hardly be seen
  const char* const kind = inside_ < kFew ? "points few" : "points";
  if (!inside_path_.empty()) page.Empty("path", {{"class", kind}, {"d", inside_path_}});
  if (!beyond_path_.empty()) page.Empty("path", {{"class", "points beyond"}, {"d", beyond_path_}});
}

}  // namespace tiltpole::cli
