#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

#include <new>

#include "tiltpole/calibration/detail/correction_fit.h"
#include "tiltpole/calibration/detail/readings.h"
#include "tiltpole/calibration/detail/storage.h"
#include "tiltpole/calibration/detail/warnings.h"
#include "tiltpole/records/magnetic_correction.h"

namespace tiltpole {
namespace {

using Samples = std::vector<PoseSensorData>;

void AddTo(Samples& samples, const PoseSensorData* sample) {
  if (sample != nullptr) samples.push_back(*sample);
}

int GetFrom(const Samples& samples, int index, PoseSensorData& out) {
  if (index < 0 || static_cast<std::size_t>(index) >= samples.size()) return 0;
  out = samples[static_cast<std::size_t>(index)];
  return 1;
}

// Swapping, since clearing alone would keep the storage.
void Free(Samples& samples) { Samples().swap(samples); }

CSZMatrix MatrixOf(const Samples& samples, double PoseSensorData::*x, double PoseSensorData::*y,
                   double PoseSensorData::*z) {
  const auto count = static_cast<unsigned int>(samples.size());
  CSZMatrix matrix(count, 3);
  detail::RequireStorage(matrix);
  for (unsigned int i = 0; i < count; ++i) {
    matrix.SetData(i, 0, samples[i].*x);
    matrix.SetData(i, 1, samples[i].*y);
    matrix.SetData(i, 2, samples[i].*z);
  }
  return matrix;
}

CSZMatrix ReadingsOf_A(const Samples& samples) {
  return MatrixOf(samples, &PoseSensorData::MagneticX_A, &PoseSensorData::MagneticY_A,
                  &PoseSensorData::MagneticZ_A);
}

CSZMatrix ReadingsOf_B(const Samples& samples) {
  return MatrixOf(samples, &PoseSensorData::MagneticX_B, &PoseSensorData::MagneticY_B,
                  &PoseSensorData::MagneticZ_B);
}

}  // namespace

CInclineSensor_MagneticAdjust::~CInclineSensor_MagneticAdjust() {
  Horizontal_Clear();
  Vertical_Clear();
}

void CInclineSensor_MagneticAdjust::Horizontal_Add(const PoseSensorData* sample) {
  AddTo(horizontal_, sample);
}

int CInclineSensor_MagneticAdjust::Horizontal_Get(int index, PoseSensorData& out) const {
  return GetFrom(horizontal_, index, out);
}

void CInclineSensor_MagneticAdjust::Horizontal_Clear() { Free(horizontal_); }

void CInclineSensor_MagneticAdjust::Vertical_Add(const PoseSensorData* sample) {
  AddTo(vertical_, sample);
}

int CInclineSensor_MagneticAdjust::Vertical_Get(int index, PoseSensorData& out) const {
  return GetFrom(vertical_, index, out);
}

void CInclineSensor_MagneticAdjust::Vertical_Clear() { Free(vertical_); }

int CInclineSensor_MagneticAdjust::Adjust() {
  const CSZMatrix horizontal_A = ReadingsOf_A(horizontal_);
  const CSZMatrix horizontal_B = ReadingsOf_B(horizontal_);
  const Incline_MagneticCorrectParameter earlier_A = correctPar_A_;
  const Incline_MagneticCorrectParameter earlier_B = correctPar_B_;
  try {
    if (MagCorrPara(horizontal_A, ReadingsOf_A(vertical_), correctPar_A_) == 0) {
      detail::WarnOfFailure(
          L"A calculation of the magnetometer calibration fails, please recalibrate!");
      return 0;
    }
    // Deliberate: correction A keeps its new value when B fails. A host uses the results only after
    // a 1.
    if (MagCorrPara(horizontal_B, ReadingsOf_B(vertical_), correctPar_B_) == 0) {
      detail::WarnOfFailure(
          L"B calculation of the magnetometer calibration fails, please recalibrate!");
      return 0;
    }
    // Both matrices hold the same samples, so this cannot fail here.
    if (MagneticCoordinateOffset(horizontal_A, horizontal_B, coorTrans_) == 0) {
      detail::WarnOfFailure(L"Pan calculation magnetometer system fails, please recalibrate!");
      return 0;
    }
    return 1;
  } catch (const std::bad_alloc&) {
    correctPar_A_ = earlier_A;
    correctPar_B_ = earlier_B;
    throw;
  }
}

Incline_MagneticCorrectParameter CInclineSensor_MagneticAdjust::GetCorrectPar_A() const {
  return correctPar_A_;
}

Incline_MagneticCorrectParameter CInclineSensor_MagneticAdjust::GetCorrectPar_B() const {
  return correctPar_B_;
}

Incline_MagneticTranslationParameter CInclineSensor_MagneticAdjust::GetCoorTrans() const {
  return coorTrans_;
}

int CInclineSensor_MagneticAdjust::MagCorrPara(const CSZMatrix& horizontal,
                                               const CSZMatrix& vertical,
                                               Incline_MagneticCorrectParameter& out) const {
  return detail::CorrectionFit(detail::ReadingsOf(horizontal), detail::ReadingsOf(vertical))
      .Run(out);
}

int CInclineSensor_MagneticAdjust::MagneticCoordinateOffset(
    const CSZMatrix& A, const CSZMatrix& B, Incline_MagneticTranslationParameter& out) const {
  if (A.GetRow() != B.GetRow()) {
    detail::WarnOfFailure(
        L"Two input matrix must be rotated to the same data collected around the Z axis!");
    return 0;
  }
  const detail::Readings a = detail::ReadingsOf(A);
  const detail::Readings b = detail::ReadingsOf(B);
  Incline_MagneticTranslationParameter sum;
  for (std::size_t i = 0; i < a.Count(); ++i) {
    const MagneticReading atA = CorrectReading(correctPar_A_, {a.x[i], a.y[i], a.z[i]});
    const MagneticReading atB = CorrectReading(correctPar_B_, {b.x[i], b.y[i], b.z[i]});
    sum.dX += -atB.X - atA.X;
    sum.dY += -atB.Y - atA.Y;
    sum.dZ += atB.Z - atA.Z;
  }
  const auto count = static_cast<double>(a.Count());
  out.dX = sum.dX / count;
  out.dY = sum.dY / count;
  out.dZ = sum.dZ / count;
  return 1;
}

}  // namespace tiltpole
