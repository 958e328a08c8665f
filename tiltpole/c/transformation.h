#ifndef TILTPOLE_C_TRANSFORMATION_H
#define TILTPOLE_C_TRANSFORMATION_H

/// @file
/// The four-parameter transformation of the plane; see tiltpole::CMagneticConvert.

#include "tiltpole/c/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using): C has typedefs only

/// Pairs of points, and the parameters estimated from them or set.
typedef struct tiltpole_transformation tiltpole_transformation;

/// A point of the plane, in its system's unit.
typedef struct tiltpole_xy {
  double x;  ///< along the first axis
  double y;  ///< along the second axis
} tiltpole_xy;

/// A point known in both systems.
typedef struct tiltpole_point_pair {
  tiltpole_xy source;  ///< in the system to transform from
  tiltpole_xy target;  ///< in the system to transform to
} tiltpole_point_pair;

/// Scale, rotation, shift and centre; see tiltpole::Magnetic_FourParameter.
typedef struct tiltpole_four_parameters {
  double scale;     ///< factor from source to target lengths
  double rotation;  ///< counterclockwise [radians]
  double offset_x;  ///< shift in x [target units]
  double offset_y;  ///< shift in y [target units]
  double center_x;  ///< x of the centre, which counts for the forward direction only
  double center_y;  ///< y of the centre
} tiltpole_four_parameters;

/// Starts without pairs and as the identity. The handle is the caller's to destroy.
TILTPOLE_C_API int tiltpole_transformation_create(tiltpole_transformation** transformation);
/// Gives a transformation back; null does nothing.
TILTPOLE_C_API void tiltpole_transformation_destroy(tiltpole_transformation* transformation);

/// Adds points known in both systems. Where memory runs out, those before stay.
TILTPOLE_C_API int tiltpole_transformation_add_pairs(tiltpole_transformation* transformation,
                                                     const tiltpole_point_pair* pairs,
                                                     size_t count);
/// Forgets all pairs; the parameters stay.
TILTPOLE_C_API int tiltpole_transformation_clear_pairs(tiltpole_transformation* transformation);
/// Estimates scale, rotation and shift; TILTPOLE_NO_SOLUTION without pairs.
TILTPOLE_C_API int tiltpole_transformation_estimate(tiltpole_transformation* transformation);

/// Takes parameters of any origin in place of those in force.
TILTPOLE_C_API int tiltpole_transformation_set_parameters(
    tiltpole_transformation* transformation, const tiltpole_four_parameters* parameters);
/// The parameters in force: estimated, set, or the identity.
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
