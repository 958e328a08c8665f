#include "tiltpole/estimation/CKFilter.h"

#include <gtest/gtest.h>

#include "support/message_capture.h"

namespace {

using tiltpole::CKFilter;
using tiltpole::CSZMatrix;
using tiltpole_test::ExclamationMessage;
using tiltpole_test::MessageCapture;

CSZMatrix Scalar(double value) {
  CSZMatrix matrix(1);
  matrix.SetData(0, value);
  return matrix;
}

CKFilter RandomWalk(double z0) {
  CKFilter filter;
  filter.SetMatrixOrder(1, 1);
  filter.SetSystemMatrix(Scalar(1), Scalar(1), Scalar(1), Scalar(1), Scalar(0));
  filter.SetNoise(Scalar(16), Scalar(16));
  filter.SetInitialData(Scalar(z0), Scalar(25));
  return filter;
}

TEST(KalmanFilter, TheFirstStepOfARandomWalkMovesByTheGain) {
  CKFilter filter = RandomWalk(10.0);
  const CSZMatrix x = filter.Filter(Scalar(67.0), Scalar(0.0), 0);
  EXPECT_NEAR(x.GetData(0), 10.0 + 41.0, 1e-12);
}

TEST(KalmanFilter, AMeasurementOfTheWrongSizeIsReturnedWithAMessage) {
  const MessageCapture messages;
  CKFilter filter = RandomWalk(10.0);
  CSZMatrix z(2);
  z.SetData(1, 5.0);
  const CSZMatrix x = filter.Filter(z, Scalar(0.0), 0);
  EXPECT_EQ(x.GetRow(), 2U);
  EXPECT_EQ(x.GetData(1), 5.0);
  ASSERT_EQ(messages.shown.size(), 1U);
  EXPECT_EQ(messages.shown[0], ExclamationMessage(L"Filter Failure!"));
}

}  // namespace
