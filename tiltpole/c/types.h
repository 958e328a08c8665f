#ifndef TILTPOLE_C_TYPES_H
#define TILTPOLE_C_TYPES_H

/// @file
/// What every part of the C interface uses: results, the last error, messages, plain records.

#include <stddef.h>
#include <stdint.h>

#include "tiltpole/export.h"

/// Marks what the C interface offers. A library that offers nothing else defines
/// TILTPOLE_C_BUILD_SHARED while it is built.
#if !defined(TILTPOLE_C_BUILD_SHARED)
#define TILTPOLE_C_API TILTPOLE_EXPORT
#elif defined(_WIN32)
#define TILTPOLE_C_API __declspec(dllexport)
#else
#define TILTPOLE_C_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using): C has typedefs only

/// What a function returns. The numbers never change.
typedef enum tiltpole_result {
  TILTPOLE_OK = 0,
  TILTPOLE_NULL_POINTER = 1,   ///< a handle or a pointer that is needed is null
  TILTPOLE_BAD_ARGUMENT = 2,   ///< a number is none of those that are allowed
  TILTPOLE_OUT_OF_MEMORY = 3,  ///< there was no memory for it
  TILTPOLE_FILE_ERROR = 4,     ///< a file could not be read or written
  TILTPOLE_NOT_FOUND = 5,      ///< there is no such entry or element
  TILTPOLE_NO_SOLUTION = 6,    ///< the data does not lead to a result; messages may have been shown
  TILTPOLE_UNEXPECTED_ERROR = 7  ///< something that should not happen: please report it
} tiltpole_result;

/// Which of the two magnetometers.
enum { TILTPOLE_MAGNETOMETER_A = 0, TILTPOLE_MAGNETOMETER_B = 1 };

/// Which of the two turns: about the pole's axis, or about the sensor's y axis.
enum { TILTPOLE_TURN_HORIZONTAL = 0, TILTPOLE_TURN_VERTICAL = 1 };

/// The picture beside a message.
enum { TILTPOLE_ICON_STOP = 0, TILTPOLE_ICON_EXCLAMATION = 1 };

/// One sample of the sensor package; tiltpole_sample_default() sets the defaults. Fields in
/// [degrees] and [counts]; see tiltpole::PoseSensorData.
typedef struct tiltpole_sample {
  double incline_x;      ///< inclination of the sensor's x axis [degrees]
  double incline_y;      ///< inclination of the sensor's y axis [degrees]
  double magnetic_a[3];  ///< magnetometer A, x y z [counts]: raw, replaced by the corrected reading
  double magnetic_b[3];  ///< magnetometer B, likewise
  double yaw_a;          ///< heading from A, written by tiltpole_position_solve()
  double yaw_b;          ///< heading from B, likewise
  double yaw_y_a;        ///< heading of the y axis; not a number when a tilt is exactly 0
  double azimuth;        ///< direction about the centre of the turn, written by the screening
  double host_angle;     ///< the host's own; 90 by default
  double aux[7];         ///< the host's own
  int32_t time[3];       ///< hours, minutes, seconds
  int32_t forward;       ///< 1 when the azimuth lies ahead of the one before, written by screening
} tiltpole_sample;

/// A plane position with height.
typedef struct tiltpole_xyh {
  double x;  ///< along heading 0
  double y;  ///< along heading 90 degrees
  double h;  ///< upwards
} tiltpole_xyh;

/// The correction of one magnetometer; see tiltpole::Incline_MagneticCorrectParameter.
typedef struct tiltpole_correction {
  double a;   ///< weight of x in y
  double b;   ///< weight of y in y
  double c;   ///< weight of x in z
  double d;   ///< weight of y in z
  double e;   ///< weight of z in z
  double x0;  ///< offset [counts]
  double y0;  ///< offset [counts]
  double z0;  ///< offset [counts]
} tiltpole_correction;

/// The offset between the corrected frames of the magnetometers [counts].
typedef struct tiltpole_translation {
  double dx;  ///< offset on the x axis
  double dy;  ///< offset on the y axis
  double dz;  ///< offset on the z axis
} tiltpole_translation;

/// The library's version, "major.minor.patch".
TILTPOLE_C_API const char* tiltpole_version(void);

/// What was wrong in the last call that failed on this thread; empty before the first. Stays valid
/// until the next failing call on this thread.
TILTPOLE_C_API const char* tiltpole_last_error(void);

/// Shows one message of a failed fit and returns when the operator has taken note of it. The texts
/// hold for the duration of the call. It must not throw nor jump out.
typedef void (*tiltpole_message_handler)(const char* text, const char* title, int icon, void* user);

/// Says who shows the library's messages from now on, for the whole process. Not to be called while
/// another thread runs a calibration or calls this, nor from inside a handler.
///
/// @param[in] handler  called on the thread that runs the failing operation; null brings back the
///                     behaviour at the start
/// @param[in] user     handed to it
TILTPOLE_C_API int tiltpole_set_message_handler(tiltpole_message_handler handler, void* user);

/// Sets the defaults: all 0, but `host_angle` 90 and `forward` 1.
TILTPOLE_C_API int tiltpole_sample_default(tiltpole_sample* sample);

/// Sets the correction that leaves a reading unscaled: b and e 1, the others 0.
TILTPOLE_C_API int tiltpole_correction_default(tiltpole_correction* correction);

/// Replaces both raw readings of every sample by corrected ones. Call it once for a sample that
/// tiltpole_position_solve() does not see.
TILTPOLE_C_API int tiltpole_correct_samples(tiltpole_sample* samples, size_t count,
                                            const tiltpole_correction* correction_a,
                                            const tiltpole_correction* correction_b);

// NOLINTEND(modernize-use-using)

#ifdef __cplusplus
}
#endif

#endif
