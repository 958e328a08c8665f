// The library's numbers do not depend on how its host is compiled.

#include "records/fusing_host.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::MagneticReading;

bool ThisProcessorRunsIt() {
#ifdef __x86_64__
  return __builtin_cpu_supports("fma") != 0;
#else
  return true;
#endif
}

TEST(FusingHost, CorrectsAReadingToTheSameBits) {
  if (!ThisProcessorRunsIt()) GTEST_SKIP() << "this processor does not fuse";
  // The product is 1 - 2^-60: as a double it is 1.
  const double above = 1.0 + std::ldexp(1.0, -30);
  const double below = 1.0 - std::ldexp(1.0, -30);
  ASSERT_EQ(tiltpole_test::Fused(above, below, -1.0), -std::ldexp(1.0, -60));

  Incline_MagneticCorrectParameter par;
  par.a = par.b = par.c = par.d = above;
  const MagneticReading corrected =
      tiltpole_test::CorrectedByAFusingHost(par, MagneticReading{below, -below, 0.0});
  EXPECT_EQ(corrected.Y, 0.0);
  EXPECT_EQ(corrected.Z, 0.0);
}

}  // namespace
