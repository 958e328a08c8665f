// What samples show before any fit, and what those of a failed calibration show: where each fault
// begins.

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "quality/found_reasons.h"
#include "tiltpole/quality/detail/conic.h"
#include "tiltpole/quality/detail/reasons.h"

namespace {

using tiltpole::CalibrationQuality;
using tiltpole::ConcernedMagnetometer;
using tiltpole::ConcernedTurn;
using tiltpole::PoseSensorData;
using tiltpole::QualityCode;
using tiltpole::QualityReason;
using tiltpole::Verdict;
using tiltpole::detail::RawSession;
using tiltpole::detail::Reasons;
using tiltpole::detail::Samples;
using tiltpole::detail::TurnPlane;
using tiltpole::detail::Vector3;
using tiltpole_test::Find;
using tiltpole_test::Says;

constexpr double kFullTurn = 2.0 * 3.14159265358979323846;

// Readings of both magnetometers on an ellipse in x-y and in x-z; what lies off the plane is level.
struct Ellipse {
  double first = 1000.0;
  double second = 1000.0;
  double level = 0.0;
  double jitter = 0.0;  // neighbours lie this share further out and further in
};

Samples OnEllipse(const Ellipse& ellipse, bool vertical, int count) {
  Samples samples;
  for (int i = 0; i < count; ++i) {
    const double angle = kFullTurn * i / count;
    const double out = i % 2 == 0 ? 1.0 + ellipse.jitter : 1.0 - ellipse.jitter;
    const double second = out * ellipse.second * std::sin(angle);
    PoseSensorData sample;
    sample.MagneticX_A = sample.MagneticX_B = out * ellipse.first * std::cos(angle);
    sample.MagneticY_A = sample.MagneticY_B = vertical ? ellipse.level : second;
    sample.MagneticZ_A = sample.MagneticZ_B = vertical ? second : ellipse.level;
    samples.push_back(sample);
  }
  return samples;
}

RawSession RoundTurns(int horizontal = 100, int vertical = 100) {
  return {OnEllipse({}, false, horizontal), OnEllipse({}, true, vertical), 0};
}

Reasons FaultsOfSamples(const RawSession& session) {
  Reasons reasons;
  FindFaultsOfSamples(session, reasons);
  return reasons;
}

TEST(FaultsOfSamples, TwoRoundTurnsOf30SamplesHaveNone) {
  EXPECT_TRUE(FaultsOfSamples(RoundTurns(30, 30)).empty());
}

TEST(FaultsOfSamples, A29thSampleOfTheLastTurnIsUsableAndTheTurnIsNamed) {
  const Reasons reasons = FaultsOfSamples(RoundTurns(30, 29));
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].Code, QualityCode::TooFewSamples);
  EXPECT_EQ(reasons[0].Weight, Verdict::Usable);
  EXPECT_EQ(reasons[0].Turn, ConcernedTurn::Vertical);
  EXPECT_TRUE(Says(reasons[0], L"There are 29 samples"));
  EXPECT_FALSE(Says(reasons[0], L"the fit needs 5"));
}

TEST(FaultsOfSamples, WithFiveAFitIsPossibleAndWithFourItIsNot) {
  EXPECT_EQ(FaultsOfSamples(RoundTurns(5, 30))[0].Weight, Verdict::Usable);
  const Reasons reasons = FaultsOfSamples(RoundTurns(4, 30));
  EXPECT_EQ(reasons[0].Weight, Verdict::Unusable);
  EXPECT_EQ(reasons[0].Turn, ConcernedTurn::Horizontal);
  EXPECT_TRUE(Says(reasons[0], L"the fit needs 5"));
}

TEST(FaultsOfSamples, OneSampleLeftOutIsTold) {
  RawSession session = RoundTurns();
  session.Left_Out = 1;
  const Reasons reasons = FaultsOfSamples(session);
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].Code, QualityCode::ReadingsNotFinite);
  EXPECT_EQ(reasons[0].Weight, Verdict::Poor);
}

// A circle spreads by its radius over the root of 2 in any direction; its readings are as long as
// the root of the radius' square and the level's.
TEST(FaultsOfSamples, ATurnIsOneWhereItSpreadsByMoreThanAHundredthOfTheReadings) {
  const double level = 1000.0 * std::sqrt(4999.0);
  for (const bool vertical : {false, true}) {
    for (const double further : {1.001, 0.999}) {
      RawSession session = RoundTurns();
      (vertical ? session.Vertical : session.Horizontal) =
          OnEllipse({1000.0, 1000.0, further * level}, vertical, 100);
      const Reasons reasons = FaultsOfSamples(session);
      EXPECT_EQ(reasons.size(), further > 1.0 ? 2U : 0U);
      if (further < 1.0) continue;
      EXPECT_EQ(reasons[0].Code, QualityCode::ReadingsAlike);
      EXPECT_EQ(reasons[0].Magnetometer, ConcernedMagnetometer::A);
      EXPECT_EQ(reasons[1].Magnetometer, ConcernedMagnetometer::B);
      EXPECT_EQ(reasons[1].Turn, vertical ? ConcernedTurn::Vertical : ConcernedTurn::Horizontal);
    }
  }
}

TEST(FaultsOfSamples, AnEllipseATwentiethAsWideAsLongIsALine) {
  RawSession session = RoundTurns();
  session.Vertical = OnEllipse({1000.0, 49.9}, true, 100);
  const Reasons reasons = FaultsOfSamples(session);
  ASSERT_EQ(reasons.size(), 2U);
  EXPECT_EQ(reasons[0].Code, QualityCode::ReadingsOnALine);
  EXPECT_EQ(reasons[0].Turn, ConcernedTurn::Vertical);
  session.Vertical = OnEllipse({1000.0, 50.1}, true, 100);
  EXPECT_TRUE(FaultsOfSamples(session).empty());
}

// Readings of both magnetometers in the plane of the horizontal turn.
Samples InPlane(const std::vector<std::array<double, 2>>& points) {
  Samples samples;
  for (const std::array<double, 2>& point : points) {
    PoseSensorData sample;
    sample.MagneticX_A = sample.MagneticX_B = point[0];
    sample.MagneticY_A = sample.MagneticY_B = point[1];
    samples.push_back(sample);
  }
  return samples;
}

RawSession WithHorizontal(const std::vector<std::array<double, 2>>& eight_times) {
  RawSession session = RoundTurns();
  session.Horizontal.clear();
  for (int i = 0; i < 8; ++i) {
    const Samples samples = InPlane(eight_times);
    session.Horizontal.insert(session.Horizontal.end(), samples.begin(), samples.end());
  }
  return session;
}

// Readings of 99 and 101 counts spread by 1, without rounding.
TEST(FaultsOfSamples, ATurnThatSpreadsByExactlyAHundredthDidNotHappen) {
  const auto faults = [](double off) {
    return FaultsOfSamples(WithHorizontal(
        {{100.0 + off, 0.0}, {100.0 - off, 0.0}, {100.0 + off, 0.0}, {100.0 - off, 0.0}}));
  };
  ASSERT_EQ(faults(1.0).size(), 2U);
  EXPECT_EQ(faults(1.0)[0].Code, QualityCode::ReadingsAlike);
  ASSERT_EQ(faults(1.0001).size(), 2U);
  EXPECT_EQ(faults(1.0001)[0].Code, QualityCode::ReadingsOnALine);
}

TEST(FaultsOfSamples, TheUnitOfTheReadingsDoesNotMatter) {
  const auto faults = [](double off) {
    return FaultsOfSamples(WithHorizontal({{1e-3 * (100.0 + off), 0.0},
                                           {1e-3 * (100.0 - off), 0.0},
                                           {1e-3 * 100.0, 1e-3 * off},
                                           {1e-3 * 100.0, -1e-3 * off}}));
  };
  EXPECT_EQ(faults(1.41).size(), 2U);
  EXPECT_TRUE(faults(1.42).empty());
}

// The readings spread by 20 along one axis and by 1 along the other, without rounding.
TEST(FaultsOfSamples, ReadingsExactlyATwentiethAsWideAsLongAreALineToo) {
  const auto faults = [](double width) {
    return FaultsOfSamples(
        WithHorizontal({{20.0, width}, {20.0, -width}, {-20.0, width}, {-20.0, -width}}));
  };
  ASSERT_EQ(faults(1.0).size(), 2U);
  EXPECT_EQ(faults(1.0)[0].Code, QualityCode::ReadingsOnALine);
  EXPECT_TRUE(faults(1.0001).empty());
}

TEST(FaultsOfSamples, ASessionThatLostNoSampleDoesNotSaySo) {
  RawSession session;
  session.Horizontal = OnEllipse({}, false, 30);
  session.Vertical = OnEllipse({}, true, 30);
  EXPECT_TRUE(FaultsOfSamples(session).empty());
}

Reasons FaultsOfCoverage(const CalibrationQuality& quality) {
  Reasons reasons;
  tiltpole::detail::FindMissingDirections(quality, reasons);
  return reasons;
}

TEST(MissingDirections, WeighMoreWhereLessThanThreeQuartersAreCovered) {
  CalibrationQuality quality;
  quality.Vertical = {1, 75.0, {{10.0, 100.0}}};
  EXPECT_EQ(FaultsOfCoverage(quality)[0].Weight, Verdict::Usable);
  EXPECT_EQ(FaultsOfCoverage(quality)[0].Turn, ConcernedTurn::Vertical);
  EXPECT_TRUE(Says(FaultsOfCoverage(quality)[0], L"10 to 100 degrees"));
  quality.Vertical.CoveredPercent = 74.9999;
  EXPECT_EQ(FaultsOfCoverage(quality)[0].Weight, Verdict::Poor);
}

TEST(MissingDirections, AreToldInWholeDegreesToTheNearest) {
  CalibrationQuality quality;
  quality.Horizontal = {1, 75.0, {{10.46, 99.54}}};
  EXPECT_TRUE(Says(FaultsOfCoverage(quality)[0], L"the directions 10 to 100 degrees"));
}

TEST(MissingDirections, OfATurnWithoutSamplesAreNotListed) {
  CalibrationQuality quality;
  quality.Horizontal = {0, 0.0, {{0.0, 360.0}}};
  quality.Vertical = {0, 0.0, {{0.0, 360.0}}};
  EXPECT_TRUE(FaultsOfCoverage(quality).empty());
  quality.Horizontal.Samples = 1;
  ASSERT_EQ(FaultsOfCoverage(quality).size(), 1U);
  EXPECT_EQ(FaultsOfCoverage(quality)[0].Turn, ConcernedTurn::Horizontal);
}

TEST(Conclusion, TheWorstReasonComesFirstAndEqualOnesStayInTheirOrder) {
  CalibrationQuality quality;
  quality.Calibrated = true;
  const auto reason = [](QualityCode code, Verdict weight) {
    QualityReason made;
    made.Code = code;
    made.Weight = weight;
    return made;
  };
  quality.Reasons = {reason(QualityCode::SamplesDropped, Verdict::Good),
                     reason(QualityCode::DipSteep, Verdict::Usable),
                     reason(QualityCode::DipsDiffer, Verdict::Poor),
                     reason(QualityCode::FieldDisturbed, Verdict::Usable)};
  tiltpole::detail::Conclude(quality);
  EXPECT_EQ(quality.Result, Verdict::Poor);
  EXPECT_EQ(quality.Reasons[0].Code, QualityCode::DipsDiffer);
  EXPECT_EQ(quality.Reasons[1].Code, QualityCode::DipSteep);
  EXPECT_EQ(quality.Reasons[2].Code, QualityCode::FieldDisturbed);
  EXPECT_EQ(quality.Reasons[3].Code, QualityCode::SamplesDropped);
}

Reasons FaultsOfFit(const RawSession& session, const std::vector<std::wstring>& messages) {
  Reasons reasons;
  FindFaultsOfFit(session, messages, reasons);
  return reasons;
}

const wchar_t* const kFailed_A =
    L"A calculation of the magnetometer calibration fails, please recalibrate!";
const wchar_t* const kFailed_B =
    L"B calculation of the magnetometer calibration fails, please recalibrate!";
const wchar_t* const kCirculating =
    L"Circulating abnormal exit calibration parameters might be wrong!";

TEST(FaultsOfFit, AnAxisThatNeedsAScaleNear2IsBeyondReach) {
  for (const bool vertical : {false, true}) {
    RawSession session = RoundTurns();
    Samples& turn = vertical ? session.Vertical : session.Horizontal;
    turn = OnEllipse({1000.0, 1000.0 / 1.951}, vertical, 100);
    const Reasons reasons = FaultsOfFit(session, {kFailed_B});
    const QualityReason* reason = Find(reasons, QualityCode::ScaleBeyondReach);
    ASSERT_NE(reason, nullptr);
    EXPECT_EQ(reason->Magnetometer, ConcernedMagnetometer::B);
    EXPECT_EQ(reason->Turn, vertical ? ConcernedTurn::Vertical : ConcernedTurn::Horizontal);
    EXPECT_TRUE(Says(*reason, vertical ? L"The z axis" : L"The y axis"));
    EXPECT_TRUE(Says(*reason, L"scaled by 2.0"));
    turn = OnEllipse({1000.0, 1000.0 / 1.949}, vertical, 100);
    EXPECT_EQ(Find(FaultsOfFit(session, {kFailed_B}), QualityCode::ScaleBeyondReach), nullptr);
  }
}

// Of turns of many sizes one asks for the very limit, whose last bits the fit decides.
TEST(FaultsOfFit, AScaleOfExactly1_95IsBeyondReach) {
  RawSession session = RoundTurns();
  for (double further = 1.0; further < 2.0; further += 1e-3) {
    session.Horizontal = OnEllipse({1000.0 * further, 1000.0 * further / 1.95}, false, 100);
    const std::vector<Vector3> readings = tiltpole::detail::RawReadings_B(session.Horizontal);
    if (ScaleNeeded(FitConic(PointsInPlane(readings, TurnPlane::XY))) != 1.95) continue;
    EXPECT_NE(Find(FaultsOfFit(session, {kFailed_B}), QualityCode::ScaleBeyondReach), nullptr);
    return;
  }
  FAIL() << "no turn asks for the limit";
}

TEST(FaultsOfFit, AScaleOfZWithin12HundredthsOf1MayHaveBeenSoughtOnTheWrongSide) {
  RawSession session = RoundTurns();
  for (const double scale : {1.119, 0.881}) {
    session.Vertical = OnEllipse({1000.0, 1000.0 / scale}, true, 100);
    const Reasons reasons = FaultsOfFit(session, {kCirculating, kFailed_A});
    const QualityReason* reason = Find(reasons, QualityCode::ScaleBeyondReach);
    ASSERT_NE(reason, nullptr);
    EXPECT_EQ(reason->Magnetometer, ConcernedMagnetometer::A);
    EXPECT_EQ(reason->Turn, ConcernedTurn::Vertical);
    EXPECT_TRUE(Says(*reason, L"so close to 1"));
  }
  for (const double scale : {1.121, 0.879}) {
    session.Vertical = OnEllipse({1000.0, 1000.0 / scale}, true, 100);
    EXPECT_EQ(Find(FaultsOfFit(session, {kCirculating, kFailed_A}), QualityCode::ScaleBeyondReach),
              nullptr);
  }
}

TEST(FaultsOfFit, AScaleOfZExactly12HundredthsBelow1MayHaveBeenSoughtOnTheWrongSideToo) {
  RawSession session = RoundTurns();
  for (double further = 1.0; further < 2.0; further += 1e-3) {
    session.Vertical = OnEllipse({1000.0 * further, 1000.0 * further / 0.88}, true, 100);
    const std::vector<Vector3> readings = tiltpole::detail::RawReadings_A(session.Vertical);
    if (1.0 - ScaleNeeded(FitConic(PointsInPlane(readings, TurnPlane::XZ))) != 0.12) continue;
    EXPECT_NE(Find(FaultsOfFit(session, {kCirculating, kFailed_A}), QualityCode::ScaleBeyondReach),
              nullptr);
    return;
  }
  FAIL() << "no turn asks for the limit";
}

TEST(FaultsOfFit, AScaleOfZNear1IsNoFaultWhereTheFitDidNotRunOut) {
  const Reasons reasons = FaultsOfFit(RoundTurns(), {kFailed_B});
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].Code, QualityCode::NotConverged);
  EXPECT_EQ(reasons[0].Magnetometer, ConcernedMagnetometer::B);
}

TEST(FaultsOfFit, TheMagnetometerWhoseFitRanOutIsNamed) {
  for (const bool of_A : {true, false}) {
    const Reasons reasons = FaultsOfFit(RoundTurns(), {kCirculating, of_A ? kFailed_A : kFailed_B});
    const ConcernedMagnetometer named = of_A ? ConcernedMagnetometer::A : ConcernedMagnetometer::B;
    ASSERT_EQ(reasons.size(), 2U);
    EXPECT_EQ(reasons[0].Code, QualityCode::ScaleBeyondReach);
    EXPECT_EQ(reasons[0].Magnetometer, named);
    EXPECT_EQ(reasons[1].Code, QualityCode::NotConverged);
    EXPECT_EQ(reasons[1].Magnetometer, named);
  }
}

// Readings in turn a share d outside and inside of a circle leave the circle between them by d of
// its radius, and their spread in the plane is that radius over the root of 2.
TEST(FaultsOfFit, ATurnWhoseReadingsLeaveTheirEllipseByMoreThan3PercentWasDisturbed) {
  const double limit = 0.03 / std::sqrt(2.0);
  for (const bool vertical : {false, true}) {
    RawSession session = RoundTurns();
    Samples& turn = vertical ? session.Vertical : session.Horizontal;
    turn = OnEllipse({1000.0, 1000.0, 0.0, 1.01 * limit}, vertical, 100);
    const Reasons reasons = FaultsOfFit(session, {kFailed_A});
    const QualityReason* reason = Find(reasons, QualityCode::FieldDisturbed);
    ASSERT_NE(reason, nullptr);
    EXPECT_EQ(reason->Magnetometer, ConcernedMagnetometer::A);
    EXPECT_EQ(reason->Turn, vertical ? ConcernedTurn::Vertical : ConcernedTurn::Horizontal);
    EXPECT_TRUE(Says(*reason, L"by 3.0 % of its size"));
    turn = OnEllipse({1000.0, 1000.0, 0.0, 0.99 * limit}, vertical, 100);
    EXPECT_EQ(Find(FaultsOfFit(session, {kFailed_A}), QualityCode::FieldDisturbed), nullptr);
  }
}

// The curve x^2 / 5 + x y + 4 y^2 / 5 = 10^6: as an ellipse's, its squares would ask for a scale
// of 2.
TEST(FaultsOfFit, ReadingsOnAHyperbolaAreNoEllipseThatAScaleWouldMend) {
  RawSession session = RoundTurns();
  std::vector<std::array<double, 2>> points;
  for (int i = -8; i <= 8; ++i) {
    const double a = 1000.0 * std::exp(0.2 * i);
    const double b = 1e6 / a;
    points.push_back({(4.0 * b - 5.0 * a) / 3.0, (5.0 * a - b) / 3.0});
    points.push_back({(5.0 * a - 4.0 * b) / 3.0, (b - 5.0 * a) / 3.0});
  }
  session.Horizontal = InPlane(points);
  const Reasons reasons = FaultsOfFit(session, {kFailed_A});
  const QualityReason* reason = Find(reasons, QualityCode::EllipseNotFitted);
  ASSERT_NE(reason, nullptr);
  EXPECT_EQ(reason->Magnetometer, ConcernedMagnetometer::A);
  EXPECT_EQ(reason->Turn, ConcernedTurn::Horizontal);
  EXPECT_EQ(Find(reasons, QualityCode::ScaleBeyondReach), nullptr);
  EXPECT_EQ(Find(reasons, QualityCode::FieldDisturbed), nullptr);
}

TEST(FaultsOfFit, WhereNoMagnetometerIsNamedBothAreLookedAt) {
  RawSession session = RoundTurns();
  session.Horizontal = OnEllipse({1000.0, 400.0}, false, 100);
  const Reasons reasons = FaultsOfFit(session, {});
  ASSERT_EQ(reasons.size(), 2U);
  EXPECT_EQ(reasons[0].Magnetometer, ConcernedMagnetometer::A);
  EXPECT_EQ(reasons[1].Magnetometer, ConcernedMagnetometer::B);
}

}  // namespace
