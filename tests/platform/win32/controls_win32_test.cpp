// The five controls as items of a real dialog, for as long as a working day repaints them.

// <psapi.h> needs the types of <windows.h>.
// clang-format off
#include <windows.h>
#include <psapi.h>
// clang-format on

#include <vector>

#include <gtest/gtest.h>

#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"

namespace {

class ControlsInADialog : public ::testing::Test {
 protected:
  ControlsInADialog()
      : dialog(CreateWindowExW(0, L"STATIC", L"Host", WS_POPUP | WS_VISIBLE, 20, 20, 460, 320,
                               nullptr, nullptr, nullptr, nullptr)) {
    AddItem(1, {0, 0, 155, 155});
    AddItem(2, {160, 0, 260, 155});
    AddItem(3, {270, 0, 370, 155});
    AddItem(4, {0, 160, 200, 300});
    AddItem(5, {210, 160, 410, 300});
    compass.AttachDialogItem(dialog, 1);
    left.AttachDialogItem(dialog, 2);
    right.AttachDialogItem(dialog, 3);
    plot_xy.AttachDialogItem(dialog, 4);
    plot_xz.AttachDialogItem(dialog, 5);
    plot_xy.InvalidateCtrl();
    plot_xz.InvalidateCtrl();
    Repaint();
  }
  ~ControlsInADialog() override { DestroyWindow(dialog); }

  void AddItem(UINT_PTR id, const RECT& place) const {
    CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE, place.left, place.top,
                    place.right - place.left, place.bottom - place.top, dialog,
                    reinterpret_cast<HMENU>(id), nullptr, nullptr);
  }

  void Repaint() const {
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
  }

  void Repaint(int times) {
    for (int i = 0; i < times; ++i) {
      compass.SetValue(i % 360);
      left.SetValue(i % 180);
      right.SetValue(180 + i % 180);
      Repaint();
    }
  }

  HWND dialog;
  tiltpole::CGraphCompass compass;
  tiltpole::CGraphIncline_Left left;
  tiltpole::CGraphIncline_Right right;
  tiltpole::CGraphMagnetic_XY plot_xy;
  tiltpole::CGraphMagnetic_XZ plot_xz;
};

// How many GDI objects the process may still make. Not every system can tell how many it has.
std::size_t FreeGdiObjects() {
  std::vector<HPEN> pens;
  while (HPEN pen = CreatePen(PS_SOLID, 1, RGB(1, 2, 3))) pens.push_back(pen);
  for (HPEN pen : pens) DeleteObject(pen);
  return pens.size();
}

std::size_t PrivateBytes() {
  PROCESS_MEMORY_COUNTERS counters = {};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

std::vector<COLORREF> PixelsOf(HWND window) {
  std::vector<COLORREF> pixels;
  const HDC device = GetDC(window);
  for (int y = 0; y < 300; y += 3) {
    for (int x = 0; x < 410; x += 3) pixels.push_back(GetPixel(device, x, y));
  }
  ReleaseDC(window, device);
  return pixels;
}

TEST_F(ControlsInADialog, TenThousandRepaintsLeaveObjectsAndMemoryWhereTheyWere) {
  Repaint(360);
  const std::size_t free_objects = FreeGdiObjects();
  const std::vector<COLORREF> picture = PixelsOf(dialog);
  const std::size_t memory = PrivateBytes();

  Repaint(2160);  // times five controls; whole turns, so that the last picture is the first

  EXPECT_EQ(FreeGdiObjects(), free_objects);
  EXPECT_EQ(PixelsOf(dialog), picture);
  EXPECT_LT(PrivateBytes(), memory + (1U << 20U));
}

TEST_F(ControlsInADialog, NewFacesGiveTheOldOnesBack) {
  Repaint(1);
  const std::size_t free_objects = FreeGdiObjects();
  for (int i = 0; i < 200; ++i) {
    compass.ReconstructControl();
    left.ReconstructControl();
    right.ReconstructControl();
    plot_xy.Clear();
    plot_xz.Clear();
    Repaint();
  }
  EXPECT_EQ(FreeGdiObjects(), free_objects);
}

TEST_F(ControlsInADialog, EveryControlGivesBackWhatItTookWhenItGoes) {
  const auto come_and_go = [this](int times) {
    for (int i = 0; i < times; ++i) {
      tiltpole::CGraphCompass own_compass;
      tiltpole::CGraphIncline_Left own_gauge;
      tiltpole::CGraphMagnetic_XY own_plot;
      ASSERT_TRUE(own_compass.CreateStatic({0, 0, 60, 60}, dialog, 11));
      ASSERT_TRUE(own_gauge.CreateStatic({0, 0, 60, 60}, dialog, 12));
      own_plot.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, 60, 60}, dialog, 13);
      Repaint();
    }
  };
  come_and_go(40);  // until the system has filled its own stores for windows
  const std::size_t free_objects = FreeGdiObjects();
  come_and_go(40);
  EXPECT_EQ(FreeGdiObjects(), free_objects);
}

TEST_F(ControlsInADialog, AScreenReaderFindsWhatEachItemShows) {
  compass.SetValue(90.0);
  for (int id = 1; id <= 5; ++id) {
    EXPECT_GT(GetWindowTextLengthW(GetDlgItem(dialog, id)), 5) << "item " << id;
  }
}

}  // namespace
