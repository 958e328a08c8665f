// 50 calibrations of poles with different sensors, and their parameters through files.

#include "reproducibility/findings.h"
#include "reproducibility/generator.h"
#include "support/message_capture.h"
#include "support/temporary_folder.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace tiltpole_test {
namespace {

constexpr int kCalibrations = 50;

struct Sensor {
  explicit Sensor(Generator& generator) {
    for (double& value : offset) value = generator.Uniform(-800.0, 800.0);
    for (double& value : scale) value = generator.Uniform(0.8, 1.25);
    for (double& value : cross) value = generator.Uniform(-0.05, 0.05);
  }
  tiltpole::MagneticReading Read(Generator& generator, double x, double y, double z) const {
    return {x + offset[0] + generator.Uniform(-6.0, 6.0),
            cross[0] * x + scale[0] * y + offset[1] + generator.Uniform(-6.0, 6.0),
            cross[1] * x + cross[2] * y + scale[1] * z + offset[2] + generator.Uniform(-6.0, 6.0)};
  }
  double offset[3];
  double scale[2];
  double cross[3];
};

tiltpole::PoseSensorData Sample(Generator& generator, const Sensor& a, const Sensor& b, double x,
                                double y, double z) {
  tiltpole::PoseSensorData sample;
  const auto seen_a = a.Read(generator, x, y, z);
  const auto seen_b = b.Read(generator, -x, -y, z);
  sample.MagneticX_A = seen_a.X;
  sample.MagneticY_A = seen_a.Y;
  sample.MagneticZ_A = seen_a.Z;
  sample.MagneticX_B = seen_b.X;
  sample.MagneticY_B = seen_b.Y;
  sample.MagneticZ_B = seen_b.Z;
  return sample;
}

// From 60 samples a turn to 158; every tenth sees only a third of the turn, which may fail.
void Record(Generator& generator, int number, tiltpole::CInclineSensor_MagneticAdjust& adjust) {
  const Sensor a(generator);
  const Sensor b(generator);
  const int samples = 60 + 2 * number;
  const double through = number % 10 == 9 ? 0.3 : 1.0;
  for (int i = 0; i < samples; ++i) {
    const CirclePoint on = OnCircle(through * i / samples);
    const auto level = Sample(generator, a, b, 2500.0 * on.first, 2500.0 * on.second, -4300.0);
    const auto upright = Sample(generator, a, b, 5000.0 * on.first, 0.0, 5000.0 * on.second);
    adjust.Horizontal_Add(&level);
    adjust.Vertical_Add(&upright);
  }
}

void Add(Digest& digest, const tiltpole::Incline_MagneticCorrectParameter& par) {
  for (const double value : {par.a, par.b, par.c, par.d, par.e, par.x0, par.y0, par.z0}) {
    digest.Add(value);
  }
}

void Add(Digest& digest, const tiltpole::Incline_MagneticTranslationParameter& par) {
  for (const double value : {par.dX, par.dY, par.dZ}) digest.Add(value);
}

void ThroughFile(Findings& findings, const std::wstring& path,
                 const tiltpole::CInclineSensor_MagneticAdjust& adjust, int number) {
  tiltpole::CInclineSensor_Position saved;
  saved.SetMagneticCorrectPar_A(adjust.GetCorrectPar_A());
  saved.SetMagneticCorrectPar_B(adjust.GetCorrectPar_B());
  saved.SetMagneticTranslationPar(adjust.GetCoorTrans());
  saved.SetMagneticBiasAngle_A(number * 0.37);
  findings.exact["ConfigSave: results"].Add(saved.ConfigSave(path));
  findings.exact["ConfigSave: bytes"].Add(ReadBytes(path));
  tiltpole::CInclineSensor_Position read;
  findings.exact["ConfigRead: parameters"].Add(read.ConfigRead(path));
  Add(findings.exact["ConfigRead: parameters"], read.GetMagneticCorrectPar_A());
  Add(findings.exact["ConfigRead: parameters"], read.GetMagneticCorrectPar_B());
  Add(findings.exact["ConfigRead: parameters"], read.GetMagneticTranslationPar());
  findings.exact["ConfigRead: parameters"].Add(read.GetMagneticBiasAngle_A());
}

}  // namespace

void RunCalibrations(Findings& findings) {
  Generator generator(3);
  const TemporaryFolder folder;
  const MessageCapture messages;
  for (int number = 0; number < kCalibrations; ++number) {
    tiltpole::CInclineSensor_MagneticAdjust adjust;
    Record(generator, number, adjust);
    Digest& digest = findings.exact["Adjust: results and parameters"];
    const int adjusted = adjust.Adjust();
    findings.counts["calibrations that succeed"] += adjusted;
    digest.Add(adjusted);
    Add(digest, adjust.GetCorrectPar_A());
    Add(digest, adjust.GetCorrectPar_B());
    Add(digest, adjust.GetCoorTrans());
    ThroughFile(findings, folder / L"parameters.txt", adjust, number);
  }
  for (const ShownMessage& message : messages.shown) {
    findings.exact["Adjust: messages"].Add(std::string(message.text.begin(), message.text.end()));
  }
}

}  // namespace tiltpole_test
