#include "platform_scenes/backend.h"

#include <QApplication>
#include <QImage>

#include "tiltpole/platform/qt/drawing_qt.h"

namespace scenes {
namespace {

Picture FromImage(const QImage& image) {
  Picture picture{image.width(), image.height(), {}};
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor color = image.pixelColor(x, y);
      picture.pixels.push_back(tiltpole::Rgb(static_cast<std::uint8_t>(color.red()),
                                             static_cast<std::uint8_t>(color.green()),
                                             static_cast<std::uint8_t>(color.blue())));
    }
  }
  return picture;
}

QApplication* application = nullptr;

}  // namespace

Session::Session(int& argc, char** argv) { application = new QApplication(argc, argv); }
Session::~Session() { delete application; }

Picture Drawn(tiltpole::Size size, const std::function<void(tiltpole::DrawingContext&)>& draw) {
  tiltpole::detail::QtBitmap bitmap(size.width, size.height, 1.0);
  tiltpole::detail::QtContext context(bitmap);
  draw(context);
  return FromImage(bitmap.image);
}

void Show(tiltpole::StaticWindow& control, tiltpole::Size size) {
  control.resize(size.width, size.height);
}

tiltpole::ParentWindow Parent() { return nullptr; }

Picture Painted(tiltpole::StaticWindow& control) { return FromImage(control.grab().toImage()); }

Picture Painted(tiltpole::ChildWindow& control) {
  const tiltpole::Rect client = control.GetClientRect();
  return FromImage(control.grab(QRect(3, 3, client.Width(), client.Height())).toImage());
}

}  // namespace scenes
