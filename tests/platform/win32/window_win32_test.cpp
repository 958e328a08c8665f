#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "tiltpole/platform/window.h"

namespace {

using tiltpole::Brush;
using tiltpole::DrawingContext;
using tiltpole::Rect;
using tiltpole::Rgb;

constexpr std::uint32_t kBothEdges = WS_EX_CLIENTEDGE | WS_EX_STATICEDGE;

class BlueLabel : public tiltpole::StaticWindow {
 public:
  void OnPaint() override {
    DrawingContext* context = BeginPaint();  // the system erases within
    calls.emplace_back("paint");
    context->FillRectangle(GetClientRect(), Brush{Rgb(0, 0, 255)});
    EndPaint();
  }
  int OnEraseBkgnd(DrawingContext* /*context*/) override {
    calls.emplace_back("erase");
    return 0;
  }
  void PreSubclassWindow() override { calls.emplace_back("subclass"); }
  std::wstring AccessibleName() const override { return L"Heading"; }
  std::wstring AccessibleValue() const override { return value; }

  std::vector<std::string> calls;
  std::wstring value = L"12 degrees";
};

class BlueChild : public tiltpole::ChildWindow {
 public:
  void OnPaint() override {
    BeginPaint()->FillRectangle(GetClientRect(), Brush{Rgb(0, 0, 255)});
    EndPaint();
    ++paints;
  }
  int paints = 0;
};

// A window of a host, with one label in it.
class Dialog : public ::testing::Test {
 protected:
  Dialog()
      : dialog(CreateWindowExW(0, L"STATIC", L"Host", WS_POPUP | WS_VISIBLE, 20, 20, 200, 150,
                               nullptr, nullptr, nullptr, nullptr)),
        item(CreateWindowExW(0, L"STATIC", L"Item", WS_CHILD | WS_VISIBLE, 10, 20, 60, 40, dialog,
                             MenuOf(7), nullptr, nullptr)) {
    Paint();
  }
  ~Dialog() override {
    if (IsWindow(dialog) != 0) DestroyWindow(dialog);
  }

  static HMENU MenuOf(UINT_PTR id) { return reinterpret_cast<HMENU>(id); }

  // Lets the windows paint what has been invalidated.
  void Paint() const {
    RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
  }

  static tiltpole::Color PixelOf(HWND window, int x, int y) {
    const HDC device = GetDC(window);
    const COLORREF color = GetPixel(device, x, y);
    ReleaseDC(window, device);
    return Rgb(GetRValue(color), GetGValue(color), GetBValue(color));
  }

  static std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
  }

  HWND dialog;
  HWND item;
};

using Win32StaticWindow = Dialog;
using Win32ChildWindow = Dialog;

TEST_F(Win32StaticWindow, ADialogItemShowsTheControlOnceItIsAttached) {
  BlueLabel label;
  ASSERT_TRUE(label.AttachDialogItem(dialog, 7));
  EXPECT_EQ(label.GetHandle(), item);
  Paint();
  EXPECT_EQ(label.calls, (std::vector<std::string>{"subclass", "erase", "paint"}));
  EXPECT_EQ(label.GetClientRect(), (Rect{0, 0, 60, 40}));
  EXPECT_EQ(PixelOf(item, 0, 0), Rgb(0, 0, 255));
  EXPECT_EQ(PixelOf(item, 59, 39), Rgb(0, 0, 255));
}

TEST_F(Win32StaticWindow, AnItemThatIsNotThereCannotBeAttached) {
  BlueLabel label;
  EXPECT_FALSE(label.AttachDialogItem(dialog, 8));
  EXPECT_FALSE(label.Attach(nullptr));
  EXPECT_EQ(label.GetHandle(), nullptr);
  EXPECT_TRUE(label.calls.empty());
}

TEST_F(Win32StaticWindow, IsAttachedToOneWindowAtATime) {
  BlueLabel label;
  ASSERT_TRUE(label.Attach(item));
  EXPECT_FALSE(label.Attach(dialog));
  EXPECT_FALSE(label.CreateStatic({0, 0, 10, 10}, dialog, 9));
  EXPECT_EQ(label.GetHandle(), item);
}

TEST_F(Win32StaticWindow, WhatIsDrawnAtOnceStaysWithoutAPaint) {
  BlueLabel label;
  label.Attach(item);
  Paint();
  label.calls.clear();

  DrawingContext* context = label.TakeContext();
  ASSERT_NE(context, nullptr);
  context->FillRectangle({0, 0, 5, 5}, Brush{Rgb(255, 0, 0)});
  label.ReleaseContext(context);
  Paint();

  EXPECT_EQ(PixelOf(item, 2, 2), Rgb(255, 0, 0));
  EXPECT_EQ(PixelOf(item, 12, 2), Rgb(0, 0, 255));
  EXPECT_TRUE(label.calls.empty());
}

// The class of labels lends out its parent's clip region.
TEST_F(Win32StaticWindow, WhatIsDrawnAtOnceStaysInsideOfTheWindow) {
  BlueLabel label;
  label.Attach(item);
  Paint();
  const tiltpole::Color neighbour = PixelOf(dialog, 72, 30);

  DrawingContext* context = label.TakeContext();
  context->FillRectangle({-100, -100, 100, 100}, Brush{Rgb(255, 0, 0)});
  label.ReleaseContext(context);

  EXPECT_EQ(PixelOf(item, 59, 39), Rgb(255, 0, 0));
  EXPECT_EQ(PixelOf(dialog, 72, 30), neighbour);
}

TEST_F(Win32StaticWindow, InvalidatingPaintsAgainAndErasesOnlyWhenAsked) {
  BlueLabel label;
  label.Attach(item);
  Paint();
  label.calls.clear();
  label.Invalidate(false);
  Paint();
  EXPECT_EQ(label.calls, (std::vector<std::string>{"paint"}));
  label.calls.clear();
  label.Invalidate(true);
  label.Invalidate(false);
  Paint();
  EXPECT_EQ(label.calls, (std::vector<std::string>{"erase", "paint"}));
}

TEST_F(Win32StaticWindow, WithoutAWindowThereIsNothingToDrawOn) {
  BlueLabel label;
  EXPECT_EQ(label.TakeContext(), nullptr);
  label.ReleaseContext(nullptr);
  label.Invalidate(true);
  label.AddStyle(0x4000);
  label.AnnounceValue();
  EXPECT_EQ(label.GetClientRect(), (Rect{0, 0, 0, 0}));
  EXPECT_EQ(label.GetStyle(), 0U);
}

TEST_F(Win32StaticWindow, StyleBitsAreAddedToTheWindowsOwn) {
  BlueLabel label;
  label.Attach(item);
  const LONG before = GetWindowLongW(item, GWL_STYLE);
  label.AddStyle(0x4000);
  EXPECT_EQ(GetWindowLongW(item, GWL_STYLE), before | 0x4000);
  EXPECT_EQ(label.GetStyle(), static_cast<std::uint32_t>(before) | 0x4000U);
}

TEST_F(Win32StaticWindow, ScreenReadersFindNameAndValueInTheWindowsText) {
  BlueLabel label;
  label.Attach(item);
  EXPECT_EQ(TextOf(item), L"Heading: 12 degrees");
  label.value.clear();
  EXPECT_EQ(TextOf(item), L"Heading");
  wchar_t three[4] = L"???";
  EXPECT_EQ(SendMessageW(item, WM_GETTEXT, 4, reinterpret_cast<LPARAM>(three)), 3);
  EXPECT_STREQ(three, L"Hea");
}

TEST_F(Win32StaticWindow, AWindowIsWhatItWasWhenTheObjectGoesFirst) {
  {
    BlueLabel label;
    label.Attach(item);
  }
  ASSERT_NE(IsWindow(item), 0);
  EXPECT_EQ(TextOf(item), L"Item");
  Paint();
  EXPECT_NE(PixelOf(item, 55, 35), Rgb(0, 0, 255));
}

TEST_F(Win32StaticWindow, TheObjectIsFreeAgainWhenTheWindowGoesFirst) {
  BlueLabel label;
  label.Attach(item);
  DestroyWindow(item);
  EXPECT_EQ(label.GetHandle(), nullptr);
  EXPECT_EQ(label.TakeContext(), nullptr);
  EXPECT_TRUE(label.Attach(dialog));
}

TEST_F(Win32StaticWindow, ALabelOfItsOwnComesAndGoesWithTheObject) {
  HWND own = nullptr;
  {
    BlueLabel label;
    ASSERT_TRUE(label.CreateStatic({100, 20, 150, 60}, dialog, 9));
    own = label.GetHandle();
    EXPECT_EQ(GetDlgItem(dialog, 9), own);
    Paint();
    EXPECT_EQ(PixelOf(own, 49, 39), Rgb(0, 0, 255));
  }
  EXPECT_EQ(IsWindow(own), 0);
}

TEST_F(Win32StaticWindow, APictureOfTheWindowCanBeTaken) {
  BlueLabel label;
  label.Attach(item);
  const HDC screen = GetDC(nullptr);
  const HDC device = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, 60, 40);
  const HGDIOBJ first = SelectObject(device, bitmap);
  SendMessageW(item, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(device), PRF_CLIENT);
  EXPECT_EQ(GetPixel(device, 59, 39), RGB(0, 0, 255));
  SelectObject(device, first);
  DeleteObject(bitmap);
  DeleteDC(device);
  ReleaseDC(nullptr, screen);
}

TEST_F(Win32ChildWindow, HasASunkenFrameOutsideOfTheClientArea) {
  BlueChild child;
  ASSERT_TRUE(child.CreateChild(L"TiltpoleTestChild", kBothEdges, WS_CHILD | WS_VISIBLE,
                                {10, 80, 50, 110}, dialog, 11));
  EXPECT_EQ(child.GetClientRect(), (Rect{0, 0, 34, 24}));
  Paint();
  EXPECT_EQ(child.paints, 1);
  EXPECT_EQ(PixelOf(child.GetHandle(), 33, 23), Rgb(0, 0, 255));
}

TEST_F(Win32ChildWindow, RegistersItsClassOnceWithRedrawOnChangesOfSize) {
  for (int i = 0; i < 2; ++i) {
    BlueChild child;
    ASSERT_TRUE(child.CreateChild(L"TiltpoleTestChild", 0, WS_CHILD, {0, 0, 10, 10}, dialog, 11));
  }
  WNDCLASSEXW registered = {};
  registered.cbSize = sizeof registered;
  ASSERT_NE(GetClassInfoExW(GetModuleHandleW(nullptr), L"TiltpoleTestChild", &registered), 0);
  EXPECT_EQ(registered.style, static_cast<UINT>(CS_HREDRAW | CS_VREDRAW));
  EXPECT_EQ(registered.hbrBackground, nullptr);
  EXPECT_EQ(registered.hCursor, nullptr);
  EXPECT_EQ(registered.hIcon, nullptr);
}

TEST_F(Win32ChildWindow, IsCreatedOnce) {
  BlueChild child;
  EXPECT_TRUE(child.CreateChild(L"TiltpoleTestChild", 0, WS_CHILD, {0, 0, 10, 10}, dialog, 1));
  EXPECT_FALSE(child.CreateChild(L"TiltpoleTestChild", 0, WS_CHILD, {0, 0, 20, 20}, dialog, 1));
  EXPECT_EQ(child.GetClientRect(), (Rect{0, 0, 10, 10}));
}

TEST_F(Win32ChildWindow, AChildWithoutAParentCannotBeCreated) {
  BlueChild child;
  EXPECT_FALSE(child.CreateChild(L"TiltpoleTestChild", 0, WS_CHILD, {0, 0, 10, 10}, nullptr, 1));
  EXPECT_EQ(child.GetHandle(), nullptr);
  EXPECT_EQ(child.TakeContext(), nullptr);
}

TEST_F(Win32ChildWindow, CanBeAttachedToADialogItemToo) {
  BlueChild child;
  ASSERT_TRUE(child.AttachDialogItem(dialog, 7));
  Paint();
  EXPECT_EQ(PixelOf(item, 59, 39), Rgb(0, 0, 255));
}

}  // namespace
