// The five controls as widgets: in a host's layouts, on fine screens, for a long time.

#include <QApplication>
#include <QGridLayout>
#include <QImage>
#include <array>
#include <cmath>
#include <fstream>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"

namespace {

constexpr std::uint32_t kVisibleChild = 0x50000000;

struct Dialog : QWidget {
  Dialog() {
    auto* layout = new QGridLayout(this);
    layout->addWidget(&compass, 0, 0);
    layout->addWidget(&left, 0, 1);
    layout->addWidget(&right, 0, 2);
    xy.Create(L"", L"", kVisibleChild, {0, 0, 200, 200}, this, 1);
    xz.Create(L"", L"", kVisibleChild, {0, 0, 200, 200}, this, 2);
    xy.setFixedSize(xy.size());
    xz.setFixedSize(xz.size());
    layout->addWidget(&xy, 1, 0);
    layout->addWidget(&xz, 1, 1, 1, 2);
  }

  tiltpole::CGraphCompass compass;
  tiltpole::CGraphIncline_Left left;
  tiltpole::CGraphIncline_Right right;
  tiltpole::CGraphMagnetic_XY xy;
  tiltpole::CGraphMagnetic_XZ xz;
};

// Pages of memory that the process holds.
long ResidentPages() {
  std::ifstream file("/proc/self/statm");
  long all = 0;
  long resident = 0;
  file >> all >> resident;
  return resident;
}

void Update(Dialog& dialog, int i) {
  dialog.compass.SetValue(i * 0.7);
  dialog.left.SetValue(i % 181);
  dialog.right.SetValue(180 + i % 181);
  dialog.xy.AddTrackPoint(i % 100 - 50, i % 90 - 45, 0);
  dialog.xz.AddTrackPoint(i % 100 + 50, 0, i % 90 - 45);
  dialog.repaint();
  QApplication::processEvents();
}

TEST(QtControls, TenThousandUpdatesAndRepaintsLeaveTheMemoryWhereItWas) {
  Dialog dialog;
  dialog.show();
  for (int i = 0; i < 1000; ++i) Update(dialog, i);
  const long before = ResidentPages();
  ASSERT_GT(before, 0);
  for (int i = 0; i < 10000; ++i) Update(dialog, i);
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer keeps blocks that were freed";
#endif
  // The plots keep their points: two times 10,000 of 12 bytes, in arrays that grow by doubling.
  constexpr long kPageBytes = 4096;
  EXPECT_LT((ResidentPages() - before) * kPageBytes, 1024 * 1024);
}

TEST(QtControls, TellAScreenReaderTheirNameAndValue) {
  Dialog dialog;
  dialog.compass.SetValue(37.0);
  dialog.left.SetValue(62.0);
  dialog.grab();
  EXPECT_FALSE(dialog.compass.accessibleName().isEmpty());
  EXPECT_TRUE(dialog.compass.accessibleDescription().contains("37"));
  EXPECT_TRUE(dialog.left.accessibleDescription().contains("62"));
  EXPECT_FALSE(dialog.xy.accessibleName().isEmpty());
  EXPECT_FALSE(dialog.xz.accessibleName().isEmpty());
}

// Smoothing or resampling would bring in colours between those that were asked for.
TEST(QtControls, APlotHasItsOwnColoursAloneOnEveryScreen) {
  tiltpole::CGraphMagnetic_XY plot;
  plot.Create(L"", L"", 0, {0, 0, 150, 150}, nullptr, 1);
  for (int i = 0; i < 50; ++i) plot.AddTrackPoint(i * 7 - 200, i * 5 - 130, 0);
  const QImage picture = plot.grab().toImage();
  // Inside of the frame, and above the labels, which are smoothed as all text is.
  std::set<QRgb> colours;
  const int frame = static_cast<int>(std::ceil(3 * picture.devicePixelRatio()));
  const int rows = static_cast<int>(std::floor(55 * picture.devicePixelRatio()));
  for (int y = frame; y < rows; ++y) {
    for (int x = frame; x < picture.width() - frame; ++x) {
      colours.insert(picture.pixel(x, y) & 0xFFFFFF);
    }
  }
  EXPECT_EQ(colours, (std::set<QRgb>{0x000000, 0xFFFFFF}));
}

TEST(QtControls, ADialFillsItsWidgetToTheEdgeOnEveryScreen) {
  tiltpole::CGraphCompass compass;
  compass.resize(155, 205);
  const QImage picture = compass.grab().toImage();
  const QRgb ground = qRgb(102, 255, 255);
  EXPECT_EQ(picture.pixel(0, 0), ground);
  EXPECT_EQ(picture.pixel(picture.width() - 1, 0), ground);
  EXPECT_EQ(picture.pixel(0, picture.height() - 1), ground);
  EXPECT_EQ(picture.pixel(picture.width() - 1, picture.height() - 1), ground);
  const int middle = static_cast<int>(102 * picture.devicePixelRatio());
  EXPECT_EQ(picture.pixel(static_cast<int>(20 * picture.devicePixelRatio()), middle),
            qRgb(204, 255, 102));
}

// A control in a window that a test can move to a screen of another scale.
template <class Control>
class Movable : public Control {
 public:
  double scale = 1.0;

 protected:
  int metric(QPaintDevice::PaintDeviceMetric asked) const override {
    if (asked == QPaintDevice::PdmDevicePixelRatio) return static_cast<int>(scale);
    if (asked == QPaintDevice::PdmDevicePixelRatioScaled) {
      return static_cast<int>(scale * QPaintDevice::devicePixelRatioFScale());
    }
    return Control::metric(asked);
  }
};

template <class Control>
void Fill(Control& dial) {
  dial.resize(155, 155);
  dial.SetValue(200.0);
  dial.SetFix(210);
}

void Fill(Movable<tiltpole::CGraphIncline_Left>& gauge) {
  gauge.resize(155, 155);
  gauge.SetValue(100.0);
  gauge.SetFix(120);
}

template <class Plot>
void FillPlot(Plot& plot) {
  plot.Create(L"", L"", 0, {0, 0, 155, 155}, nullptr, 1);
  for (int i = 0; i < 50; ++i) plot.AddTrackPoint(i * 7, i * 5 - 400, i * 5 - 400);
  plot.ZoomAll();  // whatever the view of the run before was
  plot.AddCenterPoint(40, -300, -300);
}

void Fill(Movable<tiltpole::CGraphMagnetic_XY>& plot) { FillPlot(plot); }
void Fill(Movable<tiltpole::CGraphMagnetic_XZ>& plot) { FillPlot(plot); }

template <class Control>
class QtScreens : public ::testing::Test {};

using Controls = ::testing::Types<tiltpole::CGraphCompass, tiltpole::CGraphIncline_Left,
                                  tiltpole::CGraphIncline_Right, tiltpole::CGraphMagnetic_XY,
                                  tiltpole::CGraphMagnetic_XZ>;
struct ControlNames {
  template <class Control>
  static std::string GetName(int index) {
    constexpr std::array<const char*, 5> kNames = {"Compass", "Left", "Right", "XY", "XZ"};
    return kNames.at(static_cast<std::size_t>(index));
  }
};
TYPED_TEST_SUITE(QtScreens, Controls, ControlNames);

TYPED_TEST(QtScreens, AControlThatComesToAScreenOfAnotherScaleLooksAsOneThatWasMadeThere) {
  Movable<TypeParam> moved;
  Fill(moved);
  moved.grab();
  for (const double scale : {2.0, 1.5, 1.0}) {
    moved.scale = scale;
    Movable<TypeParam> made_there;
    made_there.scale = scale;
    Fill(made_there);
    EXPECT_EQ(moved.grab().toImage(), made_there.grab().toImage()) << scale;
  }
}

TYPED_TEST(QtScreens, WhatIsSetBeforeTheFirstPaintOnAnotherScreenIsShownThere) {
  Movable<TypeParam> moved;
  Fill(moved);
  moved.grab();
  moved.scale = 2.0;
  Fill(moved);
  Movable<TypeParam> made_there;
  made_there.scale = 2.0;
  Fill(made_there);
  EXPECT_EQ(moved.grab().toImage(), made_there.grab().toImage());
}

TEST(QtControls, AfterAResizeAndReconstructTheDialHasTheNewSize) {
  tiltpole::CGraphCompass compass;
  compass.resize(100, 100);
  compass.grab();
  compass.resize(300, 300);
  compass.ReconstructControl();
  const QImage picture = compass.grab().toImage();
  const double scale = picture.devicePixelRatio();
  EXPECT_EQ(picture.pixel(static_cast<int>(150 * scale), static_cast<int>(280 * scale)),
            qRgb(204, 255, 102));
}

}  // namespace
