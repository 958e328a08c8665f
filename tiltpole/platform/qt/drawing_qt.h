#pragma once

// The drawing vocabulary on Qt: shapes on a QImage, without smoothing, at the places where the
// native drawing system of Windows would set them.

#include <QFont>
#include <QImage>
#include <QPainter>
#include <memory>
#include <string>

#include "tiltpole/platform/drawing.h"
#include "tiltpole/platform/qt/wide_pen.h"

namespace tiltpole::detail {

/// A picture and the number of its pixels to one pixel of the controls' coordinates.
class QtBitmap final : public Bitmap {
 public:
  QtBitmap(int width, int height, double wanted_scale);

  bool HasSize(int width, int height, double wanted_scale) const;

  QImage image;
  double scale;
};

/// Draws on a bitmap. A context on a window draws on the picture that the window keeps.
class QtContext final : public DrawingContext {
 public:
  /// @param[in] target  stays the caller's and must outlive the context
  explicit QtContext(QtBitmap& target);
  /// A memory context on a pixel of its own.
  explicit QtContext(double scale);

  std::unique_ptr<DrawingContext> CreateCompatibleContext() override;
  std::unique_ptr<Bitmap> CreateCompatibleBitmap(int width, int height) override;
  Bitmap* SelectBitmap(Bitmap* bitmap) override;
  bool HasScaleOf(const DrawingContext& other) const override;

  Pen SelectPen(const Pen& pen) override;
  Brush SelectBrush(const Brush& brush) override;
  Font SelectFont(Font font) override;
  Color SetTextColor(Color color) override;
  Color SetBackgroundColor(Color color) override;
  BackgroundMode SetBackgroundMode(BackgroundMode mode) override;

  void MoveTo(Point point) override;
  void LineTo(Point point) override;
  void DrawRectangle(const Rect& box) override;
  void DrawEllipse(const Rect& box) override;
  void DrawPolygon(const Point* corners, int count) override;
  void FillRectangle(const Rect& box, const Brush& brush) override;

  void DrawCenteredText(const std::wstring& text, const Rect& box) override;
  void DrawTextAt(Point point, TextClip clip, const Rect* clip_box,
                  const std::wstring& text) override;

  void CopyBlock(const Rect& place, DrawingContext& source, Point source_corner,
                 RasterOperation operation) override;

 private:
  bool IsThin() const { return pen_.width <= 1; }
  /// Whether lines are set by the wide pen, rather than by Qt on a finer raster.
  bool DrawsWide() const;
  WidePen Wide();
  void DrawLine(Point from, Point to);
  void DrawThinLine(Point from, Point to);
  void DrawThinLineScaled(Point from, Point to);
  void SetPixel(int x, int y);
  /// A painter in the controls' coordinates, set up with the pen and the brush in force.
  void BeginShape(QPainter& painter) const;
  /// How far the middle of the pen lies from the corner of the pixel that it is set on.
  double PenOffset() const;
  void DrawText(QPointF top_left, const QString& text, const Rect* clip_box);

  std::unique_ptr<QtBitmap> own_;
  QtBitmap* target_;
  Pen pen_ = SolidPen(1, Rgb(0, 0, 0));
  Brush brush_{Rgb(255, 255, 255)};
  Font font_;
  QFont qt_font_;
  Color text_color_ = Rgb(0, 0, 0);
  Color background_color_ = Rgb(255, 255, 255);
  BackgroundMode background_mode_ = BackgroundMode::Opaque;
  Point position_;
};

}  // namespace tiltpole::detail
