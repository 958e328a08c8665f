// The figures at which a reason appears and at which it weighs more. A verdict that changes at
// another figure calls the same calibration something else in the field.

#include <cmath>
#include <functional>
#include <limits>

#include <gtest/gtest.h>

#include "quality/found_reasons.h"
#include "tiltpole/quality/detail/reasons.h"

namespace {

using tiltpole::CalibrationQuality;
using tiltpole::ConcernedMagnetometer;
using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::PoseSensorData;
using tiltpole::QualityCode;
using tiltpole::QualityReason;
using tiltpole::Verdict;
using tiltpole::detail::FindFaultsOfField;
using tiltpole::detail::FindFaultsOfHeading;
using tiltpole::detail::FindFaultsOfParameters;
using tiltpole::detail::FindLean;
using tiltpole::detail::FindMissingTilts;
using tiltpole::detail::FindUnfitTranslation;
using tiltpole::detail::Reasons;
using tiltpole::detail::TurnReadings;
using tiltpole_test::Find;
using tiltpole_test::Says;

constexpr double kRadian = 180.0 / 3.14159265358979323846;  // degrees
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double JustAbove(double figure) { return figure * (1.0 + 1e-9); }
double JustBelow(double figure) { return figure * (1.0 - 1e-9); }

// Both turns and both magnetometers see the same field, and nothing is wrong.
CalibrationQuality SoundQuality() {
  CalibrationQuality quality;
  quality.A.FieldStrength = quality.A.FieldStrengthVertical = 1.0;
  quality.B.FieldStrength = quality.B.FieldStrengthVertical = 1.0;
  quality.FieldStrengthRatio = 1.0;
  return quality;
}

using Change = std::function<void(CalibrationQuality&, double)>;

Verdict WeightWith(double figure, const Change& change, QualityCode code) {
  CalibrationQuality quality = SoundQuality();
  change(quality, figure);
  Reasons reasons;
  FindFaultsOfHeading(quality, reasons);
  FindFaultsOfField(quality, reasons);
  const QualityReason* reason = Find(reasons, code);
  return reason == nullptr ? Verdict::Good : reason->Weight;
}

void ExpectLimits(const Change& change, QualityCode code, double good, double usable, double poor) {
  EXPECT_EQ(WeightWith(JustBelow(good), change, code), Verdict::Good) << good;
  EXPECT_EQ(WeightWith(JustAbove(good), change, code), Verdict::Usable) << good;
  EXPECT_EQ(WeightWith(JustBelow(usable), change, code), Verdict::Usable) << usable;
  EXPECT_EQ(WeightWith(JustAbove(usable), change, code), Verdict::Poor) << usable;
  EXPECT_EQ(WeightWith(JustBelow(poor), change, code), Verdict::Poor) << poor;
  EXPECT_EQ(WeightWith(JustAbove(poor), change, code), Verdict::Unusable) << poor;
}

TEST(VerdictLimits, TheExpectedHeadingErrorWeighsFrom1_5And5And15DegreesOn) {
  ExpectLimits([](CalibrationQuality& q, double x) { q.A.Heading.Largest = x; },
               QualityCode::HeadingUncertain, 1.5, 5.0, 15.0);
  ExpectLimits([](CalibrationQuality& q, double x) { q.B.Heading.Largest = x; },
               QualityCode::HeadingUncertain, 1.5, 5.0, 15.0);
}

TEST(VerdictLimits, TheHeadingErrorOfATiltedPoleWeighsFrom1_8And6And20DegreesOn) {
  ExpectLimits([](CalibrationQuality& q, double x) { q.A.Heading.TiltedLargest = x; },
               QualityCode::HeadingUncertain, 1.8, 6.0, 20.0);
}

TEST(VerdictLimits, TheNoiseOfAReadingWeighsFrom1And3And10DegreesOn) {
  ExpectLimits([](CalibrationQuality& q, double x) { q.B.Heading.Noise = x; },
               QualityCode::FieldDisturbed, 1.0, 3.0, 10.0);
}

TEST(VerdictLimits, TheDifferenceOfTheHeadingsWeighsFrom3And5And15DegreesOn) {
  ExpectLimits([](CalibrationQuality& q, double x) { q.Difference.Largest = x; },
               QualityCode::MagnetometersDisagree, 3.0, 5.0, 15.0);
}

TEST(VerdictLimits, AFigureOfExactlyALimitIsStillWithinIt) {
  const Change largest = [](CalibrationQuality& q, double x) { q.A.Heading.Largest = x; };
  EXPECT_EQ(WeightWith(1.5, largest, QualityCode::HeadingUncertain), Verdict::Good);
  EXPECT_EQ(WeightWith(5.0, largest, QualityCode::HeadingUncertain), Verdict::Usable);
  EXPECT_EQ(WeightWith(15.0, largest, QualityCode::HeadingUncertain), Verdict::Poor);
}

TEST(VerdictLimits, AHeadingErrorThatCannotBeToldIsUnusable) {
  const Change unknown = [](CalibrationQuality& q, double x) { q.B.Heading.RootMeanSquare = x; };
  EXPECT_EQ(WeightWith(kNaN, unknown, QualityCode::HeadingUncertain), Verdict::Unusable);
}

TEST(VerdictLimits, TheFieldsOfTheTwoTurnsMayDifferBy3And10And30Percent) {
  ExpectLimits([](CalibrationQuality& q, double x) { q.A.FieldStrengthVertical = 1.0 + x; },
               QualityCode::StrengthImplausible, 0.03, 0.1, 0.3);
  ExpectLimits([](CalibrationQuality& q, double x) { q.B.FieldStrengthVertical = 1.0 - x; },
               QualityCode::StrengthImplausible, 0.03, 0.1, 0.3);
}

TEST(VerdictLimits, OneMagnetometerMaySeeAField1_5And2_5And5TimesAsStrongAsTheOther) {
  ExpectLimits([](CalibrationQuality& q, double x) { q.FieldStrengthRatio = x; },
               QualityCode::StrengthImplausible, 1.5, 2.5, 5.0);
  ExpectLimits([](CalibrationQuality& q, double x) { q.FieldStrengthRatio = 1.0 / x; },
               QualityCode::StrengthImplausible, 1.5, 2.5, 5.0);
}

TEST(VerdictLimits, ADipWeighsFrom75And80And87DegreesOnInBothHemispheres) {
  ExpectLimits([](CalibrationQuality& q, double x) { q.A.Dip = x; }, QualityCode::DipSteep, 75.0,
               80.0, 87.0);
  ExpectLimits([](CalibrationQuality& q, double x) { q.B.Dip = -x; }, QualityCode::DipSteep, 75.0,
               80.0, 87.0);
}

TEST(VerdictLimits, TheDipsMayDifferBy2And5And20DegreesEitherWay) {
  ExpectLimits([](CalibrationQuality& q, double x) { q.DipDifference = x; },
               QualityCode::DipsDiffer, 2.0, 5.0, 20.0);
  ExpectLimits([](CalibrationQuality& q, double x) { q.DipDifference = -x; },
               QualityCode::DipsDiffer, 2.0, 5.0, 20.0);
}

bool RemarksDroppedSamples(int horizontal_used, int vertical_used) {
  CalibrationQuality quality = SoundQuality();
  quality.A.HorizontalAfter.Samples = quality.A.VerticalAfter.Samples = 100;
  quality.A.HorizontalUsed = horizontal_used;
  quality.A.VerticalUsed = vertical_used;
  Reasons reasons;
  FindFaultsOfField(quality, reasons);
  return Find(reasons, QualityCode::SamplesDropped) != nullptr;
}

TEST(VerdictLimits, ATurnThatLostMoreThanHalfOfItsSamplesIsRemarkedOn) {
  EXPECT_FALSE(RemarksDroppedSamples(50, 50));
  EXPECT_TRUE(RemarksDroppedSamples(49, 100));
  EXPECT_TRUE(RemarksDroppedSamples(100, 49));
}

bool CallsImplausible(const Incline_MagneticCorrectParameter& correction) {
  Reasons reasons;
  FindFaultsOfParameters(correction, ConcernedMagnetometer::A, reasons);
  return Find(reasons, QualityCode::ScalesImplausible) != nullptr;
}

TEST(VerdictLimits, AScaleIsASoundSensorsFrom0_5To1_9) {
  for (double Incline_MagneticCorrectParameter::*const scale :
       {&Incline_MagneticCorrectParameter::b, &Incline_MagneticCorrectParameter::e}) {
    Incline_MagneticCorrectParameter correction;
    correction.*scale = 0.5;
    EXPECT_FALSE(CallsImplausible(correction));
    correction.*scale = JustBelow(0.5);
    EXPECT_TRUE(CallsImplausible(correction));
    correction.*scale = 1.9;
    EXPECT_FALSE(CallsImplausible(correction));
    correction.*scale = JustAbove(1.9);
    EXPECT_TRUE(CallsImplausible(correction));
  }
}

TEST(VerdictLimits, ACrossTermIsASoundSensorsUpTo0_3EitherWay) {
  for (double Incline_MagneticCorrectParameter::*const term :
       {&Incline_MagneticCorrectParameter::a, &Incline_MagneticCorrectParameter::c,
        &Incline_MagneticCorrectParameter::d}) {
    for (const double sign : {1.0, -1.0}) {
      Incline_MagneticCorrectParameter correction;
      correction.*term = sign * 0.3;
      EXPECT_FALSE(CallsImplausible(correction));
      correction.*term = sign * JustAbove(0.3);
      EXPECT_TRUE(CallsImplausible(correction));
    }
  }
}

Verdict WeightOfLean(double x, double y, double dip) {
  TurnReadings horizontal;
  horizontal.Up = {{x, y, 1.0}, {x, y, 1.0}};
  Reasons reasons;
  FindLean(horizontal, dip, reasons);
  return reasons.empty() ? Verdict::Good : reasons.front().Weight;
}

TEST(VerdictLimits, ALeanWeighsByTheHeadingThatTheDipMakesOfIt) {
  // At a dip of 45 degrees as much as the lean itself, at one of 60 degrees 1.73 times as much.
  const double lean = std::tan(1.5 / kRadian);
  EXPECT_EQ(WeightOfLean(JustBelow(lean), 0.0, 45.0), Verdict::Good);
  EXPECT_EQ(WeightOfLean(0.0, JustAbove(lean), 45.0), Verdict::Usable);
  EXPECT_EQ(WeightOfLean(-JustAbove(lean), 0.0, -45.0), Verdict::Usable);
  const double steep = std::tan(5.0 / std::sqrt(3.0) / kRadian);
  EXPECT_EQ(WeightOfLean(0.0, -JustBelow(steep), 60.0), Verdict::Usable);
  EXPECT_EQ(WeightOfLean(0.0, -JustAbove(steep), 60.0), Verdict::Poor);
}

// Near the Earth's magnetic poles the field is all but vertical, and a lean turns what is left.
TEST(VerdictLimits, ALeanPutsHeadingsOffByHalfATurnAtMost) {
  TurnReadings horizontal;
  horizontal.Up = {{1.0, 0.0, 1.0}};
  Reasons reasons;
  FindLean(horizontal, 89.0, reasons);
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_TRUE(Says(reasons[0], L"leaned by 45.0 degrees"));
  EXPECT_TRUE(Says(reasons[0], L"off by up to 180.0 degrees"));
}

TEST(VerdictLimits, ALeanIsToldInTenthsAndSoIsTheHeadingThatItPutsOff) {
  TurnReadings horizontal;
  horizontal.Up = {{std::tan(0.546 / kRadian), 0.0, 1.0}};
  Reasons reasons;
  FindLean(horizontal, std::atan(4.0) * kRadian, reasons);
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_TRUE(Says(reasons[0], L"leaned by 0.5 degrees"));
  EXPECT_TRUE(Says(reasons[0], L"off by up to 2.2 degrees"));
}

TEST(VerdictLimits, ADifferenceOfTheFieldStrengthsIsToldInPercent) {
  CalibrationQuality quality = SoundQuality();
  quality.B.FieldStrengthVertical = 1.25;
  Reasons reasons;
  FindFaultsOfField(quality, reasons);
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].Magnetometer, ConcernedMagnetometer::B);
  EXPECT_TRUE(Says(reasons[0], L"differs by 25.0 %"));
}

TEST(VerdictLimits, ALeanThatTheTurnTakesToAllSidesIsNone) {
  TurnReadings horizontal;
  horizontal.Up = {{0.2, 0.0, 1.0}, {-0.2, 0.0, 1.0}, {0.0, 0.2, 1.0}, {0.0, -0.2, 1.0}};
  Reasons reasons;
  FindLean(horizontal, 60.0, reasons);
  EXPECT_TRUE(reasons.empty());
}

bool MissesTilts(const std::vector<double>& x) {
  TurnReadings vertical;
  for (const double value : x) vertical.Up.push_back({value, 0.0, 1.0});
  Reasons reasons;
  FindMissingTilts(vertical, reasons);
  return !reasons.empty();
}

TEST(VerdictLimits, TiltsFollowTheVerticalTurnWhereTheySweepMoreThanAFifthOfTheVertical) {
  EXPECT_TRUE(MissesTilts({0.0, 0.2, 0.1}));
  EXPECT_FALSE(MissesTilts({0.0, JustAbove(0.2), 0.1}));
  EXPECT_FALSE(MissesTilts({JustAbove(0.2), 0.1, 0.0}));
  EXPECT_FALSE(MissesTilts({0.1, JustAbove(0.2), 0.0}));
}

Reasons JudgeTranslation(const std::vector<PoseSensorData>& corrected) {
  Reasons reasons;
  FindUnfitTranslation(corrected, {}, reasons);
  return reasons;
}

TEST(VerdictLimits, ATenthOfTheTurnMayRaiseInterference) {
  std::vector<PoseSensorData> corrected(10);
  corrected[0].MagneticX_B = 1000.0;
  EXPECT_TRUE(JudgeTranslation(corrected).empty());
  EXPECT_EQ(JudgeTranslation({corrected.begin(), corrected.begin() + 9}).size(), 1U);
  corrected[5].MagneticX_B = 1000.0;
  const Reasons reasons = JudgeTranslation(corrected);
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].Code, QualityCode::TranslationUnfit);
  EXPECT_TRUE(Says(reasons[0], L"In 20 % of the turn"));
}

TEST(VerdictLimits, InterferenceIsWhereTheThreeAxesTogetherAreOffByMoreThan300Counts) {
  std::vector<PoseSensorData> corrected(1);
  corrected[0].MagneticX_B = 100.0;
  corrected[0].MagneticY_B = -100.0;
  corrected[0].MagneticZ_B = 100.0;
  EXPECT_TRUE(JudgeTranslation(corrected).empty());
  for (double PoseSensorData::*const axis :
       {&PoseSensorData::MagneticX_B, &PoseSensorData::MagneticY_B, &PoseSensorData::MagneticZ_B}) {
    std::vector<PoseSensorData> further = corrected;
    further[0].*axis *= 1.001;
    EXPECT_EQ(JudgeTranslation(further).size(), 1U);
  }
  corrected[0].MagneticX_B = kNaN;
  EXPECT_EQ(JudgeTranslation(corrected).size(), 1U);
}

}  // namespace
