// Filters, products, inverses, factors, and the transformation of the plane.

#include "reproducibility/findings.h"
#include "reproducibility/generator.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"
#include "tiltpole/estimation/CKFilter.h"
#include "tiltpole/estimation/CMagneticConvert.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace tiltpole_test {
namespace {

using tiltpole::CSZMatrix;

CSZMatrix RandomMatrix(Generator& generator, unsigned rows, unsigned columns) {
  CSZMatrix matrix(rows, columns);
  for (unsigned i = 0; i < rows; ++i) {
    for (unsigned j = 0; j < columns; ++j) matrix.SetData(i, j, generator.Uniform(-10.0, 10.0));
  }
  return matrix;
}

CSZMatrix Diagonal(unsigned n, double value) {
  CSZMatrix matrix(n, n);
  matrix.Diagonal(value);
  return matrix;
}

void Add(Digest& digest, const CSZMatrix& matrix) {
  digest.Add(static_cast<int>(matrix.GetRow()));
  digest.Add(static_cast<int>(matrix.GetCol()));
  for (unsigned i = 0; i < matrix.GetRow(); ++i) {
    for (unsigned j = 0; j < matrix.GetCol(); ++j) digest.Add(matrix.GetData(i, j));
  }
}

void Decompose(Findings& findings, Generator& generator, unsigned n) {
  const CSZMatrix matrix = RandomMatrix(generator, n, n);
  const CSZMatrix definite = matrix * matrix.T() + Diagonal(n, 1.0);
  Add(findings.exact["CSZMatrix: products"], definite);
  Add(findings.exact["CSZMatrix: MatInv"], matrix.MatInv());
  Add(findings.exact["CSZMatrix: Reverse"], definite.Reverse());
  int positive = 0;
  Add(findings.exact["CSZMatrix: matChole"], definite.matChole(&positive));
  findings.exact["CSZMatrix: matChole"].Add(positive);
}

void FilterARun(Findings& findings, Generator& generator) {
  tiltpole::CKFilter filter;
  filter.SetMatrixOrder(3, 3);
  CSZMatrix phi = Diagonal(3, 1.0);
  phi.SetData(0, 1, 0.1);
  phi.SetData(1, 2, -0.05);
  filter.SetSystemMatrix(phi, Diagonal(3, 0.5), Diagonal(3, 1.0), Diagonal(3, 1.0),
                         Diagonal(3, 0.0));
  filter.SetNoise(Diagonal(3, 4.0), Diagonal(3, 0.25));
  filter.SetInitialData(RandomMatrix(generator, 3, 1), Diagonal(3, 25.0));
  for (int step = 0; step < 100; ++step) {
    // One by one: in which order arguments are worked out is left to each compiler.
    const CSZMatrix z = RandomMatrix(generator, 3, 1);
    const CSZMatrix u = RandomMatrix(generator, 3, 1);
    Add(findings.exact["CKFilter: estimates"], filter.Filter(z, u, 0));
  }
}

void FilterATurn(Findings& findings, Generator& generator) {
  CSZMatrix turn = RandomMatrix(generator, 300, 7);
  for (unsigned i = 0; i < 300; ++i) turn.SetData(i, 0, 1.2 * i + turn.GetData(i, 0) / 20.0);
  tiltpole::CInclineSensor_MagneticAdjust adjust;
  CSZMatrix thinned = turn;
  adjust.DataFilter(turn);
  adjust.MatrixFilter(thinned);
  Add(findings.exact["DataFilter"], turn);
  Add(findings.exact["MatrixFilter"], thinned);
}

}  // namespace

void RunMatrices(Findings& findings) {
  Generator generator(4);
  for (int round = 0; round < 20; ++round) {
    for (unsigned n = 1; n <= 12; ++n) Decompose(findings, generator, n);
    FilterARun(findings, generator);
  }
  for (int round = 0; round < 10; ++round) FilterATurn(findings, generator);
}

void RunTransformations(Findings& findings) {
  Generator generator(5);
  for (int round = 0; round < 40; ++round) {
    tiltpole::CMagneticConvert convert;
    const CirclePoint turn = OnCircle(generator.Uniform(0.0, 1.0));
    for (int i = 0; i < 10 + round; ++i) {
      const double x = generator.Uniform(-1000.0, 1000.0);
      const double y = generator.Uniform(-1000.0, 1000.0);
      const double target_x =
          500.0 + turn.first * x - turn.second * y + generator.Uniform(-1.0, 1.0);
      const double target_y =
          200.0 + turn.second * x + turn.first * y + generator.Uniform(-1.0, 1.0);
      convert.AddPoint(x, y, target_x, target_y);
    }
    findings.exact["CalFourParameter: results"].Add(convert.CalFourParameter());
    const auto par = convert.GetFourParameter();
    findings.traced["CalFourParameter: Rotation [radians]"].push_back(par.Rotation);
    findings.traced["CalFourParameter: Scale"].push_back(par.Scale);
    for (const double offset : {par.OffsetX, par.OffsetY}) {
      findings.traced["CalFourParameter: Offset [m]"].push_back(offset);
    }
    convert.SetFourParameter(par.OffsetX, par.OffsetY, par.Rotation, par.Scale, 3.0, -4.0);
    double x = generator.Uniform(-1000.0, 1000.0);
    double y = generator.Uniform(-1000.0, 1000.0);
    convert.XYtoXY(x, y);
    for (const double value : {x, y}) findings.traced["XYtoXY [m]"].push_back(value);
    convert.XYtoXY1(x, y);
    for (const double value : {x, y}) findings.traced["XYtoXY1 [m]"].push_back(value);
  }
}

}  // namespace tiltpole_test
