#pragma once

#include <QResizeEvent>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <memory>

#include "apps/field/turn_recording.h"
#include "tiltpole/controls/MagneticPoint.h"

namespace tiltpole::field {

/// A scatter plot of magnetometer A's readings over a turn, in a layout. A plot keeps the size that
/// it was created with, so it is made anew when its place has changed.
/// @tparam Plot  CGraphMagnetic_XY or CGraphMagnetic_XZ
template <typename Plot>
class TurnPlot : public QWidget {
 public:
  TurnPlot(const TurnRecording& turn, QWidget* parent) : QWidget(parent), turn_(turn) {
    settled_.setSingleShot(true);
    settled_.setInterval(kUntilSettled);
    QObject::connect(&settled_, &QTimer::timeout, this, [this] { MakePlot(); });
  }

  /// Shows the samples that have come since the last call.
  void Refresh() {
    if (!plot_) return;
    if (clears_ != turn_.Clears()) {
      plot_->Clear();
      shown_ = 0;
      clears_ = turn_.Clears();
    }
    AddNewReadings();
  }

  QSize sizeHint() const override { return {220, 180}; }
  QSize minimumSizeHint() const override { return {120, 100}; }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QWidget::resizeEvent(event);
    settled_.start();
  }

 private:
  static constexpr int kUntilSettled = 60;  // milliseconds

  void MakePlot() {
    constexpr std::uint32_t kVisibleChild = 0x50000000;
    plot_ = std::make_unique<Plot>();
    shown_ = 0;
    clears_ = turn_.Clears();
    // First, since a plot without an area finds no view for its readings and tries again and again.
    plot_->Create(L"", L"", kVisibleChild, {0, 0, width(), height()}, this, 1);
    AddNewReadings();
    plot_->ZoomAll();
  }

  void AddNewReadings() {
    for (; shown_ < turn_.Samples().size(); ++shown_) {
      const PoseSensorData& raw = turn_.Samples()[shown_];
      const MagneticPoint point = InWholeCounts(raw.MagneticX_A, raw.MagneticY_A, raw.MagneticZ_A);
      plot_->AddTrackPoint(point.x, point.y, point.z);
    }
  }

  const TurnRecording& turn_;
  QTimer settled_;
  std::size_t shown_ = 0;
  int clears_ = 0;
  std::unique_ptr<Plot> plot_;
};

}  // namespace tiltpole::field
