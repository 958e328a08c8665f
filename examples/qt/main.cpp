// The smallest host on Qt: one dialog with the five controls, fed from a session file.
// usage: qt_dialog SESSION.csv [SCREENSHOT.png]

#include <QApplication>
#include <QGridLayout>
#include <QTimer>
#include <exception>
#include <iostream>

#include "apps/session/input_file.h"
#include "apps/session/session_reader.h"
#include "examples/feed.h"
#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"

namespace {

// [dialog]
class Dialog : public QWidget {
 public:
  Dialog() {
    auto* layout = new QGridLayout(this);
    compass.setMinimumSize(300, 300);
    layout->addWidget(&compass, 0, 0);
    layout->addWidget(&left, 0, 1);
    layout->addWidget(&right, 0, 2);
    constexpr std::uint32_t kVisibleChild = 0x50000000;
    turn_about_z.Create(L"", L"", kVisibleChild, {0, 0, 300, 300}, this, 1);
    turn_about_y.Create(L"", L"", kVisibleChild, {0, 0, 300, 300}, this, 2);
    // A plot keeps the size that it was created with.
    turn_about_z.setFixedSize(turn_about_z.size());
    turn_about_y.setFixedSize(turn_about_y.size());
    layout->addWidget(&turn_about_z, 1, 0);
    layout->addWidget(&turn_about_y, 1, 1, 1, 2);
  }

  tiltpole::CGraphCompass compass;
  tiltpole::CGraphIncline_Left left;
  tiltpole::CGraphIncline_Right right;
  tiltpole::CGraphMagnetic_XY turn_about_z;
  tiltpole::CGraphMagnetic_XZ turn_about_y;
};
// [dialog]

}  // namespace

int main(int argc, char** argv) try {
  const QApplication application(argc, argv);
  if (argc < 2) {
    std::cerr << "usage: qt_dialog SESSION.csv [SCREENSHOT.png]\n";
    return 2;
  }
  Dialog dialog;
  tiltpole::session::InputFile file(argv[1], std::cin);
  tiltpole::session::SessionReader session(file.Stream(), file.Name());
  example::Feed(dialog, session);
  dialog.show();
  if (argc > 2) {
    const QString screenshot = QString::fromLocal8Bit(argv[2]);
    QTimer::singleShot(200, &dialog, [&dialog, screenshot] {
      QApplication::exit(dialog.grab().save(screenshot) ? 0 : 1);
    });
  }
  return QApplication::exec();
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 2;
}
