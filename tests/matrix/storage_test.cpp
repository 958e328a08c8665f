// Construction, sizes, element access and assignment.

#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/literal_matrix.h"
#include "support/member_order.h"
#include "support/rows.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;
using tiltpole_test::Rows;
using tiltpole_test::SameElements;

TEST(MatrixConstruction, ADefaultMatrixIsEmpty) {
  const CSZMatrix empty;
  EXPECT_EQ(empty.m_pData, nullptr);
  EXPECT_EQ(empty.GetRow(), 0U);
  EXPECT_EQ(empty.GetCol(), 0U);
}

TEST(MatrixConstruction, ADefaultMatrixHasItsCursorsAtTheStartAndNothingDone) {
  const CSZMatrix empty;
  EXPECT_EQ(empty.m_i, 0U);
  EXPECT_EQ(empty.m_j, 0U);
  EXPECT_EQ(empty.m_bOK, 0);
}

TEST(MatrixConstruction, OneCountMakesAColumnVectorOfZeros) {
  const CSZMatrix column(3);
  EXPECT_TRUE(SameElements(column, Rows({{0}, {0}, {0}})));
  EXPECT_EQ(column.m_bOK, 1);
}

TEST(MatrixConstruction, TwoCountsMakeAMatrixOfZeros) {
  const CSZMatrix matrix(2, 3);
  EXPECT_TRUE(SameElements(matrix, Rows({{0, 0, 0}, {0, 0, 0}})));
  EXPECT_EQ(matrix.m_bOK, 1);
}

TEST(MatrixConstruction, AZeroCountGivesNoStorageButKeepsTheCountsAskedFor) {
  const CSZMatrix no_rows(0, 4);
  EXPECT_EQ(no_rows.m_pData, nullptr);
  EXPECT_EQ(no_rows.m_bOK, 0);
  EXPECT_EQ(no_rows.GetRow(), 0U);
  EXPECT_EQ(no_rows.GetCol(), 4U);

  const CSZMatrix no_columns(4, 0);
  EXPECT_EQ(no_columns.m_pData, nullptr);
  EXPECT_EQ(no_columns.m_bOK, 0);
  EXPECT_EQ(no_columns.GetRow(), 4U);
  EXPECT_EQ(no_columns.GetCol(), 0U);

  const CSZMatrix no_vector(0);
  EXPECT_EQ(no_vector.m_pData, nullptr);
  EXPECT_EQ(no_vector.m_bOK, 0);
  EXPECT_EQ(no_vector.GetRow(), 0U);
  EXPECT_EQ(no_vector.GetCol(), 1U);
}

TEST(MatrixConstruction, ElementsLieRowByRow) {
  const CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  for (unsigned at = 0; at < 6; ++at) EXPECT_EQ(matrix.m_pData[at], at + 1.0);
}

TEST(MatrixConstruction, DeclaresTheElementsThenTheCountsTheCursorsAndTheStatus) {
  const CSZMatrix m;
  EXPECT_TRUE(
      tiltpole_test::StandInThisOrder(&m.m_pData, &m.m_nRow, &m.m_nCol, &m.m_i, &m.m_j, &m.m_bOK));
}

TEST(MatrixConstruction, TheDestructorIsVirtual) {
  EXPECT_TRUE(std::has_virtual_destructor_v<CSZMatrix>);
}

TEST(MatrixCopy, IsDeep) {
  CSZMatrix original = Rows({{1, 2}, {3, 4}});
  CSZMatrix copy(original);
  EXPECT_NE(copy.m_pData, original.m_pData);
  copy.SetData(0, 0, 9.0);
  original.SetData(1, 1, 8.0);
  EXPECT_TRUE(SameElements(original, Rows({{1, 2}, {3, 8}})));
  EXPECT_TRUE(SameElements(copy, Rows({{9, 2}, {3, 4}})));
}

TEST(MatrixCopy, HasStatusOneWhateverTheOriginalsIs) {
  CSZMatrix original = Rows({{1, 2}, {3, 4}});
  original.m_bOK = 0;
  const CSZMatrix copy(original);
  EXPECT_EQ(copy.m_bOK, 1);
  EXPECT_EQ(original.m_bOK, 0);
}

TEST(MatrixCopy, WalksWithTheCopysCursors) {
  CSZMatrix original = Rows({{1, 2, 3}, {4, 5, 6}});
  original.m_i = 77;
  original.m_j = 88;
  const CSZMatrix copy(original);
  EXPECT_EQ(copy.m_i, 2U);
  EXPECT_EQ(copy.m_j, 3U);
  EXPECT_EQ(original.m_i, 77U);
  EXPECT_EQ(original.m_j, 88U);
}

TEST(MatrixCopy, OfAMatrixWithAZeroCountTakesTheCountsAndHasStatusZero) {
  CSZMatrix original(0, 3);
  original.m_bOK = 1;
  const CSZMatrix copy(original);
  EXPECT_EQ(copy.m_pData, nullptr);
  EXPECT_EQ(copy.GetRow(), 0U);
  EXPECT_EQ(copy.GetCol(), 3U);
  EXPECT_EQ(copy.m_bOK, 0);
}

TEST(MatrixMove, TakesTheStorageAndLeavesTheSourceEmpty) {
  CSZMatrix source = Rows({{1, 2}, {3, 4}});
  const double* const storage = source.m_pData;
  const CSZMatrix target(std::move(source));
  EXPECT_EQ(target.m_pData, storage);
  EXPECT_TRUE(SameElements(target, Rows({{1, 2}, {3, 4}})));
  // NOLINTNEXTLINE(bugprone-use-after-move): what is left behind is part of the contract.
  EXPECT_EQ(source.m_pData, nullptr);
  EXPECT_EQ(source.GetRow(), 0U);
  EXPECT_EQ(source.GetCol(), 0U);
}

TEST(MatrixMove, ByAssignmentTakesTheStorageAndLeavesTheStatusAlone) {
  CSZMatrix source = Rows({{1, 2}, {3, 4}});
  const double* const storage = source.m_pData;
  CSZMatrix target(5, 1);
  target.m_bOK = 0;
  EXPECT_EQ((target = std::move(source)), 1);
  EXPECT_EQ(target.m_pData, storage);
  EXPECT_EQ(target.m_bOK, 0);
  EXPECT_EQ(target.m_i, 2U);
  EXPECT_EQ(target.m_j, 2U);
  EXPECT_TRUE(SameElements(target, Rows({{1, 2}, {3, 4}})));
  // NOLINTNEXTLINE(bugprone-use-after-move): what is left behind is part of the contract.
  EXPECT_EQ(source.m_pData, nullptr);
  EXPECT_EQ(source.GetRow(), 0U);
  EXPECT_EQ(source.GetCol(), 0U);
}

TEST(MatrixMove, AMovedFromMatrixCanBeUsedAgain) {
  CSZMatrix source = Rows({{1, 2}, {3, 4}});
  const CSZMatrix target(std::move(source));
  // NOLINTNEXTLINE(bugprone-use-after-move): what is left behind is part of the contract.
  EXPECT_EQ(source.Alloc(1, 2), 1);
  EXPECT_TRUE(SameElements(source, Rows({{0, 0}})));
}

TEST(MatrixMove, OntoItselfChangesNothing) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  CSZMatrix& same = matrix;
  EXPECT_EQ((matrix = std::move(same)), 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{1, 2}, {3, 4}})));
}

TEST(MatrixMove, AGrowingVectorMovesItsMatrices) {
  std::vector<CSZMatrix> matrices;
  matrices.push_back(Rows({{1, 2}}));
  const double* const storage = matrices[0].m_pData;
  matrices.reserve(matrices.capacity() + 1);
  EXPECT_EQ(matrices[0].m_pData, storage);
}

TEST(MatrixAlloc, GivesANewSizeAndLosesTheElements) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  matrix.m_bOK = 0;
  EXPECT_EQ(matrix.Alloc(3, 1), 1);
  EXPECT_EQ(matrix.m_bOK, 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{0}, {0}, {0}})));
}

TEST(MatrixAlloc, WithOneCountMakesAColumn) {
  CSZMatrix matrix;
  EXPECT_EQ(matrix.Alloc(2), 1);
  EXPECT_EQ(matrix.m_bOK, 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{0}, {0}})));
}

TEST(MatrixAlloc, AZeroCountChangesNothing) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  const double* const storage = matrix.m_pData;
  EXPECT_EQ(matrix.Alloc(0, 4), 0);
  EXPECT_EQ(matrix.Alloc(4, 0), 0);
  EXPECT_EQ(matrix.Alloc(0), 0);
  EXPECT_EQ(matrix.m_pData, storage);
  EXPECT_EQ(matrix.m_bOK, 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{1, 2}, {3, 4}})));
}

TEST(MatrixElements, ReadingWithOneIndexReadsTheFirstColumn) {
  const CSZMatrix matrix = Rows({{1, 2}, {3, 4}, {5, 6}});
  EXPECT_EQ(matrix.GetData(0), 1.0);
  EXPECT_EQ(matrix.GetData(1), 3.0);
  EXPECT_EQ(matrix.GetData(2), 5.0);
}

TEST(MatrixElements, WritingWithOneIndexWritesTheFirstColumn) {
  CSZMatrix matrix(3, 3);
  EXPECT_EQ(matrix.SetData(2, 7.0), 1);
  EXPECT_TRUE(SameElements(matrix, Rows({{0, 0, 0}, {0, 0, 0}, {7, 0, 0}})));
}

TEST(MatrixElements, AWriteOutsideIsDropped) {
  CSZMatrix matrix(3, 3);
  EXPECT_EQ(matrix.SetData(5, 0, 7.0), 0);
  EXPECT_EQ(matrix.SetData(3, 0, 7.0), 0);
  EXPECT_EQ(matrix.SetData(0, 3, 7.0), 0);
  EXPECT_EQ(matrix.SetData(3, 7.0), 0);
  EXPECT_EQ(matrix.SetData(0xFFFFFFFFU, 0xFFFFFFFFU, 7.0), 0);
  EXPECT_TRUE(SameElements(matrix, CSZMatrix(3, 3)));
  EXPECT_EQ(matrix.SetData(2, 2, 7.0), 1);
  EXPECT_EQ(matrix.GetData(2, 2), 7.0);
}

TEST(MatrixElements, AMatrixWithoutStorageTakesNoWrites) {
  CSZMatrix no_columns(3, 0);
  EXPECT_EQ(no_columns.SetData(0, 7.0), 0);
  EXPECT_EQ(no_columns.SetData(0, 0, 7.0), 0);
}

TEST(MatrixAssignment, OfANumberSetsEveryElement) {
  CSZMatrix matrix = Rows({{1, 2, 3}, {4, 5, 6}});
  matrix.m_bOK = 0;
  matrix = 2.5;
  EXPECT_TRUE(SameElements(matrix, Rows({{2.5, 2.5, 2.5}, {2.5, 2.5, 2.5}})));
  EXPECT_EQ(matrix.m_bOK, 0);
  EXPECT_EQ(matrix.m_i, 2U);
  EXPECT_EQ(matrix.m_j, 3U);
}

TEST(MatrixAssignment, BetweenEqualSizesReusesTheStorage) {
  CSZMatrix target(2, 2);
  target.m_bOK = 0;
  const double* const storage = target.m_pData;
  const CSZMatrix source = Rows({{1, 2}, {3, 4}});
  EXPECT_EQ((target = source), 1);
  EXPECT_EQ(target.m_pData, storage);
  EXPECT_NE(target.m_pData, source.m_pData);
  EXPECT_TRUE(SameElements(target, source));
  EXPECT_EQ(target.m_bOK, 0);
}

TEST(MatrixAssignment, BetweenDifferentSizesTakesTheSourcesSize) {
  CSZMatrix target(5, 1);
  const CSZMatrix source = Rows({{1, 2, 3}, {4, 5, 6}});
  EXPECT_EQ((target = source), 1);
  EXPECT_TRUE(SameElements(target, source));
}

TEST(MatrixAssignment, TheSameCountOfElementsInAnotherShapeIsAnotherSize) {
  CSZMatrix target(3, 2);
  const CSZMatrix source = Rows({{1, 2, 3}, {4, 5, 6}});
  EXPECT_EQ((target = source), 1);
  EXPECT_TRUE(SameElements(target, source));
}

TEST(MatrixAssignment, WalksWithTheTargetsCursors) {
  CSZMatrix target;
  CSZMatrix source(2, 3);
  source.m_i = 77;
  source.m_j = 88;
  target = source;
  EXPECT_EQ(target.m_i, 2U);
  EXPECT_EQ(target.m_j, 3U);
  EXPECT_EQ(source.m_i, 77U);
  EXPECT_EQ(source.m_j, 88U);
}

TEST(MatrixAssignment, OfAnEmptyMatrixEmptiesTheTarget) {
  CSZMatrix target(2, 2);
  const CSZMatrix empty;
  EXPECT_EQ((target = empty), 1);
  EXPECT_EQ(target.m_pData, nullptr);
  EXPECT_EQ(target.GetRow(), 0U);
  EXPECT_EQ(target.GetCol(), 0U);
}

TEST(MatrixAssignment, ToItselfChangesNothing) {
  CSZMatrix matrix = Rows({{1, 2}, {3, 4}});
  const double* const storage = matrix.m_pData;
  const CSZMatrix& same = matrix;
  EXPECT_EQ((matrix = same), 1);
  EXPECT_EQ(matrix.m_pData, storage);
  EXPECT_TRUE(SameElements(matrix, Rows({{1, 2}, {3, 4}})));
}

TEST(MatrixAssignment, WithoutARowTheColumnCursorIsNeverSet) {
  CSZMatrix target(0, 3);
  target.m_i = 77;
  target.m_j = 88;
  const CSZMatrix source(0, 3);
  EXPECT_EQ((target = source), 1);
  EXPECT_EQ(target.m_i, 0U);
  EXPECT_EQ(target.m_j, 88U);
}

}  // namespace
