// The ways in which the calibration saves time, each against the plain way.

#include <array>
#include <cmath>
#include <limits>
#include <vector>
#if defined(__x86_64__) && !defined(_WIN32)
#include <cpuid.h>
#endif

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "calibration/literal_calibration.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "tiltpole/calibration/detail/conic_sums.h"
#include "tiltpole/calibration/detail/cross_terms.h"
#include "tiltpole/calibration/detail/normal_equations.h"

namespace tiltpole_test {
namespace {

using tiltpole::detail::AxisSums;
using tiltpole::detail::ConicSummation;
using tiltpole::detail::ConicSummationsOfThisProcessor;
using tiltpole::detail::CrossTermMoves;
using tiltpole::detail::kConicSums;
using tiltpole::detail::kMostLanes;
using tiltpole::detail::Recurrence;
using tiltpole::detail::RemoveSlopes;

// How many of the lanes' fits could be solved side by side, and whether all agree with the literal
// writing.
struct LaneCheck {
  int together = 0;
  int apart = 0;
  bool agree = true;
};

// The scales are decades apart, so that the lanes often disagree about their pivots.
LaneCheck CheckLanes(const ConicSummation& way, std::uint64_t seed) {
  Random random(seed);
  LaneCheck check;
  const Turn turn = RandomTurns(Kind::SoftIron, random.Whole(5, 30), 0, seed).horizontal;
  std::vector<double> u;
  std::vector<double> base;
  std::vector<double> v;
  AxisSums axis;
  for (const Reading& reading : turn) {
    u.push_back(reading[0]);
    base.push_back(0.1 * reading[0]);
    v.push_back(reading[1]);
    axis.u += reading[0];
    axis.uu += reading[0] * reading[0];
    axis.count += 1;
  }
  double t[kMostLanes];
  for (double& scale : t) scale = std::pow(10.0, random.Between(-3, 3));
  double sums[kConicSums * kMostLanes];
  double p[5 * kMostLanes];
  way.Sum({u.data(), base.data(), v.data(), u.size()}, t, sums);
  if (!way.Solve(axis, sums, p)) {
    check.apart = 1;
    return check;
  }
  check.together = 1;
  for (std::size_t lane = 0; lane < way.lanes; ++lane) {
    Turn scaled = turn;
    for (std::size_t i = 0; i < scaled.size(); ++i) scaled[i][1] = base[i] + t[lane] * v[i];
    const EllipseOutcome literal = LiteralEllipseFit(MatrixOf(scaled), 2);
    for (std::size_t i = 0; i < 5; ++i) {
      check.agree = check.agree && SameBits(p[i * way.lanes + lane], literal.coefficients[i]);
    }
  }
  return check;
}

#if defined(__x86_64__) && !defined(_WIN32)  // where there are wider sums than the portable ones

// What a system that knows them keeps of a program's registers, by the bits of XCR0: the halves of
// the 256-bit ones; beside these the masks and what 512 bits take.
constexpr unsigned int kKeeps256Bits = 0x06;
constexpr unsigned int kKeeps512Bits = 0xE6;

// What the processor says of itself, and whether the system keeps the wide registers.
bool HasAvx(unsigned int features, unsigned int registers) {
  unsigned int a = 0, b = 0, c = 0, d = 0;
  if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & bit_OSXSAVE) == 0) return false;
  unsigned int kept = 0;
  unsigned int high = 0;
  __asm__("xgetbv" : "=a"(kept), "=d"(high) : "c"(0));
  if (__get_cpuid_count(7, 0, &a, &b, &c, &d) == 0) return false;
  return (b & features) == features && (kept & registers) == registers;
}

TEST(FitsSideBySide, AreAsManyAtOnceAsTheProcessorHasLanes) {
  std::vector<std::size_t> expected = {2};
  if (HasAvx(bit_AVX2, kKeeps256Bits)) expected.push_back(4);
  if (HasAvx(bit_AVX512F, kKeeps512Bits)) expected.push_back(8);
  std::vector<std::size_t> lanes;
  for (const ConicSummation& way : ConicSummationsOfThisProcessor()) lanes.push_back(way.lanes);
  EXPECT_EQ(lanes, expected);
}

#endif

TEST(FitsSideBySide, AreSolvedTogetherOnlyWhereAllLanesTakeTheSamePivots) {
  for (const ConicSummation& way : ConicSummationsOfThisProcessor()) {
    int together = 0;
    int apart = 0;
    for (std::uint64_t seed = 0; seed < 300; ++seed) {
      const LaneCheck check = CheckLanes(way, seed);
      EXPECT_TRUE(check.agree) << way.lanes << " lanes, seed " << seed;
      together += check.together;
      apart += check.apart;
    }
    EXPECT_GT(apart, 20) << way.lanes;
    if (way.lanes == 2) {
      EXPECT_GT(together, 20);
    }
  }
}

// The first of two systems has its largest element in the second place, the second in both places:
// alone it would take the first.
TEST(FitsSideBySide, ATieThatOneLaneBreaksEarlierKeepsThemApart) {
  using Lanes = tiltpole::detail::LanesOf<2>;
  const tiltpole::detail::Square<2, Lanes> tied = {
      {{Lanes{1, 4}, Lanes{0, 1}}, {Lanes{0, 1}, Lanes{4, 4}}}};
  EXPECT_FALSE((tiltpole::detail::NormalInverse<2, Lanes>(tied).IsRegular()));
  const tiltpole::detail::Square<2, Lanes> alike = {
      {{Lanes{1, 3}, Lanes{0, 1}}, {Lanes{0, 1}, Lanes{4, 4}}}};
  EXPECT_TRUE((tiltpole::detail::NormalInverse<2, Lanes>(alike).IsRegular()));
}

// Every step done, as if nothing were known of recurrences.
template <std::size_t N, class SlopesFor>
CrossTermMoves<N> RemoveSlopesPlainly(std::array<double, N>& terms, double weight,
                                      SlopesFor slopesFor, int cap) {
  CrossTermMoves<N> moved;
  for (int step = 0; step < cap; ++step) {
    const std::array<double, N> slopes = slopesFor(terms);
    bool still = true;
    for (std::size_t i = 0; i < N; ++i) {
      const double move = -weight * slopes[i];
      moved.sum[i] += move;
      terms[i] += move;
      still = still && std::fabs(move) < 1e-10;
    }
    if (still) return moved;
  }
  moved.ranOut = true;
  return moved;
}

// Slopes that send the first term round a cycle of the given length after a run-in.
struct CyclingSlopes {
  int runIn;
  int period;

  std::array<double, 2> operator()(const std::array<double, 2>& terms) const {
    const int at = static_cast<int>(terms[0]);
    const int next = at + 1 < runIn + period ? at + 1 : runIn;
    return {static_cast<double>(at - next), terms[1] - 0.1 * next};
  }
};

RC_GTEST_PROP(RemoveSlopes, ACycleOfTermsIsFollowedToTheLastBitWithoutNewFits, ()) {
  const CyclingSlopes slopes = {*rc::gen::inRange(0, 40), *rc::gen::inRange(2, 60)};
  const int cap = *rc::gen::inRange(1, 1001);
  std::array<double, 2> terms = {0, 0.3};
  std::array<double, 2> plainTerms = terms;
  const CrossTermMoves<2> moved = RemoveSlopes(terms, 1.0, slopes, cap);
  const CrossTermMoves<2> plain = RemoveSlopesPlainly(plainTerms, 1.0, slopes, cap);
  RC_ASSERT(moved.ranOut == plain.ranOut);
  for (std::size_t i = 0; i < 2; ++i) {
    RC_ASSERT(SameBits(terms[i], plainTerms[i]));
    RC_ASSERT(SameBits(moved.sum[i], plain.sum[i]));
  }
}

TEST(RemoveSlopes, ACycleCostsAsManyFitsAsItIsLong) {
  int fits = 0;
  std::array<double, 2> terms = {0, 0};
  const CyclingSlopes cycle = {3, 2};
  RemoveSlopes(
      terms, 1.0,
      [&](const std::array<double, 2>& at) {
        ++fits;
        return cycle(at);
      },
      1000);
  EXPECT_LT(fits, 20);
}

TEST(RemoveSlopes, TermsRestOnlyBelowTheTolerance) {
  CrossTermMoves<1> moved;
  for (const double sign : {1.0, -1.0}) {
    moved.sum = {sign * std::nextafter(1e-10, 0.0)};
    EXPECT_TRUE(moved.AtRest());
    moved.sum = {sign * 1e-10};
    EXPECT_FALSE(moved.AtRest());
  }
  moved.sum = {std::numeric_limits<double>::quiet_NaN()};
  EXPECT_FALSE(moved.AtRest());
}

TEST(RemoveSlopes, StepsOfExactlyTheToleranceGoOnUntilTheyAreUsedUp) {
  std::array<double, 1> terms = {0.0};
  const auto slopes = [](const std::array<double, 1>&) { return std::array<double, 1>{-1e-10}; };
  EXPECT_TRUE(RemoveSlopes(terms, 1.0, slopes, 5).ranOut);
  EXPECT_NEAR(terms[0], 5e-10, 1e-20);
}

TEST(Recurrence, TellsHowLongAgoAStateWasMet) {
  Recurrence<1> recurrence;
  EXPECT_EQ(recurrence.StepsSince({1.0}), 0);
  EXPECT_EQ(recurrence.StepsSince({2.0}), 0);
  EXPECT_EQ(recurrence.StepsSince({3.0}), 0);
  EXPECT_EQ(recurrence.StepsSince({2.0}), 2);
}

TEST(Recurrence, ZerosOfDifferentSignDifferAndAllNaNAreTheSame) {
  Recurrence<1> zeros;
  EXPECT_EQ(zeros.StepsSince({0.0}), 0);
  EXPECT_EQ(zeros.StepsSince({-0.0}), 0);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  Recurrence<1> notNumbers;
  EXPECT_EQ(notNumbers.StepsSince({nan}), 0);
  EXPECT_EQ(notNumbers.StepsSince({-nan}), 1);
}

}  // namespace
}  // namespace tiltpole_test
