// The values of the drawing vocabulary: two are equal only when all their parts are. The backends
// take the pen that was selected before for the one that comes back by this.

#include <gtest/gtest.h>

#include "tiltpole/platform/drawing.h"

namespace {

using tiltpole::Brush;
using tiltpole::Font;
using tiltpole::LimitCoordinate;
using tiltpole::NullPen;
using tiltpole::Pen;
using tiltpole::Point;
using tiltpole::Rect;
using tiltpole::Rgb;
using tiltpole::SolidPen;

TEST(DrawingValues, ColorsAreEqualWhenAllThreePartsAre) {
  EXPECT_TRUE(Rgb(1, 2, 3) == Rgb(1, 2, 3));
  EXPECT_FALSE(Rgb(1, 2, 3) == Rgb(9, 2, 3));
  EXPECT_FALSE(Rgb(1, 2, 3) == Rgb(1, 9, 3));
  EXPECT_FALSE(Rgb(1, 2, 3) == Rgb(1, 2, 9));
  EXPECT_TRUE(Rgb(1, 2, 3) != Rgb(1, 2, 9));
  EXPECT_FALSE(Rgb(1, 2, 3) != Rgb(1, 2, 3));
}

TEST(DrawingValues, PointsAreEqualWhenBothCoordinatesAre) {
  EXPECT_TRUE((Point{1, 2} == Point{1, 2}));
  EXPECT_TRUE((Point{1, 2} != Point{9, 2}));
  EXPECT_TRUE((Point{1, 2} != Point{1, 9}));
}

TEST(DrawingValues, BoxesAreEqualWhenAllFourEdgesAre) {
  const Rect box = {1, 2, 3, 4};
  EXPECT_TRUE((box == Rect{1, 2, 3, 4}));
  EXPECT_FALSE((box == Rect{9, 2, 3, 4}));
  EXPECT_FALSE((box == Rect{1, 9, 3, 4}));
  EXPECT_FALSE((box == Rect{1, 2, 9, 4}));
  EXPECT_FALSE((box == Rect{1, 2, 3, 9}));
  EXPECT_TRUE((box != Rect{1, 2, 3, 9}));
}

TEST(DrawingValues, PensAreEqualWhenStyleWidthAndColorAre) {
  const Pen pen = SolidPen(1, Rgb(0, 0, 0));
  EXPECT_TRUE(pen == SolidPen(1, Rgb(0, 0, 0)));
  EXPECT_FALSE(pen == NullPen());
  EXPECT_FALSE(pen == SolidPen(2, Rgb(0, 0, 0)));
  EXPECT_FALSE(pen == SolidPen(1, Rgb(0, 0, 1)));
}

TEST(DrawingValues, BrushesAreEqualWhenTheirColorIs) {
  EXPECT_TRUE((Brush{Rgb(1, 2, 3)} == Brush{Rgb(1, 2, 3)}));
  EXPECT_FALSE((Brush{Rgb(1, 2, 3)} == Brush{Rgb(1, 2, 4)}));
}

TEST(DrawingValues, FontsAreEqualWhenFaceHeightWeightAndFamilyAre) {
  const Font font = {L"Tahoma", 14, 400, 32};
  EXPECT_TRUE((font == Font{L"Tahoma", 14, 400, 32}));
  EXPECT_FALSE((font == Font{L"Arial", 14, 400, 32}));
  EXPECT_FALSE((font == Font{L"Tahoma", 15, 400, 32}));
  EXPECT_FALSE((font == Font{L"Tahoma", 14, 700, 32}));
  EXPECT_FALSE((font == Font{L"Tahoma", 14, 400, 0}));
}

TEST(DrawingValues, ABoxHoldsItsLeftAndTopEdgesOnly) {
  const Rect box = {1, 2, 3, 4};
  EXPECT_TRUE(box.Contains({1, 2}));
  EXPECT_TRUE(box.Contains({2, 3}));
  EXPECT_FALSE(box.Contains({0, 2}));
  EXPECT_FALSE(box.Contains({3, 2}));
  EXPECT_FALSE(box.Contains({1, 1}));
  EXPECT_FALSE(box.Contains({1, 4}));
}

TEST(DrawingValues, CoordinatesReachADrawingSystemOnlyUpToTheLimit) {
  EXPECT_EQ(LimitCoordinate(30000), 30000);
  EXPECT_EQ(LimitCoordinate(30001), 30000);
  EXPECT_EQ(LimitCoordinate(-30000), -30000);
  EXPECT_EQ(LimitCoordinate(-30001), -30000);
}

}  // namespace
