// From a sensor's remaining error to the headings, against a second way: the reading with the error
// is turned into the world by the pole's attitude, and its azimuth is the error.

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "quality/simulated_pole.h"
#include "tiltpole/quality/detail/sensor_error.h"

namespace {

using namespace tiltpole_test;
using tiltpole::HeadingError;
using tiltpole::detail::ErrorRow;
using tiltpole::detail::ExpectedHeadingError;
using tiltpole::detail::kErrorTerms;
using tiltpole::detail::SensorError;
using tiltpole::detail::TurnReadings;
using tiltpole::detail::Vector3;

constexpr double kDown = 1.4;  // vertical field over horizontal

ErrorRow RandomTerms(Random& random, double size) {
  ErrorRow terms{};
  for (double& term : terms) term = size * random.Uniform(-1.0, 1.0);
  return terms;
}

// E field + o, with -Exx for Eyy, on a field in the sensor's frame (x forward, y left, z up).
Vector WithError(const ErrorRow& e, const Vector& field) {
  using namespace tiltpole::detail;
  return {field[0] + e[kExx] * field[0] + e[kExy] * field[1] + e[kExz] * field[2] + e[kOx],
          field[1] + e[kEyx] * field[0] - e[kExx] * field[1] + e[kEyz] * field[2] + e[kOy],
          field[2] + e[kEzx] * field[0] + e[kEzy] * field[1] + e[kEzz] * field[2] + e[kOz]};
}

// How far the heading of a pole is off [degrees].
double PlainError(const ErrorRow& terms, const Attitude& pole) {
  const Vector field = SeenBySensor(pole, {1.0, 0.0, -kDown});
  const Vector world = Product(pole, WithError(terms, field));
  return std::atan2(world[1], world[0]) / kDegree;
}

// A pole whose x axis has the heading, leant by 30 degrees so that the direction `towards`, from
// its x axis clockwise, goes down.
Attitude TiltedPole(double heading, double towards) {
  const Attitude leant = LeaningPole(0.0, 30.0, towards);
  return Product(Turn(kZ, (HeadingOf(leant) - heading) * kDegree), leant);
}

// The covariance of an error that is `terms` times a number of variance 1.
SensorError ErrorWith(const ErrorRow& estimate, const ErrorRow& deviation, double noise) {
  SensorError error;
  error.Told = true;
  error.Terms = estimate;
  for (std::size_t i = 0; i < kErrorTerms; ++i) {
    for (std::size_t j = 0; j < kErrorTerms; ++j) {
      error.Covariance[i][j] = deviation[i] * deviation[j];
    }
  }
  error.HorizontalField = 2500.0;
  error.Down = kDown;
  error.Noise = noise;
  return error;
}

TEST(HeadingOfError, EachDirectionsErrorAndDeviationAreThoseOfTheReadingThere) {
  Random random(1);
  const ErrorRow estimate = RandomTerms(random, 1e-6);
  const ErrorRow deviation = RandomTerms(random, 1e-6);
  const HeadingError error = ExpectedHeadingError(ErrorWith(estimate, deviation, 0.0));
  ASSERT_EQ(error.ByHeading.size(), 72U);
  for (int i = 0; i < 72; ++i) {
    const Attitude pole = LeaningPole(5.0 * i, 0.0, 0.0);
    const tiltpole::HeadingErrorAt& at = error.ByHeading[static_cast<std::size_t>(i)];
    EXPECT_NEAR(at.Heading, 5.0 * i, 1e-12);
    EXPECT_NEAR(at.Error, PlainError(estimate, pole), 1e-9);
    EXPECT_NEAR(at.Deviation, std::fabs(PlainError(deviation, pole)), 1e-9);
  }
}

// Of an error known with a deviation the larger of the two counts, and the largest is the error and
// two deviations.
struct PlainSummary {
  double mean = 0.0;
  double mean_square = 0.0;
  double largest = 0.0;
  int count = 0;

  void Add(double error, double deviation) {
    mean += error;
    mean_square += std::max(error * error, deviation * deviation);
    largest = std::max(largest, std::fabs(error) + 2.0 * std::fabs(deviation));
    ++count;
  }
};

TEST(HeadingOfError, TheSummaryIsOverAllDirectionsOfAPlumbPole) {
  Random random(2);
  const ErrorRow estimate = RandomTerms(random, 1e-6);
  const ErrorRow deviation = RandomTerms(random, 1e-6);
  const double noise = 7e-7;
  const HeadingError error = ExpectedHeadingError(ErrorWith(estimate, deviation, noise));
  PlainSummary plain;
  for (int i = 0; i < 72; ++i) {
    const Attitude pole = LeaningPole(5.0 * i, 0.0, 0.0);
    plain.Add(PlainError(estimate, pole), PlainError(deviation, pole));
  }
  const double mean = plain.mean / plain.count;
  const double square = plain.mean_square / plain.count;
  const double noise_square = std::pow(noise / kDegree, 2);
  EXPECT_NEAR(error.Mean, mean, 1e-9);
  EXPECT_NEAR(error.Largest, plain.largest, 1e-9);
  EXPECT_NEAR(error.Systematic, std::sqrt(square), 1e-9);
  EXPECT_NEAR(error.Noise, noise / kDegree, 1e-12);
  EXPECT_NEAR(error.RootMeanSquare, std::sqrt(square + noise_square), 1e-9);
  EXPECT_NEAR(error.StandardDeviation, std::sqrt(square + noise_square - mean * mean), 1e-9);
}

TEST(HeadingOfError, TheTiltedSummaryIsOverAllDirectionsAndWaysToLeanBy30Degrees) {
  Random random(3);
  const ErrorRow estimate = RandomTerms(random, 1e-6);
  const ErrorRow deviation = RandomTerms(random, 1e-6);
  const double noise = 7e-7;
  const HeadingError error = ExpectedHeadingError(ErrorWith(estimate, deviation, noise));
  PlainSummary plain;
  for (int i = 0; i < 72; ++i) {
    for (int j = 0; j < 12; ++j) {
      const Attitude pole = TiltedPole(5.0 * i, 30.0 * j);
      plain.Add(PlainError(estimate, pole), PlainError(deviation, pole));
    }
  }
  EXPECT_NEAR(error.Tilted,
              std::sqrt(plain.mean_square / plain.count + std::pow(noise / kDegree, 2)), 1e-9);
  EXPECT_NEAR(error.TiltedLargest, plain.largest, 1e-9);
}

// An error of 1 radian, known to 1.5: with two deviations more than half a turn.
TEST(HeadingOfError, AHeadingIsOffByHalfATurnAtMost) {
  ErrorRow estimate{};
  ErrorRow deviation{};
  estimate[tiltpole::detail::kOy] = 1.0;
  deviation[tiltpole::detail::kOy] = 1.5;
  const HeadingError error = ExpectedHeadingError(ErrorWith(estimate, deviation, 0.0));
  EXPECT_EQ(error.Largest, 180.0);
  EXPECT_EQ(error.TiltedLargest, 180.0);
}

TEST(HeadingOfError, AnErrorThatIsNotToldGivesNoNumbersAndNoDirections) {
  const HeadingError error = ExpectedHeadingError({});
  for (const double figure :
       {error.Mean, error.StandardDeviation, error.RootMeanSquare, error.Largest, error.Systematic,
        error.Noise, error.Tilted, error.TiltedLargest}) {
    EXPECT_TRUE(std::isnan(figure));
  }
  EXPECT_TRUE(error.ByHeading.empty());
}

Vector3 AsVector3(const Vector& v) { return {v[0], v[1], v[2]}; }

TurnReadings ReadingsOf(const std::vector<Attitude>& poles, const ErrorRow& terms,
                        double strength) {
  TurnReadings readings;
  for (const Attitude& pole : poles) {
    const Vector read = WithError(terms, SeenBySensor(pole, {1.0, 0.0, -kDown}));
    readings.Field.push_back(strength * AsVector3(read));
    readings.Up.push_back(AsVector3(SeenBySensor(pole, kZ)));
    // Tilts do not tell on which end the pole stands.
    readings.Up.back().z = std::fabs(readings.Up.back().z);
  }
  return readings;
}

struct TwoTurns {
  TurnReadings horizontal;
  TurnReadings vertical;
};

// Two steady turns, the vertical one about y with the pole facing 25 degrees.
TwoTurns SteadyTurns(const ErrorRow& terms, int count = 120) {
  std::vector<Attitude> horizontal;
  std::vector<Attitude> vertical;
  for (int i = 0; i < count; ++i) {
    const double angle = 360.0 * i / count;
    horizontal.push_back(LeaningPole(angle, 0.0, 0.0));
    vertical.push_back(Product(LeaningPole(25.0, 0.0, 0.0), Turn(kY, angle * kDegree)));
  }
  return {ReadingsOf(horizontal, terms, 2500.0), ReadingsOf(vertical, terms, 2500.0)};
}

void ExpectTerms(const SensorError& error, const ErrorRow& terms) {
  ASSERT_TRUE(error.Told);
  for (std::size_t i = 0; i < kErrorTerms; ++i) EXPECT_NEAR(error.Terms[i], terms[i], 1e-6) << i;
}

TEST(SensorErrorEstimate, ASmallErrorIsFoundTermByTermFromTwoSteadyTurns) {
  Random random(4);
  const ErrorRow terms = RandomTerms(random, 1e-4);
  const TwoTurns turns = SteadyTurns(terms);
  const SensorError error = EstimateSensorError(turns.horizontal, turns.vertical);
  ExpectTerms(error, terms);
  EXPECT_NEAR(error.HorizontalField, 2500.0, 1.0);
  EXPECT_NEAR(error.Down, kDown, 1e-3);
  EXPECT_LT(error.Noise, 1e-6);
}

// A small error of the tilts is a large one of the vertical there.
TEST(SensorErrorEstimate, SamplesNearLyingFlatAreLeftOut) {
  Random random(5);
  const ErrorRow terms = RandomTerms(random, 1e-4);
  for (const double along_the_pole : {0.349, 0.351}) {
    TwoTurns turns = SteadyTurns(terms);
    const double side = std::sqrt(1.0 - along_the_pole * along_the_pole);
    turns.vertical.Field.push_back(2500.0 * Vector3{1.0, 0.3, -1.4});
    turns.vertical.Up.push_back({side, 0.0, along_the_pole});
    const SensorError error = EstimateSensorError(turns.horizontal, turns.vertical);
    if (along_the_pole < 0.35) {
      ExpectTerms(error, terms);
    } else {
      EXPECT_GT(error.Noise +
                    std::fabs(error.Terms[tiltpole::detail::kOx] - terms[tiltpole::detail::kOx]),
                1e-5);
    }
  }
}

// Turned over, the vertical differs along z alone: by twice the field's part there, times its own.
TEST(SensorErrorEstimate, SamplesThatDoNotTellTheirSideAreLeftOut) {
  Random random(6);
  const ErrorRow terms = RandomTerms(random, 1e-4);
  for (const double split : {0.199, 0.201}) {
    TwoTurns turns = SteadyTurns(terms);
    const double z = 0.5 * split / 0.8;
    turns.vertical.Field.push_back(4000.0 * Vector3{std::sqrt(1.0 - z * z), 0.0, -z});
    turns.vertical.Up.push_back({-0.6, 0.0, 0.8});
    const SensorError error = EstimateSensorError(turns.horizontal, turns.vertical);
    if (split < 0.2) {
      ExpectTerms(error, terms);
    } else {
      EXPECT_GT(std::fabs(error.Terms[tiltpole::detail::kEzx] - terms[tiltpole::detail::kEzx]),
                1e-5);
    }
  }
}

TEST(SensorErrorEstimate, WithFewerThanEightSamplesOfATurnNothingIsTold) {
  Random random(7);
  const TwoTurns turns = SteadyTurns(RandomTerms(random, 1e-4));
  const auto thinned = [](const TurnReadings& turn, std::size_t count) {
    TurnReadings few;
    for (std::size_t i = 0; i < count; ++i) {
      // Not those that lie flat, which count for nothing.
      const std::size_t at = i % 2 == 0 ? 2 * i : 60 + 2 * i;
      few.Field.push_back(turn.Field[at]);
      few.Up.push_back(turn.Up[at]);
    }
    return few;
  };
  EXPECT_TRUE(EstimateSensorError(thinned(turns.horizontal, 8), turns.vertical).Told);
  EXPECT_FALSE(EstimateSensorError(thinned(turns.horizontal, 7), turns.vertical).Told);
  EXPECT_TRUE(EstimateSensorError(turns.horizontal, thinned(turns.vertical, 8)).Told);
  EXPECT_FALSE(EstimateSensorError(turns.horizontal, thinned(turns.vertical, 7)).Told);
  EXPECT_FALSE(EstimateSensorError({}, turns.vertical).Told);
  EXPECT_FALSE(EstimateSensorError(turns.horizontal, {}).Told);
}

TEST(SensorErrorEstimate, TheUnitOfTheReadingsDoesNotMatter) {
  Random random(9);
  const ErrorRow terms = RandomTerms(random, 1e-4);
  TwoTurns turns = SteadyTurns(terms);
  for (TurnReadings* turn : {&turns.horizontal, &turns.vertical}) {
    for (Vector3& field : turn->Field) field = 1e-4 * field;
  }
  const SensorError error = EstimateSensorError(turns.horizontal, turns.vertical);
  ExpectTerms(error, terms);
  EXPECT_NEAR(error.HorizontalField, 0.25, 1e-4);
}

void AddNoise(Random& random, double noise, TurnReadings& turn) {
  for (Vector3& field : turn.Field) {
    field = field + 2500.0 * noise * Vector3{random.Normal(), random.Normal(), random.Normal()};
  }
}

// The noise that is told of the horizontal turn [shares of the horizontal field, root mean square].
double ToldNoise(int count, double horizontal_noise, double vertical_noise, int sessions) {
  Random random(10);
  double square = 0.0;
  for (int session = 0; session < sessions; ++session) {
    TwoTurns turns = SteadyTurns({}, count);
    AddNoise(random, horizontal_noise, turns.horizontal);
    AddNoise(random, vertical_noise, turns.vertical);
    const SensorError error = EstimateSensorError(turns.horizontal, turns.vertical);
    EXPECT_TRUE(error.Told);
    square += error.Noise * error.Noise / sessions;
  }
  return std::sqrt(square);
}

TEST(SensorErrorEstimate, AQuietTurnIsTrustedFiveTimesAsMuchAsANoisyOneAtMost) {
  EXPECT_NEAR(ToldNoise(240, 0.0001, 0.002, 20) / (0.2 * 0.002), 1.0, 0.04);
  EXPECT_NEAR(ToldNoise(240, 0.001, 0.002, 20) / 0.001, 1.0, 0.04);
}

TEST(SensorErrorEstimate, TheNoiseCountsOnlyWhatTheUnknownsLeaveFree) {
  EXPECT_NEAR(ToldNoise(16, 0.002, 0.002, 200) / 0.002, 1.0, 0.04);
}

// Over many sensors with the same noise the estimates scatter as their covariances say.
TEST(SensorErrorEstimate, TheCovarianceAndTheNoiseAreThoseOfRepeatedSessions) {
  constexpr double kNoise = 0.002;
  constexpr int kSessions = 60;
  Random random(8);
  const ErrorRow none{};
  double noise = 0.0;
  ErrorRow found{};
  ErrorRow expected{};
  for (int session = 0; session < kSessions; ++session) {
    TwoTurns turns = SteadyTurns(none, 60);
    AddNoise(random, kNoise, turns.horizontal);
    AddNoise(random, kNoise, turns.vertical);
    const SensorError error = EstimateSensorError(turns.horizontal, turns.vertical);
    ASSERT_TRUE(error.Told);
    noise += error.Noise / kSessions;
    for (std::size_t i = 0; i < kErrorTerms; ++i) {
      found[i] += error.Terms[i] * error.Terms[i] / kSessions;
      expected[i] += error.Covariance[i][i] / kSessions;
    }
  }
  EXPECT_NEAR(noise / kNoise, 1.0, 0.03);
  for (std::size_t i = 0; i < kErrorTerms; ++i) {
    EXPECT_NEAR(std::sqrt(found[i] / expected[i]), 1.0, 0.25) << i;
  }
}

}  // namespace
