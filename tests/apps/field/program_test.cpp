// The program as it is started from a shell.

#include <QDataStream>
#include <QFile>
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
  void SpeakGerman() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("LANGUAGE");
    environment.insert("LC_ALL", "de_DE.UTF-8");
    process.setProcessEnvironment(environment);
  }
  /// Puts a copy of the program into the folder, and a translation of one text beside it.
  void TranslateCopy(const QByteArray& source, const QString& translation);
  void TearDown() override {
    process.kill();
    process.waitForFinished();
  }
};

/// A compiled translation that holds one text of the program's main file.
QByteArray CompiledTranslation(const QByteArray& source, const QString& translation) {
  // The table of texts is looked up by the ELF hash of the source text.
  quint32 hash = 0;
  for (const char letter : source) {
    hash = (hash << 4) + static_cast<unsigned char>(letter);
    hash = (hash ^ ((hash & 0xf0000000U) >> 24)) & 0x0fffffffU;
  }
  QByteArray hashes;
  QDataStream(&hashes, QIODevice::WriteOnly) << hash << quint32{0};
  QByteArray texts;
  QDataStream text(&texts, QIODevice::WriteOnly);
  constexpr quint8 kEnd = 1;
  constexpr quint8 kTranslation = 3;
  constexpr quint8 kSource = 6;
  constexpr quint8 kContext = 7;
  text << kTranslation << translation << kSource << source << kContext << QByteArray("Main")
       << kEnd;
  QByteArray whole = QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");
  QDataStream file(&whole, QIODevice::Append);
  file << quint8{0x42} << hashes << quint8{0x69} << texts;
  return whole;
}

void Program::TranslateCopy(const QByteArray& source, const QString& translation) {
  std::filesystem::create_directory(folder.File("translations"));
  folder.Write("translations/tiltpole-field_de.qm",
               CompiledTranslation(source, translation).toStdString());
  ASSERT_TRUE(QFile::copy(path, File("tiltpole-field")));
  path = File("tiltpole-field");
}

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

TEST_F(Program, HelpsInTheOperatorsLanguage) {
  TranslateCopy("Begin to play at once.", QStringLiteral("Sofort abspielen."));
  SpeakGerman();
  Start({"--help"});
  ASSERT_TRUE(process.waitForFinished(tiltpole_test::kPatience));
  EXPECT_EQ(process.exitCode(), 0);
  const QByteArray help = process.readAllStandardOutput();
  EXPECT_TRUE(help.contains("Sofort abspielen.")) << help.toStdString();
}

TEST_F(Program, SaysWhatIsWrongWithANumberInTheOperatorsLanguage) {
  TranslateCopy("--%1 is '%2'; expected a number from %3 to %4",
                QStringLiteral("--%1 ist '%2' statt %3 bis %4"));
  SpeakGerman();
  Start({"--speed", "fast"});
  ASSERT_TRUE(process.waitForFinished(tiltpole_test::kPatience));
  EXPECT_EQ(process.exitCode(), 2);
  const QByteArray error = process.readAllStandardError();
  EXPECT_TRUE(error.contains("--speed ist 'fast' statt 0.01 bis 1000")) << error.toStdString();
}

}  // namespace
}  // namespace tiltpole::field
