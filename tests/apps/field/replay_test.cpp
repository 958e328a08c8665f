// A session file, played back at its own or another speed.

#include <gtest/gtest.h>

#include "apps/field/replay_source.h"
#include "apps/session/input_error.h"
#include "field_session.h"
#include "support/temporary_folder.h"

namespace tiltpole::field {
namespace {

using tiltpole_test::FieldSession;
using tiltpole_test::TemporaryFolder;

constexpr const char* kHeader =
    "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n";

std::string Row(const std::string& set, const std::string& time) {
  return set + "," + time + ",1,2,3,4,5,6,7,8\n";
}

std::vector<SourceSample> PlayAll(SampleSource& source) {
  std::vector<SourceSample> all;
  for (int i = 0; i < 2000 && source.State() == SourceState::Running; ++i) {
    for (const SourceSample& sample : source.Advance(0.1)) all.push_back(sample);
  }
  return all;
}

TEST(Replay, IsCalledByItsFileWithoutTheFolders) {
  const TemporaryFolder folder;
  EXPECT_EQ(ReplaySource(folder.Write("s.csv", FieldSession())).Name(), "s.csv");
}

TEST(Replay, WaitsForPlay) {
  const TemporaryFolder folder;
  ReplaySource source(folder.Write("s.csv", FieldSession()));
  EXPECT_TRUE(source.Advance(10.0).empty());
  EXPECT_EQ(source.State(), SourceState::Paused);
}

TEST(Replay, SpreadsTheRowsOfOneSecondOverIt) {
  const TemporaryFolder folder;
  ReplaySource source(
      folder.Write("s.csv", kHeader + Row("horizontal", "10:00:00") +
                                Row("horizontal", "10:00:00") + Row("horizontal", "10:00:00") +
                                Row("horizontal", "10:00:00") + Row("horizontal", "10:00:01")));
  source.Play();
  EXPECT_EQ(source.Advance(0.0).size(), 1U);
  EXPECT_EQ(source.Advance(0.25).size(), 1U);
  const auto next = source.Advance(0.5);
  ASSERT_EQ(next.size(), 2U);
  EXPECT_EQ(next[1].seconds, 0.75);
  EXPECT_EQ(source.Advance(0.25).size(), 1U);
}

TEST(Replay, RunsAsManyTimesAsFastAsItsSpeed) {
  const TemporaryFolder folder;
  ReplaySource source(folder.Write("s.csv", FieldSession()));
  source.Play();
  source.SetSpeed(4.0);
  // 10 rows a second, four seconds of them, and the one at the start.
  EXPECT_EQ(source.Advance(0.99).size(), 40U);
}

TEST(Replay, CutsARecordedPauseToASecond) {
  const TemporaryFolder folder;
  ReplaySource source(folder.Write(
      "s.csv", kHeader + Row("horizontal", "10:00:00") + Row("horizontal", "10:07:00")));
  source.Play();
  EXPECT_EQ(source.Advance(0.99).size(), 1U);
  EXPECT_EQ(source.Advance(0.02).size(), 1U);
}

TEST(Replay, PausesWhereTheTurnsEndAndThePointsBegin) {
  const TemporaryFolder folder;
  ReplaySource source(folder.Write("s.csv", FieldSession()));
  source.Play();
  const auto turns = PlayAll(source);
  EXPECT_EQ(turns.size(), 720U);
  EXPECT_EQ(source.State(), SourceState::Paused);
  source.Play();
  const auto points = PlayAll(source);
  EXPECT_EQ(points.size(), 120U);
  EXPECT_EQ(points.front().set, SampleSet::Measure);
  EXPECT_EQ(source.State(), SourceState::Ended);
}

TEST(Replay, GivesEveryRowBeforeTheOneThatWasCutOffAndSaysWhereThatIs) {
  const TemporaryFolder folder;
  const std::string whole = FieldSession();
  std::size_t end = 0;
  for (int line = 0; line < 401; ++line) end = whole.find('\n', end) + 1;
  ReplaySource source(folder.Write("cut.csv", whole.substr(0, end + 30)));
  source.Play();
  EXPECT_EQ(PlayAll(source).size(), 400U);
  EXPECT_EQ(source.State(), SourceState::Broken);
  EXPECT_EQ(source.Fault().rfind("cut.csv:402: ", 0), 0U) << source.Fault();
}

TEST(Replay, RefusesAFileThatIsNoSession) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("s.csv", "a,b\n1,2\n");
  EXPECT_THROW(ReplaySource source(path), session::InputError);
  EXPECT_THROW(ReplaySource source(folder.File("nothing.csv")), session::InputError);
}

TEST(Replay, EndsAtOnceWithoutARow) {
  const TemporaryFolder folder;
  ReplaySource source(folder.Write("s.csv", kHeader));
  source.Play();
  EXPECT_TRUE(source.Advance(1.0).empty());
  EXPECT_EQ(source.State(), SourceState::Ended);
}

TEST(Replay, GivesAFileWithoutAUsableClockBitByBit) {
  const TemporaryFolder folder;
  std::string text = kHeader;
  for (int i = 0; i < 5000; ++i) text += Row("horizontal", "10:00:00");
  ReplaySource source(folder.Write("s.csv", text));
  source.Play();
  EXPECT_LE(source.Advance(1000.0).size(), 250U);
  EXPECT_GT(PlayAll(source).size(), 4700U);
}

}  // namespace
}  // namespace tiltpole::field
