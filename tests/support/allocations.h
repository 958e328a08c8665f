#pragma once

// Counts this program's allocations and lets a chosen one fail, whichever form of new asks for it.

#include <new>

namespace tiltpole_test {

/// Allocations that were asked for since the program started.
long AllocationsMade();

/// Blocks that were allocated and not yet freed.
long LivingAllocations();

/// The next allocation but `count` fails, and none after it.
void FailAllocationAfter(long count);

/// Lets all succeed again.
/// @return whether one has failed since FailAllocationAfter
bool StopFailing();

enum class Ended {
  Done,    // nothing failed: the operation has fewer allocations than were let through
  Thrown,  // by std::bad_alloc
  Coped,   // an allocation failed and the operation came back
};

/// Runs an operation of which one allocation fails, if it makes so many.
template <class Operation>
Ended RunWithFailure(long after, Operation operation) {
  FailAllocationAfter(after);
  try {
    operation();
  } catch (const std::bad_alloc&) {
    StopFailing();
    return Ended::Thrown;
  }
  return StopFailing() ? Ended::Coped : Ended::Done;
}

/// Runs a trial again and again, with the first allocation of its operation failing, then the
/// second, and so on, until the operation has no further one. A trial makes its objects, runs the
/// operation by RunWithFailure(after, ...), looks at what is left, and returns how it ended.
/// @return how many allocations were failed
template <class Trial>
long FailEachAllocation(Trial trial) {
  long after = 0;
  while (trial(after) != Ended::Done) ++after;
  return after;
}

}  // namespace tiltpole_test
