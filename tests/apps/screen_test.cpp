#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "apps/session/session_reader.h"
#include "apps/tiltpole/screening.h"
#include "program.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole::cli::ScreenedTurn;
using tiltpole::cli::ScreenTurn;
using tiltpole::session::SampleSet;
using tiltpole::session::SessionReader;
using tiltpole::session::SessionSample;
using tiltpole_test::RunProgram;
using tiltpole_test::TemporaryFolder;

std::vector<SessionSample> Turn(SampleSet set, const std::vector<std::string>& further = {}) {
  std::vector<std::string> arguments = {"simulate", "--points", "0"};
  arguments.insert(arguments.end(), further.begin(), further.end());
  std::istringstream in(RunProgram(arguments).out);
  SessionReader reader(in, "session");
  std::vector<SessionSample> turn;
  SessionSample sample;
  while (reader.Next(sample)) {
    if (sample.set == set) turn.push_back(sample);
  }
  return turn;
}

TEST(Screen, AWholeTurnIsCoveredAndComplete) {
  const ScreenedTurn turn = ScreenTurn(Turn(SampleSet::Horizontal), SampleSet::Horizontal, 0);
  EXPECT_EQ(turn.samples, 360u);
  EXPECT_EQ(turn.coverage_percent, 100);
  EXPECT_TRUE(turn.every_sector);
  EXPECT_TRUE(turn.missing.empty());
  EXPECT_TRUE(turn.complete);
  EXPECT_GE(turn.after_time, turn.after_distance);
  EXPECT_GE(turn.after_distance, turn.after_azimuth);
  EXPECT_EQ(turn.selected.size(), turn.after_azimuth);
}

TEST(Screen, TheMissingAzimuthsOfThreeQuartersOfATurnAreNamed) {
  auto samples = Turn(SampleSet::Horizontal, {"--ideal", "--samples", "720"});
  // Headings from 0 to 270 degrees are there. From 270 to 360 x reads above the centre and y below
  // it, where azimuths run from 90 to 180.
  samples.resize(541);
  const ScreenedTurn turn = ScreenTurn(samples, SampleSet::Horizontal, 0);
  EXPECT_EQ(turn.coverage_percent, 75);
  EXPECT_FALSE(turn.every_sector);
  ASSERT_EQ(turn.missing.size(), 1u);
  EXPECT_EQ(turn.missing[0].from, 90);
  EXPECT_EQ(turn.missing[0].to, 180);
}

TEST(Screen, AGapThroughNorthIsOneRange) {
  auto samples = Turn(SampleSet::Horizontal, {"--ideal", "--samples", "720"});
  // A heading of 90 degrees reads along y, where the azimuth is 0.
  samples.erase(samples.begin() + 160, samples.begin() + 201);
  const ScreenedTurn turn = ScreenTurn(samples, SampleSet::Horizontal, 0);
  ASSERT_EQ(turn.missing.size(), 1u);
  EXPECT_EQ(turn.missing[0].from, 350);
  EXPECT_EQ(turn.missing[0].to, 10);
}

TEST(Screen, SelectedSamplesAreThoseOfTheTurn) {
  const auto samples = Turn(SampleSet::Vertical);
  const ScreenedTurn turn = ScreenTurn(samples, SampleSet::Vertical, 72);
  EXPECT_GE(turn.selected.size(), 72u);
  EXPECT_LE(turn.selected.size(), 100u);
  std::vector<std::size_t> places = turn.selected;
  std::sort(places.begin(), places.end());
  EXPECT_TRUE(std::adjacent_find(places.begin(), places.end()) == places.end());
  EXPECT_LT(places.back(), samples.size());
}

TEST(Screen, WritesTheSelectionAsASession) {
  const TemporaryFolder folder;
  RunProgram({"simulate", "-o", folder.File("block.csv")});
  const auto run = RunProgram({"screen", folder.File("block.csv"), "--set", "horizontal",
                               "--select", "90", "-o", folder.File("selected.csv")});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_NE(run.out.find("coverage"), std::string::npos);
  EXPECT_NE(run.out.find("missing azimuths [degrees]: none"), std::string::npos);
  std::istringstream in(folder.Read("selected.csv"));
  SessionReader reader(in, "selected.csv");
  SessionSample sample;
  int rows = 0;
  while (reader.Next(sample)) {
    EXPECT_EQ(sample.set, SampleSet::Horizontal);
    ++rows;
  }
  EXPECT_GE(rows, 90);
  EXPECT_TRUE(reader.Columns().antenna);
}

TEST(Screen, GivesJson) {
  const TemporaryFolder folder;
  RunProgram({"simulate", "-o", folder.File("block.csv")});
  const auto run = RunProgram({"screen", folder.File("block.csv"), "--set", "vertical", "--json"});
  ASSERT_EQ(run.status, 0);
  EXPECT_NE(run.err.find("\"coverage_percent\": 100"), std::string::npos) << run.err;
  EXPECT_EQ(run.out.substr(0, 4), "set,");
}

TEST(Screen, ASessionWithoutTheSetCannotBeUsed) {
  const auto run =
      RunProgram({"screen", "-", "--set", "vertical"},
                 "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n"
                 "measure,08:00:00,0,0,1,2,3,4,5,6\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "tiltpole: standard input: no row belongs to the set 'vertical'\n");
}

TEST(Screen, ATurnOfWhichNothingIsLeftCannotBeUsed) {
  // One sample: the last record of a turn is never kept.
  const auto run =
      RunProgram({"screen", "-", "--set", "vertical"},
                 "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n"
                 "vertical,08:00:00,0,0,1,2,3,4,5,6\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_NE(run.err.find("the filters leave no sample"), std::string::npos);
}

TEST(Screen, TheSetMustBeATurn) {
  EXPECT_EQ(RunProgram({"screen", "-", "--set", "measure"}).status, 2);
  EXPECT_EQ(RunProgram({"screen", "-"}).status, 2);
}

}  // namespace
