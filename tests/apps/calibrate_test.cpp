#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "apps/session/parameter_file.h"
#include "apps/session/session_sample.h"
#include "program.h"
#include "sessions.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole::session::ReadParameterFile;
using tiltpole::session::SampleSet;
using tiltpole_test::kSessionHeader;
using tiltpole_test::Only;
using tiltpole_test::RunProgram;
using tiltpole_test::Simulated;
using tiltpole_test::TemporaryFolder;

TEST(Calibrate, IdealTurnsGiveTheTrueParameters) {
  const TemporaryFolder folder;
  RunProgram({"simulate", "--ideal", "--offset-a", "600", "-450", "300", "--scale-b", "1.2", "0.9",
              "-o", folder.File("block.csv"), "--true-params", folder.File("true.txt")});
  const auto run =
      RunProgram({"calibrate", folder.File("block.csv"), "-o", folder.File("fitted.txt")});
  ASSERT_EQ(run.status, 0) << run.err;
  const auto truth = ReadParameterFile(folder.File("true.txt"));
  const auto fitted = ReadParameterFile(folder.File("fitted.txt"));
  ASSERT_EQ(fitted.entries.size(), truth.entries.size());
  for (std::size_t i = 0; i < truth.entries.size(); ++i) {
    EXPECT_NEAR(fitted.entries[i].value, truth.entries[i].value, 1e-6) << truth.entries[i].key;
  }
}

TEST(Calibrate, PrintsTheParametersAndTheScatterOfTheRadius) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt")}, Simulated());
  ASSERT_EQ(run.status, 0) << run.err;
  for (const char* const text : {"parameter", "x0", "translation: dX", "A horizontal", "A vertical",
                                 "B horizontal", "B vertical", "out of plane",
                                 "expected heading error", "leave out the noise", "verdict: "}) {
    EXPECT_NE(run.out.find(text), std::string::npos) << text;
  }
}

TEST(Calibrate, GivesJson) {
  const TemporaryFolder folder;
  const auto run =
      RunProgram({"calibrate", "-", "-o", folder.File("pole.txt"), "--json"}, Simulated());
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.substr(0, 1), "{");
  EXPECT_NE(run.out.find("\"horizontal_after\""), std::string::npos);
}

TEST(Calibrate, ASessionWithoutVerticalTurnFailsWithTheMessagesAndKeepsTheOldFile) {
  const TemporaryFolder folder;
  folder.Write("pole.txt", "old");
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt")},
                              Only(Simulated(), {SampleSet::Horizontal}, 1000));
  EXPECT_EQ(run.status, 1);
  const std::string messages =
      "tiltpole: Warning: The points less than 5, could not fit!\n"
      "tiltpole: Warning: Ellipse fitting failed, around the Y-axis data is incorrect!\n"
      "tiltpole: Warning: A calculation of the magnetometer calibration fails, please "
      "recalibrate!\n";
  EXPECT_EQ(run.err.substr(0, messages.size()), messages);
  EXPECT_NE(run.err.find("- (unusable) There are 0 samples of the turn about the sensor's y axis"),
            std::string::npos)
      << run.err;
  EXPECT_NE(run.err.find("tiltpole: standard input: the calibration failed with 360 horizontal and "
                         "0 vertical samples\n"),
            std::string::npos)
      << run.err;
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(folder.Read("pole.txt"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(Calibrate, FourSamplesATurnAreTooFew) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt")},
                              Only(Simulated(), {SampleSet::Horizontal, SampleSet::Vertical}, 4));
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("The points less than 5, could not fit!"), std::string::npos);
  EXPECT_FALSE(folder.Has("pole.txt"));
}

TEST(Calibrate, ATurnWithoutRowsOfEitherSetFails) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt")}, kSessionHeader);
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("around the Z-axis data is incorrect!"), std::string::npos);
}

TEST(Calibrate, TextForANumberIsAnErrorBeforeAnythingIsFitted) {
  const TemporaryFolder folder;
  const auto run =
      RunProgram({"calibrate", "-", "-o", folder.File("pole.txt")},
                 std::string(kSessionHeader) + "horizontal,08:00:00,0,0,NaN,2,3,4,5,6\n");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err,
            "tiltpole: standard input:2: column mag_x_a: 'NaN' is no number; expected a finite "
            "decimal number\n");
  EXPECT_FALSE(folder.Has("pole.txt"));
}

TEST(Calibrate, ReadingsBeyondAllMeasureGiveNoParameterFile) {
  const TemporaryFolder folder;
  std::string session = kSessionHeader;
  for (int i = 0; i < 12; ++i) {
    const std::string big = std::to_string(i % 5 - 2) + "e200," + std::to_string(i % 3 - 1) +
                            "e200," + std::to_string(i) + "e200";
    session += "horizontal,08:00:00,0,0," + big + "," + big + "\n";
    session += "vertical,08:00:00,0,0," + big + "," + big + "\n";
  }
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt")}, session);
  EXPECT_EQ(run.status, 1) << run.err;
  EXPECT_FALSE(folder.Has("pole.txt"));
}

TEST(Calibrate, AFolderAsParameterFileIsAnError) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File(".")}, Simulated());
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("is a folder"), std::string::npos) << run.err;
}

TEST(Calibrate, TheSelectionOfTheScreeningServesAsWell) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt"), "--screen", "60"},
                              Simulated({"--ideal", "--offset-a", "600", "-450", "300"}));
  ASSERT_EQ(run.status, 0) << run.err;
  const auto fitted = ReadParameterFile(folder.File("pole.txt"));
  EXPECT_NEAR(fitted.position.GetMagneticCorrectPar_A().x0, 600.0, 1e-6);
}

TEST(Calibrate, AFailureSaysWhatToDo) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt"), "--json"},
                              Only(Simulated(), {SampleSet::Horizontal, SampleSet::Vertical}, 4));
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("- (unusable) "), std::string::npos) << run.err;
  EXPECT_NE(run.out.find("\"verdict\": \"unusable\""), std::string::npos);
  EXPECT_NE(run.out.find("\"code\": 2"), std::string::npos) << run.out;
}

TEST(Calibrate, ACleanSessionIsGood) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"calibrate", "-", "-o", folder.File("pole.txt")}, Simulated());
  EXPECT_NE(run.out.find("\nverdict: good\n"), std::string::npos) << run.out;
}

TEST(Calibrate, MissingDirectionsAreNamed) {
  const TemporaryFolder folder;
  const auto run =
      RunProgram({"calibrate", "-", "-o", folder.File("pole.txt")},
                 Only(Simulated({"--ideal"}), {SampleSet::Horizontal, SampleSet::Vertical}, 271));
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("horizontal turn: 75 % covered, missing directions [degrees]: 270 to 0"),
            std::string::npos)
      << run.out;
}

}  // namespace
