// Every allocation fails in turn while the command line screens a turn: nothing stays allocated.

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "apps/tiltpole/screening.h"
#include "faults/allocation_fixture.h"

namespace {

using tiltpole::cli::ScreenTurn;
using tiltpole::session::SampleSet;
using tiltpole::session::SessionSample;
using tiltpole_test::Allocations;
using tiltpole_test::FailEachAllocation;
using tiltpole_test::RunWithFailure;

class ScreenedTurnAllocations : public Allocations {};

TEST_F(ScreenedTurnAllocations, ARecordThatCannotBeAddedIsFreed) {
  std::vector<SessionSample> turn(100);
  for (std::size_t i = 0; i < turn.size(); ++i) {
    turn[i].sensors.MagneticX_A = 1000.0 * std::sin(0.07 * static_cast<double>(i));
    turn[i].sensors.MagneticY_A = 1000.0 * std::cos(0.07 * static_cast<double>(i));
  }
  const long failed = FailEachAllocation([&turn](long after) {
    return RunWithFailure(after, [&turn] { ScreenTurn(turn, SampleSet::Horizontal, 0); });
  });
  EXPECT_GT(failed, 100);
}

}  // namespace
