#include "calibration/literal_calibration.h"

#include "calibration/literal_fits.h"
#include "calibration/plain_matrix.h"

namespace tiltpole_test {
namespace {

using tiltpole::CSZMatrix;
using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::PoseSensorData;

PlainMatrix PlainOf(const CSZMatrix& matrix) {
  PlainMatrix plain(matrix.GetRow(), matrix.GetCol());
  for (unsigned int i = 0; i < matrix.GetRow(); ++i) {
    for (unsigned int j = 0; j < matrix.GetCol(); ++j) plain.SetData(i, j, matrix.GetData(i, j));
  }
  return plain;
}

template <class Matrix>
Matrix ReadingsOf(const std::vector<PoseSensorData>& samples, bool A) {
  Matrix matrix(static_cast<unsigned int>(samples.size()), 3);
  for (unsigned int i = 0; i < matrix.GetRow(); ++i) {
    const PoseSensorData& sample = samples[i];
    matrix.SetData(i, 0, A ? sample.MagneticX_A : sample.MagneticX_B);
    matrix.SetData(i, 1, A ? sample.MagneticY_A : sample.MagneticY_B);
    matrix.SetData(i, 2, A ? sample.MagneticZ_A : sample.MagneticZ_B);
  }
  return matrix;
}

template <class Matrix>
int Calibrate(const Session& session, LiteralFits<Matrix>& fits, CalibrationOutcome& outcome) {
  const Matrix HA = ReadingsOf<Matrix>(session.horizontal, true);
  const Matrix HB = ReadingsOf<Matrix>(session.horizontal, false);
  const Matrix VA = ReadingsOf<Matrix>(session.vertical, true);
  const Matrix VB = ReadingsOf<Matrix>(session.vertical, false);
  if (fits.MagCorrPara(HA, VA, outcome.par_A) == 0) {
    fits.shown.push_back(ExclamationMessage(
        L"A calculation of the magnetometer calibration fails, please recalibrate!"));
    return 0;
  }
  if (fits.MagCorrPara(HB, VB, outcome.par_B) == 0) {
    fits.shown.push_back(ExclamationMessage(
        L"B calculation of the magnetometer calibration fails, please recalibrate!"));
    return 0;
  }
  const Incline_MagneticCorrectParameter& pA = outcome.par_A;
  const Incline_MagneticCorrectParameter& pB = outcome.par_B;
  double dX = 0;
  double dY = 0;
  double dZ = 0;
  for (unsigned int i = 0; i < HA.GetRow(); ++i) {
    const double xA = HA.GetData(i, 0), yA = HA.GetData(i, 1), zA = HA.GetData(i, 2);
    const double xB = HB.GetData(i, 0), yB = HB.GetData(i, 1), zB = HB.GetData(i, 2);
    const double XA = xA - pA.x0;
    const double YA = -(pA.a * xA + pA.b * yA - pA.y0);
    const double ZA = -(pA.c * xA + pA.d * yA + pA.e * zA - pA.z0);
    const double XB = xB - pB.x0;
    const double YB = -(pB.a * xB + pB.b * yB - pB.y0);
    const double ZB = -(pB.c * xB + pB.d * yB + pB.e * zB - pB.z0);
    dX += -XB - XA;
    dY += -YB - YA;
    dZ += ZB - ZA;
  }
  outcome.trans.dX = dX / HA.GetRow();
  outcome.trans.dY = dY / HA.GetRow();
  outcome.trans.dZ = dZ / HA.GetRow();
  return 1;
}

template <class Matrix>
CalibrationOutcome AdjustWith(const Session& session, long mostFits) {
  CalibrationOutcome outcome;
  LiteralFits<Matrix> fits;
  fits.mostFits = mostFits;
  try {
    outcome.result = Calibrate(session, fits, outcome);
  } catch (const TookTooLong&) {
    outcome = CalibrationOutcome();
    outcome.tookTooLong = true;
    return outcome;
  }
  outcome.shown = fits.shown;
  outcome.passes = fits.passes;
  outcome.ellipseFits = fits.ellipseFits;
  outcome.lineFits = fits.lineFits;
  return outcome;
}

}  // namespace

CorrectionOutcome LiteralMagCorrPara(const CSZMatrix& horizontal, const CSZMatrix& vertical,
                                     int cap) {
  CorrectionOutcome outcome;
  LiteralFits<PlainMatrix> fits;
  fits.N = cap;
  outcome.result = fits.MagCorrPara(PlainOf(horizontal), PlainOf(vertical), outcome.par);
  outcome.shown = fits.shown;
  outcome.passes = fits.passes;
  outcome.ellipseFits = fits.ellipseFits;
  outcome.lineFits = fits.lineFits;
  return outcome;
}

CalibrationOutcome LiteralAdjust(const Session& session, long mostFits) {
  return AdjustWith<PlainMatrix>(session, mostFits);
}

CalibrationOutcome LiteralAdjustWithCSZMatrix(const Session& session) {
  return AdjustWith<CSZMatrix>(session, std::numeric_limits<long>::max());
}

EllipseOutcome LiteralEllipseFit(const CSZMatrix& data, int plane) {
  LiteralFits<PlainMatrix> fits;
  PlainMatrix plain = PlainOf(data);
  PlainMatrix result;
  EllipseOutcome outcome;
  outcome.result = fits.EllipseFit(plain, plane, result);
  for (unsigned int i = 0; i < result.GetRow(); ++i) {
    outcome.coefficients.push_back(result.GetData(i));
  }
  return outcome;
}

std::vector<double> LiteralLineFit(const CSZMatrix& data, int axis) {
  LiteralFits<PlainMatrix> fits;
  PlainMatrix plain = PlainOf(data);
  const PlainMatrix slopes = fits.LineFit(plain, axis);
  return {slopes.GetData(0), slopes.GetData(1)};
}

}  // namespace tiltpole_test
