// The record set: adding, fitting as it grows, clearing.

#include <type_traits>

#include <gtest/gtest.h>

#include "screening/twins.h"
#include "support/member_order.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;
using tiltpole_test::StandInThisOrder;

static_assert(!std::is_copy_constructible_v<CInclineSensor_Filter_XY>);
static_assert(!std::is_copy_assignable_v<CInclineSensor_Filter_XY>);
static_assert(!std::is_copy_constructible_v<CInclineSensor_Filter_XZ>);
static_assert(!std::is_copy_assignable_v<CInclineSensor_Filter_XZ>);

template <class Twin>
class RotationRecordSet : public ::testing::Test {
 protected:
  PoseSensorData* Add(const PoseSensorData& reading) {
    auto* rec = new PoseSensorData(reading);
    screening.Add(rec);
    return rec;
  }
  // `count` records on a circle of radius 1000 about the origin, 36 degrees apart, from 1 degree
  // on.
  void AddOnCircle(int count) {
    for (int i = 0; i < count; ++i) Add(OnCircle<Twin>(1.0 + 36.0 * i));
  }
  PoseSensorData& At(int index) { return *screening.m_arrRecord.GetAt(index); }

  typename Twin::Screening screening;
};
TYPED_TEST_SUITE(RotationRecordSet, BothTwins, TwinNames);

TYPED_TEST(RotationRecordSet, StartsEmptyWithoutCentreAndWithSectorsOfFiveDegrees) {
  EXPECT_EQ(this->screening.m_arrRecord.GetSize(), 0);
  EXPECT_EQ(this->screening.m_pPrevRecord, nullptr);
  EXPECT_EQ(this->screening.m_nSectorAngle, 5);
  const PoseSensorCenterParameter center = this->screening.GetCenterPar();
  EXPECT_EQ(center.Valid, 0);
  EXPECT_EQ(center.CenterX, 0.0);
  EXPECT_EQ(center.CenterY, 0.0);
  EXPECT_EQ(center.CenterZ, 0.0);
  EXPECT_EQ(center.Radius, 0.0);
}

TYPED_TEST(RotationRecordSet, IgnoresANullRecord) {
  this->screening.Add(nullptr);
  EXPECT_EQ(this->screening.m_arrRecord.GetSize(), 0);
}

TYPED_TEST(RotationRecordSet, KeepsTheRecordsInTheOrderOfTheirArrival) {
  PoseSensorData* first = this->Add(TypeParam::Reading(1.0, 2.0));
  PoseSensorData* second = this->Add(TypeParam::Reading(3.0, 4.0));
  EXPECT_EQ(this->screening.m_arrRecord.GetSize(), 2);
  EXPECT_EQ(this->screening.m_arrRecord.GetAt(0), first);
  EXPECT_EQ(this->screening.m_arrRecord.GetAt(1), second);
}

TYPED_TEST(RotationRecordSet, TheFirstNineRecordsGetNoAzimuth) {
  this->AddOnCircle(9);
  for (const PoseSensorData* rec : this->screening.m_arrRecord) {
    EXPECT_EQ(rec->Azimuth, 0.0);
    EXPECT_EQ(rec->Forward, 1);
  }
  EXPECT_EQ(this->screening.GetCenterPar().Valid, 0);
  EXPECT_EQ(this->screening.m_pPrevRecord, nullptr);
}

TYPED_TEST(RotationRecordSet, TheTenthRecordGivesTheCentreAndAllTenAzimuths) {
  this->AddOnCircle(10);
  EXPECT_EQ(this->screening.GetCenterPar().Valid, 1);
  EXPECT_NEAR(this->screening.GetCenterPar().Radius, 1000.0, 1e-9);
  for (int i = 0; i < 10; ++i) EXPECT_NEAR(this->At(i).Azimuth, 1.0 + 36.0 * i, 1e-9);
}

TYPED_TEST(RotationRecordSet, TheEleventhRecordGetsItsAzimuthAlone) {
  this->AddOnCircle(10);
  const PoseSensorCenterParameter center = this->screening.GetCenterPar();
  for (int i = 0; i < 10; ++i) this->At(i).Azimuth = -1.0;

  const PoseSensorData* eleventh = this->Add(OnCircle<TypeParam>(20.0, 5000.0));

  EXPECT_NEAR(eleventh->Azimuth, 20.0, 1e-9);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(this->At(i).Azimuth, -1.0);
  EXPECT_EQ(this->screening.GetCenterPar().CenterX, center.CenterX);
  EXPECT_EQ(this->screening.GetCenterPar().Radius, center.Radius);
}

TYPED_TEST(RotationRecordSet, TheTwentiethRecordFitsAfreshWithWhatTheHostHasChanged) {
  this->AddOnCircle(19);
  for (int i = 0; i < 19; ++i) this->At(i).MagneticX_A += 300.0;
  PoseSensorData twentieth = OnCircle<TypeParam>(1.0 + 36.0 * 9);
  twentieth.MagneticX_A += 300.0;
  this->Add(twentieth);
  EXPECT_NEAR(this->screening.GetCenterPar().CenterX, 300.0, 1e-9);
  for (int i = 0; i < 10; ++i) EXPECT_NEAR(this->At(i).Azimuth, 1.0 + 36.0 * i, 1e-9);
}

TYPED_TEST(RotationRecordSet, AFitComparesTheFirstRecordWithTheLastOneBeforeTheFit) {
  this->AddOnCircle(10);
  EXPECT_EQ(this->At(0).Forward, 1);
  this->AddOnCircle(10);
  // The 19th record stood at 289 degrees when the fit at the 20th came to the first, at 1.
  EXPECT_EQ(this->At(0).Forward, 0);
  EXPECT_EQ(this->At(1).Forward, 1);
  EXPECT_EQ(this->At(10).Forward, 0);
}

TYPED_TEST(RotationRecordSet, CountsRecordsOfTheSetForTheFitNotCallsOfAdd) {
  this->AddOnCircle(7);
  this->screening.Clear();
  this->AddOnCircle(3);
  EXPECT_EQ(this->screening.GetCenterPar().Valid, 0);
}

TYPED_TEST(RotationRecordSet, ClearEmptiesTheSetAndForgetsThePredecessor) {
  this->AddOnCircle(11);
  this->screening.Clear();
  EXPECT_EQ(this->screening.m_arrRecord.GetSize(), 0);
  EXPECT_EQ(this->screening.m_pPrevRecord, nullptr);
}

TYPED_TEST(RotationRecordSet, ClearKeepsTheNumbersOfTheCentre) {
  this->AddOnCircle(10);
  const PoseSensorCenterParameter before = this->screening.GetCenterPar();
  this->screening.Clear();
  const PoseSensorCenterParameter after = this->screening.GetCenterPar();
  EXPECT_EQ(after.CenterX, before.CenterX);
  EXPECT_EQ(after.CenterY, before.CenterY);
  EXPECT_EQ(after.CenterZ, before.CenterZ);
  EXPECT_EQ(after.Radius, before.Radius);
}

using RotationRecordSetXY = RotationRecordSet<XY>;
using RotationRecordSetXZ = RotationRecordSet<XZ>;

TEST_F(RotationRecordSetXY, ClearMakesTheCentreInvalid) {
  AddOnCircle(10);
  screening.Clear();
  EXPECT_EQ(screening.GetCenterPar().Valid, 0);
}

TEST_F(RotationRecordSetXY, ARecordAfterClearGetsNoAzimuth) {
  AddOnCircle(10);
  screening.Clear();
  PoseSensorData next = OnCircle<XY>(20.0);
  next.Azimuth = -1.0;
  EXPECT_EQ(Add(next)->Azimuth, -1.0);
}

TEST_F(RotationRecordSetXZ, ClearLeavesTheOldCentreValid) {
  AddOnCircle(10);
  screening.Clear();
  EXPECT_EQ(screening.GetCenterPar().Valid, 1);
}

TEST_F(RotationRecordSetXZ, NineRecordsAfterClearGetAzimuthsAboutTheOldCentre) {
  AddOnCircle(10);
  screening.Clear();
  for (int i = 0; i < 9; ++i) {
    EXPECT_NEAR(Add(OnCircle<XZ>(20.0 + i, 2000.0))->Azimuth, 20.0 + i, 1e-9);
  }
  EXPECT_NEAR(screening.GetCenterPar().Radius, 1000.0, 1e-9);
}

TEST_F(RotationRecordSetXZ, TheFirstRecordAfterClearHasNoPredecessor) {
  AddOnCircle(10);
  screening.Clear();
  PoseSensorData next = OnCircle<XZ>(20.0);
  next.Forward = 7;
  EXPECT_EQ(Add(next)->Forward, 7);
}

TEST_F(RotationRecordSetXY, DeclaresTheCentreFirstAndTheSetLast) {
  EXPECT_TRUE(StandInThisOrder(&screening.m_CenterPar, &screening.m_pPrevRecord,
                               &screening.m_nSectorAngle, &screening.m_arrRecord));
}

TEST_F(RotationRecordSetXZ, DeclaresTheSetFirst) {
  EXPECT_TRUE(StandInThisOrder(&screening.m_arrRecord, &screening.m_CenterPar,
                               &screening.m_pPrevRecord, &screening.m_nSectorAngle));
}

}  // namespace
