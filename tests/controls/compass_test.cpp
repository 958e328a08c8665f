#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "controls/recorded.h"
#include "tiltpole/controls/CGraphCompass.h"

using tiltpole::CGraphCompass;
using tiltpole::Point;
using tiltpole::RecordingContext;
using tiltpole::Rect;
using tiltpole::Rgb;
using tiltpole::detail::CompassGeometry;
using tiltpole::detail::CompassNeedle;
using namespace tiltpole_test;

namespace {

constexpr Rect kClient = {0, 0, 205, 155};
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class Compass : public RecordedTest {
 protected:
  /// The drawing of needle or face into a context of the test.
  Lines Face(CGraphCompass& compass, const Rect& client) {
    RecordingContext context;
    compass.DrawBackground(&context, client);
    return context.TakeLines();
  }
  Lines NeedleAt(double heading) {
    CGraphCompass compass;
    RecordingContext context;
    compass.DrawBackground(&context, kClient);
    context.TakeLines();
    compass.DrawPointer(&context, heading);
    return context.TakeLines();
  }
  /// A compass that has been painted once.
  void PaintFirst(CGraphCompass& compass, tiltpole::Size size = {205, 155}) {
    compass.Attach(size);
    compass.PaintIfInvalid();
    recorder.TakeLines();
  }
};

}  // namespace

TEST(CompassGeometry, A205By155ClientAreaGivesTheMeasuresOfTheDial) {
  const CompassGeometry dial = CompassGeometry::In(kClient);
  EXPECT_EQ(dial.center, (Point{102, 77}));
  EXPECT_EQ(dial.size, 150);
  EXPECT_EQ(dial.needle_unit, 2);
  EXPECT_EQ(dial.outer, 75);
  EXPECT_EQ(dial.middle, 72);
  EXPECT_EQ(dial.inner, 66);
  EXPECT_EQ(dial.TickLength(), 5.0);
}

TEST(CompassGeometry, LabelsStandOnRadius31InA205By155ClientArea) {
  const CompassGeometry dial = CompassGeometry::In(kClient);
  EXPECT_EQ(dial.LabelBox(0), (Rect{102 - 17, 77 - 31 - 17, 102 + 17, 77 - 31 + 17}));
  EXPECT_EQ(dial.LabelBox(9), (Rect{102 + 31 - 17, 77 - 17, 102 + 31 + 17, 77 + 17}));
  EXPECT_EQ(dial.LabelBox(18), (Rect{102 - 17, 77 + 31 - 17, 102 + 17, 77 + 31 + 17}));
  EXPECT_EQ(dial.LabelBox(27), (Rect{102 - 31 - 17, 77 - 17, 102 - 31 + 17, 77 + 17}));
}

TEST(CompassGeometry, TheSmallerSideGivesTheDialItsSize) {
  EXPECT_EQ(CompassGeometry::In({0, 0, 641, 200}).size, 195);
  EXPECT_EQ(CompassGeometry::In({0, 0, 200, 641}).size, 195);
  EXPECT_EQ(CompassGeometry::In({0, 0, 200, 200}).size, 195);
}

TEST(CompassGeometry, ASmallerSideUnderFivePixelsGivesANegativeSize) {
  EXPECT_EQ(CompassGeometry::In({0, 0, 4, 4}).size, -1);
  EXPECT_EQ(CompassGeometry::In({0, 0, 1, 1}).size, -4);
  EXPECT_EQ(CompassGeometry::In({0, 0, 0, 0}).size, -5);
  EXPECT_EQ(CompassGeometry::In({0, 0, 0, 0}).outer, -2);
}

TEST(CompassGeometry, ALargeDialKeepsTheProportions) {
  const CompassGeometry dial = CompassGeometry::In({0, 0, 2005, 2005});
  EXPECT_EQ(dial.outer, 1000);
  EXPECT_EQ(dial.middle, 960);
  EXPECT_EQ(dial.inner, 875);
  EXPECT_EQ(dial.needle_unit, 33);
}

TEST(CompassGeometry, TicksWithoutALabelAreHalfAsLong) {
  const CompassGeometry dial = CompassGeometry::In({0, 0, 2005, 2005});
  EXPECT_EQ(dial.TickEnd(0), (Point{1002, 1002 - 875 + 67}));
  EXPECT_EQ(dial.TickStart(1), (Point{1154, 140}));
  EXPECT_EQ(dial.TickEnd(1), (Point{1148, 173}));
}

TEST(CompassGeometry, ThirdsOfTheDialAreNotTruncated) {
  EXPECT_EQ(CompassGeometry::In({0, 0, 205, 157}).Needle(0.0).tip, (Point{102, 27}));
  EXPECT_EQ(CompassGeometry::In({0, 0, 205, 157}).Needle(90.0).tip, (Point{153, 78}));
}

TEST(CompassGeometry, SixthsOfTheDialAreNotTruncated) {
  EXPECT_EQ(CompassGeometry::In({0, 0, 205, 158}).Needle(0.0).tail, (Point{102, 105}));
  EXPECT_EQ(CompassGeometry::In({0, 0, 205, 158}).Needle(270.0).tail, (Point{128, 79}));
}

TEST(CompassGeometry, TickLengthIsPositiveInTheSmallestWindowsToo) {
  EXPECT_EQ(CompassGeometry::In({0, 0, 0, 0}).TickLength(), 5 / 30.0);
}

TEST(CompassGeometry, Heading0PutsTheTipAThirdAboveAndTheTailASixthBelowTheCentre) {
  const CompassNeedle needle = CompassGeometry::In(kClient).Needle(0.0);
  EXPECT_EQ(needle.tip, (Point{102, 77 - 50}));
  EXPECT_EQ(needle.tail, (Point{102, 77 + 25}));
  EXPECT_EQ(needle.side_a, (Point{98, 77}));
  EXPECT_EQ(needle.side_b, (Point{107, 77}));
}

TEST(CompassGeometry, Heading90PutsTheTipToTheRight) {
  const CompassNeedle needle = CompassGeometry::In(kClient).Needle(90.0);
  EXPECT_EQ(needle.tip, (Point{152, 77}));
  EXPECT_EQ(needle.tail, (Point{77, 77}));
  EXPECT_EQ(needle.side_a, (Point{102, 73}));
  EXPECT_EQ(needle.side_b, (Point{102, 82}));
}

TEST(CompassGeometry, ANeedleBetweenTheAxes) {
  const CompassNeedle needle = CompassGeometry::In({0, 0, 641, 200}).Needle(123.4);
  EXPECT_EQ(needle.side_a, (Point{324, 94}));
  EXPECT_EQ(needle.tip, (Point{374, 136}));
  EXPECT_EQ(needle.side_b, (Point{316, 106}));
  EXPECT_EQ(needle.tail, (Point{293, 82}));
}

TEST(CompassGeometry, ADialUnder60PixelsHasANeedleWithoutBreadth) {
  const CompassNeedle needle = CompassGeometry::In({0, 0, 33, 32}).Needle(77.0);
  EXPECT_EQ(needle.side_a, (Point{16, 16}));
  EXPECT_EQ(needle.side_b, (Point{16, 16}));
  EXPECT_EQ(needle.tip, (Point{25, 14}));
}

TEST(CompassGeometry, AHeadingThatIsNoNumberPutsAllCornersAtTheWindowsCorner) {
  for (const double heading : {kNaN, kInfinity, -kInfinity}) {
    const CompassNeedle needle = CompassGeometry::In(kClient).Needle(heading);
    EXPECT_EQ(needle.tip, (Point{0, 0}));
    EXPECT_EQ(needle.tail, (Point{0, 0}));
    EXPECT_EQ(needle.side_a, (Point{0, 0}));
    EXPECT_EQ(needle.side_b, (Point{0, 0}));
  }
}

TEST(CompassGeometry, AnyBoxOfIntsHasADial) {
  constexpr int kMin = std::numeric_limits<int>::min();
  constexpr int kMax = std::numeric_limits<int>::max();
  const CompassGeometry dial = CompassGeometry::In({kMin, kMin, kMax, kMax});
  EXPECT_EQ(dial.size, kMax - 5);
  EXPECT_EQ(dial.center, (Point{0, 0}));
  EXPECT_EQ(CompassGeometry::In({kMax, kMax, kMin, kMin}).size, kMin);
}

RC_GTEST_PROP(CompassGeometry, BearingsRunClockwiseFromTheTop, ()) {
  const int width = *rc::gen::inRange(0, 2000);
  const int height = *rc::gen::inRange(0, 2000);
  const int bearing = *rc::gen::inRange(-1000, 1000);
  const CompassGeometry dial = CompassGeometry::In({0, 0, width, height});
  const double theta = std::fmod(bearing, 360.0) * std::acos(-1.0) / 180.0;
  const Point mark = dial.MarkStart(bearing);
  // Half a pixel of rounding; a negative coordinate rounds upwards by up to one.
  RC_ASSERT(std::fabs(mark.x - (dial.center.x + dial.middle * std::sin(theta))) <= 1.0001);
  RC_ASSERT(std::fabs(mark.y - (dial.center.y - dial.middle * std::cos(theta))) <= 1.0001);
}

RC_GTEST_PROP(CompassGeometry, TheNeedleStaysInsideOfTheDial, ()) {
  const int width = *rc::gen::inRange(5, 2000);
  const int height = *rc::gen::inRange(5, 2000);
  const double heading = *rc::gen::arbitrary<double>();
  const CompassGeometry dial = CompassGeometry::In({0, 0, width, height});
  const CompassNeedle needle = dial.Needle(heading);
  for (const Point corner : {needle.tip, needle.tail, needle.side_a, needle.side_b}) {
    RC_ASSERT((Rect{0, 0, width, height}).Contains(corner));
  }
}

RC_GTEST_PROP(CompassGeometry, OppositeHeadingsExchangeTheSides, ()) {
  const int heading = *rc::gen::inRange(0, 180);
  const CompassGeometry dial = CompassGeometry::In(kClient);
  const CompassNeedle there = dial.Needle(heading);
  const CompassNeedle back = dial.Needle(heading + 180);
  RC_ASSERT(std::abs(there.side_a.x - back.side_b.x) <= 1);
  RC_ASSERT(std::abs(there.side_a.y - back.side_b.y) <= 1);
}

TEST_F(Compass, DrawsItsFaceInA205By155ClientArea) {
  CGraphCompass compass;
  EXPECT_EQ(Face(compass, kClient), Block(R"(
fill (0,0,205,155) RGB(102,255,255)
brush RGB(204,255,102)
pen solid 2 RGB(0,153,255)
ellipse (27,2,177,152)
pen solid 2 RGB(255,204,0)
ellipse (30,5,174,149)
pen solid 2 RGB(0,153,255)
ellipse (36,11,168,143)
pen solid 2 RGB(255,0,255)
font Tahoma height 18 weight 700 family 0
background transparent
text colour RGB(0,0,255)
line (102,11)-(102,16)
text "0" centred in (85,29,119,63)
line (113,12)-(113,14)
line (125,15)-(124,17)
line (135,20)-(133,24)
text "30" centred in (101,33,135,67)
line (144,26)-(143,28)
line (153,35)-(151,36)
line (159,44)-(155,47)
text "60" centred in (112,45,146,79)
line (164,54)-(162,55)
line (167,66)-(165,66)
line (168,77)-(163,77)
text "90" centred in (116,60,150,94)
line (167,88)-(165,88)
line (164,100)-(162,99)
line (159,110)-(155,108)
text "120" centred in (112,76,146,110)
line (153,119)-(151,118)
line (144,128)-(143,126)
line (135,134)-(133,130)
text "150" centred in (101,87,135,121)
line (125,139)-(124,137)
line (113,142)-(113,140)
line (102,143)-(102,138)
text "180" centred in (85,91,119,125)
line (91,142)-(91,140)
line (79,139)-(80,137)
line (69,134)-(72,130)
text "210" centred in (70,87,104,121)
line (60,128)-(61,126)
line (51,119)-(53,118)
line (45,110)-(49,108)
text "240" centred in (58,76,92,110)
line (40,100)-(42,99)
line (37,88)-(39,88)
line (36,77)-(41,77)
text "270" centred in (54,60,88,94)
line (37,66)-(39,66)
line (40,54)-(42,55)
line (45,44)-(49,47)
text "300" centred in (58,45,92,79)
line (51,35)-(53,36)
line (60,26)-(61,28)
line (69,20)-(72,24)
text "330" centred in (70,33,104,67)
line (79,15)-(80,17)
line (91,12)-(91,14)
font of the system
pen solid 1 RGB(0,0,0)
brush RGB(255,255,255)
)"));
}

TEST_F(Compass, DrawsDegenerateCirclesInAClientAreaOf0By0) {
  CGraphCompass compass;
  const Lines face = Face(compass, {0, 0, 0, 0});
  EXPECT_EQ(With("fill", face), Lines{"fill (0,0,0,0) RGB(102,255,255)"});
  EXPECT_EQ(With("ellipse", face),
            (Lines{"ellipse (2,2,-2,-2)", "ellipse (1,1,-1,-1)", "ellipse (1,1,-1,-1)"}));
}

TEST_F(Compass, DrawsDegenerateCirclesInAClientAreaOf4By4) {
  CGraphCompass compass;
  const Lines face = Face(compass, {0, 0, 4, 4});
  EXPECT_EQ(With("ellipse", face),
            (Lines{"ellipse (2,2,2,2)", "ellipse (2,2,2,2)", "ellipse (2,2,2,2)"}));
  EXPECT_EQ(With("line", face).size(), 36U);
}

TEST_F(Compass, DrawsItsCirclesInAnOddClientArea) {
  CGraphCompass compass;
  EXPECT_EQ(With("ellipse", Face(compass, {0, 0, 33, 32})),
            (Lines{"ellipse (2,2,30,30)", "ellipse (3,3,29,29)", "ellipse (4,4,28,28)"}));
}

TEST_F(Compass, DrawsItsCirclesInTheMiddleOfAWideClientArea) {
  CGraphCompass compass;
  EXPECT_EQ(
      With("ellipse", Face(compass, {0, 0, 641, 200})),
      (Lines{"ellipse (222,2,418,198)", "ellipse (226,6,414,194)", "ellipse (235,15,405,185)"}));
}

TEST_F(Compass, DrawsTheNeedleAtHeading45) {
  EXPECT_EQ(NeedleAt(45.0), Block(R"(
brush RGB(255,0,0)
pen solid 1 RGB(255,0,0)
polygon (99,74) (137,42) (105,80) (84,95)
pen solid 2 RGB(240,240,240)
line (137,42)-(105,80)
line (105,80)-(84,95)
pen solid 1 RGB(233,87,50)
line (137,42)-(99,74)
line (99,74)-(84,95)
brush RGB(0,0,0)
ellipse (100,75,105,80)
pen solid 1 RGB(0,0,0)
brush RGB(255,255,255)
)"));
}

TEST_F(Compass, Heading90HasTheLightEdgeClockwiseOfTheTip) {
  EXPECT_EQ(NeedleAt(90.0), Block(R"(
brush RGB(255,0,0)
pen solid 1 RGB(255,0,0)
polygon (102,73) (152,77) (102,82) (77,77)
pen solid 2 RGB(240,240,240)
line (152,77)-(102,82)
line (102,82)-(77,77)
pen solid 1 RGB(233,87,50)
line (152,77)-(102,73)
line (102,73)-(77,77)
brush RGB(0,0,0)
ellipse (100,75,105,80)
pen solid 1 RGB(0,0,0)
brush RGB(255,255,255)
)"));
}

TEST_F(Compass, Heading90Point5HasTheLightEdgeOnTheOtherSide) {
  EXPECT_EQ(NeedleAt(90.5), Block(R"(
brush RGB(255,0,0)
pen solid 1 RGB(255,0,0)
polygon (102,73) (152,77) (102,81) (77,77)
pen solid 2 RGB(240,240,240)
line (152,77)-(102,73)
line (102,73)-(77,77)
pen solid 1 RGB(233,87,50)
line (152,77)-(102,81)
line (102,81)-(77,77)
brush RGB(0,0,0)
ellipse (100,75,105,80)
pen solid 1 RGB(0,0,0)
brush RGB(255,255,255)
)"));
}

TEST_F(Compass, TheLightEdgeSwitchesRightAfter90) {
  EXPECT_EQ(NeedleAt(90.0)[4], "line (152,77)-(102,82)");
  EXPECT_EQ(NeedleAt(std::nextafter(90.0, 91.0))[4], "line (152,77)-(102,73)");
}

TEST_F(Compass, TheLightEdgeStaysWhereItIsAt180And270) {
  const CompassGeometry dial = CompassGeometry::In(kClient);
  EXPECT_EQ(dial.Needle(179.0).side_a, (Point{106, 77}));
  EXPECT_EQ(With("-(106,77)", NeedleAt(179.0)).size(), 1U);
  EXPECT_EQ(NeedleAt(179.0)[4], "line (103,127)-(106,77)");
  EXPECT_EQ(dial.Needle(271.0).side_a, (Point{102, 81}));
  EXPECT_EQ(NeedleAt(271.0)[4], "line (52,76)-(102,81)");
}

TEST_F(Compass, Heading450IsPlacedAsHeading90ButLitFromTheOtherSide) {
  const Lines at_90 = NeedleAt(90.0);
  const Lines at_450 = NeedleAt(450.0);
  EXPECT_EQ(at_450[2], at_90[2]);
  EXPECT_EQ(at_450[4], "line (152,77)-(102,73)");
  EXPECT_EQ(at_450[7], "line (152,77)-(102,82)");
}

TEST_F(Compass, ANegativeHeadingIsDrawnAsItIs) {
  EXPECT_EQ(NeedleAt(-270.0)[2], "polygon (102,73) (152,77) (102,82) (77,77)");
  EXPECT_EQ(NeedleAt(-270.0)[4], "line (152,77)-(102,82)");
}

TEST_F(Compass, AHeadingThatIsNotANumberDrawsAtTheWindowsCorner) {
  EXPECT_EQ(NeedleAt(kNaN)[2], "polygon (0,0) (0,0) (0,0) (0,0)");
  EXPECT_EQ(NeedleAt(kInfinity)[2], "polygon (0,0) (0,0) (0,0) (0,0)");
}

TEST_F(Compass, AHugeHeadingDrawsSomeNeedle) {
  EXPECT_EQ(With("polygon", NeedleAt(1e300)).size(), 1U);
  EXPECT_EQ(With("polygon", NeedleAt(-1e300)).size(), 1U);
}

TEST_F(Compass, DrawsNothingWithoutAContext) {
  CGraphCompass compass;
  compass.SetFix(30);
  compass.DrawBackground(nullptr, kClient);
  compass.DrawPointer(nullptr, 10.0);
  compass.DrawFixSign(nullptr);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Compass, StartsAtHeading0WithAPaleBlueBack) {
  const CGraphCompass compass;
  EXPECT_EQ(compass.GetValue(), 0.0);
  EXPECT_EQ(compass.GetMeterBackColor(), Rgb(102, 255, 255));
}

TEST_F(Compass, TheFirstPaintKeepsTheFaceAndShowsTheWholePictureInOneCopy) {
  CGraphCompass compass;
  compass.Attach({205, 155});
  ASSERT_TRUE(compass.PaintIfInvalid());
  EXPECT_EQ(Flow(recorder.TakeLines()), Block(R"(
window: not erased
window: begin paint
window: create memory 1
window: create bitmap 1 of 205x155
memory 1: select bitmap 1
window: create memory 2
window: create bitmap 2 of 205x155
memory 2: select bitmap 2
memory 2: copy to (0,0,205,155) from memory 1 (0,0)
window: copy to (0,0,205,155) from memory 2 (0,0)
memory 2: select own bitmap
delete memory 2
delete bitmap 2
window: end paint
)"));
}

TEST_F(Compass, ALaterPaintDrawsNeedleAndThenMarksOverACopyOfTheFace) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetFix(30);
  recorder.TakeLines();
  compass.OnPaint();
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
window: begin paint
window: create memory 3
window: create bitmap 3 of 205x155
memory 3: select bitmap 3
memory 3: copy to (0,0,205,155) from memory 1 (0,0)
memory 3: brush RGB(255,0,0)
memory 3: pen solid 1 RGB(255,0,0)
memory 3: polygon (98,77) (102,27) (107,77) (102,102)
memory 3: pen solid 2 RGB(240,240,240)
memory 3: line (102,27)-(107,77)
memory 3: line (107,77)-(102,102)
memory 3: pen solid 1 RGB(233,87,50)
memory 3: line (102,27)-(98,77)
memory 3: line (98,77)-(102,102)
memory 3: brush RGB(0,0,0)
memory 3: ellipse (100,75,105,80)
memory 3: pen solid 1 RGB(0,0,0)
memory 3: brush RGB(255,255,255)
memory 3: pen solid 3 RGB(0,255,0)
memory 3: line (138,15)-(135,20)
memory 3: pen solid 1 RGB(0,0,0)
window: copy to (0,0,205,155) from memory 3 (0,0)
memory 3: select own bitmap
delete memory 3
delete bitmap 3
window: end paint
)"));
}

TEST_F(Compass, ANewValueIsShownAtOnceWithoutInvalidatingTheWindow) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetValue(90.0);
  EXPECT_EQ(Flow(recorder.TakeLines()), Block(R"(
window: take context
window: create memory 3
window: create bitmap 3 of 205x155
memory 3: select bitmap 3
memory 3: copy to (0,0,205,155) from memory 1 (0,0)
window: copy to (0,0,205,155) from memory 3 (0,0)
memory 3: select own bitmap
delete memory 3
delete bitmap 3
window: release context
)"));
  EXPECT_FALSE(compass.IsInvalid());
  EXPECT_EQ(compass.GetValue(), 90.0);
}

TEST_F(Compass, AValueBeforeTheFirstPaintIsOnlyKept) {
  CGraphCompass compass;
  compass.SetValue(12.5);
  compass.Attach({205, 155});
  compass.SetValue(90.0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  compass.PaintIfInvalid();
  EXPECT_EQ(With("polygon", recorder.TakeLines()),
            Lines{"memory 2: polygon (102,73) (152,77) (102,82) (77,77)"});
}

TEST_F(Compass, AValueInAWindowWithoutWidthIsOnlyKept) {
  CGraphCompass compass;
  PaintFirst(compass, {0, 155});
  compass.SetValue(90.0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  EXPECT_EQ(compass.GetValue(), 90.0);
}

TEST_F(Compass, AValueInAWindowWithoutHeightIsDrawn) {
  CGraphCompass compass;
  PaintFirst(compass, {205, 0});
  compass.SetValue(90.0);
  EXPECT_EQ(With("polygon", recorder.TakeLines()).size(), 1U);
}

TEST_F(Compass, KeepsAValueThatIsNotANumber) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetValue(kNaN);
  EXPECT_TRUE(std::isnan(compass.GetValue()));
}

TEST_F(Compass, WithoutAContextFromTheWindowValueAndMarksAreOnlyKept) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.gives_contexts = false;
  compass.SetValue(45.0);
  compass.SetFix(30);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  compass.OnPaint();
  const Lines lines = recorder.TakeLines();
  EXPECT_EQ(With("polygon (99,74)", lines).size(), 1U);
  EXPECT_EQ(With("line (138,15)-(135,20)", lines).size(), 1U);
}

TEST_F(Compass, ASystemWithoutResourcesDrawsNothingAndRecovers) {
  CGraphCompass compass;
  compass.Attach({205, 155});
  recorder.has_resources = false;
  compass.OnPaint();
  compass.SetValue(45.0);
  EXPECT_EQ(recorder.TakeLines(), (Lines{"window: begin paint", "window: end paint"}));
  recorder.has_resources = true;
  compass.OnPaint();
  EXPECT_EQ(With("polygon (99,74)", recorder.TakeLines()).size(), 1U);
  recorder.has_resources = false;
  compass.SetValue(90.0);
  EXPECT_EQ(recorder.TakeLines(), (Lines{"window: take context", "window: release context"}));
}

TEST_F(Compass, ASystemWithoutBitmapsDrawsNothingAndRecovers) {
  CGraphCompass compass;
  compass.Attach({205, 155});
  recorder.has_bitmaps = false;
  compass.OnPaint();
  EXPECT_EQ(With("window: copy", recorder.TakeLines()), Lines{});
  EXPECT_EQ(recorder.living_contexts, 0);
  recorder.has_bitmaps = true;
  compass.OnPaint();
  EXPECT_EQ(With("window: copy", recorder.TakeLines()).size(), 1U);
}

TEST_F(Compass, ANewMarkIsDrawnAloneOntoTheWindow) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetFix(30);
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
window: take context
window: pen solid 3 RGB(0,255,0)
window: line (138,15)-(135,20)
window: pen solid 1 RGB(0,0,0)
window: release context
)"));
  EXPECT_FALSE(compass.IsInvalid());
}

TEST_F(Compass, TheSameBearingTwiceIsOneMark) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetFix(30);
  recorder.TakeLines();
  compass.SetFix(30);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
  RecordingContext context;
  compass.DrawFixSign(&context);
  EXPECT_EQ(With("line", context.TakeLines()), Lines{"line (138,15)-(135,20)"});
}

TEST_F(Compass, Minus330And30AreTwoMarksAtOnePlace) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetFix(30);
  compass.SetFix(-330);
  RecordingContext context;
  compass.DrawFixSign(&context);
  EXPECT_EQ(With("line", context.TakeLines()),
            (Lines{"line (138,15)-(135,20)", "line (138,15)-(135,20)"}));
}

TEST_F(Compass, MarksAreDrawnInTheOrderInWhichTheyWereSet) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetFix(90);
  compass.SetFix(0);
  compass.SetFix(45);
  RecordingContext context;
  compass.DrawFixSign(&context);
  EXPECT_EQ(context.TakeLines(), Block(R"(
pen solid 3 RGB(0,255,0)
line (174,77)-(168,77)
line (102,5)-(102,11)
line (153,26)-(149,30)
pen solid 1 RGB(0,0,0)
)"));
}

TEST_F(Compass, AnyIntIsAMark) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetFix(std::numeric_limits<int>::max());
  compass.SetFix(std::numeric_limits<int>::min());
  EXPECT_EQ(With("line", recorder.TakeLines()),
            (Lines{"window: line (160,120)-(155,117)", "window: line (45,121)-(50,118)"}));
}

TEST_F(Compass, ClearFixRemovesTheMarksAndInvalidatesWithoutErasing) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetFix(30);
  recorder.TakeLines();
  compass.ClearFix();
  EXPECT_EQ(recorder.TakeLines(), Lines{"window: invalidate without erase"});
  compass.PaintIfInvalid();
  const Lines lines = recorder.TakeLines();
  EXPECT_EQ(With("line (138,15)-(135,20)", lines), Lines{});
  EXPECT_EQ(With("erased", lines), Lines{});
  compass.SetFix(30);
  EXPECT_EQ(With("line", recorder.TakeLines()).size(), 1U);
}

TEST_F(Compass, ReconstructControlDiscardsTheFaceAndInvalidatesWithErasing) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.ReconstructControl();
  EXPECT_EQ(recorder.TakeLines(), Block(R"(
memory 1: select own bitmap
delete memory 1
delete bitmap 1
window: invalidate with erase
)"));
}

TEST_F(Compass, ReconstructControlBeforeTheFirstPaintOnlyInvalidates) {
  CGraphCompass compass;
  compass.Attach({205, 155});
  compass.ReconstructControl();
  EXPECT_EQ(recorder.TakeLines(), Lines{"window: invalidate with erase"});
}

TEST_F(Compass, AValueAfterReconstructControlWaitsForThePaint) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.ReconstructControl();
  recorder.TakeLines();
  compass.SetValue(45.0);
  EXPECT_EQ(recorder.TakeLines(), Lines{});
}

TEST_F(Compass, ANewBackColourBringsANewFaceInThatColour) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetMeterBackColor(Rgb(1, 2, 3));
  EXPECT_EQ(compass.GetMeterBackColor(), Rgb(1, 2, 3));
  EXPECT_EQ(With("window", recorder.TakeLines()), Lines{"window: invalidate with erase"});
  compass.PaintIfInvalid();
  EXPECT_EQ(With("fill", recorder.TakeLines()), Lines{"memory 3: fill (0,0,205,155) RGB(1,2,3)"});
}

TEST_F(Compass, AChangeOfSizeIsNotNoticedBeforeReconstructControl) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.Resize({305, 305});
  compass.OnPaint();
  Lines lines = recorder.TakeLines();
  EXPECT_EQ(With("polygon", lines).front(),
            "memory 3: polygon (98,77) (102,27) (107,77) (102,102)");
  EXPECT_EQ(With("window: copy", lines),
            Lines{"window: copy to (0,0,305,305) from memory 3 (0,0)"});
  compass.ReconstructControl();
  compass.PaintIfInvalid();
  lines = recorder.TakeLines();
  EXPECT_EQ(With("polygon", lines).front(),
            "memory 5: polygon (141,152) (152,52) (163,152) (152,202)");
}

TEST_F(Compass, OnAScreenOfAnotherScaleTheNextPaintDrawsTheFaceAnewOnce) {
  CGraphCompass compass;
  PaintFirst(compass);
  recorder.screen_scale = 2;
  compass.SetValue(45.0);
  recorder.TakeLines();
  compass.OnPaint();
  const Lines lines = recorder.TakeLines();
  EXPECT_EQ(Flow(lines), Block(R"(
window: begin paint
memory 1: select own bitmap
delete memory 1
delete bitmap 1
window: create memory 4
window: create bitmap 4 of 205x155
memory 4: select bitmap 4
window: create memory 5
window: create bitmap 5 of 205x155
memory 5: select bitmap 5
memory 5: copy to (0,0,205,155) from memory 4 (0,0)
window: copy to (0,0,205,155) from memory 5 (0,0)
memory 5: select own bitmap
delete memory 5
delete bitmap 5
window: end paint
)"));
  EXPECT_EQ(With("memory 4: text \"", lines).size(), 12U);
  compass.OnPaint();
  EXPECT_EQ(With("text \"", recorder.TakeLines()), Lines{});
}

TEST_F(Compass, ErasesNothing) {
  CGraphCompass compass;
  RecordingContext context;
  EXPECT_EQ(compass.OnEraseBkgnd(&context), 0);
  EXPECT_EQ(context.TakeLines(), Lines{});
}

TEST_F(Compass, AddsItsStyleBitToTheWindowAndRemovesNothing) {
  CGraphCompass compass;
  compass.AddStyle(0x50000001);
  compass.Attach({205, 155});
  EXPECT_EQ(compass.GetStyle(), 0x50004001U);
}

TEST_F(Compass, TellsScreenReadersItsValue) {
  CGraphCompass compass;
  compass.SetValue(123.45678);
  EXPECT_EQ(compass.AccessibleName(), L"Compass");
  EXPECT_EQ(compass.AccessibleValue(), L"123.5 degrees");
}

TEST_F(Compass, TellsScreenReadersOfEachNewValue) {
  CGraphCompass compass;
  compass.SetValue(10.0);
  EXPECT_EQ(compass.announcements, 1);
  compass.SetValue(20.0);
  EXPECT_EQ(compass.announcements, 2);
}

TEST_F(Compass, TenThousandUpdatesLeaveOneContextAndOneBitmap) {
  CGraphCompass compass;
  PaintFirst(compass);
  recorder.keeps_lines = false;
  for (int i = 0; i < 10000; ++i) {
    compass.SetValue(i * 0.1);
    compass.OnPaint();
  }
  EXPECT_EQ(recorder.living_contexts, 1);
  EXPECT_EQ(recorder.living_bitmaps, 1);
}

TEST_F(Compass, AnUpdateCostsTheSameAfterManyUpdates) {
  CGraphCompass compass;
  PaintFirst(compass);
  compass.SetValue(1.0);
  const std::size_t first = recorder.TakeLines().size();
  for (int i = 0; i < 100; ++i) compass.SetValue(i);
  recorder.TakeLines();
  compass.SetValue(1.0);
  EXPECT_EQ(recorder.TakeLines().size(), first);
}

RC_GTEST_FIXTURE_PROP(Compass, EverySequenceOfCallsReleasesWhatItTakes, ()) {
  recorder.Reset();
  {
    CGraphCompass compass;
    const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 9));
    for (const int step : steps) {
      if (step == 0) compass.Attach({*rc::gen::inRange(0, 300), *rc::gen::inRange(0, 300)});
      if (step == 1) compass.PaintIfInvalid();
      if (step == 2) compass.SetValue(*rc::gen::arbitrary<double>());
      if (step == 3) compass.SetFix(*rc::gen::arbitrary<int>());
      if (step == 4) compass.ClearFix();
      if (step == 5) compass.ReconstructControl();
      if (step == 6) compass.Resize({*rc::gen::inRange(0, 300), *rc::gen::inRange(0, 300)});
      if (step == 7) recorder.has_resources = !recorder.has_resources;
      if (step == 8) compass.gives_contexts = !compass.gives_contexts;
      RC_ASSERT(recorder.living_contexts <= 1);
      RC_ASSERT(recorder.living_bitmaps <= 1);
      RC_ASSERT(recorder.taken_contexts == 0);
    }
  }
  RC_ASSERT(recorder.living_contexts == 0);
  RC_ASSERT(recorder.living_bitmaps == 0);
  RC_ASSERT(recorder.misuses.empty());
}
