// Every allocation of the rooms' operations fails in turn: the operation gives its result, says
// that it failed, or throws std::bad_alloc; then the object works as if nothing had been, and
// nothing is leaked. The matrix by itself, measuring and the calibration in the parameter file have
// such tests in their own rooms; screening and quality stand in turn_allocation_test.cpp.

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "faults/allocation_fixture.h"
#include "support/allocations.h"
#include "support/temporary_folder.h"
#include "tiltpole/tiltpole.h"

namespace {

using namespace tiltpole;
using tiltpole_test::Allocations;
using tiltpole_test::Ended;
using tiltpole_test::FailEachAllocation;
using tiltpole_test::IdealTurns;
using tiltpole_test::ReadBytes;
using tiltpole_test::RunWithFailure;
using tiltpole_test::SameBits;
using tiltpole_test::TemporaryFolder;
using tiltpole_test::WriteBytes;

TEST_F(Allocations, AreFailedOneByOne) {
  const long failures = FailEachAllocation([](long after) {
    std::unique_ptr<int> a;
    std::unique_ptr<int> b;
    const Ended ended = RunWithFailure(after, [&] {
      a = std::make_unique<int>(1);
      b = std::make_unique<int>(2);
    });
    EXPECT_EQ(a != nullptr, after > 0);
    EXPECT_EQ(b != nullptr, after > 1);
    return ended;
  });
  EXPECT_EQ(failures, 2);
}

// --- the parameter file

TEST_F(Allocations, AParameterFileThatCannotBeLoadedKeepsItsText) {
  const TemporaryFolder folder;
  const std::wstring before = folder / L"a file whose path is too long for a text of its own";
  const std::wstring after_it = folder / L"another file whose path is as long as that of the first";
  const std::string more = "[key]a value that needs room of its own on every system\r\n";
  WriteBytes(before, "[a]1\r\n" + more);
  WriteBytes(after_it, "[a]2\r\n" + more);
  const long failures = FailEachAllocation([&](long after) {
    CParameterFile file;
    file.OpenForRead(before);
    int loaded = 0;
    const Ended ended = RunWithFailure(after, [&] { loaded = file.OpenForRead(after_it); });
    std::int32_t value = 0;
    EXPECT_EQ(file.ReadInt(L"a", value), 1);
    EXPECT_EQ(value, loaded == 1 ? 2 : 1);
    EXPECT_FALSE(file.IsOpen());
    return ended;
  });
  EXPECT_GT(failures, 0);
}

TEST_F(Allocations, AnEntryThatCannotBeLookedUpLeavesTheValue) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"pole.par";
  const std::wstring key = L"a key that is too long for a text without an allocation";
  WriteBytes(path, "[a key that is too long for a text without an allocation]" +
                       std::string(200, 'v') + "\r\n");
  CParameterFile file;
  file.OpenForRead(path);
  const long failures = FailEachAllocation([&](long after) {
    std::wstring value = L"before";
    const Ended ended = RunWithFailure(after, [&] { file.ReadString(key, value); });
    EXPECT_EQ(value, ended == Ended::Done ? std::wstring(200, L'v') : L"before");
    return ended;
  });
  EXPECT_GT(failures, 1);
}

TEST_F(Allocations, AReplacementThatCannotBeBegunLeavesNothingBehind) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a file whose path is too long for a text of its own";
  WriteBytes(path, "[a]1\r\n");
  const long failures = FailEachAllocation([&](long after) {
    {
      CParameterFile file;
      const Ended ended = RunWithFailure(after, [&] { file.OpenForReplace(path); });
      if (ended == Ended::Done) return ended;
      EXPECT_EQ(file.Replace(), 0);
    }
    EXPECT_FALSE(detail::PathExists(path + L".new")) << "after " << after;
    EXPECT_EQ(ReadBytes(path), "[a]1\r\n");
    return Ended::Thrown;
  });
  EXPECT_GT(failures, 1);
}

#ifndef _WIN32  // Windows takes the path as it is: there is no allocation to fail.
TEST_F(Allocations, AFileThatHasNoRoomForItsPathIsNotRemoved) {
  const TemporaryFolder folder;
  const std::wstring path = folder / L"a file whose path is too long for a text of its own";
  WriteBytes(path, "kept");
  const long failures = FailEachAllocation([&](long after) {
    const Ended ended = RunWithFailure(after, [&] { detail::RemoveFile(path); });
    EXPECT_NE(ended, Ended::Thrown);
    EXPECT_EQ(detail::PathExists(path), ended == Ended::Coped) << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 0);
}
#endif

// --- estimation

TEST_F(Allocations, APairThatCannotBeAddedIsNotAdded) {
  const long failures = FailEachAllocation([](long after) {
    CMagneticConvert convert;
    const Ended ended = RunWithFailure(after, [&] { convert.AddPoint(1.0, 2.0, 3.0, 4.0); });
    EXPECT_EQ(convert.CalFourParameter(), ended == Ended::Done ? 1 : 0);
    return ended;
  });
  EXPECT_GT(failures, 0);
}

CSZMatrix Diagonal(unsigned order, double v) {
  CSZMatrix matrix(order, order);
  matrix.Diagonal(v);
  return matrix;
}

void SetModel(CKFilter& filter) {
  filter.SetMatrixOrder(2, 2);
  filter.SetSystemMatrix(Diagonal(2, 1), Diagonal(2, 0), Diagonal(2, 1), Diagonal(2, 1),
                         Diagonal(2, 0));
  filter.SetNoise(Diagonal(2, 16), Diagonal(2, 16));
  filter.SetInitialData(CSZMatrix(2), Diagonal(2, 25));
}

double FilteredOnce(CKFilter& filter) {
  CSZMatrix z(2);
  z.SetData(1, 57.0);
  const CSZMatrix estimate = filter.Filter(z, CSZMatrix(2), 0);
  // An estimate without storage is how a step that had no room shows.
  return estimate.m_pData == nullptr || estimate.GetRow() != 2 ? -1.0 : estimate.GetData(1);
}

TEST_F(Allocations, AFilterWhoseModelCouldNotBeStoredWorksOnceItCan) {
  CKFilter undisturbed;
  SetModel(undisturbed);
  const double expected = FilteredOnce(undisturbed);
  EXPECT_NEAR(expected, 41.0, 1e-12);
  const long failures = FailEachAllocation([&](long after) {
    CKFilter filter;
    const Ended ended = RunWithFailure(after, [&] { SetModel(filter); });
    FilteredOnce(filter);
    SetModel(filter);
    EXPECT_EQ(FilteredOnce(filter), expected);
    return ended;
  });
  EXPECT_GT(failures, 9);
}

TEST_F(Allocations, AStepOfAFilterGivesItsEstimateOrNone) {
  const long failures = FailEachAllocation([&](long after) {
    CKFilter filter;
    SetModel(filter);
    double estimate = 0.0;
    const Ended ended = RunWithFailure(after, [&] { estimate = FilteredOnce(filter); });
    if (ended != Ended::Thrown) {
      EXPECT_TRUE(estimate == -1.0 || std::fabs(estimate - 41.0) < 1e-12)
          << estimate << " after " << after;
    }
    return ended;
  });
  EXPECT_GT(failures, 9);
}

// --- calibration

void AddTo(CInclineSensor_MagneticAdjust& adjust, const tiltpole_test::Session& turns) {
  for (const PoseSensorData& sample : turns.horizontal) adjust.Horizontal_Add(&sample);
  for (const PoseSensorData& sample : turns.vertical) adjust.Vertical_Add(&sample);
}

TEST_F(Allocations, ASampleThatCannotBeAddedIsNotAdded) {
  const PoseSensorData sample;
  const long failures = FailEachAllocation([&](long after) {
    CInclineSensor_MagneticAdjust adjust;
    PoseSensorData out;
    adjust.Horizontal_Add(&sample);
    const Ended ended = RunWithFailure(after, [&] { adjust.Horizontal_Add(&sample); });
    EXPECT_EQ(adjust.Horizontal_Get(0, out), 1);
    EXPECT_EQ(adjust.Horizontal_Get(1, out), ended == Ended::Done ? 1 : 0);
    return ended;
  });
  EXPECT_GT(failures, 0);
}

TEST_F(Allocations, ACalibrationGivesItsResultOrFailsAndCanBeRepeated) {
  const tiltpole_test::Session samples = IdealTurns();
  CInclineSensor_MagneticAdjust undisturbed;
  AddTo(undisturbed, samples);
  ASSERT_EQ(undisturbed.Adjust(), 1);
  const auto is_as_undisturbed = [&](const CInclineSensor_MagneticAdjust& adjust) {
    return SameBits(adjust.GetCorrectPar_A(), undisturbed.GetCorrectPar_A()) &&
           SameBits(adjust.GetCorrectPar_B(), undisturbed.GetCorrectPar_B()) &&
           SameBits(adjust.GetCoorTrans(), undisturbed.GetCoorTrans());
  };
  const long failures = FailEachAllocation([&](long after) {
    CInclineSensor_MagneticAdjust adjust;
    AddTo(adjust, samples);
    int result = 0;
    shown = 0;
    const Ended ended = RunWithFailure(after, [&] { result = adjust.Adjust(); });
    EXPECT_EQ(result == 1, is_as_undisturbed(adjust)) << "after " << after;
    EXPECT_TRUE(result == 1 || shown > 0 || ended == Ended::Thrown) << "after " << after;
    EXPECT_EQ(adjust.Adjust(), 1);
    EXPECT_TRUE(is_as_undisturbed(adjust));
    return ended;
  });
  EXPECT_GT(failures, 10);
}

CSZMatrix Sweep() {
  CSZMatrix sweep(12, 7);
  for (unsigned i = 0; i < 12; ++i) {
    for (unsigned j = 0; j < 7; ++j) sweep.SetData(i, j, 2.0 * i + j * (i % 3));
  }
  return sweep;
}

bool SameElements(const CSZMatrix& a, const CSZMatrix& b) {
  if (a.GetRow() != b.GetRow() || a.GetCol() != b.GetCol()) return false;
  for (unsigned i = 0; i < a.GetRow(); ++i) {
    for (unsigned j = 0; j < a.GetCol(); ++j) {
      if (!SameBits(a.GetData(i, j), b.GetData(i, j))) return false;
    }
  }
  return true;
}

TEST_F(Allocations, AMatrixThatTellsItsSizeButHasNoStorageIsNotFiltered) {
  const CSZMatrix sweep = Sweep();
  tiltpole_test::FailAllocationAfter(0);
  CSZMatrix bare(sweep);
  ASSERT_TRUE(tiltpole_test::StopFailing());
  ASSERT_EQ(bare.m_pData, nullptr);
  ASSERT_EQ(bare.GetRow(), 12U);
  CInclineSensor_MagneticAdjust adjust;
  adjust.DataFilter(bare);
  adjust.MatrixFilter(bare);
  EXPECT_EQ(bare.m_pData, nullptr);
  EXPECT_EQ(bare.GetRow(), 12U);
}

TEST_F(Allocations, ConicsThatHaveNoStorageGiveACorrectionOfNoNumbers) {
  CSZMatrix bare;
  tiltpole_test::FailAllocationAfter(0);
  bare.Alloc(5);
  ASSERT_TRUE(tiltpole_test::StopFailing());
  ASSERT_EQ(bare.GetRow(), 5U);
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(tiltpole_test::AdjustAccess().MagCorrPara(bare, bare, bare, out), 1);
  EXPECT_TRUE(std::isnan(out.x0));
}

TEST_F(Allocations, AMatrixThatCannotBeFilteredStaysAsItWas) {
  CInclineSensor_MagneticAdjust adjust;
  const CSZMatrix sweep = Sweep();
  CSZMatrix filtered = Sweep();
  adjust.MatrixFilter(filtered);
  EXPECT_LT(filtered.GetRow(), 12U);
  const long failures = FailEachAllocation([&](long after) {
    CSZMatrix matrix = Sweep();
    const Ended ended = RunWithFailure(after, [&] { adjust.MatrixFilter(matrix); });
    EXPECT_TRUE(SameElements(matrix, ended == Ended::Thrown ? sweep : filtered))
        << "after " << after;
    return ended;
  });
  EXPECT_GT(failures, 100);
}

// --- text

TEST_F(Allocations, AMatrixThatCannotBePrintedStays) {
  CSZMatrix matrix = Sweep();
  const long failures = FailEachAllocation([&](long after) {
    const Ended ended = RunWithFailure(after, [&] { static_cast<void>(matrix.Output()); });
    EXPECT_NE(ended, Ended::Coped);
    EXPECT_TRUE(SameElements(matrix, Sweep()));
    return ended;
  });
  EXPECT_GT(failures, 1);
}

}  // namespace
