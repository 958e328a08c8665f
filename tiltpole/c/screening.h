#ifndef TILTPOLE_C_SCREENING_H
#define TILTPOLE_C_SCREENING_H

/// @file
/// The screening of one turn: how much of the circle is covered, and a clean, even subset; see
/// tiltpole::CInclineSensor_Filter_XY and tiltpole::CInclineSensor_Filter_XZ.

#include "tiltpole/c/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using): C has typedefs only

/// The records of one turn, in the order of their arrival, and a selection of them.
typedef struct tiltpole_screening tiltpole_screening;

/// The circle of a turn, by magnetometer A's readings [counts].
typedef struct tiltpole_center {
  double x;          ///< centre, on the x axis
  double y;          ///< on the y axis; in the vertical turn the level of the circle's plane
  double z;          ///< on the z axis; in the horizontal turn the level of the circle's plane
  double radius;     ///< mean distance of the records from the centre, in the plane
  int32_t valid;     ///< 1 once there is a centre
  int32_t reserved;  ///< 0
} tiltpole_center;

/// Starts without records. The handle is the caller's to destroy.
/// @param[in] turn  TILTPOLE_TURN_HORIZONTAL screens in the x-y plane, TILTPOLE_TURN_VERTICAL in
///                  the x-z plane
TILTPOLE_C_API int tiltpole_screening_create(int turn, tiltpole_screening** screening);
/// Gives a screening with its records back; null does nothing.
TILTPOLE_C_API void tiltpole_screening_destroy(tiltpole_screening* screening);

/// Appends copies of samples. Every 10th record fits the centre afresh.
TILTPOLE_C_API int tiltpole_screening_add(tiltpole_screening* screening,
                                          const tiltpole_sample* samples, size_t count);
/// Removes all records and the selection. The vertical turn's centre stays valid.
TILTPOLE_C_API int tiltpole_screening_clear(tiltpole_screening* screening);

/// How much of the circle the records cover [per cent].
TILTPOLE_C_API int tiltpole_screening_coverage(const tiltpole_screening* screening,
                                               int32_t* percent);
/// 1 when every sector of the circle holds a record.
TILTPOLE_C_API int tiltpole_screening_is_covered(const tiltpole_screening* screening,
                                                 int32_t* covered);
/// The circle as it stands; its `valid` is 0 before there is one.
TILTPOLE_C_API int tiltpole_screening_center(const tiltpole_screening* screening,
                                             tiltpole_center* center);

/// Selects the usable records, by azimuth. TILTPOLE_NO_SOLUTION, and an empty selection, when none
/// is left.
TILTPOLE_C_API int tiltpole_screening_filter(tiltpole_screening* screening);
/// Thins the selection to about @p wanted records, at least 1, those at the extremes among them.
TILTPOLE_C_API int tiltpole_screening_select(tiltpole_screening* screening, int32_t wanted);
/// 1 when no two neighbours in the selection lie more than 60 degrees apart. The centre becomes
/// that of the selection.
TILTPOLE_C_API int tiltpole_screening_is_complete(tiltpole_screening* screening, int32_t* complete);

/// The selected records, with their azimuths, in the selection's order.
TILTPOLE_C_API int tiltpole_screening_selected(const tiltpole_screening* screening,
                                               tiltpole_sample* samples, size_t capacity,
                                               size_t* count);
/// For each selected record, how many were added before it.
TILTPOLE_C_API int tiltpole_screening_selected_indices(const tiltpole_screening* screening,
                                                       size_t* indices, size_t capacity,
                                                       size_t* count);
/// All records in the order of their arrival, with their azimuths as they stand.
TILTPOLE_C_API int tiltpole_screening_records(const tiltpole_screening* screening,
                                              tiltpole_sample* samples, size_t capacity,
                                              size_t* count);

// NOLINTEND(modernize-use-using)

#ifdef __cplusplus
}
#endif

#endif
