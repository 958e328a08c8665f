#include "apps/field/measuring.h"

namespace tiltpole::field {

Reading Measuring::Take(const SourceSample& sample) {
  Reading reading;
  reading.raw = sample;
  PoseSensorData corrected = sample.sensors;
  xyhCoordinate first_order;
  // Corrects the readings in place, and finds the flags.
  calibration_.position.Position(corrected, pole_length_, first_order);
  reading.still = calibration_.position.IsStationary() != 0;
  reading.tip = SolveRigorousTip(corrected, pole_length_, calibration_.options);
  reading.quality = JudgePoint(corrected, pole_length_, calibration_.options);
  const bool headings_differ = reading.tip.Source != HeadingSource::None && !reading.tip.Agree;
  reading.disturbed = calibration_.position.IsMagneticInterference() != 0 || headings_differ;
  if (sample.antenna) {
    reading.position = xyhCoordinate{sample.antenna->x + reading.tip.Offset.x,
                                     sample.antenna->y + reading.tip.Offset.y,
                                     sample.antenna->h + reading.tip.Offset.h};
  }
  return reading;
}

}  // namespace tiltpole::field
