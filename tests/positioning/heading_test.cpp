// Headings, corrections and the two flags, sample by sample.

#include <array>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "positioning/exposed_position.h"
#include "support/member_order.h"

namespace {

using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::Incline_MagneticTranslationParameter;
using tiltpole::PoseSensorData;
using tiltpole_test::ExposedPosition;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

PoseSensorData ReadingOf_A(double x, double y, double z) {
  PoseSensorData sample;
  sample.MagneticX_A = x;
  sample.MagneticY_A = y;
  sample.MagneticZ_A = z;
  return sample;
}

PoseSensorData ReadingOf_B(double x, double y, double z) {
  PoseSensorData sample;
  sample.MagneticX_B = x;
  sample.MagneticY_B = y;
  sample.MagneticZ_B = z;
  return sample;
}

class PositionHeading : public ::testing::Test {
 protected:
  double HeadingOf_A(double x, double y, double z) {
    PoseSensorData sample = ReadingOf_A(x, y, z);
    EXPECT_EQ(position.CalculateYaw_A(sample), 1);
    return sample.Yaw_A;
  }
  double HeadingOf_B(double x, double y, double z) {
    PoseSensorData sample = ReadingOf_B(x, y, z);
    EXPECT_EQ(position.CalculateYaw_B(sample), 1);
    return sample.Yaw_B;
  }

  ExposedPosition position;
};

TEST_F(PositionHeading, StartsWithTheStatedDefaults) {
  EXPECT_EQ(position.MagneticA.x0, 0.0);
  EXPECT_EQ(position.MagneticA.b, 1.0);
  EXPECT_EQ(position.MagneticB.e, 1.0);
  EXPECT_EQ(position.CoorTrans.dZ, 0.0);
  EXPECT_EQ(position.LastMagneticX_A, 0.0);
  EXPECT_EQ(position.LastMagneticY_A, 0.0);
  EXPECT_EQ(position.LastMagneticZ_A, 0.0);
  EXPECT_EQ(position.LastInclineX, 0.0);
  EXPECT_EQ(position.LastInclineY, 0.0);
  EXPECT_EQ(position.PoleTriangleAngle, 0.0);
  EXPECT_EQ(position.PoleProjectOffset, 0.0);
  EXPECT_EQ(position.MagneticBiasAngle_A, 0.0);
  EXPECT_EQ(position.MagneticBiasAngle_B, 0.0);
  EXPECT_EQ(position.IsStationary(), 0);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
}

TEST_F(PositionHeading, DeclaresTheParametersFirstThenTheReferencesTheAnglesAndTheFlags) {
  EXPECT_TRUE(tiltpole_test::StandInThisOrder(
      &position.MagneticA, &position.MagneticB, &position.CoorTrans, &position.LastMagneticX_A,
      &position.LastMagneticY_A, &position.LastMagneticZ_A, &position.LastInclineX,
      &position.LastInclineY, &position.PoleTriangleAngle, &position.PoleProjectOffset,
      &position.MagneticBiasAngle_A, &position.MagneticBiasAngle_B, &position.Stationary,
      &position.MagneticInterference));
}

TEST_F(PositionHeading, ALevelSensorWhoseXAxisPointsNorthHasHeadingZero) {
  EXPECT_EQ(HeadingOf_A(1.0, 0.0, 0.0), 0.0);
}

TEST_F(PositionHeading, ALevelSensorWhoseYAxisPointsNorthHasHeading90) {
  EXPECT_EQ(HeadingOf_A(0.0, 1.0, 0.0), 90.0);
}

TEST_F(PositionHeading, ALevelSensorWhoseXAxisPointsSouthHasHeading180) {
  EXPECT_EQ(HeadingOf_A(-1.0, 0.0, 0.0), 180.0);
}

TEST_F(PositionHeading, ALevelSensorWhoseYAxisPointsSouthHasHeading270) {
  EXPECT_EQ(HeadingOf_A(0.0, -1.0, 0.0), 270.0);
}

TEST_F(PositionHeading, TheFourQuadrantsRunClockwise) {
  EXPECT_DOUBLE_EQ(HeadingOf_A(1.0, 1.0, 0.0), 45.0);
  EXPECT_DOUBLE_EQ(HeadingOf_A(-1.0, 1.0, 0.0), 135.0);
  EXPECT_DOUBLE_EQ(HeadingOf_A(-1.0, -1.0, 0.0), 225.0);
  EXPECT_DOUBLE_EQ(HeadingOf_A(1.0, -1.0, 0.0), 315.0);
}

TEST_F(PositionHeading, WithoutAHorizontalFieldTheHeadingIsZero) {
  EXPECT_EQ(HeadingOf_A(0.0, 0.0, 40.0), 0.0);
  EXPECT_EQ(HeadingOf_A(1e-7, -1e-7, 40.0), 0.0);
}

TEST_F(PositionHeading, AYComponentWithinTheLimitReadsAsHeadingZero) {
  EXPECT_EQ(HeadingOf_A(1.0, 1e-6, 0.0), 0.0);
  EXPECT_GT(HeadingOf_A(1.0, 1.1e-6, 0.0), 0.0);
}

TEST_F(PositionHeading, AnXComponentOfExactlyTheLimitReadsAsHeadingZero) {
  EXPECT_EQ(HeadingOf_A(1e-6, 5.0, 0.0), 0.0);
  EXPECT_EQ(HeadingOf_A(-1e-6, 5.0, 0.0), 0.0);
}

TEST_F(PositionHeading, AFieldThatIsNotANumberReadsAsHeadingZero) {
  EXPECT_EQ(HeadingOf_A(kNotANumber, 1.0, 0.0), 0.0);
  EXPECT_EQ(HeadingOf_A(-1.0, kNotANumber, 0.0), 0.0);
  EXPECT_EQ(HeadingOf_A(-1.0, 1.0, kNotANumber), 0.0);
  PoseSensorData sample = ReadingOf_A(-1.0, 1.0, 1.0);
  sample.InclineX = kNotANumber;
  position.CalculateYaw_A(sample);
  EXPECT_EQ(sample.Yaw_A, 0.0);
}

TEST_F(PositionHeading, MagnetometerBHasTheHeadingOfItsOwnXAxis) {
  EXPECT_EQ(HeadingOf_B(1.0, 0.0, 0.0), 0.0);
  EXPECT_EQ(HeadingOf_B(0.0, 1.0, 0.0), 90.0);
  EXPECT_EQ(HeadingOf_B(-1.0, 0.0, 0.0), 180.0);
  EXPECT_EQ(HeadingOf_B(0.0, -1.0, 0.0), 270.0);
}

TEST_F(PositionHeading, ABiasIsSubtractedAndTheHeadingWrappedUpwards) {
  const double tangent_of_5 = std::tan(5.0 * 3.141592653589793 / 180.0);
  position.SetMagneticBiasAngle_A(10.0);
  EXPECT_NEAR(HeadingOf_A(1.0, tangent_of_5, 0.0), 355.0, 1e-12);
  position.SetMagneticBiasAngle_B(10.0);
  EXPECT_NEAR(HeadingOf_B(1.0, tangent_of_5, 0.0), 355.0, 1e-12);
}

TEST_F(PositionHeading, ANegativeBiasWrapsTheHeadingDownwards) {
  const double tangent_of_5 = std::tan(5.0 * 3.141592653589793 / 180.0);
  position.SetMagneticBiasAngle_A(-10.0);
  EXPECT_NEAR(HeadingOf_A(1.0, -tangent_of_5, 0.0), 5.0, 1e-12);
  position.SetMagneticBiasAngle_B(-10.0);
  EXPECT_NEAR(HeadingOf_B(1.0, -tangent_of_5, 0.0), 5.0, 1e-12);
}

TEST_F(PositionHeading, AHeadingOfExactly360AfterTheBiasStays360) {
  position.SetMagneticBiasAngle_A(-360.0);
  EXPECT_EQ(HeadingOf_A(1.0, 0.0, 0.0), 360.0);
  position.SetMagneticBiasAngle_B(-270.0);
  EXPECT_EQ(HeadingOf_B(0.0, 1.0, 0.0), 360.0);
}

TEST_F(PositionHeading, AHeadingIsWrappedOnceOnly) {
  position.SetMagneticBiasAngle_A(-800.0);
  EXPECT_EQ(HeadingOf_A(1.0, 0.0, 0.0), 440.0);
  position.SetMagneticBiasAngle_A(800.0);
  EXPECT_EQ(HeadingOf_A(1.0, 0.0, 0.0), -440.0);
}

TEST_F(PositionHeading, TiltIsCompensated) {
  // A field of 3 to the north and 4 down, the x axis raised by 30 degrees on heading 0.
  const double angle = 30.0 * 3.141592653589793 / 180.0;
  PoseSensorData sample = ReadingOf_A(3.0 * std::cos(angle) - 4.0 * std::sin(angle), 0.0,
                                      -3.0 * std::sin(angle) - 4.0 * std::cos(angle));
  sample.InclineX = 30.0;
  position.CalculateYaw_A(sample);
  EXPECT_EQ(sample.Yaw_A, 0.0);
}

TEST_F(PositionHeading, TheReadingIsReplacedByTheCorrectedOne) {
  PoseSensorData sample = ReadingOf_A(1.0, 2.0, 3.0);
  position.CalculateYaw_A(sample);
  EXPECT_EQ(sample.MagneticX_A, 1.0);
  EXPECT_EQ(sample.MagneticY_A, -2.0);
  EXPECT_EQ(sample.MagneticZ_A, -3.0);
}

TEST_F(PositionHeading, EachMagnetometerIsCorrectedWithItsOwnParameters) {
  Incline_MagneticCorrectParameter par_A;
  par_A.x0 = 10.0;
  Incline_MagneticCorrectParameter par_B;
  par_B.x0 = 20.0;
  position.SetMagneticCorrectPar_A(par_A);
  position.SetMagneticCorrectPar_B(par_B);
  PoseSensorData sample;
  position.CalculateYaw_A(sample);
  position.CalculateYaw_B(sample);
  EXPECT_EQ(sample.MagneticX_A, -10.0);
  EXPECT_EQ(sample.MagneticX_B, -20.0);
}

TEST_F(PositionHeading, ARecordThatPassesTwiceIsCorrectedTwice) {
  Incline_MagneticCorrectParameter par;
  par.x0 = 10.0;
  par.b = 2.0;
  position.SetMagneticCorrectPar_A(par);
  PoseSensorData sample = ReadingOf_A(100.0, 3.0, 5.0);
  position.CalculateYaw_A(sample);
  EXPECT_EQ(sample.MagneticX_A, 90.0);
  EXPECT_EQ(sample.MagneticY_A, -6.0);
  EXPECT_EQ(sample.MagneticZ_A, -5.0);
  position.CalculateYaw_A(sample);
  EXPECT_EQ(sample.MagneticX_A, 80.0);
  EXPECT_EQ(sample.MagneticY_A, 12.0);
  EXPECT_EQ(sample.MagneticZ_A, 5.0);
}

TEST_F(PositionHeading, TheYAxisPointsNearly90DegreesBeforeTheXAxisAtSmallTilts) {
  PoseSensorData sample = ReadingOf_A(-1.0, 0.0, 0.0);
  sample.InclineX = 0.1;
  sample.InclineY = 0.1;
  position.CalculateYaw_A(sample);
  EXPECT_NEAR(sample.YawY_A, sample.Yaw_A - 90.0, 1e-3);
}

TEST_F(PositionHeading, TheHeadingOfTheYAxisIsNotWrapped) {
  PoseSensorData sample = ReadingOf_A(1.0, 0.0, 0.0);
  sample.InclineX = 0.1;
  sample.InclineY = 0.1;
  position.CalculateYaw_A(sample);
  EXPECT_LT(sample.YawY_A, -89.0);
}

TEST_F(PositionHeading, TheHeadingOfTheYAxisIsNotANumberWhenATiltIsExactlyZero) {
  PoseSensorData sample = ReadingOf_A(1.0, 0.0, 0.0);
  sample.InclineX = 5.0;
  position.CalculateYaw_A(sample);
  EXPECT_TRUE(std::isnan(sample.YawY_A));
  sample.InclineX = 0.0;
  sample.InclineY = 5.0;
  position.CalculateYaw_A(sample);
  EXPECT_TRUE(std::isnan(sample.YawY_A));
  EXPECT_FALSE(std::isnan(sample.Yaw_A));
}

TEST_F(PositionHeading, SettingACorrectionResetsItsBiasAngleAlone) {
  position.SetMagneticBiasAngle_A(3.0);
  position.SetMagneticBiasAngle_B(4.0);
  position.SetMagneticCorrectPar_A(Incline_MagneticCorrectParameter());
  EXPECT_EQ(position.GetMagneticBiasAngle_A(), 0.0);
  EXPECT_EQ(position.GetMagneticBiasAngle_B(), 4.0);
  position.SetMagneticBiasAngle_A(3.0);
  position.SetMagneticCorrectPar_B(Incline_MagneticCorrectParameter());
  EXPECT_EQ(position.GetMagneticBiasAngle_A(), 3.0);
  EXPECT_EQ(position.GetMagneticBiasAngle_B(), 0.0);
}

TEST_F(PositionHeading, SettingTheTranslationLeavesTheBiasAnglesAlone) {
  position.SetMagneticBiasAngle_A(3.0);
  position.SetMagneticBiasAngle_B(4.0);
  position.SetMagneticTranslationPar(Incline_MagneticTranslationParameter());
  EXPECT_EQ(position.GetMagneticBiasAngle_A(), 3.0);
  EXPECT_EQ(position.GetMagneticBiasAngle_B(), 4.0);
}

TEST_F(PositionHeading, TheGettersGiveBackWhatWasSet) {
  const auto fields = [](const Incline_MagneticCorrectParameter& par) {
    return std::array{par.x0, par.y0, par.z0, par.a, par.c, par.d, par.b, par.e};
  };
  const Incline_MagneticCorrectParameter par_A{1, 2, 3, 4, 5, 6, 7, 8};
  const Incline_MagneticCorrectParameter par_B{11, 12, 13, 14, 15, 16, 17, 18};
  const Incline_MagneticTranslationParameter translation{21, 22, 23};
  position.SetMagneticCorrectPar_A(par_A);
  position.SetMagneticCorrectPar_B(par_B);
  position.SetMagneticTranslationPar(translation);
  EXPECT_EQ(fields(position.GetMagneticCorrectPar_A()), fields(par_A));
  EXPECT_EQ(fields(position.GetMagneticCorrectPar_B()), fields(par_B));
  EXPECT_EQ(position.GetMagneticTranslationPar().dX, 21.0);
  EXPECT_EQ(position.GetMagneticTranslationPar().dY, 22.0);
  EXPECT_EQ(position.GetMagneticTranslationPar().dZ, 23.0);
}

TEST_F(PositionHeading, ACopyCarriesTheFlagsAndTheReferencesToo) {
  PoseSensorData sample = ReadingOf_A(5000.0, 0.0, 0.0);
  sample.InclineX = 3.0;
  position.CalculateYaw_A(sample);
  position.CalculateYaw_B(sample);
  ExposedPosition copy;
  copy = position;
  EXPECT_EQ(copy.LastMagneticX_A, 5000.0);
  EXPECT_EQ(copy.LastInclineX, 3.0);
  EXPECT_EQ(copy.IsMagneticInterference(), 1);
  PoseSensorData again = ReadingOf_A(5000.0, 0.0, 0.0);
  again.InclineX = 3.0;
  copy.CalculateYaw_A(again);
  EXPECT_EQ(copy.IsStationary(), 1);
  EXPECT_EQ(position.IsStationary(), 0);
}

TEST_F(PositionHeading, TheSecondOfTwoIdenticalSamplesIsStationary) {
  HeadingOf_A(5000.0, 0.0, 0.0);
  EXPECT_EQ(position.IsStationary(), 0);
  HeadingOf_A(5000.0, 0.0, 0.0);
  EXPECT_EQ(position.IsStationary(), 1);
}

TEST_F(PositionHeading, AFirstSampleNearTheZeroReferenceIsStationary) {
  HeadingOf_A(500.0, 300.0, 200.0);
  EXPECT_EQ(position.IsStationary(), 1) << "a sum of exactly 1000 still counts";
  EXPECT_EQ(position.LastMagneticX_A, 0.0);
  HeadingOf_A(500.0, 300.0, 200.5);
  EXPECT_EQ(position.IsStationary(), 0);
  EXPECT_EQ(position.LastMagneticX_A, 500.0);
  EXPECT_EQ(position.LastMagneticY_A, -300.0);
  EXPECT_EQ(position.LastMagneticZ_A, -200.5);
}

TEST_F(PositionHeading, ATiltThatDiffersByExactlyHalfADegreeIsStationary) {
  PoseSensorData sample;
  sample.InclineX = 0.5;
  sample.InclineY = -0.5;
  position.CalculateYaw_A(sample);
  EXPECT_EQ(position.IsStationary(), 1);
  EXPECT_EQ(position.LastInclineX, 0.0);
}

TEST_F(PositionHeading, ATiltThatDiffersByMoreIsNot) {
  PoseSensorData sample;
  sample.InclineX = 0.5000001;
  position.CalculateYaw_A(sample);
  EXPECT_EQ(position.IsStationary(), 0);
  EXPECT_EQ(position.LastInclineX, 0.5000001);
  sample = PoseSensorData();
  sample.InclineX = 0.5000001;
  sample.InclineY = -0.5000001;
  position.CalculateYaw_A(sample);
  EXPECT_EQ(position.IsStationary(), 0);
  EXPECT_EQ(position.LastInclineY, -0.5000001);
}

TEST_F(PositionHeading, ASlowDriftEndsTheStillPeriodOnceItPassesALimit) {
  HeadingOf_A(5000.0, 0.0, 0.0);
  HeadingOf_A(5600.0, 0.0, 0.0);
  EXPECT_EQ(position.IsStationary(), 1);
  HeadingOf_A(6001.0, 0.0, 0.0);
  EXPECT_EQ(position.IsStationary(), 0) << "1001 from the first sample, 401 from the last";
  HeadingOf_A(6001.0, 0.0, 0.0);
  EXPECT_EQ(position.IsStationary(), 1);
}

TEST_F(PositionHeading, ASampleThatIsNotANumberCountsAsStationary) {
  HeadingOf_A(5000.0, 0.0, 0.0);
  HeadingOf_A(kNotANumber, 0.0, 0.0);
  EXPECT_EQ(position.IsStationary(), 1);
  EXPECT_EQ(position.LastMagneticX_A, 5000.0);
}

TEST_F(PositionHeading, MagnetometersThatAgreeShowNoInterference) {
  PoseSensorData sample = ReadingOf_A(1.0, 2.0, 3.0);
  sample.MagneticX_B = -1.0;
  sample.MagneticY_B = -2.0;
  sample.MagneticZ_B = 3.0;
  position.CalculateYaw_A(sample);
  position.CalculateYaw_B(sample);
  EXPECT_EQ(sample.MagneticX_B, -1.0);
  EXPECT_EQ(sample.MagneticY_B, 2.0);
  EXPECT_EQ(sample.MagneticZ_B, -3.0);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
}

TEST_F(PositionHeading, MagnetometersThatDifferByMoreThan300CountsShowInterference) {
  PoseSensorData sample = ReadingOf_A(1.0, 2.0, 3.0);
  sample.MagneticX_B = -1.0;
  sample.MagneticY_B = -2.0;
  sample.MagneticZ_B = 304.0;
  position.CalculateYaw_A(sample);
  position.CalculateYaw_B(sample);
  EXPECT_EQ(position.IsMagneticInterference(), 1);
}

TEST_F(PositionHeading, ADifferenceOfExactly300CountsShowsNone) {
  PoseSensorData sample = ReadingOf_B(100.0, 100.0, 100.0);
  position.CalculateYaw_B(sample);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
}

TEST_F(PositionHeading, TheInterferenceFlagIsSetAnewByEverySample) {
  HeadingOf_B(301.0, 0.0, 0.0);
  EXPECT_EQ(position.IsMagneticInterference(), 1);
  HeadingOf_B(0.0, 0.0, 0.0);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
}

TEST_F(PositionHeading, AReadingThatIsNotANumberShowsNoInterference) {
  HeadingOf_B(kNotANumber, 0.0, 0.0);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
}

TEST_F(PositionHeading, TheTranslationShiftsTheReadingExpectedOfB) {
  Incline_MagneticTranslationParameter translation;
  translation.dX = 1000.0;
  translation.dY = 2000.0;
  translation.dZ = 3000.0;
  position.SetMagneticTranslationPar(translation);
  PoseSensorData sample = ReadingOf_B(-1000.0, 2000.0, -3000.0);
  position.CalculateYaw_A(sample);
  position.CalculateYaw_B(sample);
  EXPECT_EQ(position.IsMagneticInterference(), 0);
}

TEST_F(PositionHeading, WithoutTheHeadingOfABeforeTheInterferenceTestAsksTheRawReading) {
  PoseSensorData sample = ReadingOf_A(0.0, 400.0, 0.0);
  sample.MagneticY_B = -400.0;
  position.CalculateYaw_B(sample);
  EXPECT_EQ(position.IsMagneticInterference(), 1);
}

TEST_F(PositionHeading, ADirectionRunsCounterClockwiseFromTheXAxis) {
  EXPECT_EQ(position.ConverseYaw_True(0.0, 0.0), 0.0);
  EXPECT_EQ(position.ConverseYaw_True(1.0, 0.0), 0.0);
  EXPECT_EQ(position.ConverseYaw_True(-1.0, 0.0), 180.0);
  EXPECT_EQ(position.ConverseYaw_True(0.0, 5.0), 90.0);
  EXPECT_EQ(position.ConverseYaw_True(0.0, -5.0), 270.0);
  EXPECT_DOUBLE_EQ(position.ConverseYaw_True(2.0, 2.0), 45.0);
  EXPECT_DOUBLE_EQ(position.ConverseYaw_True(-2.0, 2.0), 135.0);
  EXPECT_DOUBLE_EQ(position.ConverseYaw_True(-2.0, -2.0), 225.0);
  EXPECT_DOUBLE_EQ(position.ConverseYaw_True(2.0, -2.0), 315.0);
}

TEST_F(PositionHeading, ADirectionOfWhatIsNoNumberIsZero) {
  EXPECT_EQ(position.ConverseYaw_True(kNotANumber, 1.0), 0.0);
  EXPECT_EQ(position.ConverseYaw_True(kNotANumber, -1.0), 0.0);
  EXPECT_EQ(position.ConverseYaw_True(1.0, kNotANumber), 0.0);
}

TEST_F(PositionHeading, ADirectionComparesYWithExactlyZero) {
  EXPECT_EQ(position.ConverseYaw_True(9e-7, 1e-300), 90.0);
  EXPECT_EQ(position.ConverseYaw_True(9e-7, -1e-300), 270.0);
  EXPECT_GT(position.ConverseYaw_True(1.0, 1e-7), 0.0);
  EXPECT_EQ(position.ConverseYaw_True(1.0, -1e-300), 360.0) << "rounding can reach 360";
}

}  // namespace
