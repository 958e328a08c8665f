#pragma once

// Counts this program's allocations, and lets one of them fail.

namespace tiltpole_test {

// Allocations since the program started.
long Allocations();

// The next allocation but `count` throws std::bad_alloc; a negative count lets every one succeed.
void FailAllocationAfter(long count);

}  // namespace tiltpole_test
