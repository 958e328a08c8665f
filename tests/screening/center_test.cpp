// The circle of a record set.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "screening/twins.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

void ExpectSameCenter(const PoseSensorCenterParameter& actual,
                      const PoseSensorCenterParameter& expected) {
  EXPECT_EQ(actual.Valid, expected.Valid);
  EXPECT_EQ(actual.CenterX, expected.CenterX);
  EXPECT_EQ(actual.CenterY, expected.CenterY);
  EXPECT_EQ(actual.CenterZ, expected.CenterZ);
  EXPECT_EQ(actual.Radius, expected.Radius);
}

template <class Twin>
class RotationCenter : public ::testing::Test {
 protected:
  typename Twin::Screening screening;
};
TYPED_TEST_SUITE(RotationCenter, BothTwins, TwinNames);

TYPED_TEST(RotationCenter, IsTheMiddleOfTheBoxNotTheMean) {
  Records records = {TypeParam::Reading(0.0, 0.0), TypeParam::Reading(10.0, 4.0),
                     TypeParam::Reading(5.0, 10.0)};
  EXPECT_EQ(this->screening.Calculate_CenterPar(records.Array()), 1);

  const double radius = (std::sqrt(50.0) + std::sqrt(26.0) + 5.0) / 3;
  ExpectSameCenter(this->screening.GetCenterPar(), TypeParam::Center(5.0, 5.0, 0.0, radius));
}

TYPED_TEST(RotationCenter, RadiusIsTheMeanDistanceInThePlane) {
  Records records = {TypeParam::Reading(-3.0, -4.0, 900.0), TypeParam::Reading(3.0, 4.0, -900.0),
                     TypeParam::Reading(0.0, 0.0)};
  this->screening.Calculate_CenterPar(records.Array());
  EXPECT_EQ(this->screening.GetCenterPar().Radius, 10.0 / 3);
}

TYPED_TEST(RotationCenter, OfOneRecordIsThatRecord) {
  Records records = {TypeParam::Reading(7.0, -8.0, 9.0)};
  EXPECT_EQ(this->screening.Calculate_CenterPar(records.Array()), 1);
  ExpectSameCenter(this->screening.GetCenterPar(), TypeParam::Center(7.0, -8.0, 9.0, 0.0));
}

TYPED_TEST(RotationCenter, PassesOverNullEntries) {
  Records records;
  records.AddNull();
  records.Add(TypeParam::Reading(2.0, 4.0, 6.0));
  records.AddNull();
  records.Add(TypeParam::Reading(4.0, 8.0, 6.0));
  EXPECT_EQ(this->screening.Calculate_CenterPar(records.Array()), 1);
  ExpectSameCenter(this->screening.GetCenterPar(),
                   TypeParam::Center(3.0, 6.0, 6.0, std::sqrt(5.0)));
}

TYPED_TEST(RotationCenter, OfANullArrayFailsAndLeavesTheCentre) {
  const PoseSensorCenterParameter before = TypeParam::Center(1.0, 2.0, 3.0, 4.0);
  this->screening.m_CenterPar = before;
  EXPECT_EQ(this->screening.Calculate_CenterPar(nullptr), 0);
  ExpectSameCenter(this->screening.GetCenterPar(), before);
}

TYPED_TEST(RotationCenter, NeverReadsMagnetometerBOrTheTilts) {
  Records records = {TypeParam::Reading(1.0, 2.0, 3.0)};
  records[0].MagneticX_B = records[0].MagneticY_B = records[0].MagneticZ_B = 1e300;
  records[0].InclineX = records[0].InclineY = std::numeric_limits<double>::quiet_NaN();
  this->screening.Calculate_CenterPar(records.Array());
  ExpectSameCenter(this->screening.GetCenterPar(), TypeParam::Center(1.0, 2.0, 3.0, 0.0));
}

// Five records: four extremes with levels 1, 2, 4 and 8, and an inner one with level 100.
template <class Twin>
Records FourExtremesAndAnInnerRecord() {
  return {Twin::Reading(10.0, 0.0, 1.0), Twin::Reading(-10.0, 0.0, 2.0),
          Twin::Reading(0.0, 10.0, 4.0), Twin::Reading(0.0, -10.0, 8.0),
          Twin::Reading(0.0, 0.0, 100.0)};
}

TEST(RotationCenterXY, LevelIsTheMeanOfAllRecords) {
  Records records = FourExtremesAndAnInnerRecord<XY>();
  ScreeningXY screening;
  screening.Calculate_CenterPar(records.Array());
  EXPECT_EQ(screening.GetCenterPar().CenterZ, 115.0 / 5);
}

TEST(RotationCenterXZ, LevelIsTheMeanOfTheFourExtremeRecordsAlone) {
  Records records = FourExtremesAndAnInnerRecord<XZ>();
  ScreeningXZ screening;
  screening.Calculate_CenterPar(records.Array());
  EXPECT_EQ(screening.GetCenterPar().CenterY, 15.0 / 4);
}

TEST(RotationCenterXZ, ARecordThatIsExtremeTwiceCountsTwiceInTheLevel) {
  Records records = {XZ::Reading(10.0, 10.0, 1.0), XZ::Reading(-10.0, 0.0, 2.0),
                     XZ::Reading(0.0, -10.0, 4.0)};
  ScreeningXZ screening;
  screening.Calculate_CenterPar(records.Array());
  EXPECT_EQ(screening.GetCenterPar().CenterY, (1.0 + 1.0 + 2.0 + 4.0) / 4);
}

TEST(RotationCenterXZ, OfEquallyExtremeRecordsTheEarliestGivesTheLevel) {
  Records records = {XZ::Reading(10.0, 10.0, 1.0), XZ::Reading(10.0, 10.0, 64.0),
                     XZ::Reading(-10.0, -10.0, 4.0), XZ::Reading(-10.0, -10.0, 256.0)};
  ScreeningXZ screening;
  screening.Calculate_CenterPar(records.Array());
  EXPECT_EQ(screening.GetCenterPar().CenterY, (1.0 + 4.0 + 1.0 + 4.0) / 4);
}

TEST(RotationCenterXY, OfNullEntriesOnlyFailsAndLeavesTheCentre) {
  Records records;
  records.AddNull();
  records.AddNull();
  ScreeningXY screening;
  screening.m_CenterPar = XY::Center(1.0, 2.0, 3.0, 4.0);
  EXPECT_EQ(screening.Calculate_CenterPar(records.Array()), 0);
  ExpectSameCenter(screening.GetCenterPar(), XY::Center(1.0, 2.0, 3.0, 4.0));
}

TEST(RotationCenterXZ, OfNullEntriesOnlySucceedsAndLeavesTheCentre) {
  Records records;
  records.AddNull();
  records.AddNull();
  ScreeningXZ screening;
  screening.m_CenterPar = XZ::Center(1.0, 2.0, 3.0, 4.0);
  EXPECT_EQ(screening.Calculate_CenterPar(records.Array()), 1);
  ExpectSameCenter(screening.GetCenterPar(), XZ::Center(1.0, 2.0, 3.0, 4.0));
}

TEST(RotationCenterXY, OfAnEmptyArrayFails) {
  PoseSensorDataArray empty;
  ScreeningXY screening;
  EXPECT_EQ(screening.Calculate_CenterPar(&empty), 0);
  EXPECT_EQ(screening.GetCenterPar().Valid, 0);
}

TEST(RotationCenterXZ, OfAnEmptyArraySucceedsWithoutACentre) {
  PoseSensorDataArray empty;
  ScreeningXZ screening;
  EXPECT_EQ(screening.Calculate_CenterPar(&empty), 1);
  EXPECT_EQ(screening.GetCenterPar().Valid, 0);
}

}  // namespace
