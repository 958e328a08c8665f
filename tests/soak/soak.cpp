// Long runs: samples without end through positioning, screening and plots, whose memory must stay
// flat, and calibrations of ever more samples. Prints tables; see scripts/soak.sh.
//
// usage: soak SAMPLES

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <memory>
#include <random>
#include <string>

#include <unistd.h>

#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"
#include "tiltpole/platform/recording/recorder.h"
#include "tiltpole/tiltpole.h"

namespace {

using namespace tiltpole;

constexpr double kRadian = 3.141592653589793 / 180.0;
constexpr double kNorth = 2500.0;  // field strength to the north [counts]
constexpr double kDown = 4300.0;   // and downwards [counts]
constexpr long kMiB = 1024L * 1024L;

// --- what is measured --------------------------------------------------------------------------

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

/// Bytes of this process that stand in memory just now.
long ResidentBytes() {
  long size = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> size >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

/// The most that ever stood there since the last ForgetPeak.
long PeakBytes() {
  std::ifstream status("/proc/self/status");
  std::string name;
  long kibibytes = 0;
  while (status >> name) {
    if (name == "VmHWM:" && status >> kibibytes) return kibibytes * 1024;
  }
  return 0;
}

void ForgetPeak() { std::ofstream("/proc/self/clear_refs") << 5; }

double InMiB(long bytes) { return static_cast<double>(bytes) / kMiB; }

// --- the samples -------------------------------------------------------------------------------

/// A pole with offsets, scales and noise on both magnetometers, ten samples a second. B is mounted
/// half a turn about the pole's axis from A.
class Pole {
 public:
  PoseSensorData Read(double heading, double pitch) {
    const double north = kNorth * std::cos(heading);
    const double x = north * std::cos(pitch) - kDown * std::sin(pitch);
    const double y = kNorth * std::sin(heading);
    const double z = -north * std::sin(pitch) - kDown * std::cos(pitch);
    PoseSensorData sample;
    const long seconds = count_++ / 10 % 86400;
    sample.Tag[0] = static_cast<int>(seconds / 3600);
    sample.Tag[1] = static_cast<int>(seconds / 60 % 60);
    sample.Tag[2] = static_cast<int>(seconds % 60);
    sample.InclineX = std::asin(std::sin(pitch)) / kRadian;
    sample.MagneticX_A = x + 120.0 + Noise();
    sample.MagneticY_A = 1.02 * y - 80.0 + Noise();
    sample.MagneticZ_A = 0.97 * z + 40.0 + Noise();
    sample.MagneticX_B = -x - 60.0 + Noise();
    sample.MagneticY_B = -0.99 * y + 30.0 + Noise();
    sample.MagneticZ_B = 1.01 * z + 10.0 + Noise();
    return sample;
  }

 private:
  double Noise() { return noise_(random_); }

  std::mt19937 random_{1};
  std::normal_distribution<double> noise_{0.0, 2.0};
  long count_ = 0;
};

// --- samples without end -----------------------------------------------------------------------

/// One of the two turns with its screening and its plot, as a host shows it.
template <class Screening, class Plot>
class Turn {
 public:
  Turn() {
    constexpr std::uint32_t kVisibleChild = 0x50000000;
    plot_.Create(nullptr, nullptr, kVisibleChild, {0, 0, 406, 406}, nullptr, 1);
  }

  void Add(const PoseSensorData& sample) {
    auto record = std::make_unique<PoseSensorData>(sample);
    screening_.Add(record.get());
    static_cast<void>(record.release());
    covered_ += screening_.GetRecordRate();
    plot_.AddTrackPoint(static_cast<int>(sample.MagneticX_A), static_cast<int>(sample.MagneticY_A),
                        static_cast<int>(sample.MagneticZ_A));
    plot_.PaintIfInvalid();
  }

  /// The end of a turn: the samples that a calibration would get, and a fresh start.
  void Finish() {
    const std::unique_ptr<PoseSensorDataArray> filtered(screening_.Filter());
    const std::unique_ptr<PoseSensorDataArray> selected(screening_.Select(filtered.get(), 36));
    complete_ += screening_.IsComplete(selected.get());
    const PoseSensorCenterParameter centre = screening_.GetCenterPar();
    plot_.AddCenterPoint(static_cast<int>(centre.CenterX), static_cast<int>(centre.CenterY),
                         static_cast<int>(centre.CenterZ));
    plot_.ZoomAll();
    plot_.PaintIfInvalid();
    plot_.Clear();
    screening_.Clear();
  }

  long Complete() const { return complete_; }
  long Covered() const { return covered_; }

 private:
  Screening screening_;
  Plot plot_;
  long complete_ = 0;
  long covered_ = 0;
};

/// @return whether memory stayed flat
bool PlaySamples(long samples) {
  constexpr long kSamplesPerTurn = 1000;
  constexpr long kMostGrowth = kMiB;
  const long warm_up = samples / 10;
  Recorder::Instance().keeps_lines = false;
  Pole pole;
  CInclineSensor_Position solver;
  Turn<CInclineSensor_Filter_XY, CGraphMagnetic_XY> about_z;
  Turn<CInclineSensor_Filter_XZ, CGraphMagnetic_XZ> about_y;

  std::printf("%12s %14s %14s\n", "samples", "resident MiB", "processor s");
  long settled = 0;
  long still = 0;
  double tips = 0.0;
  for (long i = 0; i < samples; ++i) {
    const double angle = static_cast<double>(i % kSamplesPerTurn) * 0.36 * kRadian;
    const bool horizontal = i / kSamplesPerTurn % 2 == 0;
    PoseSensorData sample = horizontal ? pole.Read(angle, 0.0) : pole.Read(0.0, angle);
    horizontal ? about_z.Add(sample) : about_y.Add(sample);
    if ((i + 1) % kSamplesPerTurn == 0) horizontal ? about_z.Finish() : about_y.Finish();
    xyhCoordinate tip;
    solver.Position(sample, 2.0, tip);
    still += solver.IsStationary();
    if (std::isfinite(tip.h)) tips += tip.h;
    if ((i + 1) % warm_up == 0) {
      if (settled == 0) settled = ResidentBytes();
      std::printf("%12ld %14.2f %14.1f\n", i + 1, InMiB(ResidentBytes()), ProcessorSeconds());
      std::fflush(stdout);
    }
  }
  const long grown = ResidentBytes() - settled;
  std::printf("grown by %ld KiB after the first tenth\n", grown / 1024);
  std::printf(
      "%ld and %ld complete turns, mean coverage %.1f %%, mean tip height %.3f, %ld still\n",
      about_z.Complete(), about_y.Complete(),
      static_cast<double>(about_z.Covered() + about_y.Covered()) / static_cast<double>(samples),
      tips / static_cast<double>(samples), still);
  return grown <= kMostGrowth;
}

// --- calibrations of many sizes ----------------------------------------------------------------

/// @return whether the calibration ended as its number of samples lets expect
bool Calibrate(int samples) {
  constexpr int kEnough = 10;
  Pole pole;
  auto calibration = std::make_unique<CInclineSensor_MagneticAdjust>();
  ForgetPeak();
  const long before = ResidentBytes();
  for (int i = 0; i < samples; ++i) {
    const double angle = 360.0 * kRadian * i / samples;
    const PoseSensorData horizontal = pole.Read(angle, 0.0);
    const PoseSensorData vertical = pole.Read(0.0, angle);
    calibration->Horizontal_Add(&horizontal);
    calibration->Vertical_Add(&vertical);
  }
  const double start = ProcessorSeconds();
  const int result = calibration->Adjust();
  const double seconds = ProcessorSeconds() - start;
  const double offset = calibration->GetCorrectPar_A().x0;
  std::printf("%10d %8d %14.1f %14.2f %14.2f\n", samples, result, 1000.0 * seconds,
              InMiB(PeakBytes() - before), offset);
  std::fflush(stdout);
  const bool right = result == 1 && std::fabs(offset - 120.0) < 2.0;
  return samples < kEnough || right;
}

}  // namespace

int main(int argc, char** argv) {
  const long samples = argc == 2 ? std::strtol(argv[1], nullptr, 10) : 0;
  if (samples < 10) {
    std::fprintf(stderr, "usage: soak SAMPLES (at least 10)\n");
    return 2;
  }
  SetMessageBoxHandler([](const std::wstring&, const std::wstring&, MessageIcon) {});
  bool good = true;
  std::printf("%10s %8s %14s %14s %14s\n", "each turn", "result", "processor ms", "peak MiB",
              "offset of x");
  for (const int size : {1, 5, 21, 10000, 200000}) good = Calibrate(size) && good;
  std::printf("\n");
  good = PlaySamples(samples) && good;
  std::printf(good ? "good\n" : "NOT GOOD\n");
  return good ? 0 : 1;
}
