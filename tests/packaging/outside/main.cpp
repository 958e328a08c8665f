// What a host does first: one sample, one tip.

#include <cmath>
#include <cstdio>
#include <cstring>

#include "tiltpole/tiltpole.h"

int main() {
  tiltpole::CInclineSensor_Position solver;
  tiltpole::PoseSensorData sample;
  tiltpole::xyhCoordinate tip;
  if (solver.Position(sample, 2.0, tip) != 1) return 1;
  if (tip.x != 0.0 || tip.y != 0.0 || tip.h != -2.0) return 2;
  std::printf("tiltpole %s: the tip of a plumb pole lies %.1f below\n", TILTPOLE_VERSION, -tip.h);
  return std::strlen(TILTPOLE_VERSION) > 0 ? 0 : 3;
}
