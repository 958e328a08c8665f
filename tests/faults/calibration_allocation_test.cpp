// Every allocation fails in turn while a pole is calibrated: std::bad_alloc leaves the operation,
// no message blames the readings, the object is as it was, and the operation can be repeated.

#include <cmath>
#include <limits>
#include <new>

#include <gtest/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/matrices.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "faults/allocation_fixture.h"
#include "support/allocations.h"
#include "support/literal_matrix.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

namespace {

using namespace tiltpole;
using tiltpole_test::AdjustAccess;
using tiltpole_test::Allocations;
using tiltpole_test::Ended;
using tiltpole_test::FailEachAllocation;
using tiltpole_test::IdealTurns;
using tiltpole_test::Rows;
using tiltpole_test::RunWithFailure;
using tiltpole_test::SameBits;
using tiltpole_test::SameElements;
using tiltpole_test::Session;

void AddTo(CInclineSensor_MagneticAdjust& adjust, const Session& turns) {
  for (const PoseSensorData& sample : turns.horizontal) adjust.Horizontal_Add(&sample);
  for (const PoseSensorData& sample : turns.vertical) adjust.Vertical_Add(&sample);
}

bool SameResults(const CInclineSensor_MagneticAdjust& a, const CInclineSensor_MagneticAdjust& b) {
  return SameBits(a.GetCorrectPar_A(), b.GetCorrectPar_A()) &&
         SameBits(a.GetCorrectPar_B(), b.GetCorrectPar_B()) &&
         SameBits(a.GetCoorTrans(), b.GetCoorTrans());
}

// An object that holds the results of one session and the samples of the next.
void CalibrateThenFill(CInclineSensor_MagneticAdjust& adjust, const Session& next) {
  AddTo(adjust, IdealTurns());
  EXPECT_EQ(adjust.Adjust(), 1);
  adjust.Horizontal_Clear();
  adjust.Vertical_Clear();
  AddTo(adjust, next);
}

bool HoldsTheSamplesOf(const CInclineSensor_MagneticAdjust& adjust, const Session& turns) {
  PoseSensorData sample;
  const auto count = static_cast<int>(turns.horizontal.size());
  for (int i = 0; i < count; ++i) {
    if (adjust.Horizontal_Get(i, sample) == 0 || adjust.Vertical_Get(i, sample) == 0) return false;
  }
  return adjust.Horizontal_Get(count, sample) == 0 && adjust.Vertical_Get(count, sample) == 0;
}

// A calibration that returns as expected where nothing fails; with each failing allocation the
// results are those of before, the samples stay, and the calibration can be repeated.
void CalibrateWithEachFailure(const Session& next, int expected) {
  CInclineSensor_MagneticAdjust before;
  CalibrateThenFill(before, next);
  CInclineSensor_MagneticAdjust undisturbed;
  CalibrateThenFill(undisturbed, next);
  ASSERT_EQ(undisturbed.Adjust(), expected);
  ASSERT_FALSE(SameResults(before, undisturbed));
  const long failures = FailEachAllocation([&](long after) {
    CInclineSensor_MagneticAdjust adjust;
    CalibrateThenFill(adjust, next);
    const Ended ended = RunWithFailure(after, [&] { adjust.Adjust(); });
    EXPECT_NE(ended, Ended::Coped) << "after " << after;
    EXPECT_TRUE(SameResults(adjust, ended == Ended::Done ? undisturbed : before))
        << "after " << after;
    EXPECT_TRUE(HoldsTheSamplesOf(adjust, next));
    EXPECT_EQ(adjust.Adjust(), expected);
    EXPECT_TRUE(SameResults(adjust, undisturbed));
    return ended;
  });
  EXPECT_GT(failures, 10);
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

TEST_F(Allocations, ACalibrationWithoutMemoryKeepsResultsAndSamplesAndCanBeRepeated) {
  const Session next =
      tiltpole_test::SessionOf(RandomTurns(tiltpole_test::Kind::SoftIron, 40, 40, 7),
                               RandomTurns(tiltpole_test::Kind::SoftIron, 40, 40, 8));
  CalibrateWithEachFailure(next, 1);
  EXPECT_EQ(shown, 0);
}

TEST_F(Allocations, AFailedCalibrationWhoseMessageFindsNoRoomKeepsTheCorrectionOfA) {
  // B's y axis would need a scale of 3, beyond the search.
  tiltpole_test::Turns unreachable = RandomTurns(tiltpole_test::Kind::Ideal, 40, 40, 9);
  for (tiltpole_test::Reading& reading : unreachable.horizontal) reading[1] /= 3;
  for (tiltpole_test::Reading& reading : unreachable.vertical) reading[1] /= 3;
  const Session next =
      tiltpole_test::SessionOf(RandomTurns(tiltpole_test::Kind::SoftIron, 40, 40, 7), unreachable);
  CalibrateWithEachFailure(next, 0);
}

// --- the protected operations

TEST_F(Allocations, ACorrectionInClosedFormNeedsNoMemory) {
  const CSZMatrix p1 = Rows({{0.45}, {0.1}, {-20}, {30}, {-5}});
  const CSZMatrix p2 = Rows({{0.6}, {-0.2}, {12}, {-7}, {-5}});
  const CSZMatrix p3 = Rows({{0.55}, {0.05}, {3}, {4}, {-5}});
  Incline_MagneticCorrectParameter out;
  const Ended ended =
      RunWithFailure(0, [&] { EXPECT_EQ(AdjustAccess().MagCorrPara(p1, p2, p3, out), 1); });
  EXPECT_EQ(ended, Ended::Done);
  EXPECT_TRUE(std::isfinite(out.x0));
}

TEST_F(Allocations, LeastSquaresWithoutMemoryGiveNoSolution) {
  const CSZMatrix A = Rows({{2, 0}, {0, 4}, {1, 1}});
  const CSZMatrix b = Rows({{6}, {2}, {3}});
  const CSZMatrix other = Rows({{6}});
  const CSZMatrix expected = AdjustAccess().OverDeterminedEquationSolution(A, b);
  const long failures = FailEachAllocation([&](long after) {
    CSZMatrix x;
    const Ended ended =
        RunWithFailure(after, [&] { x = AdjustAccess().OverDeterminedEquationSolution(A, b); });
    EXPECT_NE(ended, Ended::Coped) << "after " << after;
    EXPECT_TRUE(SameElements(x, ended == Ended::Done ? expected : CSZMatrix()));
    return ended;
  });
  EXPECT_GT(failures, 4);
  FailEachAllocation([&](long after) {
    const Ended ended = RunWithFailure(after, [&] {
      EXPECT_NE(AdjustAccess().OverDeterminedEquationSolution(A, other).m_pData, nullptr);
    });
    EXPECT_NE(ended, Ended::Coped) << "after " << after;
    return ended;
  });
}

TEST_F(Allocations, AnEllipseFitWithoutMemoryLeavesItsResult) {
  const CSZMatrix data = Rows({{8, -2, 0}, {-2, -2, 0}, {3, 3, 0}, {3, -7, 0}, {6, 2, 0}});
  CSZMatrix expected;
  ASSERT_EQ(AdjustAccess().EllipseFit(data, 2, expected), 1);
  const long failures = FailEachAllocation([&](long after) {
    CSZMatrix result = Rows({{42}});
    const Ended ended = RunWithFailure(after, [&] { AdjustAccess().EllipseFit(data, 2, result); });
    EXPECT_NE(ended, Ended::Coped) << "after " << after;
    EXPECT_TRUE(SameElements(result, ended == Ended::Done ? expected : Rows({{42}})));
    return ended;
  });
  EXPECT_GT(failures, 3);
}

TEST_F(Allocations, ALineFitWithoutMemoryGivesNoSlopes) {
  const CSZMatrix data = Rows({{1, 1, 0}, {1, -1, 2}, {-1, 1, 5}, {-1, -1, 1}});
  const CSZMatrix expected = AdjustAccess().LineFit(data, 2);
  const long failures = FailEachAllocation([&](long after) {
    CSZMatrix slopes;
    const Ended ended = RunWithFailure(after, [&] { slopes = AdjustAccess().LineFit(data, 2); });
    EXPECT_NE(ended, Ended::Coped) << "after " << after;
    EXPECT_TRUE(SameElements(slopes, ended == Ended::Done ? expected : CSZMatrix()));
    return ended;
  });
  EXPECT_GT(failures, 3);
}

// A matrix as it is left when its storage could not be obtained: it tells its size.
CSZMatrix Bare(unsigned int rows, unsigned int columns) {
  CSZMatrix bare;
  tiltpole_test::FailAllocationAfter(0);
  bare.Alloc(rows, columns);
  EXPECT_TRUE(tiltpole_test::StopFailing());
  EXPECT_EQ(bare.m_pData, nullptr);
  EXPECT_EQ(bare.GetRow(), rows);
  return bare;
}

TEST_F(Allocations, ReadingsThatFoundNoRoomAreALackOfMemoryAndNoBadReadings) {
  const CSZMatrix bare = Bare(12, 3);
  const CSZMatrix readings = tiltpole_test::ExactCircle(0, 1, 5, 6, 7);
  AdjustAccess adjust;
  CSZMatrix result = Rows({{42}});
  Incline_MagneticCorrectParameter par;
  par.x0 = 42.0;
  Incline_MagneticTranslationParameter offset;
  offset.dX = 42.0;
  EXPECT_THROW(adjust.EllipseFit(bare, 2, result), std::bad_alloc);
  EXPECT_THROW(adjust.LineFit(bare, 2), std::bad_alloc);
  EXPECT_THROW(adjust.OverDeterminedEquationSolution(bare, readings), std::bad_alloc);
  EXPECT_THROW(adjust.OverDeterminedEquationSolution(readings, bare), std::bad_alloc);
  EXPECT_THROW(adjust.MagCorrPara(bare, readings, par), std::bad_alloc);
  EXPECT_THROW(adjust.MagCorrPara(readings, bare, par), std::bad_alloc);
  EXPECT_THROW(adjust.MagneticCoordinateOffset(bare, readings, offset), std::bad_alloc);
  EXPECT_THROW(adjust.MagneticCoordinateOffset(readings, bare, offset), std::bad_alloc);
  EXPECT_TRUE(SameElements(result, Rows({{42}})));
  EXPECT_EQ(par.x0, 42.0);
  EXPECT_EQ(offset.dX, 42.0);
  EXPECT_EQ(shown, 0);
}

TEST_F(Allocations, ConicsThatFoundNoRoomAreALackOfMemory) {
  const CSZMatrix conic = Rows({{0.45}, {0.1}, {-20}, {30}, {-5}});
  const CSZMatrix bare = Bare(5, 1);
  Incline_MagneticCorrectParameter out;
  out.x0 = 42.0;
  EXPECT_THROW(AdjustAccess().MagCorrPara(bare, conic, conic, out), std::bad_alloc);
  EXPECT_THROW(AdjustAccess().MagCorrPara(conic, bare, conic, out), std::bad_alloc);
  EXPECT_THROW(AdjustAccess().MagCorrPara(conic, conic, bare, out), std::bad_alloc);
  EXPECT_EQ(out.x0, 42.0);
}

// --- the filters

CSZMatrix Sweep() {
  CSZMatrix sweep(12, 7);
  for (unsigned i = 0; i < 12; ++i) {
    for (unsigned j = 0; j < 7; ++j) sweep.SetData(i, j, 2.0 * i + j * (i % 3));
  }
  return sweep;
}

TEST_F(Allocations, ASweepThatFoundNoRoomIsALackOfMemory) {
  CSZMatrix bare = Bare(12, 7);
  CInclineSensor_MagneticAdjust adjust;
  EXPECT_THROW(adjust.DataFilter(bare), std::bad_alloc);
  EXPECT_THROW(adjust.MatrixFilter(bare), std::bad_alloc);
  EXPECT_EQ(bare.m_pData, nullptr);
  EXPECT_EQ(bare.GetRow(), 12U);
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
  EXPECT_EQ(shown, 0);
}

}  // namespace
