#ifndef TILTPOLE_C_POSITION_H
#define TILTPOLE_C_POSITION_H

/// @file
/// From samples of the tilted pole to the positions of its tip; see
/// tiltpole::CInclineSensor_Position.

#include "tiltpole/c/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using): C has typedefs only

/// The parameters of one pole, and what it remembers of the last sample.
typedef struct tiltpole_position tiltpole_position;

/// The tip of one sample and the two flags about it.
typedef struct tiltpole_measurement {
  tiltpole_xyh offset;   ///< of the tip from the antenna, in the unit of the pole length
  int32_t stationary;    ///< 1 when the pole stood still
  int32_t interference;  ///< 1 when the magnetometers disagreed
} tiltpole_measurement;

/// The solutions for headings that are known already.
enum {
  TILTPOLE_SOLUTION_GEOMETRY_A = 0,  ///< plane trigonometry with yaw_a
  TILTPOLE_SOLUTION_GEOMETRY_B = 1,  ///< the other variant, with yaw_b
  TILTPOLE_SOLUTION_MATH = 2         ///< three spheres, with yaw_a and yaw_y_a
};

/// Starts with parameters that leave readings unscaled. The handle is the caller's to destroy.
TILTPOLE_C_API int tiltpole_position_create(tiltpole_position** position);
/// Gives a position back; null does nothing.
TILTPOLE_C_API void tiltpole_position_destroy(tiltpole_position* position);

/// Takes a magnetometer's correction and sets its bias angle to 0.
TILTPOLE_C_API int tiltpole_position_set_correction(tiltpole_position* position, int magnetometer,
                                                    const tiltpole_correction* correction);
/// The correction of a magnetometer, TILTPOLE_MAGNETOMETER_....
TILTPOLE_C_API int tiltpole_position_get_correction(const tiltpole_position* position,
                                                    int magnetometer,
                                                    tiltpole_correction* correction);
/// Takes the translation between the corrected frames.
TILTPOLE_C_API int tiltpole_position_set_translation(tiltpole_position* position,
                                                     const tiltpole_translation* translation);
/// The translation between the corrected frames.
TILTPOLE_C_API int tiltpole_position_get_translation(const tiltpole_position* position,
                                                     tiltpole_translation* translation);
/// Takes what is subtracted from a magnetometer's heading [degrees]; after the correction.
TILTPOLE_C_API int tiltpole_position_set_bias_angle(tiltpole_position* position, int magnetometer,
                                                    double degrees);
/// What is subtracted from a magnetometer's heading [degrees].
TILTPOLE_C_API int tiltpole_position_get_bias_angle(const tiltpole_position* position,
                                                    int magnetometer, double* degrees);

/// Reads the parameters from a file. An entry that is missing leaves its parameter as it was.
TILTPOLE_C_API int tiltpole_position_read(tiltpole_position* position, const char* path);
/// Writes the parameters to a file, replacing its whole content.
TILTPOLE_C_API int tiltpole_position_save(const tiltpole_position* position, const char* path);
/// Writes the same bytes so that the old file or the new one survives a power cut, whole.
TILTPOLE_C_API int tiltpole_position_replace(const tiltpole_position* position, const char* path);

/// Solves the tips of samples in the order in which they were taken.
///
/// @param[in,out] samples  raw; their magnetometer fields are replaced by corrected readings and
///                         their headings written. Give every sample once.
/// @param[in] pole_length  from the antenna's phase centre to the tip
/// @param[out] results     as many as there are samples
TILTPOLE_C_API int tiltpole_position_solve(tiltpole_position* position, tiltpole_sample* samples,
                                           size_t count, double pole_length,
                                           tiltpole_measurement* results);

/// Solves one tip from a sample whose headings are known.
///
/// @param[in] solution  one of TILTPOLE_SOLUTION_...
/// @param[in] antenna   the antenna
/// @param[out] tip      the tip
/// @return TILTPOLE_NO_SOLUTION when the spheres do not meet
TILTPOLE_C_API int tiltpole_position_solve_with_heading(tiltpole_position* position, int solution,
                                                        const tiltpole_xyh* antenna,
                                                        const tiltpole_sample* sample,
                                                        double pole_length, tiltpole_xyh* tip);

/// The angle between the pole and the horizontal plane [degrees]; not a number for tilts that
/// cannot belong to perpendicular axes.
TILTPOLE_C_API int tiltpole_angle_to_horizontal(double incline_x, double incline_y,
                                                double* degrees);

// NOLINTEND(modernize-use-using)

#ifdef __cplusplus
}
#endif

#endif
