#include "tiltpole/platform/qt/window_qt.h"

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include <qdrawutil.h>

#include "tiltpole/platform/memory_failure.h"
#include "tiltpole/platform/qt/drawing_qt.h"
#include "tiltpole/platform/qt/message_box_qt.h"

namespace tiltpole {
namespace detail {
namespace {

constexpr Size kPreferredSize = {200, 200};

}  // namespace

QtWindow::QtWindow() {
  ShowMessagesInQtBoxes();
  setAttribute(Qt::WA_OpaquePaintEvent);
}

QtWindow::~QtWindow() = default;

Size QtWindow::PreferredSize() const { return kPreferredSize; }

QSize QtWindow::sizeHint() const {
  const Size size = PreferredSize();
  return {size.width, size.height};
}

Rect QtWindow::GetClientRect() const {
  if (!Exists()) return {};
  return {0, 0, std::max(0, width() - 2 * FrameWidth()), std::max(0, height() - 2 * FrameWidth())};
}

// The picture follows the widget's size and the screen's scale. It is never empty, since a client
// area without pixels can be drawn on all the same.
void QtWindow::PrepareSurface() {
  const Rect client = GetClientRect();
  const double scale = devicePixelRatioF();
  if (surface_ && surface_->HasSize(client.Width(), client.Height(), scale)) return;
  surface_ = std::make_unique<QtBitmap>(client.Width(), client.Height(), scale);
  invalid_ = true;
  erase_ = true;
}

DrawingContext* QtWindow::BeginPaint() {
  invalid_ = false;
  erase_ = false;
  paint_context_ = std::make_unique<QtContext>(*surface_);
  return paint_context_.get();
}

void QtWindow::EndPaint() { paint_context_.reset(); }

DrawingContext* QtWindow::TakeContext() {
  if (!Exists()) return nullptr;
  PrepareSurface();
  return new QtContext(*surface_);
}

void QtWindow::ReleaseContext(DrawingContext* context) {
  if (context == nullptr) return;
  delete context;
  UpdateSoon();
}

// A context is released, and a paint is ended, where nothing may be thrown. Without the memory to
// ask for it, the update waits for the next one.
void QtWindow::UpdateSoon() {
  HadMemoryFor([this] { update(); });
}

void QtWindow::Invalidate(bool erase) {
  if (!Exists()) return;
  invalid_ = true;
  erase_ = erase_ || erase;
  update();
}

// What the host has said itself stays. Qt tells the rest to a screen reader that listens now, and
// keeps it for one that comes later.
void QtWindow::AnnounceValue() {
  if (accessibleName().isEmpty()) setAccessibleName(QString::fromStdWString(AccessibleName()));
  if (accessibleDescription() != told_value_) return;
  const QString value = QString::fromStdWString(AccessibleValue());
  setAccessibleDescription(value);
  told_value_ = value;
}

// Polishing comes once, after the control's own constructor and before the first paint.
bool QtWindow::event(QEvent* event) {
  if (event->type() == QEvent::Polish && !std::exchange(subclassed_, true)) {
    HadMemoryFor([this] {
      PreSubclassWindow();
      AnnounceValue();
    });
  }
  return QWidget::event(event);
}

void QtWindow::RepaintSurface() {
  if (erase_) {
    QtContext context(*surface_);
    OnEraseBkgnd(&context);
  }
  OnPaint();
}

// What a paint without memory leaves behind may be anything between the old picture and the new
// one; the next paint begins with an empty one.
void QtWindow::paintEvent(QPaintEvent* event) {
  const bool shown = HadMemoryFor([&] {
    ShowPicture(event->region());
    DrawFrame();
  });
  if (shown) return;
  paint_context_.reset();
  surface_.reset();
  UpdateSoon();
}

void QtWindow::ShowPicture(const QRegion& region) {
  if (!Exists()) {
    QPainter(this).fillRect(rect(), palette().window());
    return;
  }
  PrepareSurface();
  if (invalid_) RepaintSurface();
  const double scale = surface_->scale;
  QImage& image = surface_->image;
  image.setDevicePixelRatio(scale);
  QPainter painter(this);
  painter.setClipRegion(region);
  painter.drawImage(QPoint(FrameWidth(), FrameWidth()), image);
  painter.end();
  // The contexts count the picture's own pixels.
  image.setDevicePixelRatio(1.0);
}

}  // namespace detail

int StaticWindow::OnEraseBkgnd(DrawingContext* context) {
  const QColor window = palette().color(QPalette::Window);
  context->FillRectangle(GetClientRect(), Brush{Rgb(static_cast<std::uint8_t>(window.red()),
                                                    static_cast<std::uint8_t>(window.green()),
                                                    static_cast<std::uint8_t>(window.blue()))});
  return 1;
}

int ChildWindow::OnEraseBkgnd(DrawingContext* /*context*/) { return 0; }

bool ChildWindow::CreateChild(const wchar_t* /*window_class*/, std::uint32_t extended_style,
                              std::uint32_t style, const Rect& place, ParentWindow parent,
                              unsigned id) {
  constexpr std::uint32_t kVisible = 0x10000000;
  constexpr std::uint32_t kClientEdge = 0x200;
  constexpr std::uint32_t kStaticEdge = 0x20000;
  if (created_) return false;
  AddStyle(style);
  frame_width_ =
      ((extended_style & kClientEdge) != 0 ? 2 : 0) + ((extended_style & kStaticEdge) != 0 ? 1 : 0);
  if (parent != nullptr) setParent(parent);
  if (objectName().isEmpty()) setObjectName(QString::number(id));
  setGeometry(LimitCoordinate(place.left), LimitCoordinate(place.top),
              std::clamp(place.Width(), 0, kCoordinateLimit),
              std::clamp(place.Height(), 0, kCoordinateLimit));
  created_ = true;
  ensurePolished();
  if ((style & kVisible) != 0) show();
  return true;
}

void ChildWindow::DrawFrame() {
  if (frame_width_ == 0) return;
  QPainter painter(this);
  qDrawShadePanel(&painter, rect(), palette(), true, frame_width_);
}

}  // namespace tiltpole
