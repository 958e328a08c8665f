// Screens with more than one device pixel to a pixel of the controls' coordinates.

#include "tiltpole/platform/qt/drawing_qt.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using tiltpole::Brush;
using tiltpole::RasterOperation;
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

TEST(QtDrawing, ShapesWithoutAnAreaAreNotDrawn) {
  Sheet sheet(4, 4);
  const tiltpole::Point corner = {1, 1};
  sheet.context.DrawRectangle({1, 1, 1, 3});
  sheet.context.DrawRectangle({1, 1, 3, 1});
  sheet.context.DrawEllipse({1, 1, 1, 3});
  sheet.context.DrawEllipse({1, 1, 3, 1});
  sheet.context.FillRectangle({1, 1, 1, 3}, Brush{kFill});
  sheet.context.FillRectangle({1, 1, 3, 1}, Brush{kFill});
  sheet.context.DrawPolygon(&corner, 1);
  EXPECT_EQ(Picture(sheet.bitmap), "....\n....\n....\n....\n");
}

TEST(QtDrawing, ACopyWithoutAnAreaChangesNothing) {
  Sheet from(2, 2);
  from.context.FillRectangle({0, 0, 2, 2}, Brush{kFill});
  Sheet to(2, 2);
  to.context.CopyBlock({0, 0, 0, 2}, from.context, {0, 0}, RasterOperation::Copy);
  to.context.CopyBlock({0, 0, 2, 0}, from.context, {0, 0}, RasterOperation::Copy);
  EXPECT_EQ(Picture(to.bitmap), "..\n..\n");
}

TEST(QtDrawing, AMemoryContextTakesABitmapOfOnePixelAtLeastAndKeepsItsOwnWithoutOne) {
  Sheet sheet(2, 2);
  const auto memory = sheet.context.CreateCompatibleContext();
  const auto bitmap = sheet.context.CreateCompatibleBitmap(0, -5);
  ASSERT_NE(bitmap, nullptr);
  EXPECT_EQ(static_cast<QtBitmap&>(*bitmap).image.size(), QSize(1, 1));
  tiltpole::Bitmap* const own = memory->SelectBitmap(bitmap.get());
  EXPECT_EQ(memory->SelectBitmap(nullptr), bitmap.get());
  EXPECT_EQ(memory->SelectBitmap(own), bitmap.get());
}

TEST(QtDrawing, ABitmapHasASizeOnARasterOfItsOwnAlone) {
  const QtBitmap bitmap(4, 2, 1.0);
  EXPECT_TRUE(bitmap.HasSize(4, 2, 1.0));
  EXPECT_FALSE(bitmap.HasSize(5, 2, 1.0));
  EXPECT_FALSE(bitmap.HasSize(2, 1, 2.0)) << "its pixels are as many, but they are larger";
  EXPECT_TRUE(QtBitmap(4, 3, 1.5).HasSize(4, 3, 1.5));
}

TEST(QtDrawing, ABitmapWithoutRowsHasOnePixelToo) {
  Sheet sheet(2, 2);
  const auto bitmap = sheet.context.CreateCompatibleBitmap(5, 0);
  ASSERT_NE(bitmap, nullptr);
  EXPECT_EQ(static_cast<QtBitmap&>(*bitmap).image.size(), QSize(1, 1));
}

// The rows of the ellipse end before its outline has turned towards the columns.
TEST(QtDrawing, AnEllipseOneColumnWideIsAStrokeOfThePensWidth) {
  Sheet sheet(7, 9);
  sheet.context.SelectPen(SolidPen(3, kInk));
  sheet.context.DrawEllipse({3, 2, 4, 7});
  EXPECT_EQ(Picture(sheet.bitmap),
            ".......\n"
            "..###..\n"
            "..###..\n"
            "..###..\n"
            "..###..\n"
            "..###..\n"
            "..###..\n"
            "..###..\n"
            ".......\n");
}

TEST(QtDrawing, AnEllipseOneRowHighIsAStrokeOfThePensWidth) {
  Sheet sheet(9, 7);
  sheet.context.SelectPen(SolidPen(3, kInk));
  sheet.context.DrawEllipse({2, 3, 7, 4});
  EXPECT_EQ(Picture(sheet.bitmap),
            ".........\n"
            ".........\n"
            ".#######.\n"
            ".#######.\n"
            ".#######.\n"
            ".........\n"
            ".........\n");
}

TEST(QtDrawing, TextIsCutAtItsClipRectangleOnlyWhereThatIsAskedFor) {
  const tiltpole::Rect left_half = {0, 0, 10, 20};
  const auto draws_beyond = [&](TextClip clip) {
    Sheet sheet(40, 20);
    sheet.context.SetBackgroundColor(kFill);
    sheet.context.DrawTextAt({0, 0}, clip, &left_half, L"          ");
    return sheet.bitmap.image.pixel(12, 0) == qRgb(200, 0, 0);
  };
  EXPECT_TRUE(draws_beyond(TextClip::None));
  EXPECT_FALSE(draws_beyond(TextClip::Clipped));
}

TEST(QtDrawing, AFontHasNoMoreThanTheHeightOfItsCellDownToOnePixel) {
  for (const int height : {1, 2, 9}) {
    Sheet sheet(20, 20);
    sheet.context.SelectFont(tiltpole::Font{L"", height, 0, 0});
    sheet.context.SetBackgroundColor(kFill);
    sheet.context.SetTextColor(kInk);
    sheet.context.DrawTextAt({0, 0}, TextClip::None, nullptr, L"M");
    EXPECT_NE(sheet.bitmap.image.pixel(0, 0), qRgb(0, 0, 0)) << height;
    EXPECT_EQ(sheet.bitmap.image.pixel(0, height), qRgb(0, 0, 0)) << height;
  }
}

TEST(QtDrawing, ALineThatIsShortenedToNothingFarOutsideDrawsNothing) {
  Sheet sheet(2, 2, 1.5);
  sheet.context.MoveTo({40000, 40000});
  sheet.context.LineTo({50000, 50000});
  EXPECT_EQ(Picture(sheet.bitmap), "...\n...\n...\n");
}

}  // namespace
