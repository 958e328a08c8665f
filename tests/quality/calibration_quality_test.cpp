#include "tiltpole/quality/calibration_quality.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "quality/calibrated_session.h"
#include "quality/found_reasons.h"

namespace {

using namespace tiltpole_test;
using tiltpole::CalibrationQuality;
using tiltpole::ConcernedMagnetometer;
using tiltpole::JudgeCalibration;
using tiltpole::PoseSensorData;
using tiltpole::QualityCode;
using tiltpole::QualityReason;
using tiltpole::Verdict;

// A sensor without errors in a field of 5000 counts that dips by 60 degrees.
SimulatedSession IdealSession(int samples, double through = 360.0) {
  SimulatedSession session;
  session.samples = samples;
  session.through = through;
  for (int i = 0; i < samples; ++i) {
    const double angle = through * i / samples;
    Random unused(0);
    session.horizontal.push_back(SampleOf(session, LeaningPole(angle, 0, 0), unused));
    session.vertical.push_back(
        SampleOf(session, Product(LeaningPole(30.0, 0, 0), Turn(kY, angle * kDegree)), unused));
  }
  return session;
}

CalibrationQuality JudgeWithDefaults(const SimulatedSession& session) {
  return JudgeCalibration(session.horizontal, session.vertical, {}, {}, {});
}

TEST(CalibrationQuality, AnIdealSensorWithDefaultParametersIsGoodWithoutAnyReason) {
  const CalibrationQuality quality = JudgeWithDefaults(IdealSession(72));
  EXPECT_TRUE(quality.Calibrated);
  EXPECT_EQ(quality.Result, Verdict::Good);
  EXPECT_TRUE(quality.Reasons.empty());
  EXPECT_LT(quality.A.Heading.RootMeanSquare, 1e-4);
  EXPECT_LT(quality.B.Heading.Tilted, 1e-4);
  EXPECT_NEAR(quality.Difference.Largest, 0.0, 1e-9);
}

TEST(CalibrationQuality, TheFiguresOfATurnAreThoseOfItsCircle) {
  SimulatedSession session = IdealSession(72);
  for (PoseSensorData& sample : session.horizontal) sample.MagneticX_A += 700.0;
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_EQ(quality.A.HorizontalBefore.Samples, 72);
  EXPECT_NEAR(quality.A.HorizontalBefore.CentreFirst, 700.0, 1e-6);
  EXPECT_NEAR(quality.A.HorizontalBefore.CentreSecond, 0.0, 1e-6);
  EXPECT_NEAR(quality.A.HorizontalBefore.RadiusMean, 2500.0, 1e-6);
  EXPECT_NEAR(quality.A.HorizontalBefore.RadiusScatter, 0.0, 1e-6);
  EXPECT_NEAR(quality.A.HorizontalBefore.OutOfPlaneMean, -5000.0 * std::sin(60.0 * kDegree), 1e-6);
  EXPECT_NEAR(quality.A.HorizontalBefore.OutOfPlaneScatterLargest, 0.0, 1e-6);
  // The parameters leave the offset, so the circle stands off the origin by 700 counts.
  EXPECT_NEAR(quality.A.HorizontalAfter.RadiusScatterLargest, 700.0, 50.0);
  EXPECT_NEAR(quality.A.HorizontalAfter.RadiusScatter, 700.0 / std::sqrt(2.0), 20.0);
  EXPECT_NEAR(quality.B.FieldStrength, 5000.0, 1e-6);
  EXPECT_NEAR(quality.B.FieldStrengthVertical, 5000.0, 1e-6);
  EXPECT_NEAR(quality.B.Dip, 60.0, 1e-9);
}

TEST(CalibrationQuality, CorrectionTakesTheScatterOutOfTheTurns) {
  Random random(1);
  SimulatedSession session = RandomSession(random, 0.001, 0.1);
  RecordTurns(session, random);
  const CalibrationQuality quality =
      CalibrateAndJudge(session.horizontal, session.vertical).quality;
  EXPECT_LT(quality.A.HorizontalAfter.RadiusScatter,
            0.5 * quality.A.HorizontalBefore.RadiusScatter);
  EXPECT_LT(quality.A.HorizontalAfter.OutOfPlaneScatter,
            quality.A.HorizontalBefore.OutOfPlaneScatter);
}

TEST(CalibrationQuality, AGapNamesTheDirectionsToTurnThrough) {
  SimulatedSession session = IdealSession(72);
  const auto in_gap = [](const PoseSensorData& sample) {
    const double heading = std::atan2(sample.MagneticY_A, sample.MagneticX_A) / kDegree;
    return heading > 41.0 && heading < 109.0;
  };
  session.horizontal.erase(
      std::remove_if(session.horizontal.begin(), session.horizontal.end(), in_gap),
      session.horizontal.end());
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_EQ(quality.Result, Verdict::Usable);
  ASSERT_EQ(quality.Horizontal.Missing.size(), 1U);
  EXPECT_NEAR(quality.Horizontal.Missing[0].From, 40.0, 1e-6);
  EXPECT_NEAR(quality.Horizontal.Missing[0].To, 110.0, 1e-6);
  EXPECT_NEAR(quality.Horizontal.CoveredPercent, 100.0 * 290.0 / 360.0, 1e-6);
  EXPECT_TRUE(quality.Vertical.Missing.empty());
  const QualityReason* reason = Find(quality, QualityCode::DirectionsMissing);
  ASSERT_NE(reason, nullptr);
  EXPECT_EQ(reason->Sentence, L"Turn the pole through the directions 40 to 110 degrees as well.");
}

TEST(CalibrationQuality, AGapAcrossNorthIsOneRange) {
  SimulatedSession session = IdealSession(72);
  const auto in_gap = [](const PoseSensorData& sample) { return sample.MagneticX_A > 2200.0; };
  session.horizontal.erase(
      std::remove_if(session.horizontal.begin(), session.horizontal.end(), in_gap),
      session.horizontal.end());
  const CalibrationQuality quality = JudgeWithDefaults(session);
  ASSERT_EQ(quality.Horizontal.Missing.size(), 1U);
  EXPECT_GT(quality.Horizontal.Missing[0].From, 300.0);
  EXPECT_LT(quality.Horizontal.Missing[0].To, 60.0);
}

TEST(CalibrationQuality, AGapOf30DegreesIsAnOrdinarySpacing) {
  const CalibrationQuality quality = JudgeWithDefaults(IdealSession(12));
  EXPECT_EQ(quality.Horizontal.CoveredPercent, 100.0);
  EXPECT_TRUE(Has(quality, QualityCode::TooFewSamples));
}

TEST(CalibrationQuality, ParametersOfAnotherPoleAreSaidToBeSo) {
  Random random(2);
  int told = 0;
  constexpr int kPairs = 20;
  for (int i = 0; i < kPairs; ++i) {
    SimulatedSession own = RandomSession(random, 0.001, 0.2);
    RecordTurns(own, random);
    SimulatedSession other = RandomSession(random, 0.001, 0.2);
    RecordTurns(other, random);
    const Calibrated foreign = CalibrateAndJudge(other.horizontal, other.vertical);
    const CalibrationQuality quality =
        JudgeCalibration(own.horizontal, own.vertical, foreign.A, foreign.B, foreign.translation);
    if (Has(quality, QualityCode::ParametersOfAnotherPole)) ++told;
    EXPECT_GE(quality.Result, Verdict::Poor);
  }
  EXPECT_EQ(told, kPairs);
}

TEST(CalibrationQuality, AnOwnCalibrationIsNeverSaidToBeAnotherPoles) {
  Random random(3);
  for (int i = 0; i < 20; ++i) {
    SimulatedSession session = RandomSession(random, 0.003, 1.0);
    RecordTurns(session, random);
    EXPECT_FALSE(Has(CalibrateAndJudge(session.horizontal, session.vertical).quality,
                     QualityCode::ParametersOfAnotherPole));
  }
}

TEST(CalibrationQuality, ADisturbedFieldIsNotGood) {
  Random random(4);
  SimulatedSession session = RandomSession(random, 0.001, 0.2);
  RecordTurns(session, random);
  // Iron beside the place: the field changes as the pole's head moves around.
  for (std::size_t i = 0; i < session.horizontal.size(); ++i) {
    const double wave = std::sin(2.0 * 180.0 * kDegree * 5.0 * static_cast<double>(i) / 70.0);
    session.horizontal[i].MagneticX_A += 400.0 * wave;
    session.horizontal[i].MagneticZ_A += 500.0 * wave;
  }
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  EXPECT_GE(calibrated.quality.Result, Verdict::Usable);
  const QualityReason* reason = Find(calibrated.quality, QualityCode::FieldDisturbed);
  ASSERT_NE(reason, nullptr);
  EXPECT_EQ(reason->Magnetometer, ConcernedMagnetometer::A);
}

TEST(CalibrationQuality, MagnetometersThatDisagreeAreSaidToBeSo) {
  SimulatedSession session = IdealSession(72);
  for (PoseSensorData& sample : session.horizontal) sample.MagneticY_B += 300.0;
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_NEAR(quality.Difference.Largest, std::asin(300.0 / 2500.0) / kDegree, 0.1);
  EXPECT_NEAR(quality.Difference.Mean, 0.0, 0.1);
  EXPECT_TRUE(Has(quality, QualityCode::MagnetometersDisagree));
  EXPECT_GE(quality.Result, Verdict::Poor);
}

TEST(CalibrationQuality, WithoutTiltsTheVerdictIsNeverGood) {
  SimulatedSession session = IdealSession(72);
  for (PoseSensorData& sample : session.horizontal) sample.InclineX = sample.InclineY = 0.0;
  for (PoseSensorData& sample : session.vertical) sample.InclineX = sample.InclineY = 0.0;
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_EQ(quality.Result, Verdict::Usable);
  EXPECT_TRUE(Has(quality, QualityCode::TiltsMissing));
}

TEST(CalibrationQuality, TiltsThatCountAWholeTurnAreNoElevationsAndCountAsMissing) {
  SimulatedSession session = IdealSession(72);
  for (std::size_t i = 0; i < 72; ++i) {
    session.horizontal[i].InclineX = session.vertical[i].InclineX = 5.0 * static_cast<double>(i);
  }
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_LT(quality.A.Heading.RootMeanSquare, 0.01);
  EXPECT_LT(quality.B.Heading.Tilted, 0.01);
  const QualityReason* reason = Find(quality, QualityCode::TiltsMissing);
  ASSERT_NE(reason, nullptr);
  EXPECT_TRUE(Says(*reason, L"as elevations of the sensor's x and y axes"));
  EXPECT_EQ(quality.Result, Verdict::Usable);
}

TEST(CalibrationQuality, OneImpossibleTiltLeavesTheOthersInForce) {
  SimulatedSession session = IdealSession(72);
  session.vertical[9].InclineX = 300.0;
  session.horizontal[9].InclineY = -100.0;
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_TRUE(std::isfinite(quality.A.Heading.RootMeanSquare));
  EXPECT_FALSE(Has(quality, QualityCode::TiltsMissing));
}

TEST(CalibrationQuality, APoleThatLeanedToOneSideOfTheSensorIsToldAndItsHeadingErrorToo) {
  // The operator walks around with the pole leaning forward by 3 degrees: the vertical field, 1.7
  // times the horizontal one, puts a constant part into x, and the fit takes it for an offset.
  Random random(6);
  SimulatedSession session = RandomSession(random, 0.0005, 0.0);
  session.dip = 60.0;
  RecordTurns(session, random);
  session.horizontal.clear();
  for (int i = 0; i < 72; ++i) {
    session.horizontal.push_back(SampleOf(session, LeaningPole(5.0 * i, 3.0, 5.0 * i), random));
  }
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  ASSERT_EQ(calibrated.result, 1);
  const QualityReason* reason = Find(calibrated.quality, QualityCode::PoleLeaned);
  ASSERT_NE(reason, nullptr);
  EXPECT_TRUE(Says(*reason, L"leaned by 3.0 degrees"));
  const TrueError truth = TrueErrorAtTilt(session, session.A, 1.0, calibrated.A, 0.0);
  EXPECT_NEAR(truth.largest, 3.0 * std::tan(60.0 * kDegree), 0.3);
  EXPECT_NEAR(calibrated.quality.A.Heading.Systematic / std::sqrt(truth.mean_square), 1.0, 0.1);
}

TEST(CalibrationQuality, MagnetometersOfVeryDifferentGainAreImplausible) {
  SimulatedSession session = IdealSession(72);
  for (auto* turn : {&session.horizontal, &session.vertical}) {
    for (PoseSensorData& sample : *turn) {
      sample.MagneticX_B *= 0.5;
      sample.MagneticY_B *= 0.5;
      sample.MagneticZ_B *= 0.5;
    }
  }
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_NEAR(quality.FieldStrengthRatio, 2.0, 1e-9);
  EXPECT_TRUE(Has(quality, QualityCode::StrengthImplausible));
}

TEST(CalibrationQuality, ScalesUnlikeASoundSensorsAreSaidToBeSo) {
  const SimulatedSession session = IdealSession(72);
  tiltpole::Incline_MagneticCorrectParameter odd;
  odd.b = 1.95;
  const CalibrationQuality quality =
      JudgeCalibration(session.horizontal, session.vertical, odd, {}, {});
  EXPECT_TRUE(Has(quality, QualityCode::ScalesImplausible));
  EXPECT_EQ(quality.ScaleRatioY, 1.95);
}

TEST(CalibrationQuality, TheRatiosOfTheScalesAreAsOverBs) {
  const SimulatedSession session = IdealSession(72);
  tiltpole::Incline_MagneticCorrectParameter A;
  tiltpole::Incline_MagneticCorrectParameter B;
  A.b = 1.2;
  B.b = 0.8;
  A.e = 0.75;
  B.e = 1.25;
  const CalibrationQuality quality =
      JudgeCalibration(session.horizontal, session.vertical, A, B, {});
  EXPECT_NEAR(quality.ScaleRatioY, 1.5, 1e-12);
  EXPECT_NEAR(quality.ScaleRatioZ, 0.6, 1e-12);
}

TEST(CalibrationQuality, ATranslationThatRaisesInterferenceIsARemark) {
  const SimulatedSession session = IdealSession(72);
  tiltpole::Incline_MagneticTranslationParameter off;
  off.dZ = 500.0;
  const CalibrationQuality quality =
      JudgeCalibration(session.horizontal, session.vertical, {}, {}, off);
  const QualityReason* reason = Find(quality, QualityCode::TranslationUnfit);
  ASSERT_NE(reason, nullptr);
  EXPECT_EQ(reason->Weight, Verdict::Good);
  EXPECT_EQ(quality.Result, Verdict::Good);
}

TEST(CalibrationQuality, MagnetometersThatSeeDifferentDipsAreSaidToBeSo) {
  SimulatedSession session = IdealSession(72);
  for (PoseSensorData& sample : session.horizontal) sample.MagneticZ_B *= 1.3;
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_LT(quality.DipDifference, -2.0);
  EXPECT_TRUE(Has(quality, QualityCode::DipsDiffer));
  // B's two turns no longer see a field of one strength either.
  EXPECT_TRUE(Has(quality, QualityCode::StrengthImplausible));
}

TEST(CalibrationQuality, ASteepFieldIsSaidToTellLittle) {
  SimulatedSession session;
  session.dip = 82.0;
  Random unused(0);
  for (int i = 0; i < 72; ++i) {
    session.horizontal.push_back(SampleOf(session, LeaningPole(5.0 * i, 0, 0), unused));
    session.vertical.push_back(
        SampleOf(session, Product(LeaningPole(30, 0, 0), Turn(kY, 5.0 * i * kDegree)), unused));
  }
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_NEAR(quality.A.Dip, 82.0, 1e-6);
  EXPECT_TRUE(Has(quality, QualityCode::DipSteep));
}

TEST(CalibrationQuality, SamplesThatAreNotNumbersAreLeftOutAndSaidSo) {
  SimulatedSession session = IdealSession(72);
  session.horizontal[3].MagneticX_A = std::numeric_limits<double>::quiet_NaN();
  session.vertical[4].InclineX = std::numeric_limits<double>::infinity();
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_EQ(quality.A.HorizontalAfter.Samples, 71);
  EXPECT_EQ(quality.A.VerticalAfter.Samples, 72);
  EXPECT_TRUE(Has(quality, QualityCode::ReadingsNotFinite));
  EXPECT_TRUE(std::isfinite(quality.A.Heading.RootMeanSquare));
}

TEST(CalibrationQuality, ParametersWithoutSamplesAreUnusable) {
  const CalibrationQuality quality = JudgeCalibration({}, {}, {}, {}, {});
  EXPECT_EQ(quality.Result, Verdict::Unusable);
  EXPECT_TRUE(Has(quality, QualityCode::TooFewSamples));
  EXPECT_TRUE(std::isnan(quality.A.Heading.RootMeanSquare));
  EXPECT_TRUE(quality.A.Heading.ByHeading.empty());
}

TEST(CalibrationQuality, HugeReadingsDoNoHarm) {
  SimulatedSession session = IdealSession(72);
  for (PoseSensorData& sample : session.horizontal) sample.MagneticX_A *= 1e300;
  for (PoseSensorData& sample : session.vertical) sample.MagneticZ_B *= 1e-300;
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_EQ(quality.Result, Verdict::Unusable);
}

TEST(CalibrationQuality, ManySamplesAreDroppedByTheFitsLimitAndThisIsOnlyARemark) {
  Random random(5);
  SimulatedSession session = RandomSession(random, 0.001, 0.1);
  session.samples = 600;
  RecordTurns(session, random);
  const CalibrationQuality quality =
      CalibrateAndJudge(session.horizontal, session.vertical).quality;
  EXPECT_EQ(quality.A.HorizontalUsed + quality.A.HorizontalDropped, 600);
  const QualityReason* reason = Find(quality, QualityCode::SamplesDropped);
  ASSERT_NE(reason, nullptr);
  EXPECT_EQ(reason->Weight, Verdict::Good);
}

TEST(CalibrationQuality, SamplesThatTheVerticalTurnAloneLosesAreARemarkToo) {
  Random random(5);
  SimulatedSession session = RandomSession(random, 0.001, 0.1);
  session.samples = 600;
  RecordTurns(session, random);
  session.horizontal.resize(20);
  const CalibrationQuality quality = JudgeWithDefaults(session);
  EXPECT_EQ(quality.A.HorizontalDropped, 0);
  EXPECT_GT(quality.A.VerticalDropped, 300);
  EXPECT_NE(Find(quality, QualityCode::SamplesDropped), nullptr);
}

TEST(CalibrationQuality, AFewSamplesOfTheHorizontalTurnTellNoErrorOfTheSensor) {
  SimulatedSession session = IdealSession(72);
  const CalibrationQuality all = JudgeWithDefaults(session);
  session.horizontal.resize(7);
  const CalibrationQuality few = JudgeWithDefaults(session);
  EXPECT_EQ(all.Result, Verdict::Good);
  EXPECT_EQ(few.Result, Verdict::Unusable);
  EXPECT_EQ(few.Horizontal.Samples, 7);
}

TEST(CalibrationQuality, TipOptionsTakeTheExpectedErrorsAsDeviations) {
  CalibrationQuality quality;
  quality.A.Heading.RootMeanSquare = 0.4;
  quality.B.Heading.RootMeanSquare = std::numeric_limits<double>::quiet_NaN();
  const tiltpole::RigorousTipOptions options = TipOptionsFrom(quality);
  EXPECT_EQ(options.HeadingDeviation_A, 0.4);
  EXPECT_EQ(options.HeadingDeviation_B, 1.0);
}

TEST(CalibrationQuality, TipOptionsKeepOneDegreeForAnExpectedErrorThatIsNone) {
  CalibrationQuality quality;
  quality.A.Heading.RootMeanSquare = 0.0;
  quality.B.Heading.RootMeanSquare = 0.3;
  const tiltpole::RigorousTipOptions options = TipOptionsFrom(quality);
  EXPECT_EQ(options.HeadingDeviation_A, 1.0);
  EXPECT_EQ(options.HeadingDeviation_B, 0.3);
}

TEST(CalibrationQuality, ASampleIsLeftOutForAnyOneReadingThatIsNotFinite) {
  double PoseSensorData::*const readings[] = {
      &PoseSensorData::MagneticX_A, &PoseSensorData::MagneticY_A, &PoseSensorData::MagneticZ_A,
      &PoseSensorData::MagneticX_B, &PoseSensorData::MagneticY_B, &PoseSensorData::MagneticZ_B};
  for (double PoseSensorData::*const reading : readings) {
    SimulatedSession session = IdealSession(72);
    session.horizontal[5].*reading = std::numeric_limits<double>::quiet_NaN();
    session.vertical[6].*reading = std::numeric_limits<double>::infinity();
    const CalibrationQuality quality = JudgeWithDefaults(session);
    EXPECT_EQ(quality.A.HorizontalBefore.Samples, 71);
    EXPECT_EQ(quality.A.VerticalBefore.Samples, 71);
    const QualityReason* reason = Find(quality, QualityCode::ReadingsNotFinite);
    EXPECT_NE(reason, nullptr);
  }
}

TEST(CalibrationQuality, AReportThatNobodyHasFilledIsUnusableAndAllZeros) {
  const CalibrationQuality report;
  EXPECT_EQ(report.Result, Verdict::Unusable);
  EXPECT_FALSE(report.Calibrated);
  const tiltpole::HeadingErrorAt at;
  const tiltpole::AzimuthRange range;
  const tiltpole::HeadingDifference& difference = report.Difference;
  const tiltpole::MagnetometerQuality& one = report.A;
  const tiltpole::TurnFigures& turn = one.HorizontalBefore;
  const tiltpole::HeadingError& error = one.Heading;
  for (const double value : {report.ScaleRatioY,
                             report.ScaleRatioZ,
                             report.FieldStrengthRatio,
                             report.DipDifference,
                             at.Heading,
                             at.Error,
                             at.Deviation,
                             range.From,
                             range.To,
                             difference.Mean,
                             difference.StandardDeviation,
                             difference.Largest,
                             report.Horizontal.CoveredPercent,
                             one.FieldStrength,
                             one.FieldStrengthVertical,
                             one.Dip,
                             turn.CentreFirst,
                             turn.CentreSecond,
                             turn.RadiusMean,
                             turn.RadiusScatter,
                             turn.RadiusScatterLargest,
                             turn.OutOfPlaneMean,
                             turn.OutOfPlaneScatter,
                             turn.OutOfPlaneScatterLargest,
                             error.Mean,
                             error.StandardDeviation,
                             error.RootMeanSquare,
                             error.Largest,
                             error.Systematic,
                             error.Noise,
                             error.Tilted,
                             error.TiltedLargest}) {
    EXPECT_EQ(value, 0.0);
  }
  for (const int count : {report.Horizontal.Samples, turn.Samples, one.HorizontalUsed,
                          one.HorizontalDropped, one.VerticalUsed, one.VerticalDropped}) {
    EXPECT_EQ(count, 0);
  }
}

// Hosts key their own texts on the numbers, and keep them in their files.
TEST(CalibrationQuality, TheNumberOfEachReasonNeverChanges) {
  const QualityCode in_order[] = {
      QualityCode::ReadingsNotFinite, QualityCode::TooFewSamples,
      QualityCode::ReadingsAlike,     QualityCode::ReadingsOnALine,
      QualityCode::DirectionsMissing, QualityCode::FieldDisturbed,
      QualityCode::ScaleBeyondReach,  QualityCode::EllipseNotFitted,
      QualityCode::NotConverged,      QualityCode::FrameOffsetFailed,
      QualityCode::HeadingUncertain,  QualityCode::MagnetometersDisagree,
      QualityCode::ScalesImplausible, QualityCode::StrengthImplausible,
      QualityCode::DipSteep,          QualityCode::DipsDiffer,
      QualityCode::SamplesDropped,    QualityCode::ParametersOfAnotherPole,
      QualityCode::TiltsMissing,      QualityCode::TranslationUnfit,
      QualityCode::PoleLeaned};
  int number = 0;
  for (const QualityCode code : in_order) EXPECT_EQ(static_cast<int>(code), ++number);
}

}  // namespace
