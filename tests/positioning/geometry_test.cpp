// The solver held against a pole in space whose tilts, readings and tip follow by turning vectors.

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "positioning/exposed_position.h"
#include "positioning/true_pole.h"

namespace {

using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;
using tiltpole_test::AngleBetween;
using tiltpole_test::DistanceBetween;
using tiltpole_test::ExposedPosition;
using tiltpole_test::TruePole;

constexpr double kTilts[] = {0.01, 0.1, 1.0, 5.0, 15.0, 30.0, 45.0, 60.0};  // [degrees]
constexpr double kStrength = 5000.0;                                        // [counts]
constexpr double kRadian = 57.29577951308232;                               // [degrees]

rc::Gen<double> Between(double low, double high) {
  return rc::gen::map(rc::gen::inRange(0, 1 << 30), [low, high](int step) {
    return low + (high - low) * step / static_cast<double>(1 << 30);
  });
}

// The turns that put the tip in the middle and near the ends of each quadrant of the two tilts.
constexpr double kTurnsInAQuadrant[] = {1.0, 20.0, 45.0, 70.0, 89.0};

TEST(TrueGeometry, TipIsExactInEveryTiltQuadrantGivenTheTrueHeading) {
  ExposedPosition position;
  double worst = 0.0;
  for (const double tilt : kTilts) {
    for (double lean = 7.0; lean < 360.0; lean += 30.0) {
      for (double quadrant = 0.0; quadrant < 360.0; quadrant += 90.0) {
        for (const double turn : kTurnsInAQuadrant) {
          const TruePole pole = TruePole::Leaning(tilt, lean, lean + quadrant + turn);
          PoseSensorData data = pole.Sample(kStrength, 60.0);
          data.Yaw_A = pole.HeadingOfX();
          xyhCoordinate tip;
          position.Position_Geometry_A(xyhCoordinate(), data, 1.0, tip);
          const double error = DistanceBetween(tip, pole.Tip(1.0));
          ASSERT_LE(error, 1e-9) << tilt << " towards " << lean << " turned by " << turn;
          worst = std::max(worst, error);
        }
      }
    }
  }
  EXPECT_GT(worst, 0.0);
}

RC_GTEST_PROP(TrueGeometry, TipIsExactForAnyAttitudeGivenTheTrueHeading, ()) {
  const TruePole pole =
      TruePole::Leaning(*Between(0.01, 60.0), *Between(0.0, 360.0), *Between(0.0, 360.0));
  PoseSensorData data = pole.Sample(kStrength, 60.0);
  data.Yaw_A = pole.HeadingOfX();
  ExposedPosition position;
  xyhCoordinate tip;
  position.Position_Geometry_A(xyhCoordinate(), data, 1.0, tip);
  const bool an_axis_counts_as_level =
      std::min(std::fabs(data.InclineX), std::fabs(data.InclineY)) < 1e-6 * kRadian;
  RC_ASSERT(DistanceBetween(tip, pole.Tip(1.0)) <= (an_axis_counts_as_level ? 2e-6 : 1e-9));
}

TEST(TrueGeometry, AnAxisTakenAsLevelCostsTwoMillionthsOfTheLengthAtMost) {
  ExposedPosition position;
  double worst = 0.0;
  for (const double tilt : kTilts) {
    for (double quadrant = 0.0; quadrant < 360.0; quadrant += 90.0) {
      for (const double off_axis : {1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 0.1, 0.5}) {
        const TruePole pole = TruePole::Leaning(tilt, 50.0, 50.0 + quadrant + off_axis);
        PoseSensorData data = pole.Sample(kStrength, 60.0);
        data.Yaw_A = pole.HeadingOfX();
        xyhCoordinate tip;
        position.Position_Geometry_A(xyhCoordinate(), data, 1.0, tip);
        worst = std::max(worst, DistanceBetween(tip, pole.Tip(1.0)));
      }
    }
  }
  EXPECT_LE(worst, 2e-6);
  EXPECT_GT(worst, 1e-7);
}

TEST(TrueGeometry, HeadingIsExactWhenTheInclinationOfYIsTheTurnAboutTheXAxis) {
  for (const double dip : {-70.0, -30.0, 0.0, 30.0, 70.0}) {
    for (double heading = 0.0; heading < 360.0; heading += 15.0) {
      for (const double pitch : {-50.0, -20.0, -0.01, 0.0, 5.0, 30.0}) {
        for (const double roll : {-50.0, -10.0, 0.0, 0.01, 25.0, 50.0}) {
          const TruePole pole = TruePole::OfHeadingPitchRoll(heading, pitch, roll);
          PoseSensorData data = pole.Sample(kStrength, dip);
          data.InclineX = pitch;
          data.InclineY = roll;
          ExposedPosition position;
          position.CalculateYaw_A(data);
          position.CalculateYaw_B(data);
          ASSERT_LE(AngleBetween(data.Yaw_A, heading), 1e-9)
              << heading << " " << pitch << " " << roll << " dip " << dip;
          ASSERT_LE(AngleBetween(data.Yaw_B, heading + 180.0), 1e-9)
              << heading << " " << pitch << " " << roll << " dip " << dip;
        }
      }
    }
  }
}

TEST(TrueGeometry, HeadingOfTheYAxisIsExactGivenTheHeadingOfTheXAxis) {
  for (const double tilt : {0.5, 5.0, 30.0, 60.0}) {
    for (double turn = 10.0; turn < 360.0; turn += 20.0) {
      const TruePole pole = TruePole::Leaning(tilt, 35.0, turn);
      PoseSensorData data = pole.Sample(kStrength, 60.0);
      ExposedPosition position;
      position.CalculateYaw_A(data);
      const double between_axes = data.Yaw_A - data.YawY_A;
      EXPECT_LE(AngleBetween(pole.HeadingOfX() - pole.HeadingOfY(), between_axes), 1e-9);
    }
  }
}

TEST(TrueGeometry, AnalyticTipIsExactGivenTheTrueHeadings) {
  ExposedPosition position;
  for (const double tilt : {0.01, 0.1, 1.0, 5.0, 30.0, 60.0}) {
    for (double lean = 7.0; lean < 360.0; lean += 30.0) {
      for (double turn = 3.0; turn < 360.0; turn += 20.0) {
        const TruePole pole = TruePole::Leaning(tilt, lean, turn);
        PoseSensorData data = pole.Sample(kStrength, 60.0);
        position.CalculateYaw_A(data);
        data.YawY_A += pole.HeadingOfX() - data.Yaw_A;
        data.Yaw_A = pole.HeadingOfX();
        xyhCoordinate tip;
        ASSERT_EQ(position.Position_Math(xyhCoordinate(), data, 2.0, tip), 1);
        ASSERT_LE(DistanceBetween(tip, pole.Tip(2.0)), 1e-12)
            << tilt << " towards " << lean << " turned by " << turn;
      }
    }
  }
}

RC_GTEST_PROP(TrueGeometry, TheTipIsOnePoleLengthFromTheAntenna, ()) {
  const TruePole pole =
      TruePole::Leaning(*Between(0.0, 60.0), *Between(0.0, 360.0), *Between(0.0, 360.0));
  PoseSensorData data = pole.Sample(kStrength, *Between(-70.0, 70.0));
  const double length = *Between(0.1, 5.0);
  ExposedPosition position;
  xyhCoordinate tip;
  position.Position(data, length, tip);
  RC_ASSERT(std::fabs(DistanceBetween(tip, xyhCoordinate()) - length) <= 1e-14 * length);
}

RC_GTEST_PROP(TrueGeometry, TurningTheSceneAboutTheVerticalTurnsTheTipByAsMuch, ()) {
  const TruePole pole =
      TruePole::Leaning(*Between(0.01, 60.0), *Between(0.0, 360.0), *Between(0.0, 360.0));
  const double turn = *Between(-180.0, 180.0);
  PoseSensorData data = pole.Sample(kStrength, *Between(-70.0, 70.0));
  PoseSensorData turned = data;
  ExposedPosition position;
  xyhCoordinate tip;
  position.Position(data, 2.0, tip);
  // Pole and field turn together, so the sensors notice nothing: only the direction that headings
  // are counted from stays.
  position.SetMagneticBiasAngle_A(-turn);
  position.SetMagneticBiasAngle_B(-turn);
  xyhCoordinate turned_tip;
  position.Position(turned, 2.0, turned_tip);
  const double c = std::cos(turn * tiltpole_test::kDegree);
  const double s = std::sin(turn * tiltpole_test::kDegree);
  xyhCoordinate expected = tip;
  expected.x = tip.x * c - tip.y * s;
  expected.y = tip.x * s + tip.y * c;
  RC_ASSERT(DistanceBetween(turned_tip, expected) <= 1e-12);
}

RC_GTEST_PROP(TrueGeometry, CorrectionWithTheTrueParametersUndoesTheSimulatedErrors, ()) {
  const TruePole pole =
      TruePole::Leaning(*Between(1.0, 40.0), *Between(0.0, 360.0), *Between(0.0, 360.0));
  const PoseSensorData ideal = pole.Sample(kStrength, *Between(-60.0, 60.0));
  Incline_MagneticCorrectParameter par;
  par.x0 = *Between(-800.0, 800.0);
  par.y0 = *Between(-800.0, 800.0);
  par.z0 = *Between(-800.0, 800.0);
  par.a = *Between(-0.2, 0.2);
  par.b = *Between(0.8, 1.2);
  par.c = *Between(-0.2, 0.2);
  par.d = *Between(-0.2, 0.2);
  par.e = *Between(0.8, 1.2);
  // What a sensor reads that this correction describes: its equations solved for the raw reading.
  PoseSensorData raw = ideal;
  raw.MagneticX_A = ideal.MagneticX_A + par.x0;
  raw.MagneticY_A = (ideal.MagneticY_A + par.y0 - par.a * raw.MagneticX_A) / par.b;
  raw.MagneticZ_A =
      (ideal.MagneticZ_A + par.z0 - par.c * raw.MagneticX_A - par.d * raw.MagneticY_A) / par.e;

  ExposedPosition without_errors;
  PoseSensorData ideal_data = ideal;
  xyhCoordinate ideal_tip;
  without_errors.Position(ideal_data, 2.0, ideal_tip);
  ExposedPosition corrected;
  corrected.SetMagneticCorrectPar_A(par);
  xyhCoordinate tip;
  corrected.Position(raw, 2.0, tip);
  RC_ASSERT(std::fabs(raw.MagneticX_A - ideal_data.MagneticX_A) <= 1e-8);
  RC_ASSERT(std::fabs(raw.MagneticY_A - ideal_data.MagneticY_A) <= 1e-8);
  RC_ASSERT(std::fabs(raw.MagneticZ_A - ideal_data.MagneticZ_A) <= 1e-8);
  RC_ASSERT(DistanceBetween(tip, ideal_tip) <= 1e-8);
  RC_ASSERT(corrected.IsMagneticInterference() == without_errors.IsMagneticInterference());
}

}  // namespace
