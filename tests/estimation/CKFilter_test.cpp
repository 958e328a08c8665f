// The Kalman filter: its checks, its steps, and the steps beside a plain writing.

#include "tiltpole/estimation/CKFilter.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "support/literal_matrix.h"
#include "support/message_capture.h"
#include "support/rows.h"

namespace {

using tiltpole::CKFilter;
using tiltpole::CSZMatrix;
using tiltpole_test::ExclamationMessage;
using tiltpole_test::LiteralMatrix;
using tiltpole_test::Matrix;
using tiltpole_test::MessageCapture;
using tiltpole_test::Rows;
using tiltpole_test::SameElements;

CSZMatrix Identity(unsigned order) {
  CSZMatrix identity(order, order);
  identity.Diagonal(1.0);
  return identity;
}

CSZMatrix Scalar(double value) { return Rows({{value}}); }

// One number that wanders; process and measurement variance 16, initial variance 25.
CKFilter RandomWalk(double z0) {
  CKFilter filter;
  filter.SetMatrixOrder(1, 1);
  filter.SetSystemMatrix(Scalar(1), Scalar(1), Scalar(1), Scalar(1), Scalar(0));
  filter.SetNoise(Scalar(16), Scalar(16));
  filter.SetInitialData(Scalar(z0), Scalar(25));
  return filter;
}

// Position and speed, the position measured twice.
CKFilter ConstantSpeed() {
  CKFilter filter;
  filter.SetMatrixOrder(2, 2);
  filter.SetSystemMatrix(Rows({{1, 1}, {0, 1}}), CSZMatrix(2, 2), Identity(2),
                         Rows({{1, 0}, {1, 0}}), CSZMatrix(2, 2));
  filter.SetNoise(Identity(2), CSZMatrix(2, 2));
  filter.SetInitialData(CSZMatrix(2), Identity(2) * 100.0);
  return filter;
}

TEST(KalmanFilterSetters, SetMatrixOrderReturnsOne) {
  CKFilter filter;
  EXPECT_EQ(filter.SetMatrixOrder(6, 6), 1);
  EXPECT_EQ(filter.SetMatrixOrder(0, 0), 1);
  EXPECT_EQ(filter.SetMatrixOrder(-1, -1), 1);
}

TEST(KalmanFilterSetters, TheSystemTakesMatricesOfItsOrders) {
  CKFilter filter;
  filter.SetMatrixOrder(3, 2);
  const CSZMatrix nn(3, 3);
  const CSZMatrix nm(3, 2);
  const CSZMatrix mn(2, 3);
  EXPECT_EQ(filter.SetSystemMatrix(nn, nn, nm, mn, mn), 1);
}

TEST(KalmanFilterSetters, TheSystemTakesNoMatrixOfAnotherSize) {
  CKFilter filter;
  filter.SetMatrixOrder(3, 2);
  const CSZMatrix nn(3, 3);
  const CSZMatrix nm(3, 2);
  const CSZMatrix mn(2, 3);
  EXPECT_EQ(filter.SetSystemMatrix(nm, nn, nm, mn, mn), 0);
  EXPECT_EQ(filter.SetSystemMatrix(mn, nn, nm, mn, mn), 0);
  EXPECT_EQ(filter.SetSystemMatrix(nn, nm, nm, mn, mn), 0);
  EXPECT_EQ(filter.SetSystemMatrix(nn, nn, nn, mn, mn), 0);
  EXPECT_EQ(filter.SetSystemMatrix(nn, nn, mn, mn, mn), 0);
  EXPECT_EQ(filter.SetSystemMatrix(nn, nn, nm, nm, mn), 0);
  EXPECT_EQ(filter.SetSystemMatrix(nn, nn, nm, mn, nn), 0);
  EXPECT_EQ(filter.SetSystemMatrix(CSZMatrix(2, 2), nn, nm, mn, mn), 0);
}

TEST(KalmanFilterSetters, TheMeasurementNoiseMustHaveTheOrderOfTheState) {
  CKFilter filter;
  filter.SetMatrixOrder(3, 2);
  const CSZMatrix mm(2, 2);
  const CSZMatrix nn(3, 3);
  EXPECT_EQ(filter.SetNoise(mm, mm), 0);
  EXPECT_EQ(filter.SetNoise(nn, mm), 1);
}

TEST(KalmanFilterSetters, TheProcessNoiseMustHaveTheOrderOfTheMeasurement) {
  CKFilter filter;
  filter.SetMatrixOrder(3, 2);
  EXPECT_EQ(filter.SetNoise(CSZMatrix(3, 3), CSZMatrix(3, 3)), 0);
  EXPECT_EQ(filter.SetNoise(CSZMatrix(3, 3), CSZMatrix(2, 3)), 0);
  EXPECT_EQ(filter.SetNoise(CSZMatrix(3, 2), CSZMatrix(2, 2)), 0);
}

TEST(KalmanFilterSetters, InitialDataIsAColumnAndASquareMatrix) {
  CKFilter filter;
  filter.SetMatrixOrder(3, 2);
  EXPECT_EQ(filter.SetInitialData(CSZMatrix(3), CSZMatrix(3, 3)), 1);
  EXPECT_EQ(filter.SetInitialData(CSZMatrix(2), CSZMatrix(3, 3)), 0);
  EXPECT_EQ(filter.SetInitialData(CSZMatrix(1, 3), CSZMatrix(3, 3)), 0);
  EXPECT_EQ(filter.SetInitialData(CSZMatrix(3), CSZMatrix(3)), 0);
  EXPECT_EQ(filter.SetInitialData(CSZMatrix(3), CSZMatrix(2, 2)), 0);
}

TEST(KalmanFilterSetters, TheInitialVarianceIsAColumnAndNoSquareMatrix) {
  CKFilter filter;
  filter.SetMatrixOrder(3, 2);
  EXPECT_EQ(filter.SetInitialVariance(CSZMatrix(3)), 1);
  EXPECT_EQ(filter.SetInitialVariance(CSZMatrix(3, 3)), 0);
  EXPECT_EQ(filter.SetInitialVariance(CSZMatrix(1, 3)), 0);
}

TEST(KalmanFilterSetters, ANegativeOrderFitsNoMatrix) {
  CKFilter filter;
  filter.SetMatrixOrder(-1, -1);
  EXPECT_EQ(filter.SetInitialVariance(CSZMatrix(0, 1)), 0);
  EXPECT_EQ(filter.SetNoise(CSZMatrix(), CSZMatrix()), 0);
  EXPECT_EQ(filter.SetNoise(CSZMatrix(0xFFFFFFFFU, 0), CSZMatrix()), 0);
}

TEST(KalmanFilterSetters, ARefusedMatrixLeavesTheStoredOnes) {
  CKFilter filter = RandomWalk(10.0);
  CKFilter untouched = RandomWalk(10.0);
  EXPECT_EQ(filter.SetSystemMatrix(Scalar(9), Scalar(9), Scalar(9), Scalar(9), CSZMatrix(2)), 0);
  EXPECT_EQ(filter.SetNoise(Scalar(9), CSZMatrix(2)), 0);
  EXPECT_EQ(filter.SetInitialData(Scalar(9), CSZMatrix(2)), 0);
  EXPECT_EQ(filter.SetInitialVariance(CSZMatrix(2)), 0);
  EXPECT_TRUE(SameElements(filter.Filter(Scalar(12), Scalar(0), 0),
                           untouched.Filter(Scalar(12), Scalar(0), 0)));
}

TEST(KalmanFilterSetters, TakeCopiesOfTheHostsMatrices) {
  CSZMatrix x0 = Scalar(10);
  CKFilter filter = RandomWalk(0.0);
  filter.SetInitialData(x0, Scalar(25));
  x0 = 99.0;
  CKFilter expected = RandomWalk(10.0);
  EXPECT_TRUE(SameElements(filter.Filter(Scalar(12), Scalar(0), 0),
                           expected.Filter(Scalar(12), Scalar(0), 0)));
}

TEST(KalmanFilter, TheFirstStepOfARandomWalkMovesByTheGainOf41To57) {
  CKFilter filter = RandomWalk(10.0);
  const CSZMatrix x = filter.Filter(Scalar(67.0), Scalar(0.0), 0);
  ASSERT_EQ(x.GetRow(), 1U);
  EXPECT_NEAR(x.GetData(0), 10.0 + 41.0 / 57.0 * 57.0, 1e-13);
}

TEST(KalmanFilter, TheCovarianceOfARandomWalkFollowsTheScalarFormula) {
  CKFilter filter = RandomWalk(0.0);
  double covariance = 25.0;
  double x = 0.0;
  for (int step = 1; step <= 20; ++step) {
    const double z = step % 3;
    const double predicted = covariance + 16.0;
    const double gain = predicted / (predicted + 16.0);
    x += gain * (z - x);
    covariance = (1.0 - gain) * predicted;
    EXPECT_NEAR(filter.Filter(Scalar(z), Scalar(0.0), 0).GetData(0), x, 1e-14);
  }
}

TEST(KalmanFilter, FindsTheSpeedFromThePositions) {
  CKFilter filter = ConstantSpeed();
  CSZMatrix x;
  for (int time = 1; time <= 50; ++time) {
    x = filter.Filter(Rows({{3.0 * time + 7.0}, {3.0 * time + 7.0}}), CSZMatrix(2), 0);
  }
  EXPECT_NEAR(x.GetData(0), 157.0, 0.01);
  EXPECT_NEAR(x.GetData(1), 3.0, 0.001);
}

TEST(KalmanFilter, TheInputMovesTheStateAndTheMeasurement) {
  CKFilter filter;
  filter.SetMatrixOrder(1, 1);
  filter.SetSystemMatrix(Scalar(1), Scalar(2), Scalar(1), Scalar(1), Scalar(5));
  filter.SetNoise(Scalar(16), Scalar(16));
  filter.SetInitialData(Scalar(10), Scalar(25));
  // Predicted 10 + 2 * 3 = 16; measured 5 * 3 + 16 = 31 leaves no innovation.
  EXPECT_EQ(filter.Filter(Scalar(31), Scalar(3), 0).GetData(0), 16.0);
}

TEST(KalmanFilter, TheLastArgumentHasNoEffect) {
  CKFilter a = RandomWalk(10.0);
  CKFilter b = RandomWalk(10.0);
  EXPECT_TRUE(
      SameElements(a.Filter(Scalar(12), Scalar(0), 0), b.Filter(Scalar(12), Scalar(0), -7)));
}

TEST(KalmanFilter, WithoutMeasurementsTakesMatricesWithoutColumnsForThem) {
  CKFilter filter;
  filter.SetMatrixOrder(1, 0);
  EXPECT_EQ(filter.SetSystemMatrix(Scalar(1), Scalar(0), CSZMatrix(1, 0), CSZMatrix(0, 1),
                                   CSZMatrix(0, 1)),
            1);
}

TEST(KalmanFilter, OfANegativeOrderTakesNoMatrix) {
  CKFilter filter;
  filter.SetMatrixOrder(1, -1);
  EXPECT_EQ(filter.SetSystemMatrix(Scalar(1), Scalar(0), CSZMatrix(1, 0), CSZMatrix(0, 1),
                                   CSZMatrix(0, 1)),
            0);
  filter.SetMatrixOrder(-1, 1);
  EXPECT_EQ(filter.SetInitialData(CSZMatrix(0, 1), CSZMatrix(0, 0)), 0);
}

TEST(KalmanFilter, AMeasurementOfAnotherSizeComesBackWithAMessageAndChangesNothing) {
  CKFilter filter = RandomWalk(10.0);
  CKFilter untouched = RandomWalk(10.0);
  const MessageCapture messages;
  const CSZMatrix z = Rows({{1}, {2}});
  EXPECT_TRUE(SameElements(filter.Filter(z, Scalar(0), 0), z));
  EXPECT_TRUE(SameElements(filter.Filter(Rows({{1, 2}}), Scalar(0), 0), Rows({{1, 2}})));
  ASSERT_EQ(messages.shown.size(), 2U);
  EXPECT_EQ(messages.shown[0], ExclamationMessage(L"Filter Failure!"));
  EXPECT_EQ(messages.shown[1], ExclamationMessage(L"Filter Failure!"));
  EXPECT_TRUE(SameElements(filter.Filter(Scalar(12), Scalar(0), 0),
                           untouched.Filter(Scalar(12), Scalar(0), 0)));
}

TEST(KalmanFilter, AnInputOfAnotherSizeReturnsTheMeasurementWithAMessageAndChangesNothing) {
  CKFilter filter = RandomWalk(10.0);
  CKFilter untouched = RandomWalk(10.0);
  const MessageCapture messages;
  EXPECT_TRUE(SameElements(filter.Filter(Scalar(12), CSZMatrix(2), 0), Scalar(12)));
  ASSERT_EQ(messages.shown.size(), 1U);
  EXPECT_EQ(messages.shown[0], ExclamationMessage(L"Filter Failure!"));
  EXPECT_TRUE(SameElements(filter.Filter(Scalar(12), Scalar(0), 0),
                           untouched.Filter(Scalar(12), Scalar(0), 0)));
}

TEST(KalmanFilter, AStepShowsNoMessage) {
  const MessageCapture messages;
  CKFilter filter = RandomWalk(10.0);
  static_cast<void>(filter.Filter(Scalar(12), Scalar(0), 0));
  EXPECT_TRUE(messages.shown.empty());
}

TEST(KalmanFilter, AStepBeforeAnythingWasSetComesBack) {
  const MessageCapture messages;
  CKFilter filter;
  EXPECT_EQ(filter.Filter(Scalar(1), Scalar(1), 0).GetData(0), 1.0);
  EXPECT_EQ(messages.shown.size(), 1U);
  static_cast<void>(filter.Filter(CSZMatrix(0), CSZMatrix(0), 0));
  EXPECT_EQ(messages.shown.size(), 1U);
}

TEST(KalmanFilter, SettingTheOrderAgainDiscardsTheModel) {
  CKFilter filter = RandomWalk(10.0);
  filter.SetMatrixOrder(1, 1);
  filter.SetNoise(Scalar(16), Scalar(16));
  // Without a model nothing is predicted and nothing measured.
  EXPECT_EQ(filter.Filter(Scalar(12), Scalar(0), 0).GetData(0), 0.0);
}

TEST(KalmanFilter, AVarianceSetAsAColumnWorksForOneState) {
  CKFilter filter = RandomWalk(10.0);
  EXPECT_EQ(filter.SetInitialVariance(Scalar(25)), 1);
  CKFilter expected = RandomWalk(10.0);
  EXPECT_TRUE(SameElements(filter.Filter(Scalar(12), Scalar(0), 0),
                           expected.Filter(Scalar(12), Scalar(0), 0)));
}

TEST(KalmanFilter, CopiesAreIndependent) {
  CKFilter original = RandomWalk(10.0);
  CKFilter copy(original);
  CKFilter assigned;
  assigned = original;
  static_cast<void>(original.Filter(Scalar(500), Scalar(0), 0));
  const CSZMatrix x = copy.Filter(Scalar(12), Scalar(0), 0);
  CKFilter expected = RandomWalk(10.0);
  EXPECT_TRUE(SameElements(x, expected.Filter(Scalar(12), Scalar(0), 0)));
  EXPECT_TRUE(SameElements(x, assigned.Filter(Scalar(12), Scalar(0), 0)));
}

// The step as its procedure reads, over plain matrices.
struct PlainFilter {
  std::uint32_t order = 0;
  LiteralMatrix Phi, B, H, D, G, R, Q, x, P;

  LiteralMatrix Filter(const LiteralMatrix& z, const LiteralMatrix& u) {
    LiteralMatrix identity(order, order);
    identity.Diagonal(1.0);
    const LiteralMatrix predicted_P = Phi * P * Phi.MatTran() + G * Q * G.MatTran();
    const LiteralMatrix S = H * predicted_P * H.MatTran() + R;
    const LiteralMatrix K = predicted_P * H.MatTran() * S.MatInv();
    const LiteralMatrix updated_P = (identity - K * H) * predicted_P;
    const LiteralMatrix predicted_x = Phi * x + B * u;
    const LiteralMatrix updated_x = predicted_x + K * (z - D * u - H * predicted_x);
    x = updated_x;
    P = updated_P;
    return x;
  }
};

LiteralMatrix Random(std::mt19937& random, std::uint32_t rows, std::uint32_t cols, double scale) {
  std::uniform_real_distribution<double> element(-scale, scale);
  LiteralMatrix matrix(rows, cols);
  for (double& value : matrix.data) value = element(random);
  return matrix;
}

TEST(KalmanFilterAndItsPlainWriting, AgreeBitForBitOverManySteps) {
  EXPECT_TRUE(rc::check([](unsigned seed, bool singular) {
    const std::uint32_t n = *rc::gen::inRange(1U, 8U);
    std::mt19937 random(seed);
    PlainFilter plain;
    plain.order = n;
    plain.Phi = Random(random, n, n, 1.0);
    plain.B = Random(random, n, n, 1.0);
    plain.H = Random(random, n, n, singular ? 1e-12 : 1.0);
    plain.D = Random(random, n, n, 1.0);
    plain.G = Random(random, n, n, 1.0);
    plain.R = Random(random, n, n, singular ? 0.0 : 16.0);
    plain.Q = Random(random, n, n, 16.0);
    plain.x = Random(random, n, 1, 100.0);
    plain.P = Random(random, n, n, 25.0);
    CKFilter filter;
    filter.SetMatrixOrder(static_cast<int>(n), static_cast<int>(n));
    RC_ASSERT(filter.SetSystemMatrix(Matrix(plain.Phi), Matrix(plain.B), Matrix(plain.G),
                                     Matrix(plain.H), Matrix(plain.D)) == 1);
    RC_ASSERT(filter.SetNoise(Matrix(plain.R), Matrix(plain.Q)) == 1);
    RC_ASSERT(filter.SetInitialData(Matrix(plain.x), Matrix(plain.P)) == 1);
    for (int step = 0; step < 10; ++step) {
      const LiteralMatrix z = Random(random, n, 1, 100.0);
      const LiteralMatrix u = Random(random, n, 1, 1.0);
      RC_ASSERT(SameElements(filter.Filter(Matrix(z), Matrix(u), 0), plain.Filter(z, u)));
    }
  }));
}

TEST(KalmanFilterAndItsPlainWriting, AgreeWhereSizesInsideTheModelDoNotMatch) {
  EXPECT_TRUE(rc::check([](unsigned seed) {
    const std::uint32_t n = *rc::gen::inRange(1U, 5U);
    const std::uint32_t m = *rc::gen::inRange(1U, 5U);
    std::mt19937 random(seed);
    PlainFilter plain;
    plain.order = n;
    plain.Phi = Random(random, n, n, 1.0);
    plain.B = Random(random, n, n, 1.0);
    plain.H = Random(random, m, n, 1.0);
    plain.D = Random(random, m, n, 1.0);
    plain.G = Random(random, n, m, 1.0);
    plain.R = Random(random, n, n, 16.0);
    plain.Q = Random(random, m, m, 16.0);
    plain.x = Random(random, n, 1, 100.0);
    plain.P = Random(random, n, 1, 25.0);
    CKFilter filter;
    filter.SetMatrixOrder(static_cast<int>(n), static_cast<int>(m));
    filter.SetSystemMatrix(Matrix(plain.Phi), Matrix(plain.B), Matrix(plain.G), Matrix(plain.H),
                           Matrix(plain.D));
    filter.SetNoise(Matrix(plain.R), Matrix(plain.Q));
    const LiteralMatrix square = Random(random, n, n, 25.0);
    filter.SetInitialData(Matrix(plain.x), Matrix(square));
    if (*rc::gen::arbitrary<bool>()) {
      filter.SetInitialVariance(Matrix(plain.P));
    } else {
      plain.P = square;
    }
    for (int step = 0; step < 3; ++step) {
      const LiteralMatrix z = Random(random, m, 1, 100.0);
      const LiteralMatrix u = Random(random, n, 1, 1.0);
      RC_ASSERT(SameElements(filter.Filter(Matrix(z), Matrix(u), 0), plain.Filter(z, u)));
    }
  }));
}

}  // namespace
