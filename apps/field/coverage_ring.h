#pragma once

#include <QCoreApplication>
#include <QWidget>

#include "apps/field/turn_recording.h"

namespace tiltpole::field {

/// A ring that shows which directions of a turn hold samples and which are missing, and where the
/// pole points now. The turn about the vertical is drawn as a compass, the other one as its plot.
class CoverageRing : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(CoverageRing)
 public:
  CoverageRing(const TurnRecording& turn, QWidget* parent);

  /// Draws what the turn has now.
  void Refresh() { update(); }

  QSize sizeHint() const override { return {140, 140}; }
  QSize minimumSizeHint() const override { return {100, 100}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// Counter-clockwise from the right, as Qt counts.
  double ScreenAngle(double direction) const;
  void DrawSectors(QPainter& painter, const QRectF& outer) const;
  void DrawLabels(QPainter& painter, const QRectF& outer) const;
  void DrawDirection(QPainter& painter, const QRectF& outer) const;

  const TurnRecording& turn_;
};

}  // namespace tiltpole::field
