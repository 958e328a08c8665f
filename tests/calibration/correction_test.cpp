// The iterative fit of one magnetometer's correction.

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/literal_calibration.h"
#include "calibration/matrices.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "support/message_capture.h"

namespace tiltpole_test {
namespace {

using tiltpole::CSZMatrix;
using tiltpole::Incline_MagneticCorrectParameter;

const ShownMessage kRunOut =
    ExclamationMessage(L"Circulating abnormal exit calibration parameters might be wrong!");
const ShownMessage kHorizontalFailed =
    ExclamationMessage(L"Ellipse fitting failed, around the Z-axis data is incorrect!");
const ShownMessage kVerticalFailed =
    ExclamationMessage(L"Ellipse fitting failed, around the Y-axis data is incorrect!");
using Shown = std::vector<ShownMessage>;

// Turns of a sensor without noise: horizontal field 300, vertical 400 counts.
Turns CleanTurns(const Sensor& sensor, int count) {
  Random random(1);
  return {TurnAbout(2, count, 300, -400, sensor, random),
          TurnAbout(1, count, 500, 20, sensor, random)};
}

Sensor SensorScaledInY(double scale) {
  Sensor sensor;
  sensor.matrix[1][1] = scale;
  return sensor;
}

TEST(CorrectionFit, AnIdealSensorGivesItsExactParametersInTheFirstPass) {
  const CSZMatrix H = ExactCircle(0, 1, 0, 0, 8);
  const CSZMatrix V = ExactCircle(0, 2, 0, 0, 4);
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(H, V, out), 1);
  EXPECT_EQ(out.a, 0.0);
  EXPECT_EQ(out.b, 1.0);
  EXPECT_EQ(out.c, 0.0);
  EXPECT_EQ(out.d, 0.0);
  EXPECT_EQ(out.e, 1.0);
  EXPECT_EQ(out.x0, 0.0);
  EXPECT_EQ(out.y0, 0.0);
  EXPECT_EQ(out.z0, 0.0);
  EXPECT_EQ(LiteralMagCorrPara(H, V).passes, 1);
}

TEST(CorrectionFit, TheCentresAreXAndYOfTheHorizontalAndZOfTheVerticalTurn) {
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(
      AdjustAccess().MagCorrPara(ExactCircle(0, 1, 30, -20, 8), ExactCircle(0, 2, 7, 50, 4), out),
      1);
  EXPECT_NEAR(out.a, 0.0, 1e-12);
  EXPECT_EQ(out.b, 1.0);
  EXPECT_EQ(out.e, 1.0);
  EXPECT_NEAR(out.x0, 30.0, 1e-8);
  EXPECT_NEAR(out.y0, -20.0, 1e-8);
  EXPECT_NEAR(out.z0, 50.0, 1e-8);
}

TEST(CorrectionFit, AYAxisThatReadsFourFifthsGetsAScaleOfOneAndAQuarter) {
  const Turns turns = CleanTurns(SensorScaledInY(0.8), 36);
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(MatrixOf(turns.horizontal), MatrixOf(turns.vertical), out),
            1);
  EXPECT_NEAR(out.b, 1.25, 1e-9);
  EXPECT_NEAR(out.e, 1.0, 1e-9);
}

TEST(CorrectionFit, ALowerTriangularSensorIsRecoveredWhole) {
  Sensor sensor;
  sensor.matrix = {{{1.1, 0, 0}, {0.05, 0.9, 0}, {-0.08, 0.06, 1.3}}};
  sensor.offset = {120, -70, 45};
  const Turns turns = CleanTurns(sensor, 72);
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(MatrixOf(turns.horizontal), MatrixOf(turns.vertical), out),
            1);
  // The inverse of the matrix above, with x unscaled.
  EXPECT_NEAR(out.b, 1.1 / 0.9, 1e-8);
  EXPECT_NEAR(out.a, -0.05 / 0.9, 1e-8);
  EXPECT_NEAR(out.e, 1.1 / 1.3, 1e-8);
  EXPECT_NEAR(out.d, -out.e * 0.06 / 0.9, 1e-8);
  EXPECT_NEAR(out.c, (out.e * 0.08 - out.d * 0.05) / 1.1, 1e-8);
  EXPECT_NEAR(out.x0, 120.0, 1e-5);
  EXPECT_NEAR(out.y0, out.a * 120 + out.b * -70, 1e-5);
  EXPECT_NEAR(out.z0, out.c * 120 + out.d * -70 + out.e * 45, 1e-5);
}

TEST(CorrectionFit, AScaleJustBelowTwoIsReached) {
  const Turns turns = CleanTurns(SensorScaledInY(1 / 1.95), 36);
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(MatrixOf(turns.horizontal), MatrixOf(turns.vertical), out),
            1);
  EXPECT_NEAR(out.b, 1.95, 1e-8);
}

TEST(CorrectionFit, AScaleBeyondTwoCannotBeReached) {
  const MessageCapture messages;
  const Turns turns = CleanTurns(SensorScaledInY(1 / 2.4), 12);
  const CSZMatrix H = MatrixOf(turns.horizontal);
  const CSZMatrix V = MatrixOf(turns.vertical);
  Incline_MagneticCorrectParameter out;
  out.x0 = 5.0;
  EXPECT_EQ(AdjustAccess().MagCorrPara(H, V, out), 0);
  EXPECT_EQ(messages.shown, Shown{kRunOut});
  EXPECT_EQ(out.x0, 5.0);
  EXPECT_EQ(out.b, 1.0);
  EXPECT_EQ(LiteralMagCorrPara(H, V).shown, Shown{kRunOut});
}

TEST(CorrectionFit, RawReadingsThatAreRoundHoldEAtOneAlthoughTheCorrectedOnesAreNot) {
  const MessageCapture messages;
  // Over the horizontal turn z falls with x, so c = 0.4; over the vertical one it does not.
  CSZMatrix H = ExactCircle(0, 1, 0, 0, 8);
  for (unsigned int i = 0; i < H.GetRow(); ++i) H.SetData(i, 2, -0.4 * H.GetData(i, 0));
  const CSZMatrix V = ExactCircle(0, 2, 0, 0, 4);
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(H, V, out), 0);
  EXPECT_EQ(messages.shown, Shown{kRunOut});
  EXPECT_EQ(LiteralMagCorrPara(H, V).shown, Shown{kRunOut});
}

// A circle of radius 100 about (10, 20) with two readings off by 25 counts. The slope of z sees to
// it that there is a second pass: outliers are left out only from there on.
CSZMatrix CircleWithTwoOutliers(unsigned int count) {
  CSZMatrix H(count, 3);
  for (unsigned int i = 0; i < count; ++i) {
    const double angle = 2 * 3.14159265358979323846 * i / count;
    const double radius = i == 0 || i == 5 ? 125 : 100;
    H.SetData(i, 0, 10 + radius * std::cos(angle));
    H.SetData(i, 1, 20 + radius * std::sin(angle));
    H.SetData(i, 2, 0.1 * H.GetData(i, 0));
  }
  return H;
}

CSZMatrix VerticalTurnWithThatSlope() {
  Sensor sensor;
  sensor.matrix[2][0] = 0.1;
  return MatrixOf(CleanTurns(sensor, 36).vertical);
}

TEST(CorrectionFit, OutliersAreLeftOutWhileMoreThanTwentyReadingsRemain) {
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(CircleWithTwoOutliers(23), VerticalTurnWithThatSlope(), out),
            1);
  EXPECT_NEAR(out.x0, 10.0, 1e-6);
  EXPECT_NEAR(out.y0, 20.0, 1e-6);
}

TEST(CorrectionFit, OutliersStayWhereOnlyTwentyReadingsWouldRemain) {
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(CircleWithTwoOutliers(22), VerticalTurnWithThatSlope(), out),
            1);
  EXPECT_GT(std::fabs(out.x0 - 10.0), 0.5);
}

TEST(CorrectionFit, OutliersOfAFitThatRestsAtOnceAreNotLeftOut) {
  CSZMatrix H = CircleWithTwoOutliers(23);
  for (unsigned int i = 0; i < H.GetRow(); ++i) H.SetData(i, 2, 0.0);
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(H, ExactCircle(0, 2, 0, 0, 4), out), 1);
  EXPECT_GT(std::fabs(out.x0 - 10.0), 0.5);
}

TEST(CorrectionFit, TooFewHorizontalReadingsAreToldTwice) {
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(CSZMatrix(4, 3), ExactCircle(0, 2, 0, 0, 4), out), 0);
  EXPECT_EQ(messages.shown,
            (Shown{StopMessage(L"The points less than 5, could not fit!"), kHorizontalFailed}));
}

TEST(CorrectionFit, TooFewVerticalReadingsAreToldTwice) {
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(ExactCircle(0, 1, 0, 0, 4), CSZMatrix(4, 3), out), 0);
  EXPECT_EQ(messages.shown,
            (Shown{StopMessage(L"The points less than 5, could not fit!"), kVerticalFailed}));
}

TEST(CorrectionFit, TwoColumnsAreToldForEitherTurn) {
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(CSZMatrix(12, 2), CSZMatrix(12, 2), out), 0);
  EXPECT_EQ(AdjustAccess().MagCorrPara(ExactCircle(0, 1, 0, 0, 4), CSZMatrix(12, 2), out), 0);
  EXPECT_EQ(messages.shown,
            (Shown{StopMessage(L"The data array must be three!"), kHorizontalFailed,
                   StopMessage(L"The data array must be three!"), kVerticalFailed}));
}

TEST(CorrectionFit, AHorizontalHyperbolaIsToldWithoutTheFitsMessage) {
  const MessageCapture messages;
  CSZMatrix H(12, 3);
  for (unsigned int i = 0; i < 12; ++i) {
    H.SetData(i, 0, i + 1.0);
    H.SetData(i, 1, 100.0 / (i + 1.0));
  }
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(H, ExactCircle(0, 2, 0, 0, 4), out), 0);
  EXPECT_EQ(messages.shown, Shown{kHorizontalFailed});
}

TEST(CorrectionFit, AVerticalHyperbolaIsToldWithoutTheFitsMessage) {
  const MessageCapture messages;
  CSZMatrix V(12, 3);
  for (unsigned int i = 0; i < 12; ++i) {
    V.SetData(i, 0, i + 1.0);
    V.SetData(i, 2, 100.0 / (i + 1.0));
  }
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(ExactCircle(0, 1, 0, 0, 4), V, out), 0);
  EXPECT_EQ(messages.shown, Shown{kVerticalFailed});
}

// The literal writing takes thousands of passes' worth of fits for each of these; few readings keep
// that within a test's time.
TEST(CorrectionFit, OneReadingThatIsNotANumberEndsInCirculating) {
  Turns turns = CleanTurns(SensorScaledInY(0.9), 7);
  turns.horizontal[3][1] = std::numeric_limits<double>::quiet_NaN();
  const MessageCapture messages;
  const CSZMatrix H = MatrixOf(turns.horizontal);
  const CSZMatrix V = MatrixOf(turns.vertical);
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(H, V, out), 0);
  EXPECT_EQ(messages.shown, Shown{kRunOut});
  // Under the full cap these are three million fits.
  const int cap = 200;
  const CorrectionOutcome literal = LiteralMagCorrPara(H, V, cap);
  EXPECT_EQ(literal.result, 0);
  EXPECT_EQ(literal.shown, Shown{kRunOut});
  EXPECT_EQ(literal.passes, cap);
}

TEST(CorrectionFit, AnInfiniteReadingIsJudgedAsByTheLiteralWriting) {
  for (const std::size_t axis : {0U, 1U, 2U}) {
    Turns turns = CleanTurns(SensorScaledInY(0.9), 6);
    turns.vertical[2][axis] = -std::numeric_limits<double>::infinity();
    const CSZMatrix H = MatrixOf(turns.horizontal);
    const CSZMatrix V = MatrixOf(turns.vertical);
    const MessageCapture messages;
    Incline_MagneticCorrectParameter out;
    const int result = AdjustAccess().MagCorrPara(H, V, out);
    const CorrectionOutcome literal = LiteralMagCorrPara(H, V);
    EXPECT_EQ(result, literal.result);
    EXPECT_EQ(messages.shown, literal.shown);
    EXPECT_TRUE(SameBits(out, literal.par));
  }
}

}  // namespace
}  // namespace tiltpole_test
