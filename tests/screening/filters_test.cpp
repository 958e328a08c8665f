// The filters by time and by distance.

#include <climits>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "screening/twins.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

using Places = std::vector<int>;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

PoseSensorData At(PoseSensorData rec, int hours, int minutes, int seconds) {
  rec.Tag[0] = hours;
  rec.Tag[1] = minutes;
  rec.Tag[2] = seconds;
  return rec;
}

template <class Twin>
class RotationFilter : public ::testing::Test {
 protected:
  Places ByTime(const std::vector<PoseSensorData>& samples) {
    Records records;
    for (const PoseSensorData& rec : samples) records.Add(rec);
    const Owned kept(screening.Filter_ByTime(records.Array()));
    return kept == nullptr ? Places() : records.PlacesOf(*kept);
  }
  bool IsKeptByDistance(double first, double second, double third) {
    Records records = {Twin::Reading(first, second, third)};
    return Owned(screening.Filter_ByDistance(records.Array())) != nullptr;
  }

  typename Twin::Screening screening;
};
TYPED_TEST_SUITE(RotationFilter, BothTwins, TwinNames);

TYPED_TEST(RotationFilter, ByTimeKeepsTheFirstSample) {
  EXPECT_EQ(this->ByTime({TypeParam::Reading(1.0, 2.0)}), (Places{0}));
}

TYPED_TEST(RotationFilter, ByTimeKeepsASampleThatMovedThirtyUnitsAtOnce) {
  EXPECT_EQ(this->ByTime({TypeParam::Reading(0.0, 0.0), TypeParam::Reading(18.0, 24.0)}),
            (Places{0, 1}));
}

TYPED_TEST(RotationFilter, ByTimeDropsASampleThatMovedLess) {
  EXPECT_EQ(this->ByTime({TypeParam::Reading(0.0, 0.0), TypeParam::Reading(29.9, 0.0)}),
            (Places{0}));
  EXPECT_EQ(this->ByTime(
                {TypeParam::Reading(0.0, 0.0), TypeParam::Reading(0.0, std::nextafter(30.0, 0.0))}),
            (Places{0}));
}

TYPED_TEST(RotationFilter, ByTimeKeepsANearSampleThreeSecondsLater) {
  EXPECT_EQ(this->ByTime({At(TypeParam::Reading(0.0, 0.0), 10, 0, 0),
                          At(TypeParam::Reading(29.9, 0.0), 10, 0, 3)}),
            (Places{0, 1}));
  EXPECT_EQ(this->ByTime({At(TypeParam::Reading(0.0, 0.0), 10, 0, 0),
                          At(TypeParam::Reading(29.9, 0.0), 10, 0, 2)}),
            (Places{0}));
}

TYPED_TEST(RotationFilter, ByTimeCountsMinutesAndHours) {
  EXPECT_EQ(
      this->ByTime(
          {At(TypeParam::Reading(0.0, 0.0), 9, 59, 58), At(TypeParam::Reading(0.0, 0.0), 10, 0, 0),
           At(TypeParam::Reading(0.0, 0.0), 10, 0, 1), At(TypeParam::Reading(0.0, 0.0), 10, 1, 3),
           At(TypeParam::Reading(0.0, 0.0), 10, 1, 5), At(TypeParam::Reading(0.0, 0.0), 11, 0, 6)}),
      (Places{0, 2, 3, 5}));
}

TYPED_TEST(RotationFilter, ByTimeMeasuresFromTheLastSampleKept) {
  EXPECT_EQ(this->ByTime({TypeParam::Reading(0.0, 0.0), TypeParam::Reading(20.0, 0.0),
                          TypeParam::Reading(40.0, 0.0), TypeParam::Reading(60.0, 0.0)}),
            (Places{0, 2}));
}

TYPED_TEST(RotationFilter, ByTimeMeasuresInThePlaneAlone) {
  EXPECT_EQ(this->ByTime({TypeParam::Reading(0.0, 0.0, 0.0), TypeParam::Reading(0.0, 0.0, 500.0)}),
            (Places{0}));
}

TYPED_TEST(RotationFilter, ByTimeDropsANearSampleJustAfterMidnight) {
  EXPECT_EQ(this->ByTime({At(TypeParam::Reading(0.0, 0.0), 23, 59, 59),
                          At(TypeParam::Reading(0.0, 0.0), 0, 0, 30),
                          At(TypeParam::Reading(30.0, 0.0), 0, 0, 31),
                          At(TypeParam::Reading(30.0, 0.0), 0, 0, 34)}),
            (Places{0, 2, 3}));
}

TYPED_TEST(RotationFilter, ByTimeTakesTagsThatNoClockGives) {
  // The seconds of the first wrap around 32 bits: 2147483647 * 3600 is -3600 there.
  EXPECT_EQ(this->ByTime({At(TypeParam::Reading(0.0, 0.0), INT_MAX, 0, 0),
                          At(TypeParam::Reading(0.0, 0.0), -1, 0, 2),
                          At(TypeParam::Reading(0.0, 0.0), -1, 0, 3)}),
            (Places{0, 2}));
  EXPECT_EQ(this->ByTime({At(TypeParam::Reading(0.0, 0.0), 0, 0, INT_MIN),
                          At(TypeParam::Reading(0.0, 0.0), 0, 0, INT_MAX)}),
            (Places{0}));
  EXPECT_EQ(this->ByTime({At(TypeParam::Reading(0.0, 0.0), 0, 0, INT_MAX),
                          At(TypeParam::Reading(0.0, 0.0), 0, 0, INT_MIN + 2)}),
            (Places{0, 1}));
}

TYPED_TEST(RotationFilter, ByTimeLetsTheClockDecideAboutAReadingThatIsNotANumber) {
  EXPECT_EQ(this->ByTime({At(TypeParam::Reading(0.0, 0.0), 0, 0, 0),
                          At(TypeParam::Reading(kNaN, 0.0), 0, 0, 2),
                          At(TypeParam::Reading(kNaN, 0.0), 0, 0, 3)}),
            (Places{0, 2}));
}

TYPED_TEST(RotationFilter, ByTimePassesOverNullEntries) {
  Records records;
  records.AddNull();
  records.Add(TypeParam::Reading(0.0, 0.0));
  records.AddNull();
  records.Add(TypeParam::Reading(0.0, 40.0));
  const Owned kept(this->screening.Filter_ByTime(records.Array()));
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(records.PlacesOf(*kept), (Places{0, 1}));
}

TYPED_TEST(RotationFilter, NothingLeftIsANullArray) {
  Records nulls;
  nulls.AddNull();
  PoseSensorDataArray empty;
  EXPECT_EQ(this->screening.Filter_ByTime(nulls.Array()), nullptr);
  EXPECT_EQ(this->screening.Filter_ByTime(&empty), nullptr);
  EXPECT_EQ(this->screening.Filter_ByDistance(nulls.Array()), nullptr);
  EXPECT_EQ(this->screening.Filter_ByDistance(&empty), nullptr);
}

TYPED_TEST(RotationFilter, ANullArrayGivesANullArray) {
  EXPECT_EQ(this->screening.Filter_ByTime(nullptr), nullptr);
  EXPECT_EQ(this->screening.Filter_ByDistance(nullptr), nullptr);
}

TYPED_TEST(RotationFilter, ByDistanceKeepsTheOrderAndLeavesTheInput) {
  this->screening.m_CenterPar = TypeParam::Center(0.0, 0.0, 0.0, 1000.0);
  Records records;
  records.Add(TypeParam::Reading(1000.0, 0.0));
  records.Add(TypeParam::Reading(0.0, 0.0));
  records.AddNull();
  records.Add(TypeParam::Reading(0.0, -1000.0));
  const Owned kept(this->screening.Filter_ByDistance(records.Array()));
  ASSERT_NE(kept, nullptr);
  EXPECT_EQ(records.PlacesOf(*kept), (Places{0, 2}));
  EXPECT_EQ(records.PlacesOf(*records.Array()), (Places{0, 1, -1, 2}));
}

TYPED_TEST(RotationFilter, ByDistanceMeasuresFromTheCentre) {
  this->screening.m_CenterPar = TypeParam::Center(5000.0, -3000.0, 700.0, 1000.0);
  EXPECT_TRUE(this->IsKeptByDistance(5600.0, -2200.0, 701.0));
  EXPECT_FALSE(this->IsKeptByDistance(600.0, 800.0, 701.0));
  EXPECT_FALSE(this->IsKeptByDistance(5600.0, -2200.0, 1.0));
}

TYPED_TEST(RotationFilter, ByDistanceDropsAReadingThatIsNotANumber) {
  this->screening.m_CenterPar = TypeParam::Center(0.0, 0.0, 0.0, 1000.0);
  EXPECT_FALSE(this->IsKeptByDistance(kNaN, 1000.0, 0.0));
  EXPECT_FALSE(this->IsKeptByDistance(1000.0, 0.0, kNaN));
}

using RotationFilterXY = RotationFilter<XY>;
using RotationFilterXZ = RotationFilter<XZ>;

TEST_F(RotationFilterXY, ByDistanceToleratesLessThan200OffTheCircle) {
  screening.m_CenterPar = XY::Center(0.0, 0.0, 0.0, 1000.0);
  EXPECT_TRUE(IsKeptByDistance(1199.0, 0.0, 99.0));
  EXPECT_TRUE(IsKeptByDistance(0.0, std::nextafter(1200.0, 0.0), 0.0));
  EXPECT_FALSE(IsKeptByDistance(1200.0, 0.0, 0.0));
  EXPECT_TRUE(IsKeptByDistance(0.0, -std::nextafter(800.0, 1e9), 0.0));
  EXPECT_FALSE(IsKeptByDistance(0.0, -800.0, 0.0));
}

TEST_F(RotationFilterXY, ByDistanceToleratesLessThan100OffThePlane) {
  screening.m_CenterPar = XY::Center(0.0, 0.0, 0.0, 1000.0);
  EXPECT_TRUE(IsKeptByDistance(1000.0, 0.0, std::nextafter(100.0, 0.0)));
  EXPECT_FALSE(IsKeptByDistance(1000.0, 0.0, 100.0));
  EXPECT_TRUE(IsKeptByDistance(1000.0, 0.0, -std::nextafter(100.0, 0.0)));
  EXPECT_FALSE(IsKeptByDistance(1000.0, 0.0, -100.0));
}

TEST_F(RotationFilterXZ, ByDistanceToleratesLessThan500OffTheCircle) {
  screening.m_CenterPar = XZ::Center(0.0, 0.0, 0.0, 1000.0);
  EXPECT_TRUE(IsKeptByDistance(1499.0, 0.0, 199.0));
  EXPECT_TRUE(IsKeptByDistance(0.0, std::nextafter(1500.0, 0.0), 0.0));
  EXPECT_FALSE(IsKeptByDistance(1500.0, 0.0, 0.0));
  EXPECT_TRUE(IsKeptByDistance(0.0, -std::nextafter(500.0, 1e9), 0.0));
  EXPECT_FALSE(IsKeptByDistance(0.0, -500.0, 0.0));
}

TEST_F(RotationFilterXZ, ByDistanceToleratesLessThan200OffThePlane) {
  screening.m_CenterPar = XZ::Center(0.0, 0.0, 0.0, 1000.0);
  EXPECT_TRUE(IsKeptByDistance(1000.0, 0.0, std::nextafter(200.0, 0.0)));
  EXPECT_FALSE(IsKeptByDistance(1000.0, 0.0, 200.0));
  EXPECT_TRUE(IsKeptByDistance(1000.0, 0.0, -std::nextafter(200.0, 0.0)));
  EXPECT_FALSE(IsKeptByDistance(1000.0, 0.0, -200.0));
}

}  // namespace
