// Any sequence of calls of the Kalman filter, beside a filter of plain matrices that takes what the
// headers say it takes.

#include <utility>

#include "fuzz/bytes.h"
#include "fuzz/require.h"
#include "support/literal_matrix.h"
#include "support/message_capture.h"
#include "tiltpole/estimation/CKFilter.h"

namespace {

using tiltpole::CKFilter;
using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;
using tiltpole_test::LiteralMatrix;
using tiltpole_test::Matrix;
using tiltpole_test::MessageCapture;
using tiltpole_test::SameElements;

bool HasShape(const LiteralMatrix& matrix, std::uint32_t rows, std::uint32_t cols) {
  return matrix.rows == rows && matrix.cols == cols;
}

struct PlainFilter {
  std::uint32_t n = 0;
  std::uint32_t m = 0;
  LiteralMatrix Phi, B, H, D, G, R, Q, x, P;

  void SetMatrixOrder(std::uint32_t order, std::uint32_t measurements) {
    n = order;
    m = measurements;
    Phi = B = P = LiteralMatrix(n, n);
    H = D = LiteralMatrix(m, n);
    G = LiteralMatrix(n, m);
    R = Q = LiteralMatrix(m, m);
    x = LiteralMatrix(n, 1);
  }

  LiteralMatrix Filter(const LiteralMatrix& z, const LiteralMatrix& u) {
    if (!HasShape(z, m, 1) || !HasShape(u, n, 1)) return z;
    LiteralMatrix identity(n, n);
    identity.Diagonal(1.0);
    const LiteralMatrix predicted_P = Phi * P * Phi.MatTran() + G * Q * G.MatTran();
    const LiteralMatrix S = H * predicted_P * H.MatTran() + R;
    const LiteralMatrix K = predicted_P * H.MatTran() * S.MatInv();
    const LiteralMatrix updated_P = (identity - K * H) * predicted_P;
    const LiteralMatrix predicted_x = Phi * x + B * u;
    x = predicted_x + K * (z - D * u - H * predicted_x);
    P = updated_P;
    return x;
  }
};

class Sequence {
 public:
  explicit Sequence(Bytes& bytes) : bytes_(bytes) { SetMatrixOrder(); }

  void Step() {
    switch (bytes_.Byte() % 6) {
      case 0:
        return SetMatrixOrder();
      case 1:
        return SetSystemMatrix();
      case 2:
        return SetNoise();
      case 3:
        return SetInitialData();
      case 4: {
        CKFilter copy(filter_);
        filter_ = copy;
        return;
      }
      default:
        return Filter();
    }
  }

 private:
  // Mostly the shape asked for, so that a filter comes to run.
  LiteralMatrix Any(std::uint32_t rows, std::uint32_t cols) {
    const std::uint8_t change = bytes_.Byte();
    if (change % 16 == 1) rows = (rows + 1) % 5;
    if (change % 16 == 2) cols = (cols + 1) % 5;
    LiteralMatrix matrix(rows, cols);
    for (double& element : matrix.data) element = bytes_.AnyDouble();
    return matrix;
  }

  void SetMatrixOrder() {
    const int n = bytes_.Between(1, 4);
    const int m = bytes_.Flag() ? n : bytes_.Between(1, 4);
    if (bytes_.Byte() % 16 == 1) {
      Require(filter_.SetMatrixOrder(bytes_.Between(-128, 0), m) == 1, "1");
    }
    Require(filter_.SetMatrixOrder(n, m) == 1, "an order is always taken");
    plain_.SetMatrixOrder(static_cast<std::uint32_t>(n), static_cast<std::uint32_t>(m));
  }

  void SetSystemMatrix() {
    const std::uint32_t n = plain_.n;
    const std::uint32_t m = plain_.m;
    LiteralMatrix Phi = Any(n, n), B = Any(n, n), G = Any(n, m), H = Any(m, n), D = Any(m, n);
    const bool fits = HasShape(Phi, n, n) && HasShape(B, n, n) && HasShape(G, n, m) &&
                      HasShape(H, m, n) && HasShape(D, m, n);
    Require(filter_.SetSystemMatrix(Matrix(Phi), Matrix(B), Matrix(G), Matrix(H), Matrix(D)) ==
                (fits ? 1 : 0),
            "a model is taken when its shapes fit");
    if (!fits) return;
    plain_.Phi = Phi;
    plain_.B = B;
    plain_.G = G;
    plain_.H = H;
    plain_.D = D;
  }

  void SetNoise() {
    LiteralMatrix R = Any(plain_.n, plain_.n), Q = Any(plain_.m, plain_.m);
    const bool fits = HasShape(R, plain_.n, plain_.n) && HasShape(Q, plain_.m, plain_.m);
    Require(filter_.SetNoise(Matrix(R), Matrix(Q)) == (fits ? 1 : 0),
            "noise is taken when its shapes fit");
    if (!fits) return;
    plain_.R = R;
    plain_.Q = Q;
  }

  void SetInitialData() {
    if (bytes_.Byte() % 8 == 1) {
      LiteralMatrix P = Any(plain_.n, 1);
      const bool fits = HasShape(P, plain_.n, 1);
      Require(filter_.SetInitialVariance(Matrix(P)) == (fits ? 1 : 0), "a column is taken");
      if (fits) plain_.P = P;
      return;
    }
    LiteralMatrix x = Any(plain_.n, 1), P = Any(plain_.n, plain_.n);
    const bool fits = HasShape(x, plain_.n, 1) && HasShape(P, plain_.n, plain_.n);
    Require(filter_.SetInitialData(Matrix(x), Matrix(P)) == (fits ? 1 : 0),
            "a beginning is taken when its shapes fit");
    if (!fits) return;
    plain_.x = x;
    plain_.P = P;
  }

  void Filter() {
    const LiteralMatrix z = Any(plain_.m, 1);
    const LiteralMatrix u = Any(plain_.n, 1);
    const bool fits = HasShape(z, plain_.m, 1) && HasShape(u, plain_.n, 1);
    const MessageCapture messages;
    Require(SameElements(filter_.Filter(Matrix(z), Matrix(u), bytes_.Byte()), plain_.Filter(z, u)),
            "the estimate is that of the plain writing");
    Require(messages.shown.size() == (fits ? 0U : 1U), "a message for a wrong shape alone");
  }

  Bytes& bytes_;
  CKFilter filter_;
  PlainFilter plain_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  Sequence sequence(bytes);
  for (int step = 0; step < 40 && !bytes.Empty(); ++step) sequence.Step();
  return 0;
}
