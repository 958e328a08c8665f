// What an ordinary user may not write or read: exit status 2, a line with the file's name, and
// every file as it was.

#include "support/ordinary_user.h"

#ifdef __linux__
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "program.h"
#include "sessions.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using tiltpole_test::OrdinaryUser;
using tiltpole_test::ProgramRun;
using tiltpole_test::RunProgram;
using tiltpole_test::Simulated;
using tiltpole_test::TemporaryFolder;

// A folder in which everything can be read and nothing written, and who is bound by that.
class Permissions : public ::testing::Test {
 protected:
  Permissions() {
    folder.Write("session.csv", Simulated({"--points", "50"}));
    folder.Write("pairs.csv", "source_x,source_y,target_x,target_y\n0,0,1,1\n1,0,3,1\n");
    folder.Write("points.csv", "x,y\n1,2\n");
    folder.Write("out", "old");
    fs::permissions(fs::u8path(folder.File(".")), fs::perms(0555));
  }
  ~Permissions() override { fs::permissions(fs::u8path(folder.File(".")), fs::perms(0755)); }

  void SetUp() override {
    const OrdinaryUser user;
    if (!user.IsOrdinary()) GTEST_SKIP() << "the superuser cannot act as an ordinary user here";
  }

  static ProgramRun RunAsOrdinaryUser(const std::vector<std::string>& arguments) {
    const OrdinaryUser user;
    return RunProgram(arguments);
  }

  static void ExpectFailure(const ProgramRun& run, const std::string& message) {
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("tiltpole: " + message + '\n'), std::string::npos) << run.err;
  }

  void ExpectNotWritten(const std::vector<std::string>& arguments) const {
    ExpectFailure(RunAsOrdinaryUser(arguments), out + ": cannot be opened for writing");
    EXPECT_EQ(folder.Read("out"), "old");
    EXPECT_EQ(folder.CountFiles(), 4);
  }

  TemporaryFolder folder;
  const std::string session = folder.File("session.csv");
  const std::string pairs = folder.File("pairs.csv");
  const std::string points = folder.File("points.csv");
  const std::string out = folder.File("out");
};

TEST_F(Permissions, ASimulatedSessionNeedsAFolderThatMayBeWritten) {
  ExpectNotWritten({"simulate", "-o", out});
  ExpectNotWritten({"simulate", "--points", "1", "--true-params", out});
}

TEST_F(Permissions, ACalibrationNeedsAFolderThatMayBeWritten) {
  ExpectNotWritten({"calibrate", session, "-o", out});
  ExpectNotWritten({"calibrate", session, "-o", folder.File("fitted.txt"), "--report", out});
}

TEST_F(Permissions, MeasuredAndScreenedRowsNeedAFolderThatMayBeWritten) {
  ExpectNotWritten({"measure", session, "--pole-length", "2", "-o", out});
  ExpectNotWritten({"screen", session, "--set", "vertical", "-o", out});
}

TEST_F(Permissions, TransformedPointsNeedAFolderThatMayBeWritten) {
  ExpectNotWritten({"transform", pairs, "-o", out});
  ExpectNotWritten({"transform", pairs, "--points", points, "-o", out});
  ExpectNotWritten({"transform", pairs, "--points", points, "--residuals", out});
}

TEST_F(Permissions, AnInputThatMayNotBeReadIsNamed) {
  for (const std::string& path : {session, pairs, out}) {
    fs::permissions(fs::u8path(path), fs::perms(0000));
  }
  ExpectFailure(RunAsOrdinaryUser({"measure", session, "--pole-length", "2"}),
                session + ": cannot be opened for reading");
  ExpectFailure(RunAsOrdinaryUser({"transform", pairs}), pairs + ": cannot be opened for reading");
  ExpectFailure(RunAsOrdinaryUser({"params", out}), out + ": cannot be opened for reading");
}

}  // namespace
#endif
