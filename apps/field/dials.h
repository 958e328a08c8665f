#pragma once

#include <QCoreApplication>
#include <QLabel>
#include <QResizeEvent>
#include <QWidget>

#include "apps/field/measuring.h"
#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"

namespace tiltpole::field {

/// A dial in a layout: its face is drawn anew when its size has changed.
template <typename Dial>
class ResizingDial : public Dial {
 protected:
  void resizeEvent(QResizeEvent* event) override {
    Dial::resizeEvent(event);
    this->ReconstructControl();
  }
};

/// The compass with the heading, and the gauges with the angle between the horizontal and the pole
/// as seen along and across: 90 in the middle for a plumb pole.
class Dials : public QWidget {
  Q_DECLARE_TR_FUNCTIONS(Dials)
 public:
  explicit Dials(QWidget* parent);

  void Show(const Reading& reading);
  /// There is no reading: dials and figures go, and it says so in their place.
  void ShowNothing();

 private:
  void SetDialsShown(bool compass, bool gauges);

  ResizingDial<CGraphCompass>* compass_;
  ResizingDial<CGraphIncline_Left>* along_;
  ResizingDial<CGraphIncline_Right>* across_;
  QLabel* no_compass_;
  QLabel* no_along_;
  QLabel* no_across_;
  QLabel* heading_;
  QLabel* tilt_;
};

}  // namespace tiltpole::field
