#include "tiltpole/quality/parameter_check.h"

#include <limits>

#include <gtest/gtest.h>

#include "quality/calibrated_session.h"

namespace {

using namespace tiltpole_test;
using tiltpole::CheckParameters;
using tiltpole::PoseSensorData;
using tiltpole::QualityCode;

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

TEST(ParameterCheck, WithoutAUsableSampleNothingIsFound) {
  PoseSensorData broken;
  broken.MagneticX_A = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(CheckParameters({}, {}, {}).empty());
  EXPECT_TRUE(CheckParameters({broken}, {}, {}).empty());
}

}  // namespace
