#pragma once

#include "support/rows.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole_test {

/// Twelve points of whole numbers on the circle of radius 25 about (u, w), on columns @p first and
/// @p second; the third column is @p level. Its sums are exact.
inline tiltpole::CSZMatrix ExactCircle(unsigned int first, unsigned int second, double u, double w,
                                       double level) {
  const double points[12][2] = {{25, 0},   {-25, 0},   {0, 25},  {0, -25},  {15, 20},  {15, -20},
                                {-15, 20}, {-15, -20}, {20, 15}, {20, -15}, {-20, 15}, {-20, -15}};
  tiltpole::CSZMatrix matrix(12, 3);
  for (unsigned int i = 0; i < 12; ++i) {
    for (unsigned int j = 0; j < 3; ++j) matrix.SetData(i, j, level);
    matrix.SetData(i, first, u + points[i][0]);
    matrix.SetData(i, second, w + points[i][1]);
  }
  return matrix;
}

}  // namespace tiltpole_test
