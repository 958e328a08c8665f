// A host of its own with one control, without a screen.

#include <QApplication>

#include "tiltpole/controls/CGraphCompass.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  tiltpole::CGraphCompass compass;
  compass.SetValue(30.0);
  return compass.grab().isNull() || compass.GetValue() != 30.0 ? 1 : 0;
}
