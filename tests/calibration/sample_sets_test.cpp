#include <type_traits>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

namespace {

using tiltpole::CInclineSensor_MagneticAdjust;
using tiltpole::PoseSensorData;

static_assert(!std::is_copy_constructible_v<CInclineSensor_MagneticAdjust>);
static_assert(!std::is_copy_assignable_v<CInclineSensor_MagneticAdjust>);
static_assert(!std::is_polymorphic_v<CInclineSensor_MagneticAdjust>);

TEST(CalibrationSamples, ANegativeIndexAndTheCountAreOutsideTheSet) {
  CInclineSensor_MagneticAdjust adjust;
  PoseSensorData sample;
  adjust.Horizontal_Add(&sample);
  adjust.Vertical_Add(&sample);
  PoseSensorData out;
  out.InclineX = 12.5;
  EXPECT_EQ(adjust.Horizontal_Get(-1, out), 0);
  EXPECT_EQ(adjust.Horizontal_Get(1, out), 0);
  EXPECT_EQ(adjust.Vertical_Get(-1, out), 0);
  EXPECT_EQ(adjust.Vertical_Get(1, out), 0);
  EXPECT_EQ(out.InclineX, 12.5);
}

TEST(CalibrationSamples, AddingTheSameRecordTwiceGivesTwoIndependentCopies) {
  CInclineSensor_MagneticAdjust adjust;
  PoseSensorData sample;
  sample.MagneticX_A = 1.0;
  adjust.Horizontal_Add(&sample);
  sample.MagneticX_A = 2.0;
  adjust.Horizontal_Add(&sample);
  sample.MagneticX_A = 3.0;

  PoseSensorData out;
  ASSERT_EQ(adjust.Horizontal_Get(0, out), 1);
  EXPECT_EQ(out.MagneticX_A, 1.0);
  ASSERT_EQ(adjust.Horizontal_Get(1, out), 1);
  EXPECT_EQ(out.MagneticX_A, 2.0);
}

TEST(CalibrationSamples, EveryFieldRidesAlong) {
  PoseSensorData sample;
  sample.Tag[2] = 59;
  sample.InclineY = -3.5;
  sample.Aux[6] = 7.25;
  sample.MagneticZ_B = 250.0;
  sample.YawY_A = 10.0;
  sample.HostAngle = 45.0;
  sample.Azimuth = 270.0;
  sample.Forward = 0;
  CInclineSensor_MagneticAdjust adjust;
  adjust.Vertical_Add(&sample);

  PoseSensorData out;
  ASSERT_EQ(adjust.Vertical_Get(0, out), 1);
  EXPECT_EQ(out.Tag[2], 59);
  EXPECT_EQ(out.InclineY, -3.5);
  EXPECT_EQ(out.Aux[6], 7.25);
  EXPECT_EQ(out.MagneticZ_B, 250.0);
  EXPECT_EQ(out.YawY_A, 10.0);
  EXPECT_EQ(out.HostAngle, 45.0);
  EXPECT_EQ(out.Azimuth, 270.0);
  EXPECT_EQ(out.Forward, 0);
}

TEST(CalibrationSamples, ANullPointerIsIgnored) {
  CInclineSensor_MagneticAdjust adjust;
  adjust.Horizontal_Add(nullptr);
  adjust.Vertical_Add(nullptr);
  PoseSensorData out;
  EXPECT_EQ(adjust.Horizontal_Get(0, out), 0);
  EXPECT_EQ(adjust.Vertical_Get(0, out), 0);
}

TEST(CalibrationSamples, TheTwoSetsAreApartAndClearedApart) {
  CInclineSensor_MagneticAdjust adjust;
  PoseSensorData sample;
  adjust.Horizontal_Add(&sample);
  adjust.Vertical_Add(&sample);
  adjust.Horizontal_Clear();
  PoseSensorData out;
  EXPECT_EQ(adjust.Horizontal_Get(0, out), 0);
  EXPECT_EQ(adjust.Vertical_Get(0, out), 1);
  adjust.Vertical_Clear();
  EXPECT_EQ(adjust.Vertical_Get(0, out), 0);
}

TEST(CalibrationSamples, AClearedSetFreesItsStorage) {
#if defined(_WIN32) && !defined(TILTPOLE_STATIC_DEFINE)
  GTEST_SKIP() << "a DLL keeps its own allocator, which a test cannot count";
#endif
  CInclineSensor_MagneticAdjust adjust;
  const PoseSensorData sample;
  const long empty = tiltpole_test::LivingAllocations();
  adjust.Horizontal_Add(&sample);
  EXPECT_GT(tiltpole_test::LivingAllocations(), empty);
  adjust.Horizontal_Clear();
  EXPECT_EQ(tiltpole_test::LivingAllocations(), empty);
  adjust.Vertical_Add(&sample);
  EXPECT_GT(tiltpole_test::LivingAllocations(), empty);
  adjust.Vertical_Clear();
  EXPECT_EQ(tiltpole_test::LivingAllocations(), empty);
}

}  // namespace
