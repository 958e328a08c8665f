#include <iterator>

#include <gtest/gtest.h>

#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/magnetic_correction.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace {

using tiltpole::CorrectReading;
using tiltpole::ExpectedReading_B;
using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::Incline_MagneticTranslationParameter;
using tiltpole::MagneticReading;
using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;

TEST(PoseSensorData, StartsAtZeroButForTheHostAngleAndTheForwardFlag) {
  const PoseSensorData sample;
  EXPECT_EQ(sample.Tag[0], 0);
  EXPECT_EQ(sample.Tag[1], 0);
  EXPECT_EQ(sample.Tag[2], 0);
  EXPECT_EQ(sample.InclineX, 0.0);
  EXPECT_EQ(sample.InclineY, 0.0);
  for (const double aux : sample.Aux) EXPECT_EQ(aux, 0.0);
  EXPECT_EQ(sample.MagneticX_A, 0.0);
  EXPECT_EQ(sample.MagneticY_A, 0.0);
  EXPECT_EQ(sample.MagneticZ_A, 0.0);
  EXPECT_EQ(sample.MagneticX_B, 0.0);
  EXPECT_EQ(sample.MagneticY_B, 0.0);
  EXPECT_EQ(sample.MagneticZ_B, 0.0);
  EXPECT_EQ(sample.Yaw_A, 0.0);
  EXPECT_EQ(sample.Yaw_B, 0.0);
  EXPECT_EQ(sample.YawY_A, 0.0);
  EXPECT_EQ(sample.HostAngle, 90.0);
  EXPECT_EQ(sample.Azimuth, 0.0);
  EXPECT_EQ(sample.Forward, 1);
}

TEST(PoseSensorData, HasRoomForHourMinuteAndSecondAndForSevenNumbersOfTheHost) {
  const PoseSensorData sample;
  EXPECT_EQ(std::size(sample.Tag.Value), 3U);
  EXPECT_EQ(std::size(sample.Aux), 7U);
}

TEST(PoseSensorData, ACopyCarriesTheHostsOwnFields) {
  PoseSensorData sample;
  sample.Tag[0] = 23;
  sample.Tag[1] = 59;
  sample.Tag[2] = 58;
  sample.Aux[0] = 1.5;
  sample.Aux[6] = -7.25;
  sample.HostAngle = 12.5;

  const PoseSensorData copy = sample;

  EXPECT_EQ(copy.Tag[0], 23);
  EXPECT_EQ(copy.Tag[1], 59);
  EXPECT_EQ(copy.Tag[2], 58);
  EXPECT_EQ(copy.Aux[0], 1.5);
  EXPECT_EQ(copy.Aux[6], -7.25);
  EXPECT_EQ(copy.HostAngle, 12.5);
}

TEST(PoseSensorData, HoldsItsFieldsInTheOrderHostsInitialiseThemIn) {
  const PoseSensorData sample = {{{1, 2, 3}}, 4.0,  5.0,  {6.0, 7.0, 8.0, 9.0, 10.0, 11.0, 12.0},
                                 13.0,        14.0, 15.0, 16.0,
                                 17.0,        18.0, 19.0, 20.0,
                                 21.0,        22.0, 23.0, 24};
  EXPECT_EQ(sample.Tag[0], 1);
  EXPECT_EQ(sample.Tag[2], 3);
  EXPECT_EQ(sample.InclineX, 4.0);
  EXPECT_EQ(sample.InclineY, 5.0);
  EXPECT_EQ(sample.Aux[0], 6.0);
  EXPECT_EQ(sample.Aux[6], 12.0);
  EXPECT_EQ(sample.MagneticX_A, 13.0);
  EXPECT_EQ(sample.MagneticY_A, 14.0);
  EXPECT_EQ(sample.MagneticZ_A, 15.0);
  EXPECT_EQ(sample.MagneticX_B, 16.0);
  EXPECT_EQ(sample.MagneticY_B, 17.0);
  EXPECT_EQ(sample.MagneticZ_B, 18.0);
  EXPECT_EQ(sample.Yaw_A, 19.0);
  EXPECT_EQ(sample.Yaw_B, 20.0);
  EXPECT_EQ(sample.YawY_A, 21.0);
  EXPECT_EQ(sample.HostAngle, 22.0);
  EXPECT_EQ(sample.Azimuth, 23.0);
  EXPECT_EQ(sample.Forward, 24);
}

TEST(Incline_MagneticCorrectParameter, HoldsTheOffsetsFirstAndTheScalesLast) {
  const Incline_MagneticCorrectParameter par = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0};
  EXPECT_EQ(par.x0, 1.0);
  EXPECT_EQ(par.y0, 2.0);
  EXPECT_EQ(par.z0, 3.0);
  EXPECT_EQ(par.a, 4.0);
  EXPECT_EQ(par.c, 5.0);
  EXPECT_EQ(par.d, 6.0);
  EXPECT_EQ(par.b, 7.0);
  EXPECT_EQ(par.e, 8.0);
}

TEST(Incline_MagneticCorrectParameter, StartsAtZeroButForTheTwoScales) {
  const Incline_MagneticCorrectParameter par;
  EXPECT_EQ(par.x0, 0.0);
  EXPECT_EQ(par.y0, 0.0);
  EXPECT_EQ(par.z0, 0.0);
  EXPECT_EQ(par.a, 0.0);
  EXPECT_EQ(par.c, 0.0);
  EXPECT_EQ(par.d, 0.0);
  EXPECT_EQ(par.b, 1.0);
  EXPECT_EQ(par.e, 1.0);
}

TEST(Incline_MagneticTranslationParameter, StartsAtZeroAndHoldsXBeforeYBeforeZ) {
  const Incline_MagneticTranslationParameter none;
  EXPECT_EQ(none.dX, 0.0);
  EXPECT_EQ(none.dY, 0.0);
  EXPECT_EQ(none.dZ, 0.0);
  const Incline_MagneticTranslationParameter trans = {1.0, 2.0, 3.0};
  EXPECT_EQ(trans.dX, 1.0);
  EXPECT_EQ(trans.dY, 2.0);
  EXPECT_EQ(trans.dZ, 3.0);
}

TEST(xyhCoordinate, HoldsThePlaneBeforeTheHeight) {
  const xyhCoordinate position = {1.0, 2.0, 3.0};
  EXPECT_EQ(position.x, 1.0);
  EXPECT_EQ(position.y, 2.0);
  EXPECT_EQ(position.h, 3.0);
}

TEST(xyhCoordinate, StartsAtTheOrigin) {
  const xyhCoordinate position;
  EXPECT_EQ(position.x, 0.0);
  EXPECT_EQ(position.y, 0.0);
  EXPECT_EQ(position.h, 0.0);
}

TEST(MagneticReading, StartsWithoutAnyField) {
  const MagneticReading reading;
  EXPECT_EQ(reading.X, 0.0);
  EXPECT_EQ(reading.Y, 0.0);
  EXPECT_EQ(reading.Z, 0.0);
}

TEST(MagneticCorrection, TheDefaultOnlyChangesTheSignsOfYAndZ) {
  const MagneticReading corrected =
      CorrectReading(Incline_MagneticCorrectParameter(), MagneticReading{1.0, 2.0, 3.0});
  EXPECT_EQ(corrected.X, 1.0);
  EXPECT_EQ(corrected.Y, -2.0);
  EXPECT_EQ(corrected.Z, -3.0);
}

TEST(MagneticCorrection, WeighsTheRawReadingFirstAndSubtractsTheOffsetsAfter) {
  Incline_MagneticCorrectParameter par;
  par.x0 = 1.0;
  par.y0 = 2.0;
  par.z0 = 3.0;
  par.a = 0.5;
  par.b = 2.0;
  par.c = 0.25;
  par.d = 4.0;
  par.e = 8.0;
  const MagneticReading corrected = CorrectReading(par, MagneticReading{16.0, 32.0, 64.0});
  EXPECT_EQ(corrected.X, 15.0);
  EXPECT_EQ(corrected.Y, -(8.0 + 64.0 - 2.0));
  EXPECT_EQ(corrected.Z, -(4.0 + 128.0 + 512.0 - 3.0));
}

TEST(MagneticCorrection, WithoutATranslationBIsExpectedHalfATurnFromA) {
  const MagneticReading expected =
      ExpectedReading_B(Incline_MagneticTranslationParameter(), MagneticReading{1.0, -2.0, -3.0});
  EXPECT_EQ(expected.X, -1.0);
  EXPECT_EQ(expected.Y, 2.0);
  EXPECT_EQ(expected.Z, -3.0);
}

TEST(MagneticCorrection, TheTranslationShiftsABeforeTheHalfTurn) {
  Incline_MagneticTranslationParameter trans;
  trans.dX = 10.0;
  trans.dY = 20.0;
  trans.dZ = 30.0;
  const MagneticReading expected = ExpectedReading_B(trans, MagneticReading{1.0, 2.0, 3.0});
  EXPECT_EQ(expected.X, -11.0);
  EXPECT_EQ(expected.Y, -22.0);
  EXPECT_EQ(expected.Z, 33.0);
}

}  // namespace
