#include "tiltpole/controls/detail/plot_view.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using tiltpole::MagneticPoint;
using tiltpole::Point;
using tiltpole::Rect;
using tiltpole::detail::ClientPoint;
using tiltpole::detail::FittedView;
using tiltpole::detail::kPlotXY;
using tiltpole::detail::kPlotXZ;
using tiltpole::detail::PlotView;
using tiltpole::detail::WorldPoint;

namespace {

constexpr Rect kClient = {0, 0, 200, 100};
constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

}  // namespace

TEST(PlotView, WorldPointsAreRoundedByAddingOneHalf) {
  const PlotView view = {0, 0, 2.0};
  EXPECT_EQ(ClientPoint(view, kClient, 1, 0), (Point{1, 100}));
  EXPECT_EQ(ClientPoint(view, kClient, 2, 1), (Point{1, 100}));
  EXPECT_EQ(ClientPoint(view, kClient, 3, 2), (Point{2, 99}));
}

TEST(PlotView, LeftOfTheEdgeTheRoundingGoesTowardsTheEdge) {
  const PlotView view = {0, 0, 1.0};
  EXPECT_EQ(ClientPoint(view, kClient, -1, 0).x, 0);
  EXPECT_EQ(ClientPoint(view, kClient, -2, 0).x, -1);
}

TEST(PlotView, TheWorldRisesFromTheBottomEdgeOfTheClientArea) {
  const PlotView view = {10, 20, 0.5};
  EXPECT_EQ(ClientPoint(view, {7, 3, 107, 53}, 10, 20), (Point{7, 53}));
  EXPECT_EQ(ClientPoint(view, {7, 3, 107, 53}, 15, 30), (Point{17, 33}));
}

TEST(PlotView, AScaleBelowOneMillionthMapsEverythingToTheOrigin) {
  for (const double scale : {0.0, 1e-300, 9.99e-7, -1.0, -kInfinity}) {
    EXPECT_EQ(ClientPoint({5, 5, scale}, kClient, 1000, -1000), (Point{0, 0}));
  }
}

TEST(PlotView, AScaleOfOneMillionthStillMaps) {
  EXPECT_EQ(ClientPoint({0, 0, 1e-6}, kClient, 1, 0), (Point{1000000, 100}));
}

TEST(PlotView, AnInfiniteScaleMapsEverythingToTheBottomLeftCorner) {
  EXPECT_EQ(ClientPoint({0, 0, kInfinity}, kClient, kMax, kMin), (Point{0, 100}));
}

TEST(PlotView, AScaleThatIsNotANumberMapsEverythingToTheOrigin) {
  EXPECT_EQ(ClientPoint({0, 0, kNaN}, kClient, 10, 10), (Point{0, 0}));
}

TEST(PlotView, TheDifferenceOfTheFarthestIntsDoesNotOverflow) {
  EXPECT_EQ(ClientPoint({kMin, kMin, 4294967295.0}, kClient, kMax, kMax), (Point{1, 99}));
  EXPECT_EQ(ClientPoint({kMax, kMax, 1.0}, kClient, kMin, kMin), (Point{kMin, kMax}));
}

TEST(PlotView, PixelsAreTruncatedTowardsZeroOnTheirWayToTheWorld) {
  const PlotView view = {0, 0, 0.75};
  EXPECT_EQ(WorldPoint(view, kClient, {1, 99}), (Point{0, 0}));
  EXPECT_EQ(WorldPoint(view, kClient, {-3, 103}), (Point{-2, -2}));
  EXPECT_EQ(WorldPoint(view, kClient, {3, 97}), (Point{2, 2}));
}

TEST(PlotView, PixelsFarBeyondTheWorldStandAtTheEndsOfTheInts) {
  EXPECT_EQ(WorldPoint({0, 0, 1e300}, kClient, {1, 101}), (Point{kMax, kMin}));
  EXPECT_EQ(WorldPoint({0, 0, 1.0}, kClient, {kMin, kMin}), (Point{kMin, kMax}));
  EXPECT_EQ(WorldPoint({7, 7, kNaN}, kClient, {1, 1}), (Point{0, 0}));
}

RC_GTEST_PROP(PlotView, APixelComesBackFromTheWorldWhereEachPixelIsACountOrMore, ()) {
  const PlotView view = {*rc::gen::inRange(-100000, 100000), *rc::gen::inRange(-100000, 100000),
                         *rc::gen::inRange(1, 1000) / 1.0};
  const Point pixel = {*rc::gen::inRange(0, 200), *rc::gen::inRange(0, 100)};
  const Point world = WorldPoint(view, kClient, pixel);
  RC_ASSERT(ClientPoint(view, kClient, world.x, world.y) == pixel);
}

TEST(FittedView, NeedsTwoPoints) {
  EXPECT_FALSE(FittedView({}, kPlotXY.vertical, kClient).has_value());
  EXPECT_FALSE(FittedView({{1, 2, 3}}, kPlotXY.vertical, kClient).has_value());
  EXPECT_TRUE(FittedView({{1, 2, 3}, {1, 2, 3}}, kPlotXY.vertical, kClient).has_value());
}

TEST(FittedView, CentresThePointsWithAMarginOfOneHalf) {
  const auto view = FittedView({{0, 0, 0}, {300, 150, 0}}, kPlotXY.vertical, kClient);
  EXPECT_EQ(view->scale, 2.25);
  EXPECT_EQ(view->left_x, -74);
  EXPECT_EQ(view->bottom_v, -37);
}

TEST(FittedView, TakesTheLargerOfBothScales) {
  EXPECT_EQ(FittedView({{0, 0, 0}, {400, 150, 0}}, kPlotXY.vertical, kClient)->scale, 3.0);
  EXPECT_EQ(FittedView({{0, 0, 0}, {300, 200, 0}}, kPlotXY.vertical, kClient)->scale, 3.0);
}

TEST(FittedView, LooksAtTheComponentThatIsPlotted) {
  const std::vector<MagneticPoint> points = {{0, 5000, 0}, {300, -5000, 200}};
  EXPECT_EQ(FittedView(points, kPlotXZ.vertical, kClient)->scale, 3.0);
  EXPECT_EQ(FittedView(points, kPlotXY.vertical, kClient)->scale, 150.0);
}

TEST(FittedView, FindsTheExtremesWhereverTheyStand) {
  const auto view = FittedView({{5, 5, 0}, {-100, 20, 0}, {7, -30, 0}, {100, 70, 0}, {0, 0, 0}},
                               kPlotXY.vertical, kClient);
  EXPECT_EQ(view->scale, 1.5);
  EXPECT_EQ(view->left_x, -149);
  EXPECT_EQ(view->bottom_v, -54);
}

TEST(FittedView, PointsAllAlikeGiveAScaleOfZero) {
  const auto view = FittedView({{7, -7, 1}, {7, -7, 2}}, kPlotXY.vertical, kClient);
  EXPECT_EQ(view->scale, 0.0);
  EXPECT_EQ(view->left_x, 7);
  EXPECT_EQ(view->bottom_v, -6);
}

TEST(FittedView, TheFarthestIntsDoNotOverflow) {
  const auto view = FittedView({{kMin, kMax, 0}, {kMax, kMin, 0}}, kPlotXY.vertical, kClient);
  EXPECT_EQ(view->scale, 4294967295.0 / 100 * 1.5);
  EXPECT_EQ(view->left_x, kMin);
  const auto near_end = FittedView({{kMax, 0, 0}, {kMax, 100, 0}}, kPlotXY.vertical, kClient);
  EXPECT_EQ(near_end->left_x, kMax - 150);
}

TEST(FittedView, AnEmptyClientAreaGivesAScaleThatIsNoFiniteNumber) {
  const Rect empty;
  EXPECT_EQ(FittedView({{0, 0, 0}, {1, 1, 0}}, kPlotXY.vertical, empty)->scale, kInfinity);
  EXPECT_EQ(FittedView({{0, 0, 0}, {1, 1, 0}}, kPlotXY.vertical, empty)->left_x, 0);
  EXPECT_TRUE(std::isnan(FittedView({{4, 4, 0}, {4, 4, 0}}, kPlotXY.vertical, empty)->scale));
}

RC_GTEST_PROP(FittedView, ShowsEveryPointInTheMiddleTwoThirdsOfTheClientArea, ()) {
  const auto coordinate = rc::gen::inRange(-1000000, 1000000);
  const auto points = *rc::gen::container<std::vector<MagneticPoint>>(
      rc::gen::construct<MagneticPoint>(coordinate, coordinate, coordinate));
  const Rect client = {0, 0, *rc::gen::inRange(10, 1000), *rc::gen::inRange(10, 1000)};
  const auto view = FittedView(points, kPlotXZ.vertical, client);
  RC_PRE(view.has_value() && view->scale >= 1.0);
  for (const MagneticPoint& point : points) {
    const Point place = ClientPoint(*view, client, point.x, point.z);
    RC_ASSERT(std::abs(place.x - client.right / 2.0) <= client.right / 3.0 + 1.5);
    RC_ASSERT(std::abs(place.y - client.bottom / 2.0) <= client.bottom / 3.0 + 1.5);
  }
}
