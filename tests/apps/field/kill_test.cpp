// Killing the program loses no point that it has shown as stored.

#include <QProcess>
#include <iostream>

#include <gtest/gtest.h>

#include "apps/field/point_store.h"
#include "robot.h"
#include "support/temporary_folder.h"

namespace tiltpole_test {

/// Stores points by the button for ever, and writes to standard output how many the table shows.
int StorePointsForEver(const std::string& path) {
  tiltpole::field::MainWindow window(2.0);
  window.OpenPoints(QString::fromStdString(path));
  window.Source().SetSpeed(10.0);
  window.Source().OpenSimulatedPole();
  Robot robot(window);
  robot.Click("tab_measure");
  robot.WaitUntil([&] { return window.Model().Live().has_value(); });
  for (std::size_t shown = 0;;) {
    robot.Click("store_now");
    robot.WaitUntil([&] { return window.Model().Points()->Points().size() > shown; });
    shown = window.Model().Points()->Points().size();
    std::cout << shown << std::endl;
  }
}

}  // namespace tiltpole_test

namespace tiltpole::field {
namespace {

TEST(KilledProgram, LosesNoPointThatItHasStored) {
  const tiltpole_test::TemporaryFolder folder;
  const std::string path = folder.File("points.csv");
  int acknowledged = 0;
  constexpr int kKills = 3;
  for (int kill = 0; kill < kKills; ++kill) {
    QProcess program;
    program.start(QApplication::applicationFilePath(),
                  {"--store-points-for-ever", QString::fromStdString(path)});
    const int enough = acknowledged + 5 + 3 * kill;
    while (acknowledged < enough) {
      ASSERT_TRUE(program.waitForReadyRead(tiltpole_test::kPatience));
      while (program.canReadLine()) acknowledged = program.readLine().trimmed().toInt();
    }
    program.kill();
    ASSERT_TRUE(program.waitForFinished(tiltpole_test::kPatience));
    EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
    while (program.canReadLine()) acknowledged = program.readLine().trimmed().toInt();
    const PointStore store(path);
    EXPECT_GE(static_cast<int>(store.Points().size()), acknowledged);
    for (std::size_t i = 0; i < store.Points().size(); ++i) {
      EXPECT_EQ(store.Points()[i].number, static_cast<int>(i) + 1);
    }
  }
  EXPECT_GE(acknowledged, 5 * kKills);
}

}  // namespace
}  // namespace tiltpole::field
