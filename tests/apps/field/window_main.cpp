// The tests that need a screen.

#include <QApplication>
#include <string>

#include <gtest/gtest.h>

#include "apps/field/theme.h"

namespace tiltpole_test {
int StorePointsForEver(const std::string& path);
}

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  tiltpole::field::ApplyTheme(application);
  if (argc == 3 && std::string(argv[1]) == "--store-points-for-ever") {
    return tiltpole_test::StorePointsForEver(argv[2]);
  }
  return RUN_ALL_TESTS();
}
