// Why a calibration failed: no failure without a reason, and the right one where it is known.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "quality/calibrated_session.h"
#include "quality/found_reasons.h"

namespace {

using namespace tiltpole_test;
using tiltpole::ConcernedMagnetometer;
using tiltpole::ConcernedTurn;
using tiltpole::JudgeFailedCalibration;
using tiltpole::PoseSensorData;
using tiltpole::QualityCode;
using tiltpole::QualityReason;
using tiltpole::Verdict;

SimulatedSession SoundSession(std::uint64_t seed) {
  Random random(seed);
  SimulatedSession session = RandomSession(random, 0.001, 0.2);
  RecordTurns(session, random);
  return session;
}

void ExpectWellFormed(const tiltpole::CalibrationQuality& quality) {
  EXPECT_FALSE(quality.Calibrated);
  EXPECT_EQ(quality.Result, Verdict::Unusable);
  ASSERT_FALSE(quality.Reasons.empty());
  for (const QualityReason& reason : quality.Reasons) {
    EXPECT_GT(reason.Sentence.size(), 20U);
    EXPECT_EQ(reason.Sentence.back(), L'.');
  }
  for (std::size_t i = 1; i < quality.Reasons.size(); ++i) {
    EXPECT_LE(quality.Reasons[i].Weight, quality.Reasons[i - 1].Weight);
  }
}

TEST(FailedCalibration, WithoutAnySampleThereAreTooFew) {
  const Calibrated calibrated = CalibrateAndJudge({}, {});
  ASSERT_EQ(calibrated.result, 0);
  ExpectWellFormed(calibrated.quality);
  EXPECT_EQ(calibrated.quality.Reasons[0].Code, QualityCode::TooFewSamples);
  EXPECT_TRUE(std::isnan(calibrated.quality.A.HorizontalBefore.RadiusMean));
}

TEST(FailedCalibration, FourSamplesAreTooFewAndTheSentenceSaysHowManyThereAre) {
  SimulatedSession session = SoundSession(1);
  session.horizontal.resize(4);
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  ASSERT_EQ(calibrated.result, 0);
  const QualityReason& reason = calibrated.quality.Reasons[0];
  EXPECT_EQ(reason.Code, QualityCode::TooFewSamples);
  EXPECT_EQ(reason.Turn, ConcernedTurn::Horizontal);
  EXPECT_TRUE(Says(reason, L"There are 4 samples"));
}

TEST(FailedCalibration, APoleThatStoodStillIsSaidNotToHaveTurned) {
  SimulatedSession session = SoundSession(2);
  const std::vector<PoseSensorData> still(80, session.horizontal[0]);
  const Calibrated calibrated = CalibrateAndJudge(still, session.vertical);
  ASSERT_EQ(calibrated.result, 0);
  ExpectWellFormed(calibrated.quality);
  const QualityReason& reason = calibrated.quality.Reasons[0];
  EXPECT_EQ(reason.Code, QualityCode::ReadingsAlike);
  EXPECT_EQ(reason.Turn, ConcernedTurn::Horizontal);
}

TEST(FailedCalibration, ADeadAxisLeavesReadingsOnALine) {
  SimulatedSession session = SoundSession(3);
  for (PoseSensorData& sample : session.horizontal) sample.MagneticY_B = 123.0;
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  ASSERT_EQ(calibrated.result, 0);
  ExpectWellFormed(calibrated.quality);
  const QualityReason& reason = calibrated.quality.Reasons[0];
  EXPECT_EQ(reason.Code, QualityCode::ReadingsOnALine);
  EXPECT_EQ(reason.Magnetometer, ConcernedMagnetometer::B);
}

TEST(FailedCalibration, AMagnetometerThatReadsNothingIsSaidNotToChange) {
  SimulatedSession session = SoundSession(11);
  for (PoseSensorData& sample : session.vertical) {
    sample.MagneticX_B = sample.MagneticY_B = sample.MagneticZ_B = 0.0;
  }
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  ASSERT_EQ(calibrated.result, 0);
  ExpectWellFormed(calibrated.quality);
  const QualityReason& reason = calibrated.quality.Reasons[0];
  EXPECT_EQ(reason.Code, QualityCode::ReadingsAlike);
  EXPECT_EQ(reason.Magnetometer, ConcernedMagnetometer::B);
  EXPECT_EQ(reason.Turn, ConcernedTurn::Vertical);
}

TEST(FailedCalibration, AnAxisThatNeedsAScaleAboveTwoIsBeyondReach) {
  Random random(4);
  SimulatedSession session = RandomSession(random, 0.0005, 0.0);
  session.A.gain = {{{1.0, 0.0, 0.0}, {0.0, 0.4, 0.0}, {0.0, 0.0, 0.9}}};
  RecordTurns(session, random);
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  ASSERT_EQ(calibrated.result, 0);
  ExpectWellFormed(calibrated.quality);
  const QualityReason* reason = Find(calibrated.quality, QualityCode::ScaleBeyondReach);
  ASSERT_NE(reason, nullptr);
  EXPECT_EQ(reason->Magnetometer, ConcernedMagnetometer::A);
  EXPECT_TRUE(Says(*reason, L"2.5"));
}

TEST(FailedCalibration, ReadingsAllOverThePlaneComeFromADisturbedField) {
  SimulatedSession session = SoundSession(12);
  Random random(13);
  for (PoseSensorData& sample : session.horizontal) {
    sample.MagneticX_A = random.Uniform(-5000.0, 5000.0);
    sample.MagneticY_A = random.Uniform(-5000.0, 5000.0);
  }
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  if (calibrated.result == 1) {
    EXPECT_GE(calibrated.quality.Result, Verdict::Poor);
  } else {
    ExpectWellFormed(calibrated.quality);
  }
  const QualityReason* reason = Find(calibrated.quality, QualityCode::FieldDisturbed);
  ASSERT_NE(reason, nullptr);
  EXPECT_EQ(reason->Magnetometer, ConcernedMagnetometer::A);
}

TEST(FailedCalibration, ASixthOfATurnNamesTheDirectionsThatAreMissing) {
  Random random(5);
  int failures = 0;
  for (int i = 0; i < 20; ++i) {
    SimulatedSession session = RandomSession(random, 0.005, 1.0);
    session.through = 60.0;
    RecordTurns(session, random);
    const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
    if (calibrated.result == 1) continue;
    ++failures;
    ExpectWellFormed(calibrated.quality);
    EXPECT_TRUE(Has(calibrated.quality, QualityCode::DirectionsMissing));
  }
  EXPECT_GT(failures, 5);
}

TEST(FailedCalibration, AGapIsWhyAFitFailedAndTooFewSamplesAreNot) {
  SimulatedSession session = SoundSession(5);
  session.horizontal.resize(20);
  const tiltpole::CalibrationQuality quality =
      JudgeFailedCalibration(session.horizontal, session.vertical, {});
  const QualityReason* gap = Find(quality, QualityCode::DirectionsMissing);
  ASSERT_NE(gap, nullptr);
  EXPECT_EQ(gap->Weight, Verdict::Unusable);
  const QualityReason* few = Find(quality, QualityCode::TooFewSamples);
  ASSERT_NE(few, nullptr);
  EXPECT_EQ(few->Weight, Verdict::Usable);
}

TEST(FailedCalibration, ReadingsThatAreNotNumbersAreSaidSo) {
  SimulatedSession session = SoundSession(6);
  session.vertical[7].MagneticZ_B = std::numeric_limits<double>::quiet_NaN();
  const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
  ASSERT_EQ(calibrated.result, 0);
  ExpectWellFormed(calibrated.quality);
  EXPECT_EQ(calibrated.quality.Reasons[0].Code, QualityCode::ReadingsNotFinite);
}

TEST(FailedCalibration, AFailureThatNothingExplainsStillHasAReason) {
  const SimulatedSession session = SoundSession(8);
  const tiltpole::CalibrationQuality quality =
      JudgeFailedCalibration(session.horizontal, session.vertical, {});
  ExpectWellFormed(quality);
  EXPECT_EQ(quality.Reasons[0].Code, QualityCode::NotConverged);
}

TEST(FailedCalibration, EachMessageOfTheCalibrationAloneGivesItsReason) {
  const SimulatedSession session = SoundSession(9);
  const auto code_for = [&session](const wchar_t* message) {
    return JudgeFailedCalibration(session.horizontal, session.vertical, {message}).Reasons[0].Code;
  };
  EXPECT_EQ(code_for(L"Ellipse fitting failed, around the Z-axis data is incorrect!"),
            QualityCode::EllipseNotFitted);
  EXPECT_EQ(code_for(L"Ellipse fitting failed, around the Y-axis data is incorrect!"),
            QualityCode::EllipseNotFitted);
  EXPECT_EQ(code_for(L"Circulating abnormal exit calibration parameters might be wrong!"),
            QualityCode::NotConverged);
  EXPECT_EQ(code_for(L"Pan calculation magnetometer system fails, please recalibrate!"),
            QualityCode::FrameOffsetFailed);
}

// One way to spoil a session, of eight.
void Spoil(Random& random, SimulatedSession& session) {
  const auto any = [&random](std::size_t size) {
    return static_cast<std::size_t>(random.Uniform(0.0, static_cast<double>(size)));
  };
  std::vector<PoseSensorData>& turn =
      random.Uniform(0, 1) < 0.5 ? session.horizontal : session.vertical;
  switch (any(8)) {
    case 0:
      turn.resize(any(8));
      break;
    case 1:
      for (PoseSensorData& sample : turn) sample = turn[0];
      break;
    case 2:
      for (PoseSensorData& sample : turn) sample.MagneticX_A *= 1e-3;
      break;
    case 3:
      for (PoseSensorData& sample : turn) sample.MagneticY_B *= 0.3;
      break;
    case 4:
      for (PoseSensorData& sample : turn) sample.MagneticZ_A += 4000.0 * random.Normal();
      break;
    case 5:
      turn[any(turn.size())].MagneticX_A = std::numeric_limits<double>::infinity();
      break;
    case 6:
      for (PoseSensorData& sample : turn) {
        sample.MagneticX_B = random.Uniform(-1e4, 1e4);
        sample.MagneticY_B = random.Uniform(-1e4, 1e4);
        sample.MagneticZ_B = random.Uniform(-1e4, 1e4);
      }
      break;
    default:
      for (PoseSensorData& sample : turn) {
        sample.MagneticY_A = sample.MagneticX_A * sample.MagneticX_A * 1e-3;
        sample.MagneticZ_B = 1e7 / (sample.MagneticX_B + 1e4);
      }
      break;
  }
}

TEST(FailedCalibration, NoFailureIsWithoutAReasonHoweverTheSessionIsSpoilt) {
  Random random(10);
  int failures = 0;
  for (int i = 0; i < 120; ++i) {
    SimulatedSession session = RandomSession(random, 0.002, 1.0);
    session.samples = 40;
    session.through = random.Uniform(20.0, 360.0);
    RecordTurns(session, random);
    Spoil(random, session);
    if (random.Uniform(0.0, 1.0) < 0.3) Spoil(random, session);
    const Calibrated calibrated = CalibrateAndJudge(session.horizontal, session.vertical);
    if (calibrated.result == 1) {
      EXPECT_NE(calibrated.quality.Result, Verdict::Good);
      continue;
    }
    ++failures;
    ExpectWellFormed(calibrated.quality);
  }
  EXPECT_GT(failures, 50);
}

}  // namespace
