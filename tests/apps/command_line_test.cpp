#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "program.h"
#include "sessions.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole_test::ProgramRun;
using tiltpole_test::RunProgram;
using tiltpole_test::Simulated;
using tiltpole_test::TemporaryFolder;

TEST(CommandLine, HelpGoesToStandardOutput) {
  const auto run = RunProgram({"--help"});
  EXPECT_EQ(run.status, 0);
  for (const char* const name :
       {"simulate", "calibrate", "measure", "screen", "params", "transform", "Exit status"}) {
    EXPECT_NE(run.out.find(name), std::string::npos) << name;
  }
  EXPECT_EQ(run.err, "");
}

// Those that the program's own help tells: `draw` is there only with Qt.
std::vector<std::string> Subcommands() {
  std::istringstream help(RunProgram({"--help"}).out);
  std::string line;
  while (std::getline(help, line) && line != "Subcommands:") continue;
  std::vector<std::string> names;
  while (std::getline(help, line) && line.rfind("  ", 0) == 0) {
    if (line[2] != ' ') names.push_back(line.substr(2, line.find(' ', 2) - 2));
  }
  return names;
}

TEST(CommandLine, EverySubcommandHasHelp) {
  const auto names = Subcommands();
  EXPECT_GE(names.size(), 6u);
  for (const std::string& name : names) {
    const auto run = RunProgram({name, "--help"});
    EXPECT_EQ(run.status, 0) << name;
    EXPECT_NE(run.out.find("Usage: tiltpole " + name + " [OPTIONS]"), std::string::npos) << run.out;
  }
}

TEST(CommandLine, VersionNamesTheProgram) {
  const auto run = RunProgram({"--version"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out.substr(0, 9), "tiltpole ");
}

TEST(CommandLine, NoSubcommandIsWrongUsage) { EXPECT_EQ(RunProgram({}).status, 2); }

TEST(CommandLine, AnUnknownSubcommandIsWrongUsage) {
  const auto run = RunProgram({"survey"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err, "");
}

TEST(CommandLine, AnUnknownSubcommandIsNamed) {
  const auto run = RunProgram({"survey", "-o", "x"});
  EXPECT_NE(run.err.find("tiltpole: 'survey' is no subcommand\n"), std::string::npos) << run.err;
}

TEST(CommandLine, WrongUsageIsToldAsEveryErrorIs) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{},
                                                    {"measure", "x.csv", "y.csv"},
                                                    {"simulate", "--colour", "red"}}) {
    const auto run = RunProgram(arguments);
    EXPECT_EQ(run.err.rfind("tiltpole: ", 0), 0u) << run.err;
    EXPECT_EQ(run.err.find("is no subcommand"), std::string::npos) << run.err;
  }
}

TEST(CommandLine, HelpTellsTheRangeOfACount) {
  const auto run = RunProgram({"simulate", "--help"});
  EXPECT_NE(run.out.find("--samples INT:0 to 1000000000=360"), std::string::npos) << run.out;
}

TEST(CommandLine, AnUnknownOptionIsWrongUsage) {
  EXPECT_EQ(RunProgram({"simulate", "--colour", "red"}).status, 2);
}

TEST(CommandLine, AMissingRequiredOptionIsWrongUsage) {
  const auto run = RunProgram({"measure", "block.csv"});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("--pole-length"), std::string::npos);
}

TEST(CommandLine, APoleOfNoLengthIsWrongUsage) {
  EXPECT_EQ(RunProgram({"measure", "block.csv", "--pole-length", "0"}).status, 2);
  EXPECT_EQ(RunProgram({"measure", "block.csv", "--pole-length", "-2"}).status, 2);
  EXPECT_EQ(RunProgram({"measure", "block.csv", "--pole-length", "nan"}).status, 2);
}

TEST(CommandLine, AnOptionThatIsNotANumberIsWrongUsage) {
  const auto measure = RunProgram({"measure", "block.csv", "--pole-length", "nan"});
  EXPECT_EQ(measure.status, 2);
  EXPECT_NE(measure.err.find("--pole-length: nan is no number from 1e-06 to 1e+06"),
            std::string::npos)
      << measure.err;
  for (const char* const option : {"--max-tilt", "--dip", "--field", "--noise", "--tilt-step"}) {
    const auto run = RunProgram({"simulate", option, "nan"});
    EXPECT_EQ(run.status, 2) << option;
    EXPECT_EQ(run.out, "") << option;
  }
  EXPECT_EQ(RunProgram({"simulate", "--offset-a", "1", "inf", "3"}).status, 2);
  EXPECT_EQ(RunProgram({"simulate", "--cross-b", "nan", "0", "0"}).status, 2);
  EXPECT_EQ(RunProgram({"simulate", "--max-tilt", "90.5"}).status, 2);
}

TEST(CommandLine, AParameterFileIsNoStandardStream) {
  const auto run = RunProgram({"calibrate", "-", "-o", "-"});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("a parameter file has a name"), std::string::npos) << run.err;
  EXPECT_EQ(RunProgram({"params", "-"}).status, 2);
  EXPECT_EQ(RunProgram({"measure", "-", "--pole-length", "2", "--params", "-"}).status, 2);
  EXPECT_EQ(RunProgram({"simulate", "--points", "1", "--true-params", "-"}).out, "");
}

TEST(CommandLine, TwoOutputsInOneFileAreWrongUsage) {
  const TemporaryFolder folder;
  const std::string both = folder.File("both.csv");
  const auto simulate =
      RunProgram({"simulate", "--points", "1", "-o", both, "--true-params", both});
  EXPECT_EQ(simulate.status, 2);
  EXPECT_NE(simulate.err.find("is named for two outputs"), std::string::npos) << simulate.err;
  EXPECT_FALSE(folder.Has("both.csv"));

  const std::string pairs = "source_x,source_y,target_x,target_y\n0,0,0,0\n1,0,2,0\n";
  const std::string points = folder.Write("points.csv", "x,y\n1,1\n");
  const auto transform =
      RunProgram({"transform", "-", "--points", points, "--residuals", "-"}, pairs);
  EXPECT_EQ(transform.status, 2);
  EXPECT_EQ(transform.out, "");
}

const std::string kTwoPairs = "source_x,source_y,target_x,target_y\n0,0,0,0\n1,0,2,0\n";

ProgramRun TransformTo(const TemporaryFolder& folder, const std::string& output,
                       const std::string& residuals) {
  return RunProgram({"transform", folder.Write("pairs.csv", kTwoPairs), "--points",
                     folder.Write("points.csv", "x,y\n1,1\n"), "-o", output, "--residuals",
                     residuals});
}

TEST(CommandLine, TwoWaysToNameOneFileAreOneFile) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.File("inside"));
  const std::string both = folder.File("both.txt");
  for (const char* const other_way : {"./both.txt", "inside/../both.txt"}) {
    const std::string same = folder.File(other_way);
    for (const ProgramRun& run :
         {RunProgram({"simulate", "--points", "1", "-o", both, "--true-params", same}),
          RunProgram(
              {"calibrate", folder.Write("turns.csv", Simulated()), "-o", both, "--report", same}),
          TransformTo(folder, same, both)}) {
      EXPECT_EQ(run.status, 2) << same;
      EXPECT_NE(run.err.find(": is named for two outputs"), std::string::npos) << run.err;
      EXPECT_FALSE(folder.Has("both.txt")) << same;
    }
  }
  folder.Write("both.txt", "old");
  EXPECT_EQ(TransformTo(folder, both, folder.File("./both.txt")).status, 2);
  EXPECT_EQ(folder.Read("both.txt"), "old");
}

TEST(CommandLine, TwoFilesInOneFolderAreTwoOutputs) {
  const TemporaryFolder folder;
  const auto run = TransformTo(folder, folder.File("points.out"), folder.File("./pairs.out"));
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_TRUE(folder.Has("points.out"));
  EXPECT_TRUE(folder.Has("pairs.out"));
}

#ifndef _WIN32
TEST(CommandLine, ALinkAndItsFileAreOneFile) {
  const TemporaryFolder folder;
  const std::string real = folder.Write("real.csv", "old");
  std::filesystem::create_symlink("real.csv", folder.File("link.csv"));
  EXPECT_EQ(TransformTo(folder, real, folder.File("link.csv")).status, 2);
  EXPECT_EQ(folder.Read("real.csv"), "old");
}

TEST(CommandLine, ADeviceTakesTwoOutputs) {
  const TemporaryFolder folder;
  const auto run = TransformTo(folder, "/dev/null", "/dev/null");
  EXPECT_EQ(run.status, 0) << run.err;
}
#endif

TEST(Simulate, TheSameSeedGivesTheSameSession) {
  const auto run = RunProgram({"simulate", "--seed", "5", "--points", "20"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.out, RunProgram({"simulate", "--seed", "5", "--points", "20"}).out);
  EXPECT_NE(run.out, RunProgram({"simulate", "--seed", "6", "--points", "20"}).out);
}

TEST(Simulate, ASeedOutOfItsRangeIsWrongUsage) {
  for (const char* const seed : {"-1", "18446744073709551616", "1.5", "nan"}) {
    const auto run = RunProgram({"simulate", "--points", "1", "--seed", seed});
    EXPECT_EQ(run.status, 2) << seed;
    EXPECT_EQ(run.out, "") << seed;
    EXPECT_NE(run.err.find("--seed"), std::string::npos) << run.err;
  }
  EXPECT_EQ(RunProgram({"simulate", "--points", "1", "--seed", "18446744073709551615"}).status, 0);
}

TEST(Simulate, WritesTheRowsAskedFor) {
  const auto run = RunProgram({"simulate", "--samples", "7", "--points", "3", "-o", "-"});
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1 + 2 * 7 + 3);
}

TEST(Simulate, IdealSensorsHaveOnlyTheErrorsGiven) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"simulate", "--ideal", "--offset-a", "10", "-20", "30", "-o",
                               folder.File("block.csv"), "--true-params", folder.File("pole.txt")});
  EXPECT_EQ(run.status, 0) << run.err;
  const std::string params = folder.Read("pole.txt");
  EXPECT_NE(params.find("[MagneticA.x0]10.0000000000\r\n"), std::string::npos);
  EXPECT_NE(params.find("[MagneticA.y0]-20.0000000000\r\n"), std::string::npos);
  EXPECT_NE(params.find("[MagneticB.x0]0.0000000000\r\n"), std::string::npos);
}

TEST(Simulate, AnOutputThatCannotBeWrittenIsAnError) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"simulate", "-o", folder.File("missing/block.csv")});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("cannot be opened for writing"), std::string::npos);
}

TEST(Params, ShowsEveryEntryOfAUsableFile) {
  const TemporaryFolder folder;
  RunProgram(
      {"simulate", "-o", folder.File("block.csv"), "--true-params", folder.File("pole.txt")});
  const auto run = RunProgram({"params", folder.File("pole.txt")});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1 + 21);
  EXPECT_NE(run.out.find("MagneticBiasAngle_B"), std::string::npos);
  EXPECT_EQ(run.err, "");
}

TEST(Params, NamesWhatIsMissingOrNoNumber) {
  const TemporaryFolder folder;
  const auto file =
      folder.Write("pole.txt", "[MagneticA.a]abc\r\n[MagneticA.b]1.0\r\n[MagneticA.c]inf\r\n");
  const auto run = RunProgram({"params", file});
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("MagneticA.a is 'abc'; expected a finite decimal number"),
            std::string::npos);
  EXPECT_NE(run.err.find("MagneticA.c is 'inf'"), std::string::npos);
  EXPECT_NE(run.err.find("CoorTrans.dZ is missing"), std::string::npos);
}

TEST(Params, TellsTheLineOfWhatIsNoNumberAndNothingElseOfIt) {
  const TemporaryFolder folder;
  RunProgram(
      {"simulate", "-o", folder.File("block.csv"), "--true-params", folder.File("pole.txt")});
  std::string text = folder.Read("pole.txt");
  text.insert(text.find("[MagneticA.b]") + 13, "abc");
  const auto run = RunProgram({"params", folder.Write("bad.txt", text)});
  EXPECT_NE(run.err.find("bad.txt: line 2: MagneticA.b is 'abc"), std::string::npos) << run.err;
  EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
}

TEST(Params, WarnsOfDuplicatesAndOddScales) {
  const TemporaryFolder folder;
  RunProgram(
      {"simulate", "-o", folder.File("block.csv"), "--true-params", folder.File("pole.txt")});
  const auto file = folder.Write("odd.txt", "[MagneticA.b]-3.0\r\n" + folder.Read("pole.txt"));
  const auto run = RunProgram({"params", file});
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.err.find("MagneticA.b stands there more than once"), std::string::npos);
  EXPECT_NE(run.err.find("MagneticA.b is -3.0000; a calibration gives scales between 0 and 2"),
            std::string::npos);
}

TEST(Params, GivesJson) {
  const TemporaryFolder folder;
  RunProgram(
      {"simulate", "-o", folder.File("block.csv"), "--true-params", folder.File("pole.txt")});
  const auto run = RunProgram({"params", folder.File("pole.txt"), "--json"});
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.out.find("\"usable\": true"), std::string::npos);
}

TEST(Params, AFileOfAnotherKindIsAnError) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"params", folder.Write("letter.txt", "Dear colleague,\n")});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("is no parameter file"), std::string::npos);
}

TEST(Params, AMissingFileIsAnError) {
  const auto run = RunProgram({"params", "no such file.txt"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "tiltpole: no such file.txt: there is no such file\n");
}

const std::string kPairs =
    "source_x,source_y,target_x,target_y\n"
    "0,0,10,20\n1,0,10,22\n0,1,8,20\n5,5,0,30\n";

TEST(Transform, FindsScaleRotationAndShift) {
  const TemporaryFolder folder;
  const auto run = RunProgram(
      {"transform", folder.Write("pairs.csv", kPairs), "--json", "-o", folder.File("out.csv")});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("\"scale\": 2.0"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\"rotation_degrees\": 90.0"), std::string::npos) << run.out;
}

TEST(Transform, WritesTheResidualOfEveryPair) {
  const auto run = RunProgram({"transform", "-"}, kPairs);
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.substr(0, run.out.find('\n')),
            "source_x,source_y,target_x,target_y,residual_x,residual_y,residual");
  EXPECT_NE(run.out.find("5,5,0,30,0.000000,0.000000,0.000000"), std::string::npos) << run.out;
}

TEST(Transform, TheResidualIsTheDistanceFromTheTarget) {
  // The best line through -1, 1, 1 against -1, 0, 1 by hand: scale 1 over x = -1, 0, 1 and shift
  // 1/3, so that the residuals are 1/3, -2/3 and 1/3.
  const auto run = RunProgram({"transform", "-"},
                              "source_x,source_y,target_x,target_y\n-1,0,-1,0\n0,0,1,0\n1,0,1,0\n");
  EXPECT_NE(run.out.find("-1,0,-1,0,0.333333,0.000000,0.333333\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("0,0,1,0,-0.666667,0.000000,0.666667\n"), std::string::npos) << run.out;
}

TEST(Transform, TransformsPointsAndTheInverseBringsThemBack) {
  const TemporaryFolder folder;
  const auto pairs = folder.Write("pairs.csv", kPairs);
  const auto there = RunProgram({"transform", pairs, "--points", "-"}, "name,x,y\nP1,3,4\n");
  EXPECT_EQ(there.out, "name,x,y,transformed_x,transformed_y\nP1,3,4,2.000000,26.000000\n");
  const auto back =
      RunProgram({"transform", pairs, "--points", "-", "--inverse"}, "name,x,y\nP1,2,26\n");
  EXPECT_EQ(back.out, "name,x,y,transformed_x,transformed_y\nP1,2,26,3.000000,4.000000\n");
}

TEST(Transform, WritesResidualsBesideThePoints) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"transform", folder.Write("pairs.csv", kPairs), "--points",
                               folder.Write("points.csv", "x,y\n0,0\n"), "--residuals",
                               folder.File("residuals.csv"), "-o", folder.File("out.csv")});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(folder.Read("out.csv"), "x,y,transformed_x,transformed_y\n0,0,10.000000,20.000000\n");
  EXPECT_NE(folder.Read("residuals.csv").find("residual_x"), std::string::npos);
}

TEST(Transform, PairsWithoutTwoDifferentSourcesCannotBeUsed) {
  for (const char* const rows : {"", "1,2,3,4\n", "1,2,3,4\n1,2,5,6\n"}) {
    const auto run =
        RunProgram({"transform", "-"}, std::string("source_x,source_y,target_x,target_y\n") + rows);
    EXPECT_EQ(run.status, 1) << rows;
    EXPECT_NE(run.err.find("needs two different source points"), std::string::npos);
    EXPECT_EQ(run.out, "");
  }
}

TEST(Transform, TargetsAtOnePointCannotBeUsed) {
  const auto run = RunProgram({"transform", "-"},
                              "source_x,source_y,target_x,target_y\n0,0,1,1\n2,0,1,1\n0,2,1,1\n");
  EXPECT_EQ(run.status, 1);
}

TEST(Transform, AMissingColumnIsNamed) {
  const auto run = RunProgram({"transform", "-"}, "source_x,source_y,target_x\n");
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("standard input:1: column target_y: missing"), std::string::npos)
      << run.err;
}

TEST(Transform, PointsThatAreTransformedAlreadyAreRefused) {
  const TemporaryFolder folder;
  const auto pairs = folder.Write("pairs.csv", kPairs);
  const auto run = RunProgram({"transform", pairs, "--points", "-"}, "x,transformed_y,y\n3,4,5\n");
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err,
            "tiltpole: standard input:1: column transformed_y: stands there already; expected "
            "points without it\n");
}

TEST(Transform, StandardInputServesOnce) {
  const auto run = RunProgram({"transform", "-", "--points", "-"}, kPairs);
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err,
            "tiltpole: standard input: cannot serve twice, for the pairs and for the points\n");
}

TEST(Transform, ABadPointLeavesNoOutputBehind) {
  const TemporaryFolder folder;
  const auto run =
      RunProgram({"transform", folder.Write("pairs.csv", kPairs), "--points",
                  folder.Write("points.csv", "x,y\n0,0\n1,abc\n"), "-o", folder.File("out.csv")});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("points.csv:3: column y: 'abc' is no number"), std::string::npos);
  EXPECT_FALSE(folder.Has("out.csv"));
}

}  // namespace
