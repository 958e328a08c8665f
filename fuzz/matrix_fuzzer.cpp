// Any sequence of operations on four matrices, each beside its plain writing.

#include <array>
#include <utility>

#include "fuzz/bytes.h"
#include "fuzz/require.h"
#include "support/literal_matrix.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;
using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;
using tiltpole_test::LiteralMatrix;
using tiltpole_test::Matrix;
using tiltpole_test::SameBits;
using tiltpole_test::SameElements;
using tiltpole_test::SameState;

constexpr std::uint32_t kMostRows = 40;

struct Both {
  CSZMatrix library;
  LiteralMatrix plain;
};

LiteralMatrix AnyMatrix(Bytes& bytes) {
  const auto rows = static_cast<std::uint32_t>(bytes.Between(0, 7));
  const auto cols = bytes.Flag() ? rows : static_cast<std::uint32_t>(bytes.Between(0, 7));
  LiteralMatrix matrix(rows, cols);
  for (double& element : matrix.data) element = bytes.AnyDouble();
  return matrix;
}

class Sequence {
 public:
  explicit Sequence(Bytes& bytes) : bytes_(bytes) {}

  void Step() {
    Both& a = Any();
    Both& b = Any();
    a.plain.i = a.library.m_i = 101;
    a.plain.j = a.library.m_j = 102;
    a.plain.ok = a.library.m_bOK = 103;
    b.plain.i = b.library.m_i = 101;
    b.plain.j = b.library.m_j = 102;
    b.plain.ok = b.library.m_bOK = 103;
    Operate(a, b);
    Require(SameState(a.library, a.plain), "the left operand is as the plain writing leaves it");
    Require(SameState(b.library, b.plain), "the right operand is as the plain writing leaves it");
  }

 private:
  Both& Any() { return matrices_[bytes_.Byte() % matrices_.size()]; }

  void Keep(CSZMatrix library, const LiteralMatrix& plain) {
    Require(SameElements(library, plain), "the result is that of the plain writing");
    if (plain.rows > kMostRows || plain.cols > kMostRows) return;
    kept_.library = std::move(library);
    kept_.plain = plain;
  }

  void Operate(Both& a, Both& b);
  void Slice(const Both& a);
  void Invert(const Both& a);
  void TakeKept(Both& a);

  Bytes& bytes_;
  std::array<Both, 4> matrices_;
  Both kept_;
};

void Sequence::Slice(const Both& a) {
  const int r0 = bytes_.Flag() ? bytes_.Between(-3, 8) : bytes_.AnyInt() / 2;
  const int c0 = bytes_.Flag() ? bytes_.Between(-3, 8) : bytes_.AnyInt() / 2;
  const int r1 = r0 + bytes_.Between(-1, 9);
  const int c1 = c0 + bytes_.Between(-1, 9);
  Keep(a.library.Slice(r0, c0, r1, c1), a.plain.Slice(r0, c0, r1, c1));
}

void Sequence::Invert(const Both& a) {
  switch (bytes_.Byte() % 4) {
    case 0:
      return Keep(a.library.MatInv(), a.plain.MatInv());
    case 1:
      return Keep(~a.library, a.plain.MatInv());
    case 2:
      return Keep(a.library.Reverse(), a.plain.Reverse());
    default:
      break;
  }
  // A matrix that is not square would end the process.
  if (a.plain.rows != a.plain.cols) return;
  int ok = 7;
  int plain_ok = 8;
  Keep(a.library.matChole(&ok), a.plain.matChole(&plain_ok));
  Require(ok == plain_ok, "both find the matrix positive definite or not");
}

// What was computed last becomes an operand, in one of the ways of getting a matrix.
void Sequence::TakeKept(Both& a) {
  a = Both{Matrix(kept_.plain), kept_.plain};
  a.plain.i = a.library.m_i = 101;
  a.plain.j = a.library.m_j = 102;
  a.plain.ok = a.library.m_bOK = 103;
}

void Sequence::Operate(Both& a, Both& b) {
  const double s = bytes_.AnyDouble();
  switch (bytes_.Byte() % 20) {
    case 0:
      kept_.plain = AnyMatrix(bytes_);
      return TakeKept(a);
    case 1:
      return TakeKept(a);
    case 2:
      return Keep(a.library + b.library, a.plain + b.plain);
    case 3:
      return Keep(a.library - b.library, a.plain - b.plain);
    case 4:
      return Keep(a.library * b.library, a.plain * b.plain);
    case 5:
      return Keep(a.library + s, a.plain + s);
    case 6:
      return Keep(a.library - s, a.plain - s);
    case 7:
      return Keep(a.library * s, a.plain * s);
    case 8:
      return Require((a.library += b.library) == (a.plain += b.plain), "the same result of +=");
    case 9:
      return Require((a.library -= b.library) == (a.plain -= b.plain), "the same result of -=");
    case 10:
      return Require((a.library += s) == (a.plain += s), "the same result of += a number");
    case 11:
      return Require((a.library -= s) == (a.plain -= s), "the same result of -= a number");
    case 12:
      return Require(a.library.Diagonal(s) == a.plain.Diagonal(s), "the same result of Diagonal");
    case 13:
      return Require(a.library.Symmetry() == a.plain.Symmetry(), "the same result of Symmetry");
    case 14:
      return Require(SameBits(a.library.Trace(), a.plain.Trace()), "the same trace");
    case 15:
      return Slice(a);
    case 16:
      return Keep(a.library.T(), a.plain.MatTran());
    case 17:
      a.library = b.library;
      a.plain = b.plain;
      return;
    case 18: {
      const auto row = static_cast<unsigned int>(bytes_.AnyInt());
      const auto col = static_cast<unsigned int>(bytes_.AnyInt());
      const bool inside = row < a.plain.rows && col < a.plain.cols;
      Require(a.library.SetData(row, col, s) == (inside ? 1 : 0), "only places inside are set");
      if (inside) a.plain.At(row, col) = s;
      return;
    }
    default:
      return Invert(a);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Bytes bytes(data, size);
  Sequence sequence(bytes);
  for (int step = 0; step < 60 && !bytes.Empty(); ++step) sequence.Step();
  return 0;
}
