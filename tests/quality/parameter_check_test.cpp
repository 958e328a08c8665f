#include "tiltpole/quality/parameter_check.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "quality/calibrated_session.h"
#include "quality/found_reasons.h"

namespace {

using namespace tiltpole_test;
using tiltpole::CheckParameters;
using tiltpole::ConcernedMagnetometer;
using tiltpole::PoseSensorData;
using tiltpole::QualityCode;
using tiltpole::QualityReason;
using tiltpole::Verdict;

std::vector<PoseSensorData> Measurements(const SimulatedSession& session, Random& random) {
  std::vector<PoseSensorData> samples;
  for (int i = 0; i < 12; ++i) {
    const Attitude pole =
        LeaningPole(random.Uniform(0, 360), random.Uniform(0, 25), random.Uniform(0, 360));
    samples.push_back(SampleOf(session, pole, random));
  }
  return samples;
}

TEST(ParameterCheck, APolesOwnParametersFitItsMeasurements) {
  Random random(1);
  for (int i = 0; i < 20; ++i) {
    SimulatedSession session = RandomSession(random, 0.002, 0.3);
    RecordTurns(session, random);
    const Calibrated own = CalibrateAndJudge(session.horizontal, session.vertical);
    if (own.result != 1) continue;
    EXPECT_TRUE(CheckParameters(Measurements(session, random), own.A, own.B).empty());
  }
}

TEST(ParameterCheck, AnotherPolesParametersAreFoundOut) {
  Random random(2);
  for (int i = 0; i < 20; ++i) {
    SimulatedSession other = RandomSession(random, 0.002, 0.3);
    RecordTurns(other, random);
    const Calibrated foreign = CalibrateAndJudge(other.horizontal, other.vertical);
    if (foreign.result != 1) continue;
    const SimulatedSession own = RandomSession(random, 0.002, 0.3);
    const auto reasons = CheckParameters(Measurements(own, random), foreign.A, foreign.B);
    ASSERT_FALSE(reasons.empty());
    EXPECT_EQ(reasons[0].Code, QualityCode::ParametersOfAnotherPole);
  }
}

TEST(ParameterCheck, ATiltThatIsNoNumberCountsAsNone) {
  Random random(3);
  const SimulatedSession session = RandomSession(random, 0.002, 0.3);
  const auto samples = Measurements(session, random);
  for (double PoseSensorData::*const tilt :
       {&PoseSensorData::InclineX, &PoseSensorData::InclineY}) {
    auto level = samples;
    auto broken = samples;
    for (PoseSensorData& sample : level) sample.InclineX = sample.InclineY = 0.0;
    for (PoseSensorData& sample : broken) {
      sample.*tilt = std::numeric_limits<double>::quiet_NaN();
    }
    const auto expected = CheckParameters(level, {}, {});
    const auto found = CheckParameters(broken, {}, {});
    ASSERT_FALSE(expected.empty());
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
      EXPECT_EQ(found[i].Sentence, expected[i].Sentence);
    }
  }
}

TEST(ParameterCheck, WithoutAUsableSampleNothingIsFound) {
  PoseSensorData broken;
  broken.MagneticX_A = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(CheckParameters({}, {}, {}).empty());
  EXPECT_TRUE(CheckParameters({broken}, {}, {}).empty());
}

// What an ideal plumb pole reads; A and B can see different fields.
PoseSensorData PlumbSample(const Vector& seen_by_A, const Vector& seen_by_B) {
  PoseSensorData sample;
  sample.MagneticX_A = seen_by_A[0];
  sample.MagneticY_A = seen_by_A[1];
  sample.MagneticZ_A = seen_by_A[2];
  sample.MagneticX_B = -seen_by_B[0];
  sample.MagneticY_B = -seen_by_B[1];
  sample.MagneticZ_B = seen_by_B[2];
  return sample;
}

std::vector<QualityReason> Check(const std::vector<PoseSensorData>& samples) {
  return CheckParameters(samples, {}, {});
}

void ExpectOnly(const std::vector<QualityReason>& reasons, ConcernedMagnetometer magnetometer,
                const wchar_t* words) {
  ASSERT_EQ(reasons.size(), 1U);
  EXPECT_EQ(reasons[0].Code, QualityCode::ParametersOfAnotherPole);
  EXPECT_EQ(reasons[0].Weight, Verdict::Unusable);
  EXPECT_EQ(reasons[0].Magnetometer, magnetometer);
  EXPECT_TRUE(Says(reasons[0], words));
}

TEST(ParameterCheck, TheFieldStrengthMayScatterBy4Percent) {
  const Vector field = EarthField(5000.0, 60.0);
  const auto samples = [&field](double share, bool of_A) {
    const Vector strong = EarthField(5000.0 * (1.0 + share), 60.0);
    const Vector weak = EarthField(5000.0 * (1.0 - share), 60.0);
    return of_A ? std::vector{PlumbSample(strong, field), PlumbSample(weak, field)}
                : std::vector{PlumbSample(field, strong), PlumbSample(field, weak)};
  };
  for (const bool of_A : {true, false}) {
    EXPECT_TRUE(Check(samples(0.03999, of_A)).empty());
    ExpectOnly(Check(samples(0.04001, of_A)),
               of_A ? ConcernedMagnetometer::A : ConcernedMagnetometer::B, L"varies by 4.0 %");
  }
}

// 480 and 520 counts in directions of whole numbers scatter by 20 about 500, without rounding.
TEST(ParameterCheck, AFieldStrengthThatScattersByExactly4PercentStillFits) {
  const Vector weak = {288.0, 0.0, -384.0};
  const Vector strong = {312.0, 0.0, -416.0};
  EXPECT_TRUE(Check({PlumbSample(weak, weak), PlumbSample(strong, strong)}).empty());
}

// Their mean is off by its last bits then.
TEST(ParameterCheck, SamplesThatAreAllTheSameFitHoweverManyThereAre) {
  const Vector field = EarthField(4987.3, 61.7);
  for (std::size_t count = 1; count <= 60; ++count) {
    EXPECT_TRUE(Check(std::vector(count, PlumbSample(field, field))).empty()) << count;
  }
}

TEST(ParameterCheck, TheUnitOfTheReadingsDoesNotMatter) {
  const auto samples = [](double share) {
    const Vector strong = EarthField(0.1 * (1.0 + share), 60.0);
    const Vector weak = EarthField(0.1 * (1.0 - share), 60.0);
    return std::vector{PlumbSample(strong, strong), PlumbSample(weak, weak)};
  };
  EXPECT_TRUE(Check(samples(0.0399)).empty());
  EXPECT_EQ(Check(samples(0.0401)).size(), 2U);
}

TEST(ParameterCheck, TheDipMayScatterBy3DegreesInEitherHemisphere) {
  for (const double dip : {60.0, -20.0}) {
    const Vector field = EarthField(5000.0, dip);
    const auto samples = [&field, dip](double off) {
      return std::vector{PlumbSample(field, EarthField(5000.0, dip + off)),
                         PlumbSample(field, EarthField(5000.0, dip - off))};
    };
    EXPECT_TRUE(Check(samples(2.999)).empty());
    ExpectOnly(Check(samples(3.001)), ConcernedMagnetometer::B, L"varies by 3.0 degrees");
  }
}

TEST(ParameterCheck, TheHeadingsMayDifferBy5DegreesInTheRootMeanSquare) {
  const Vector field = EarthField(5000.0, 60.0);
  const auto samples = [&field](double first, double second) {
    return std::vector{PlumbSample(field, Product(Turn(kZ, first * kDegree), field)),
                       PlumbSample(field, Product(Turn(kZ, second * kDegree), field))};
  };
  EXPECT_TRUE(Check(samples(4.999, 4.999)).empty());
  ExpectOnly(Check(samples(5.001, 5.001)), ConcernedMagnetometer::Both, L"differ by 5.0 degrees");
  EXPECT_TRUE(Check(samples(7.07, 0.0)).empty());
  ExpectOnly(Check(samples(0.0, -7.08)), ConcernedMagnetometer::Both, L"differ by 5.0 degrees");
}

// North lies 5 degrees clockwise of B's x axis, so its heading is 355 and the difference -5: next
// to 360 degrees the last bits of the arctangent are lost.
TEST(ParameterCheck, HeadingsThatDifferByExactly5DegreesStillAgree) {
  const Vector field = EarthField(5000.0, 60.0);
  const auto turned = [&field](double degrees) {
    return std::vector{PlumbSample(field, Product(Turn(kZ, degrees * kDegree), field))};
  };
  EXPECT_TRUE(Check(turned(-5.0)).empty());
  ExpectOnly(Check(turned(-5.0 - 1e-12)), ConcernedMagnetometer::Both, L"differ by 5.0 degrees");
}

}  // namespace
