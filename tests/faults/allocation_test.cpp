// Every allocation of the rooms' operations fails in turn: the operation gives its result, says
// that it failed, or throws std::bad_alloc; then the object works as if nothing had been, and
// nothing is leaked. The matrix by itself, measuring and the calibration in the parameter file have
// such tests in their own rooms; calibrating stands in calibration_allocation_test.cpp, screening
// and quality in turn_allocation_test.cpp.

#include <cmath>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "faults/allocation_fixture.h"
#include "support/allocations.h"
#include "support/literal_matrix.h"
#include "support/rows.h"
#include "support/temporary_folder.h"
#include "tiltpole/tiltpole.h"

namespace {

using namespace tiltpole;
using tiltpole_test::Allocations;
using tiltpole_test::Ended;
using tiltpole_test::FailEachAllocation;
using tiltpole_test::ReadBytes;
using tiltpole_test::Rows;
using tiltpole_test::RunWithFailure;
using tiltpole_test::SameElements;
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

// --- text

TEST_F(Allocations, AMatrixThatCannotBePrintedStays) {
  const CSZMatrix matrix = Rows({{1, -2.5, 3}, {4, 5e6, -6}});
  const CSZMatrix same = matrix;
  const long failures = FailEachAllocation([&](long after) {
    const Ended ended = RunWithFailure(after, [&] { static_cast<void>(matrix.Output()); });
    EXPECT_NE(ended, Ended::Coped);
    EXPECT_TRUE(SameElements(matrix, same));
    return ended;
  });
  EXPECT_GT(failures, 1);
}

}  // namespace
