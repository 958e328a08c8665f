// The library's matrix beside the plain writing: the same bits, flags and cursors for any input.

#include <cmath>
#include <iterator>
#include <limits>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "support/literal_matrix.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;
using tiltpole_test::LiteralMatrix;
using tiltpole_test::Matrix;
using tiltpole_test::SameBits;
using tiltpole_test::SameElements;
using tiltpole_test::SameState;

// What elements a random matrix has.
enum class Kind {
  Ordinary,      // between -1 and 1 times a scale
  SmallNumbers,  // many ties between the candidates for a pivot, many singular matrices
  WideRange,     // scales that differ by element
  WithSpecials,  // some infinities, not-a-numbers, zeros of both signs, subnormals
  Singular,      // one row is a multiple of another
};

double Special(std::mt19937& random) {
  constexpr double kSpecials[] = {0.0,
                                  -0.0,
                                  std::numeric_limits<double>::infinity(),
                                  -std::numeric_limits<double>::infinity(),
                                  std::numeric_limits<double>::quiet_NaN(),
                                  std::numeric_limits<double>::max(),
                                  std::numeric_limits<double>::denorm_min(),
                                  1.0};
  return kSpecials[random() % std::size(kSpecials)];
}

LiteralMatrix RandomMatrix(std::uint32_t rows, std::uint32_t cols, Kind kind, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  const double scale = std::pow(10.0, std::round(20.0 * unit(random)));
  LiteralMatrix matrix(rows, cols);
  for (double& element : matrix.data) {
    element = scale * unit(random);
    if (kind == Kind::SmallNumbers) element = static_cast<double>(random() % 5) - 2.0;
    if (kind == Kind::WideRange) element *= std::pow(10.0, std::round(30.0 * unit(random)));
    if (kind == Kind::WithSpecials && random() % 8 == 0) element = Special(random);
  }
  if (kind == Kind::Singular && rows > 1) {
    for (std::uint32_t j = 0; j < cols; ++j) matrix.At(rows - 1, j) = 2.0 * matrix.At(0, j);
  }
  return matrix;
}

LiteralMatrix AnyMatrix(std::uint32_t rows, std::uint32_t cols) {
  const auto kind = *rc::gen::element(Kind::Ordinary, Kind::SmallNumbers, Kind::WideRange,
                                      Kind::WithSpecials, Kind::Singular);
  return RandomMatrix(rows, cols, kind, *rc::gen::arbitrary<unsigned>());
}

std::uint32_t Count(std::uint32_t least, std::uint32_t most) {
  return *rc::gen::inRange<std::uint32_t>(least, most + 1);
}

// The same matrix twice, with the same status and cursors to start from.
struct Twins {
  explicit Twins(const LiteralMatrix& start) : plain(start), library(Matrix(start)) {
    plain.i = library.m_i = 101;
    plain.j = library.m_j = 102;
    plain.ok = library.m_bOK = 103;
  }
  bool Same() const { return SameState(library, plain); }

  LiteralMatrix plain;
  CSZMatrix library;
};

TEST(MatrixAndItsPlainWriting, AgreeOnSumsAndDifferencesMatchingOrNot) {
  EXPECT_TRUE(rc::check([] {
    Twins a(AnyMatrix(Count(0, 3), Count(0, 3)));
    Twins b(AnyMatrix(Count(0, 3), Count(0, 3)));
    RC_ASSERT(SameElements(a.library + b.library, a.plain + b.plain));
    RC_ASSERT(a.Same() && b.Same());
    RC_ASSERT(SameElements(a.library - b.library, a.plain - b.plain));
    RC_ASSERT(a.Same() && b.Same());
    RC_ASSERT((a.library += b.library) == (a.plain += b.plain));
    RC_ASSERT(a.Same() && b.Same());
    RC_ASSERT((a.library -= b.library) == (a.plain -= b.plain));
    RC_ASSERT(a.Same() && b.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnArithmeticWithNumbers) {
  EXPECT_TRUE(rc::check([](double s) {
    Twins a(AnyMatrix(Count(0, 5), Count(0, 5)));
    RC_ASSERT(SameElements(a.library + s, a.plain + s) && a.Same());
    RC_ASSERT(SameElements(a.library - s, a.plain - s) && a.Same());
    RC_ASSERT(SameElements(a.library * s, a.plain * s) && a.Same());
    RC_ASSERT((a.library += s) == (a.plain += s) && a.Same());
    RC_ASSERT((a.library -= s) == (a.plain -= s) && a.Same());
    a.library = s;
    a.plain.Fill(s);
    RC_ASSERT(a.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnProductsOfAnyShape) {
  EXPECT_TRUE(rc::check([] {
    const std::uint32_t depth = Count(0, 13);
    const Twins a(AnyMatrix(Count(0, 13), depth));
    const Twins b(AnyMatrix(depth, Count(0, 13)));
    RC_ASSERT(SameElements(a.library * b.library, a.plain * b.plain));
    RC_ASSERT(a.Same() && b.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnProductsMatchingOrNot) {
  EXPECT_TRUE(rc::check([] {
    const Twins a(AnyMatrix(Count(0, 3), Count(0, 3)));
    const Twins b(AnyMatrix(Count(0, 3), Count(0, 3)));
    RC_ASSERT(SameElements(a.library * b.library, a.plain * b.plain));
    RC_ASSERT(a.Same() && b.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnAssignments) {
  EXPECT_TRUE(rc::check([] {
    Twins a(AnyMatrix(Count(0, 3), Count(0, 3)));
    const Twins b(AnyMatrix(Count(0, 3), Count(0, 3)));
    a.library = b.library;
    a.plain = b.plain;
    RC_ASSERT(a.Same() && b.Same());
    const CSZMatrix copy(b.library);
    const LiteralMatrix plain_copy(b.plain);
    RC_ASSERT(SameElements(copy, plain_copy) && copy.m_bOK == plain_copy.ok);
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnDiagonalSymmetryAndTrace) {
  EXPECT_TRUE(rc::check([](double v) {
    const std::uint32_t rows = Count(0, 5);
    const std::uint32_t cols = *rc::gen::arbitrary<bool>() ? rows : Count(0, 5);
    Twins a(AnyMatrix(rows, cols));
    RC_ASSERT(SameBits(a.library.Trace(), a.plain.Trace()) && a.Same());
    RC_ASSERT(SameBits(a.library.Summation(), a.plain.Trace()) && a.Same());
    RC_ASSERT(a.library.Symmetry() == a.plain.Symmetry() && a.Same());
    RC_ASSERT(a.library.Diagonal(v) == a.plain.Diagonal(v) && a.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnSlicesInsideAndOutside) {
  EXPECT_TRUE(rc::check([] {
    const Twins a(AnyMatrix(Count(0, 5), Count(0, 5)));
    const int r0 = *rc::gen::inRange(-3, 8);
    const int c0 = *rc::gen::inRange(-3, 8);
    const int r1 = *rc::gen::inRange(r0 - 1, 9);
    const int c1 = *rc::gen::inRange(c0 - 1, 9);
    RC_ASSERT(SameElements(a.library.Slice(r0, c0, r1, c1), a.plain.Slice(r0, c0, r1, c1)));
    RC_ASSERT(a.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnTransposes) {
  EXPECT_TRUE(rc::check([] {
    const Twins a(AnyMatrix(Count(0, 6), Count(0, 6)));
    RC_ASSERT(SameElements(a.library.T(), a.plain.MatTran()) && a.Same());
    RC_ASSERT(SameElements(a.library.MatTran(), a.plain.MatTran()) && a.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnInverses) {
  EXPECT_TRUE(rc::check([] {
    const std::uint32_t order = Count(1, 12);
    const Twins a(AnyMatrix(order, order));
    const LiteralMatrix inverse = a.plain.MatInv();
    RC_CLASSIFY(inverse.rows == 0, "singular");
    RC_ASSERT(SameElements(a.library.MatInv(), inverse) && a.Same());
    RC_ASSERT(SameElements(~a.library, inverse) && a.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnInversesOfEveryOrderAndKind) {
  for (unsigned seed = 0; seed < 20; ++seed) {
    for (std::uint32_t order = 1; order <= 12; ++order) {
      for (const Kind kind : {Kind::Ordinary, Kind::SmallNumbers, Kind::WideRange,
                              Kind::WithSpecials, Kind::Singular}) {
        const LiteralMatrix plain = RandomMatrix(order, order, kind, seed);
        ASSERT_TRUE(SameElements(Matrix(plain).MatInv(), plain.MatInv())) << plain;
      }
    }
  }
}

TEST(MatrixAndItsPlainWriting, AgreeOnInversesBeyondTheOrderThatNeedsNoAllocation) {
  for (const std::uint32_t order : {31U, 32U, 33U, 45U}) {
    for (const Kind kind : {Kind::Ordinary, Kind::SmallNumbers, Kind::WithSpecials}) {
      const Twins a(RandomMatrix(order, order, kind, order));
      EXPECT_TRUE(SameElements(a.library.MatInv(), a.plain.MatInv())) << order;
    }
  }
}

TEST(MatrixAndItsPlainWriting, AgreeOnCholeskyInversesAlsoOfUnsuitableMatrices) {
  EXPECT_TRUE(rc::check([] {
    const std::uint32_t order = Count(0, 8);
    LiteralMatrix start = AnyMatrix(order, order);
    if (*rc::gen::arbitrary<bool>()) start = start.MatTran() * start;
    const Twins a(start);
    RC_ASSERT(SameElements(a.library.Reverse(), a.plain.Reverse()) && a.Same());
  }));
}

TEST(MatrixAndItsPlainWriting, AgreeOnCholeskyFactorsAlsoOfUnsuitableMatrices) {
  EXPECT_TRUE(rc::check([] {
    const std::uint32_t order = Count(0, 8);
    LiteralMatrix start = AnyMatrix(order, order);
    if (*rc::gen::arbitrary<bool>()) start = start.MatTran() * start;
    const Twins a(start);
    int ok = 7;
    int plain_ok = 8;
    RC_ASSERT(SameElements(a.library.matChole(&ok), a.plain.matChole(&plain_ok)) && a.Same());
    RC_ASSERT(ok == plain_ok);
  }));
}

LiteralMatrix WellConditioned(std::uint32_t order) {
  LiteralMatrix matrix =
      RandomMatrix(order, order, Kind::Ordinary, *rc::gen::arbitrary<unsigned>());
  double largest = 0.0;
  for (const double element : matrix.data) largest = std::fmax(largest, std::fabs(element));
  for (double& element : matrix.data) element /= largest;
  for (std::uint32_t d = 0; d < order; ++d) matrix.At(d, d) += 2.0 * order;
  return matrix;
}

TEST(MatrixInverseProperty, TheProductWithTheInverseIsTheIdentity) {
  EXPECT_TRUE(rc::check([] {
    const std::uint32_t order = Count(1, 12);
    const CSZMatrix matrix = Matrix(WellConditioned(order));
    const CSZMatrix product = matrix * matrix.MatInv();
    for (std::uint32_t i = 0; i < order; ++i) {
      for (std::uint32_t j = 0; j < order; ++j) {
        RC_ASSERT(std::fabs(product.GetData(i, j) - (i == j ? 1.0 : 0.0)) < 1e-13);
      }
    }
  }));
}

TEST(CholeskyFactorProperty, TheFactorTimesItsTransposeIsTheMatrix) {
  EXPECT_TRUE(rc::check([] {
    const std::uint32_t order = Count(1, 8);
    CSZMatrix matrix = Matrix(WellConditioned(order));
    matrix = matrix * matrix.T();
    int ok = 0;
    const CSZMatrix lower = matrix.matChole(&ok);
    RC_ASSERT(ok == 1);
    const CSZMatrix product = lower * lower.T();
    for (std::uint32_t i = 0; i < order; ++i) {
      for (std::uint32_t j = 0; j < order; ++j) {
        RC_ASSERT(std::fabs(product.GetData(i, j) - matrix.GetData(i, j)) < 1e-10);
      }
      for (std::uint32_t j = i + 1; j < order; ++j) {
        RC_ASSERT(lower.GetData(i, j) == 0.0);
      }
    }
  }));
}

}  // namespace
