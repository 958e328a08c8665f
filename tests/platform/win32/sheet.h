#pragma once

// A picture in memory to draw on, and its pixels.

#include <memory>

#include "tiltpole/platform/win32/drawing_win32.h"

namespace tiltpole_test {

class Sheet {
 public:
  Sheet(int width, int height)
      : width_(width),
        height_(height),
        bitmap_(tiltpole::detail::MakeScreenBitmap(width, height)),
        context(tiltpole::detail::MemoryDevice(nullptr)) {
    context.SelectBitmap(bitmap_.get());
  }

  int Width() const { return width_; }
  int Height() const { return height_; }
  tiltpole::Color PixelAt(int x, int y) const {
    const COLORREF color = GetPixel(context.device(), x, y);
    return tiltpole::Rgb(GetRValue(color), GetGValue(color), GetBValue(color));
  }

 private:
  int width_;
  int height_;
  std::unique_ptr<tiltpole::detail::Win32Bitmap> bitmap_;

 public:
  tiltpole::detail::Win32MemoryContext context;
};

}  // namespace tiltpole_test
