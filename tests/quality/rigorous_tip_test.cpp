#include "tiltpole/quality/rigorous_tip.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <gtest/gtest.h>

#include "quality/simulated_pole.h"

namespace {

using namespace tiltpole_test;
using tiltpole::CorrectSample;
using tiltpole::HeadingSource;
using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::PoseSensorData;
using tiltpole::RigorousTip;
using tiltpole::RigorousTipOptions;
using tiltpole::SolveRigorousTip;
using tiltpole::TipStatus;

constexpr double kLength = 2.0;

PoseSensorData Measured(const Attitude& pole, double dip) {
  const Incline_MagneticCorrectParameter ideal;
  return CorrectSample(IdealSample(pole, EarthField(5000.0, dip)), ideal, ideal);
}

// Turns magnetometer B's corrected reading about z, as iron or a crooked mounting would.
PoseSensorData WithBTurned(PoseSensorData sample, double degrees) {
  const double c = std::cos(degrees * kDegree);
  const double s = std::sin(degrees * kDegree);
  const double x = sample.MagneticX_B;
  const double y = sample.MagneticY_B;
  sample.MagneticX_B = c * x + s * y;
  sample.MagneticY_B = -s * x + c * y;
  return sample;
}

double LargestTipError(const Attitude& pole, double dip) {
  const RigorousTip tip = SolveRigorousTip(Measured(pole, dip), kLength);
  EXPECT_EQ(tip.Status, TipStatus::Solved);
  EXPECT_EQ(tip.Source, HeadingSource::Both);
  const double north = tip.Offset.x + kLength * pole[0][2];
  const double east = tip.Offset.y - kLength * pole[1][2];
  const double height = tip.Offset.h + kLength * pole[2][2];
  return std::max({std::fabs(north), std::fabs(east), std::fabs(height)});
}

TEST(RigorousTip, IsExactInAllQuadrantsAtEveryTiltTo80DegreesAndDipTo70) {
  double largest = 0.0;
  for (const double lean : {0.01, 0.1, 1.0, 5.0, 15.0, 30.0, 45.0, 60.0, 70.0, 80.0}) {
    for (double towards = 0.0; towards < 360.0; towards += 30.0) {
      for (double heading = 0.0; heading < 360.0; heading += 22.5) {
        for (const double dip : {-70.0, -35.0, 0.0, 35.0, 70.0}) {
          largest = std::max(largest, LargestTipError(LeaningPole(heading, lean, towards), dip));
        }
      }
    }
  }
  EXPECT_LT(largest, 1e-9 * kLength);
}

TEST(RigorousTip, TellsTheHeadingOfTheXAxisAndTheTiltAndTheDip) {
  Random random(11);
  for (int i = 0; i < 500; ++i) {
    const Attitude pole =
        LeaningPole(random.Uniform(0, 360), random.Uniform(0.01, 80), random.Uniform(0, 360));
    const double dip = random.Uniform(-70, 70);
    const RigorousTip tip = SolveRigorousTip(Measured(pole, dip), kLength);
    EXPECT_NEAR(std::remainder(tip.Heading - HeadingOf(pole), 360.0), 0.0, 1e-7);
    EXPECT_NEAR(std::remainder(tip.Heading_A - HeadingOf(pole), 360.0), 0.0, 1e-7);
    EXPECT_NEAR(std::remainder(tip.Heading_B - HeadingOf(pole), 360.0), 0.0, 1e-7);
    EXPECT_NEAR(tip.Tilt, std::acos(pole[2][2]) / kDegree, 1e-7);
    EXPECT_NEAR(tip.Dip, dip, 1e-7);
    EXPECT_TRUE(tip.Agree);
  }
}

TEST(RigorousTip, APoleThatLeansNorthHasItsTipSouthOfTheAntenna) {
  const RigorousTip tip = SolveRigorousTip(Measured(LeaningPole(123.0, 30.0, 0.0), 60.0), kLength);
  EXPECT_NEAR(tip.Offset.x, -1.0, 1e-12);
  EXPECT_NEAR(tip.Offset.y, 0.0, 1e-12);
  EXPECT_NEAR(tip.Offset.h, -std::sqrt(3.0), 1e-12);
}

TEST(RigorousTip, TheBiasAnglesTurnTheTipBackByAsMuch) {
  RigorousTipOptions options;
  options.MagneticBiasAngle_A = options.MagneticBiasAngle_B = 90.0;
  const Attitude pole = LeaningPole(123.0, 30.0, 0.0);
  const RigorousTip tip = SolveRigorousTip(Measured(pole, 60.0), kLength, options);
  EXPECT_NEAR(tip.Heading, HeadingOf(pole) - 90.0, 1e-9);
  EXPECT_NEAR(tip.Offset.x, 0.0, 1e-12);
  EXPECT_NEAR(tip.Offset.y, 1.0, 1e-12);
}

TEST(RigorousTip, WeighsTheHeadingsByTheirDeviations) {
  const PoseSensorData sample = WithBTurned(Measured(LeaningPole(100.0, 0.0, 0.0), 60.0), 1.0);
  for (const double deviation : {0.1, 1.0, 7.0}) {
    RigorousTipOptions options;
    options.HeadingDeviation_A = deviation;
    options.HeadingDeviation_B = 2.0 * deviation;
    const RigorousTip tip = SolveRigorousTip(sample, kLength, options);
    EXPECT_EQ(tip.Source, HeadingSource::Both);
    EXPECT_NEAR(std::fabs(tip.HeadingDifference), 1.0, 1e-9);
    EXPECT_NEAR(tip.Heading, 100.0 + 0.2 * tip.HeadingDifference, 1e-4);
  }
}

TEST(RigorousTip, TheHeadingDifferenceIsBLessA) {
  const PoseSensorData sample = WithBTurned(Measured(LeaningPole(359.5, 40.0, 70.0), 60.0), 2.0);
  const RigorousTip tip = SolveRigorousTip(sample, kLength);
  EXPECT_NEAR(tip.HeadingDifference, std::remainder(tip.Heading_B - tip.Heading_A, 360.0), 1e-9);
}

TEST(RigorousTip, HeadingsOnEitherSideOfNorthAgree) {
  const PoseSensorData sample = WithBTurned(Measured(LeaningPole(359.9, 0.0, 0.0), 60.0), -1.0);
  const RigorousTip tip = SolveRigorousTip(sample, kLength);
  EXPECT_TRUE(tip.Agree);
  EXPECT_NEAR(std::remainder(tip.Heading - 359.9, 360.0), 0.5 * tip.HeadingDifference, 1e-9);
}

TEST(RigorousTip, WhenTheyDisagreeTheHeadingIsAsAndSaysSo) {
  const Attitude pole = LeaningPole(40.0, 20.0, 200.0);
  const RigorousTip tip = SolveRigorousTip(WithBTurned(Measured(pole, 60.0), 30.0), kLength);
  EXPECT_FALSE(tip.Agree);
  EXPECT_EQ(tip.Source, HeadingSource::Magnetometer_A);
  EXPECT_NEAR(tip.Offset.x, -kLength * pole[0][2], 1e-12);
}

TEST(RigorousTip, TheMagnetometerSaidToBeDisturbedIsLeftOut) {
  const Attitude pole = LeaningPole(40.0, 20.0, 200.0);
  PoseSensorData sample = Measured(pole, 60.0);
  sample.MagneticX_A += 3000.0;
  RigorousTipOptions options;
  options.Disturbed_A = true;
  const RigorousTip tip = SolveRigorousTip(sample, kLength, options);
  EXPECT_EQ(tip.Source, HeadingSource::Magnetometer_B);
  EXPECT_FALSE(tip.Agree);
  EXPECT_NEAR(tip.Offset.x, -kLength * pole[0][2], 1e-12);
  EXPECT_NEAR(tip.Offset.y, kLength * pole[1][2], 1e-12);
}

TEST(RigorousTip, WithBothDisturbedALeaningPoleCannotBeTold) {
  RigorousTipOptions options;
  options.Disturbed_A = options.Disturbed_B = true;
  const RigorousTip tip =
      SolveRigorousTip(Measured(LeaningPole(40.0, 20.0, 200.0), 60.0), kLength, options);
  EXPECT_EQ(tip.Status, TipStatus::HeadingCannotBeTold);
  EXPECT_EQ(tip.Source, HeadingSource::None);
  EXPECT_TRUE(std::isnan(tip.Offset.x));
  EXPECT_TRUE(std::isnan(tip.Offset.y));
  EXPECT_NEAR(tip.Offset.h, -kLength * std::cos(20.0 * kDegree), 1e-12);
}

TEST(RigorousTip, APlumbPoleIsAnsweredEvenInAVerticalField) {
  const RigorousTip tip = SolveRigorousTip(Measured(LeaningPole(0, 0, 0), 90.0), kLength);
  EXPECT_EQ(tip.Status, TipStatus::Plumb);
  EXPECT_EQ(tip.Offset.x, 0.0);
  EXPECT_EQ(tip.Offset.y, 0.0);
  EXPECT_EQ(tip.Offset.h, -kLength);
}

TEST(RigorousTip, ALeaningPoleInAVerticalFieldCannotBeTold) {
  for (const double dip : {-90.0, 90.0}) {
    const RigorousTip tip = SolveRigorousTip(Measured(LeaningPole(10, 35, 100), dip), kLength);
    EXPECT_EQ(tip.Status, TipStatus::HeadingCannotBeTold);
    EXPECT_EQ(tip.Source, HeadingSource::None);
    EXPECT_TRUE(std::isnan(tip.Heading));
    EXPECT_TRUE(std::isnan(tip.Offset.x));
    EXPECT_NEAR(tip.Offset.h, -kLength * std::cos(35.0 * kDegree), 1e-12);
  }
}

TEST(RigorousTip, AMagnetometerThatReadsNothingLeavesTheOther) {
  PoseSensorData sample = Measured(LeaningPole(40.0, 20.0, 200.0), 60.0);
  sample.MagneticX_A = std::numeric_limits<double>::quiet_NaN();
  const RigorousTip tip = SolveRigorousTip(sample, kLength);
  EXPECT_EQ(tip.Source, HeadingSource::Magnetometer_B);
  EXPECT_NEAR(tip.Heading, 40.0, 3.0);
  EXPECT_TRUE(std::isnan(tip.HeadingDifference));
  EXPECT_FALSE(tip.Agree);
  sample = Measured(LeaningPole(40.0, 20.0, 200.0), 60.0);
  sample.MagneticX_B = sample.MagneticY_B = sample.MagneticZ_B = 0.0;
  const RigorousTip of_a = SolveRigorousTip(sample, kLength);
  EXPECT_EQ(of_a.Source, HeadingSource::Magnetometer_A);
  EXPECT_TRUE(std::isnan(of_a.HeadingDifference));
  EXPECT_FALSE(of_a.Agree);
}

TEST(RigorousTip, TiltsThatCannotBelongToPerpendicularAxesAreSaidToBeImpossible) {
  PoseSensorData sample = Measured(LeaningPole(40.0, 20.0, 200.0), 60.0);
  sample.InclineX = sample.InclineY = 60.0;
  const RigorousTip tip = SolveRigorousTip(sample, kLength);
  EXPECT_EQ(tip.Status, TipStatus::TiltsImpossible);
  EXPECT_TRUE(std::isnan(tip.Offset.h));
}

TEST(RigorousTip, OppositeHeadingsAreNeverAveragedWhateverTheLimit) {
  RigorousTipOptions options;
  options.LargestHeadingDifference = 360.0;
  const PoseSensorData sample = WithBTurned(Measured(LeaningPole(40, 0.5, 200), 0.0), 180.0);
  const RigorousTip tip = SolveRigorousTip(sample, kLength, options);
  EXPECT_EQ(tip.Source, HeadingSource::Magnetometer_A);
}

TEST(RigorousTip, CorrectingASampleChangesTheSixReadingsAlone) {
  PoseSensorData raw;
  raw.MagneticX_A = 1.0;
  raw.MagneticY_A = 2.0;
  raw.MagneticZ_A = 3.0;
  raw.MagneticX_B = 10.0;
  raw.MagneticY_B = 20.0;
  raw.MagneticZ_B = 30.0;
  raw.InclineX = 4.0;
  raw.Aux[2] = 5.0;
  Incline_MagneticCorrectParameter shifted;
  shifted.x0 = 100.0;
  const PoseSensorData corrected = CorrectSample(raw, {}, shifted);
  EXPECT_EQ(corrected.MagneticX_A, 1.0);
  EXPECT_EQ(corrected.MagneticY_A, -2.0);
  EXPECT_EQ(corrected.MagneticZ_A, -3.0);
  EXPECT_EQ(corrected.MagneticX_B, -90.0);
  EXPECT_EQ(corrected.MagneticY_B, -20.0);
  EXPECT_EQ(corrected.MagneticZ_B, -30.0);
  EXPECT_EQ(corrected.InclineX, 4.0);
  EXPECT_EQ(corrected.Aux[2], 5.0);
}

TEST(RigorousTip, AWeightWithoutADeviationIsThatOfOneDegree) {
  const PoseSensorData sample = WithBTurned(Measured(LeaningPole(40.0, 20.0, 100.0), 60.0), 3.0);
  const RigorousTip expected = SolveRigorousTip(sample, kLength);
  for (const double none : {0.0, -2.0, std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::quiet_NaN()}) {
    RigorousTipOptions options;
    options.HeadingDeviation_A = none;
    options.HeadingDeviation_B = none;
    const RigorousTip tip = SolveRigorousTip(sample, kLength, options);
    EXPECT_EQ(tip.Offset.x, expected.Offset.x);
    EXPECT_EQ(tip.Offset.y, expected.Offset.y);
  }
}

TEST(RigorousTip, AWeightThatOneMagnetometerLacksIsThatOfOneDegreeBesideTheOthers) {
  const PoseSensorData sample = WithBTurned(Measured(LeaningPole(40.0, 20.0, 100.0), 60.0), 3.0);
  RigorousTipOptions one_degree;
  one_degree.HeadingDeviation_A = 2.0;
  RigorousTipOptions none = one_degree;
  none.HeadingDeviation_B = 0.0;
  EXPECT_EQ(SolveRigorousTip(sample, kLength, none).Heading,
            SolveRigorousTip(sample, kLength, one_degree).Heading);
  std::swap(one_degree.HeadingDeviation_A, one_degree.HeadingDeviation_B);
  std::swap(none.HeadingDeviation_A, none.HeadingDeviation_B);
  EXPECT_EQ(SolveRigorousTip(sample, kLength, none).Heading,
            SolveRigorousTip(sample, kLength, one_degree).Heading);
}

TEST(RigorousTip, HeadingsUpTo5DegreesApartAgreeUnlessTheHostSaysOtherwise) {
  const PoseSensorData ideal = Measured(LeaningPole(40.0, 0.0, 0.0), 60.0);
  EXPECT_TRUE(SolveRigorousTip(WithBTurned(ideal, 4.999), kLength).Agree);
  EXPECT_FALSE(SolveRigorousTip(WithBTurned(ideal, 5.001), kLength).Agree);
  EXPECT_TRUE(SolveRigorousTip(WithBTurned(ideal, -4.999), kLength).Agree);
  EXPECT_FALSE(SolveRigorousTip(WithBTurned(ideal, -5.001), kLength).Agree);
  RigorousTipOptions options;
  options.LargestHeadingDifference = 0.0;
  EXPECT_TRUE(SolveRigorousTip(ideal, kLength, options).Agree);
}

TEST(RigorousTip, HeadingsMoreThanAQuarterTurnApartNeverAgree) {
  RigorousTipOptions options;
  options.LargestHeadingDifference = 360.0;
  const PoseSensorData ideal = Measured(LeaningPole(40.0, 0.0, 0.0), 60.0);
  EXPECT_TRUE(SolveRigorousTip(WithBTurned(ideal, 89.999), kLength, options).Agree);
  EXPECT_FALSE(SolveRigorousTip(WithBTurned(ideal, 90.001), kLength, options).Agree);
}

TEST(RigorousTip, AQuarterTurnExactlyStillAgrees) {
  // North is along x for A and along y for B, in numbers that a quarter turn keeps whole.
  PoseSensorData sample;
  sample.MagneticX_A = 1000.0;
  sample.MagneticY_B = 1000.0;
  RigorousTipOptions options;
  options.LargestHeadingDifference = 360.0;
  const RigorousTip tip = SolveRigorousTip(sample, kLength, options);
  EXPECT_EQ(std::fabs(tip.HeadingDifference), 90.0);
  EXPECT_TRUE(tip.Agree);
}

TEST(RigorousTip, APoleIsPlumbBelowALeanOfATenthOfABillionth) {
  PoseSensorData sample = Measured(LeaningPole(40.0, 0.0, 0.0), 60.0);
  sample.InclineX = 0.99e-10 / kDegree;
  EXPECT_EQ(SolveRigorousTip(sample, kLength).Status, TipStatus::Plumb);
  sample.InclineX = 1.01e-10 / kDegree;
  EXPECT_EQ(SolveRigorousTip(sample, kLength).Status, TipStatus::Solved);
}

// Tilts of which, at their last digits, the lean comes to the very limit.
PoseSensorData WithLean(PoseSensorData sample, double lean) {
  const auto sine = [](double tilt) { return std::sin(tilt * 3.141592653589793 / 180.0); };
  sample.InclineX = 0.6 * lean / kDegree;
  for (int i = 0; i < 100; ++i) {
    sample.InclineX = std::nextafter(sample.InclineX, 1.0);
    sample.InclineY = 0.8 * lean / kDegree * (1.0 - 1e-15);
    while (std::hypot(sine(sample.InclineX), sine(sample.InclineY)) < lean) {
      sample.InclineY = std::nextafter(sample.InclineY, 1.0);
    }
    if (std::hypot(sine(sample.InclineX), sine(sample.InclineY)) == lean) return sample;
  }
  ADD_FAILURE() << "no tilts give this lean";
  return sample;
}

TEST(RigorousTip, APoleThatLeansByExactlyATenthOfABillionthIsNotPlumb) {
  const PoseSensorData ideal = Measured(LeaningPole(40.0, 0.0, 0.0), 60.0);
  EXPECT_EQ(SolveRigorousTip(WithLean(ideal, 1e-10), kLength).Status, TipStatus::Solved);
}

TEST(RigorousTip, TheDipIsThatOfTheMagnetometersInUse) {
  const Attitude pole = LeaningPole(40.0, 10.0, 70.0);
  PoseSensorData sample = Measured(pole, 60.0);
  const PoseSensorData steeper = Measured(pole, 64.0);
  sample.MagneticX_B = steeper.MagneticX_B;
  sample.MagneticY_B = steeper.MagneticY_B;
  sample.MagneticZ_B = steeper.MagneticZ_B;
  EXPECT_NEAR(SolveRigorousTip(sample, kLength).Dip, 62.0, 1e-9);
  RigorousTipOptions options;
  options.Disturbed_B = true;
  EXPECT_NEAR(SolveRigorousTip(sample, kLength, options).Dip, 60.0, 1e-9);
  options.Disturbed_B = false;
  options.Disturbed_A = true;
  EXPECT_NEAR(SolveRigorousTip(sample, kLength, options).Dip, 64.0, 1e-9);
}

}  // namespace
