#ifndef TILTPOLE_C_CALIBRATION_H
#define TILTPOLE_C_CALIBRATION_H

/// @file
/// The calibration of the two magnetometers; see tiltpole::CInclineSensor_MagneticAdjust.

#include "tiltpole/c/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using): C has typedefs only

/// The samples of two turns and the parameters fitted to them.
typedef struct tiltpole_calibration tiltpole_calibration;

/// Starts without samples. The handle is the caller's to destroy.
TILTPOLE_C_API int tiltpole_calibration_create(tiltpole_calibration** calibration);
/// Gives a calibration back; null does nothing.
TILTPOLE_C_API void tiltpole_calibration_destroy(tiltpole_calibration* calibration);

/// Appends raw samples of a turn: TILTPOLE_TURN_HORIZONTAL about the pole's axis,
/// TILTPOLE_TURN_VERTICAL about the sensor's y axis. Where memory runs out, those before stay.
TILTPOLE_C_API int tiltpole_calibration_add(tiltpole_calibration* calibration, int turn,
                                            const tiltpole_sample* samples, size_t count);
/// Removes all samples of a turn.
TILTPOLE_C_API int tiltpole_calibration_clear(tiltpole_calibration* calibration, int turn);
/// The sample at an index; TILTPOLE_NOT_FOUND outside the turn.
TILTPOLE_C_API int tiltpole_calibration_get(const tiltpole_calibration* calibration, int turn,
                                            size_t index, tiltpole_sample* sample);

/// Fits both corrections and the translation. Shows up to three messages when a step fails, and
/// returns TILTPOLE_NO_SOLUTION; the parameters are of use only after a success.
TILTPOLE_C_API int tiltpole_calibration_adjust(tiltpole_calibration* calibration);

/// The fitted parameters; any of the three pointers may be null.
TILTPOLE_C_API int tiltpole_calibration_result(const tiltpole_calibration* calibration,
                                               tiltpole_correction* correction_a,
                                               tiltpole_correction* correction_b,
                                               tiltpole_translation* translation);

// NOLINTEND(modernize-use-using)

#ifdef __cplusplus
}
#endif

#endif
