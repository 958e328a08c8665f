// Calibrations of random simulated sensors, held against the truth.
//
// A sensor is offset + lower-triangular matrix times field + noise, so that true parameters exist.
// What counts is the heading: how far the one from the fitted parameters is from the one from the
// true parameters, over the whole circle, plumb and leaning by 30 degrees in eight directions. The
// attitude that levels both is the true one.

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/random_session.h"
#include "support/message_capture.h"
#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole_test {
namespace {

using tiltpole::Incline_MagneticCorrectParameter;

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegree = kPi / 180;

Sensor LowerTriangularSensor(Random& random, double field) {
  Sensor sensor;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < i; ++j) sensor.matrix[i][j] = random.Between(-0.1, 0.1);
    sensor.matrix[i][i] = random.Between(0.7, 1.4);
    sensor.offset[i] = random.Between(-0.5, 0.5) * field;
  }
  return sensor;
}

// The inverse of the sensor's matrix, scaled so that x is not; the offsets are weighed by it.
Incline_MagneticCorrectParameter TrueParameters(const Sensor& sensor) {
  const auto& M = sensor.matrix;
  Incline_MagneticCorrectParameter par;
  par.b = M[0][0] / M[1][1];
  par.a = -par.b * M[1][0] / M[0][0];
  par.e = M[0][0] / M[2][2];
  par.d = -par.e * M[2][1] / M[1][1];
  par.c = -(par.d * M[1][0] + par.e * M[2][0]) / M[0][0];
  const Reading& o = sensor.offset;
  par.x0 = o[0];
  par.y0 = par.a * o[0] + par.b * o[1];
  par.z0 = par.c * o[0] + par.d * o[1] + par.e * o[2];
  return par;
}

// A field that dips to the north, in the axes x forward, y left, z up of a sensor that is turned to
// a heading, then about its y axis, then about its x axis.
struct Attitude {
  double heading;
  double aboutY;
  double aboutX;

  Reading ToSensor(const Reading& world) const {
    const Reading turned = {std::cos(heading) * world[0] - std::sin(heading) * world[1],
                            std::sin(heading) * world[0] + std::cos(heading) * world[1], world[2]};
    const Reading pitched = {std::cos(aboutY) * turned[0] + std::sin(aboutY) * turned[2], turned[1],
                             -std::sin(aboutY) * turned[0] + std::cos(aboutY) * turned[2]};
    return {pitched[0], std::cos(aboutX) * pitched[1] + std::sin(aboutX) * pitched[2],
            -std::sin(aboutX) * pitched[1] + std::cos(aboutX) * pitched[2]};
  }

  // The direction of a sensor's vector in the level plane, against the heading.
  double LevelDirection(const Reading& sensor) const {
    const double y = std::cos(aboutX) * sensor[1] - std::sin(aboutX) * sensor[2];
    const double z = std::sin(aboutX) * sensor[1] + std::cos(aboutX) * sensor[2];
    const double x = std::cos(aboutY) * sensor[0] - std::sin(aboutY) * z;
    return std::atan2(y, x);
  }
};

Reading Corrected(const Incline_MagneticCorrectParameter& par, const Reading& raw) {
  const tiltpole::MagneticReading corrected =
      tiltpole::CorrectReading(par, {raw[0], raw[1], raw[2]});
  return {corrected.X, -corrected.Y, -corrected.Z};
}

double WorstHeadingError(const Incline_MagneticCorrectParameter& fitted, Sensor sensor,
                         const Reading& field, double lean) {
  sensor.noise = 0;
  Random unused(1);
  const Incline_MagneticCorrectParameter truth = TrueParameters(sensor);
  double worst = 0;
  for (int heading = 0; heading < 360; heading += 5) {
    for (int direction = 0; direction < (lean > 0 ? 8 : 1); ++direction) {
      const Attitude attitude = {heading * kDegree, lean * kDegree * std::cos(direction * kPi / 4),
                                 lean * kDegree * std::sin(direction * kPi / 4)};
      const Reading raw = sensor.Read(attitude.ToSensor(field), unused);
      const double error = std::remainder(attitude.LevelDirection(Corrected(fitted, raw)) -
                                              attitude.LevelDirection(Corrected(truth, raw)),
                                          2 * kPi);
      worst = std::max(worst, std::fabs(error) / kDegree);
    }
  }
  return worst;
}

struct Found {
  int calibrated = 0;
  double worstLevel = 0;
  double worstLeaning = 0;
};

constexpr int kSensors = 40;

/// @param arc  how far each turn goes [degrees]
Found CalibrateSensors(double field, double dip, double noise, double arc) {
  const MessageCapture messages;
  const double level = field * std::cos(dip * kDegree);
  const double up = -field * std::sin(dip * kDegree);
  Found found;
  for (int number = 0; number < kSensors; ++number) {
    Random random(1000 + static_cast<std::uint64_t>(number));
    Sensor sensor = LowerTriangularSensor(random, field);
    sensor.noise = noise * field;
    Turns turns;
    for (int i = 0; i < 120; ++i) {
      const double angle = arc * kDegree * i / 120;
      turns.horizontal.push_back(
          sensor.Read({level * std::cos(angle), level * std::sin(angle), up}, random));
    }
    // The y axis points west, so the whole field turns in the x-z plane.
    for (int i = 0; i < 120; ++i) {
      const double angle = arc * kDegree * i / 120;
      turns.vertical.push_back(
          sensor.Read({field * std::cos(angle), 0, field * std::sin(angle)}, random));
    }
    Incline_MagneticCorrectParameter fitted;
    if (AdjustAccess().MagCorrPara(MatrixOf(turns.horizontal), MatrixOf(turns.vertical), fitted) ==
        0) {
      continue;
    }
    ++found.calibrated;
    const Reading world = {level, 0, up};
    found.worstLevel = std::max(found.worstLevel, WorstHeadingError(fitted, sensor, world, 0));
    found.worstLeaning = std::max(found.worstLeaning, WorstHeadingError(fitted, sensor, world, 30));
  }
  return found;
}

TEST(SimulatedSensor, WithoutNoiseTheTrueHeadingsComeBack) {
  for (const double dip : {0.0, 65.0}) {
    const Found found = CalibrateSensors(500, dip, 0, 360);
    EXPECT_EQ(found.calibrated, kSensors);
    EXPECT_LT(found.worstLevel, 1e-5);
    EXPECT_LT(found.worstLeaning, 1e-5);
  }
}

TEST(SimulatedSensor, NoiseOfAQuarterPercentKeepsHeadingsWithinADegreePlumbAndLeaning) {
  for (const double field : {300.0, 1000.0, 3000.0}) {
    for (const double dip : {0.0, 65.0}) {
      const Found found = CalibrateSensors(field, dip, 0.0025, 360);
      EXPECT_GE(found.calibrated, kSensors - 1);
      EXPECT_LT(found.worstLevel, 0.5);
      EXPECT_LT(found.worstLeaning, 1.0);
    }
  }
}

// At the worst of the noise the method is at its limit only for a leaning pole in a steep field:
// the fixed limit of 1000 squared counts cuts into the good readings of fields of some hundred to
// a thousand counts, and an error of the z axis turns the heading by its steepness. One sensor in
// several hundred is beyond a degree there; none was found beyond 1.2.
TEST(SimulatedSensor, NoiseOfHalfAPercentKeepsHeadingsWithinADegreePlumb) {
  for (const double field : {300.0, 500.0, 1000.0, 3000.0}) {
    const Found found = CalibrateSensors(field, 65, 0.005, 360);
    EXPECT_GE(found.calibrated, kSensors - 1);
    EXPECT_LT(found.worstLevel, 1.0);
    EXPECT_LT(found.worstLeaning, 1.2);
  }
}

TEST(SimulatedSensor, NoiseOfHalfAPercentKeepsHeadingsWithinADegreeLeaningInAModerateDip) {
  for (const double field : {300.0, 1000.0}) {
    EXPECT_LT(CalibrateSensors(field, 45, 0.005, 360).worstLeaning, 1.0);
  }
}

// Half a turn without noise is still exact where it converges; with noise it is not a calibration.
TEST(SimulatedSensor, HalfATurnLosesTheDegree) {
  EXPECT_LT(CalibrateSensors(500, 65, 0, 180).worstLeaning, 1e-3);
  const Found noisy = CalibrateSensors(500, 65, 0.005, 180);
  EXPECT_GT(noisy.worstLeaning, 1.0);
  EXPECT_LT(noisy.worstLeaning, 8.0);
}

}  // namespace
}  // namespace tiltpole_test
