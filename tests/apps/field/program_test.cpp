// The program as it is started from a shell.

#include <QProcess>

#include <gtest/gtest.h>

#include "apps/field/point_rows.h"
#include "robot.h"
#include "support/temporary_folder.h"

namespace tiltpole::field {
namespace {

using tiltpole_test::TemporaryFolder;

struct Program : testing::Test {
  TemporaryFolder folder;
  QString path = QStringLiteral(TILTPOLE_FIELD_PROGRAM);
  QProcess process;

  QString File(const char* name) const { return QString::fromStdString(folder.File(name)); }

  void Start(const QStringList& arguments) {
    process.start(path, arguments);
    ASSERT_TRUE(process.waitForStarted(tiltpole_test::kPatience));
  }
  void LiveIn(const QString& home) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home);
    for (const char* const name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) environment.remove(name);
    process.setProcessEnvironment(environment);
  }
  void TearDown() override {
    process.kill();
    process.waitForFinished();
  }
};

TEST_F(Program, MakesTheFolderForDocumentsWhereThereIsNone) {
  LiveIn(File("."));
  Start({});
  EXPECT_TRUE(QTest::qWaitFor(
      [this] { return folder.Read("Documents/tiltpole-points.csv") == PointHeader(); },
      tiltpole_test::kPatience));
}

TEST_F(Program, MakesNoFolderForAPointsFileThatTheOperatorNames) {
  Start({"--points", File("no/points.csv")});
  EXPECT_FALSE(process.waitForFinished(2000));
  EXPECT_FALSE(folder.Has("no"));
}

}  // namespace
}  // namespace tiltpole::field
