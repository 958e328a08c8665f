#include "tiltpole/calibration/detail/conic_sums.h"

#include "tiltpole/calibration/detail/conic_sums_avx.h"

namespace tiltpole::detail {
namespace {

// From how many samples on bounds save more than they cost was tried out with the benchmark of the
// calibration: the wider the sums, the later.
constexpr ConicSummation kPortable{2, SumConicsInLanes<2>, SolveConicsInLanes<2>,
                                   BoundConicsInLanes<2>, 100};

}  // namespace

#ifdef TILTPOLE_WITH_AVX

std::vector<ConicSummation> ConicSummationsOfThisProcessor() {
  std::vector<ConicSummation> ways = {kPortable};
  if (__builtin_cpu_supports("avx2") != 0) {
    ways.push_back({4, SumConicsWithAvx2, SolveConicsWithAvx2, BoundConicsWithAvx2, 130});
  }
  if (__builtin_cpu_supports("avx512f") != 0) {
    ways.push_back({8, SumConicsWithAvx512, SolveConicsWithAvx512, BoundConicsWithAvx512, 250});
  }
  return ways;
}

#else

std::vector<ConicSummation> ConicSummationsOfThisProcessor() { return {kPortable}; }

#endif

const ConicSummation& FastestConicSummation() {
  static const ConicSummation fastest = ConicSummationsOfThisProcessor().back();
  return fastest;
}

}  // namespace tiltpole::detail
