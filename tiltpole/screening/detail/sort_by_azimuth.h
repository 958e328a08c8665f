#pragma once

#include "tiltpole/screening/PoseSensorDataArray.h"

namespace tiltpole::detail {

// Sorts an array by azimuth, in place, in O(n log n).
//
// The order is the one that this exchange sort leaves, equal azimuths included:
//
//     for each i, for each j > i: if arr[j] is strictly smaller than arr[i], swap the two
//
// Null entries, and records whose azimuth is not a number, never move; the others sort as if those
// were not there. Each smaller record that is still to find its place goes there by swaps, and each
// swap throws the record that it displaces back to where the smaller one stood. So the records of
// one azimuth v end in the order of a queue that reads the array once from left to right: a record
// of azimuth v joins at the back, a smaller one sends the one in front to the back, a larger one
// does nothing. (2a 2b 1 gives 1 2b 2a; 2a 1 2b gives 1 2a 2b.)
void SortByAzimuth(PoseSensorDataArray& arr);

// Marks the repeats of an azimuth in a sorted array: Forward 0 where a record is not at least the
// epsilon beyond the one before it, else 1. A record after a null entry has nothing to be compared
// with and keeps its flag, as the first one does.
void MarkRepeats(const PoseSensorDataArray& arr);

}  // namespace tiltpole::detail
