#pragma once

// What both examples show of a session: the two turns in the plots, the last sample on the dials.

#include "apps/session/session_reader.h"
#include "tiltpole/controls/MagneticPoint.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace example {

inline tiltpole::MagneticPoint ReadingOf(const tiltpole::PoseSensorData& sample) {
  return tiltpole::InWholeCounts(sample.MagneticX_A, sample.MagneticY_A, sample.MagneticZ_A);
}

/// @param dialog  has the five controls: compass, left, right, turn_about_z, turn_about_y
template <typename Dialog>
void Feed(Dialog& dialog, tiltpole::session::SessionReader& session) {
  using tiltpole::session::SampleSet;
  tiltpole::CInclineSensor_Position solver;
  tiltpole::session::SessionSample sample;
  tiltpole::xyhCoordinate tip;
  while (session.Next(sample)) {
    const tiltpole::MagneticPoint raw = ReadingOf(sample.sensors);
    if (sample.set == SampleSet::Horizontal) dialog.turn_about_z.AddTrackPoint(raw.x, raw.y, raw.z);
    if (sample.set == SampleSet::Vertical) dialog.turn_about_y.AddTrackPoint(raw.x, raw.y, raw.z);
    solver.Position(sample.sensors, 2.0, tip);
  }
  const double tilt =
      90.0 - solver.GetAngleofPoletoHorizontal(sample.sensors.InclineX, sample.sensors.InclineY);
  dialog.compass.SetValue(sample.sensors.Yaw_A);
  dialog.compass.SetFix(0);
  dialog.left.SetValue(tilt);
  dialog.right.SetValue(360.0 - tilt);
  dialog.turn_about_z.ZoomAll();
  dialog.turn_about_y.ZoomAll();
}

}  // namespace example
