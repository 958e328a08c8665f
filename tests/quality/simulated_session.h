#pragma once

// A calibration session of a simulated pole: two turns by an unsteady hand, each magnetometer with
// errors of its own, so that a report can be held against the truth.

#include <cmath>
#include <vector>

#include "quality/simulated_pole.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole_test {

// raw = gain * field + offset, and noise on each axis.
struct SimulatedMagnetometer {
  Matrix gain = {kX, kY, kZ};
  Vector offset = {};
  double noise = 0.0;

  tiltpole::MagneticReading Read(const Vector& field, Random& random) const {
    const Vector raw = Product(gain, field);
    return {raw[0] + offset[0] + noise * random.Normal(),
            raw[1] + offset[1] + noise * random.Normal(),
            raw[2] + offset[2] + noise * random.Normal()};
  }
};

struct SimulatedSession {
  SimulatedMagnetometer A;
  SimulatedMagnetometer B;
  double strength = 5000.0;
  double dip = 60.0;
  int samples = 150;  // a turn
  double from = 0.0;  // where the horizontal turn starts, and how far both go [degrees]
  double through = 360.0;
  double sway = 0.0;               // how far the axis of a turn sways [degrees]
  double tilt_noise = 0.0;         // [degrees]
  double vertical_heading = 75.0;  // of the pole in the vertical turn [degrees]

  std::vector<tiltpole::PoseSensorData> horizontal;
  std::vector<tiltpole::PoseSensorData> vertical;
};

// A sensor that the correction can undo: x is the reference, y answers to x and y, z to all three.
inline SimulatedMagnetometer RandomMagnetometer(Random& random, double strength, double noise) {
  SimulatedMagnetometer sensor;
  const double sx = random.Uniform(0.85, 1.15);
  sensor.gain = {
      {{sx, 0.0, 0.0},
       {random.Uniform(-0.1, 0.1), sx * random.Uniform(0.75, 1.35), 0.0},
       {random.Uniform(-0.1, 0.1), random.Uniform(-0.1, 0.1), sx * random.Uniform(0.75, 1.35)}}};
  for (double& offset : sensor.offset) offset = 0.3 * strength * random.Uniform(-1.0, 1.0);
  sensor.noise = noise;
  return sensor;
}

inline tiltpole::PoseSensorData SampleOf(const SimulatedSession& session, const Attitude& pole,
                                         Random& random) {
  const Vector seen = SeenBySensor(pole, EarthField(session.strength, session.dip));
  const tiltpole::MagneticReading a = session.A.Read(seen, random);
  const tiltpole::MagneticReading b = session.B.Read({-seen[0], -seen[1], seen[2]}, random);
  tiltpole::PoseSensorData sample;
  sample.InclineX = ElevationOfX(pole) + session.tilt_noise * random.Normal();
  sample.InclineY = ElevationOfY(pole) + session.tilt_noise * random.Normal();
  sample.MagneticX_A = a.X;
  sample.MagneticY_A = a.Y;
  sample.MagneticZ_A = a.Z;
  sample.MagneticX_B = b.X;
  sample.MagneticY_B = b.Y;
  sample.MagneticZ_B = b.Z;
  return sample;
}

// A slow sway: a few swings a turn, of random size and phase.
class Sway {
 public:
  Sway(Random& random, double size) {
    for (int k = 0; k < 3; ++k) {
      size_[k] = size * random.Uniform(0.0, 0.8);
      phase_[k] = random.Uniform(0.0, 360.0);
    }
  }
  double At(double angle) const {
    double sum = 0.0;
    for (int k = 0; k < 3; ++k)
      sum += size_[k] * std::sin((rate_[k] * angle + phase_[k]) * kDegree);
    return sum;
  }

 private:
  double rate_[3] = {0.7, 2.3, 5.1};
  double size_[3];
  double phase_[3];
};

inline void RecordTurns(SimulatedSession& session, Random& random) {
  const Sway north(random, session.sway);
  const Sway west(random, session.sway);
  const Sway about(random, session.sway);
  for (int i = 0; i < session.samples; ++i) {
    const double angle =
        session.from + session.through * (i + random.Uniform(-0.4, 0.4)) / session.samples;
    const Attitude swayed =
        Product(Turn(kX, north.At(angle) * kDegree), Turn(kY, west.At(angle) * kDegree));
    session.horizontal.push_back(
        SampleOf(session, Product(swayed, LeaningPole(angle, 0, 0)), random));
    const Attitude turned = Product(LeaningPole(session.vertical_heading + about.At(angle), 0, 0),
                                    Turn(kY, (angle - session.from) * kDegree));
    session.vertical.push_back(SampleOf(session, Product(swayed, turned), random));
  }
}

// The true heading error of a plumb pole [degrees], noise left out: what the corrected reading says
// less the heading it was made with. `side` is 1 for magnetometer A and -1 for B's mounting.
inline double TrueHeadingError(const SimulatedSession& session, const SimulatedMagnetometer& sensor,
                               double side,
                               const tiltpole::Incline_MagneticCorrectParameter& correction,
                               const Attitude& pole) {
  const Vector seen = SeenBySensor(pole, EarthField(session.strength, session.dip));
  SimulatedMagnetometer quiet = sensor;
  quiet.noise = 0.0;
  Random unused(0);
  const tiltpole::MagneticReading read = tiltpole::CorrectReading(
      correction, quiet.Read({side * seen[0], side * seen[1], seen[2]}, unused));
  // In north, west, up: the reading as a vector of the world, whose azimuth should be 0.
  const Vector world = Product(pole, Vector{side * read.X, -side * read.Y, -read.Z});
  return std::atan2(world[1], world[0]) / kDegree;
}

struct TrueError {
  double mean_square = 0.0;
  double largest = 0.0;
};

inline TrueError TrueErrorAtTilt(const SimulatedSession& session,
                                 const SimulatedMagnetometer& sensor, double side,
                                 const tiltpole::Incline_MagneticCorrectParameter& correction,
                                 double tilt) {
  TrueError error;
  const int leans = tilt > 0.0 ? 12 : 1;
  for (int i = 0; i < 72; ++i)
    for (int j = 0; j < leans; ++j) {
      const double e = TrueHeadingError(session, sensor, side, correction,
                                        LeaningPole(5.0 * i, tilt, 30.0 * j + 2.0));
      error.mean_square += e * e / (72 * leans);
      error.largest = std::fmax(error.largest, std::fabs(e));
    }
  return error;
}

}  // namespace tiltpole_test
