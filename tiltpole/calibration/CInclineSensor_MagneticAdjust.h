#pragma once

/// @file
/// The calibration of the two magnetometers.

#include <vector>

#include "tiltpole/estimation/CKFilter.h"
#include "tiltpole/export.h"
#include "tiltpole/matrix/CSZMatrix.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole {

/// Fits the corrections of both magnetometers and the offset between their frames to samples of two
/// turns of the pole.
///
/// The host adds samples to the horizontal set while the operator turns the pole about its own
/// vertical (z) axis, and to the vertical set while it is turned about the sensor's y axis; then it
/// calls Adjust(). Each set needs at least 5 samples, and enough of the turn for an ellipse. On
/// success it hands GetCorrectPar_A(), GetCorrectPar_B() and GetCoorTrans() to the position object.
///
/// **Model.** Incline_MagneticCorrectParameter states the correction. Over the horizontal turn a
/// perfect sensor traces a circle in x-y and a constant z, over the vertical turn a circle in x-z
/// and a constant y. The fit finds the scales `b` and `e` that make the ellipses of the readings
/// circles, and the cross terms `a`, `c` and `d` that make the third axis independent of the
/// others. The ellipses are conics with the coefficients of both squares adding up to 1, fitted by
/// least squares on their algebraic residual; this draws them smaller where the readings are noisy.
///
/// **Limits.** `b` and `e` are searched for between 0 and 2; a sensor that needs more cannot be
/// calibrated. Readings whose residual is 1000 squared counts or more count as outliers and are
/// left out while more than 20 others remain: the limit suits a field of some hundred to some
/// thousand counts. A fit that comes to rest only after more than 500 passes counts as failed.
///
/// **Failure.** A failed calibration shows the operator up to three modal messages in a row (the
/// fit, the correction, the calibration) and returns 0; results fitted before the failing step keep
/// their new values, so use them only after a 1. Nothing is thrown but std::bad_alloc where memory
/// runs out: samples, results and arguments are then as they were, no message blames the readings
/// for it, and the operation can be repeated. A matrix handed in with counts but without storage is
/// a lack of memory too.
///
/// **Cost.** Time grows with the samples and with the passes until the cross terms rest. To give an
/// idea: on one desktop processor of the 2020s, turns of 2 x 360 samples took less than a
/// millisecond; a fit that cannot come to rest (the z axis would need `e` above 2) and runs all its
/// 1000 passes took a second and a quarter at 2 x 2000. Memory grows with the samples alone.
/// Readings that are not finite are no special case, they lead to a failure.
///
/// Single-threaded; not copyable.
class TILTPOLE_EXPORT CInclineSensor_MagneticAdjust {
 public:
  CInclineSensor_MagneticAdjust() = default;
  ~CInclineSensor_MagneticAdjust();
  CInclineSensor_MagneticAdjust(const CInclineSensor_MagneticAdjust&) = delete;
  CInclineSensor_MagneticAdjust& operator=(const CInclineSensor_MagneticAdjust&) = delete;

  /// @name The two sets of samples
  /// They hold copies, in the order of arrival, and are emptied by nothing but their Clear.
  /// @{

  /// Appends a copy of the sample; a null pointer is ignored.
  void Horizontal_Add(const PoseSensorData* sample);
  /// Copies the sample at @p index.
  /// @return 1; 0 for an index outside the set, and then @p out stays as it is. A host counts the
  ///         samples by rising indices until it gets 0.
  int Horizontal_Get(int index, PoseSensorData& out) const;
  /// Removes all samples and frees their storage.
  void Horizontal_Clear();

  void Vertical_Add(const PoseSensorData* sample);         ///< @copydoc Horizontal_Add
  int Vertical_Get(int index, PoseSensorData& out) const;  ///< @copydoc Horizontal_Get
  void Vertical_Clear();                                   ///< @copydoc Horizontal_Clear
  /// @}

  /// @name Calibration
  /// @{

  /// Fits correction A, correction B and the frame offset from the two sets, which stay as they
  /// are.
  /// @return 1; 0 after a message when a step fails. The steps before it have stored their results.
  int Adjust();

  /// Magnetometer A's correction: the default until a fit of A has succeeded.
  Incline_MagneticCorrectParameter GetCorrectPar_A() const;
  /// Magnetometer B's correction: the default until a fit of B has succeeded.
  Incline_MagneticCorrectParameter GetCorrectPar_B() const;
  /// The offset between the corrected frames: the default until a calibration has succeeded.
  Incline_MagneticTranslationParameter GetCoorTrans() const;
  /// @}

  /// @name Filters for a host's own matrices
  /// The calibration itself does not use them.
  /// @{

  /// Smooths the first six columns down the rows, each by a random walk with process and
  /// measurement variance 16 and initial variance 25, started on row 0, which stays as it is.
  ///
  /// @param[in,out] M  at least six columns; further ones are carried along. A matrix with fewer
  ///                   columns or without rows is left alone.
  void DataFilter(CSZMatrix& M);

  /// DataFilter(), then keeps the rows at which column 0 has moved on by at least 3.0
  /// degrees.
  ///
  /// @param[in,out] M  column 0 an angle [degrees] swept once around by the operator, in either
  ///                   direction. Its legs are cut at its first maximum and its first minimum, so
  ///                   the jump between 360 and 0 is no obstacle; but the smoothing before runs
  ///                   across that jump too. Row 0 is always kept.
  void MatrixFilter(CSZMatrix& M);
  /// @}

 protected:
  /// The least-squares solution of A x = b by the normal equations, MatInv(AtA) * (At b).
  ///
  /// @param[in] A  n x m
  /// @param[in] b  n x 1
  /// @return m x 1; zeros, after a message, if the row counts differ. Where AtA is singular, what
  ///         the operators of CSZMatrix make of the empty inverse: At b. So too where MatInv()
  ///         finds no room for its pivots, which it needs for m above 32.
  CSZMatrix OverDeterminedEquationSolution(const CSZMatrix& A, const CSZMatrix& b) const;

  /// Fits the conic A u^2 + B u w + C w^2 + D u + E w + F = 0 with C = 1 - A to the points of one
  /// plane.
  ///
  /// @param[in]  data    n x 3, n at least 5: a reading a row, x, y, z in the columns
  /// @param[in]  plane   2: (u, w) = (x, y); 1: (x, z); 0: (y, z). For others the fit is all zeros.
  /// @param[out] result  (A, B, D, E, F), 5 x 1; untouched if @p data has another shape
  /// @return 1 for an ellipse (a conic that is not a number counts as one); 0 for another conic,
  ///         without a message; 0 after a message if @p data has another shape
  int EllipseFit(const CSZMatrix& data, int plane, CSZMatrix& result) const;

  /// The slopes of one coordinate against each of the other two, by two separate straight lines
  /// with intercepts: not those of a plane, unless the other two are uncorrelated.
  ///
  /// @param[in] data  n x 3, n at least 2
  /// @param[in] axis  the fitted coordinate: 0 against (y, z), 1 against (x, z), 2 against (x, y).
  ///                  For others the slopes are 0.
  /// @return the two slopes, 2 x 1. After a message, zeros if @p data has not three columns; an
  ///         empty matrix if it has fewer than 2 rows.
  CSZMatrix LineFit(const CSZMatrix& data, int axis) const;

  /// Fits one magnetometer's correction to its readings over the two turns, iterating until the
  /// cross terms move by less than 1e-10.
  ///
  /// @param[in]  horizontal  n x 3 raw readings [counts] of the turn about z
  /// @param[in]  vertical    n x 3 raw readings [counts] of the turn about y
  /// @param[out] out         every field on success, untouched on failure
  /// @return 1; 0 after a message
  int MagCorrPara(const CSZMatrix& horizontal, const CSZMatrix& vertical,
                  Incline_MagneticCorrectParameter& out) const;

  /// A correction in closed form from three ellipses. Nothing in the library uses it.
  ///
  /// @param[in]  p1, p2, p3  results of EllipseFit()
  /// @param[out] out         all fields but `b`, which is never written, on success
  /// @return 1; 0 after a message if @p p1 or @p p2 is no ellipse
  int MagCorrPara(const CSZMatrix& p1, const CSZMatrix& p2, const CSZMatrix& p3,
                  Incline_MagneticCorrectParameter& out) const;

  /// The mean offset between the corrected frames, with the corrections that the object holds.
  ///
  /// @param[in]  A, B  n x 3 raw readings [counts] of the same samples from the two magnetometers
  /// @param[out] out   the offset; not a number for n = 0
  /// @return 1; 0 after a message if the row counts differ, and then @p out is untouched
  int MagneticCoordinateOffset(const CSZMatrix& A, const CSZMatrix& B,
                               Incline_MagneticTranslationParameter& out) const;

 private:
  std::vector<PoseSensorData> horizontal_;
  std::vector<PoseSensorData> vertical_;
  Incline_MagneticCorrectParameter correctPar_A_;
  Incline_MagneticCorrectParameter correctPar_B_;
  Incline_MagneticTranslationParameter coorTrans_;
  CKFilter filter_;
};

}  // namespace tiltpole
