#pragma once

// Sessions as a surveyor makes them: both turns, then points at which the pole stands still.

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

#include "apps/session/session_writer.h"
#include "apps/session/simulated_pole.h"

namespace tiltpole_test {

namespace ts = tiltpole::session;

struct FieldSessionPlan {
  int samples_a_turn = 360;
  int samples_a_point = 40;
  int points = 3;
  bool antenna = true;
};

inline ts::PoleSettings FieldPole() {
  ts::PoleSettings settings;
  settings.errors_a = ts::TypicalErrors_A();
  settings.errors_b = ts::TypicalErrors_B();
  settings.errors_a.noise = 4.0;
  settings.errors_b.noise = 4.0;
  settings.tilt_noise = 0.02;
  return settings;
}

/// The pole at its point number so and so, from 0: tilted by 10, 20, 30 ... degrees.
inline ts::Attitude AttitudeAtPoint(int point) {
  return ts::Attitude::Plumb(40.0 + 75.0 * point).Leaned(10.0 + 10.0 * point, 100.0 * point);
}

class FieldSessionWriter {
 public:
  explicit FieldSessionWriter(const FieldSessionPlan& plan)
      : plan_(plan), pole_(FieldPole(), 11), writer_(text_, Columns(plan)) {}

  std::string Text() {
    for (int i = 0; i < plan_.samples_a_turn; ++i) {
      Write(ts::SampleSet::Horizontal, ts::Attitude::Plumb(Angle(i)), 0);
    }
    for (int i = 0; i < plan_.samples_a_turn; ++i) {
      Write(ts::SampleSet::Vertical, ts::Attitude::Plumb(30.0).TurnedAboutY(Angle(i)), 0);
    }
    for (int point = 0; point < plan_.points; ++point) {
      for (int i = 0; i < plan_.samples_a_point; ++i) {
        Write(ts::SampleSet::Measure, AttitudeAtPoint(point), point);
      }
    }
    return text_.str();
  }

 private:
  static ts::SessionColumns Columns(const FieldSessionPlan& plan) {
    ts::SessionColumns columns;
    columns.antenna = plan.antenna;
    columns.true_tip = plan.antenna;
    return columns;
  }
  double Angle(int i) const { return 360.0 * i / plan_.samples_a_turn; }

  void Write(ts::SampleSet set, const ts::Attitude& attitude, int point) {
    ts::SessionSample sample;
    sample.set = set;
    sample.sensors = pole_.Read(attitude);
    const int second = 8 * 3600 + row_++ / 10;
    sample.sensors.Tag[0] = second / 3600;
    sample.sensors.Tag[1] = second / 60 % 60;
    sample.sensors.Tag[2] = second % 60;
    const tiltpole::xyhCoordinate tip{500.0 + 10.0 * point, 800.0, 20.0};
    const tiltpole::xyhCoordinate offset = pole_.TipOffset(attitude);
    if (plan_.antenna && set == ts::SampleSet::Measure) {
      sample.true_tip = tip;
      sample.antenna =
          tiltpole::xyhCoordinate{tip.x - offset.x, tip.y - offset.y, tip.h - offset.h};
    }
    writer_.Write(sample);
  }

  FieldSessionPlan plan_;
  ts::SimulatedPole pole_;
  std::ostringstream text_;
  ts::SessionWriter writer_;
  int row_ = 0;
};

inline std::string FieldSession(const FieldSessionPlan& plan = {}) {
  return FieldSessionWriter(plan).Text();
}

}  // namespace tiltpole_test
