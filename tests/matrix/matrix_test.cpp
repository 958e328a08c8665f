#include <gtest/gtest.h>

#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;

CSZMatrix Matrix2x2(double a, double b, double c, double d) {
  CSZMatrix m(2, 2);
  m.SetData(0, 0, a);
  m.SetData(0, 1, b);
  m.SetData(1, 0, c);
  m.SetData(1, 1, d);
  return m;
}

TEST(MatrixProduct, MultipliesRowsByColumns) {
  const CSZMatrix product = Matrix2x2(1, 2, 3, 4) * Matrix2x2(5, 6, 7, 8);
  EXPECT_EQ(product.GetData(0, 0), 19.0);
  EXPECT_EQ(product.GetData(0, 1), 22.0);
  EXPECT_EQ(product.GetData(1, 0), 43.0);
  EXPECT_EQ(product.GetData(1, 1), 50.0);
}

TEST(MatrixInverse, ExchangesRowsWhenThePivotNeedsIt) {
  const CSZMatrix inverse = Matrix2x2(0, 1, 1, 0).MatInv();
  ASSERT_EQ(inverse.GetRow(), 2U);
  EXPECT_EQ(inverse.GetData(0, 0), 0.0);
  EXPECT_EQ(inverse.GetData(0, 1), 1.0);
  EXPECT_EQ(inverse.GetData(1, 0), 1.0);
  EXPECT_EQ(inverse.GetData(1, 1), 0.0);
}

TEST(MatrixInverse, OfASingularMatrixHasNoRowsAndColumns) {
  const CSZMatrix inverse = Matrix2x2(1, 2, 2, 4).MatInv();
  EXPECT_EQ(inverse.GetRow(), 0U);
  EXPECT_EQ(inverse.GetCol(), 0U);
}

}  // namespace
