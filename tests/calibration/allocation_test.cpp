// The passes of a fit allocate nothing: the counts of two fits that differ only in their passes are
// the same.

#include <new>
#include <utility>

#include <gtest/gtest.h>

#include "calibration/literal_calibration.h"
#include "calibration/random_session.h"
#include "support/allocations.h"
#include "support/message_capture.h"
#include "tiltpole/calibration/detail/correction_fit.h"

namespace tiltpole_test {
namespace {

using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::detail::CorrectionFit;
using tiltpole::detail::ReadingsOf;

struct Counted {
  int result;
  long allocations;
};

// A handler that allocates nothing takes the message of a fit whose passes ran out.
Counted CountRun(const Turns& turns, int cap) {
  auto previous = tiltpole::SetMessageBoxHandler(
      [](const std::wstring&, const std::wstring&, tiltpole::MessageIcon) {});
  CorrectionFit fit(ReadingsOf(MatrixOf(turns.horizontal)), ReadingsOf(MatrixOf(turns.vertical)));
  Incline_MagneticCorrectParameter out;
  const long before = AllocationsMade();
  const int result = fit.Run(out, cap);
  const long after = AllocationsMade();
  tiltpole::SetMessageBoxHandler(std::move(previous));
  return {result, after - before};
}

TEST(CalibrationMemory, TheCounterSeesAnAllocation) {
  const long before = AllocationsMade();
  void* memory = operator new(100);
  EXPECT_EQ(AllocationsMade() - before, 1);
  operator delete(memory);
}

TEST(CalibrationMemory, ASuccessfulFitOfManyPassesAllocatesNothing) {
  const Turns turns = RandomTurns(Kind::SoftIron, 200, 200, 7);
  ASSERT_GE(LiteralMagCorrPara(MatrixOf(turns.horizontal), MatrixOf(turns.vertical)).passes, 5);
  const Counted counted = CountRun(turns, 1000);
  EXPECT_EQ(counted.result, 1);
  EXPECT_EQ(counted.allocations, 0);
}

TEST(CalibrationMemory, AFitThatRunsOutAllocatesItsMessageHoweverManyPassesItTakes) {
  Turns turns = RandomTurns(Kind::SoftIron, 200, 200, 7);
  for (Reading& reading : turns.horizontal) reading[1] /= 3;
  for (Reading& reading : turns.vertical) reading[1] /= 3;
  const Counted few = CountRun(turns, 4);
  const Counted many = CountRun(turns, 1000);
  EXPECT_EQ(few.result, 0);
  EXPECT_EQ(many.result, 0);
  EXPECT_EQ(many.allocations, few.allocations);
}

}  // namespace
}  // namespace tiltpole_test
