#include "tiltpole/calibration/detail/conic_sums.h"

namespace tiltpole::detail {
namespace {

#ifdef __GNUC__
constexpr ConicSummation kPortable{2, SumConicsInLanes<2>, SolveConicsInLanes<2>};
#else
constexpr ConicSummation kPortable{
    1, [](const ScaledPlane& plane, const double* t, double* sums) { SumConics(plane, *t, sums); },
    [](const AxisSums&, const double*, double*) { return false; }};
#endif

}  // namespace

#ifdef TILTPOLE_WITH_AVX

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums);
bool SolveConicsWithAvx2(const AxisSums& axis, const double* sums, double* coefficients);
void SumConicsWithAvx512(const ScaledPlane& plane, const double* t, double* sums);
bool SolveConicsWithAvx512(const AxisSums& axis, const double* sums, double* coefficients);

std::vector<ConicSummation> ConicSummationsOfThisProcessor() {
  std::vector<ConicSummation> ways = {kPortable};
  if (__builtin_cpu_supports("avx2") != 0) {
    ways.push_back({4, SumConicsWithAvx2, SolveConicsWithAvx2});
  }
  if (__builtin_cpu_supports("avx512f") != 0) {
    ways.push_back({8, SumConicsWithAvx512, SolveConicsWithAvx512});
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
