#pragma once

/// @file
/// A discrete linear Kalman filter over CSZMatrix values.

#include "tiltpole/export.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole {

/// A linear Kalman filter: the model, the two noise covariances and the current estimate.
///
/// The state x (n x 1) moves and is measured as
///
///     x' = Phi x + B u + G w,   z = H x' + D u + v,   cov(w) = Q (m x m), cov(v) = R (m x m)
///
/// with u (n x 1) a known input. Call SetMatrixOrder(), SetSystemMatrix(), SetNoise() and
/// SetInitialData() in this order, then Filter() once per measurement. Units are those of the
/// host's model. Copies are independent filters. Nothing throws, but for std::bad_alloc where the
/// message of Filter() finds no room.
///
/// Source: R. E. Kalman, "A New Approach to Linear Filtering and Prediction Problems", 1960.
class TILTPOLE_EXPORT CKFilter {
 public:
  /// Sets the orders and sizes all nine matrices, which are zero then: an earlier model is lost.
  ///
  /// @param[in] n  order of the state; the matrices have no storage where an order is below 1
  /// @param[in] m  order of the measurement
  /// @return 1
  int SetMatrixOrder(int n, int m);

  /// Stores the model.
  ///
  /// @param[in] Phi  state transition, n x n
  /// @param[in] B    input matrix of the state, n x n
  /// @param[in] G    noise input matrix of the state, n x m
  /// @param[in] H    measurement matrix, m x n
  /// @param[in] D    input matrix of the measurement, m x n
  /// @return 1; 0 if a size does not fit or a matrix has no storage, and then nothing is stored
  int SetSystemMatrix(CSZMatrix Phi, CSZMatrix B, CSZMatrix G, CSZMatrix H, CSZMatrix D);

  /// Stores the noise covariances.
  ///
  /// @param[in] R  of the measurement. It must be n x n to be stored, although Filter() adds it to
  ///               an m x m matrix: only filters with n = m can run with a noise that was set.
  /// @param[in] Q  of the process, m x m; it enters as G Q transpose(G)
  /// @return 1; 0 if a size does not fit or a matrix has no storage, and then nothing is stored
  int SetNoise(CSZMatrix R, CSZMatrix Q);

  /// Stores the estimate to start from.
  ///
  /// @param[in] x0  state, n x 1
  /// @param[in] P0  its covariance, n x n
  /// @return 1; 0 if a size does not fit or a matrix has no storage, and then nothing is stored
  int SetInitialData(CSZMatrix x0, CSZMatrix P0);

  /// Stores a covariance given as a column.
  ///
  /// @param[in] P0  n x 1, kept in this shape: with n > 1 a filter whose covariance was set this
  ///                way cannot run a step. SetInitialData() takes the full covariance.
  /// @return 1; 0 if @p P0 is not n x 1 or has no storage, and then nothing is stored
  int SetInitialVariance(CSZMatrix P0);

  /// Advances by one measurement: prediction, gain, update.
  ///
  /// @param[in] z        measurement, m x 1
  /// @param[in] u        input, n x 1
  /// @param[in] ignored  has no effect
  /// @return the new estimate of the state, n x 1. Without memory for the step an empty matrix, and
  ///         the filter stays as it was. If @p z or @p u has another shape, the message
  ///         "Filter Failure!" comes up, @p z is returned and the filter stays as it was. An
  ///         innovation covariance that MatInv() finds singular is not reported; the result is then
  ///         what the operators of CSZMatrix make of sizes that do not match.
  CSZMatrix Filter(CSZMatrix z, CSZMatrix u, int ignored);

 private:
  int n_ = 0;
  int m_ = 0;
  CSZMatrix Phi_;
  CSZMatrix B_;
  CSZMatrix H_;
  CSZMatrix D_;
  CSZMatrix G_;
  CSZMatrix R_;
  CSZMatrix Q_;
  CSZMatrix x_;
  CSZMatrix P_;
};

}  // namespace tiltpole
