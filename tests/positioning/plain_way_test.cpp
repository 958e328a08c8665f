// The library gives the same bits as the plain way, for any sample: ordinary ones, the limits of
// every rule, huge and tiny values, infinities and not-a-number.

#include "positioning/plain_way.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "positioning/exposed_position.h"
#include "support/same_bits.h"

namespace {

using tiltpole::Incline_MagneticCorrectParameter;
using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;
using tiltpole_test::ExposedPosition;
using tiltpole_test::PlainPosition;
using tiltpole_test::SameBits;

bool SameBits(const xyhCoordinate& a, const xyhCoordinate& b) {
  return SameBits(a.x, b.x) && SameBits(a.y, b.y) && SameBits(a.h, b.h);
}

bool SameBits(const PoseSensorData& a, const PoseSensorData& b) {
  return SameBits(a.MagneticX_A, b.MagneticX_A) && SameBits(a.MagneticY_A, b.MagneticY_A) &&
         SameBits(a.MagneticZ_A, b.MagneticZ_A) && SameBits(a.MagneticX_B, b.MagneticX_B) &&
         SameBits(a.MagneticY_B, b.MagneticY_B) && SameBits(a.MagneticZ_B, b.MagneticZ_B) &&
         SameBits(a.Yaw_A, b.Yaw_A) && SameBits(a.Yaw_B, b.Yaw_B) && SameBits(a.YawY_A, b.YawY_A);
}

rc::Gen<double> Between(double low, double high) {
  return rc::gen::map(rc::gen::inRange<std::int64_t>(0, std::int64_t{1} << 53),
                      [low, high](std::int64_t step) {
                        return low + (high - low) * static_cast<double>(step) /
                                         static_cast<double>(std::int64_t{1} << 53);
                      });
}

rc::Gen<double> Special() {
  const double epsilon_in_degrees = 1e-6 * 180.0 / 3.141592653589793;
  return rc::gen::element(
      0.0, -0.0, 1e-6, -1e-6, 5e-5, -5e-5, epsilon_in_degrees, -epsilon_in_degrees, 0.0033, -0.0033,
      0.5, 45.0, -45.0, 90.0, -90.0, 180.0, -180.0, 270.0, 360.0, -360.0, 1000.0, 300.0, 1e17,
      -1e17, 1e300, -1e300, 5e-324, -5e-324, std::numeric_limits<double>::max(),
      std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
      std::numeric_limits<double>::quiet_NaN());
}

rc::Gen<double> Tilt() {
  return rc::gen::weightedOneOf<double>({{6, Between(-60.0, 60.0)},
                                         {2, Between(-0.01, 0.01)},
                                         {1, Between(-720.0, 720.0)},
                                         {2, Special()},
                                         {1, rc::gen::arbitrary<double>()}});
}

rc::Gen<double> Value() {
  return rc::gen::weightedOneOf<double>({{6, Between(-6000.0, 6000.0)},
                                         {1, Between(-1.0, 1.0)},
                                         {1, Special()},
                                         {1, rc::gen::arbitrary<double>()}});
}

rc::Gen<double> Heading() {
  return rc::gen::weightedOneOf<double>(
      {{6, Between(0.0, 360.0)}, {1, Special()}, {1, rc::gen::arbitrary<double>()}});
}

PoseSensorData AnySample() {
  PoseSensorData data;
  data.InclineX = *Tilt();
  data.InclineY = *Tilt();
  data.MagneticX_A = *Value();
  data.MagneticY_A = *Value();
  data.MagneticZ_A = *Value();
  data.MagneticX_B = *Value();
  data.MagneticY_B = *Value();
  data.MagneticZ_B = *Value();
  data.Yaw_A = *Heading();
  data.Yaw_B = *Heading();
  return data;
}

xyhCoordinate AnyPoint() {
  xyhCoordinate point;
  point.x = *Value();
  point.y = *Value();
  point.h = *Value();
  return point;
}

Incline_MagneticCorrectParameter AnyCorrection() {
  Incline_MagneticCorrectParameter par;
  if (*rc::gen::arbitrary<bool>()) return par;
  par.x0 = *Value();
  par.y0 = *Value();
  par.z0 = *Value();
  par.a = *Between(-0.2, 0.2);
  par.b = *Between(0.8, 1.2);
  par.c = *Between(-0.2, 0.2);
  par.d = *Between(-0.2, 0.2);
  par.e = *Between(0.8, 1.2);
  return par;
}

RC_GTEST_PROP(PlainWay, PositionGivesTheSameBits, ()) {
  ExposedPosition position;
  PlainPosition plain;
  position.MagneticA = plain.MagneticA = AnyCorrection();
  position.MagneticB = plain.MagneticB = AnyCorrection();
  position.CoorTrans.dX = plain.CoorTrans.dX = *Value();
  position.MagneticBiasAngle_A = plain.BiasA = *Heading();
  position.MagneticBiasAngle_B = plain.BiasB = *Heading();
  const double length = *rc::gen::element(2.0, 1.8, -1.0, 0.0, 1e300);
  PoseSensorData sample = AnySample();
  for (int pass = 0; pass < 3; ++pass) {
    PoseSensorData data = sample;
    PoseSensorData plain_data = sample;
    xyhCoordinate tip;
    xyhCoordinate plain_tip;
    RC_ASSERT(position.Position(data, length, tip) == 1);
    plain.Position(plain_data, length, plain_tip);
    RC_ASSERT(SameBits(data, plain_data));
    RC_ASSERT(SameBits(tip, plain_tip));
    RC_ASSERT(position.Stationary == plain.Stationary);
    RC_ASSERT(position.MagneticInterference == plain.Interference);
    RC_ASSERT(SameBits(position.LastMagneticX_A, plain.LastX));
    RC_ASSERT(SameBits(position.LastMagneticY_A, plain.LastY));
    RC_ASSERT(SameBits(position.LastMagneticZ_A, plain.LastZ));
    RC_ASSERT(SameBits(position.LastInclineX, plain.LastInclineX));
    RC_ASSERT(SameBits(position.LastInclineY, plain.LastInclineY));
    RC_ASSERT(SameBits(position.PoleTriangleAngle, plain.PoleTriangleAngle));
    RC_ASSERT(SameBits(position.PoleProjectOffset, plain.PoleProjectOffset));
    sample.InclineX += *Between(-0.6, 0.6);
    sample.MagneticX_A += *Between(-1200.0, 1200.0);
  }
}

RC_GTEST_PROP(PlainWay, TheHeadingOperationsGiveTheSameBits, ()) {
  ExposedPosition position;
  PlainPosition plain;
  PoseSensorData data = AnySample();
  PoseSensorData plain_data = data;
  RC_ASSERT(position.CalculateYaw_A(data) == 1);
  RC_ASSERT(position.CalculateYaw_B(data) == 1);
  plain.CalculateYaw_A(plain_data);
  plain.CalculateYaw_B(plain_data);
  RC_ASSERT(SameBits(data, plain_data));
  RC_ASSERT(position.MagneticInterference == plain.Interference);
}

RC_GTEST_PROP(PlainWay, TheGeometricSolutionsGiveTheSameBits, ()) {
  ExposedPosition position;
  PlainPosition plain;
  const PoseSensorData data = AnySample();
  const xyhCoordinate origin = AnyPoint();
  xyhCoordinate tip;
  xyhCoordinate plain_tip;
  RC_ASSERT(position.Position_Geometry_A(origin, data, 2.0, tip) == 1);
  plain.Geometry_A(origin, data, 2.0, plain_tip);
  RC_ASSERT(SameBits(tip, plain_tip));
  RC_ASSERT(SameBits(position.PoleProjectOffset, plain.PoleProjectOffset));
  RC_ASSERT(position.PoleTriangleAngle == 180.0);
  RC_ASSERT(position.Position_Geometry_B(origin, data, 2.0, tip) == 1);
  plain.Geometry_B(origin, data, 2.0, plain_tip);
  RC_ASSERT(SameBits(tip, plain_tip));
}

RC_GTEST_PROP(PlainWay, TheAnglesGiveTheSameBits, ()) {
  const ExposedPosition position;
  const PlainPosition plain;
  const double x = *Tilt();
  const double y = *Tilt();
  const double heading = *Heading();
  RC_ASSERT(SameBits(position.GetAngleofPoletoHorizontal(x, y), plain.PoletoHorizontal(x, y)));
  RC_ASSERT(
      SameBits(position.GetAngleofPoleProject(x, y, heading), plain.PoleProject(x, y, heading)));
}

RC_GTEST_PROP(PlainWay, APointAlongADirectionHasTheSameBits, ()) {
  const ExposedPosition position;
  const PlainPosition plain;
  xyhCoordinate from;
  from.x = *Value();
  const double elevation = *Tilt();
  const double azimuth = *Heading();
  RC_ASSERT(SameBits(position.GetInclinePoint(from, 2.0, elevation, azimuth),
                     plain.InclinePoint(from, 2.0, elevation, azimuth)));
}

RC_GTEST_PROP(PlainWay, TheIntersectionOfThreeSpheresHasTheSameBits, ()) {
  const ExposedPosition position;
  const PlainPosition plain;
  const xyhCoordinate P1 = AnyPoint();
  const xyhCoordinate P2 = AnyPoint();
  const xyhCoordinate P3 = AnyPoint();
  // Mostly spheres that meet, since they are large.
  const double r1 = *Between(4000.0, 20000.0);
  const double r2 = *rc::gen::oneOf(Between(4000.0, 20000.0), Value());
  const double r3 = *rc::gen::oneOf(Between(4000.0, 20000.0), Value());
  xyhCoordinate point = {7.0, 8.0, 9.0};
  xyhCoordinate plain_point = point;
  const int found = position.GetSolvePoint(P1, P2, P3, r1, r2, r3, point);
  RC_ASSERT(found == plain.SolvePoint(P1, P2, P3, r1, r2, r3, plain_point));
  RC_CLASSIFY(found == 1, "they meet");
  RC_ASSERT(SameBits(point, plain_point));
  RC_ASSERT(SameBits(position.GetDistance(P1, P2), plain.Distance(P1, P2)));
}

RC_GTEST_PROP(PlainWay, TheAnalyticSolutionHasTheSameBits, ()) {
  ExposedPosition position;
  const PlainPosition plain;
  PoseSensorData data = AnySample();
  if (*rc::gen::arbitrary<bool>()) position.CalculateYaw_A(data);
  const xyhCoordinate antenna = AnyPoint();
  const double length = *rc::gen::element(2.0, 1.8, -1.0, 0.0, 1e300);
  xyhCoordinate tip = {7.0, 8.0, 9.0};
  xyhCoordinate plain_tip = tip;
  const int found = position.Position_Math(antenna, data, length, tip);
  RC_ASSERT(found == plain.Math(antenna, data, length, plain_tip));
  RC_CLASSIFY(found == 1 && !std::isnan(tip.h), "a tip");
  RC_ASSERT(SameBits(tip, plain_tip));
}

RC_GTEST_PROP(PlainWay, TheDirectionOfAVectorHasTheSameBits, ()) {
  const ExposedPosition position;
  const PlainPosition plain;
  const double x = *Value();
  const double y = *Value();
  RC_ASSERT(SameBits(position.ConverseYaw_True(x, y), plain.Direction(x, y)));
}

}  // namespace
