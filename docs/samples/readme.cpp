// The shortest way to a tip.

#include "tiltpole/tiltpole.h"

int main() {
  // [measure]
  tiltpole::CInclineSensor_Position solver;
  solver.ConfigRead(L"pole.txt");

  tiltpole::PoseSensorData sample;
  sample.InclineX = 3.0;  // degrees; fill in the readings of both magnetometers too
  sample.MagneticX_A = 2000.0;

  tiltpole::xyhCoordinate offset;
  solver.Position(sample, 2.0, offset);  // add the antenna's coordinates
  // [measure]
  return offset.h < -1.99 ? 0 : 1;
}
