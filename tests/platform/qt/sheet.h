#pragma once

// A picture in memory to draw on, and its pixels.

#include "tiltpole/platform/qt/drawing_qt.h"

namespace tiltpole_test {

class Sheet {
 public:
  Sheet(int width, int height, double scale = 1.0)
      : bitmap(width, height, scale), context(bitmap) {}

  int Width() const { return bitmap.image.width(); }
  int Height() const { return bitmap.image.height(); }
  tiltpole::Color PixelAt(int x, int y) const {
    const QColor color = bitmap.image.pixelColor(x, y);
    return tiltpole::Rgb(static_cast<std::uint8_t>(color.red()),
                         static_cast<std::uint8_t>(color.green()),
                         static_cast<std::uint8_t>(color.blue()));
  }

 private:
  tiltpole::detail::QtBitmap bitmap;

 public:
  tiltpole::detail::QtContext context;
};

}  // namespace tiltpole_test
