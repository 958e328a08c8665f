#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "controls/recorded.h"
#include "controls/view_files.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"

using tiltpole::CGraphMagnetic_XY;
using tiltpole::CGraphMagnetic_XZ;
using tiltpole::Point;
using tiltpole::RecordingContext;
using tiltpole::Rect;
using namespace tiltpole_test;

namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();
constexpr std::uint32_t kVisibleChild = 0x50000000;

class Plots : public RecordedTest {
 protected:
  /// A plot whose client area has this size; the sunken edge is three pixels wide.
  template <typename Plot>
  void Create(Plot& plot, int width, int height) {
    plot.Create(nullptr, nullptr, kVisibleChild, {0, 0, width + 6, height + 6}, "dialog", 7);
    plot.PaintIfInvalid();
    recorder.TakeLines();
  }
  template <typename Plot>
  Point ClientPointOf(const Plot& plot, int x, int v) {
    Point place;
    plot.WorldToClient(x, v, place.x, place.y);
    return place;
  }

  ViewFiles files;
};

// What the two plots do alike, each with its own measures.
template <typename Plot>
class EachPlot : public Plots {
 protected:
  static constexpr bool kIsXY = std::is_same_v<Plot, CGraphMagnetic_XY>;
  // So many readings may be missed before the view is fitted.
  static constexpr int kMissedLimit = kIsXY ? 10 : 5;

  static void AddTrackPoint(Plot& plot, int x, int v) {
    plot.AddTrackPoint(x, kIsXY ? v : 0, kIsXY ? 0 : v);
  }
  // The left and bottom edges of the view at 0.
  void WriteViewOfScale(const std::string& scale) const {
    files.Write(kIsXY ? files.xy : files.xz,
                (kIsXY ? "GRAPHMAGNETIC_XY:0, 0, " : "GRAPHMAGNETIC_XZ:0, 0, ") + scale + ",\r\n");
  }
  // How many readings count as missed when so many are added while the view has another scale.
  int MissedAtScale(const std::string& scale, int readings) {
    WriteViewOfScale(scale);
    Plot plot;
    Create(plot, 200, 100);
    for (int i = 0; i < readings; ++i) AddTrackPoint(plot, 0, 0);
    WriteViewOfScale("1.0");
    plot.ConfigRead();
    return kMissedLimit + 1 - MissesUntilAFit(plot);
  }
  int MissesUntilAFit(Plot& plot) {
    recorder.TakeLines();
    for (int misses = 1; misses <= kMissedLimit + 1; ++misses) {
      AddTrackPoint(plot, 5000 + misses, 5000);
      if (!With("with erase", recorder.TakeLines()).empty()) return misses;
    }
    return kMissedLimit + 2;
  }
};

using BothPlots = ::testing::Types<CGraphMagnetic_XY, CGraphMagnetic_XZ>;
struct PlotNames {
  template <typename Plot>
  static std::string GetName(int index) {
    return index == 0 ? "XY" : "XZ";
  }
};
TYPED_TEST_SUITE(EachPlot, BothPlots, PlotNames);

}  // namespace

TEST_F(Plots, CreateMakesAWindowWithASunkenEdgeAndDrawsBothLayers) {
  CGraphMagnetic_XY plot;
  EXPECT_EQ(plot.Create(L"ignored", L"ignored", kVisibleChild, {10, 20, 216, 126}, "dialog", 7), 1);
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
window: create class GraphMagnetic_XY styles 0x20200 0x50000000 at (10,20) of 206x106 in dialog id 7
window: take context
window: create memory 1
window: create bitmap 1 of 200x100
memory 1: select bitmap 1
window: create memory 2
window: create bitmap 2 of 200x100
memory 2: select bitmap 2
window: release context
memory 1: background colour RGB(0,0,0)
memory 1: fill (0,0,200,100) RGB(0,0,0)
memory 2: background colour RGB(0,0,0)
memory 2: fill (0,0,200,100) RGB(0,0,0)
memory 1: pen solid 1 RGB(0,255,255)
memory 1: line (20,80)-(70,80)
memory 1: line (70,80)-(67,77)
memory 1: line (67,77)-(67,83)
memory 1: line (67,83)-(70,80)
memory 1: line (20,80)-(20,30)
memory 1: line (20,30)-(17,33)
memory 1: line (17,33)-(23,33)
memory 1: line (23,33)-(20,30)
memory 1: font Arical height 14 weight 150 family 32
memory 1: text colour RGB(255,0,255)
memory 1: text "Y" at (17,12) clipped
memory 1: text "X" at (75,72) clipped
memory 1: font of the system
memory 1: pen solid 1 RGB(0,0,0)
memory 2: pen solid 1 RGB(255,255,255)
memory 2: pen solid 1 RGB(0,0,0)
memory 2: pen solid 1 RGB(255,0,0)
memory 2: pen solid 1 RGB(0,0,0)
)"));
}

TEST_F(Plots, TheXZOneHasAClassAndALabelOfItsOwn) {
  CGraphMagnetic_XZ plot;
  plot.Create(nullptr, nullptr, kVisibleChild, {0, 0, 306, 306}, nullptr, 0);
  const Lines lines = recorder.TakeLines();
  EXPECT_EQ(lines.front(),
            "window: create class GraphMagnetic_XZ styles 0x20200 0x50000000 at (0,0) of 306x306 "
            "in none id 0");
  EXPECT_EQ(With("text \"", lines), (Lines{"memory 1: text \"Z\" at (17,212) clipped",
                                           "memory 1: text \"X\" at (75,272) clipped"}));
  EXPECT_EQ(With("memory 2: pen", lines).front(), "memory 2: pen solid 1 RGB(0,255,0)");
}

TEST_F(Plots, CreateReturns1AlsoWhenThereIsNoWindow) {
  CGraphMagnetic_XY plot;
  plot.can_be_created = false;
  EXPECT_EQ(plot.Create(nullptr, nullptr, kVisibleChild, {0, 0, 206, 106}, "dialog", 7), 1);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Plots, WithoutAWindowPointsAreCollectedAndDrawnOnceThereIsOne) {
  CGraphMagnetic_XY plot;
  plot.AddTrackPoint(-250, -375, 0);
  plot.AddCenterPoint(-400, -400, 0);
  plot.InvalidateCtrl();
  plot.Clear();
  plot.AddTrackPoint(-250, -375, 0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  plot.Create(nullptr, nullptr, kVisibleChild, {0, 0, 206, 106}, "dialog", 7);
  EXPECT_EQ(With("memory 2: line", recorder.TakeLines()),
            (Lines{"memory 2: line (97,50)-(103,50)", "memory 2: line (100,47)-(100,53)"}));
}

TEST_F(Plots, CreateASecondTimeReturns1AndKeepsTheWindow) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  EXPECT_EQ(plot.Create(nullptr, nullptr, kVisibleChild, {0, 0, 50, 50}, "dialog", 7), 1);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TYPED_TEST(EachPlot, APaintComposesTheLayersAndCopiesThePictureOnce) {
  TypeParam plot;
  this->Create(plot, 200, 100);
  plot.OnPaint();
  EXPECT_EQ(this->recorder.TakeLines(), Block(R"(
window: begin paint
window: create memory 4
window: create bitmap 4 of 200x100
memory 4: select bitmap 4
memory 4: copy to (0,0,200,100) from memory 1 (0,0)
memory 4: or onto (0,0,200,100) from memory 2 (0,0)
window: copy to (0,0,200,100) from memory 4 (0,0)
memory 4: select own bitmap
delete memory 4
delete bitmap 4
window: end paint
)"));
}

TEST_F(Plots, LeaveTheErasingOfTheBackgroundToTheSystem) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.Clear();
  EXPECT_TRUE(plot.IsEraseDue());
  recorder.TakeLines();
  plot.PaintIfInvalid();
  EXPECT_EQ(recorder.TakeLines().front(), "window: not erased");
}

TEST_F(Plots, ANewXYPlotShowsMinus500AtItsBottomLeftCornerAnd250CountsAs100Pixels) {
  CGraphMagnetic_XY plot;
  Create(plot, 400, 400);
  EXPECT_EQ(ClientPointOf(plot, -500, -500), (Point{0, 400}));
  EXPECT_EQ(ClientPointOf(plot, -250, -250), (Point{100, 300}));
}

TEST_F(Plots, ANewXZPlotHasZeroAtItsLeftEdgeAnd300CountsAre100Pixels) {
  CGraphMagnetic_XZ plot;
  Create(plot, 400, 400);
  EXPECT_EQ(ClientPointOf(plot, 0, -500), (Point{0, 400}));
  EXPECT_EQ(ClientPointOf(plot, 300, -200), (Point{100, 300}));
}

TEST_F(Plots, ClientToWorldTakesThePixelsXFromTheResultVariable) {
  CGraphMagnetic_XY plot;
  Create(plot, 400, 400);
  int x = 100;
  int v = 12345;
  plot.ClientToWorld(7, 300, x, v);
  EXPECT_EQ(x, -250);
  EXPECT_EQ(v, -250);
  x = 101;
  plot.ClientToWorld(7, 299, x, v);
  EXPECT_EQ(x, -247);
  EXPECT_EQ(v, -247);
}

TEST_F(Plots, ATrackPointInTheViewIsDrawnIntoItsLayerAndInvalidatesWithoutErasing) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, -375, 999999);
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
memory 2: pen solid 1 RGB(255,255,255)
memory 2: line (97,50)-(103,50)
memory 2: line (100,47)-(100,53)
memory 2: pen solid 1 RGB(0,0,0)
window: invalidate without erase
)"));
}

TEST_F(Plots, TheXZOnePlotsZUpwardsInGreen) {
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(300, 999999, -350);
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
memory 2: pen solid 1 RGB(0,255,0)
memory 2: line (97,50)-(103,50)
memory 2: line (100,47)-(100,53)
memory 2: pen solid 1 RGB(0,0,0)
window: invalidate without erase
)"));
}

TEST_F(Plots, LeftAndTopEdgeBelongToTheViewRightAndBottomEdgeDoNot) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddCenterPoint(-500, -375, 0);
  EXPECT_EQ(With("line", recorder.TakeLines()).front(), "memory 2: line (-3,50)-(3,50)");
  plot.AddCenterPoint(-250, -250, 0);
  EXPECT_EQ(With("line", recorder.TakeLines()).front(), "memory 2: line (97,0)-(103,0)");
  plot.AddCenterPoint(0, -375, 0);
  plot.AddCenterPoint(-250, -500, 0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Plots, ACentrePointIsARedCrossAndNeverMovesTheView) {
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  plot.AddCenterPoint(300, 0, -350);
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
memory 2: pen solid 1 RGB(255,0,0)
memory 2: line (97,50)-(103,50)
memory 2: line (100,47)-(100,53)
memory 2: pen solid 1 RGB(0,0,0)
window: invalidate without erase
)"));
  plot.AddTrackPoint(300, 0, -350);
  plot.AddTrackPoint(330, 0, -320);
  recorder.TakeLines();
  for (int i = 0; i < 100; ++i) plot.AddCenterPoint(kMax, kMin, kMax);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  EXPECT_EQ(ClientPointOf(plot, 300, -350), (Point{100, 50}));
}

TEST_F(Plots, TheEleventhMissedPointFitsTheViewOfTheXYPlot) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  for (int i = 1; i <= 10; ++i) plot.AddTrackPoint(10000 + 30 * i, 10000 + 15 * i, 0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  plot.AddTrackPoint(10330, 10165, 0);
  EXPECT_EQ(With("window: invalidate", recorder.TakeLines()),
            Lines{"window: invalidate with erase"});
  EXPECT_EQ(ClientPointOf(plot, 10180, 10090), (Point{100, 50}));
}

TEST_F(Plots, TheSixthMissedPointFitsTheViewOfTheXZPlot) {
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  for (int i = 1; i <= 5; ++i) plot.AddTrackPoint(10000 + 30 * i, 0, 10000 + 15 * i);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  plot.AddTrackPoint(10180, 0, 10090);
  EXPECT_EQ(With("window: invalidate", recorder.TakeLines()),
            Lines{"window: invalidate with erase"});
}

TEST_F(Plots, PointsInTheViewDoNotResetTheCountOfMissedOnes) {
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  for (int i = 1; i <= 5; ++i) plot.AddTrackPoint(10000 + 30 * i, 0, 10000 + 15 * i);
  plot.AddTrackPoint(300, 0, -350);
  recorder.TakeLines();
  plot.AddTrackPoint(10180, 0, 10090);
  EXPECT_EQ(With("with erase", recorder.TakeLines()).size(), 1U);
}

TEST_F(Plots, AFitCentresTheTrackPointsAndSavesTheView) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(0, 0, 0);
  plot.AddTrackPoint(300, 150, 0);
  plot.ZoomAll();
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:-74, -37, 2.250000,\r\n");
  EXPECT_EQ(ClientPointOf(plot, 150, 75), (Point{100, 50}));
}

TYPED_TEST(EachPlot, ZoomAllFitsTheViewAndSavesIt) {
  TypeParam plot;
  this->Create(plot, 200, 100);
  this->AddTrackPoint(plot, 0, 0);
  this->AddTrackPoint(plot, 300, 150);
  plot.ZoomAll();
  EXPECT_EQ(this->ClientPointOf(plot, 150, 75), (Point{100, 50}));
  TypeParam next_run;
  this->Create(next_run, 200, 100);
  EXPECT_EQ(this->ClientPointOf(next_run, 150, 75), (Point{100, 50}));
}

TYPED_TEST(EachPlot, ConfigReadTellsWhetherThereIsAViewToRead) {
  TypeParam plot;
  EXPECT_EQ(plot.ConfigRead(), 0);
  EXPECT_EQ(plot.ConfigSave(), 1);
  EXPECT_EQ(plot.ConfigRead(), 1);
}

TEST_F(Plots, AFitRedrawsBothLayersAndInvalidatesWithErasing) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(0, 0, 0);
  plot.AddTrackPoint(300, 150, 0);
  plot.AddCenterPoint(150, 75, 0);
  recorder.TakeLines();
  plot.ZoomAll();
  const Lines lines = recorder.TakeLines();
  EXPECT_EQ(Flow(lines), (Lines{"window: take context", "window: release context",
                                "window: invalidate with erase"}));
  EXPECT_EQ(With("memory 2", lines), Block(R"(
memory 2: background colour RGB(0,0,0)
memory 2: fill (0,0,200,100) RGB(0,0,0)
memory 2: pen solid 1 RGB(255,255,255)
memory 2: line (30,84)-(36,84)
memory 2: line (33,81)-(33,87)
memory 2: line (163,17)-(169,17)
memory 2: line (166,14)-(166,20)
memory 2: pen solid 1 RGB(0,0,0)
memory 2: pen solid 1 RGB(255,0,0)
memory 2: line (97,50)-(103,50)
memory 2: line (100,47)-(100,53)
memory 2: pen solid 1 RGB(0,0,0)
)"));
}

TEST_F(Plots, ZoomAllWithOneTrackPointDoesNothing) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, -375, 0);
  plot.AddCenterPoint(-250, -375, 0);
  plot.AddCenterPoint(-240, -375, 0);
  recorder.TakeLines();
  plot.ZoomAll();
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  EXPECT_FALSE(files.Exists(files.xy));
}

TEST_F(Plots, AFitToEqualPointsPutsEveryPointAtTheTopLeftPixelFromThenOn) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, -375, 0);
  plot.AddTrackPoint(-250, -375, 0);
  plot.ZoomAll();
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:-249, -374, 0.000000,\r\n");
  recorder.TakeLines();
  for (int i = 0; i < 100; ++i) {
    plot.AddTrackPoint(1000 * i, -7 * i, 0);
    EXPECT_EQ(recorder.TakeLines(), Block(R"(
memory 2: pen solid 1 RGB(255,255,255)
memory 2: line (-3,0)-(3,0)
memory 2: line (0,-3)-(0,3)
memory 2: pen solid 1 RGB(0,0,0)
window: invalidate without erase
)"));
  }
}

TEST_F(Plots, AtAScaleAbove1000AMissedPointCountsTwice) {
  files.Write(files.xz, "GRAPHMAGNETIC_XZ:0, 0, 1000.5,\r\n");
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-2000000, 0, 0);
  plot.AddTrackPoint(-2000001, 0, 0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  plot.AddTrackPoint(-2000002, 0, 0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  plot.AddTrackPoint(-2000300, 0, 0);
  EXPECT_EQ(With("with erase", recorder.TakeLines()).size(), 1U);
}

TEST_F(Plots, AtAScaleAbove1000APointInTheViewCountsAsMissedOnce) {
  files.Write(files.xz, "GRAPHMAGNETIC_XZ:0, 0, 1000.5,\r\n");
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  for (int i = 0; i < 6; ++i) plot.AddTrackPoint(5000, 0, 5000);
  EXPECT_EQ(With("with erase", recorder.TakeLines()), Lines{});
  plot.AddTrackPoint(-2000300, 0, 0);
  EXPECT_EQ(With("with erase", recorder.TakeLines()).size(), 1U);
}

TYPED_TEST(EachPlot, AfterAFitToEqualPointsEachNewPointCountsAsMissedOnce) {
  this->WriteViewOfScale("1.0");
  TypeParam plot;
  this->Create(plot, 200, 100);
  this->AddTrackPoint(plot, 100, 50);
  this->AddTrackPoint(plot, 100, 50);
  plot.ZoomAll();
  for (int i = 0; i < 3; ++i) this->AddTrackPoint(plot, 100, 50);
  this->WriteViewOfScale("1.0");
  plot.ConfigRead();
  EXPECT_EQ(this->MissesUntilAFit(plot), this->kMissedLimit + 1 - 3);
}

// A fit has no scale below zero, but the file of a view can have one.
TYPED_TEST(EachPlot, AScaleIsSmallOrLargeWhateverItsSign) {
  EXPECT_EQ(this->MissedAtScale("0.0000009", 3), 3);
  EXPECT_EQ(this->MissedAtScale("-0.0000009", 3), 3);
  EXPECT_EQ(this->MissedAtScale("-2.0", 3), 0);
  EXPECT_EQ(this->MissedAtScale("-1000.0", 3), 0);
  EXPECT_EQ(this->MissedAtScale("-1000.5", 3), 3);
}

TEST_F(Plots, AScaleOfExactly1000CountsNothingMore) {
  files.Write(files.xz, "GRAPHMAGNETIC_XZ:0, 0, 1000.0,\r\n");
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  for (int i = 0; i < 20; ++i) plot.AddTrackPoint(5000, 0, 5000);
  recorder.TakeLines();
  for (int i = 0; i < 5; ++i) plot.AddTrackPoint(-2000300, 0, 0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TYPED_TEST(EachPlot, InvalidateCtrlRedrawsBothLayersAndLeavesTheWindowValid) {
  TypeParam plot;
  this->Create(plot, 200, 100);
  plot.InvalidateCtrl();
  const Lines lines = this->recorder.TakeLines();
  EXPECT_EQ(Flow(lines), (Lines{"window: take context", "window: release context"}));
  EXPECT_EQ(With("fill", lines), (Lines{"memory 1: fill (0,0,200,100) RGB(0,0,0)",
                                        "memory 2: fill (0,0,200,100) RGB(0,0,0)"}));
  EXPECT_FALSE(plot.IsInvalid());
}

TEST_F(Plots, ClearForgetsAllPointsAndKeepsTheView) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(0, 0, 0);
  plot.AddTrackPoint(300, 150, 0);
  plot.AddCenterPoint(150, 75, 0);
  plot.ZoomAll();
  recorder.TakeLines();
  plot.Clear();
  const Lines lines = recorder.TakeLines();
  EXPECT_EQ(With("memory 2: line", lines), Lines{});
  EXPECT_EQ(Flow(lines), (Lines{"window: take context", "window: release context",
                                "window: invalidate with erase"}));
  EXPECT_EQ(ClientPointOf(plot, 150, 75), (Point{100, 50}));
  EXPECT_EQ(plot.AccessibleValue(), L"0 readings");
}

TEST_F(Plots, ClearForgetsHowManyPointsWereMissed) {
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  for (int i = 0; i < 3; ++i) plot.AddTrackPoint(10000 + i, 0, i);
  plot.Clear();
  recorder.TakeLines();
  for (int i = 0; i < 5; ++i) plot.AddTrackPoint(10000 + i, 0, i);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Plots, AFitOfMissedPointsStartsTheirCountAnew) {
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  for (int i = 0; i < 6; ++i) plot.AddTrackPoint(10000 + 30 * i, 0, 10000 + 15 * i);
  EXPECT_EQ(With("with erase", recorder.TakeLines()).size(), 1U);
  for (int i = 0; i < 5; ++i) plot.AddTrackPoint(-10000, 0, i);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  plot.AddTrackPoint(-10000, 0, 0);
  EXPECT_EQ(With("with erase", recorder.TakeLines()).size(), 1U);
}

TEST_F(Plots, AllCrossesOfAListAreDrawnInsideOfTheViewOrNot) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, -375, 0);
  plot.AddTrackPoint(750, -375, 0);
  plot.AddCenterPoint(-250, 625, 0);
  RecordingContext context;
  plot.DrawTrackPoints(&context);
  EXPECT_EQ(context.TakeLines(), Block(R"(
pen solid 1 RGB(255,255,255)
line (97,50)-(103,50)
line (100,47)-(100,53)
line (497,50)-(503,50)
line (500,47)-(500,53)
pen solid 1 RGB(0,0,0)
)"));
  plot.DrawCenterPoints(&context);
  EXPECT_EQ(context.TakeLines(), Block(R"(
pen solid 1 RGB(255,0,0)
line (97,-349)-(103,-349)
line (100,-352)-(100,-346)
pen solid 1 RGB(0,0,0)
)"));
}

TEST_F(Plots, TheXZPlotDrawsItsListsInItsOwnColourAndAgainstItsVerticalAxis) {
  CGraphMagnetic_XZ plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, 7, -375);
  plot.AddCenterPoint(-250, 7, 625);
  const Point track = ClientPointOf(plot, -250, -375);
  const Point center = ClientPointOf(plot, -250, 625);
  const auto cross = [](Point place) {
    const auto at = [place](int x, int y) {
      return "(" + std::to_string(place.x + x) + "," + std::to_string(place.y + y) + ")";
    };
    return Lines{"line " + at(-3, 0) + "-" + at(3, 0), "line " + at(0, -3) + "-" + at(0, 3)};
  };
  RecordingContext context;
  plot.DrawTrackPoints(&context);
  EXPECT_EQ(With("line", context.TakeLines()), cross(track));
  plot.DrawCenterPoints(&context);
  const Lines lines = context.TakeLines();
  EXPECT_EQ(With("line", lines), cross(center));
  EXPECT_EQ(lines.front(), "pen solid 1 RGB(255,0,0)");
}

TEST_F(Plots, TheXZPlotFindsTheReadingOfAPixelAsItsTwinDoes) {
  CGraphMagnetic_XZ plot;
  Create(plot, 400, 400);
  const Point place = ClientPointOf(plot, 20, -40);
  int x = place.x;
  int v = 12345;
  plot.ClientToWorld(7, place.y, x, v);
  const Point back = ClientPointOf(plot, x, v);
  EXPECT_EQ(back, place);
}

TEST_F(Plots, DrawNothingWithoutAContext) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, -375, 0);
  recorder.TakeLines();
  plot.DrawTrackPoints(nullptr);
  plot.DrawCenterPoints(nullptr);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Plots, TheLayersAreNotResizedWithTheWindow) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.Resize({400, 300});
  plot.OnPaint();
  EXPECT_EQ(With("memory 4: copy", recorder.TakeLines()),
            Lines{"memory 4: copy to (0,0,400,300) from memory 1 (0,0)"});
  plot.InvalidateCtrl();
  EXPECT_EQ(With("create", recorder.TakeLines()), Lines{});
}

TEST_F(Plots, OnAScreenOfAnotherScaleTheNextPaintDrawsBothLayersAnewOnce) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, -375, 0);
  recorder.screen_scale = 2;
  plot.AddCenterPoint(-300, -400, 0);
  recorder.TakeLines();
  plot.PaintIfInvalid();
  const Lines lines = recorder.TakeLines();
  EXPECT_EQ(With("create bitmap", lines),
            (Lines{"window: create bitmap 4 of 200x100", "window: create bitmap 5 of 200x100",
                   "window: create bitmap 6 of 200x100"}));
  EXPECT_EQ(With("memory 4: text \"", lines).size(), 2U);
  EXPECT_EQ(With("memory 5: line", lines),
            (Lines{"memory 5: line (97,50)-(103,50)", "memory 5: line (100,47)-(100,53)",
                   "memory 5: line (77,60)-(83,60)", "memory 5: line (80,57)-(80,63)"}));
  EXPECT_EQ(With("memory 6: ", lines), Lines({"memory 6: select bitmap 6",
                                              "memory 6: copy to (0,0,200,100) from memory 4 (0,0)",
                                              "memory 6: or onto (0,0,200,100) from memory 5 (0,0)",
                                              "memory 6: select own bitmap"}));
  plot.OnPaint();
  EXPECT_EQ(With("fill", recorder.TakeLines()), Lines{});
}

TEST_F(Plots, OnAScreenOfAnotherScaleAPlotThatIsDrawnAnewHasItsLayersThere) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  recorder.screen_scale = 2;
  plot.Clear();
  EXPECT_EQ(With("create bitmap", recorder.TakeLines()).size(), 2U);
  plot.PaintIfInvalid();
  EXPECT_EQ(With("create bitmap", recorder.TakeLines()).size(), 1U);
}

TEST_F(Plots, TheDistanceOfTwoPointsIsTruncated) {
  const CGraphMagnetic_XY plot;
  EXPECT_EQ(plot.GetDistance({0, 0}, {3, 4}), 5);
  EXPECT_EQ(plot.GetDistance({1, 1}, {2, 2}), 1);
  EXPECT_EQ(plot.GetDistance({5, 5}, {5, 5}), 0);
  EXPECT_EQ(plot.GetDistance({-3, 4}, {3, -4}), 10);
}

TEST_F(Plots, TheDistanceOfTheFarthestPointsIsTheLargestInt) {
  const CGraphMagnetic_XZ plot;
  EXPECT_EQ(plot.GetDistance({kMin, kMin}, {kMax, kMax}), kMax);
  EXPECT_EQ(plot.GetDistance({kMin, 0}, {-1, 0}), kMax);
  EXPECT_EQ(plot.GetDistance({0, 0}, {46341, 46341}), 65536);
}

TEST_F(Plots, TakeTheExtremesOfTheInts) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  for (int i = 0; i < 12; ++i) {
    plot.AddTrackPoint(kMin, kMax, kMin);
    plot.AddTrackPoint(kMax, kMin, kMax);
    plot.AddCenterPoint(kMax, kMax, kMax);
  }
  plot.OnPaint();
  plot.ZoomAll();
  // 2^32 - 1 counts on 100 pixels of height, and a margin of one half.
  EXPECT_EQ(files.Read(files.xy),
            "GRAPHMAGNETIC_XY:-2147483648, -2147483648, 64424509.425000,\r\n");
  plot.AddTrackPoint(kMin, kMin, kMin);
  plot.AddTrackPoint(0, 0, 0);
}

TEST_F(Plots, DrawWhatLiesBeyondTheIntsAtTheirEnds) {
  files.Write(files.xy, "GRAPHMAGNETIC_XY:0, 0, 0.000001,\r\n");
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  plot.AddTrackPoint(kMax, kMax, 0);
  RecordingContext context;
  plot.DrawTrackPoints(&context);
  EXPECT_EQ(With("line", context.TakeLines()),
            (Lines{"line (2147483644,-2147483648)-(2147483647,-2147483648)",
                   "line (2147483647,-2147483648)-(2147483647,-2147483645)"}));
}

TEST_F(Plots, LiveInTheSmallestWindows) {
  for (const int size : {0, 1, 4}) {
    CGraphMagnetic_XY plot;
    Create(plot, size, size);
    plot.AddTrackPoint(1, 2, 3);
    plot.AddTrackPoint(-4, -5, -6);
    plot.ZoomAll();
    plot.OnPaint();
    EXPECT_EQ(With("window: copy", recorder.TakeLines()).size(), 1U);
  }
}

TEST_F(Plots, AFitInAWindowWithoutAreaSavesAnInfiniteScaleThatTheNextFitPutsRight) {
  {
    CGraphMagnetic_XY plot;
    plot.AddTrackPoint(0, 0, 0);
    plot.AddTrackPoint(300, 150, 0);
    plot.ZoomAll();
  }
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:0, 0, inf,\r\n");
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  EXPECT_EQ(ClientPointOf(plot, 5, 5), (Point{0, 100}));
  plot.AddTrackPoint(0, 0, 0);
  plot.AddTrackPoint(300, 150, 0);
  plot.ZoomAll();
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:-74, -37, 2.250000,\r\n");
}

TEST_F(Plots, WithoutAContextFromTheWindowDrawNothing) {
  CGraphMagnetic_XY plot;
  plot.gives_contexts = false;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, -375, 0);
  EXPECT_EQ(recorder.TakeLines(), Lines{"window: invalidate without erase"});
  plot.gives_contexts = true;
  plot.InvalidateCtrl();
  EXPECT_EQ(With("line (97,50)-(103,50)", recorder.TakeLines()).size(), 1U);
}

TEST_F(Plots, ASystemWithoutResourcesDrawsNothingAndRecovers) {
  CGraphMagnetic_XY plot;
  recorder.has_resources = false;
  Create(plot, 200, 100);
  plot.AddTrackPoint(-250, -375, 0);
  plot.OnPaint();
  EXPECT_EQ(recorder.TakeLines(), (Lines{"window: invalidate without erase", "window: begin paint",
                                         "window: end paint"}));
  recorder.has_resources = true;
  plot.InvalidateCtrl();
  EXPECT_EQ(With("line (97,50)-(103,50)", recorder.TakeLines()).size(), 1U);
}

TEST_F(Plots, AMillionTrackPointsAreKeptAndEachIsDrawnAtTheSameCost) {
  CGraphMagnetic_XY plot;
  Create(plot, 200, 100);
  recorder.keeps_lines = false;
  recorder.calls = 0;
  for (int i = 0; i < 1000000; ++i) plot.AddTrackPoint(i % 499 - 500, i % 241 - 491, 0);
  EXPECT_EQ(recorder.calls, 1000000LL * 4);
  EXPECT_EQ(plot.AccessibleValue(), L"1000000 readings");
}

RC_GTEST_FIXTURE_PROP(Plots, EverySequenceOfCallsReleasesWhatItTakes, ()) {
  recorder.Reset();
  {
    CGraphMagnetic_XZ plot;
    const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 10));
    const auto any = rc::gen::oneOf(rc::gen::arbitrary<int>(), rc::gen::element(kMin, kMax, 0),
                                    rc::gen::inRange(-600, 600));
    for (const int step : steps) {
      if (step == 0) {
        const Rect place = {0, 0, *rc::gen::inRange(0, 300), *rc::gen::inRange(0, 300)};
        RC_ASSERT(plot.Create(nullptr, nullptr, 0, place, nullptr, 1) == 1);
      }
      if (step == 1) plot.PaintIfInvalid();
      if (step == 2) plot.AddTrackPoint(*any, *any, *any);
      if (step == 3) plot.AddCenterPoint(*any, *any, *any);
      if (step == 4) plot.Clear();
      if (step == 5) plot.ZoomAll();
      if (step == 6) plot.InvalidateCtrl();
      if (step == 7) plot.Resize({*rc::gen::inRange(0, 300), *rc::gen::inRange(0, 300)});
      if (step == 8) recorder.has_resources = !recorder.has_resources;
      if (step == 9) plot.gives_contexts = !plot.gives_contexts;
      RC_ASSERT(recorder.living_contexts <= 2);
      RC_ASSERT(recorder.living_bitmaps <= 2);
      RC_ASSERT(recorder.taken_contexts == 0);
    }
  }
  RC_ASSERT(recorder.living_contexts == 0);
  RC_ASSERT(recorder.living_bitmaps == 0);
  RC_ASSERT(recorder.misuses.empty());
}

TEST_F(Plots, TellScreenReadersWhatTheyShow) {
  EXPECT_EQ(CGraphMagnetic_XY().AccessibleName(), L"Magnetometer readings, x and y");
  EXPECT_EQ(CGraphMagnetic_XZ().AccessibleName(), L"Magnetometer readings, x and z");
}

TYPED_TEST(EachPlot, TellsScreenReadersHowManyReadingsItShows) {
  TypeParam plot;
  this->AddTrackPoint(plot, 1, 2);
  this->AddTrackPoint(plot, 3, 4);
  plot.AddCenterPoint(5, 6, 7);
  EXPECT_EQ(plot.AccessibleValue(), L"2 readings");
  EXPECT_EQ(plot.announcements, 2);
  plot.Clear();
  EXPECT_EQ(plot.AccessibleValue(), L"0 readings");
  EXPECT_EQ(plot.announcements, 3);
}
