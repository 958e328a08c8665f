// The library against the literal writing, bit for bit.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/literal_calibration.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "support/message_capture.h"
#include "tiltpole/calibration/detail/correction_fit.h"

namespace tiltpole_test {
namespace {

using tiltpole::CInclineSensor_MagneticAdjust;
using tiltpole::CSZMatrix;
using tiltpole::detail::ConicSummation;
using tiltpole::detail::ConicSummationsOfThisProcessor;
using tiltpole::detail::CorrectionFit;

// Readings that are not numbers, or too few digits of them, and scales near 2 mostly run out, which
// the literal writing notices only after many thousands of fits.
Kind AKindThatMostlyEnds() {
  constexpr auto kKinds = static_cast<int>(Kind::kKinds);
  const int any = *rc::gen::inRange(0, 4 * kKinds);
  if (any < kKinds) return static_cast<Kind>(any);
  return *rc::gen::element(Kind::Ideal, Kind::Noisy, Kind::SoftIron, Kind::Outliers);
}

constexpr long kManyMoreFitsThanUsual = 8'000;

CalibrationOutcome LibraryAdjust(const Session& session) {
  const MessageCapture messages;
  CInclineSensor_MagneticAdjust adjust;
  for (const auto& sample : session.horizontal) adjust.Horizontal_Add(&sample);
  for (const auto& sample : session.vertical) adjust.Vertical_Add(&sample);
  CalibrationOutcome outcome;
  outcome.result = adjust.Adjust();
  outcome.par_A = adjust.GetCorrectPar_A();
  outcome.par_B = adjust.GetCorrectPar_B();
  outcome.trans = adjust.GetCoorTrans();
  outcome.shown = messages.shown;
  return outcome;
}

CorrectionOutcome LibraryMagCorrPara(const CSZMatrix& H, const CSZMatrix& V, int cap,
                                     const ConicSummation& summation) {
  const MessageCapture messages;
  CorrectionOutcome outcome;
  CorrectionFit fit(tiltpole::detail::ReadingsOf(H), tiltpole::detail::ReadingsOf(V), summation);
  outcome.result = fit.Run(outcome.par, cap);
  outcome.shown = messages.shown;
  return outcome;
}

bool Agree(const CalibrationOutcome& a, const CalibrationOutcome& b) {
  return a.result == b.result && SameBits(a.par_A, b.par_A) && SameBits(a.par_B, b.par_B) &&
         SameBits(a.trans, b.trans) && a.shown == b.shown;
}

bool Agree(const CorrectionOutcome& a, const CorrectionOutcome& b) {
  return a.result == b.result && SameBits(a.par, b.par) && a.shown == b.shown;
}

RC_GTEST_PROP(CalibrationAgainstTheLiteralWriting, WholeCalibrationsAgreeToTheLastBit, ()) {
  const auto samples = [] {
    return *rc::gen::weightedOneOf<int>(
        {{9, rc::gen::inRange(3, 120)}, {1, rc::gen::inRange(120, 801)}});
  };
  const int H = samples();
  const int V = samples();
  const auto seed = *rc::gen::arbitrary<std::uint32_t>();
  const Session session = SessionOf(RandomTurns(AKindThatMostlyEnds(), H, V, seed),
                                    RandomTurns(AKindThatMostlyEnds(), H, V, seed + 1));
  const CalibrationOutcome literal = LiteralAdjust(session, kManyMoreFitsThanUsual);
  // What runs through all its passes takes the literal writing seconds; the property below compares
  // such sessions under a smaller cap, and the tests of the correction a few under the full one.
  RC_PRE(!literal.tookTooLong);
  RC_CLASSIFY(literal.result == 1, "succeeded");
  RC_ASSERT(Agree(LibraryAdjust(session), literal));
}

// The properties draw short sessions, for the sake of time; here are the shortest and the longest.
TEST(CalibrationAgainstTheLiteralWriting, SessionsOf3To800SamplesAgreeToTheLastBit) {
  std::uint64_t seed = 100;
  for (const Kind kind : {Kind::Ideal, Kind::Noisy, Kind::SoftIron, Kind::Outliers}) {
    for (const int count : {3, 5, 7, 200, 401, 800}) {
      ++seed;
      const Session session = SessionOf(RandomTurns(kind, count, 800 / count + 5, seed),
                                        RandomTurns(Kind::Noisy, count, 800 / count + 5, seed + 1));
      EXPECT_TRUE(Agree(LibraryAdjust(session), LiteralAdjust(session)))
          << kind << ", " << count << " samples";
    }
  }
}

TEST(CalibrationAgainstTheLiteralWriting, SessionsWithOneSetEmptyAgree) {
  for (const Kind kind : {Kind::Ideal, Kind::Noisy, Kind::OnALine, Kind::NotANumber}) {
    for (const bool withHorizontal : {true, false}) {
      const int H = withHorizontal ? 30 : 0;
      const int V = withHorizontal ? 0 : 30;
      const Session session = SessionOf(RandomTurns(kind, H, V, 7), RandomTurns(kind, H, V, 8));
      const CalibrationOutcome literal = LiteralAdjust(session);
      EXPECT_EQ(literal.result, 0);
      EXPECT_TRUE(Agree(LibraryAdjust(session), literal)) << kind << ", " << H << " samples";
    }
  }
}

RC_GTEST_PROP(CalibrationAgainstTheLiteralWriting, EveryKindOfTurnAgreesUnderASmallerCap, ()) {
  const auto kind = static_cast<Kind>(*rc::gen::inRange(0, static_cast<int>(Kind::kKinds)));
  const auto otherKind = static_cast<Kind>(*rc::gen::inRange(0, static_cast<int>(Kind::kKinds)));
  const Turns turns =
      RandomTurns(kind, *rc::gen::inRange(3, 40), 5, *rc::gen::arbitrary<std::uint32_t>());
  const Turns others =
      RandomTurns(otherKind, 5, *rc::gen::inRange(3, 40), *rc::gen::arbitrary<std::uint32_t>());
  const CSZMatrix H = MatrixOf(turns.horizontal);
  const CSZMatrix V = MatrixOf(others.vertical);
  const int cap = *rc::gen::element(4, 12, 40, 60);
  const CorrectionOutcome literal = LiteralMagCorrPara(H, V, cap);
  RC_CLASSIFY(literal.result == 1, "succeeded");
  RC_CLASSIFY(literal.passes == cap, "all passes run");
  for (ConicSummation summation : ConicSummationsOfThisProcessor()) {
    RC_ASSERT(Agree(LibraryMagCorrPara(H, V, cap, summation), literal));
    summation.fewestToBound = 0;
    RC_ASSERT(Agree(LibraryMagCorrPara(H, V, cap, summation), literal));
  }
}

}  // namespace
}  // namespace tiltpole_test
