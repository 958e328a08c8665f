// The filter that drops stretches with too many repeated azimuths.

#include <numeric>
#include <set>

#include <gtest/gtest.h>

#include "screening/twins.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

using Places = std::vector<int>;

// `count` samples of which those at the given places repeat an azimuth.
Records WithRepeats(int count, const std::set<int>& repeats) {
  Records records;
  for (int i = 0; i < count; ++i) {
    records.Add(PoseSensorData()).Forward = repeats.count(i) != 0 ? 0 : 1;
  }
  return records;
}

Places Range(int first, int last) {
  Places places(static_cast<std::size_t>(last - first + 1));
  std::iota(places.begin(), places.end(), first);
  return places;
}

Places operator+(Places a, const Places& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

template <class Twin>
class RotationFilterByAzimuth : public ::testing::Test {
 protected:
  Places Kept(Records records) {
    const Owned kept(screening.Filter_ByAzimuth(records.Array()));
    return kept == nullptr ? Places() : records.PlacesOf(*kept);
  }

  typename Twin::Screening screening;
};
TYPED_TEST_SUITE(RotationFilterByAzimuth, BothTwins, TwinNames);

TYPED_TEST(RotationFilterByAzimuth, KeepsAllButTheLastSampleWhereNothingRepeats) {
  EXPECT_EQ(this->Kept(WithRepeats(25, {})), Range(0, 23));
}

TYPED_TEST(RotationFilterByAzimuth, NeverKeepsTheLastSample) {
  for (int count = 2; count <= 40; ++count) {
    EXPECT_EQ(this->Kept(WithRepeats(count, {})), Range(0, count - 2));
  }
}

TYPED_TEST(RotationFilterByAzimuth, AWindowWithThreeRepeatsInTenLosesItsFirstSample) {
  EXPECT_EQ(this->Kept(WithRepeats(25, {0, 1, 2})), Range(1, 23));
}

TYPED_TEST(RotationFilterByAzimuth, AWindowWithTwoRepeatsInTenIsKept) {
  EXPECT_EQ(this->Kept(WithRepeats(25, {0, 1})), Range(0, 23));
}

TYPED_TEST(RotationFilterByAzimuth, AWindowMovesOnByOneUntilFewEnoughRepeat) {
  // Places 5 to 7 repeat. The windows from 0 to 5 hold all three; the one from 6 holds two.
  EXPECT_EQ(this->Kept(WithRepeats(25, {5, 6, 7})), Range(6, 23));
}

// A window after the first takes nine fresh samples: its first one is counted already, and is
// counted again.
TYPED_TEST(RotationFilterByAzimuth, TheSampleAtTheBorderOfTwoWindowsCountsTwice) {
  // The first window closes at 9; the next one counts 9 twice, and 12.
  EXPECT_EQ(this->Kept(WithRepeats(25, {9, 12})), Range(0, 8) + Range(10, 23));
  EXPECT_EQ(this->Kept(WithRepeats(25, {9})), Range(0, 23));
  EXPECT_EQ(this->Kept(WithRepeats(25, {10, 12})), Range(0, 23));
}

TYPED_TEST(RotationFilterByAzimuth, AWindowAfterADroppedSampleStartsWithACountOfOneAndNoRepeat) {
  // The window from 1 is closed by 9, before the repeat at 10: two repeats in ten, so it is kept.
  EXPECT_EQ(this->Kept(WithRepeats(25, {0, 1, 2, 10})), Range(1, 23));
}

TYPED_TEST(RotationFilterByAzimuth, TheLastWindowIsJudgedByTheShareOfItsOwnSamples) {
  // Four samples: one repeat in four is more than a fifth. Five: it is exactly a fifth.
  EXPECT_EQ(this->Kept(WithRepeats(4, {3})), Places{});
  EXPECT_EQ(this->Kept(WithRepeats(5, {4})), Range(0, 3));
}

TYPED_TEST(RotationFilterByAzimuth, OnlyAFlagOfZeroIsARepeat) {
  Records records = WithRepeats(12, {});
  for (std::size_t i = 0; i < 12; ++i) records[i].Forward = i % 2 == 0 ? -1 : 2;
  const Owned kept(this->screening.Filter_ByAzimuth(records.Array()));
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(kept->GetSize(), 11);
}

TYPED_TEST(RotationFilterByAzimuth, NothingLeftIsANullArray) {
  PoseSensorDataArray empty;
  EXPECT_EQ(this->screening.Filter_ByAzimuth(&empty), nullptr);
  Records one = WithRepeats(1, {});
  EXPECT_EQ(this->screening.Filter_ByAzimuth(one.Array()), nullptr);
  Records repeats = WithRepeats(12, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
  EXPECT_EQ(this->screening.Filter_ByAzimuth(repeats.Array()), nullptr);
}

TYPED_TEST(RotationFilterByAzimuth, ANullArrayGivesANullArray) {
  EXPECT_EQ(this->screening.Filter_ByAzimuth(nullptr), nullptr);
}

TYPED_TEST(RotationFilterByAzimuth, LeavesItsInput) {
  Records records = WithRepeats(14, {0, 1, 2});
  const Owned kept(this->screening.Filter_ByAzimuth(records.Array()));
  EXPECT_EQ(records.PlacesOf(*records.Array()), Range(0, 13));
}

TYPED_TEST(RotationFilterByAzimuth, CarriesANullEntryInsideAKeptWindowAlong) {
  Records records;
  records.Add(PoseSensorData());
  records.AddNull();
  records.Add(PoseSensorData());
  EXPECT_EQ(this->Kept(std::move(records)), (Places{0, -1}));
}

TYPED_TEST(RotationFilterByAzimuth, EndsAtAnArrayThatEndsWithANullEntry) {
  Records records = WithRepeats(14, {});
  records.AddNull();
  EXPECT_EQ(this->Kept(std::move(records)), Range(0, 8));
}

TYPED_TEST(RotationFilterByAzimuth, EndsAtAnArrayOfNullEntriesOnly) {
  for (int count = 1; count <= 12; ++count) {
    Records records;
    for (int i = 0; i < count; ++i) records.AddNull();
    EXPECT_EQ(this->screening.Filter_ByAzimuth(records.Array()), nullptr);
  }
}

}  // namespace
