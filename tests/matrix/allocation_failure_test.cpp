// What is left when storage cannot be obtained.

#include <cstdlib>
#include <functional>
#include <new>
#include <utility>

#include <gtest/gtest.h>

#include "support/literal_matrix.h"
#include "support/rows.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace {

// How many further allocations that may fail succeed; negative: all of them.
int allocations_left = -1;

}  // namespace

// The library's matrices ask for their storage through this form alone.
void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  if (allocations_left == 0) return nullptr;
  if (allocations_left > 0) --allocations_left;
  try {
    return ::operator new[](size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

namespace {

using tiltpole::CSZMatrix;
using tiltpole_test::Rows;
using tiltpole_test::SameElements;

class FailingAllocation : public testing::Test {
 protected:
  void SetUp() override {
#if defined(_WIN32) && !defined(TILTPOLE_STATIC_DEFINE)
    GTEST_SKIP() << "a DLL keeps its own allocator, which a test cannot make fail";
#endif
  }
  void TearDown() override { allocations_left = -1; }

  static void FailAfter(int allocations) { allocations_left = allocations; }

  // A matrix as it is left when its storage could not be obtained.
  static CSZMatrix WithoutStorage(unsigned rows, unsigned cols) {
    FailAfter(0);
    CSZMatrix matrix(rows, cols);
    FailAfter(-1);
    return matrix;
  }
};

TEST(MatrixOverflow, ACountWhoseBytesDoNotFitFailsInsteadOfWrapping) {
  // 2^31 x 2^30 x 8 bytes is 2^64, which would wrap to a block of no bytes.
  const CSZMatrix wrapping(1U << 31U, 1U << 30U);
  EXPECT_EQ(wrapping.m_pData, nullptr);
  EXPECT_EQ(wrapping.m_bOK, 0);
  EXPECT_EQ(wrapping.GetRow(), 1U << 31U);
  EXPECT_EQ(wrapping.GetCol(), 1U << 30U);

  const CSZMatrix largest(0xFFFFFFFFU, 0xFFFFFFFFU);
  EXPECT_EQ(largest.m_pData, nullptr);
  EXPECT_EQ(largest.m_bOK, 0);
}

TEST(MatrixOverflow, AllocReturnsOneAndTellsItByTheStatus) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  EXPECT_EQ(matrix.Alloc(1U << 31U, 1U << 30U), 1);
  EXPECT_EQ(matrix.m_bOK, 0);
  EXPECT_EQ(matrix.m_pData, nullptr);
  EXPECT_EQ(matrix.GetRow(), 1U << 31U);
  EXPECT_EQ(matrix.GetCol(), 1U << 30U);
}

TEST(MatrixOverflow, AMatrixWithoutStorageTakesNoWritesAndCanBeReused) {
  CSZMatrix matrix(1U << 31U, 1U << 30U);
  EXPECT_EQ(matrix.SetData(0, 0, 1.0), 0);
  EXPECT_EQ(matrix.SetData(0, 1.0), 0);
  EXPECT_EQ(matrix.Alloc(1, 1), 1);
  EXPECT_EQ(matrix.m_bOK, 1);
  EXPECT_EQ(matrix.SetData(0, 0, 1.0), 1);
}

TEST(MatrixOverflow, ABlockBeyondEveryMemoryHasNoStorage) {
  const CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  const CSZMatrix block = matrix.Slice(-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647);
  EXPECT_EQ(block.m_pData, nullptr);
  EXPECT_EQ(block.m_bOK, 0);
}

TEST_F(FailingAllocation, AConstructorTellsItByTheStatus) {
  FailAfter(0);
  const CSZMatrix column(3);
  const CSZMatrix matrix(2, 3);
  EXPECT_EQ(column.m_pData, nullptr);
  EXPECT_EQ(column.m_bOK, 0);
  EXPECT_EQ(matrix.m_pData, nullptr);
  EXPECT_EQ(matrix.m_bOK, 0);
  EXPECT_EQ(matrix.GetRow(), 2U);
  EXPECT_EQ(matrix.GetCol(), 3U);
}

TEST_F(FailingAllocation, ACopyTellsItByTheStatus) {
  const CSZMatrix original = Rows({{1, 2}, {3, 4}});
  FailAfter(0);
  const CSZMatrix copy(original);  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(copy.m_pData, nullptr);
  EXPECT_EQ(copy.m_bOK, 0);
  EXPECT_EQ(copy.GetRow(), 2U);
  EXPECT_EQ(copy.GetCol(), 2U);
}

TEST_F(FailingAllocation, AnAllocStillReturnsOne) {
  CSZMatrix matrix(2, 2);
  FailAfter(0);
  EXPECT_EQ(matrix.Alloc(3, 3), 1);
  EXPECT_EQ(matrix.m_pData, nullptr);
  EXPECT_EQ(matrix.m_bOK, 0);
}

TEST_F(FailingAllocation, AnAssignmentReturnsZeroAndLeavesTheStatus) {
  CSZMatrix target(3, 3);
  const CSZMatrix source = Rows({{1, 2}, {3, 4}});
  FailAfter(0);
  EXPECT_EQ((target = source), 0);
  EXPECT_EQ(target.m_pData, nullptr);
  EXPECT_EQ(target.m_bOK, 1);
  EXPECT_EQ(target.GetRow(), 2U);
}

TEST_F(FailingAllocation, AnAssignmentTriesAgainToObtainTheStorage) {
  CSZMatrix target = WithoutStorage(2, 2);
  const CSZMatrix source = Rows({{1, 2}, {3, 4}});
  EXPECT_EQ((target = source), 1);
  EXPECT_TRUE(SameElements(target, source));
}

TEST_F(FailingAllocation, AnAssignmentBetweenEqualSizesNeedsNone) {
  CSZMatrix target(2, 2);
  const CSZMatrix source = Rows({{1, 2}, {3, 4}});
  FailAfter(0);
  EXPECT_EQ((target = source), 1);
  EXPECT_TRUE(SameElements(target, source));
}

TEST_F(FailingAllocation, AMatrixWithoutStorageIsAssignedAsAFailure) {
  CSZMatrix target(2, 2);
  const CSZMatrix source = WithoutStorage(2, 2);
  EXPECT_EQ((target = source), 0);
  EXPECT_EQ(target.m_pData, nullptr);
  CSZMatrix moved(3, 3);
  EXPECT_EQ((moved = WithoutStorage(2, 2)), 0);
  EXPECT_EQ(moved.m_pData, nullptr);
}

TEST_F(FailingAllocation, EveryOperationOnAMatrixWithoutStorageComesBack) {
  CSZMatrix none = WithoutStorage(3, 3);
  const CSZMatrix full = Rows({{4, 1, 0}, {1, 4, 1}, {0, 1, 4}});
  int ok = 7;
  none = 1.0;
  EXPECT_EQ(none.Zeros(), 1);
  EXPECT_EQ(none.Diagonal(1.0), 1);
  EXPECT_EQ(none.Symmetry(), 1);
  EXPECT_EQ(none += full, 1);
  EXPECT_EQ(none -= full, 1);
  EXPECT_EQ(none += 1.0, 1);
  EXPECT_EQ(none -= 1.0, 1);
  EXPECT_EQ(none.Trace(), 0.0);
  EXPECT_EQ((none + full).GetRow(), 3U);
  EXPECT_EQ((full - none).GetRow(), 3U);
  EXPECT_EQ((none * full).GetRow(), 3U);
  EXPECT_EQ((full * none).GetRow(), 3U);
  EXPECT_EQ((none * 2.0).GetRow(), 3U);
  EXPECT_EQ(none.Slice(0, 0, 1, 1).GetRow(), 2U);
  EXPECT_EQ(none.MatInv().GetRow(), 3U);
  EXPECT_EQ(none.Reverse().GetRow(), 3U);
  EXPECT_EQ(none.T().GetRow(), 3U);
  EXPECT_EQ(none.matChole(&ok).GetRow(), 3U);
  EXPECT_EQ(none.Output(), L",\r\n,\r\n,\r\n\r\n");
}

TEST_F(FailingAllocation, WhatIsComputedFromAMatrixWithoutStorageHasNoneAndTellsItByTheStatus) {
  const CSZMatrix none = WithoutStorage(2, 2);
  const CSZMatrix full = Rows({{4, 1}, {1, 4}});
  int ok = 0;
  for (const CSZMatrix& result :
       {full + none, full - none, none * full, full * none, none.T(), none.Slice(0, 0, 1, 1),
        none.MatInv(), none.Reverse(), none.matChole(&ok)}) {
    EXPECT_EQ(result.m_pData, nullptr);
    EXPECT_EQ(result.m_bOK, 0);
  }
}

TEST_F(FailingAllocation, AnInverseOfAMatrixThatIsNotSquareHasItsSizeAndZerosAlsoWithoutStorage) {
  const CSZMatrix none = WithoutStorage(2, 3);
  for (const CSZMatrix& result : {none.MatInv(), ~none, none.Reverse()}) {
    ASSERT_NE(result.m_pData, nullptr);
    EXPECT_TRUE(SameElements(result, Rows({{0, 0, 0}, {0, 0, 0}})));
    EXPECT_EQ(result.m_bOK, 1);
  }
  EXPECT_EQ(none.m_bOK, 0);
}

TEST_F(FailingAllocation, AnOperationOfWhichAnyAllocationFailsGivesItsResultOrNoStorage) {
  const CSZMatrix a = Rows({{4, 1, 0}, {1, 4, 1}, {0, 1, 4}});
  CSZMatrix large(40, 40);
  large.Diagonal(2.0);
  int ok = 7;
  const std::pair<const char*, std::function<CSZMatrix()>> operations[] = {
      {"sum", [&] { return a + a; }},
      {"difference", [&] { return a - a; }},
      {"sum with a number", [&] { return a + 1.0; }},
      {"difference from a number", [&] { return a - 1.0; }},
      {"multiple", [&] { return a * 2.0; }},
      {"product", [&] { return a * a; }},
      {"slice", [&] { return a.Slice(0, 0, 1, 1); }},
      {"inverse", [&] { return a.MatInv(); }},
      {"large inverse", [&] { return large.MatInv(); }},
      {"inverse through the Cholesky factor", [&] { return a.Reverse(); }},
      {"transpose", [&] { return a.MatTran(); }},
      {"Cholesky factor", [&] { return a.matChole(&ok); }}};
  for (const auto& [name, operation] : operations) {
    const CSZMatrix expected = operation();
    ASSERT_NE(expected.m_pData, nullptr) << name;
    for (int allocations = 0; allocations < 3; ++allocations) {
      FailAfter(allocations);
      const CSZMatrix result = operation();
      const bool failed = allocations_left == 0;
      FailAfter(-1);
      if (result.m_pData == nullptr) {
        EXPECT_TRUE(failed) << name << " after " << allocations;
        EXPECT_EQ(result.m_bOK, 0) << name << " after " << allocations;
      } else {
        EXPECT_GT(allocations, 0) << name;
        EXPECT_TRUE(SameElements(result, expected)) << name << " after " << allocations;
      }
    }
  }
  EXPECT_TRUE(SameElements(a, Rows({{4, 1, 0}, {1, 4, 1}, {0, 1, 4}})));
}

TEST_F(FailingAllocation, AnInverseWithoutRoomForItsPivotsIsEmpty) {
  CSZMatrix large(40, 40);
  large.Diagonal(2.0);
  FailAfter(1);
  const CSZMatrix inverse = large.MatInv();
  FailAfter(-1);
  EXPECT_EQ(inverse.GetRow(), 0U);
  EXPECT_EQ(large.MatInv().GetData(39, 39), 0.5);
}

}  // namespace
