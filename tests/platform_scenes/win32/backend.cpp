#include "platform_scenes/backend.h"

#include <windows.h>

#include "tiltpole/platform/win32/drawing_win32.h"

namespace scenes {
namespace {

HWND parent = nullptr;

Picture FromDevice(HDC device, int width, int height) {
  Picture picture{width, height, {}};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const COLORREF color = GetPixel(device, x, y);
      picture.pixels.push_back(tiltpole::Rgb(GetRValue(color), GetGValue(color), GetBValue(color)));
    }
  }
  return picture;
}

Picture PaintedClient(tiltpole::detail::Win32Window& control) {
  const tiltpole::Rect client = control.GetClientRect();
  return Drawn({client.Width(), client.Height()}, [&](tiltpole::DrawingContext& context) {
    const HDC device = static_cast<tiltpole::detail::Win32Context&>(context).device();
    SendMessageW(control.GetHandle(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(device), PRF_CLIENT);
  });
}

}  // namespace

Session::Session(int& /*argc*/, char** /*argv*/) {
  parent = CreateWindowExW(0, L"STATIC", L"Scenes", WS_POPUP, 0, 0, 600, 600, nullptr, nullptr,
                           nullptr, nullptr);
}
Session::~Session() { DestroyWindow(parent); }

Picture Drawn(tiltpole::Size size, const std::function<void(tiltpole::DrawingContext&)>& draw) {
  const auto bitmap = tiltpole::detail::MakeScreenBitmap(size.width, size.height);
  tiltpole::detail::Win32MemoryContext context(tiltpole::detail::MemoryDevice(nullptr));
  context.SelectBitmap(bitmap.get());
  draw(context);
  return FromDevice(context.device(), size.width, size.height);
}

void Show(tiltpole::StaticWindow& control, tiltpole::Size size) {
  control.CreateStatic({0, 0, size.width, size.height}, Parent(), 1);
}

tiltpole::ParentWindow Parent() { return parent; }

Picture Painted(tiltpole::StaticWindow& control) { return PaintedClient(control); }

Picture Painted(tiltpole::ChildWindow& control) { return PaintedClient(control); }

}  // namespace scenes
