#pragma once

// Random turns of every kind that a calibration can meet, good and bad, from a seed. The numbers
// come from the generator's bits alone, so a seed is the same turn on every platform.

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <vector>

#include "calibration/literal_calibration.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole_test {

using Reading = std::array<double, 3>;
using Turn = std::vector<Reading>;

class Random {
 public:
  explicit Random(std::uint64_t seed) : bits_(seed) {}

  double Between(double low, double high) {
    return low + (high - low) * (static_cast<double>(bits_() >> 11) * 0x1p-53);
  }
  /// Of mean 0 and the given standard deviation, by Box and Muller.
  double Normal(double deviation) {
    const double radius = std::sqrt(-2 * std::log(1 - Between(0, 1)));
    return deviation * radius * std::cos(Between(0, 2 * 3.14159265358979323846));
  }
  int Whole(int low, int high) {
    return low + static_cast<int>(bits_() % static_cast<std::uint64_t>(high - low + 1));
  }

 private:
  std::mt19937_64 bits_;
};

/// What a magnetometer makes of a field: offset + matrix times field + noise.
struct Sensor {
  std::array<Reading, 3> matrix = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  Reading offset = {0, 0, 0};
  double noise = 0;

  Reading Read(const Reading& field, Random& random) const {
    Reading out{};
    for (std::size_t i = 0; i < 3; ++i) {
      out[i] = offset[i];
      for (std::size_t j = 0; j < 3; ++j) out[i] += matrix[i][j] * field[j];
      if (noise > 0) out[i] += random.Normal(noise);
    }
    return out;
  }
};

inline Sensor RandomSensor(Random& random, double crossTerms, double lowScale, double highScale,
                           double noise) {
  Sensor sensor;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      sensor.matrix[i][j] =
          i == j ? random.Between(lowScale, highScale) : random.Between(-crossTerms, crossTerms);
    }
    sensor.offset[i] = random.Between(-500, 500);
  }
  sensor.noise = noise;
  return sensor;
}

/// A turn about z (axis 2) or y (axis 1) in a field of the given strengths.
inline Turn TurnAbout(int axis, int count, double horizontal, double vertical, const Sensor& sensor,
                      Random& random) {
  Turn turn;
  for (int i = 0; i < count; ++i) {
    const double angle = 2 * 3.14159265358979323846 * (i + random.Between(0, 0.5)) / count;
    const double along = horizontal * std::cos(angle);
    const double across = horizontal * std::sin(angle);
    turn.push_back(sensor.Read(
        axis == 2 ? Reading{along, across, vertical} : Reading{along, vertical, across}, random));
  }
  return turn;
}

struct Turns {
  Turn horizontal;
  Turn vertical;
};

enum class Kind {
  Ideal,
  Noisy,
  SoftIron,
  Outliers,
  WideScale,
  Alike,
  OnALine,
  NotANumber,
  Infinite,
  Garbage,
  FewDigits,
  FarAway,
  Tiny,
  Huge,
  Hyperbola,
  kKinds
};

inline std::ostream& operator<<(std::ostream& out, Kind kind) {
  return out << "kind " << static_cast<int>(kind);
}

inline Turns RandomTurns(Kind kind, int horizontalCount, int verticalCount, std::uint64_t seed) {
  Random random(seed);
  Sensor sensor;
  double scale = 1.0;
  switch (kind) {
    case Kind::Ideal:
      break;
    case Kind::Noisy:
      sensor = RandomSensor(random, 0.05, 0.8, 1.2, random.Between(0, 5));
      break;
    case Kind::WideScale:
      sensor = RandomSensor(random, 0.02, 0.4, 2.2, random.Between(0, 1));
      break;
    case Kind::Tiny:
      scale = 1e-6;
      break;
    case Kind::Huge:
      scale = 1e40;
      break;
    default:
      sensor = RandomSensor(random, 0.2, 0.7, 1.4, random.Between(0, 2));
  }
  Turns turns = {TurnAbout(2, horizontalCount, 300, -400, sensor, random),
                 TurnAbout(1, verticalCount, 500, random.Between(-50, 50), sensor, random)};
  const double bad = kind == Kind::NotANumber ? std::numeric_limits<double>::quiet_NaN()
                                              : std::numeric_limits<double>::infinity();
  const Reading direction = {random.Between(-1, 1), random.Between(-1, 1), random.Between(-1, 1)};
  for (Turn* turn : {&turns.horizontal, &turns.vertical}) {
    for (Reading& reading : *turn) {
      const double along = random.Between(-300, 300);
      for (std::size_t j = 0; j < 3; ++j) {
        double& value = reading[j];
        value *= scale;
        if (kind == Kind::Outliers && random.Whole(0, 19) == 0) value += random.Between(-400, 400);
        if (kind == Kind::Alike) value = 100 * direction[j];
        if (kind == Kind::OnALine) value = 50 + along * direction[j];
        if (kind == Kind::Garbage) value = random.Between(-300, 300);
        if (kind == Kind::FewDigits) value = random.Whole(-3, 3);
        if (kind == Kind::FarAway) value += 1e9;
        if (kind == Kind::Hyperbola && j == 1) value = 1e4 / (reading[0] + 0.5);
      }
    }
  }
  if ((kind == Kind::NotANumber || kind == Kind::Infinite)) {
    Turn& turn = random.Whole(0, 1) == 0 ? turns.horizontal : turns.vertical;
    if (!turn.empty()) {
      const int place = random.Whole(0, static_cast<int>(turn.size()) - 1);
      turn[static_cast<std::size_t>(place)][static_cast<std::size_t>(random.Whole(0, 2))] =
          random.Whole(0, 1) == 0 ? bad : -bad;
    }
  }
  return turns;
}

inline tiltpole::CSZMatrix MatrixOf(const Turn& turn) {
  tiltpole::CSZMatrix matrix(static_cast<unsigned int>(turn.size()), 3);
  for (unsigned int i = 0; i < matrix.GetRow(); ++i) {
    for (unsigned int j = 0; j < 3; ++j) matrix.SetData(i, j, turn[i][j]);
  }
  return matrix;
}

/// A session in which A reads the first turns and B the second; both must have the same counts.
inline Session SessionOf(const Turns& A, const Turns& B) {
  const auto merge = [](const Turn& a, const Turn& b) {
    std::vector<tiltpole::PoseSensorData> samples(a.size());
    for (std::size_t i = 0; i < a.size(); ++i) {
      samples[i].MagneticX_A = a[i][0];
      samples[i].MagneticY_A = a[i][1];
      samples[i].MagneticZ_A = a[i][2];
      samples[i].MagneticX_B = b[i][0];
      samples[i].MagneticY_B = b[i][1];
      samples[i].MagneticZ_B = b[i][2];
    }
    return samples;
  };
  return {merge(A.horizontal, B.horizontal), merge(A.vertical, B.vertical)};
}

}  // namespace tiltpole_test
