#pragma once

#include <initializer_list>

#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole_test {

/// A matrix from its rows, which must be of one length.
inline tiltpole::CSZMatrix Rows(std::initializer_list<std::initializer_list<double>> rows) {
  const auto columns = static_cast<unsigned int>(rows.begin()->size());
  tiltpole::CSZMatrix matrix(static_cast<unsigned int>(rows.size()), columns);
  unsigned int i = 0;
  for (const auto& row : rows) {
    unsigned int j = 0;
    for (const double value : row) matrix.SetData(i, j++, value);
    ++i;
  }
  return matrix;
}

}  // namespace tiltpole_test
