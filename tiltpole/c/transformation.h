#ifndef TILTPOLE_C_TRANSFORMATION_H
#define TILTPOLE_C_TRANSFORMATION_H

/// @file
/// The four-parameter transformation of the plane; see tiltpole::CMagneticConvert.

#include "tiltpole/c/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using): C has typedefs only

typedef struct tiltpole_transformation tiltpole_transformation;

/// A point of the plane.
typedef struct tiltpole_xy {
  double x;
  double y;
} tiltpole_xy;

/// A point known in both systems.
typedef struct tiltpole_point_pair {
  tiltpole_xy source;
  tiltpole_xy target;
} tiltpole_point_pair;

/// Scale, rotation [radians, counterclockwise], shift and centre.
typedef struct tiltpole_four_parameters {
  double scale;
  double rotation;
  double offset_x;
  double offset_y;
  double center_x;  ///< the centre counts for the forward direction only
  double center_y;
} tiltpole_four_parameters;

/// Starts without pairs and as the identity.
TILTPOLE_C_API int tiltpole_transformation_create(tiltpole_transformation** transformation);
TILTPOLE_C_API void tiltpole_transformation_destroy(tiltpole_transformation* transformation);

/// Adds points known in both systems. Where memory runs out, those before stay.
TILTPOLE_C_API int tiltpole_transformation_add_pairs(tiltpole_transformation* transformation,
                                                     const tiltpole_point_pair* pairs,
                                                     size_t count);
/// Forgets all pairs; the parameters stay.
TILTPOLE_C_API int tiltpole_transformation_clear_pairs(tiltpole_transformation* transformation);
/// Estimates scale, rotation and shift; TILTPOLE_NO_SOLUTION without pairs.
TILTPOLE_C_API int tiltpole_transformation_estimate(tiltpole_transformation* transformation);

TILTPOLE_C_API int tiltpole_transformation_set_parameters(
    tiltpole_transformation* transformation, const tiltpole_four_parameters* parameters);
TILTPOLE_C_API int tiltpole_transformation_get_parameters(
    const tiltpole_transformation* transformation, tiltpole_four_parameters* parameters);

/// Transforms points in place, from source to target.
TILTPOLE_C_API int tiltpole_transformation_forward(const tiltpole_transformation* transformation,
                                                   tiltpole_xy* points, size_t count);
/// Transforms points in place, from target to source; the centre is ignored.
TILTPOLE_C_API int tiltpole_transformation_inverse(const tiltpole_transformation* transformation,
                                                   tiltpole_xy* points, size_t count);

// NOLINTEND(modernize-use-using)

#ifdef __cplusplus
}
#endif

#endif
