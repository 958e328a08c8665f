// What the vertical turn alone tells of a heading's constant error, by how y answers to x over it,
// and which of its samples count. The pole faces north there, so that no other observation tells.

#include "tiltpole/quality/detail/sensor_error.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

#include "quality/simulated_pole.h"

namespace {

using namespace tiltpole_test;
using tiltpole::detail::EstimateSensorError;
using tiltpole::detail::kEyx;
using tiltpole::detail::kEyz;
using tiltpole::detail::kOz;
using tiltpole::detail::SensorError;
using tiltpole::detail::TurnReadings;
using tiltpole::detail::Vector3;

constexpr double kDown = 1.4;         // vertical field over horizontal
constexpr double kStrength = 2000.0;  // of the horizontal field [counts]
constexpr double kNoise = 4.0;        // [counts]

Vector3 AsVector3(const Vector& v) { return {v[0], v[1], v[2]}; }

void AddReading(const Attitude& pole, TurnReadings& turn) {
  turn.Field.push_back(kStrength * AsVector3(SeenBySensor(pole, {1.0, 0.0, -kDown})));
  turn.Up.push_back(AsVector3(SeenBySensor(pole, kZ)));
  // Tilts do not tell on which end the pole stands.
  turn.Up.back().z = std::fabs(turn.Up.back().z);
}

// Signs that alternate from sample to sample, so that none err as one, and cancel in each attitude.
double Alternating(std::size_t i) { return i % 2 == 0 ? 1.0 : -1.0; }
double InPairs(std::size_t i) { return i % 4 < 2 ? 1.0 : -1.0; }

// Sixteen directions, with noise of the strength.
TurnReadings HorizontalTurn() {
  TurnReadings turn;
  for (int i = 0; i < 16; ++i) AddReading(LeaningPole(22.5 * i, 0.0, 0.0), turn);
  for (std::size_t i = 0; i < turn.Field.size(); ++i) {
    turn.Field[i] = (1.0 + 1e-3 * Alternating(i)) * turn.Field[i];
  }
  return turn;
}

// Six attitudes, four samples of each, with noise on all axes.
TurnReadings VerticalTurn() {
  TurnReadings turn;
  for (const double angle : {-30.0, 0.0, 30.0, 150.0, 180.0, 210.0}) {
    for (int i = 0; i < 4; ++i) AddReading(Turn(kY, angle * kDegree), turn);
  }
  for (std::size_t i = 0; i < turn.Field.size(); ++i) {
    const double in_plane = kNoise * InPairs(i);
    turn.Field[i] = turn.Field[i] + Vector3{in_plane, kNoise * Alternating(i), in_plane};
  }
  return turn;
}

// Of the slope along x of a plane through residuals of +-`off`, from the textbook.
double VarianceOfSlope(const std::vector<Vector3>& rows, double off) {
  double xx = 0.0;
  double zz = 0.0;
  double xz = 0.0;
  for (const Vector3& row : rows) {
    xx += row.x * row.x;
    zz += row.z * row.z;
    xz += row.x * row.z;
  }
  const auto n = static_cast<double>(rows.size());
  return n / (n - 3.0) * off * off * zz / (xx * zz - xz * xz);
}

TEST(SideOfTheVerticalTurn, AConstantErrorIsKnownAsWellAsYIsSeenToAnswerToX) {
  TurnReadings vertical = VerticalTurn();
  for (Vector3& field : vertical.Field) field.y += 0.004 * field.x;
  const SensorError error = EstimateSensorError(HorizontalTurn(), vertical);
  ASSERT_TRUE(error.Told);
  EXPECT_NEAR(error.Terms[kEyx], 0.004, 2e-5);
  EXPECT_NEAR(error.Covariance[kEyx][kEyx] / VarianceOfSlope(vertical.Field, kNoise), 1.0, 0.01);
}

TEST(SideOfTheVerticalTurn, HowYAnswersToZIsKnownAsWellAsItIsSeenThere) {
  TurnReadings vertical = VerticalTurn();
  std::vector<Vector3> z_first;
  for (Vector3& field : vertical.Field) {
    field.y += 0.004 * field.z;
    z_first.push_back({field.z, 0.0, field.x});
  }
  const SensorError error = EstimateSensorError(HorizontalTurn(), vertical);
  ASSERT_TRUE(error.Told);
  EXPECT_NEAR(error.Terms[kEyz], 0.004, 2e-5);
  EXPECT_NEAR(error.Covariance[kEyz][kEyz] / VarianceOfSlope(z_first, kNoise), 1.0, 0.01);
}

// The tilts show a turn about an axis a little off y, with noise of their own. The more of what
// they show may be noise, the less of it is taken off.
struct SlantedAxis {
  double slant = 0.003;
  double tilt_noise = 0.0;

  SensorError Estimate() const {
    TurnReadings vertical = VerticalTurn();
    for (std::size_t i = 0; i < vertical.Field.size(); ++i) {
      const Vector3 up = TrueUp(vertical, i);
      vertical.Field[i].y += slant * vertical.Field[i].x;
      vertical.Up[i].y += slant * up.x + tilt_noise * Alternating(i);
    }
    return EstimateSensorError(HorizontalTurn(), vertical);
  }

  // Samples of the last three attitudes stand on the antenna.
  static Vector3 TrueUp(const TurnReadings& vertical, std::size_t i) {
    const Vector3& up = vertical.Up[i];
    return {up.x, up.y, i < 12 ? up.z : -up.z};
  }

  static double VarianceOfLean(double off) {
    const TurnReadings vertical = VerticalTurn();
    std::vector<Vector3> ups;
    for (std::size_t i = 0; i < vertical.Up.size(); ++i) ups.push_back(TrueUp(vertical, i));
    return VarianceOfSlope(ups, off);
  }
};

TEST(SideOfTheVerticalTurn, AnAxisThatTheTiltsShowToSlantIsNoErrorOfTheSensor) {
  const SensorError error = SlantedAxis().Estimate();
  ASSERT_TRUE(error.Told);
  EXPECT_NEAR(error.Terms[kEyx], 0.0, 2e-5);
  EXPECT_NEAR(error.Covariance[kEyx][kEyx] / VarianceOfSlope(VerticalTurn().Field, kNoise), 1.0,
              0.02);
}

TEST(SideOfTheVerticalTurn, HalfOfASlantIsTakenOffWhereHalfOfItsSquareMayBeNoise) {
  SlantedAxis axis;
  axis.tilt_noise = axis.slant / std::sqrt(2.0 * SlantedAxis::VarianceOfLean(1.0));
  const SensorError error = axis.Estimate();
  ASSERT_TRUE(error.Told);
  EXPECT_NEAR(error.Terms[kEyx] / axis.slant, 0.5, 0.02);
  const double variance = VarianceOfSlope(VerticalTurn().Field, kNoise) +
                          0.5 * SlantedAxis::VarianceOfLean(axis.tilt_noise);
  EXPECT_NEAR(error.Covariance[kEyx][kEyx] / variance, 1.0, 0.02);
}

TEST(SideOfTheVerticalTurn, ASlantThatMayBeNothingButNoiseIsNotTakenOff) {
  SlantedAxis axis;
  axis.tilt_noise = 1.3 * axis.slant / std::sqrt(SlantedAxis::VarianceOfLean(1.0));
  const SensorError error = axis.Estimate();
  ASSERT_TRUE(error.Told);
  EXPECT_NEAR(error.Terms[kEyx] / axis.slant, 1.0, 0.02);
  EXPECT_NEAR(error.Covariance[kEyx][kEyx] / VarianceOfSlope(VerticalTurn().Field, kNoise), 1.0,
              0.02);
}

// Whether a sample that fits no other is one of those that the vertical parts are taken from.
bool Counts(const Vector3& field, const Vector3& up) {
  TurnReadings vertical = VerticalTurn();
  const SensorError without = EstimateSensorError(HorizontalTurn(), vertical);
  vertical.Field.push_back(field);
  vertical.Up.push_back(up);
  const SensorError with = EstimateSensorError(HorizontalTurn(), vertical);
  EXPECT_TRUE(with.Told);
  return with.Covariance[kOz][kOz] > 1.1 * without.Covariance[kOz][kOz];
}

TEST(SamplesOfTheVerticalTurn, CountFromALeanOnWhoseVerticalIs35HundredthsAlongThePole) {
  const auto counts = [](double along) {
    return Counts({2016.0, 0.0, -1024.0}, {0.0, std::sqrt(1.0 - along * along), along});
  };
  EXPECT_TRUE(counts(0.35));
  EXPECT_FALSE(counts(0.35 - 1e-12));
}

// Of a field whose parts are 63 and -16 and which is 65 strong, the vertical holds 13 more on one
// side than on the other where it lies 13/32 along the pole: exactly a fifth.
TEST(SamplesOfTheVerticalTurn, CountFromAFifthOfTheFieldOnThatTheirTwoSidesDifferBy) {
  const auto counts = [](double along) {
    return Counts({2016.0, 0.0, -512.0}, {0.0, std::sqrt(1.0 - along * along), along});
  };
  EXPECT_TRUE(counts(13.0 / 32.0));
  EXPECT_FALSE(counts(13.0 / 32.0 - 1e-12));
}

// No term of the error alternates with the samples, so that all of that is noise; and of two
// figures each of 16 and of 24 samples the fit takes 13.
TEST(SensorErrorEstimate, TheNoiseIsWhatTheFitLeavesByItsDegreesOfFreedom) {
  TurnReadings horizontal = HorizontalTurn();
  TurnReadings vertical = VerticalTurn();
  for (TurnReadings* turn : {&horizontal, &vertical}) {
    for (Vector3& field : turn->Field) field.x += 0.01 * kStrength;
  }
  const SensorError error = EstimateSensorError(horizontal, vertical);
  ASSERT_TRUE(error.Told);
  const double left = 1e-3 * std::hypot(1.0, kDown);
  EXPECT_NEAR(error.Noise / (left / std::sqrt(1.0 - 13.0 / 80.0)), 1.0, 0.01);
}

TEST(SensorErrorEstimate, OfNoTurnsNothingIsTold) {
  const SensorError error = EstimateSensorError({}, {});
  EXPECT_FALSE(error.Told);
  EXPECT_EQ(error.HorizontalField, 0.0);
  EXPECT_EQ(error.Down, 0.0);
  EXPECT_EQ(error.Noise, 0.0);
  for (const double term : error.Terms) EXPECT_EQ(term, 0.0);
}

TEST(SensorErrorEstimate, TheDipIsToldOfReadingsBelowOneCountToo) {
  TurnReadings horizontal = HorizontalTurn();
  TurnReadings vertical = VerticalTurn();
  for (TurnReadings* turn : {&horizontal, &vertical}) {
    for (Vector3& field : turn->Field) field = 1e-4 * field;
  }
  const SensorError error = EstimateSensorError(horizontal, vertical);
  ASSERT_TRUE(error.Told);
  EXPECT_NEAR(error.HorizontalField, 0.2, 1e-12);
  EXPECT_NEAR(error.Down, kDown, 1e-12);
}

}  // namespace
