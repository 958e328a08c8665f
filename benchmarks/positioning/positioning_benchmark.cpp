// What a sample costs, beside the trigonometric calls alone that no order of computing can avoid,
// and what the parameter file costs.

#include <array>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

#include "tiltpole/platform/text.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace {

using tiltpole::CInclineSensor_Position;
using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;

constexpr double kDegree = 3.141592653589793 / 180.0;

class ExposedPosition : public CInclineSensor_Position {
 public:
  using CInclineSensor_Position::CalculateYaw_A;
};

// Different samples in a row, in all four tilt quadrants, so that no branch is learnt by heart.
std::array<PoseSensorData, 64> Samples() {
  std::array<PoseSensorData, 64> samples;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const double turn = static_cast<double>(i * 37 % 64) * 0.0981747704 + 0.01;
    PoseSensorData& sample = samples[i];
    sample.InclineX = 12.0 * std::cos(turn);
    sample.InclineY = 15.0 * std::sin(turn);
    sample.MagneticX_A = 2500.0 * std::cos(3.0 * turn);
    sample.MagneticY_A = 2500.0 * std::sin(3.0 * turn);
    sample.MagneticZ_A = -4300.0;
    sample.MagneticX_B = -sample.MagneticX_A;
    sample.MagneticY_B = -sample.MagneticY_A;
    sample.MagneticZ_B = sample.MagneticZ_A;
    sample.Yaw_A = 50.0 * turn;
    sample.YawY_A = 50.0 * turn - 90.0;
  }
  return samples;
}

template <typename Operation>
void RunOverSamples(benchmark::State& state, Operation operation) {
  const std::array<PoseSensorData, 64> samples = Samples();
  std::size_t at = 0;
  for (auto _ : state) {
    PoseSensorData sample = samples[at++ % samples.size()];
    benchmark::DoNotOptimize(sample);
    auto result = operation(sample);
    benchmark::DoNotOptimize(result);
  }
}

void Position(benchmark::State& state) {
  CInclineSensor_Position position;
  RunOverSamples(state, [&position](PoseSensorData& sample) {
    xyhCoordinate tip;
    position.Position(sample, 2.0, tip);
    return tip;
  });
}
BENCHMARK(Position);

// The calls of one sample that is not plumb: the tilts' sines and cosines (4), both headings (2),
// the angle between the axes (1), the pole's angle with its sine and cosine, once as the host gets
// it and once as the rule of the azimuth has it (5), the tip's direction (2), and the triangles of
// both magnetometers' azimuths (6). All depend on the sample, and none on another's result where
// the solver's does not either.
double UnavoidableCalls(const PoseSensorData& sample) {
  const double alpha = sample.InclineX * kDegree;
  const double beta = sample.InclineY * kDegree;
  const double sin_alpha = std::sin(alpha);
  const double cos_alpha = std::cos(alpha);
  const double sin_beta = std::sin(beta);
  const double cos_beta = std::cos(beta);
  const double headings = std::atan(sample.MagneticY_A / (sample.MagneticX_A + cos_alpha)) +
                          std::atan(sample.MagneticY_B / (sample.MagneticX_B + cos_beta));
  const double between = std::acos(-sin_alpha * sin_beta / (cos_alpha * cos_beta));
  const double phi =
      1.5707963267948966 - std::asin(std::sqrt(sin_alpha * sin_alpha + sin_beta * sin_beta));
  const double phi_given = phi * 1.0000000000000002;
  const double tan_phi = std::tan(phi);
  const double sin_phi = std::sin(phi);
  const double tan_alpha = std::tan(alpha);
  const double tan_beta = std::tan(beta);
  const double first = std::acos(-0.999 * tan_alpha * tan_beta);
  const double second = std::acos(0.9 * std::sin(first));
  const double third = std::acos(0.01 * tan_alpha * tan_phi * sin_phi);
  const double R = headings + second;
  return std::cos(phi_given) * std::cos(R) + std::sin(R) + std::sin(phi_given) + between + third;
}

void UnavoidableTrigonometryOfPosition(benchmark::State& state) {
  RunOverSamples(state, [](const PoseSensorData& sample) { return UnavoidableCalls(sample); });
}
BENCHMARK(UnavoidableTrigonometryOfPosition);

void CalculateYaw_A(benchmark::State& state) {
  ExposedPosition position;
  RunOverSamples(state, [&position](PoseSensorData& sample) {
    position.CalculateYaw_A(sample);
    return sample.Yaw_A;
  });
}
BENCHMARK(CalculateYaw_A);

void UnavoidableTrigonometryOfCalculateYaw_A(benchmark::State& state) {
  RunOverSamples(state, [](const PoseSensorData& sample) {
    const double alpha = sample.InclineX * kDegree;
    const double beta = sample.InclineY * kDegree;
    const double ratio = std::sin(alpha) * std::sin(beta) / (std::cos(alpha) * std::cos(beta));
    return std::atan(sample.MagneticY_A / (sample.MagneticX_A + ratio)) + std::acos(ratio);
  });
}
BENCHMARK(UnavoidableTrigonometryOfCalculateYaw_A);

void GetAngleofPoleProject(benchmark::State& state) {
  const CInclineSensor_Position position;
  RunOverSamples(state, [&position](const PoseSensorData& sample) {
    return position.GetAngleofPoleProject(sample.InclineX, sample.InclineY, sample.Yaw_A);
  });
}
BENCHMARK(GetAngleofPoleProject);

void Position_Geometry_A(benchmark::State& state) {
  CInclineSensor_Position position;
  RunOverSamples(state, [&position](const PoseSensorData& sample) {
    xyhCoordinate tip;
    position.Position_Geometry_A(xyhCoordinate(), sample, 2.0, tip);
    return tip;
  });
}
BENCHMARK(Position_Geometry_A);

void Position_Math(benchmark::State& state) {
  CInclineSensor_Position position;
  RunOverSamples(state, [&position](const PoseSensorData& sample) {
    xyhCoordinate tip;
    position.Position_Math(xyhCoordinate(), sample, 2.0, tip);
    return tip;
  });
}
BENCHMARK(Position_Math);

// A file of its own for each benchmark, gone at its end.
class ParameterFilePath {
 public:
  explicit ParameterFilePath(const char* name)
      : path_(std::filesystem::temp_directory_path() / name) {}
  ~ParameterFilePath() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  ParameterFilePath(const ParameterFilePath&) = delete;
  ParameterFilePath& operator=(const ParameterFilePath&) = delete;

  std::wstring Wide() const { return tiltpole::detail::WideText(path_.u8string()); }

 private:
  std::filesystem::path path_;
};

void ConfigSave(benchmark::State& state) {
  const ParameterFilePath path("tiltpole_benchmark_save.par");
  const CInclineSensor_Position position;
  for (auto _ : state) benchmark::DoNotOptimize(position.ConfigSave(path.Wide()));
}
BENCHMARK(ConfigSave);

void ConfigRead(benchmark::State& state) {
  const ParameterFilePath path("tiltpole_benchmark_read.par");
  CInclineSensor_Position position;
  if (position.ConfigSave(path.Wide()) == 0) return state.SkipWithError("no place for the file");
  for (auto _ : state) benchmark::DoNotOptimize(position.ConfigRead(path.Wide()));
}
BENCHMARK(ConfigRead);

}  // namespace
