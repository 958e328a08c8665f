#pragma once

// The readings of one magnetometer over one turn, an array for each axis: the sums of a fit run
// over memory in order, and the set can shrink in place.

#include <cstddef>
#include <vector>

#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole::detail {

struct Readings {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> z;
  /// Of the matrix that they come from. The fits accept three; a missing one is read as zeros, so
  /// that nothing is read beyond the matrix before a fit rejects it.
  unsigned int columns = 3;

  std::size_t Count() const { return x.size(); }
};

/// One reading a row, the axes x, y, z in columns 0, 1, 2. Throws std::bad_alloc also for a matrix
/// that there was no room for.
Readings ReadingsOf(const CSZMatrix& data);

/// Removes the readings whose mark is 0; the others keep their order. Allocates nothing.
void KeepMarked(const std::vector<char>& marks, Readings& readings);

}  // namespace tiltpole::detail
