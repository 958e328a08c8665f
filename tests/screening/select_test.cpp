// The even thinning.

#include <algorithm>
#include <climits>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "screening/twins.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

using Places = std::vector<int>;

// Both axes grow, so the first and the last record are the extremes.
template <class Twin>
Records Growing(int count) {
  Records records;
  for (int i = 0; i < count; ++i) records.Add(Twin::Reading(i, 2.0 * i));
  return records;
}

template <class Twin>
class RotationSelect : public ::testing::Test {
 protected:
  Places Selected(Records& records, int n) {
    const Owned selected(screening.Select(records.Array(), n));
    return selected == nullptr ? Places{-2} : records.PlacesOf(*selected);
  }

  typename Twin::Screening screening;
};
TYPED_TEST_SUITE(RotationSelect, BothTwins, TwinNames);

TYPED_TEST(RotationSelect, TenOfAHundredAreEveryTenthAndTheLastExtreme) {
  Records records = Growing<TypeParam>(100);
  EXPECT_EQ(this->Selected(records, 10), (Places{0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 99}));
}

TYPED_TEST(RotationSelect, TheStepIsTruncated) {
  // 100 / 30: every third, not every 3.33rd.
  Records records = Growing<TypeParam>(100);
  Places expected;
  for (int place = 0; place <= 99; place += 3) expected.push_back(place);
  EXPECT_EQ(this->Selected(records, 30), expected);
  // 100 / 60: every record, although only 60 were asked for.
  EXPECT_EQ(this->Selected(records, 60).size(), 100U);
}

TYPED_TEST(RotationSelect, AnExtremeRestartsTheCount) {
  Records records;
  for (int i = 0; i < 12; ++i) records.Add(TypeParam::Reading(0.0, 0.0));
  records[5] = TypeParam::Reading(1.0, 0.0);
  // The first record is the smallest on the first axis and both on the second.
  EXPECT_EQ(this->Selected(records, 3), (Places{0, 4, 5, 9}));
}

TYPED_TEST(RotationSelect, KeepsTheExtremesOfBothAxes) {
  Records records;
  for (int i = 0; i < 40; ++i) records.Add(TypeParam::Reading(0.0, 0.0, i));
  records[7] = TypeParam::Reading(-1.0, 0.0);
  records[9] = TypeParam::Reading(1.0, 0.0);
  records[21] = TypeParam::Reading(0.0, -1.0);
  records[23] = TypeParam::Reading(0.0, 1.0);
  EXPECT_EQ(this->Selected(records, 1), (Places{7, 9, 21, 23}));
}

TYPED_TEST(RotationSelect, OfEquallyExtremeRecordsOnlyTheEarliestIsOne) {
  Records records;
  for (int i = 0; i < 8; ++i) records.Add(TypeParam::Reading(1.0, 1.0));
  EXPECT_EQ(this->Selected(records, 1), (Places{0}));
  EXPECT_EQ(this->Selected(records, 2), (Places{0, 4}));
}

TYPED_TEST(RotationSelect, MoreThanThereAreGivesAllNullEntriesIncluded) {
  Records records = Growing<TypeParam>(100);
  EXPECT_EQ(this->Selected(records, 200).size(), 100U);
  EXPECT_EQ(this->Selected(records, INT_MAX).size(), 100U);
  records.AddNull();
  EXPECT_EQ(this->Selected(records, 102).size(), 101U);
  EXPECT_EQ(this->Selected(records, 102).back(), -1);
}

TYPED_TEST(RotationSelect, AsManyAsThereAreGivesAllButNullEntries) {
  Records records = Growing<TypeParam>(5);
  records.AddNull();
  EXPECT_EQ(this->Selected(records, 6), (Places{0, 1, 2, 3, 4}));
}

TYPED_TEST(RotationSelect, NullEntriesCountForTheStepButNotOnTheWay) {
  Records records;
  for (int i = 0; i < 6; ++i) {
    records.Add(TypeParam::Reading(0.0, 0.0));
    records.AddNull();
  }
  // Twelve entries in three steps of four; the first record is every extreme.
  EXPECT_EQ(this->Selected(records, 3), (Places{0, 4}));
}

TYPED_TEST(RotationSelect, NoneWantedGivesANullArray) {
  Records records = Growing<TypeParam>(100);
  EXPECT_EQ(this->screening.Select(records.Array(), 0), nullptr);
  EXPECT_EQ(this->screening.Select(records.Array(), -1), nullptr);
  EXPECT_EQ(this->screening.Select(records.Array(), INT_MIN), nullptr);
  EXPECT_EQ(this->screening.Select(nullptr, 0), nullptr);
}

TYPED_TEST(RotationSelect, NothingToSelectGivesAnEmptyArrayNotANullOne) {
  Records nulls;
  nulls.AddNull();
  PoseSensorDataArray empty;
  const Owned fromNulls(this->screening.Select(nulls.Array(), 1));
  const Owned fromEmpty(this->screening.Select(&empty, 1));
  ASSERT_NE(fromNulls, nullptr);
  ASSERT_NE(fromEmpty, nullptr);
  EXPECT_EQ(fromNulls->GetSize(), 0);
  EXPECT_EQ(fromEmpty->GetSize(), 0);
}

TEST(RotationSelectXY, OfANullArrayGivesANullArray) {
  EXPECT_EQ(ScreeningXY().Select(nullptr, 10), nullptr);
}

// By contract this twin is given an array; a null one is still no reason to bring a host down.
TEST(RotationSelectXZ, OfANullArrayGivesANullArrayAsWell) {
  EXPECT_EQ(ScreeningXZ().Select(nullptr, 10), nullptr);
}

template <class Twin>
void CheckOrderAndExtremes(const std::vector<std::pair<int, int>>& readings, int n) {
  Records records;
  for (const auto& reading : readings) records.Add(Twin::Reading(reading.first, reading.second));
  const Owned selected(typename Twin::Screening().Select(records.Array(), n));
  RC_ASSERT(selected != nullptr);

  const Places places = records.PlacesOf(*selected);
  RC_ASSERT(std::adjacent_find(places.begin(), places.end(), std::greater_equal<>()) ==
            places.end());
  const auto isSelected = [&](auto iterator) {
    const int place = static_cast<int>(iterator - readings.begin());
    return std::find(places.begin(), places.end(), place) != places.end();
  };
  const auto bySecond = [](const auto& a, const auto& b) { return a.second < b.second; };
  const auto byFirst = [](const auto& a, const auto& b) { return a.first < b.first; };
  RC_ASSERT(isSelected(std::min_element(readings.begin(), readings.end(), byFirst)));
  RC_ASSERT(isSelected(std::min_element(readings.begin(), readings.end(), bySecond)));
  // max_element gives the first of the largest, too.
  RC_ASSERT(isSelected(std::max_element(readings.begin(), readings.end(), byFirst)));
  RC_ASSERT(isSelected(std::max_element(readings.begin(), readings.end(), bySecond)));
  if (n <= static_cast<int>(readings.size())) {
    RC_ASSERT(places.size() <=
              readings.size() / (readings.size() / static_cast<std::size_t>(n)) + 4);
  }
}

TEST(RotationSelect, KeepsTheOrderAndTheExtremesOfAnyArray) {
  EXPECT_TRUE(rc::check([] {
    const auto coordinate = rc::gen::inRange(-20, 20);
    const auto readings = *rc::gen::nonEmpty(rc::gen::container<std::vector<std::pair<int, int>>>(
        rc::gen::pair(coordinate, coordinate)));
    const int n = *rc::gen::inRange(1, 40);
    CheckOrderAndExtremes<XY>(readings, n);
    CheckOrderAndExtremes<XZ>(readings, n);
  }));
}

}  // namespace
