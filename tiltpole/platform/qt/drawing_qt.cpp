#include "tiltpole/platform/qt/drawing_qt.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPalette>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace tiltpole {
namespace {

QColor ToQt(Color color) { return {color.red, color.green, color.blue}; }

QPoint ToQt(Point point) { return {LimitCoordinate(point.x), LimitCoordinate(point.y)}; }

/// The box with its coordinates limited and its edges in the right order.
Rect Ordered(const Rect& box) {
  const Rect limited = {LimitCoordinate(box.left), LimitCoordinate(box.top),
                        LimitCoordinate(box.right), LimitCoordinate(box.bottom)};
  return {std::min(limited.left, limited.right), std::min(limited.top, limited.bottom),
          std::max(limited.left, limited.right), std::max(limited.top, limited.bottom)};
}

QRectF ToQt(const Rect& box) {
  return {static_cast<double>(box.left), static_cast<double>(box.top),
          static_cast<double>(box.Width()), static_cast<double>(box.Height())};
}

int Scaled(int coordinate, double scale) {
  return static_cast<int>(std::lround(coordinate * scale));
}

/// The font whose character cell, from the top of the accents to the descent, has the height that
/// was asked for: Qt's own size is that of the letters alone.
QFont FontOfCellHeight(const Font& font) {
  QFont result = QGuiApplication::font();
  if (!font.face.empty()) result.setFamily(QString::fromStdWString(font.face));
  if (font.pitch_and_family == 32) result.setStyleHint(QFont::SansSerif);
  // A face lighter than normal, smoothed at the size of a label, would lose its colour.
  if (font.weight > 0) {
    result.setWeight(
        static_cast<QFont::Weight>(std::clamp<int>(font.weight, QFont::Normal, QFont::Black)));
  }
  if (font.height > 0) {
    const int height = std::min(font.height, kCoordinateLimit);
    int size = height;
    result.setPixelSize(size);
    while (size > 1 && QFontMetrics(result).height() > height) result.setPixelSize(--size);
  }
  return result;
}

QSize PixelSize(int width, int height, double scale) {
  return {std::max(1, static_cast<int>(std::ceil(width * scale))),
          std::max(1, static_cast<int>(std::ceil(height * scale)))};
}

}  // namespace

Color SystemButtonFaceColor() {
  const QColor button = QGuiApplication::palette().color(QPalette::Button);
  return Rgb(static_cast<std::uint8_t>(button.red()), static_cast<std::uint8_t>(button.green()),
             static_cast<std::uint8_t>(button.blue()));
}

namespace detail {

QtBitmap::QtBitmap(int width, int height, double wanted_scale)
    : image(PixelSize(width, height, wanted_scale), QImage::Format_RGB32), scale(wanted_scale) {
  image.fill(Qt::black);
}

bool QtBitmap::HasSize(int width, int height, double wanted_scale) const {
  return scale == wanted_scale && image.size() == PixelSize(width, height, wanted_scale);
}

QtContext::QtContext(QtBitmap& target) : target_(&target) {}

QtContext::QtContext(double scale)
    : own_(std::make_unique<QtBitmap>(1, 1, scale)), target_(own_.get()) {}

std::unique_ptr<DrawingContext> QtContext::CreateCompatibleContext() {
  return std::make_unique<QtContext>(target_->scale);
}

std::unique_ptr<Bitmap> QtContext::CreateCompatibleBitmap(int width, int height) {
  if (width < 1 || height < 1) width = height = 1;
  auto bitmap =
      std::make_unique<QtBitmap>(LimitCoordinate(width), LimitCoordinate(height), target_->scale);
  if (bitmap->image.isNull()) return nullptr;
  return bitmap;
}

Bitmap* QtContext::SelectBitmap(Bitmap* bitmap) {
  if (bitmap == nullptr) return target_;
  return std::exchange(target_, static_cast<QtBitmap*>(bitmap));
}

bool QtContext::HasScaleOf(const DrawingContext& other) const {
  return target_->scale == static_cast<const QtContext&>(other).target_->scale;
}

Pen QtContext::SelectPen(const Pen& pen) { return std::exchange(pen_, pen); }

Brush QtContext::SelectBrush(const Brush& brush) { return std::exchange(brush_, brush); }

Font QtContext::SelectFont(Font font) {
  qt_font_ = FontOfCellHeight(font);
  return std::exchange(font_, std::move(font));
}

Color QtContext::SetTextColor(Color color) { return std::exchange(text_color_, color); }

Color QtContext::SetBackgroundColor(Color color) { return std::exchange(background_color_, color); }

BackgroundMode QtContext::SetBackgroundMode(BackgroundMode mode) {
  return std::exchange(background_mode_, mode);
}

void QtContext::MoveTo(Point point) { position_ = point; }

void QtContext::LineTo(Point point) {
  const Point from = std::exchange(position_, point);
  if (pen_.style == Pen::Style::Null || from == point) return;
  DrawLine(from, point);
}

void QtContext::DrawLine(Point from, Point to) {
  if (DrawsWide()) {
    Wide().DrawLine(ToQt(from), ToQt(to));
  } else if (IsThin() && target_->scale == 1.0) {
    DrawThinLine(from, to);
  } else if (IsThin()) {
    DrawThinLineScaled(from, to);
  } else {
    QPainter painter(&target_->image);
    BeginShape(painter);
    painter.drawLine(ToQt(from), ToQt(to));
  }
}

// Bresenham's line, set pixel by pixel: Qt's own thin line includes its last pixel and rounds
// halves the other way.
void QtContext::DrawThinLine(Point from, Point to) {
  const QPoint start = ToQt(from);
  const QPoint end = ToQt(to);
  const int dx = std::abs(end.x() - start.x());
  const int dy = std::abs(end.y() - start.y());
  const int step_x = end.x() > start.x() ? 1 : -1;
  const int step_y = end.y() > start.y() ? 1 : -1;
  const int length = std::max(dx, dy);
  int along_x = length / 2;
  int along_y = along_x;
  int x = start.x();
  int y = start.y();
  for (int i = 0; i < length; ++i) {
    SetPixel(x, y);
    along_x -= dx;
    if (along_x < 0) {
      along_x += length;
      x += step_x;
    }
    along_y -= dy;
    if (along_y < 0) {
      along_y += length;
      y += step_y;
    }
  }
}

void QtContext::SetPixel(int x, int y) {
  QImage& image = target_->image;
  if (image.valid(x, y)) image.setPixelColor(x, y, ToQt(pen_.color));
}

// On a finer raster a line of one pixel has a width. It runs from half a pixel before its first
// point to half a pixel before its last, which leaves the end pixel out.
void QtContext::DrawThinLineScaled(Point from, Point to) {
  const QPointF start = ToQt(from);
  const QPointF end = ToQt(to);
  const double length = std::hypot(end.x() - start.x(), end.y() - start.y());
  if (length == 0.0) return;
  const QPointF half = (end - start) / (2.0 * length);
  const QPointF middle(0.5, 0.5);
  QPainter painter(&target_->image);
  painter.scale(target_->scale, target_->scale);
  painter.setPen(QPen(ToQt(pen_.color), 1.0, Qt::SolidLine, Qt::FlatCap));
  painter.drawLine(start + middle - half, end + middle - half);
}

double QtContext::PenOffset() const {
  const bool on_pixel_middles = pen_.style == Pen::Style::Solid && std::max(pen_.width, 1) % 2 == 1;
  return on_pixel_middles ? 0.5 : 0.0;
}

void QtContext::BeginShape(QPainter& painter) const {
  painter.scale(target_->scale, target_->scale);
  painter.translate(PenOffset(), PenOffset());
  if (pen_.style == Pen::Style::Null) {
    painter.setPen(Qt::NoPen);
  } else {
    painter.setPen(QPen(ToQt(pen_.color), std::clamp(pen_.width, 1, kCoordinateLimit),
                        Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }
  painter.setBrush(ToQt(brush_.color));
}

// The middle of the outline runs one pixel inside of the right and bottom edges.
void QtContext::DrawRectangle(const Rect& box) {
  const Rect ordered = Ordered(box);
  if (ordered.Width() == 0 || ordered.Height() == 0) return;
  QPainter painter(&target_->image);
  BeginShape(painter);
  painter.drawRect(ToQt(ordered).adjusted(0.0, 0.0, -1.0, -1.0));
}

void QtContext::DrawEllipse(const Rect& box) {
  const Rect ordered = Ordered(box);
  if (ordered.Width() == 0 || ordered.Height() == 0) return;
  QPainter painter(&target_->image);
  BeginShape(painter);
  if (DrawsWide()) painter.setPen(Qt::NoPen);
  painter.drawEllipse(ToQt(ordered).adjusted(0.0, 0.0, -1.0, -1.0));
  painter.end();
  if (DrawsWide()) {
    Wide().DrawEllipse(QRect(ordered.left, ordered.top, ordered.Width(), ordered.Height()));
  }
}

bool QtContext::DrawsWide() const {
  return pen_.style == Pen::Style::Solid && !IsThin() && target_->scale == 1.0;
}

WidePen QtContext::Wide() {
  return {target_->image, std::min(pen_.width, kCoordinateLimit), ToQt(pen_.color).rgb()};
}

void QtContext::DrawPolygon(const Point* corners, int count) {
  if (count < 2) return;
  QPolygon polygon;
  for (int i = 0; i < count; ++i) polygon << ToQt(corners[i]);
  QPainter painter(&target_->image);
  BeginShape(painter);
  const bool own_outline = pen_.style == Pen::Style::Solid && target_->scale == 1.0;
  if (own_outline) painter.setPen(Qt::NoPen);
  painter.drawPolygon(polygon, Qt::OddEvenFill);
  painter.end();
  if (!own_outline) return;
  for (int i = 0; i < count; ++i) {
    DrawLine(corners[i], corners[(i + 1) % count]);
  }
}

void QtContext::FillRectangle(const Rect& box, const Brush& brush) {
  const Rect limited = {LimitCoordinate(box.left), LimitCoordinate(box.top),
                        LimitCoordinate(box.right), LimitCoordinate(box.bottom)};
  if (limited.Width() <= 0 || limited.Height() <= 0) return;
  QPainter painter(&target_->image);
  painter.scale(target_->scale, target_->scale);
  painter.fillRect(ToQt(limited), ToQt(brush.color));
}

void QtContext::DrawCenteredText(const std::wstring& text, const Rect& box) {
  const QString line = QString::fromStdWString(text);
  const int width = QFontMetrics(qt_font_).horizontalAdvance(line);
  const Rect limited = Ordered(box);
  const int left = limited.left + (limited.Width() - width) / 2;
  DrawText(QPointF(left, limited.top), line, &limited);
}

void QtContext::DrawTextAt(Point point, TextClip clip, const Rect* clip_box,
                           const std::wstring& text) {
  DrawText(ToQt(point), QString::fromStdWString(text),
           clip == TextClip::Clipped ? clip_box : nullptr);
}

void QtContext::DrawText(QPointF top_left, const QString& text, const Rect* clip_box) {
  const QFontMetrics metrics(qt_font_);
  QPainter painter(&target_->image);
  painter.scale(target_->scale, target_->scale);
  if (clip_box != nullptr) painter.setClipRect(ToQt(Ordered(*clip_box)));
  if (background_mode_ == BackgroundMode::Opaque) {
    painter.fillRect(QRectF(top_left, QSizeF(metrics.horizontalAdvance(text), metrics.height())),
                     ToQt(background_color_));
  }
  painter.setFont(qt_font_);
  painter.setPen(ToQt(text_color_));
  painter.drawText(top_left + QPointF(0.0, metrics.ascent()), text);
}

// Whole pictures are copied pixel by pixel, never resampled: on a scale factor of 1.5 an odd edge
// would be blurred otherwise.
void QtContext::CopyBlock(const Rect& place, DrawingContext& source, Point source_corner,
                          RasterOperation operation) {
  if (place.Width() <= 0 || place.Height() <= 0) return;
  const QImage& from = static_cast<QtContext&>(source).target_->image;
  const double scale = target_->scale;
  const QRect target(
      QPoint(Scaled(LimitCoordinate(place.left), scale), Scaled(LimitCoordinate(place.top), scale)),
      QPoint(Scaled(LimitCoordinate(place.right), scale) - 1,
             Scaled(LimitCoordinate(place.bottom), scale) - 1));
  const QPoint corner(Scaled(LimitCoordinate(source_corner.x), scale),
                      Scaled(LimitCoordinate(source_corner.y), scale));
  QPainter painter(&target_->image);
  painter.setCompositionMode(operation == RasterOperation::Or
                                 ? QPainter::RasterOp_SourceOrDestination
                                 : QPainter::CompositionMode_Source);
  const QRect available = QRect(corner, target.size()) & from.rect();
  painter.drawImage(target.topLeft() + (available.topLeft() - corner), from, available);
}

}  // namespace detail
}  // namespace tiltpole
