#include "tiltpole/platform/qt/drawing_qt.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

using tiltpole::BackgroundMode;
using tiltpole::Brush;
using tiltpole::Font;
using tiltpole::NullPen;
using tiltpole::Point;
using tiltpole::RasterOperation;
using tiltpole::Rect;
using tiltpole::Rgb;
using tiltpole::SolidPen;
using tiltpole::TextClip;
using tiltpole::detail::QtBitmap;
using tiltpole::detail::QtContext;

constexpr tiltpole::Color kInk = Rgb(255, 255, 255);
constexpr tiltpole::Color kFill = Rgb(200, 0, 0);

// A picture of letters: '#' the pen's colour, 'o' the brush's, '.' what was there before.
std::string Picture(const QtBitmap& bitmap) {
  std::string rows;
  for (int y = 0; y < bitmap.image.height(); ++y) {
    for (int x = 0; x < bitmap.image.width(); ++x) {
      const QRgb pixel = bitmap.image.pixel(x, y) & 0xFFFFFF;
      rows += pixel == 0xFFFFFF ? '#' : pixel == 0xC80000 ? 'o' : '.';
    }
    rows += '\n';
  }
  return rows;
}

struct Sheet {
  Sheet(int width, int height, double scale = 1.0) : bitmap(width, height, scale), context(bitmap) {
    context.SelectPen(SolidPen(1, kInk));
    context.SelectBrush(Brush{kFill});
  }
  QtBitmap bitmap;
  QtContext context;
};

TEST(QtDrawing, ALineLeavesItsLastPixelOut) {
  Sheet sheet(6, 3);
  sheet.context.MoveTo({1, 1});
  sheet.context.LineTo({4, 1});
  EXPECT_EQ(Picture(sheet.bitmap),
            "......\n"
            ".###..\n"
            "......\n");
}

TEST(QtDrawing, ALineBackwardsStartsAtItsFirstPixelAndLeavesTheOtherEndOut) {
  Sheet sheet(6, 1);
  sheet.context.MoveTo({4, 0});
  sheet.context.LineTo({1, 0});
  EXPECT_EQ(Picture(sheet.bitmap), "..###.\n");
}

TEST(QtDrawing, ADiagonalLineSetsOnePixelARow) {
  Sheet sheet(4, 4);
  sheet.context.MoveTo({0, 0});
  sheet.context.LineTo({3, 3});
  EXPECT_EQ(Picture(sheet.bitmap),
            "#...\n"
            ".#..\n"
            "..#.\n"
            "....\n");
}

TEST(QtDrawing, ALineToTheCurrentPositionDrawsNothing) {
  Sheet sheet(3, 1);
  sheet.context.MoveTo({1, 0});
  sheet.context.LineTo({1, 0});
  EXPECT_EQ(Picture(sheet.bitmap), "...\n");
}

TEST(QtDrawing, ATwoPixelPenCoversItsRowAndTheOneBefore) {
  Sheet sheet(5, 4);
  sheet.context.SelectPen(SolidPen(2, kInk));
  sheet.context.MoveTo({-3, 2});
  sheet.context.LineTo({8, 2});
  EXPECT_EQ(Picture(sheet.bitmap),
            ".....\n"
            "#####\n"
            "#####\n"
            ".....\n");
}

TEST(QtDrawing, AThreePixelPenCoversItsRowAndTheOnesBeside) {
  Sheet sheet(5, 5);
  sheet.context.SelectPen(SolidPen(3, kInk));
  sheet.context.MoveTo({-3, 2});
  sheet.context.LineTo({8, 2});
  EXPECT_EQ(Picture(sheet.bitmap),
            ".....\n"
            "#####\n"
            "#####\n"
            "#####\n"
            ".....\n");
}

TEST(QtDrawing, ARectangleLiesInsideOfItsBox) {
  Sheet sheet(6, 5);
  sheet.context.DrawRectangle({1, 1, 5, 4});
  EXPECT_EQ(Picture(sheet.bitmap),
            "......\n"
            ".####.\n"
            ".#oo#.\n"
            ".####.\n"
            "......\n");
}

TEST(QtDrawing, ARectangleWithEdgesInTheWrongOrderIsPutRight) {
  Sheet sheet(6, 5);
  sheet.context.DrawRectangle({5, 4, 1, 1});
  EXPECT_EQ(Picture(sheet.bitmap),
            "......\n"
            ".####.\n"
            ".#oo#.\n"
            ".####.\n"
            "......\n");
}

TEST(QtDrawing, WithoutAPenARectangleIsOnePixelSmallerAtTheRightAndBottom) {
  Sheet sheet(6, 5);
  sheet.context.SelectPen(NullPen());
  sheet.context.DrawRectangle({1, 1, 5, 4});
  EXPECT_EQ(Picture(sheet.bitmap),
            "......\n"
            ".ooo..\n"
            ".ooo..\n"
            "......\n"
            "......\n");
}

TEST(QtDrawing, AnEllipseTouchesTheFourEdgesOfItsBoxAndStaysInside) {
  Sheet sheet(9, 9);
  sheet.context.DrawEllipse({1, 1, 8, 8});
  const std::string picture = Picture(sheet.bitmap);
  EXPECT_EQ(picture.substr(0, 9), ".........");
  EXPECT_EQ(picture[1 * 10 + 4], '#');
  EXPECT_EQ(picture[7 * 10 + 4], '#');
  EXPECT_EQ(picture[4 * 10 + 1], '#');
  EXPECT_EQ(picture[4 * 10 + 7], '#');
  EXPECT_EQ(picture[4 * 10 + 4], 'o');
  EXPECT_EQ(picture[4 * 10 + 0], '.');
  EXPECT_EQ(picture[4 * 10 + 8], '.');
}

TEST(QtDrawing, EmptyBoxesDrawNothing) {
  Sheet sheet(4, 2);
  sheet.context.DrawRectangle({1, 1, 1, 1});
  sheet.context.DrawEllipse({2, 0, 2, 2});
  sheet.context.FillRectangle({3, 0, 1, 2}, Brush{kFill});
  EXPECT_EQ(Picture(sheet.bitmap), "....\n....\n");
}

TEST(QtDrawing, AFilledBoxLeavesItsRightAndBottomEdgesOut) {
  Sheet sheet(4, 3);
  sheet.context.FillRectangle({1, 0, 3, 2}, Brush{kFill});
  EXPECT_EQ(Picture(sheet.bitmap),
            ".oo.\n"
            ".oo.\n"
            "....\n");
}

TEST(QtDrawing, APolygonIsClosedAndFilled) {
  Sheet sheet(7, 7);
  const Point corners[] = {{1, 1}, {5, 1}, {5, 5}, {1, 5}};
  sheet.context.DrawPolygon(corners, 4);
  EXPECT_EQ(Picture(sheet.bitmap),
            ".......\n"
            ".#####.\n"
            ".#ooo#.\n"
            ".#ooo#.\n"
            ".#ooo#.\n"
            ".#####.\n"
            ".......\n");
}

TEST(QtDrawing, ACopyReplacesAndAnOrCombines) {
  Sheet from(2, 1);
  from.context.FillRectangle({0, 0, 1, 1}, Brush{Rgb(0, 255, 0)});
  Sheet copied(2, 1);
  copied.context.FillRectangle({0, 0, 2, 1}, Brush{Rgb(255, 0, 0)});
  Sheet combined(2, 1);
  combined.context.FillRectangle({0, 0, 2, 1}, Brush{Rgb(255, 0, 0)});

  copied.context.CopyBlock({0, 0, 2, 1}, from.context, {0, 0}, RasterOperation::Copy);
  combined.context.CopyBlock({0, 0, 2, 1}, from.context, {0, 0}, RasterOperation::Or);

  EXPECT_EQ(copied.bitmap.image.pixel(0, 0), qRgb(0, 255, 0));
  EXPECT_EQ(copied.bitmap.image.pixel(1, 0), qRgb(0, 0, 0));
  EXPECT_EQ(combined.bitmap.image.pixel(0, 0), qRgb(255, 255, 0));
  EXPECT_EQ(combined.bitmap.image.pixel(1, 0), qRgb(255, 0, 0));
}

TEST(QtDrawing, ACopyFromOutsideOfTheSourceLeavesTheDestination) {
  Sheet from(2, 2);
  from.context.FillRectangle({0, 0, 2, 2}, Brush{kInk});
  Sheet to(4, 2);
  to.context.FillRectangle({0, 0, 4, 2}, Brush{kFill});
  to.context.CopyBlock({0, 0, 4, 2}, from.context, {-1, 0}, RasterOperation::Copy);
  EXPECT_EQ(Picture(to.bitmap), "o##o\no##o\n");
}

TEST(QtDrawing, CentredTextStaysInItsBoxAndLeavesWhatIsBehindIt) {
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
      if (sheet.bitmap.image.pixel(x, y) == qRgb(0, 0, 0)) continue;
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

TEST(QtDrawing, OpaqueTextFillsTheCellsBehindIt) {
  Sheet sheet(30, 30);
  sheet.context.SelectFont(Font{L"Arical", 14, 150, 32});
  sheet.context.SetBackgroundColor(kFill);
  sheet.context.SetTextColor(kInk);
  sheet.context.DrawTextAt({5, 5}, TextClip::Clipped, nullptr, L"Y");
  EXPECT_EQ(sheet.bitmap.image.pixel(5, 5), qRgb(200, 0, 0));
  EXPECT_EQ(sheet.bitmap.image.pixel(4, 5), qRgb(0, 0, 0));
}

TEST(QtDrawing, AFinerRasterShowsTheSameShapesLarger) {
  Sheet sheet(4, 3, 2.0);
  sheet.context.FillRectangle({1, 0, 3, 2}, Brush{kFill});
  sheet.context.MoveTo({0, 2});
  sheet.context.LineTo({3, 2});
  EXPECT_EQ(Picture(sheet.bitmap),
            "..oooo..\n"
            "..oooo..\n"
            "..oooo..\n"
            "..oooo..\n"
            "######..\n"
            "######..\n");
}

TEST(QtDrawing, AFinerRasterOfOneAndAHalfCopiesWholePicturesWithoutResampling) {
  Sheet from(3, 3, 1.5);
  from.context.SelectPen(SolidPen(1, kInk));
  from.context.DrawRectangle({0, 0, 3, 3});
  Sheet to(3, 3, 1.5);
  to.context.CopyBlock({0, 0, 3, 3}, from.context, {0, 0}, RasterOperation::Copy);
  EXPECT_EQ(to.bitmap.image, from.bitmap.image);
}

TEST(QtDrawing, CoordinatesAtTheEndsOfTheRangeAreTaken) {
  constexpr int kLeast = std::numeric_limits<int>::min();
  constexpr int kMost = std::numeric_limits<int>::max();
  Sheet sheet(8, 8);
  for (const int width : {1, 2, 3, kMost}) {
    sheet.context.SelectPen(SolidPen(width, kInk));
    sheet.context.MoveTo({kLeast, kLeast});
    sheet.context.LineTo({kMost, kMost});
    sheet.context.DrawRectangle({kLeast, kLeast, kMost, kMost});
    sheet.context.DrawEllipse({kLeast, 0, kMost, 8});
  }
  sheet.context.FillRectangle({kLeast, kLeast, kMost, kMost}, Brush{kFill});
  EXPECT_EQ(sheet.bitmap.image.pixel(0, 0), qRgb(200, 0, 0));
  EXPECT_EQ(sheet.bitmap.image.pixel(7, 7), qRgb(200, 0, 0));
  sheet.context.CopyBlock({kLeast, kLeast, kMost, kMost}, sheet.context, {kLeast, kMost},
                          RasterOperation::Or);
}

}  // namespace
