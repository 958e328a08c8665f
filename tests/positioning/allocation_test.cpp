// Measuring allocates nothing, and the parameter file survives every allocation that fails.

#include <new>
#include <string>

#include <gtest/gtest.h>

#include "positioning/exposed_position.h"
#include "support/allocations.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;
using tiltpole_test::AllocationsMade;
using tiltpole_test::ExposedPosition;
using tiltpole_test::FailAllocationAfter;
using tiltpole_test::ReadBytes;
using tiltpole_test::StopFailing;
using tiltpole_test::TemporaryFolder;

TEST(PositionAllocations, AreCounted) {
  const long before = AllocationsMade();
  // Called by its name, which a compiler may not leave out as it may a new that nobody uses.
  void* const something = ::operator new(8);
  EXPECT_EQ(AllocationsMade() - before, 1);
  ::operator delete(something);
}

TEST(PositionAllocations, MeasuringNeedsNone) {
  ExposedPosition position;
  xyhCoordinate tip;
  const long before = AllocationsMade();
  for (int i = 0; i < 100; ++i) {
    PoseSensorData data;
    data.InclineX = 0.3 * (i - 50);
    data.InclineY = 0.2 * (i - 30);
    data.MagneticX_A = 100.0 * i;
    data.MagneticX_B = -100.0 * i;
    position.Position(data, 2.0, tip);
    position.Position_Geometry_B(xyhCoordinate(), data, 2.0, tip);
    position.Position_Math(xyhCoordinate(), data, 2.0, tip);
    position.GetAngleofPoleProject(data.InclineX, data.InclineY, data.Yaw_A);
  }
  EXPECT_EQ(AllocationsMade() - before, 0);
}

class PositionFailedAllocations : public ::testing::Test {
 protected:
  PositionFailedAllocations() {
    position.SetMagneticBiasAngle_A(12.5);
    position.ConfigSave(path);
    position.SetMagneticBiasAngle_A(25.0);
  }
  ~PositionFailedAllocations() override { StopFailing(); }

  TemporaryFolder folder;
  std::wstring path = folder / L"a path too long for any text without an allocation.par";
  ExposedPosition position;
};

TEST_F(PositionFailedAllocations, ReadingGivesEverythingOrChangesNothing) {
  int failed = 0;
  for (int result = 0; result == 0; ++failed) {
    ASSERT_EQ(position.GetMagneticBiasAngle_A(), 25.0);
    FailAllocationAfter(failed);
    result = position.ConfigRead(path);
    StopFailing();
  }
  EXPECT_GT(failed, 5);
  EXPECT_EQ(position.GetMagneticBiasAngle_A(), 12.5);
}

TEST_F(PositionFailedAllocations, ReplacingGivesTheNewFileOrLeavesTheOld) {
  const std::string old = ReadBytes(path);
  int failed = 0;
  for (int result = 0; result == 0; ++failed) {
    ASSERT_EQ(ReadBytes(path), old);
    FailAllocationAfter(failed);
    result = position.ConfigReplace(path);
    StopFailing();
  }
  EXPECT_GT(failed, 5);
  EXPECT_NE(ReadBytes(path).find("[MagneticBiasAngle_A]25.0000000000\r\n"), std::string::npos);
}

TEST_F(PositionFailedAllocations, SavingReportsThem) {
  int failed = 0;
  for (int result = 0; result == 0; ++failed) {
    FailAllocationAfter(failed);
    result = position.ConfigSave(path);
    StopFailing();
  }
  EXPECT_GT(failed, 5);
  EXPECT_NE(ReadBytes(path).find("[MagneticBiasAngle_A]25.0000000000\r\n"), std::string::npos);
}

}  // namespace
