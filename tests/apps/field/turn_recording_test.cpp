// How much of a turn is covered.

#include "apps/field/turn_recording.h"

#include <cmath>

#include <gtest/gtest.h>

#include "field_session.h"

namespace tiltpole::field {
namespace {

using Ranges = std::vector<session::MissingRange>;

TurnRecording Turned(SampleSet turn, double from, double to) {
  session::SimulatedPole pole(tiltpole_test::FieldPole(), 5);
  TurnRecording recording(turn);
  for (double angle = from; angle < to; angle += 1.0) {
    recording.Add(pole.Read(turn == SampleSet::Horizontal
                                ? session::Attitude::Plumb(angle)
                                : session::Attitude::Plumb(30.0).TurnedAboutY(angle)));
  }
  return recording;
}

TEST(TurnRecording, CoversNothingAtTheStart) {
  const TurnRecording recording(SampleSet::Horizontal);
  EXPECT_EQ(recording.CoveredPercent(), 0);
  EXPECT_FALSE(recording.IsComplete());
  EXPECT_EQ(recording.Missing(), (Ranges{{0, 360}}));
}

TEST(TurnRecording, IsCompleteAfterAWholeTurnAboutEitherAxis) {
  for (const SampleSet turn : {SampleSet::Horizontal, SampleSet::Vertical}) {
    const TurnRecording recording = Turned(turn, 0.0, 360.0);
    EXPECT_EQ(recording.CoveredPercent(), 100);
    EXPECT_TRUE(recording.IsComplete());
    EXPECT_TRUE(recording.Missing().empty());
  }
}

TEST(TurnRecording, TellsTheHeadingsThatAreMissing) {
  const TurnRecording recording = Turned(SampleSet::Horizontal, 110.0, 400.0);
  const Ranges missing = recording.Missing();
  ASSERT_EQ(missing.size(), 1U);
  EXPECT_NEAR(missing[0].from, 40, 10);
  EXPECT_NEAR(missing[0].to, 110, 10);
}

TEST(TurnRecording, TellsWhereThePolePoints) {
  const TurnRecording recording = Turned(SampleSet::Horizontal, 0.0, 361.0);
  ASSERT_TRUE(recording.LastDirection());
  EXPECT_NEAR(std::remainder(*recording.LastDirection(), 360.0), 0.0, 5.0);
}

TEST(TurnRecording, IsEmptyAgainAfterClear) {
  TurnRecording recording = Turned(SampleSet::Vertical, 0.0, 360.0);
  recording.Clear();
  EXPECT_EQ(recording.CoveredPercent(), 0);
  EXPECT_TRUE(recording.Samples().empty());
  EXPECT_EQ(recording.Clears(), 1);
}

}  // namespace
}  // namespace tiltpole::field
