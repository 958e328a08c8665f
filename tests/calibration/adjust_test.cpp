// The calibration of both magnetometers.

#include <cmath>

#include <gtest/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/matrices.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "support/message_capture.h"

namespace tiltpole_test {
namespace {

using tiltpole::CInclineSensor_MagneticAdjust;
using tiltpole::CSZMatrix;
using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::Incline_MagneticTranslationParameter;
using tiltpole::PoseSensorData;
using Shown = std::vector<ShownMessage>;

void Fill(CInclineSensor_MagneticAdjust& adjust, const Session& session) {
  for (const PoseSensorData& sample : session.horizontal) adjust.Horizontal_Add(&sample);
  for (const PoseSensorData& sample : session.vertical) adjust.Vertical_Add(&sample);
}

// B is mounted half a turn about the pole's axis from A, so it reads x and y the other way round.
Turns MountedAsB(Turns turns) {
  for (Turn* turn : {&turns.horizontal, &turns.vertical}) {
    for (Reading& reading : *turn) reading = {-reading[0], -reading[1], reading[2]};
  }
  return turns;
}

Turns CleanTurns(const Sensor& sensor) {
  Random random(1);
  return {TurnAbout(2, 36, 300, -400, sensor, random), TurnAbout(1, 36, 500, 20, sensor, random)};
}

TEST(Adjust, EmptySetsShowTheMissingPointsThenTheFitThenTheCalibration) {
  const MessageCapture messages;
  CInclineSensor_MagneticAdjust adjust;
  EXPECT_EQ(adjust.Adjust(), 0);
  EXPECT_EQ(
      messages.shown,
      (Shown{StopMessage(L"The points less than 5, could not fit!"),
             ExclamationMessage(L"Ellipse fitting failed, around the Z-axis data is incorrect!"),
             ExclamationMessage(
                 L"A calculation of the magnetometer calibration fails, please recalibrate!")}));
  EXPECT_TRUE(SameBits(adjust.GetCorrectPar_A(), Incline_MagneticCorrectParameter()));
  EXPECT_TRUE(SameBits(adjust.GetCorrectPar_B(), Incline_MagneticCorrectParameter()));
  EXPECT_TRUE(SameBits(adjust.GetCoorTrans(), Incline_MagneticTranslationParameter()));
}

TEST(Adjust, WithoutVerticalSamplesTheYAxisIsNamed) {
  const MessageCapture messages;
  Session session = SessionOf(CleanTurns({}), MountedAsB(CleanTurns({})));
  session.vertical.clear();
  CInclineSensor_MagneticAdjust adjust;
  Fill(adjust, session);
  EXPECT_EQ(adjust.Adjust(), 0);
  EXPECT_EQ(
      messages.shown,
      (Shown{StopMessage(L"The points less than 5, could not fit!"),
             ExclamationMessage(L"Ellipse fitting failed, around the Y-axis data is incorrect!"),
             ExclamationMessage(
                 L"A calculation of the magnetometer calibration fails, please recalibrate!")}));
}

TEST(Adjust, APerfectPairHasNoOffsetBetweenItsFrames) {
  CInclineSensor_MagneticAdjust adjust;
  Fill(adjust, SessionOf(CleanTurns({}), MountedAsB(CleanTurns({}))));
  ASSERT_EQ(adjust.Adjust(), 1);
  EXPECT_NEAR(adjust.GetCoorTrans().dX, 0.0, 1e-9);
  EXPECT_NEAR(adjust.GetCoorTrans().dY, 0.0, 1e-9);
  EXPECT_NEAR(adjust.GetCoorTrans().dZ, 0.0, 1e-9);
  EXPECT_NEAR(adjust.GetCorrectPar_B().b, 1.0, 1e-9);
}

TEST(Adjust, TheGettersGiveExactlyWhatTheFitsFilled) {
  Sensor sensor;
  sensor.matrix[1][1] = 0.8;
  sensor.offset = {50, -30, 10};
  const Turns A = CleanTurns(sensor);
  const Turns B = MountedAsB(CleanTurns({}));
  AdjustAccess adjust;
  Fill(adjust, SessionOf(A, B));
  ASSERT_EQ(adjust.Adjust(), 1);

  Incline_MagneticCorrectParameter expected;
  ASSERT_EQ(adjust.MagCorrPara(MatrixOf(A.horizontal), MatrixOf(A.vertical), expected), 1);
  EXPECT_TRUE(SameBits(adjust.GetCorrectPar_A(), expected));
  ASSERT_EQ(adjust.MagCorrPara(MatrixOf(B.horizontal), MatrixOf(B.vertical), expected), 1);
  EXPECT_TRUE(SameBits(adjust.GetCorrectPar_B(), expected));
  Incline_MagneticTranslationParameter offset;
  ASSERT_EQ(adjust.MagneticCoordinateOffset(MatrixOf(A.horizontal), MatrixOf(B.horizontal), offset),
            1);
  EXPECT_TRUE(SameBits(adjust.GetCoorTrans(), offset));
}

TEST(Adjust, AFailingBLeavesANewCorrectionABesideTheOldOnes) {
  Sensor unreachable;
  unreachable.matrix[1][1] = 1 / 2.4;
  const MessageCapture messages;
  CInclineSensor_MagneticAdjust adjust;
  Sensor scaled;
  scaled.matrix[1][1] = 0.8;
  Fill(adjust, SessionOf(CleanTurns(scaled), CleanTurns(unreachable)));
  EXPECT_EQ(adjust.Adjust(), 0);
  EXPECT_EQ(
      messages.shown,
      (Shown{
          ExclamationMessage(L"Circulating abnormal exit calibration parameters might be wrong!"),
          ExclamationMessage(
              L"B calculation of the magnetometer calibration fails, please recalibrate!")}));
  EXPECT_NEAR(adjust.GetCorrectPar_A().b, 1.25, 1e-9);
  EXPECT_TRUE(SameBits(adjust.GetCorrectPar_B(), Incline_MagneticCorrectParameter()));
  EXPECT_TRUE(SameBits(adjust.GetCoorTrans(), Incline_MagneticTranslationParameter()));
}

TEST(Adjust, LeavesTheSetsAsTheyAreSoThatItCanRunAgain) {
  CInclineSensor_MagneticAdjust adjust;
  Fill(adjust, SessionOf(CleanTurns({}), MountedAsB(CleanTurns({}))));
  ASSERT_EQ(adjust.Adjust(), 1);
  const Incline_MagneticCorrectParameter first = adjust.GetCorrectPar_A();
  PoseSensorData out;
  EXPECT_EQ(adjust.Horizontal_Get(35, out), 1);
  EXPECT_EQ(adjust.Horizontal_Get(36, out), 0);
  ASSERT_EQ(adjust.Adjust(), 1);
  EXPECT_TRUE(SameBits(adjust.GetCorrectPar_A(), first));
}

TEST(FrameOffset, DifferentRowCountsAreToldAndLeaveOutUntouched) {
  const MessageCapture messages;
  Incline_MagneticTranslationParameter out;
  out.dX = 5.0;
  EXPECT_EQ(AdjustAccess().MagneticCoordinateOffset(CSZMatrix(3, 3), CSZMatrix(4, 3), out), 0);
  EXPECT_EQ(
      messages.shown,
      (Shown{ExclamationMessage(
          L"Two input matrix must be rotated to the same data collected around the Z axis!")}));
  EXPECT_EQ(out.dX, 5.0);
}

TEST(FrameOffset, IsTheMeanOfWhatBReadsBeyondItsExpectation) {
  // With default corrections A = (x, -y, -z); two samples.
  Incline_MagneticTranslationParameter out;
  ASSERT_EQ(AdjustAccess().MagneticCoordinateOffset(Rows({{1, 2, 3}, {5, 6, 7}}),
                                                    Rows({{-2, -4, 6}, {-8, -10, 12}}), out),
            1);
  EXPECT_EQ(out.dX, ((2.0 - 1.0) + (8.0 - 5.0)) / 2);
  EXPECT_EQ(out.dY, ((-4.0 + 2.0) + (-10.0 + 6.0)) / 2);
  EXPECT_EQ(out.dZ, ((-6.0 + 3.0) + (-12.0 + 7.0)) / 2);
}

TEST(FrameOffset, OfNoSamplesIsNotANumber) {
  Incline_MagneticTranslationParameter out;
  EXPECT_EQ(AdjustAccess().MagneticCoordinateOffset(CSZMatrix(0, 3), CSZMatrix(0, 3), out), 1);
  EXPECT_TRUE(std::isnan(out.dX));
  EXPECT_TRUE(std::isnan(out.dY));
  EXPECT_TRUE(std::isnan(out.dZ));
}

}  // namespace
}  // namespace tiltpole_test
