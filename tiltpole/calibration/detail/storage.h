#pragma once

// Lack of memory that a matrix tells only by what it does not hold. The calibration throws instead:
// read as zeros, readings without storage would be taken for bad ones.

#include <new>

#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole::detail {

inline void ThrowUnless(bool stored) {
  if (!stored) throw std::bad_alloc();
}

/// Throws std::bad_alloc if @p matrix has elements but no storage for them.
inline void RequireStorage(const CSZMatrix& matrix) {
  ThrowUnless(matrix.m_pData != nullptr || matrix.GetRow() == 0 || matrix.GetCol() == 0);
}

}  // namespace tiltpole::detail
