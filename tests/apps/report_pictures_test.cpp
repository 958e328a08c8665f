// What the pictures of a report show, and where.

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "apps/tiltpole/report/chart.h"
#include "apps/tiltpole/report/markup.h"
#include "apps/tiltpole/report/turn_trace.h"

namespace {

using namespace tiltpole::cli;
using tiltpole::PoseSensorData;

PoseSensorData Reading(double x, double y, double z) {
  PoseSensorData sample;
  sample.MagneticX_A = x;
  sample.MagneticY_A = y;
  sample.MagneticZ_A = z;
  sample.MagneticX_B = -x;
  sample.MagneticY_B = -y;
  sample.MagneticZ_B = z;
  return sample;
}

TEST(TurnTrace, RawReadingsAreShownOnTheirOwnAxes) {
  tiltpole::TurnFigures figures;
  figures.CentreFirst = 100.0;
  figures.CentreSecond = -50.0;
  figures.RadiusMean = 10.0;
  const TurnTrace trace =
      TraceBefore({Reading(100.0, -38.0, 7.0)}, Magnetometer::A, Turn::Horizontal, figures);
  ASSERT_EQ(trace.points.size(), 1U);
  EXPECT_EQ(trace.points[0].first, 100.0);
  EXPECT_EQ(trace.points[0].second, -38.0);
  EXPECT_EQ(trace.points[0].azimuth, 90.0);
  EXPECT_EQ(trace.points[0].distance, 2.0);
}

TEST(TurnTrace, CorrectedReadingsOfBothMagnetometersTellTheSameHeading) {
  // The correction turns the signs of y and z: the field to the left of x means heading 90.
  tiltpole::TurnFigures figures;
  figures.RadiusMean = 2000.0;
  for (const Magnetometer one : {Magnetometer::A, Magnetometer::B}) {
    const TurnTrace trace =
        TraceAfter({Reading(0.0, -2000.0, 4000.0)}, one, Turn::Horizontal, figures);
    EXPECT_EQ(trace.points[0].azimuth, 90.0);
    EXPECT_EQ(trace.points[0].distance, 0.0);
  }
}

TEST(TurnTrace, TheVerticalTurnIsSeenFromTheSide) {
  tiltpole::TurnFigures figures;
  figures.RadiusMean = 5.0;
  for (const Magnetometer one : {Magnetometer::A, Magnetometer::B}) {
    const TurnTrace trace = TraceAfter({Reading(3.0, 9.0, 4.0)}, one, Turn::Vertical, figures);
    EXPECT_EQ(trace.points[0].first, 3.0);
    EXPECT_EQ(trace.points[0].second, -4.0);
    EXPECT_EQ(trace.points[0].distance, 0.0);
  }
}

TurnTrace TraceWithStray(std::size_t count, std::size_t stray) {
  TurnTrace trace;
  trace.radius = 100.0;
  for (std::size_t i = 0; i < count; ++i) {
    trace.points.push_back({static_cast<double>(i), 0.0, 0.0, i == stray ? -30.0 : 1.0});
  }
  return trace;
}

RC_GTEST_PROP(Thinned, KeepsTheFarthestReadingAndEachOnlyOnce, ()) {
  const auto count = *rc::gen::inRange<std::size_t>(1, 9000);
  const auto stray = *rc::gen::inRange<std::size_t>(0, count);
  const std::vector<TracePoint> shown = Thinned(TraceWithStray(count, stray));
  RC_ASSERT(shown.size() == std::min(count, kMostPoints));
  std::vector<double> places;
  places.reserve(shown.size());
  for (const TracePoint& point : shown) places.push_back(point.first);
  RC_ASSERT(std::count(places.begin(), places.end(), static_cast<double>(stray)) == 1);
  std::sort(places.begin(), places.end());
  RC_ASSERT(std::adjacent_find(places.begin(), places.end()) == places.end());
}

TEST(RoundTicks, StandAtRoundValues) {
  const auto texts = [](double from, double to) {
    std::vector<std::string> result;
    for (const Tick& tick : RoundTicks({from, to, 0.0, 1.0})) result.push_back(tick.text);
    return result;
  };
  using Texts = std::vector<std::string>;
  EXPECT_EQ(texts(-2.4, 2.4), (Texts{"-2", "-1", "0", "1", "2"}));
  EXPECT_EQ(texts(-2310.0, 2310.0), (Texts{"-2000", "-1000", "0", "1000", "2000"}));
  EXPECT_EQ(texts(0.0, 0.7), (Texts{"0.0", "0.2", "0.4", "0.6"}));
  EXPECT_EQ(texts(100.0, 250.0), (Texts{"100", "150", "200", "250"}));
}

TEST(Dots, OutsideOfTheChartStandOnItsEdge) {
  const Chart chart = {{0.0, 10.0, 0.0, 100.0}, {0.0, 10.0, 100.0, 0.0}};
  Dots dots;
  dots.Add(chart, 5.0, 5.0);
  dots.Add(chart, 50.0, -50.0);
  Markup page;
  dots.Draw(page);
  EXPECT_EQ(dots.Beyond(), 1);
  EXPECT_NE(page.Page().find("d=\"M50.0 50.0h0\""), std::string::npos);
  EXPECT_NE(page.Page().find("class=\"points beyond\" d=\"M100.0 100.0h0\""), std::string::npos);
}

}  // namespace
