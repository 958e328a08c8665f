#pragma once

// The pixels of wide lines on a raster without smoothing, as the native drawing system of Windows
// sets them: a slanted line is made of whole pixels on both sides, which leaves it a little wider
// than its pen.

#include <QImage>
#include <QPoint>

namespace tiltpole::detail {

/// Draws on a picture with a round pen of two or more pixels.
class WidePen {
 public:
  /// @param image  stays the caller's
  WidePen(QImage& image, int width, QRgb color) : image_(image), width_(width), color_(color) {}

  /// A line with round ends.
  void DrawLine(QPoint from, QPoint to);
  /// The outline of the ellipse whose outermost pixels are the edges of @p box.
  void DrawEllipse(const QRect& box);

 private:
  void DrawSegment(QPoint from, QPoint to);
  void DrawEnd(QPoint middle);
  void FillSpan(int left, int right, int y);
  void FillConvex(const QPoint (&corners)[4]);

  QImage& image_;
  int width_;
  QRgb color_;
};

}  // namespace tiltpole::detail
