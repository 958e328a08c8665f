#include "tiltpole/c/calibration.h"

#include <climits>

#include "tiltpole/c/detail/guard.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

using namespace tiltpole::detail;

struct tiltpole_calibration {
  tiltpole::CInclineSensor_MagneticAdjust object;
};

int tiltpole_calibration_create(tiltpole_calibration** calibration) { return Create(calibration); }

void tiltpole_calibration_destroy(tiltpole_calibration* calibration) { delete calibration; }

int tiltpole_calibration_add(tiltpole_calibration* calibration, int turn,
                             const tiltpole_sample* samples, size_t count) {
  return Guarded([&] {
    if (AnyNull(calibration) || NullArray(samples, count)) return NullPointer();
    if (!IsOneOfTwo(turn)) return BadTurn();
    for (size_t i = 0; i < count; ++i) {
      const auto record = FromC(samples[i]);
      if (turn == TILTPOLE_TURN_HORIZONTAL) {
        calibration->object.Horizontal_Add(&record);
      } else {
        calibration->object.Vertical_Add(&record);
      }
    }
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_calibration_clear(tiltpole_calibration* calibration, int turn) {
  return Guarded([&] {
    if (AnyNull(calibration)) return NullPointer();
    if (!IsOneOfTwo(turn)) return BadTurn();
    if (turn == TILTPOLE_TURN_HORIZONTAL) {
      calibration->object.Horizontal_Clear();
    } else {
      calibration->object.Vertical_Clear();
    }
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_calibration_get(const tiltpole_calibration* calibration, int turn, size_t index,
                             tiltpole_sample* sample) {
  if (AnyNull(calibration) || AnyNull(sample)) return NullPointer();
  if (!IsOneOfTwo(turn)) return BadTurn();
  const int i = index <= INT_MAX ? static_cast<int>(index) : -1;
  tiltpole::PoseSensorData record;
  const int found = turn == TILTPOLE_TURN_HORIZONTAL ? calibration->object.Horizontal_Get(i, record)
                                                     : calibration->object.Vertical_Get(i, record);
  if (found != 1) return Failed(TILTPOLE_NOT_FOUND, "the turn has fewer samples");
  *sample = ToC(record);
  return TILTPOLE_OK;
}

int tiltpole_calibration_adjust(tiltpole_calibration* calibration) {
  return Guarded([&] {
    if (AnyNull(calibration)) return NullPointer();
    if (calibration->object.Adjust() == 1) return static_cast<int>(TILTPOLE_OK);
    return Failed(TILTPOLE_NO_SOLUTION,
                  "the samples cannot be calibrated; the messages say which step failed");
  });
}

int tiltpole_calibration_result(const tiltpole_calibration* calibration,
                                tiltpole_correction* correction_a,
                                tiltpole_correction* correction_b,
                                tiltpole_translation* translation) {
  if (AnyNull(calibration)) return NullPointer();
  if (correction_a != nullptr) *correction_a = ToC(calibration->object.GetCorrectPar_A());
  if (correction_b != nullptr) *correction_b = ToC(calibration->object.GetCorrectPar_B());
  if (translation != nullptr) *translation = ToC(calibration->object.GetCoorTrans());
  return TILTPOLE_OK;
}
