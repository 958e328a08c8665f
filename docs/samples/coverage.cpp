// How much of the circle is covered while the operator turns the pole.

#include <cmath>
#include <cstdio>
#include <memory>

#include "tiltpole/tiltpole.h"

int main() {
  // [coverage]
  tiltpole::CInclineSensor_Filter_XY turn;
  for (int i = 0; i < 360; ++i) {
    const double angle = (i + 0.5) * 3.141592653589793 / 180.0;
    auto* record = new tiltpole::PoseSensorData;  // the screening takes it over
    record->Tag[0] = 10;
    record->Tag[1] = i / 60;
    record->Tag[2] = i % 60;
    record->MagneticX_A = 2000.0 * std::cos(angle);
    record->MagneticY_A = 2000.0 * std::sin(angle);
    turn.Add(record);
    if (turn.IsRecordOK() != 0) break;
  }
  std::printf("covered: %d %%\n", turn.GetRecordRate());

  const std::unique_ptr<tiltpole::PoseSensorDataArray> usable(turn.Filter());
  if (usable == nullptr) {
    std::printf("no usable sample: turn the pole again, evenly\n");
    return 1;
  }
  const std::unique_ptr<tiltpole::PoseSensorDataArray> spread(turn.Select(usable.get(), 60));
  std::printf("%d usable samples, %d selected\n", usable->GetSize(), spread->GetSize());
  // [coverage]
  return turn.GetRecordRate() == 100 ? 0 : 1;
}
