// What the drawing vocabulary means, pixel by pixel; the same tests for every windowing system.

#include "tiltpole/platform/drawing.h"

#include <algorithm>
#include <limits>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

#include "sheet.h"  // of the windowing system that the tests are built for

namespace tiltpole {

void PrintTo(const Color& color, std::ostream* out) {
  *out << int{color.red} << ", " << int{color.green} << ", " << int{color.blue};
}

}  // namespace tiltpole

namespace {

using tiltpole::BackgroundMode;
using tiltpole::Brush;
using tiltpole::Font;
using tiltpole::NullPen;
using tiltpole::Point;
using tiltpole::RasterOperation;
using tiltpole::Rgb;
using tiltpole::SolidPen;
using tiltpole::TextClip;

constexpr tiltpole::Color kInk = Rgb(255, 255, 255);
constexpr tiltpole::Color kFill = Rgb(200, 0, 0);

struct Sheet : tiltpole_test::Sheet {
  Sheet(int width, int height) : tiltpole_test::Sheet(width, height) {
    context.SelectPen(SolidPen(1, kInk));
    context.SelectBrush(Brush{kFill});
  }
};

// A picture of letters: '#' the pen's colour, 'o' the brush's, '.' what was there before.
std::string Picture(const Sheet& sheet) {
  std::string rows;
  for (int y = 0; y < sheet.Height(); ++y) {
    for (int x = 0; x < sheet.Width(); ++x) {
      const tiltpole::Color pixel = sheet.PixelAt(x, y);
      rows += pixel == kInk ? '#' : pixel == kFill ? 'o' : '.';
    }
    rows += '\n';
  }
  return rows;
}

TEST(Drawing, ALineLeavesItsLastPixelOut) {
  Sheet sheet(6, 3);
  sheet.context.MoveTo({1, 1});
  sheet.context.LineTo({4, 1});
  EXPECT_EQ(Picture(sheet),
            "......\n"
            ".###..\n"
            "......\n");
}

TEST(Drawing, ALineBackwardsStartsAtItsFirstPixelAndLeavesTheOtherEndOut) {
  Sheet sheet(6, 1);
  sheet.context.MoveTo({4, 0});
  sheet.context.LineTo({1, 0});
  EXPECT_EQ(Picture(sheet), "..###.\n");
}

TEST(Drawing, ADiagonalLineSetsOnePixelARow) {
  Sheet sheet(4, 4);
  sheet.context.MoveTo({0, 0});
  sheet.context.LineTo({3, 3});
  EXPECT_EQ(Picture(sheet),
            "#...\n"
            ".#..\n"
            "..#.\n"
            "....\n");
}

TEST(Drawing, ALineToTheCurrentPositionDrawsNothing) {
  Sheet sheet(3, 1);
  sheet.context.MoveTo({1, 0});
  sheet.context.LineTo({1, 0});
  EXPECT_EQ(Picture(sheet), "...\n");
}

TEST(Drawing, WithoutAPenALineOnlyMovesThePosition) {
  Sheet sheet(6, 2);
  sheet.context.FillRectangle({0, 0, 6, 2}, Brush{kFill});
  sheet.context.SelectPen(NullPen());
  sheet.context.MoveTo({0, 0});
  sheet.context.LineTo({3, 1});
  EXPECT_EQ(Picture(sheet), "oooooo\noooooo\n");
  sheet.context.SelectPen(SolidPen(1, kInk));
  sheet.context.LineTo({5, 1});
  EXPECT_EQ(Picture(sheet), "oooooo\nooo##o\n");
}

TEST(Drawing, ATwoPixelPenCoversItsRowAndTheOneBefore) {
  Sheet sheet(5, 4);
  sheet.context.SelectPen(SolidPen(2, kInk));
  sheet.context.MoveTo({-3, 2});
  sheet.context.LineTo({8, 2});
  EXPECT_EQ(Picture(sheet),
            ".....\n"
            "#####\n"
            "#####\n"
            ".....\n");
}

TEST(Drawing, AThreePixelPenCoversItsRowAndTheOnesBeside) {
  Sheet sheet(5, 5);
  sheet.context.SelectPen(SolidPen(3, kInk));
  sheet.context.MoveTo({-3, 2});
  sheet.context.LineTo({8, 2});
  EXPECT_EQ(Picture(sheet),
            ".....\n"
            "#####\n"
            "#####\n"
            "#####\n"
            ".....\n");
}

TEST(Drawing, ARectangleLiesInsideOfItsBox) {
  Sheet sheet(6, 5);
  sheet.context.DrawRectangle({1, 1, 5, 4});
  EXPECT_EQ(Picture(sheet),
            "......\n"
            ".####.\n"
            ".#oo#.\n"
            ".####.\n"
            "......\n");
}

TEST(Drawing, ARectangleWithEdgesInTheWrongOrderIsPutRight) {
  Sheet sheet(6, 5);
  sheet.context.DrawRectangle({5, 4, 1, 1});
  EXPECT_EQ(Picture(sheet),
            "......\n"
            ".####.\n"
            ".#oo#.\n"
            ".####.\n"
            "......\n");
}

TEST(Drawing, WithoutAPenARectangleIsOnePixelSmallerAtTheRightAndBottom) {
  Sheet sheet(6, 5);
  sheet.context.SelectPen(NullPen());
  sheet.context.DrawRectangle({1, 1, 5, 4});
  EXPECT_EQ(Picture(sheet),
            "......\n"
            ".ooo..\n"
            ".ooo..\n"
            "......\n"
            "......\n");
}

TEST(Drawing, AnEllipseTouchesTheFourEdgesOfItsBoxAndStaysInside) {
  Sheet sheet(9, 9);
  sheet.context.DrawEllipse({1, 1, 8, 8});
  const std::string picture = Picture(sheet);
  EXPECT_EQ(picture.substr(0, 9), ".........");
  EXPECT_EQ(picture[1 * 10 + 4], '#');
  EXPECT_EQ(picture[7 * 10 + 4], '#');
  EXPECT_EQ(picture[4 * 10 + 1], '#');
  EXPECT_EQ(picture[4 * 10 + 7], '#');
  EXPECT_EQ(picture[4 * 10 + 4], 'o');
  EXPECT_EQ(picture[4 * 10 + 0], '.');
  EXPECT_EQ(picture[4 * 10 + 8], '.');
}

TEST(Drawing, EmptyBoxesDrawNothing) {
  Sheet sheet(4, 2);
  sheet.context.DrawRectangle({1, 1, 1, 1});
  sheet.context.DrawEllipse({2, 0, 2, 2});
  sheet.context.FillRectangle({3, 0, 1, 2}, Brush{kFill});
  EXPECT_EQ(Picture(sheet), "....\n....\n");
}

TEST(Drawing, AFilledBoxLeavesItsRightAndBottomEdgesOut) {
  Sheet sheet(4, 3);
  sheet.context.FillRectangle({1, 0, 3, 2}, Brush{kFill});
  EXPECT_EQ(Picture(sheet),
            ".oo.\n"
            ".oo.\n"
            "....\n");
}

TEST(Drawing, ACornerGivenTwiceChangesNothingInAPolygon) {
  const Point corners[] = {{5, 5}, {14, 6}, {9, 14}};
  const Point repeated[] = {{5, 5}, {14, 6}, {14, 6}, {9, 14}, {5, 5}};
  for (const int width : {1, 2, 5, 7}) {
    Sheet once(20, 20);
    Sheet twice(20, 20);
    once.context.SelectPen(SolidPen(width, kInk));
    twice.context.SelectPen(SolidPen(width, kInk));
    once.context.DrawPolygon(corners, 3);
    twice.context.DrawPolygon(repeated, 5);
    EXPECT_EQ(Picture(twice), Picture(once)) << "pen of " << width;
  }
}

TEST(Drawing, APolygonIsClosedAndFilled) {
  Sheet sheet(7, 7);
  const Point corners[] = {{1, 1}, {5, 1}, {5, 5}, {1, 5}};
  sheet.context.DrawPolygon(corners, 4);
  EXPECT_EQ(Picture(sheet),
            ".......\n"
            ".#####.\n"
            ".#ooo#.\n"
            ".#ooo#.\n"
            ".#ooo#.\n"
            ".#####.\n"
            ".......\n");
}

TEST(Drawing, ACopyReplacesAndAnOrCombines) {
  Sheet from(2, 1);
  from.context.FillRectangle({0, 0, 1, 1}, Brush{Rgb(0, 255, 0)});
  Sheet copied(2, 1);
  copied.context.FillRectangle({0, 0, 2, 1}, Brush{Rgb(255, 0, 0)});
  Sheet combined(2, 1);
  combined.context.FillRectangle({0, 0, 2, 1}, Brush{Rgb(255, 0, 0)});

  copied.context.CopyBlock({0, 0, 2, 1}, from.context, {0, 0}, RasterOperation::Copy);
  combined.context.CopyBlock({0, 0, 2, 1}, from.context, {0, 0}, RasterOperation::Or);

  EXPECT_EQ(copied.PixelAt(0, 0), Rgb(0, 255, 0));
  EXPECT_EQ(copied.PixelAt(1, 0), Rgb(0, 0, 0));
  EXPECT_EQ(combined.PixelAt(0, 0), Rgb(255, 255, 0));
  EXPECT_EQ(combined.PixelAt(1, 0), Rgb(255, 0, 0));
}

TEST(Drawing, ACopyFromOutsideOfTheSourceLeavesTheDestination) {
  Sheet from(2, 2);
  from.context.FillRectangle({0, 0, 2, 2}, Brush{kInk});
  Sheet to(4, 2);
  to.context.FillRectangle({0, 0, 4, 2}, Brush{kFill});
  to.context.CopyBlock({0, 0, 4, 2}, from.context, {-1, 0}, RasterOperation::Copy);
  EXPECT_EQ(Picture(to), "o##o\no##o\n");
}

TEST(Drawing, CentredTextStaysInItsBoxAndLeavesWhatIsBehindIt) {
  Sheet sheet(60, 40);
  sheet.context.SelectFont(Font{L"Tahoma", 18, 700, 0});
  sheet.context.SetTextColor(kInk);
  sheet.context.SetBackgroundMode(BackgroundMode::Transparent);
  sheet.context.DrawCenteredText(L"330", {13, 3, 47, 37});
  int left = 60;
  int right = -1;
  int top = 40;
  int bottom = -1;
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 60; ++x) {
      if (sheet.PixelAt(x, y) == Rgb(0, 0, 0)) continue;
      left = std::min(left, x);
      right = std::max(right, x);
      top = std::min(top, y);
      bottom = std::max(bottom, y);
    }
  }
  ASSERT_GE(right, left);
  EXPECT_GE(left, 13);
  EXPECT_LT(right, 47);
  EXPECT_GE(top, 3);
  EXPECT_LT(bottom, 3 + 18);
  EXPECT_NEAR((left + right) / 2.0, 30.0, 2.0);
}

TEST(Drawing, OpaqueTextFillsTheCellsBehindIt) {
  Sheet sheet(30, 30);
  sheet.context.SelectFont(Font{L"Arical", 14, 150, 32});
  sheet.context.SetBackgroundColor(kFill);
  sheet.context.SetTextColor(kInk);
  sheet.context.DrawTextAt({5, 5}, TextClip::Clipped, nullptr, L"Y");
  EXPECT_EQ(sheet.PixelAt(5, 5), Rgb(200, 0, 0));
  EXPECT_EQ(sheet.PixelAt(4, 5), Rgb(0, 0, 0));
}

TEST(Drawing, CoordinatesAtTheEndsOfTheRangeAreTaken) {
  constexpr int kLeast = std::numeric_limits<int>::min();
  constexpr int kMost = std::numeric_limits<int>::max();
  Sheet sheet(8, 8);
  for (const int width : {1, 2, 3, 100}) {
    sheet.context.SelectPen(SolidPen(width, kInk));
    sheet.context.MoveTo({kLeast, kLeast});
    sheet.context.LineTo({kMost, kMost});
    sheet.context.DrawRectangle({kLeast, kLeast, kMost, kMost});
    sheet.context.DrawEllipse({kLeast, 0, kMost, 8});
  }
  sheet.context.SelectPen(SolidPen(kMost, kInk));
  sheet.context.LineTo({kLeast, 0});
  sheet.context.FillRectangle({kLeast, kLeast, kMost, kMost}, Brush{kFill});
  EXPECT_EQ(sheet.PixelAt(0, 0), Rgb(200, 0, 0));
  EXPECT_EQ(sheet.PixelAt(7, 7), Rgb(200, 0, 0));
  sheet.context.CopyBlock({kLeast, kLeast, kMost, kMost}, sheet.context, {kLeast, kMost},
                          RasterOperation::Or);
}

}  // namespace
