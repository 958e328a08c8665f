#pragma once

// The thinning of a sweep: which rows of a matrix are far enough along in its first column.

#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole::detail {

/// The rows at which column 0 has moved on by at least 3 degrees since the row kept before, in the
/// direction of the current leg. The legs are cut at the first maximum and the first minimum of
/// column 0, which takes care of the jump of an angle between 360 and 0.
///
/// @return the rows kept, in their order; row 0 always is. Of a matrix without elements, a copy.
CSZMatrix ThinSweep(const CSZMatrix& sweep);

}  // namespace tiltpole::detail
