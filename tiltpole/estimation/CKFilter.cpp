#include "tiltpole/estimation/CKFilter.h"

#include <algorithm>
#include <utility>

#include "tiltpole/platform/message_box.h"

namespace tiltpole {
namespace {

unsigned int Count(int order) { return static_cast<unsigned int>(std::max(order, 0)); }

// No matrix has a negative order, so nothing fits one.
bool HasSize(const CSZMatrix& matrix, int rows, int cols) {
  return rows >= 0 && cols >= 0 && matrix.GetRow() == Count(rows) && matrix.GetCol() == Count(cols);
}

bool IsStored(const CSZMatrix& matrix) {
  return matrix.m_pData != nullptr || matrix.GetRow() == 0 || matrix.GetCol() == 0;
}

bool Fits(const CSZMatrix& matrix, int rows, int cols) {
  return HasSize(matrix, rows, cols) && IsStored(matrix);
}

CSZMatrix Identity(int order) {
  CSZMatrix identity(Count(order), Count(order));
  identity.Diagonal(1.0);
  return identity;
}

}  // namespace

int CKFilter::SetMatrixOrder(int n, int m) {
  n_ = n;
  m_ = m;
  Phi_ = CSZMatrix(Count(n), Count(n));
  B_ = CSZMatrix(Count(n), Count(n));
  H_ = CSZMatrix(Count(m), Count(n));
  D_ = CSZMatrix(Count(m), Count(n));
  G_ = CSZMatrix(Count(n), Count(m));
  R_ = CSZMatrix(Count(m), Count(m));
  Q_ = CSZMatrix(Count(m), Count(m));
  x_ = CSZMatrix(Count(n), 1);
  P_ = CSZMatrix(Count(n), Count(n));
  return 1;
}

int CKFilter::SetSystemMatrix(CSZMatrix Phi, CSZMatrix B, CSZMatrix G, CSZMatrix H, CSZMatrix D) {
  if (!Fits(Phi, n_, n_) || !Fits(B, n_, n_) || !Fits(G, n_, m_) || !Fits(H, m_, n_) ||
      !Fits(D, m_, n_)) {
    return 0;
  }
  Phi_ = std::move(Phi);
  B_ = std::move(B);
  G_ = std::move(G);
  H_ = std::move(H);
  D_ = std::move(D);
  return 1;
}

int CKFilter::SetNoise(CSZMatrix R, CSZMatrix Q) {
  // Deliberate: R has to be n x n here but is added to an m x m matrix by the step, so hosts can
  // set noise only for filters with n = m.
  if (!Fits(R, n_, n_) || !Fits(Q, m_, m_)) return 0;
  R_ = std::move(R);
  Q_ = std::move(Q);
  return 1;
}

int CKFilter::SetInitialData(CSZMatrix x0, CSZMatrix P0) {
  if (!Fits(x0, n_, 1) || !Fits(P0, n_, n_)) return 0;
  x_ = std::move(x0);
  P_ = std::move(P0);
  return 1;
}

int CKFilter::SetInitialVariance(CSZMatrix P0) {
  // Deliberate: a column is wanted and kept as one, so with n > 1 the step finds sizes that do not
  // match.
  if (!Fits(P0, n_, 1)) return 0;
  P_ = std::move(P0);
  return 1;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): every matrix argument is a copy.
CSZMatrix CKFilter::Filter(CSZMatrix z, CSZMatrix u, int /*ignored*/) {
  if (!HasSize(z, m_, 1) || !HasSize(u, n_, 1)) {
    detail::ShowMessageBox(L"Filter Failure!", L"Warning", MessageIcon::Exclamation);
    return z;
  }
  const CSZMatrix transposed_H = H_.MatTran();
  const CSZMatrix predicted_P = Phi_ * P_ * Phi_.MatTran() + G_ * Q_ * G_.MatTran();
  const CSZMatrix innovation_covariance = H_ * predicted_P * transposed_H + R_;
  const CSZMatrix gain = predicted_P * transposed_H * innovation_covariance.MatInv();
  CSZMatrix updated_P = (Identity(n_) - gain * H_) * predicted_P;
  const CSZMatrix predicted_x = Phi_ * x_ + B_ * u;
  CSZMatrix updated_x = predicted_x + gain * (z - D_ * u - H_ * predicted_x);
  CSZMatrix estimate(updated_x);
  // What lacked room on the way shows here.
  if (!IsStored(updated_P) || !IsStored(estimate)) return CSZMatrix();
  P_ = std::move(updated_P);
  x_ = std::move(updated_x);
  return estimate;
}

}  // namespace tiltpole
