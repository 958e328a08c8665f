// The azimuth of a record about the centre, and its Forward flag.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "screening/twins.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kEpsilon = 1e-6;
const double kBelowEpsilon = std::nextafter(kEpsilon, 0.0);
const double kAboveEpsilon = std::nextafter(kEpsilon, 1.0);

template <class Twin>
class RotationAzimuth : public ::testing::Test {
 protected:
  RotationAzimuth() { screening.m_CenterPar = Twin::Center(0.0, 0.0, 0.0, 1.0); }

  double AzimuthOf(double first, double second) {
    PoseSensorData rec = Twin::Reading(first, second, 1234.5);
    EXPECT_EQ(screening.Calculate_Azimuth_One(&rec), 1);
    screening.m_pPrevRecord = nullptr;
    return rec.Azimuth;
  }

  typename Twin::Screening screening;
};
TYPED_TEST_SUITE(RotationAzimuth, BothTwins, TwinNames);

TYPED_TEST(RotationAzimuth, BetweenTheAxesIsCountedFromTheSecondAxis) {
  EXPECT_EQ(this->AzimuthOf(1.0, 1.0), 45.0);
  EXPECT_EQ(this->AzimuthOf(1.0, -1.0), 135.0);
  EXPECT_EQ(this->AzimuthOf(-1.0, -1.0), 225.0);
  EXPECT_EQ(this->AzimuthOf(-1.0, 1.0), 315.0);

  EXPECT_NEAR(this->AzimuthOf(std::sin(0.3), std::cos(0.3)), 0.3 * 180.0 / 3.141592653589793,
              1e-12);
}

TYPED_TEST(RotationAzimuth, OnTheAxesIsSetAsIfCountedFromTheFirstAxis) {
  EXPECT_EQ(this->AzimuthOf(0.0, 1.0), 90.0);
  EXPECT_EQ(this->AzimuthOf(0.0, -1.0), 270.0);
  EXPECT_EQ(this->AzimuthOf(1.0, 0.0), 360.0);
  EXPECT_EQ(this->AzimuthOf(-1.0, 0.0), 180.0);
}

TYPED_TEST(RotationAzimuth, AtTheCentreIs360) {
  EXPECT_EQ(this->AzimuthOf(0.0, 0.0), 360.0);
  EXPECT_EQ(this->AzimuthOf(kBelowEpsilon, -kBelowEpsilon), 360.0);
}

TYPED_TEST(RotationAzimuth, AReadingJustOffAnAxisLies90DegreesFromOneOnIt) {
  EXPECT_EQ(this->AzimuthOf(kBelowEpsilon, 1.0), 90.0);
  EXPECT_NEAR(this->AzimuthOf(kAboveEpsilon, 1.0), 0.0, 1e-4);
  EXPECT_EQ(this->AzimuthOf(-kBelowEpsilon, 1.0), 90.0);
  EXPECT_NEAR(this->AzimuthOf(-kAboveEpsilon, 1.0), 360.0, 1e-4);

  EXPECT_EQ(this->AzimuthOf(kBelowEpsilon, -1.0), 270.0);
  EXPECT_NEAR(this->AzimuthOf(kAboveEpsilon, -1.0), 180.0, 1e-4);
  EXPECT_EQ(this->AzimuthOf(-kBelowEpsilon, -1.0), 270.0);
  EXPECT_NEAR(this->AzimuthOf(-kAboveEpsilon, -1.0), 180.0, 1e-4);

  EXPECT_EQ(this->AzimuthOf(1.0, kBelowEpsilon), 360.0);
  EXPECT_NEAR(this->AzimuthOf(1.0, kAboveEpsilon), 90.0, 1e-4);
  EXPECT_EQ(this->AzimuthOf(1.0, -kBelowEpsilon), 360.0);
  EXPECT_NEAR(this->AzimuthOf(1.0, -kAboveEpsilon), 90.0, 1e-4);

  EXPECT_EQ(this->AzimuthOf(-1.0, kBelowEpsilon), 180.0);
  EXPECT_NEAR(this->AzimuthOf(-1.0, kAboveEpsilon), 270.0, 1e-4);
  EXPECT_EQ(this->AzimuthOf(-1.0, -kBelowEpsilon), 180.0);
  EXPECT_NEAR(this->AzimuthOf(-1.0, -kAboveEpsilon), 270.0, 1e-4);
}

// An offset of exactly the epsilon is neither on the axis nor beyond it.
TYPED_TEST(RotationAzimuth, AnOffsetOfExactlyTheEpsilonTakesTheLastRowThatFits) {
  EXPECT_EQ(this->AzimuthOf(0.0, kEpsilon), 270.0);
  EXPECT_EQ(this->AzimuthOf(0.0, kAboveEpsilon), 90.0);
  EXPECT_EQ(this->AzimuthOf(kEpsilon, 0.0), 180.0);
  EXPECT_EQ(this->AzimuthOf(kAboveEpsilon, 0.0), 360.0);

  EXPECT_NEAR(this->AzimuthOf(1.0, kEpsilon), 270.0, 1e-4);
  EXPECT_NEAR(this->AzimuthOf(kEpsilon, 1.0), 360.0, 1e-4);
  EXPECT_NEAR(this->AzimuthOf(kEpsilon, -1.0), 360.0, 1e-4);
  EXPECT_EQ(this->AzimuthOf(kEpsilon, kEpsilon), 315.0);
  // 360 less the angle, which the epsilon takes that little below 90.
  EXPECT_GT(this->AzimuthOf(-1.0, kEpsilon), 270.0);
}

TYPED_TEST(RotationAzimuth, AnAngleBelowTheEpsilonMovesUpByAFullCircle) {
  // atan(1 / 1e9) is 5.7e-8 degrees, and atan(1 / 1e7) is 5.7e-6.
  EXPECT_GT(this->AzimuthOf(1.0, 1e9), 360.0);
  EXPECT_LT(this->AzimuthOf(1.0, 1e7), 1e-5);
}

TYPED_TEST(RotationAzimuth, OfAReadingThatIsNotANumberFollowsTheLastRowThatFits) {
  EXPECT_TRUE(std::isnan(this->AzimuthOf(kNaN, kNaN)));
  EXPECT_TRUE(std::isnan(this->AzimuthOf(1.0, kNaN)));
  EXPECT_EQ(this->AzimuthOf(0.0, kNaN), 270.0);
  EXPECT_EQ(this->AzimuthOf(kNaN, 0.0), 180.0);
}

TYPED_TEST(RotationAzimuth, IsMeasuredAboutTheCentre) {
  this->screening.m_CenterPar = TypeParam::Center(100.0, -50.0, 7.0, 1.0);
  EXPECT_EQ(this->AzimuthOf(101.0, -51.0), 135.0);
}

TYPED_TEST(RotationAzimuth, WithoutACentreNothingIsWritten) {
  this->screening.m_CenterPar.Valid = 0;
  Records records = {TypeParam::Reading(1.0, 1.0)};
  records[0].Azimuth = 12.0;
  records[0].Forward = 5;
  EXPECT_EQ(this->screening.Calculate_Azimuth_One(&records[0]), 0);
  EXPECT_EQ(this->screening.Calculate_Azimuth(records.Array()), 0);
  EXPECT_EQ(records[0].Azimuth, 12.0);
  EXPECT_EQ(records[0].Forward, 5);
  EXPECT_EQ(this->screening.m_pPrevRecord, nullptr);
}

TYPED_TEST(RotationAzimuth, OfANullRecordFails) {
  EXPECT_EQ(this->screening.Calculate_Azimuth_One(nullptr), 0);
  EXPECT_EQ(this->screening.Calculate_Azimuth(nullptr), 0);
}

TYPED_TEST(RotationAzimuth, ARecordWithoutPredecessorKeepsItsForwardFlag) {
  PoseSensorData rec = TypeParam::Reading(1.0, 1.0);
  rec.Forward = 7;
  this->screening.Calculate_Azimuth_One(&rec);
  EXPECT_EQ(rec.Forward, 7);
  EXPECT_EQ(this->screening.m_pPrevRecord, &rec);
}

TYPED_TEST(RotationAzimuth, ForwardTellsWhetherARecordLiesAheadOfItsPredecessor) {
  PoseSensorData first = TypeParam::Reading(1.0, 1.0);
  PoseSensorData ahead = TypeParam::Reading(1.0, -1.0);
  PoseSensorData back = TypeParam::Reading(1.0, 1.0);
  ahead.Forward = 0;
  this->screening.Calculate_Azimuth_One(&first);
  this->screening.Calculate_Azimuth_One(&ahead);
  this->screening.Calculate_Azimuth_One(&back);
  EXPECT_EQ(ahead.Forward, 1);
  EXPECT_EQ(back.Forward, 0);
}

TYPED_TEST(RotationAzimuth, ForwardNeedsAStepOfAtLeastTheEpsilon) {
  // At 180 degrees; the predecessor's azimuth counts as it stands, so it can be set.
  PoseSensorData previous;
  PoseSensorData rec = TypeParam::Reading(-1.0, 0.0);
  const auto forwardAfter = [&](double azimuth) {
    previous.Azimuth = azimuth;
    this->screening.m_pPrevRecord = &previous;
    this->screening.Calculate_Azimuth_One(&rec);
    return rec.Forward;
  };
  const double farEnough = 180.0 - 1.1e-6;
  const double tooNear = 180.0 - 0.9e-6;
  EXPECT_EQ(forwardAfter(farEnough), 1);
  EXPECT_EQ(forwardAfter(tooNear), 0);
  EXPECT_EQ(forwardAfter(180.0), 0);
  EXPECT_EQ(forwardAfter(kNaN), 0);
}

TYPED_TEST(RotationAzimuth, AStepOfExactlyTheEpsilonIsForward) {
  // At 1.5e-6 degrees, where the difference to an azimuth one epsilon less is exact.
  PoseSensorData rec = TypeParam::Reading(1.0, 3.8e7);
  this->screening.Calculate_Azimuth_One(&rec);
  PoseSensorData previous;
  previous.Azimuth = rec.Azimuth - kEpsilon;
  ASSERT_EQ(rec.Azimuth - previous.Azimuth, kEpsilon);

  this->screening.m_pPrevRecord = &previous;
  this->screening.Calculate_Azimuth_One(&rec);
  EXPECT_EQ(rec.Forward, 1);

  previous.Azimuth = rec.Azimuth - kBelowEpsilon;
  this->screening.m_pPrevRecord = &previous;
  this->screening.Calculate_Azimuth_One(&rec);
  EXPECT_EQ(rec.Forward, 0);
}

TYPED_TEST(RotationAzimuth, ARecordThatIsItsOwnPredecessorIsNotForward) {
  PoseSensorData rec = TypeParam::Reading(1.0, 1.0);
  this->screening.Calculate_Azimuth_One(&rec);
  rec.Azimuth = 0.0;
  this->screening.Calculate_Azimuth_One(&rec);
  EXPECT_EQ(rec.Azimuth, 45.0);
  EXPECT_EQ(rec.Forward, 0);
}

TYPED_TEST(RotationAzimuth, OfAnArrayPassesOverNullEntries) {
  Records records;
  records.AddNull();
  records.Add(TypeParam::Reading(1.0, 1.0));
  records.AddNull();
  records.Add(TypeParam::Reading(-1.0, -1.0));
  EXPECT_EQ(this->screening.Calculate_Azimuth(records.Array()), 1);
  EXPECT_EQ(records[0].Azimuth, 45.0);
  EXPECT_EQ(records[1].Azimuth, 225.0);
  EXPECT_EQ(records[1].Forward, 1);
}

TYPED_TEST(RotationAzimuth, OfAnArrayComparesItsFirstRecordWithTheOneComputedLastBefore) {
  Records records = {TypeParam::Reading(1.0, 1.0), TypeParam::Reading(-1.0, -1.0)};
  this->screening.Calculate_Azimuth(records.Array());
  EXPECT_EQ(records[0].Forward, 1);
  this->screening.Calculate_Azimuth(records.Array());
  EXPECT_EQ(records[0].Forward, 0);
  EXPECT_EQ(records[1].Forward, 1);
}

}  // namespace
