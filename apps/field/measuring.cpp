#include "apps/field/measuring.h"

#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole::field {
namespace {

bool ReadingsAgree(const PoseSensorData& corrected, const CInclineSensor_Position& position) {
  const MagneticReading expected =
      ExpectedReading_B(position.GetMagneticTranslationPar(),
                        {corrected.MagneticX_A, corrected.MagneticY_A, corrected.MagneticZ_A});
  return SumOfDifferences({corrected.MagneticX_B, corrected.MagneticY_B, corrected.MagneticZ_B},
                          expected) <= kInterferenceDistance;
}

}  // namespace

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
  // The flag also rises for every pole that leans to the north, with both magnetometers in order:
  // the lean directions that it compares are not wrapped. Readings and headings tell the two apart.
  const bool false_alarm = reading.tip.Agree && ReadingsAgree(corrected, calibration_.position);
  const bool flagged = calibration_.position.IsMagneticInterference() != 0;
  reading.disturbed = (flagged && !false_alarm) || headings_differ;
  if (sample.antenna) {
    reading.position = xyhCoordinate{sample.antenna->x + reading.tip.Offset.x,
                                     sample.antenna->y + reading.tip.Offset.y,
                                     sample.antenna->h + reading.tip.Offset.h};
  }
  return reading;
}

}  // namespace tiltpole::field
