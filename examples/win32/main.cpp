// The smallest native host: one dialog with the five controls, fed from a session file.
// usage: win32_dialog SESSION.csv [SCREENSHOT.ppm]

#include <cstdio>
#include <exception>
#include <iostream>

#include <windows.h>

#include "apps/session/input_file.h"
#include "apps/session/session_reader.h"
#include "examples/feed.h"
#include "resource.h"
#include "screenshot.h"
#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"

namespace {

// [dialog]
struct Controls {
  // Each item of the dialog's template becomes the control.
  bool AttachTo(HWND dialog) {
    const bool attached = compass.AttachDialogItem(dialog, IDC_COMPASS) &&
                          left.AttachDialogItem(dialog, IDC_INCLINE_LEFT) &&
                          right.AttachDialogItem(dialog, IDC_INCLINE_RIGHT) &&
                          turn_about_z.AttachDialogItem(dialog, IDC_MAGNETIC_XY) &&
                          turn_about_y.AttachDialogItem(dialog, IDC_MAGNETIC_XZ);
    // A plot that is attached, not created, draws its picture when it is told to.
    turn_about_z.InvalidateCtrl();
    turn_about_y.InvalidateCtrl();
    return attached;
  }

  tiltpole::CGraphCompass compass;
  tiltpole::CGraphIncline_Left left;
  tiltpole::CGraphIncline_Right right;
  tiltpole::CGraphMagnetic_XY turn_about_z;
  tiltpole::CGraphMagnetic_XZ turn_about_y;
};
// [dialog]

struct Host {
  Controls controls;
  tiltpole::session::SessionReader& session;
  const char* screenshot;
};

constexpr UINT_PTR kScreenshotTimer = 1;

INT_PTR CALLBACK HandleDialog(HWND dialog, UINT message, WPARAM first, LPARAM second) {
  if (message == WM_INITDIALOG) {
    auto& host = *reinterpret_cast<Host*>(second);
    SetWindowLongPtrW(dialog, DWLP_USER, second);
    if (!host.controls.AttachTo(dialog)) EndDialog(dialog, 1);
    example::Feed(host.controls, host.session);
    if (host.screenshot != nullptr) SetTimer(dialog, kScreenshotTimer, 300, nullptr);
    return TRUE;
  }
  if (message == WM_TIMER) {
    const auto& host = *reinterpret_cast<Host*>(GetWindowLongPtrW(dialog, DWLP_USER));
    EndDialog(dialog, SaveScreenshot(dialog, host.screenshot) ? 0 : 1);
    return TRUE;
  }
  if (message == WM_COMMAND && LOWORD(first) == IDCANCEL) {
    EndDialog(dialog, 0);
    return TRUE;
  }
  return FALSE;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc < 2) {
    std::fputs("usage: win32_dialog SESSION.csv [SCREENSHOT.ppm]\n", stderr);
    return 2;
  }
  tiltpole::session::InputFile file(argv[1], std::cin);
  tiltpole::session::SessionReader session(file.Stream(), file.Name());
  Host host{{}, session, argc > 2 ? argv[2] : nullptr};
  return static_cast<int>(DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_POLE),
                                          nullptr, HandleDialog, reinterpret_cast<LPARAM>(&host)));
} catch (const std::exception& error) {
  std::fprintf(stderr, "%s\n", error.what());
  return 2;
}
