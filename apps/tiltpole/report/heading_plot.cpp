#include <algorithm>
#include <cmath>
#include <vector>

#include "apps/tiltpole/report/chart.h"
#include "apps/tiltpole/report/pictures.h"

namespace tiltpole::cli {
namespace {

constexpr double kWidth = 460.0;
constexpr double kHeight = 260.0;
// What a good calibration stays within in every direction [degrees].
constexpr double kGoodLimit = 2.0;
// Larger errors say nothing more than that the heading is lost [degrees].
constexpr double kLargestShown = 180.0;

bool IsTold(const HeadingErrorAt& at) {
  return std::isfinite(at.Error) && std::isfinite(at.Deviation);
}

// The directions whose error is told, and the first of them again at the end: 360 is 0.
std::vector<HeadingErrorAt> Told(const HeadingError& error) {
  std::vector<HeadingErrorAt> told;
  for (const HeadingErrorAt& at : error.ByHeading) {
    if (IsTold(at)) told.push_back(at);
  }
  if (told.empty()) return told;
  told.push_back(told.front());
  told.back().Heading += 360.0;
  return told;
}

double Reach(const std::vector<HeadingErrorAt>& errors) {
  double reach = 0.0;
  for (const HeadingErrorAt& at : errors) {
    reach = std::max(reach, std::fabs(at.Error) + 2.0 * at.Deviation);
  }
  return reach;
}

void AppendPlace(std::string& path, const Chart& chart, double heading, double error) {
  const double shown = std::min(std::max(error, chart.y.from), chart.y.to);
  path += (path.empty() ? "M" : "L") + Place(chart.x(heading)) + " " + Place(chart.y(shown));
}

void DrawCurve(Markup& page, const Chart& chart, const std::vector<HeadingErrorAt>& errors,
               const char* magnetometer) {
  std::string band;
  std::string curve;
  for (const HeadingErrorAt& at : errors) {
    AppendPlace(band, chart, at.Heading, at.Error + 2.0 * at.Deviation);
    AppendPlace(curve, chart, at.Heading, at.Error);
  }
  for (auto at = errors.rbegin(); at != errors.rend(); ++at) {
    AppendPlace(band, chart, at->Heading, at->Error - 2.0 * at->Deviation);
  }
  if (errors.empty()) return;
  page.Empty("path", {{"class", std::string("band ") + magnetometer}, {"d", band + "Z"}});
  page.Empty("path", {{"class", std::string("curve ") + magnetometer}, {"d", curve}});
}

void DrawLegend(Markup& page, double right, double y) {
  Line(page, "curve a", right - 260.0, y - 4.0, right - 232.0, y - 4.0);
  Label(page, right - 227.0, y, "start", "magnetometer A");
  Line(page, "curve b", right - 120.0, y - 4.0, right - 92.0, y - 4.0);
  Label(page, right - 87.0, y, "start", "magnetometer B");
}

}  // namespace

void DrawHeadingErrors(Markup& page, const HeadingError& a, const HeadingError& b) {
  const std::vector<HeadingErrorAt> of_a = Told(a);
  const std::vector<HeadingErrorAt> of_b = Told(b);
  if (of_a.empty() && of_b.empty()) {
    page.Leaf("p", "These turns do not tell the heading error.");
    return;
  }
  page.Open("figure", {{"class", "wide"}});
  const double half =
      std::min(std::max(1.1 * std::max(Reach(of_a), Reach(of_b)), 1.2 * kGoodLimit), kLargestShown);
  const Chart chart = {{0.0, 360.0, 44.0, 442.0}, {-half, half, 218.0, 22.0}};
  OpenPicture(page, "headings", kWidth, kHeight, "Expected heading error by heading");
  Axes(page, chart, AzimuthTicks(), RoundTicks(chart.y), "heading", "error [degrees]");
  for (const double limit : {-kGoodLimit, kGoodLimit}) {
    Line(page, "limit", chart.x.place_from, chart.y(limit), chart.x.place_to, chart.y(limit));
  }
  DrawCurve(page, chart, of_a, "a");
  DrawCurve(page, chart, of_b, "b");
  DrawLegend(page, chart.x.place_to, 14.0);
  page.Close();
  page.Leaf("figcaption",
            "With the pole plumb. The line is the error that all measurements in a direction "
            "share; the band around it is two standard deviations wide on either side. Dashed: the "
            "2 degrees that a good calibration stays within.");
  page.Close();
}

}  // namespace tiltpole::cli
