#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "controls/recorded.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"

using tiltpole::CGraphIncline_Left;
using tiltpole::CGraphIncline_Right;
using tiltpole::RecordingContext;
using tiltpole::Rect;
using tiltpole::Rgb;
using tiltpole::detail::GaugeGeometry;
using tiltpole::detail::kLeftGauge;
using tiltpole::detail::kRightGauge;
using namespace tiltpole_test;

namespace {

// The scale runs over all of the height, here from row 20 to row 200.
constexpr Rect kClient = {0, 20, 100, 200};
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();

// The value in the middle of the scale.
template <typename Gauge>
constexpr double kMiddle = std::is_same_v<Gauge, CGraphIncline_Left> ? 90.0 : 270.0;

class Gauges : public RecordedTest {
 protected:
  template <typename Gauge>
  Lines Face(const Rect& client) {
    Gauge gauge;
    RecordingContext context;
    gauge.DrawBackground(&context, client);
    return context.TakeLines();
  }
  template <typename Gauge>
  Lines PointerAt(double value) {
    Gauge gauge;
    RecordingContext context;
    gauge.DrawBackground(&context, kClient);
    context.TakeLines();
    gauge.DrawPointer(&context, value);
    return context.TakeLines();
  }
  template <typename Gauge>
  Lines MarksOf(Gauge& gauge) {
    RecordingContext context;
    gauge.DrawBackground(&context, kClient);
    context.TakeLines();
    gauge.DrawFixSign(&context);
    return context.TakeLines();
  }
  template <typename Gauge>
  void PaintFirst(Gauge& gauge, tiltpole::Size size = {100, 180}) {
    gauge.Attach(size);
    gauge.PaintIfInvalid();
    recorder.TakeLines();
  }
};

template <typename Gauge>
class EachGauge : public Gauges {};

using BothGauges = ::testing::Types<CGraphIncline_Left, CGraphIncline_Right>;
struct GaugeNames {
  template <typename Gauge>
  static std::string GetName(int index) {
    return index == 0 ? "Left" : "Right";
  }
};
TYPED_TEST_SUITE(EachGauge, BothGauges, GaugeNames);

}  // namespace

TEST(GaugeGeometry, AClientAreaOf100PixelsHasItsScaleFrom20To80) {
  const GaugeGeometry gauge = GaugeGeometry::In({0, 0, 100, 180});
  EXPECT_EQ(gauge.outer, (Rect{0, 0, 100, 180}));
  EXPECT_EQ(gauge.middle, (Rect{5, 0, 95, 180}));
  EXPECT_EQ(gauge.scale, (Rect{20, 0, 80, 180}));
}

TEST(GaugeGeometry, AWindowUnder40PixelsHasTheSidesOfTheScaleExchanged) {
  EXPECT_EQ(GaugeGeometry::In({0, 0, 4, 4}).scale, (Rect{20, 0, -16, 4}));
}

TEST(GaugeGeometry, TheLeftGaugeRisesFromBottomToTop) {
  const GaugeGeometry gauge = GaugeGeometry::In(kClient);
  EXPECT_EQ(gauge.ValueRow(kLeftGauge, 0.0), 200);
  EXPECT_EQ(gauge.ValueRow(kLeftGauge, 90.0), 110);
  EXPECT_EQ(gauge.ValueRow(kLeftGauge, 180.0), 20);
}

TEST(GaugeGeometry, TheRightGaugeDescendsFromTopToBottom) {
  const GaugeGeometry gauge = GaugeGeometry::In(kClient);
  EXPECT_EQ(gauge.ValueRow(kRightGauge, 180.0), 20);
  EXPECT_EQ(gauge.ValueRow(kRightGauge, 270.0), 110);
  EXPECT_EQ(gauge.ValueRow(kRightGauge, 360.0), 200);
}

TEST(GaugeGeometry, RowsAreRoundedByAddingOneHalf) {
  const GaugeGeometry gauge = GaugeGeometry::In(kClient);
  EXPECT_EQ(gauge.ValueRow(kLeftGauge, 0.5), 200);
  EXPECT_EQ(gauge.ValueRow(kLeftGauge, 0.51), 199);
  EXPECT_EQ(gauge.ValueRow(kRightGauge, 180.5), 21);
  EXPECT_EQ(gauge.ValueRow(kRightGauge, 180.49), 20);
}

TEST(GaugeGeometry, AValueThatIsNotANumberStandsInRow0) {
  const GaugeGeometry gauge = GaugeGeometry::In(kClient);
  EXPECT_EQ(gauge.ValueRow(kLeftGauge, kNaN), 0);
  EXPECT_EQ(gauge.ValueRow(kRightGauge, kNaN), 0);
}

TEST(GaugeGeometry, ValuesFarBeyondTheRangeStandAtTheEndsOfTheInts) {
  const GaugeGeometry gauge = GaugeGeometry::In(kClient);
  EXPECT_EQ(gauge.ValueRow(kLeftGauge, 1e300), kMin);
  EXPECT_EQ(gauge.ValueRow(kLeftGauge, -kInfinity), kMax);
  EXPECT_EQ(gauge.ValueRow(kRightGauge, 1e300), kMax);
  EXPECT_EQ(gauge.ValueRow(kRightGauge, -kInfinity), kMin);
}

TEST(GaugeGeometry, AScaleOfAnyHeightHasRowsForAllMarks) {
  const GaugeGeometry gauge = GaugeGeometry::In({0, kMin, 100, kMax});
  EXPECT_EQ(gauge.MarkRow(kLeftGauge, 180), 0);
  EXPECT_EQ(gauge.MarkRow(kRightGauge, kMin), kMin);
  EXPECT_EQ(GaugeGeometry::In({0, 0, 100, kMax}).MarkRow(kLeftGauge, 180), 0);
  EXPECT_EQ(GaugeGeometry::In({0, 0, 100, kMax}).MarkRow(kRightGauge, 360), kMax);
}

TEST(GaugeGeometry, EveryBoxOfIntsHasTicks) {
  const GaugeGeometry gauge = GaugeGeometry::In({kMax, kMax, kMin, kMin});
  EXPECT_EQ(gauge.scale.left, kMax);
  EXPECT_EQ(gauge.LabelBox(kMax).bottom, kMax);
  EXPECT_EQ(GaugeGeometry::In({0, kMin, 10, kMax}).TickRow(9), 1073741824);
}

TEST(GaugeGeometry, LabelsSayTheAngleToTheNearerEnd) {
  EXPECT_EQ(tiltpole::detail::GaugeLabel(3), 30);
  EXPECT_EQ(tiltpole::detail::GaugeLabel(6), 60);
  EXPECT_EQ(tiltpole::detail::GaugeLabel(9), 90);
  EXPECT_EQ(tiltpole::detail::GaugeLabel(12), 60);
  EXPECT_EQ(tiltpole::detail::GaugeLabel(15), 30);
}

RC_GTEST_PROP(GaugeGeometry, AMarkStandsWhereItsValueDoes, ()) {
  const int height = *rc::gen::inRange(0, 3000);
  const int value = *rc::gen::inRange(0, 181);
  const GaugeGeometry gauge = GaugeGeometry::In({0, 0, 100, height});
  RC_ASSERT(gauge.MarkRow(kLeftGauge, value) == gauge.ValueRow(kLeftGauge, value));
  RC_ASSERT(gauge.MarkRow(kRightGauge, value + 180) == gauge.ValueRow(kRightGauge, value + 180));
}

RC_GTEST_PROP(GaugeGeometry, TheTwoGaugesMirrorEachOther, ()) {
  const int height = *rc::gen::inRange(0, 3000);
  const int value = *rc::gen::inRange(0, 181);
  const GaugeGeometry gauge = GaugeGeometry::In({0, 0, 100, height});
  const int left = gauge.ValueRow(kLeftGauge, value);
  const int right = gauge.ValueRow(kRightGauge, 360.0 - value);
  RC_ASSERT(std::abs(left - right) <= 1);
}

RC_GTEST_PROP(GaugeGeometry, AllValuesOfTheRangeStandOnTheScale, ()) {
  const int height = *rc::gen::inRange(0, 3000);
  const double share = *rc::gen::inRange(0, 1001) / 1000.0;
  const GaugeGeometry gauge = GaugeGeometry::In({0, 0, 100, height});
  const int row = gauge.ValueRow(kLeftGauge, 180.0 * share);
  RC_ASSERT(row >= 0);
  RC_ASSERT(row <= height);
}

TEST_F(Gauges, DrawTheirFaceOnAScaleOf180Rows) {
  const Lines expected = Block(R"(
fill (0,20,100,200) RGB(102,255,255)
brush RGB(204,255,102)
pen solid 2 RGB(0,153,255)
rectangle (0,20,100,200)
pen solid 2 RGB(255,204,0)
rectangle (5,20,95,200)
pen solid 2 RGB(0,153,255)
rectangle (20,20,80,200)
pen solid 2 RGB(255,0,255)
font Tahoma height 18 weight 700 family 0
background transparent
text colour RGB(0,0,255)
line (20,190)-(25,190)
line (75,190)-(80,190)
line (20,180)-(25,180)
line (75,180)-(80,180)
line (20,170)-(30,170)
line (70,170)-(80,170)
text "30" centred in (30,161,64,195)
line (20,160)-(25,160)
line (75,160)-(80,160)
line (20,150)-(25,150)
line (75,150)-(80,150)
line (20,140)-(30,140)
line (70,140)-(80,140)
text "60" centred in (30,131,64,165)
line (20,130)-(25,130)
line (75,130)-(80,130)
line (20,120)-(25,120)
line (75,120)-(80,120)
line (20,110)-(30,110)
line (70,110)-(80,110)
text "90" centred in (30,101,64,135)
line (20,100)-(25,100)
line (75,100)-(80,100)
line (20,90)-(25,90)
line (75,90)-(80,90)
line (20,80)-(30,80)
line (70,80)-(80,80)
text "60" centred in (30,71,64,105)
line (20,70)-(25,70)
line (75,70)-(80,70)
line (20,60)-(25,60)
line (75,60)-(80,60)
line (20,50)-(30,50)
line (70,50)-(80,50)
text "30" centred in (30,41,64,75)
line (20,40)-(25,40)
line (75,40)-(80,40)
line (20,30)-(25,30)
line (75,30)-(80,30)
font of the system
pen solid 1 RGB(0,0,0)
brush RGB(255,255,255)
)");
  EXPECT_EQ(Face<CGraphIncline_Left>(kClient), expected);
  EXPECT_EQ(Face<CGraphIncline_Right>(kClient), expected);
}

TEST_F(Gauges, DrawTheirFaceInAnOddClientArea) {
  const Lines expected = Block(R"(
fill (0,0,61,155) RGB(102,255,255)
brush RGB(204,255,102)
pen solid 2 RGB(0,153,255)
rectangle (0,0,61,155)
pen solid 2 RGB(255,204,0)
rectangle (5,0,56,155)
pen solid 2 RGB(0,153,255)
rectangle (20,0,41,155)
pen solid 2 RGB(255,0,255)
font Tahoma height 18 weight 700 family 0
background transparent
text colour RGB(0,0,255)
line (20,146)-(25,146)
line (36,146)-(41,146)
line (20,138)-(25,138)
line (36,138)-(41,138)
line (20,129)-(30,129)
line (31,129)-(41,129)
text "30" centred in (30,120,64,154)
line (20,121)-(25,121)
line (36,121)-(41,121)
line (20,112)-(25,112)
line (36,112)-(41,112)
line (20,103)-(30,103)
line (31,103)-(41,103)
text "60" centred in (30,94,64,128)
line (20,95)-(25,95)
line (36,95)-(41,95)
line (20,86)-(25,86)
line (36,86)-(41,86)
line (20,78)-(30,78)
line (31,78)-(41,78)
text "90" centred in (30,69,64,103)
line (20,69)-(25,69)
line (36,69)-(41,69)
line (20,60)-(25,60)
line (36,60)-(41,60)
line (20,52)-(30,52)
line (31,52)-(41,52)
text "60" centred in (30,43,64,77)
line (20,43)-(25,43)
line (36,43)-(41,43)
line (20,34)-(25,34)
line (36,34)-(41,34)
line (20,26)-(30,26)
line (31,26)-(41,26)
text "30" centred in (30,17,64,51)
line (20,17)-(25,17)
line (36,17)-(41,17)
line (20,9)-(25,9)
line (36,9)-(41,9)
font of the system
pen solid 1 RGB(0,0,0)
brush RGB(255,255,255)
)");
  EXPECT_EQ(Face<CGraphIncline_Left>({0, 0, 61, 155}), expected);
  EXPECT_EQ(Face<CGraphIncline_Right>({0, 0, 61, 155}), expected);
}

TEST_F(Gauges, DrawTheirFaceInTheSmallestClientAreas) {
  EXPECT_EQ(With("rectangle", Face<CGraphIncline_Left>({0, 0, 4, 4})),
            (Lines{"rectangle (0,0,4,4)", "rectangle (5,0,-1,4)", "rectangle (20,0,-16,4)"}));
  EXPECT_EQ(With("rectangle", Face<CGraphIncline_Right>({0, 0, 1, 1})),
            (Lines{"rectangle (0,0,1,1)", "rectangle (5,0,-4,1)", "rectangle (20,0,-19,1)"}));
  EXPECT_EQ(With("rectangle", Face<CGraphIncline_Left>({0, 0, 0, 0})),
            (Lines{"rectangle (0,0,0,0)", "rectangle (5,0,-5,0)", "rectangle (20,0,-20,0)"}));
}

TEST_F(Gauges, DrawTheFaceInAWideClientArea) {
  EXPECT_EQ(With("rectangle", Face<CGraphIncline_Right>({0, 0, 640, 60})),
            (Lines{"rectangle (0,0,640,60)", "rectangle (5,0,635,60)", "rectangle (20,0,620,60)"}));
}

TEST_F(Gauges, DrawAValueAsARedLineAcrossTheScale) {
  EXPECT_EQ(PointerAt<CGraphIncline_Left>(90.0), Block(R"(
pen solid 2 RGB(255,0,0)
line (20,110)-(80,110)
pen solid 1 RGB(0,0,0)
)"));
  EXPECT_EQ(PointerAt<CGraphIncline_Right>(360.0), Block(R"(
pen solid 2 RGB(255,0,0)
line (20,200)-(80,200)
pen solid 1 RGB(0,0,0)
)"));
}

TEST_F(Gauges, DrawPointerTakesValuesOutsideOfTheRangeToo) {
  EXPECT_EQ(PointerAt<CGraphIncline_Left>(-90.0)[1], "line (20,290)-(80,290)");
  EXPECT_EQ(PointerAt<CGraphIncline_Right>(0.0)[1], "line (20,-159)-(80,-159)");
  EXPECT_EQ(PointerAt<CGraphIncline_Left>(kNaN)[1], "line (20,0)-(80,0)");
  EXPECT_EQ(PointerAt<CGraphIncline_Left>(kInfinity)[1], "line (20,-2147483648)-(80,-2147483648)");
}

TEST_F(Gauges, TheLeftOneAccepts0To180) {
  CGraphIncline_Left gauge;
  gauge.SetValue(180.0);
  EXPECT_EQ(gauge.GetValue(), 180.0);
  gauge.SetValue(0.0);
  EXPECT_EQ(gauge.GetValue(), 0.0);
}

TEST_F(Gauges, TheRightOneAccepts180To360) {
  CGraphIncline_Right gauge;
  gauge.SetValue(180.0);
  EXPECT_EQ(gauge.GetValue(), 180.0);
  gauge.SetValue(360.0);
  EXPECT_EQ(gauge.GetValue(), 360.0);
}

TEST_F(Gauges, TheLeftOneIgnoresAValueOutsideOfItsRangeEntirely) {
  CGraphIncline_Left gauge;
  PaintFirst(gauge);
  gauge.SetValue(45.0);
  recorder.TakeLines();
  for (const double value : {180.5, -0.001, kNaN, kInfinity, -kInfinity, 1e300}) {
    gauge.SetValue(value);
    EXPECT_EQ(gauge.GetValue(), 45.0);
  }
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Gauges, TheRightOneIgnoresAValueOutsideOfItsRangeEntirely) {
  CGraphIncline_Right gauge;
  PaintFirst(gauge);
  gauge.SetValue(200.0);
  recorder.TakeLines();
  for (const double value : {179.9, 360.1, 0.0, kNaN, kInfinity, -1e300}) {
    gauge.SetValue(value);
    EXPECT_EQ(gauge.GetValue(), 200.0);
  }
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Gauges, BothStartAt0WhichTheRightOneDoesNotAccept) {
  EXPECT_EQ(CGraphIncline_Left().GetValue(), 0.0);
  EXPECT_EQ(CGraphIncline_Right().GetValue(), 0.0);
}

TEST_F(Gauges, BothShow180AtTheTop) {
  EXPECT_EQ(PointerAt<CGraphIncline_Left>(180.0)[1], "line (20,20)-(80,20)");
  EXPECT_EQ(PointerAt<CGraphIncline_Right>(180.0)[1], "line (20,20)-(80,20)");
}

TEST_F(Gauges, ANewValueIsShownAtOnceInOneCopy) {
  CGraphIncline_Left gauge;
  PaintFirst(gauge);
  gauge.SetFix(180);
  recorder.TakeLines();
  gauge.SetValue(90.0);
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
window: take context
window: create memory 3
window: create bitmap 3 of 100x180
memory 3: select bitmap 3
memory 3: copy to (0,0,100,180) from memory 1 (0,0)
memory 3: pen solid 2 RGB(255,0,0)
memory 3: line (20,90)-(80,90)
memory 3: pen solid 1 RGB(0,0,0)
memory 3: pen solid 3 RGB(0,255,0)
memory 3: line (5,0)-(20,0)
memory 3: pen solid 1 RGB(0,0,0)
window: copy to (0,0,100,180) from memory 3 (0,0)
memory 3: select own bitmap
delete memory 3
delete bitmap 3
window: release context
)"));
  EXPECT_FALSE(gauge.IsInvalid());
}

TEST_F(Gauges, AValueBeforeTheFirstPaintIsOnlyKept) {
  CGraphIncline_Right gauge;
  gauge.Attach({100, 180});
  gauge.SetValue(270.0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  gauge.PaintIfInvalid();
  EXPECT_EQ(With("(20,90)-(80,90)", recorder.TakeLines()).size(), 1U);
}

TEST_F(Gauges, AMarkAt90OnTheLeftOneRunsAcrossTheBandLeftOfTheScale) {
  CGraphIncline_Left gauge;
  gauge.SetFix(90);
  EXPECT_EQ(MarksOf(gauge), Block(R"(
pen solid 3 RGB(0,255,0)
line (5,110)-(20,110)
pen solid 1 RGB(0,0,0)
)"));
}

TEST_F(Gauges, MarksOnTheRightOneDescend) {
  CGraphIncline_Right gauge;
  gauge.SetFix(360);
  gauge.SetFix(180);
  gauge.SetFix(225);
  EXPECT_EQ(With("line", MarksOf(gauge)),
            (Lines{"line (5,200)-(20,200)", "line (5,20)-(20,20)", "line (5,65)-(20,65)"}));
}

TEST_F(Gauges, AMarkOutsideOfTheRangeIsNeitherKeptNorDrawn) {
  CGraphIncline_Left left;
  CGraphIncline_Right right;
  PaintFirst(left);
  PaintFirst(right);
  left.SetFix(181);
  left.SetFix(-1);
  left.SetFix(kMax);
  right.SetFix(179);
  right.SetFix(361);
  right.SetFix(kMin);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  EXPECT_EQ(With("line", MarksOf(left)), Lines{});
  EXPECT_EQ(With("line", MarksOf(right)), Lines{});
}

TEST_F(Gauges, ANewMarkIsDrawnAloneOntoTheWindow) {
  CGraphIncline_Left gauge;
  PaintFirst(gauge);
  gauge.SetFix(0);
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
window: take context
window: pen solid 3 RGB(0,255,0)
window: line (5,180)-(20,180)
window: pen solid 1 RGB(0,0,0)
window: release context
)"));
  gauge.SetFix(0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Gauges, ClearFixRemovesTheMarksAndInvalidatesWithoutErasing) {
  CGraphIncline_Right gauge;
  PaintFirst(gauge);
  gauge.SetFix(270);
  recorder.TakeLines();
  gauge.ClearFix();
  EXPECT_EQ(recorder.TakeLines(), Lines{"window: invalidate without erase"});
  EXPECT_EQ(With("line", MarksOf(gauge)), Lines{});
}

TEST_F(Gauges, TheLeftOneForgetsItsMarksToo) {
  CGraphIncline_Left gauge;
  PaintFirst(gauge);
  gauge.SetFix(90);
  gauge.ClearFix();
  EXPECT_EQ(With("line", MarksOf(gauge)), Lines{});
}

TYPED_TEST(EachGauge, ANewBackColourBringsANewFaceInThatColour) {
  TypeParam gauge;
  this->PaintFirst(gauge);
  gauge.SetMeterBackColor(Rgb(9, 8, 7));
  EXPECT_EQ(gauge.GetMeterBackColor(), Rgb(9, 8, 7));
  EXPECT_EQ(this->recorder.TakeLines(), Block(R"(
memory 1: select own bitmap
delete memory 1
delete bitmap 1
window: invalidate with erase
)"));
  gauge.PaintIfInvalid();
  EXPECT_EQ(With("fill", this->recorder.TakeLines()),
            Lines{"memory 3: fill (0,0,100,180) RGB(9,8,7)"});
}

TYPED_TEST(EachGauge, AResizedOneKeepsItsFramesUntilReconstructControl) {
  TypeParam gauge;
  this->PaintFirst(gauge);
  gauge.SetValue(kMiddle<TypeParam>);
  gauge.Resize({100, 360});
  gauge.OnPaint();
  EXPECT_EQ(With("(20,90)-(80,90)", this->recorder.TakeLines()).size(), 2U);
  gauge.ReconstructControl();
  gauge.PaintIfInvalid();
  EXPECT_EQ(With("line (20,180)-(80,180)", this->recorder.TakeLines()).size(), 1U);
}

TEST_F(Gauges, EraseNothingAndAddTheirStyleBit) {
  CGraphIncline_Left left;
  CGraphIncline_Right right;
  left.AddStyle(0x50000000);
  left.Attach({100, 180});
  right.Attach({100, 180});
  EXPECT_EQ(left.OnEraseBkgnd(nullptr), 0);
  EXPECT_EQ(right.OnEraseBkgnd(nullptr), 0);
  EXPECT_EQ(left.GetStyle(), 0x50004000U);
  EXPECT_EQ(right.GetStyle(), 0x4000U);
}

TEST_F(Gauges, DrawNothingWithoutAContext) {
  CGraphIncline_Left gauge;
  gauge.SetFix(30);
  gauge.DrawBackground(nullptr, kClient);
  gauge.DrawPointer(nullptr, 10.0);
  gauge.DrawFixSign(nullptr);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Gauges, WithoutAContextFromTheWindowValueAndMarksAreOnlyKept) {
  CGraphIncline_Left gauge;
  PaintFirst(gauge);
  gauge.gives_contexts = false;
  gauge.SetValue(90.0);
  gauge.SetFix(90);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  EXPECT_EQ(gauge.GetValue(), 90.0);
  EXPECT_EQ(With("line", MarksOf(gauge)), Lines{"line (5,110)-(20,110)"});
}

TEST_F(Gauges, TellScreenReadersTheirValue) {
  CGraphIncline_Left left;
  CGraphIncline_Right right;
  left.SetValue(12.34);
  EXPECT_EQ(left.AccessibleName(), L"Inclination, 0 to 180 degrees");
  EXPECT_EQ(left.AccessibleValue(), L"12.3 degrees");
  right.SetValue(192.34);
  EXPECT_EQ(right.AccessibleName(), L"Inclination, 180 to 360 degrees");
  EXPECT_EQ(right.AccessibleValue(), L"192.3 degrees");
}

TYPED_TEST(EachGauge, TellsScreenReadersOfEachValueThatItAccepts) {
  TypeParam gauge;
  gauge.SetValue(kMiddle<TypeParam>);
  EXPECT_EQ(gauge.announcements, 1);
  gauge.SetValue(1000.0);
  EXPECT_EQ(gauge.announcements, 1);
}

TEST_F(Gauges, TenThousandUpdatesLeaveOneContextAndOneBitmap) {
  CGraphIncline_Right gauge;
  PaintFirst(gauge);
  recorder.keeps_lines = false;
  for (int i = 0; i < 10000; ++i) {
    gauge.SetValue(180.0 + i * 0.018);
    gauge.OnPaint();
  }
  EXPECT_EQ(recorder.living_contexts, 1);
  EXPECT_EQ(recorder.living_bitmaps, 1);
}

RC_GTEST_FIXTURE_PROP(Gauges, EverySequenceOfCallsReleasesWhatItTakes, ()) {
  recorder.Reset();
  {
    CGraphIncline_Right gauge;
    const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 7));
    for (const int step : steps) {
      if (step == 0) gauge.Attach({*rc::gen::inRange(0, 300), *rc::gen::inRange(0, 300)});
      if (step == 1) gauge.PaintIfInvalid();
      if (step == 2) gauge.SetValue(*rc::gen::inRange(100, 400));
      if (step == 3) gauge.SetFix(*rc::gen::inRange(100, 400));
      if (step == 4) gauge.ReconstructControl();
      if (step == 5) recorder.has_resources = !recorder.has_resources;
      if (step == 6) gauge.gives_contexts = !gauge.gives_contexts;
      RC_ASSERT(recorder.living_contexts <= 1);
      RC_ASSERT(recorder.living_bitmaps <= 1);
      RC_ASSERT(recorder.taken_contexts == 0);
    }
  }
  RC_ASSERT(recorder.living_contexts == 0);
  RC_ASSERT(recorder.living_bitmaps == 0);
  RC_ASSERT(recorder.misuses.empty());
}
