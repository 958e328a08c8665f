#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "apps/session/csv_reader.h"
#include "program.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole::session::CsvReader;
using tiltpole_test::ProgramRun;
using tiltpole_test::RunProgram;
using tiltpole_test::TemporaryFolder;

const std::string kHeader =
    "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n";

ProgramRun Measure(const std::string& session, std::vector<std::string> further = {}) {
  std::vector<std::string> arguments = {"measure", "-", "--pole-length", "2", "--no-deviations"};
  arguments.insert(arguments.end(), further.begin(), further.end());
  return RunProgram(arguments, session);
}

TEST(Measure, APlumbPoleHasItsTipBelowTheAntenna) {
  const auto run = Measure(kHeader + "measure,08:00:00,0,0,1,0,0,-1,0,0\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "set,time,incline_x,incline_y,offset_north,offset_east,offset_height,heading_a,"
            "heading_b,stationary,interference\n"
            "measure,08:00:00,0,0,0.000000,0.000000,-2.000000,0.000000,180.000000,1,0\n");
}

TEST(Measure, APoleThatLeansBackHasItsTipInFront) {
  // The top leans to the south by 30 degrees, so the x axis rises by as much; the field is that of
  // the equator, 500 counts to the north.
  const auto run = Measure(kHeader +
                           "measure,08:00:00,30,0,433.0127018922193,0,-250,-433.0127018922193,0,"
                           "-250\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(",1.000000,0.000000,-1.732051,0.000000,180.000000,"), std::string::npos)
      << run.out;
}

TEST(Measure, FurtherColumnsComeAlong) {
  const auto run = Measure("point," + kHeader + "P 7,measure,08:00:00,0,0,1,0,0,-1,0,0\n");
  EXPECT_NE(run.out.find("set,time,incline_x,incline_y,point,offset_north"), std::string::npos);
  EXPECT_NE(run.out.find("measure,08:00:00,0,0,P 7,0.000000"), std::string::npos);
}

TEST(Measure, AColumnWithTheNameOfAResultGivesWayToIt) {
  const auto run =
      Measure("heading_a,error," + kHeader + "5,7,measure,08:00:00,0,0,1,0,0,-1,0,0\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out,
            "set,time,incline_x,incline_y,offset_north,offset_east,offset_height,heading_a,"
            "heading_b,stationary,interference\n"
            "measure,08:00:00,0,0,0.000000,0.000000,-2.000000,0.000000,180.000000,1,0\n");
}

TEST(Measure, AResultIsNoSessionToMeasureAgain) {
  const auto first = Measure(kHeader + "measure,08:00:00,0,0,1,0,0,-1,0,0\n");
  const auto again = Measure(first.out);
  EXPECT_EQ(again.status, 2);
  EXPECT_EQ(again.out, "");
  EXPECT_NE(again.err.find("standard input:1: column mag_x_a, mag_y_a, mag_z_a, mag_x_b, mag_y_b, "
                           "mag_z_b: missing in the header"),
            std::string::npos)
      << again.err;
}

TEST(Measure, TheAntennaGivesAPositionAndTheTruthAnError) {
  const std::string header =
      "antenna_north,antenna_east,antenna_height,true_north,true_east,true_height," + kHeader;
  const auto run =
      Measure(header + "100,200,52,100,200.003,49.996,measure,08:00:00,0,0,1,0,0,-1,0,0\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(",100.000000,200.000000,50.000000,"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find(",0.000000,-0.003000,0.004000,0.005000\n"), std::string::npos) << run.out;
  EXPECT_NE(run.err.find("0 to 5"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("5.00"), std::string::npos) << run.err;
}

TEST(Measure, ARowWithoutAntennaOrTruthLeavesTheirResultsEmpty) {
  const std::string header =
      "antenna_north,antenna_east,antenna_height,true_north,true_east,true_height," + kHeader;
  const auto run = Measure(header + ",,,1,2,3,measure,08:00:00,0,0,1,0,0,-1,0,0\n" +
                           "1,2,3,,,,measure,08:00:00,0,0,1,0,0,-1,0,0\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("-2.000000,,,,0.000000,180.000000,1,0,,,,\n"), std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("-2.000000,1.000000,2.000000,1.000000,0.000000,180.000000,1,0,,,,\n"),
            std::string::npos)
      << run.out;
}

TEST(Measure, OnlyTheRowsOfTheSetAreMeasured) {
  const std::string rows =
      "horizontal,08:00:01,0,0,1,0,0,-1,0,0\nvertical,08:00:02,0,0,1,0,0,-1,0,0\n"
      "measure,08:00:03,0,0,1,0,0,-1,0,0\n";
  const auto measured = Measure(kHeader + rows);
  EXPECT_NE(measured.out.find("\nmeasure,08:00:03"), std::string::npos);
  EXPECT_EQ(measured.out.find("horizontal,"), std::string::npos);
  EXPECT_EQ(measured.out.find("vertical,"), std::string::npos);
  const auto vertical = Measure(kHeader + rows, {"--set", "vertical"});
  EXPECT_NE(vertical.out.find("\nvertical,08:00:02"), std::string::npos);
  EXPECT_EQ(vertical.out.find("horizontal,"), std::string::npos);
  EXPECT_EQ(vertical.out.find("measure,"), std::string::npos);
}

TEST(Measure, WithoutARowOfTheSetTheDataCannotBeUsed) {
  const auto run = Measure(kHeader + "horizontal,08:00:00,0,0,1,0,0,-1,0,0\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("standard input: no row belongs to the set 'measure'"), std::string::npos);
}

TEST(Measure, TiltsThatCannotBelongTogetherAreCountedAsUndetermined) {
  const std::string header =
      "antenna_north,antenna_east,antenna_height,true_north,true_east,true_height," + kHeader;
  const auto run =
      Measure(header + "0,0,0,0,0,0,measure,08:00:00,80,80,1,0,0,-1,0,0\n", {"--json"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("nan,"), std::string::npos) << run.out;
  EXPECT_NE(run.err.find("\"undetermined\": 1"), std::string::npos) << run.err;
}

TEST(Measure, EveryTipHasStandardDeviations) {
  // A plumb pole of 2 m: a tilt moves the tip sideways by 2 m times its sine, the length moves it
  // up and down, and the heading not at all.
  const auto run = RunProgram({"measure", "-", "--pole-length", "2", "--tilt-sd", "0.05",
                               "--length-sd", "0.003", "--antenna-height-sd", "0.004"},
                              kHeader + "measure,08:00:00,0,0,1,0,0,-1,0,0\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(",interference,sd_north,sd_east,sd_height\n"), std::string::npos);
  EXPECT_NE(run.out.find(",1,0,0.001745,0.001745,0.005000\n"), std::string::npos) << run.out;
}

TEST(Measure, AHeadingDeviationMovesTheTipOfALeaningPoleSideways) {
  // The tip lies 1 m to the north of the antenna; a degree of heading is 17.45 mm to the east.
  const auto run = RunProgram({"measure", "-", "--pole-length", "2", "--tilt-sd", "0",
                               "--length-sd", "0", "--heading-sd", "1.4142135623730951"},
                              kHeader +
                                  "measure,08:00:00,30,0,433.0127018922193,0,-250,"
                                  "-433.0127018922193,0,-250\n");
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find(",0.01745"), std::string::npos) << run.out;
}

TEST(Measure, AnErrorInTheMiddleLeavesTheOldOutputAsItWas) {
  const TemporaryFolder folder;
  folder.Write("out.csv", "old");
  const std::string good = "measure,08:00:00,0,0,1,0,0,-1,0,0\n";
  const auto run = Measure(kHeader + good + good + "measure,08:00:00,0,0,1,NaN,0,-1,0,0\n",
                           {"-o", folder.File("out.csv")});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("standard input:4: column mag_y_a: 'NaN' is no number; expected a finite "
                         "decimal number"),
            std::string::npos)
      << run.err;
  EXPECT_EQ(folder.Read("out.csv"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(Measure, AMissingSessionIsAnError) {
  const auto run = RunProgram({"measure", "no such file.csv", "--pole-length", "2"});
  EXPECT_EQ(run.status, 2);
  EXPECT_EQ(run.err, "tiltpole: no such file.csv: there is no such file\n");
}

TEST(Measure, AnEmptySessionIsAnError) {
  const auto run = Measure("");
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("is empty; expected a header row"), std::string::npos);
}

TEST(Measure, AMissingParameterFileIsAnError) {
  const auto run = Measure(kHeader, {"--params", "no such file.txt"});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("no such file.txt: there is no such file"), std::string::npos);
}

TEST(Measure, AParameterFileWithHolesCannotBeUsed) {
  const TemporaryFolder folder;
  const auto params = folder.Write("pole.txt", "[MagneticA.a]0.1\r\n");
  const auto run = Measure(kHeader + "measure,08:00:00,0,0,1,0,0,-1,0,0\n", {"--params", params});
  EXPECT_EQ(run.status, 1);
  EXPECT_NE(run.err.find("MagneticA.b is missing"), std::string::npos);
}

TEST(Measure, SaysWhenItMeasuresWithoutCalibration) {
  const auto run = Measure(kHeader + "measure,08:00:00,0,0,1,0,0,-1,0,0\n");
  EXPECT_NE(run.err.find("default parameters, not calibrated"), std::string::npos);
}

TEST(Measure, TheSummaryGoesToStandardOutputWhereTheRowsGoToAFile) {
  const TemporaryFolder folder;
  const auto run = Measure(kHeader + "measure,08:00:00,0,0,1,0,0,-1,0,0\n",
                           {"-o", folder.File("out.csv"), "--json"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out.substr(0, 1), "{");
  EXPECT_NE(folder.Read("out.csv").find("offset_north"), std::string::npos);
}

double LargestErrorOf(const ProgramRun& run) {
  std::istringstream in(run.out);
  CsvReader csv(in, "rows");
  const std::size_t column = *csv.Find("error");
  double largest = 0.0;
  while (csv.Next()) largest = std::fmax(largest, csv.Number(column));
  return largest;
}

// The whole chain against the simulated pole's truth: with the true parameters only the solution's
// own error is left.
TEST(Measure, WithTheTrueParametersTheRigorousTipIsTheTrueOne) {
  const TemporaryFolder folder;
  const auto simulated = RunProgram({"simulate",
                                     "--ideal",
                                     "--points",
                                     "200",
                                     "--offset-a",
                                     "60",
                                     "-45",
                                     "30",
                                     "--scale-a",
                                     "0.8",
                                     "1.3",
                                     "--cross-a",
                                     "0.1",
                                     "-0.1",
                                     "0.05",
                                     "--offset-b",
                                     "-20",
                                     "10",
                                     "-70",
                                     "--scale-b",
                                     "1.2",
                                     "0.7",
                                     "--cross-b",
                                     "-0.05",
                                     "0.1",
                                     "0.1",
                                     "-o",
                                     folder.File("block.csv"),
                                     "--true-params",
                                     folder.File("pole.txt")});
  ASSERT_EQ(simulated.status, 0) << simulated.err;
  const auto rigorous =
      RunProgram({"measure", folder.File("block.csv"), "--params", folder.File("pole.txt"),
                  "--pole-length", "2", "--solution", "rigorous"});
  ASSERT_EQ(rigorous.status, 0) << rigorous.err;
  EXPECT_LE(LargestErrorOf(rigorous), 1e-6);
  // The other solution takes the y tilt for a turn about x, which costs decimetres at 45 degrees.
  const auto position = RunProgram({"measure", folder.File("block.csv"), "--params",
                                    folder.File("pole.txt"), "--pole-length", "2"});
  EXPECT_GT(LargestErrorOf(position), 0.01);
}

TEST(Measure, TheSummaryComparesTheSolutionsByTilt) {
  const TemporaryFolder folder;
  RunProgram(
      {"simulate", "-o", folder.File("block.csv"), "--true-params", folder.File("pole.txt")});
  const auto run =
      RunProgram({"measure", folder.File("block.csv"), "--params", folder.File("pole.txt"),
                  "--pole-length", "2", "-o", folder.File("out.csv")});
  for (const char* const name : {"0 to 5", "5 to 10", "10 to 15", "15 to 20", "20 to 30",
                                 "30 to 45", "all", "position", "geometry-b", "math", "rigorous"}) {
    EXPECT_NE(run.out.find(std::string("\n") + name + "  "), std::string::npos) << name;
  }
}

}  // namespace
