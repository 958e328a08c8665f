#include "apps/field/pole_pad.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <QtMath>
#include <algorithm>
#include <cmath>

namespace tiltpole::field {
namespace {

constexpr double kTiltAtRim = 60.0;
constexpr double kStepOfKeys = 5.0;

}  // namespace

PolePad::PolePad(QWidget* parent) : QWidget(parent) {
  setObjectName("pole_pad");
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(tr("Simulated pole, seen from above"));
}

void PolePad::SetSource(SimulatedSource* source) {
  source_ = source;
  update();
}

QRectF PolePad::Circle() const {
  const double side = std::min(width(), height()) - 6.0;
  return {(width() - side) / 2.0, (height() - side) / 2.0, side, side};
}

void PolePad::PushTo(const QPointF& place) {
  if (source_ == nullptr) return;
  const QPointF from_middle = place - Circle().center();
  const double share = std::hypot(from_middle.x(), from_middle.y()) / (Circle().width() / 2.0);
  const double lean = qRadiansToDegrees(std::atan2(from_middle.x(), -from_middle.y()));
  source_->PushOver(std::min(1.0, share) * kTiltAtRim, lean);
  update();
}

void PolePad::Push(double north, double east) {
  const double lean = qDegreesToRadians(source_->Lean());
  const double to_north = source_->Tilt() * std::cos(lean) + north;
  const double to_east = source_->Tilt() * std::sin(lean) + east;
  source_->PushOver(std::hypot(to_north, to_east),
                    qRadiansToDegrees(std::atan2(to_east, to_north)));
}

void PolePad::mousePressEvent(QMouseEvent* event) { PushTo(event->position()); }

void PolePad::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) != 0) PushTo(event->position());
}

void PolePad::wheelEvent(QWheelEvent* event) {
  if (source_ == nullptr) return;
  source_->TurnBy(kStepOfKeys * event->angleDelta().y() / 120.0);
  event->accept();
  update();
}

void PolePad::keyPressEvent(QKeyEvent* event) {
  if (source_ == nullptr) return;
  const bool push = (event->modifiers() & Qt::ShiftModifier) != 0;
  switch (event->key()) {
    case Qt::Key_Left:
      push ? Push(0.0, -kStepOfKeys) : source_->TurnBy(-kStepOfKeys);
      break;
    case Qt::Key_Right:
      push ? Push(0.0, kStepOfKeys) : source_->TurnBy(kStepOfKeys);
      break;
    case Qt::Key_Up:
      push ? Push(kStepOfKeys, 0.0) : source_->TurnOverBy(kStepOfKeys);
      break;
    case Qt::Key_Down:
      push ? Push(-kStepOfKeys, 0.0) : source_->TurnOverBy(-kStepOfKeys);
      break;
    case Qt::Key_Home:
      source_->StandPlumb();
      break;
    default:
      QWidget::keyPressEvent(event);
      return;
  }
  update();
}

void PolePad::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF circle = Circle();
  painter.setPen(QPen(hasFocus() ? QColor(0, 64, 192) : QColor(Qt::black), hasFocus() ? 4.0 : 2.0));
  painter.setBrush(QColor(240, 240, 240));
  painter.drawEllipse(circle);
  painter.setPen(QPen(QColor(120, 120, 120), 1.0));
  painter.setBrush(Qt::NoBrush);
  for (const double tilt : {20.0, 40.0}) {
    const double inset = (1.0 - tilt / kTiltAtRim) * circle.width() / 2.0;
    painter.drawEllipse(circle.adjusted(inset, inset, -inset, -inset));
  }
  painter.setPen(Qt::black);
  painter.drawText(circle, Qt::AlignHCenter | Qt::AlignTop, tr("N"));
  if (source_ == nullptr) return;
  const session::Attitude attitude = source_->Current();
  // East is to the right, west the second of the pole's world axes.
  const auto on_pad = [&circle](const session::Vector3& direction, double share) {
    return circle.center() +
           QPointF(-direction.y * share, -direction.x * share) * circle.width() / 2.0;
  };
  const double lean = qDegreesToRadians(source_->Lean());
  const double share = source_->Tilt() / kTiltAtRim;
  const QPointF top =
      circle.center() + QPointF(std::sin(lean), -std::cos(lean)) * share * circle.width() / 2.0;
  painter.setPen(QPen(Qt::black, 4.0));
  painter.drawLine(circle.center(), top);
  painter.setPen(QPen(QColor(200, 0, 0), 3.0));
  painter.drawLine(top, top + on_pad(attitude.Forward(), 0.35) - circle.center());
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(200, 0, 0));
  painter.drawEllipse(top, 8.0, 8.0);
}

}  // namespace tiltpole::field
