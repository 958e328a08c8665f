// The tests that need a screen.

#include <QApplication>
#include <QStandardPaths>

#include <gtest/gtest.h>

#include "apps/field/theme.h"

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  tiltpole::field::ApplyTheme(application);
  return RUN_ALL_TESTS();
}
