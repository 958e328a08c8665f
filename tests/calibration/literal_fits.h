#pragma once

// The literal writing of the fits and of the iterative correction, with which the library is
// compared bit for bit: fresh matrices for every fit, explicit transposes and full products, every
// step of every loop run. Slow on purpose; it must stay as plain as it is.

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "support/message_capture.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"

namespace tiltpole_test {

struct TookTooLong {};

/// @tparam Matrix  PlainMatrix, or the library's own with the same operations
template <class Matrix>
class LiteralFits {
 public:
  /// The cap on every loop: 1000, but for tests that cannot wait so long.
  int N = 1000;
  /// After so many fits no further pass is begun: TookTooLong is thrown.
  long mostFits = std::numeric_limits<long>::max();
  std::vector<ShownMessage> shown;
  long ellipseFits = 0;
  long lineFits = 0;
  int passes = 0;

  Matrix OverDeterminedEquationSolution(Matrix& A, Matrix& b) {
    if (A.GetRow() != b.GetRow()) {
      shown.push_back(ExclamationMessage(L"Two input matrix must have the same line!"));
      return Matrix(A.GetCol(), 1);
    }
    Matrix transposed = A.MatTran();
    Matrix normal = transposed * A;
    Matrix rightSide = transposed * b;
    Matrix inverse = normal.MatInv();
    return inverse * rightSide;
  }

  int EllipseFit(Matrix& data, int plane, Matrix& result) {
    ++ellipseFits;
    if (data.GetCol() != 3) {
      shown.push_back(StopMessage(L"The data array must be three!"));
      return 0;
    }
    if (data.GetRow() < 5) {
      shown.push_back(StopMessage(L"The points less than 5, could not fit!"));
      return 0;
    }
    Matrix design(data.GetRow(), 5);
    Matrix rightSide(data.GetRow(), 1);
    for (unsigned int i = 0; i < data.GetRow(); ++i) {
      const double u = plane == 0 ? data.GetData(i, 1) : data.GetData(i, 0);
      const double w = plane == 2 ? data.GetData(i, 1) : data.GetData(i, 2);
      design.SetData(i, 0, u * u - w * w);
      design.SetData(i, 1, u * w);
      design.SetData(i, 2, u);
      design.SetData(i, 3, w);
      design.SetData(i, 4, 1);
      rightSide.SetData(i, 0, -(w * w));
    }
    result = OverDeterminedEquationSolution(design, rightSide);
    const double A = result.GetData(0);
    const double B = result.GetData(1);
    const double C = 1 - A;
    if (B * B - 4 * A * C >= 0) return 0;
    return 1;
  }

  Matrix LineFit(Matrix& data, int axis) {
    Matrix slopes(2, 1);
    if (data.GetCol() != 3) {
      shown.push_back(StopMessage(L"The data array must be three!"));
      return slopes;
    }
    if (data.GetRow() < 2) {
      shown.push_back(StopMessage(L"The points less than 2, could not fit!"));
      return Matrix();
    }
    const unsigned int fitted = static_cast<unsigned int>(axis);
    const unsigned int first = axis == 0 ? 1 : 0;
    const unsigned int second = axis == 2 ? 1 : 2;
    slopes.SetData(0, SlopeOf(data, fitted, first));
    slopes.SetData(1, SlopeOf(data, fitted, second));
    return slopes;
  }

  int MagCorrPara(Matrix H, Matrix V, tiltpole::Incline_MagneticCorrectParameter& out) {
    const double eps = 1e-10;
    double a = 0, b = 1, c = 0, d = 0, e = 1, x0 = 0, y0 = 0, z0 = 0;
    bool converged = true;
    bool fitFailed = false;
    Matrix r;
    for (int p = 0; p < N; ++p) {
      if (ellipseFits + lineFits > mostFits) throw TookTooLong();
      ++passes;
      Matrix W = H;
      for (unsigned int i = 0; i < W.GetRow(); ++i) {
        W.SetData(i, 1, a * Raw(H, i, 0) + 1 * Raw(H, i, 1));
        W.SetData(i, 2, c * Raw(H, i, 0) + d * Raw(H, i, 1) + e * Raw(H, i, 2));
      }
      if (EllipseFit(W, 2, r) == 0) {
        shown.push_back(
            ExclamationMessage(L"Ellipse fitting failed, around the Z-axis data is incorrect!"));
        fitFailed = true;
        break;
      }
      double lower = 1;
      double upper = 1;
      ChooseBracket(1 - r.GetData(0), lower, upper);
      double t = 1;
      for (int j = 0; j < N; ++j) {
        t = (lower + upper) / 2;
        for (unsigned int i = 0; i < W.GetRow(); ++i) {
          W.SetData(i, 1, a * H.GetData(i, 0) + t * H.GetData(i, 1));
        }
        if (EllipseFit(W, 2, r) == 0) break;
        const double q = 1 - r.GetData(0);
        if (q < 0.5) upper = t;
        if (q > 0.5) lower = t;
        if (std::fabs(q - 0.5) < eps) break;
        if (j == N - 1) converged = false;
      }
      b = t;

      double sumC = 0;
      double sumD = 0;
      for (int k = 0; k < N; ++k) {
        Matrix s = LineFit(W, 2);
        const double dc = -e * s.GetData(0);
        const double dd = -e * s.GetData(1);
        sumC += dc;
        sumD += dd;
        c += dc;
        d += dd;
        if (std::fabs(dc) < eps && std::fabs(dd) < eps) break;
        for (unsigned int i = 0; i < W.GetRow(); ++i) {
          W.SetData(i, 2, c * H.GetData(i, 0) + d * H.GetData(i, 1) + e * H.GetData(i, 2));
        }
        if (k == N - 1) converged = false;
      }

      Matrix W2 = V;
      for (unsigned int i = 0; i < W2.GetRow(); ++i) {
        W2.SetData(i, 1, a * Raw(V, i, 0) + b * Raw(V, i, 1));
        W2.SetData(i, 2, c * Raw(V, i, 0) + d * Raw(V, i, 1) + 1 * Raw(V, i, 2));
      }
      if (EllipseFit(V, 1, r) == 0) {
        shown.push_back(
            ExclamationMessage(L"Ellipse fitting failed, around the Y-axis data is incorrect!"));
        fitFailed = true;
        break;
      }
      lower = 1;
      upper = 1;
      ChooseBracket(1 - r.GetData(0), lower, upper);
      for (int j = 0; j < N; ++j) {
        t = (lower + upper) / 2;
        for (unsigned int i = 0; i < W2.GetRow(); ++i) {
          W2.SetData(i, 2, c * V.GetData(i, 0) + d * V.GetData(i, 1) + t * V.GetData(i, 2));
        }
        if (EllipseFit(W2, 1, r) == 0) break;
        const double q = 1 - r.GetData(0);
        if (q < 0.5) upper = t;
        if (q > 0.5) lower = t;
        if (std::fabs(q - 0.5) < eps) break;
        if (j == N - 1) converged = false;
      }
      e = t;

      double sumA = 0;
      for (int k = 0; k < N; ++k) {
        Matrix s = LineFit(W2, 1);
        const double da = -b * s.GetData(0);
        sumA += da;
        a += da;
        if (std::fabs(da) < eps) break;
        for (unsigned int i = 0; i < W2.GetRow(); ++i) {
          W2.SetData(i, 1, a * V.GetData(i, 0) + b * V.GetData(i, 1));
        }
        if (k == N - 1) converged = false;
      }

      Correct(H, a, b, c, d, e, W);
      Correct(V, a, b, c, d, e, W2);

      if (EllipseFit(W, 2, r) == 0) break;
      x0 = (r.GetData(1) * r.GetData(3) - 2 * (1 - r.GetData(0)) * r.GetData(2)) / Denominator(r);
      y0 = (r.GetData(1) * r.GetData(2) - 2 * r.GetData(0) * r.GetData(3)) / Denominator(r);
      H = Inliers(H, W, 1, r);

      if (EllipseFit(W2, 1, r) == 0) break;
      z0 = (r.GetData(1) * r.GetData(2) - 2 * r.GetData(0) * r.GetData(3)) / Denominator(r);
      V = Inliers(V, W2, 2, r);

      if (std::fabs(sumA) < eps && std::fabs(sumC) < eps && std::fabs(sumD) < eps) break;
      if (p == N / 2 - 1) converged = false;
    }
    if (fitFailed) return 0;
    if (!converged) {
      shown.push_back(
          ExclamationMessage(L"Circulating abnormal exit calibration parameters might be wrong!"));
      return 0;
    }
    out.x0 = x0;
    out.y0 = y0;
    out.z0 = z0;
    out.a = a;
    out.b = b;
    out.c = c;
    out.d = d;
    out.e = e;
    return 1;
  }

 private:
  // Matrices of another shape are rejected by the first fit; they are read as zeros until then.
  static double Raw(const Matrix& matrix, unsigned int i, unsigned int j) {
    return j < matrix.GetCol() ? matrix.GetData(i, j) : 0.0;
  }

  static void ChooseBracket(double q, double& lower, double& upper) {
    if (std::fabs(q - 0.5) < 1e-10) {
      lower = 1;
      upper = 1;
    } else if (q < 0.5) {
      lower = 0;
      upper = 1;
    } else if (q > 0.5) {
      lower = 1;
      upper = 2;
    }
  }

  double SlopeOf(Matrix& data, unsigned int fitted, unsigned int along) {
    ++lineFits;
    Matrix design(data.GetRow(), 2);
    Matrix rightSide(data.GetRow(), 1);
    for (unsigned int i = 0; i < data.GetRow(); ++i) {
      design.SetData(i, 0, data.GetData(i, along));
      design.SetData(i, 1, 1);
      rightSide.SetData(i, 0, data.GetData(i, fitted));
    }
    Matrix solution = OverDeterminedEquationSolution(design, rightSide);
    return solution.GetData(0);
  }

  static void Correct(const Matrix& raw, double a, double b, double c, double d, double e,
                      Matrix& corrected) {
    corrected = raw;
    for (unsigned int i = 0; i < raw.GetRow(); ++i) {
      const double x = raw.GetData(i, 0);
      const double y = raw.GetData(i, 1);
      const double z = raw.GetData(i, 2);
      corrected.SetData(i, 0, x);
      corrected.SetData(i, 1, a * x + b * y);
      corrected.SetData(i, 2, c * x + d * y + e * z);
    }
  }

  static double Denominator(const Matrix& r) {
    return 4 * r.GetData(0) * (1 - r.GetData(0)) - r.GetData(1) * r.GetData(1);
  }

  static Matrix Inliers(const Matrix& raw, const Matrix& corrected, unsigned int second,
                        const Matrix& r) {
    const double A = r.GetData(0);
    const double B = r.GetData(1);
    const double C = 1 - A;
    const double D = r.GetData(2);
    const double E = r.GetData(3);
    const double F = r.GetData(4);
    std::vector<unsigned int> kept;
    for (unsigned int i = 0; i < raw.GetRow(); ++i) {
      const double u = corrected.GetData(i, 0);
      const double w = corrected.GetData(i, second);
      const double residual = A * (u * u) + B * u * w + C * (w * w) + D * u + E * w + F;
      if (std::fabs(residual) < 1000.0) kept.push_back(i);
    }
    if (kept.size() <= 20) return raw;
    Matrix result(static_cast<unsigned int>(kept.size()), 3);
    for (unsigned int i = 0; i < result.GetRow(); ++i) {
      for (unsigned int j = 0; j < 3; ++j) result.SetData(i, j, raw.GetData(kept[i], j));
    }
    return result;
  }
};

}  // namespace tiltpole_test
