#include "tiltpole/calibration/detail/conic_sums.h"

#ifdef __GNUC__
#include "tiltpole/calibration/detail/vector_lanes.h"
#endif

namespace tiltpole::detail {
namespace {

#ifdef __GNUC__
constexpr ConicSummation kPortable{2, SumConicsInLanes<2>};
#else
constexpr ConicSummation kPortable{
    1, [](const ScaledPlane& plane, const double* t, double* sums) { SumConics(plane, *t, sums); }};
#endif

}  // namespace

const ConicSummation& PortableConicSummation() { return kPortable; }

#ifdef TILTPOLE_WITH_AVX2

void SumConicsWithAvx2(const ScaledPlane& plane, const double* t, double* sums);

const ConicSummation& FastestConicSummation() {
  static const bool hasAvx2 = __builtin_cpu_supports("avx2") != 0;
  static constexpr ConicSummation kWithAvx2{4, SumConicsWithAvx2};
  return hasAvx2 ? kWithAvx2 : kPortable;
}

#else

const ConicSummation& FastestConicSummation() { return kPortable; }

#endif

}  // namespace tiltpole::detail
