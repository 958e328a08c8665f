// From one sample to a measured point.

#include <cstdio>

#include "tiltpole/tiltpole.h"

int main() {
  tiltpole::CInclineSensor_Position solver;
  solver.ConfigRead(L"pole.txt");  // without the file the readings are taken as they are

  tiltpole::PoseSensorData sample;
  sample.InclineX = 3.0;  // the x axis rises by 3 degrees
  sample.InclineY = 4.0;
  sample.MagneticX_A = 2000.0;  // raw counts
  sample.MagneticY_A = 500.0;
  sample.MagneticZ_A = -4500.0;
  sample.MagneticX_B = -2000.0;  // half a turn from A
  sample.MagneticY_B = -500.0;
  sample.MagneticZ_B = -4500.0;

  tiltpole::xyhCoordinate offset;
  solver.Position(sample, 2.0, offset);

  const tiltpole::xyhCoordinate antenna{1000.0, 2000.0, 50.0};
  std::printf("heading %.1f, tip at %.3f %.3f %.3f%s\n", sample.Yaw_A, antenna.x + offset.x,
              antenna.y + offset.y, antenna.h + offset.h,
              solver.IsMagneticInterference() != 0 ? ", the magnetometers disagree" : "");
  return 0;
}
