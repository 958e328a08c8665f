// 100,000 samples of 100 turns through both screenings.

#include <memory>
#include <utility>

#include "reproducibility/findings.h"
#include "reproducibility/generator.h"
#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"

namespace tiltpole_test {
namespace {

constexpr int kTurns = 100;
constexpr int kSamplesPerTurn = 1000;
constexpr int kTraceEvery = 400;

// One turn: a circle with noise, some readings off it, some twice, now and then a gap.
class TurnMaker {
 public:
  TurnMaker(Generator& generator, int turn)
      : generator_(generator),
        radius_(generator.Uniform(1500.0, 3500.0)),
        center_x_(generator.Uniform(-400.0, 400.0)),
        center_y_(generator.Uniform(-400.0, 400.0)),
        covered_(turn % 5 == 0 ? 0.8 : 1.0) {}

  tiltpole::PoseSensorData At(int i) {
    tiltpole::PoseSensorData sample;
    if (i % 50 > 45) return last_;
    const CirclePoint on = OnCircle(covered_ * i / kSamplesPerTurn);
    const double outlier = i % 71 == 0 ? 300.0 : 0.0;
    sample.MagneticX_A = center_x_ + (radius_ + outlier) * on.first + Noise();
    sample.MagneticY_A = center_y_ + (radius_ + outlier) * on.second + Noise();
    sample.MagneticZ_A = -4000.0 + Noise() + (i % 83 == 0 ? 150.0 : 0.0);
    sample.Tag[1] = i / 600;
    sample.Tag[2] = i / 10 % 60;
    last_ = sample;
    return sample;
  }

 private:
  double Noise() { return generator_.Uniform(-15.0, 15.0); }

  Generator& generator_;
  double radius_;
  double center_x_;
  double center_y_;
  double covered_;
  tiltpole::PoseSensorData last_;
};

void AddRecords(Findings& findings, const std::string& twin,
                const tiltpole::PoseSensorDataArray* selected) {
  Digest& readings = findings.decisions[twin + ": which records Filter and Select keep"];
  if (selected == nullptr) return;
  int count = 0;
  findings.counts[twin + ": records kept"] += selected->GetSize();
  for (const tiltpole::PoseSensorData* record : *selected) {
    readings.Add(record->MagneticX_A);
    readings.Add(record->Forward);
    findings.whole[twin + ": azimuths"].Add(record->Azimuth);
    if (count++ % kTraceEvery == 0) {
      findings.traced[twin + ": Azimuth [degrees]"].push_back(record->Azimuth);
    }
  }
}

template <class Screening>
void FinishTurn(Findings& findings, const std::string& twin, Screening& screening) {
  Digest& center = findings.exact[twin + ": centre"];
  const auto par = screening.GetCenterPar();
  for (const double value : {par.CenterX, par.CenterY, par.CenterZ, par.Radius}) center.Add(value);
  center.Add(par.Valid);
  Digest& coverage = findings.decisions[twin + ": coverage and completeness"];
  coverage.Add(screening.GetRecordRate());
  coverage.Add(screening.IsRecordOK());
  const std::unique_ptr<tiltpole::PoseSensorDataArray> filtered(screening.Filter());
  AddRecords(findings, twin, filtered.get());
  if (filtered) {
    const std::unique_ptr<tiltpole::PoseSensorDataArray> even(screening.Select(filtered.get(), 60));
    AddRecords(findings, twin, even.get());
    coverage.Add(screening.IsComplete(even.get()));
  }
  screening.Clear();
}

}  // namespace

void RunScreenings(Findings& findings) {
  Generator generator(2);
  tiltpole::CInclineSensor_Filter_XY xy;
  tiltpole::CInclineSensor_Filter_XZ xz;
  for (int turn = 0; turn < kTurns; ++turn) {
    TurnMaker maker(generator, turn);
    for (int i = 0; i < kSamplesPerTurn; ++i) {
      auto sample = maker.At(i);
      xy.Add(new tiltpole::PoseSensorData(sample));
      std::swap(sample.MagneticY_A, sample.MagneticZ_A);
      xz.Add(new tiltpole::PoseSensorData(sample));
    }
    FinishTurn(findings, "Filter_XY", xy);
    FinishTurn(findings, "Filter_XZ", xz);
  }
}

}  // namespace tiltpole_test
