// Windows is not written for exceptions: where a message finds no memory, none may come out of the
// window's procedure, and the next paint shows the whole picture.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "support/allocations.h"
#include "tiltpole/controls/CGraphCompass.h"

namespace {

using tiltpole_test::Ended;
using tiltpole_test::FailAllocationAfter;
using tiltpole_test::FailEachAllocation;
using tiltpole_test::RunWithFailure;
using tiltpole_test::StopFailing;

// A compass of which one paint runs out of memory.
class StarvedCompass : public tiltpole::CGraphCompass {
 public:
  void OnPaint() override {
    ++paints;
    if (after < 0) return CGraphCompass::OnPaint();
    FailAllocationAfter(std::exchange(after, -1));
    CGraphCompass::OnPaint();
    ended = StopFailing() ? Ended::Coped : Ended::Done;
  }
  long after = -1;
  int paints = 0;
  Ended ended = Ended::Thrown;
};

class Win32Allocations : public ::testing::Test {
 protected:
  Win32Allocations()
      : dialog(CreateWindowExW(0, L"STATIC", L"Host", WS_POPUP | WS_VISIBLE, 20, 20, 200, 150,
                               nullptr, nullptr, nullptr, nullptr)) {}
  ~Win32Allocations() override { DestroyWindow(dialog); }

  void Paint() const {
    RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
  }

  static std::vector<COLORREF> PixelsOf(HWND window) {
    std::vector<COLORREF> pixels;
    const HDC device = GetDC(window);
    for (int y = 0; y < 100; y += 3) {
      for (int x = 0; x < 100; x += 3) pixels.push_back(GetPixel(device, x, y));
    }
    ReleaseDC(window, device);
    return pixels;
  }

  HWND dialog;
};

TEST_F(Win32Allocations, APaintThatFailsIsFollowedByAWholeOne) {
  std::vector<COLORREF> whole;
  {
    tiltpole::CGraphCompass undisturbed;
    ASSERT_TRUE(undisturbed.CreateStatic({0, 0, 100, 100}, dialog, 9));
    Paint();
    whole = PixelsOf(undisturbed.GetHandle());
  }
  const long failures = FailEachAllocation([&](long after) {
    StarvedCompass compass;
    EXPECT_TRUE(compass.CreateStatic({0, 0, 100, 100}, dialog, 9));
    compass.after = after;
    Paint();
    EXPECT_EQ(compass.paints, compass.ended == Ended::Thrown ? 2 : 1) << "after " << after;
    EXPECT_EQ(PixelsOf(compass.GetHandle()), whole) << "after " << after;
    return compass.ended;
  });
  EXPECT_GT(failures, 3);
}

TEST_F(Win32Allocations, APrintThatFailsLeavesAWindowThatPaintsOnItself) {
  const long failures = FailEachAllocation([&](long after) {
    StarvedCompass compass;
    EXPECT_TRUE(compass.CreateStatic({0, 0, 100, 100}, dialog, 9));
    Paint();
    const std::vector<COLORREF> whole = PixelsOf(compass.GetHandle());
    const HDC device = CreateCompatibleDC(nullptr);
    compass.after = after;
    SendMessageW(compass.GetHandle(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(device), PRF_CLIENT);
    DeleteDC(device);
    compass.SetMeterBackColor(tiltpole::Rgb(1, 2, 3));
    Paint();
    EXPECT_NE(PixelsOf(compass.GetHandle()), whole) << "after " << after;
    return compass.ended;
  });
  EXPECT_GT(failures, 1);
}

TEST_F(Win32Allocations, AQuestionForTheTextThatFailsIsAnsweredByTheSystem) {
  tiltpole::CGraphCompass compass;
  ASSERT_TRUE(compass.CreateStatic({0, 0, 100, 100}, dialog, 9));
  wchar_t text[64] = {};
  const long failures = FailEachAllocation([&](long after) {
    const Ended ended = RunWithFailure(after, [&] {
      SendMessageW(compass.GetHandle(), WM_GETTEXT, 64, reinterpret_cast<LPARAM>(text));
    });
    EXPECT_EQ(std::wstring(text), ended == Ended::Done ? L"Compass: 0.0 degrees" : L"")
        << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 1);
}

}  // namespace
