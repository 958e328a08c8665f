// 100,000 samples through every solution of the tip.

#include "reproducibility/findings.h"
#include "reproducibility/generator.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/quality/point_quality.h"
#include "tiltpole/quality/rigorous_tip.h"

namespace tiltpole_test {
namespace {

constexpr int kSamples = 100000;
constexpr int kTraceEvery = 400;
constexpr double kPoleLength = 2.0;

tiltpole::CInclineSensor_Position CalibratedPole() {
  tiltpole::Incline_MagneticCorrectParameter a;
  a.x0 = 312.25;
  a.y0 = -140.5;
  a.z0 = 77.125;
  a.a = 0.031;
  a.b = 0.94;
  a.c = -0.017;
  a.d = 0.008;
  a.e = 1.07;
  auto b = a;
  b.x0 = -95.75;
  b.b = 1.04;
  tiltpole::CInclineSensor_Position pole;
  pole.SetMagneticCorrectPar_A(a);
  pole.SetMagneticCorrectPar_B(b);
  pole.SetMagneticTranslationPar({3.5, -8.25, 12.0});
  pole.SetMagneticBiasAngle_A(1.75);
  pole.SetMagneticBiasAngle_B(-2.5);
  return pole;
}

// The raw reading that a correction turns into (X, Y, Z).
tiltpole::MagneticReading Raw(const tiltpole::Incline_MagneticCorrectParameter& par, double X,
                              double Y, double Z) {
  const double x = X + par.x0;
  const double y = (-Y - par.a * x + par.y0) / par.b;
  const double z = (-Z - par.c * x - par.d * y + par.z0) / par.e;
  return {x, y, z};
}

// Mostly a pole that leans by up to 30 degrees; at times level about an axis, plumb, or disturbed,
// and it stands still for a few samples.
tiltpole::PoseSensorData Sample(Generator& generator, const tiltpole::CInclineSensor_Position& pole,
                                int i) {
  tiltpole::PoseSensorData sample;
  sample.InclineX = i % 97 == 0 ? 0.0 : generator.Uniform(-30.0, 30.0);
  sample.InclineY = i % 89 == 0 ? 0.0 : generator.Uniform(-30.0, 30.0);
  const CirclePoint north = OnCircle(generator.Uniform(0.0, 1.0));
  const double X = 2500.0 * north.first;
  const double Y = 2500.0 * north.second;
  const double Z = generator.Uniform(3000.0, 5000.0);
  const double disturbance = i % 11 == 0 ? 250.0 : 20.0;
  const auto a = Raw(pole.GetMagneticCorrectPar_A(), X, Y, Z);
  const auto b = Raw(pole.GetMagneticCorrectPar_B(), -X - 3.5, -Y + 8.25,
                     Z + 12.0 + generator.Uniform(-disturbance, disturbance));
  sample.MagneticX_A = a.X;
  sample.MagneticY_A = a.Y;
  sample.MagneticZ_A = a.Z;
  sample.MagneticX_B = b.X;
  sample.MagneticY_B = b.Y;
  sample.MagneticZ_B = b.Z;
  return sample;
}

void AddReadings(Digest& digest, const tiltpole::PoseSensorData& sample) {
  digest.Add(sample.MagneticX_A);
  digest.Add(sample.MagneticY_A);
  digest.Add(sample.MagneticZ_A);
  digest.Add(sample.MagneticX_B);
  digest.Add(sample.MagneticY_B);
  digest.Add(sample.MagneticZ_B);
}

void Trace(Findings& findings, const std::string& name, const tiltpole::xyhCoordinate& tip) {
  for (const double value : {tip.x, tip.y, tip.h}) findings.traced[name].push_back(value);
}

void TraceAll(Findings& findings, tiltpole::CInclineSensor_Position& pole,
              const tiltpole::PoseSensorData& sample, const tiltpole::xyhCoordinate& tip) {
  auto& traced = findings.traced;
  traced["Position: Yaw_A [degrees]"].push_back(sample.Yaw_A);
  traced["Position: Yaw_B [degrees]"].push_back(sample.Yaw_B);
  traced["Position: YawY_A [degrees]"].push_back(sample.YawY_A);
  Trace(findings, "Position: tip [m]", tip);
  tiltpole::xyhCoordinate other;
  pole.Position_Geometry_B({}, sample, kPoleLength, other);
  Trace(findings, "Position_Geometry_B: tip [m]", other);
  traced["GetAngleofPoletoHorizontal [degrees]"].push_back(
      pole.GetAngleofPoletoHorizontal(sample.InclineX, sample.InclineY));
  traced["GetAngleofPoleProject [degrees]"].push_back(
      pole.GetAngleofPoleProject(sample.InclineX, sample.InclineY, sample.Yaw_A));
  Trace(findings, "SolveRigorousTip: tip [m]",
        tiltpole::SolveRigorousTip(sample, kPoleLength).Offset);
  const auto quality = tiltpole::JudgePoint(sample, kPoleLength);
  Trace(findings, "JudgePoint: deviations [m]", {quality.North, quality.East, quality.Height});
}

}  // namespace

void RunPositions(Findings& findings) {
  Generator generator(1);
  auto pole = CalibratedPole();
  tiltpole::PoseSensorData sample;
  for (int i = 0; i < kSamples; ++i) {
    if (i % 7 > 2) {
      sample.InclineX += 0.01;  // the same place once more, as a pole that stands still gives it
    } else {
      sample = Sample(generator, pole, i);
    }
    auto seen = sample;
    tiltpole::xyhCoordinate tip;
    pole.Position(seen, kPoleLength, tip);
    AddReadings(findings.exact["Position: corrected readings"], seen);
    findings.exact["Position: IsStationary"].Add(pole.IsStationary());
    findings.decisions["Position: IsMagneticInterference"].Add(pole.IsMagneticInterference());
    findings.counts["samples that stand still"] += pole.IsStationary();
    findings.counts["samples with interference"] += pole.IsMagneticInterference();
    tiltpole::xyhCoordinate by_spheres;
    const int met = pole.Position_Math({}, seen, kPoleLength, by_spheres);
    findings.decisions["Position_Math: solved"].Add(met);
    for (const double value : {seen.Yaw_A, seen.Yaw_B, seen.YawY_A, tip.x, tip.y, tip.h}) {
      findings.whole["Position: headings and tips"].Add(value);
    }
    for (const double value : {by_spheres.x, by_spheres.y, by_spheres.h}) {
      findings.whole["Position_Math: tips"].Add(value);
    }
    if (i % kTraceEvery == 0) {
      TraceAll(findings, pole, seen, tip);
      Trace(findings, "Position_Math: tip [m]", by_spheres);
    }
  }
}

}  // namespace tiltpole_test
