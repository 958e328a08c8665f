// The smoothing and thinning of a host's own matrices.

#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"
#include "tiltpole/calibration/detail/sweep_thinning.h"

namespace tiltpole {
namespace {

constexpr unsigned int kSmoothedColumns = 6;

CSZMatrix Scalar(double value) {
  CSZMatrix matrix(kSmoothedColumns, kSmoothedColumns);
  matrix.Diagonal(value);
  return matrix;
}

CSZMatrix RowAsColumn(const CSZMatrix& M, unsigned int row) {
  CSZMatrix column(kSmoothedColumns);
  for (unsigned int j = 0; j < kSmoothedColumns; ++j) column.SetData(j, M.GetData(row, j));
  return column;
}

}  // namespace

void CInclineSensor_MagneticAdjust::DataFilter(CSZMatrix& M) {
  if (M.GetRow() == 0 || M.GetCol() < kSmoothedColumns || M.m_pData == nullptr) return;
  const CSZMatrix identity = Scalar(1.0);
  const CSZMatrix zeros(kSmoothedColumns, kSmoothedColumns);
  const CSZMatrix noise = Scalar(16.0);
  const CSZMatrix input(kSmoothedColumns);

  filter_.SetMatrixOrder(kSmoothedColumns, kSmoothedColumns);
  filter_.SetSystemMatrix(identity, zeros, identity, identity, zeros);
  filter_.SetNoise(noise, noise);
  filter_.SetInitialData(RowAsColumn(M, 0), Scalar(25.0));
  for (unsigned int i = 1; i < M.GetRow(); ++i) {
    const CSZMatrix smoothed = filter_.Filter(RowAsColumn(M, i), input, 0);
    for (unsigned int j = 0; j < kSmoothedColumns; ++j) M.SetData(i, j, smoothed.GetData(j));
  }
}

void CInclineSensor_MagneticAdjust::MatrixFilter(CSZMatrix& M) {
  DataFilter(M);
  M = detail::ThinSweep(M);
}

}  // namespace tiltpole
