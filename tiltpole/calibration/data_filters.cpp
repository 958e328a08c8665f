// The smoothing and thinning of a host's own matrices.

#include <utility>

#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"
#include "tiltpole/calibration/detail/storage.h"
#include "tiltpole/calibration/detail/sweep_thinning.h"

namespace tiltpole {
namespace {

using detail::RequireStorage;
using detail::ThrowUnless;

constexpr unsigned int kSmoothedColumns = 6;

CSZMatrix MultipleOfIdentity(double value) {
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
  RequireStorage(M);
  if (M.GetRow() == 0 || M.GetCol() < kSmoothedColumns) return;
  const CSZMatrix identity = MultipleOfIdentity(1.0);
  const CSZMatrix zeros(kSmoothedColumns, kSmoothedColumns);
  const CSZMatrix noise = MultipleOfIdentity(16.0);
  const CSZMatrix input(kSmoothedColumns);
  CSZMatrix result(M);
  RequireStorage(result);

  filter_.SetMatrixOrder(kSmoothedColumns, kSmoothedColumns);
  ThrowUnless(filter_.SetSystemMatrix(identity, zeros, identity, identity, zeros) == 1);
  ThrowUnless(filter_.SetNoise(noise, noise) == 1);
  ThrowUnless(filter_.SetInitialData(RowAsColumn(M, 0), MultipleOfIdentity(25.0)) == 1);
  for (unsigned int i = 1; i < M.GetRow(); ++i) {
    const CSZMatrix smoothed = filter_.Filter(RowAsColumn(M, i), input, 0);
    ThrowUnless(smoothed.m_pData != nullptr);
    for (unsigned int j = 0; j < kSmoothedColumns; ++j) result.SetData(i, j, smoothed.GetData(j));
  }
  M = std::move(result);
}

void CInclineSensor_MagneticAdjust::MatrixFilter(CSZMatrix& M) {
  RequireStorage(M);
  if (M.m_pData == nullptr) return;
  CSZMatrix smoothed(M);
  RequireStorage(smoothed);
  DataFilter(smoothed);
  CSZMatrix thinned = detail::ThinSweep(smoothed);
  RequireStorage(thinned);
  M = std::move(thinned);
}

}  // namespace tiltpole
