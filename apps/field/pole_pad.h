#pragma once

#include <QCoreApplication>
#include <QWidget>

#include "apps/field/simulated_source.h"

namespace tiltpole::field {

/// The simulated pole from above: drag its top to push it over, turn it with the wheel. Keys, while
/// the pad has the focus: left and right turn the pole about its axis, up and down turn it over,
/// with Shift all four push it over, Home stands it plumb.
class PolePad : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(PolePad)
 public:
  explicit PolePad(QWidget* parent);

  /// @param source  the pole, or null; stays the caller's
  void SetSource(SimulatedSource* source);
  QSize sizeHint() const override { return {112, 112}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QRectF Circle() const;
  void PushTo(const QPointF& place);
  void Push(double north, double east);

  SimulatedSource* source_ = nullptr;
};

}  // namespace tiltpole::field
