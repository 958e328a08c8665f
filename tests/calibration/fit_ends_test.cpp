// How the iterative fit ends where it does not simply come to rest: silently, for want of an
// ellipse, and in the second half of its passes. The readings are small whole numbers found for
// the purpose, no turns of a pole.

#include <gtest/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/literal_calibration.h"
#include "calibration/matrices.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "support/message_capture.h"
#include "tiltpole/calibration/detail/correction_fit.h"

namespace tiltpole_test {
namespace {

using tiltpole::CSZMatrix;
using tiltpole::Incline_MagneticCorrectParameter;

std::vector<ShownMessage> RanOut() {
  return {ExclamationMessage(L"Circulating abnormal exit calibration parameters might be wrong!")};
}

struct TwoTurns {
  CSZMatrix horizontal;
  CSZMatrix vertical;
};

// The fit of both turns, which must succeed without a message and as the literal writing does.
Incline_MagneticCorrectParameter SilentlyFitted(const TwoTurns& turns) {
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(turns.horizontal, turns.vertical, out), 1);
  EXPECT_TRUE(messages.shown.empty());
  const CorrectionOutcome literal = LiteralMagCorrPara(turns.horizontal, turns.vertical);
  EXPECT_EQ(literal.result, 1);
  EXPECT_TRUE(SameBits(out, literal.par));
  return out;
}

// The ellipse fit of the horizontal turn in x-y', with y' = a x + b y.
int FitHorizontal(const TwoTurns& turns, double a, double b, CSZMatrix& p) {
  CSZMatrix corrected = turns.horizontal;
  for (unsigned int i = 0; i < corrected.GetRow(); ++i) {
    corrected.SetData(i, 1,
                      a * turns.horizontal.GetData(i, 0) + b * turns.horizontal.GetData(i, 1));
  }
  return AdjustAccess().EllipseFit(corrected, 2, p);
}

void ExpectCentreOfThisPass(const TwoTurns& turns, const Incline_MagneticCorrectParameter& out) {
  CSZMatrix p;
  ASSERT_EQ(FitHorizontal(turns, out.a, out.b, p), 1);
  const double A = p.GetData(0), B = p.GetData(1), D = p.GetData(2), E = p.GetData(3);
  const double C = 1 - A;
  EXPECT_EQ(out.x0, (B * E - 2 * C * D) / (4 * A * C - B * B));
  EXPECT_EQ(out.y0, (B * D - 2 * A * E) / (4 * A * C - B * B));
}

TEST(FitEnds, TheSearchForAScaleStopsSilentlyWhereTheTurnIsNoEllipseAnyMore) {
  const TwoTurns turns = {
      Rows({{0, 0, -3}, {1, -3, 0}, {1, 2, 1}, {-2, 3, 0}, {3, 2, -3}, {-2, -1, 0}}),
      Rows({{-2, 1, 1}, {-2, -3, 2}, {1, 0, 2}, {1, 1, -3}, {3, 0, -2}, {3, -3, 1}})};
  CSZMatrix p;
  EXPECT_EQ(FitHorizontal(turns, 0.0, 1.0, p), 1);
  EXPECT_EQ(FitHorizontal(turns, 0.0, 1.5, p), 0);
  EXPECT_EQ(SilentlyFitted(turns).b, 1.5);
}

TEST(FitEnds, WithoutAHorizontalEllipseInTheFirstPassItSucceedsWithAllCentresZero) {
  const TwoTurns turns = {
      Rows({{0, 0, -3}, {-1, 0, 3}, {1, -3, -3}, {-2, 0, -3}, {-2, -1, 1}, {2, 2, -3}}),
      Rows({{2, -2, 0}, {2, -2, 1}, {-1, -3, 2}, {0, -3, -3}, {1, -2, 1}, {-1, 2, 3}})};
  const Incline_MagneticCorrectParameter out = SilentlyFitted(turns);
  CSZMatrix p;
  EXPECT_EQ(FitHorizontal(turns, out.a, out.b, p), 0);
  EXPECT_NE(out.a, 0.0);
  EXPECT_NE(out.c, 0.0);
  EXPECT_EQ(out.b, 1.5);
  EXPECT_EQ(out.e, 0.5);
  EXPECT_EQ(out.x0, 0.0);
  EXPECT_EQ(out.y0, 0.0);
  EXPECT_EQ(out.z0, 0.0);
}

TEST(FitEnds, WithoutAHorizontalEllipseInALaterPassTheCentresAreThoseOfThePassBefore) {
  const TwoTurns turns = {
      Rows({{-3, -3, -3}, {0, 0, 1}, {-2, 1, -2}, {2, -3, -1}, {0, 2, -2}, {0, -3, -1}}),
      Rows({{-2, 1, 3}, {0, 2, 3}, {-3, 2, -3}, {1, 1, 3}, {-1, -3, -3}, {0, 2, 1}})};
  ASSERT_EQ(LiteralMagCorrPara(turns.horizontal, turns.vertical).passes, 2);
  const Incline_MagneticCorrectParameter out = SilentlyFitted(turns);
  CSZMatrix p;
  EXPECT_EQ(FitHorizontal(turns, out.a, out.b, p), 0);
  EXPECT_NE(out.x0, 0.0);
  EXPECT_NE(out.y0, 0.0);
  EXPECT_NE(out.z0, 0.0);
}

TEST(FitEnds, WithoutAVerticalEllipseInTheFirstPassOnlyZ0IsZero) {
  const TwoTurns turns = {
      Rows({{-3, -1, 1}, {-2, 2, -3}, {-1, 1, -2}, {-2, -3, 3}, {2, 2, 3}, {3, -1, 3}}),
      Rows({{-3, 3, -3}, {3, -1, 0}, {-2, -3, -3}, {-2, 0, -3}, {1, -3, -2}, {3, -3, 2}})};
  const Incline_MagneticCorrectParameter out = SilentlyFitted(turns);
  EXPECT_EQ(out.e, 1.5);
  ExpectCentreOfThisPass(turns, out);
  EXPECT_EQ(out.z0, 0.0);
}

TEST(FitEnds, WithoutAVerticalEllipseInALaterPassZ0IsThatOfThePassBefore) {
  const TwoTurns turns = {
      Rows({{1, -2, 3}, {-2, 3, -1}, {2, 3, -3}, {-2, 0, -3}, {2, 2, -1}, {0, 3, 3}}),
      Rows({{2, 3, -1}, {3, 1, 0}, {2, -1, 1}, {1, 2, 1}, {2, -3, 0}, {-1, 0, -2}})};
  ASSERT_EQ(LiteralMagCorrPara(turns.horizontal, turns.vertical).passes, 2);
  const Incline_MagneticCorrectParameter out = SilentlyFitted(turns);
  EXPECT_EQ(out.e, 1.5);
  ExpectCentreOfThisPass(turns, out);
  EXPECT_NE(out.z0, 0.0);
}

// Where cross terms have swung through all their steps before, the silent end is none: the fit has
// failed, in its first pass.
void ExpectRunOutInTheFirstPass(const TwoTurns& turns) {
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(turns.horizontal, turns.vertical, out), 0);
  EXPECT_EQ(messages.shown, RanOut());
  EXPECT_TRUE(SameBits(out, Incline_MagneticCorrectParameter()));
  const CorrectionOutcome literal = LiteralMagCorrPara(turns.horizontal, turns.vertical);
  EXPECT_EQ(literal.shown, RanOut());
  EXPECT_EQ(literal.passes, 1);
  EXPECT_GT(literal.lineFits, 1000);
}

TEST(FitEnds, WithoutAHorizontalEllipseAfterALoopThatRanOutItFails) {
  ExpectRunOutInTheFirstPass(
      {Rows({{2, -1, -1}, {-3, -3, 2}, {-2, 2, 2}, {-1, -1, 3}, {-2, -1, 0}, {3, -2, 0}}),
       Rows({{-3, -3, 3}, {-3, 0, 0}, {1, 2, 2}, {-1, 2, -3}, {-1, 1, 0}, {0, -3, 3}})});
}

TEST(FitEnds, WithoutAVerticalEllipseAfterALoopThatRanOutItFails) {
  ExpectRunOutInTheFirstPass(
      {Rows({{-3, 2, -1}, {1, 2, 0}, {0, -3, -3}, {-3, 3, 1}, {2, 0, 2}, {-2, 1, 3}}),
       Rows({{3, 3, 1}, {-2, -3, 0}, {3, -1, 3}, {0, 1, -2}, {-1, 2, 1}, {3, 3, 1}})});
}

// A fit that needs some hundred passes stands for one that needs more than 500 of 1000: the limit
// is half the cap, whatever the cap is.
TEST(FitEnds, AFitThatRestsAfterMoreThanHalfOfThePassesIsReportedAsFailed) {
  const Turns turns = RandomTurns(Kind::Garbage, 7, 7, 237);
  const CSZMatrix H = MatrixOf(turns.horizontal);
  const CSZMatrix V = MatrixOf(turns.vertical);
  const int passes = LiteralMagCorrPara(H, V).passes;
  ASSERT_GT(passes, 60);
  ASSERT_LT(passes, 400);
  const auto fitWithin = [&](int cap, Incline_MagneticCorrectParameter& out) {
    return tiltpole::detail::CorrectionFit(tiltpole::detail::ReadingsOf(H),
                                           tiltpole::detail::ReadingsOf(V))
        .Run(out, cap);
  };
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(fitWithin(2 * passes, out), 1);
  EXPECT_TRUE(messages.shown.empty());

  Incline_MagneticCorrectParameter untouched;
  EXPECT_EQ(fitWithin(2 * (passes - 1), untouched), 0);
  EXPECT_EQ(messages.shown, RanOut());
  EXPECT_TRUE(SameBits(untouched, Incline_MagneticCorrectParameter()));
}

}  // namespace
}  // namespace tiltpole_test
