// The correction from three ellipses in closed form.

#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "calibration/adjust_access.h"
#include "calibration/matrices.h"
#include "calibration/random_session.h"
#include "calibration/same_bits.h"
#include "support/message_capture.h"

namespace tiltpole_test {
namespace {

using tiltpole::CSZMatrix;
using tiltpole::Incline_MagneticCorrectParameter;

// The conic of (x - X)^2 + (t (x - X) + u (y - Y))^2 = R^2, with A + C = 1.
CSZMatrix ShearedCircle(double t, double u, double X, double Y) {
  const double sum = 1 + t * t + u * u;
  const double A = (1 + t * t) / sum;
  const double B = 2 * t * u / sum;
  const double C = u * u / sum;
  return Rows({{A}, {B}, {-2 * A * X - B * Y}, {-B * X - 2 * C * Y}, {-1}});
}

TEST(ClosedForm, TheFirstEllipseGivesTheScaleOfYAndTheCentre) {
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(
      AdjustAccess().MagCorrPara(ShearedCircle(0.2, 1.25, 30, -40), ShearedCircle(0.1, 0.9, 5, 6),
                                 ShearedCircle(0.1, 0.9, 5, 6), out),
      1);
  EXPECT_NEAR(out.a, 1.25, 1e-12);
  EXPECT_NEAR(out.x0, 30.0, 1e-10);
  EXPECT_NEAR(out.y0, -40.0, 1e-10);
}

TEST(ClosedForm, TheScaleOfYOverwritesTheCrossTermInAAndBIsNeverWritten) {
  Incline_MagneticCorrectParameter out;
  out.b = 77.0;
  ASSERT_EQ(
      AdjustAccess().MagCorrPara(ShearedCircle(0.2, 1.25, 0, 0), ShearedCircle(0.1, 0.9, 0, 0),
                                 ShearedCircle(0.1, 0.9, 0, 0), out),
      1);
  EXPECT_NEAR(out.a, 1.25, 1e-12);
  EXPECT_EQ(out.b, 77.0);
}

// C / B is 1.25 / 6 here, but positive.
TEST(ClosedForm, AStronglyShearedEllipseKeepsTheSignOfItsRoot) {
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(ShearedCircle(3, 1.25, 0, 0), ShearedCircle(3, 0.9, 0, 0),
                                       ShearedCircle(0.1, 0.9, 0, 0), out),
            1);
  EXPECT_NEAR(out.a, 1.25, 1e-12);
  EXPECT_GT(out.d, 0.0);
}

TEST(ClosedForm, ANegativeMixedTermNegatesTheRootsButNotTheScales) {
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(
      AdjustAccess().MagCorrPara(ShearedCircle(-0.2, 1.25, 0, 0), ShearedCircle(-0.1, 0.9, 0, 0),
                                 ShearedCircle(0.1, 0.9, 0, 0), out),
      1);
  EXPECT_NEAR(out.a, 1.25, 1e-12);
  EXPECT_LT(out.d, 0.0);
  EXPECT_GT(out.e, 0.0);
}

// The formulas written down once more, on plain numbers.
TEST(ClosedForm, EveryFieldFollowsItsFormula) {
  const CSZMatrix p1 = Rows({{0.45}, {0.1}, {-20}, {30}, {-5}});
  const CSZMatrix p2 = Rows({{0.6}, {-0.2}, {12}, {-7}, {-5}});
  const CSZMatrix p3 = Rows({{0.55}, {0.05}, {3}, {4}, {-5}});
  const double A1 = 0.45, B1 = 0.1, C1 = 1 - A1, D1 = -20, E1 = 30;
  const double A2 = 0.6, B2 = -0.2, C2 = 1 - A2, D2 = 12, E2 = -7;
  const double C3 = 1 - 0.55, B3 = 0.05;
  const double t = std::sqrt(B1 * B1 / (4 * A1 * C1 - B1 * B1));
  const double u = 2 * t * C1 / B1;
  CSZMatrix centre = Rows({{2 + 2 * t * t, 2 * t * u}, {2 * t * u, 2 * u * u}}).MatInv() *
                     Rows({{-D1 * (1 + t * t) / A1}, {-E1 * (1 + t * t) / A1}});
  const double Y = centre.GetData(1);
  const double v = -std::sqrt(B2 * B2 * (u * u) / (4 * A2 * C2 - B2 * B2));
  const double w = 2 * v * C2 / B2;
  const double g = (w * w * B3 / C3 + t * v / u) / (2 * w);
  const double Z = (g * (u * u + v * v) * (D2 / A2 + 2 * Y) -
                    2 * (t * u + g * v) * (v * Y + E2 * (u * u + v * v) / (2 * w * A2))) /
                   (2 * t * u * w);
  Incline_MagneticCorrectParameter out;
  ASSERT_EQ(AdjustAccess().MagCorrPara(p1, p2, p3, out), 1);
  EXPECT_EQ(out.a, u);
  EXPECT_EQ(out.c, g);
  EXPECT_EQ(out.d, v);
  EXPECT_EQ(out.e, w);
  EXPECT_EQ(out.x0, centre.GetData(0));
  EXPECT_EQ(out.y0, Y);
  EXPECT_EQ(out.z0, Z);
}

// The library solves for the centre on the stack; the matrix class is the other way to the same
// bits.
RC_GTEST_PROP(ClosedForm, TheCentreHasTheBitsThatTheMatrixClassGives, ()) {
  Random random(*rc::gen::arbitrary<std::uint32_t>());
  const double A = random.Between(0.01, 0.99);
  const double C = 1 - A;
  const double B = random.Between(-2, 2) * std::sqrt(A * C);
  const double D = random.Between(-1e4, 1e4);
  const double E = random.Between(-1e4, 1e4);
  const double root = std::sqrt(B * B / (4 * A * C - B * B));
  const double t = C / B > 0 ? root : -root;
  const double u = 2 * t * C / B;
  const CSZMatrix centre = Rows({{2 + 2 * t * t, 2 * t * u}, {2 * t * u, 2 * u * u}}).MatInv() *
                           Rows({{-D * (1 + t * t) / A}, {-E * (1 + t * t) / A}});
  const CSZMatrix conic = Rows({{A}, {B}, {D}, {E}, {-5}});
  Incline_MagneticCorrectParameter out;
  RC_ASSERT(AdjustAccess().MagCorrPara(conic, conic, conic, out) == 1);
  RC_ASSERT(SameBits(out.x0, centre.GetData(0)));
  RC_ASSERT(SameBits(out.y0, centre.GetData(1)));
}

TEST(ClosedForm, AFirstConicThatIsNoEllipseIsToldAndLeavesOutUntouched) {
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  out.x0 = 5.0;
  const CSZMatrix hyperbola = Rows({{-0.5}, {0}, {0}, {0}, {0}});
  EXPECT_EQ(AdjustAccess().MagCorrPara(hyperbola, hyperbola, hyperbola, out), 0);
  EXPECT_EQ(messages.shown,
            (std::vector<ShownMessage>{ExclamationMessage(L"Collected data is incorrect!")}));
  EXPECT_EQ(out.x0, 5.0);
}

TEST(ClosedForm, ASecondConicThatIsNoEllipseIsToldAndLeavesOutUntouched) {
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  const CSZMatrix hyperbola = Rows({{-0.5}, {0}, {0}, {0}, {0}});
  EXPECT_EQ(AdjustAccess().MagCorrPara(ShearedCircle(0.2, 1.25, 1, 2), hyperbola, hyperbola, out),
            0);
  EXPECT_EQ(messages.shown,
            (std::vector<ShownMessage>{ExclamationMessage(L"Collected data is incorrect!")}));
  EXPECT_EQ(out.x0, 0.0);
  EXPECT_EQ(out.a, 0.0);
}

TEST(ClosedForm, TheThirdConicIsNotTested) {
  const MessageCapture messages;
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(
      AdjustAccess().MagCorrPara(ShearedCircle(0.2, 1.25, 1, 2), ShearedCircle(0.1, 0.9, 5, 6),
                                 Rows({{-0.5}, {0}, {0}, {0}, {0}}), out),
      1);
  EXPECT_TRUE(messages.shown.empty());
}

TEST(ClosedForm, WithoutAMixedTermTheResultsAreNotNumbers) {
  Incline_MagneticCorrectParameter out;
  const CSZMatrix circle = Rows({{0.5}, {0}, {0}, {0}, {-1}});
  EXPECT_EQ(AdjustAccess().MagCorrPara(circle, circle, circle, out), 1);
  EXPECT_TRUE(std::isnan(out.a));
}

// C / 0 is infinite and has the sign of the 0, and so has the cross term.
TEST(ClosedForm, AMixedTermOfZeroGivesACrossTermOfItsSign) {
  for (const double zero : {0.0, -0.0}) {
    Incline_MagneticCorrectParameter out;
    const CSZMatrix level = Rows({{0.5}, {zero}, {0}, {0}, {-1}});
    EXPECT_EQ(AdjustAccess().MagCorrPara(ShearedCircle(0.2, 1.25, 1, 2), level, level, out), 1);
    EXPECT_TRUE(SameBits(out.d, zero));
    EXPECT_TRUE(std::isnan(out.e));
  }
}

TEST(ClosedForm, VectorsThatAreTooShortGiveNoNumbersAndNoCrash) {
  Incline_MagneticCorrectParameter out;
  EXPECT_EQ(AdjustAccess().MagCorrPara(CSZMatrix(), CSZMatrix(1), CSZMatrix(0, 3), out), 1);
  EXPECT_TRUE(std::isnan(out.e));
  const CSZMatrix columnless(5, 0);
  out = {};
  EXPECT_EQ(AdjustAccess().MagCorrPara(columnless, columnless, columnless, out), 1);
  EXPECT_TRUE(std::isnan(out.e));
  EXPECT_TRUE(std::isnan(out.x0));
}

}  // namespace
}  // namespace tiltpole_test
