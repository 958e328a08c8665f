// Updates of the controls, from the call to the pixels of a window that no screen shows, at 400 x
// 400. The argument is how many marks or points there are already.

#include <QApplication>
#include <QImage>
#include <cmath>

#include <benchmark/benchmark.h>

#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"

namespace {

constexpr int kSide = 400;

// The window's own copy of what was drawn at once: what a screen would be given.
void Show(QWidget& window, QImage& screen) { window.render(&screen); }

template <typename Dial>
void UpdateDial(benchmark::State& state, double range) {
  Dial dial;
  dial.resize(kSide, kSide);
  QImage screen(kSide, kSide, QImage::Format_RGB32);
  Show(dial, screen);
  for (int i = 0; i < state.range(0); ++i) dial.SetFix(i);
  double value = 0.0;
  for (auto _ : state) {
    value = std::fmod(value + 1.7, range);
    dial.SetValue(value);
    Show(dial, screen);
  }
}

void CompassSetValue(benchmark::State& state) { UpdateDial<tiltpole::CGraphCompass>(state, 360.0); }
BENCHMARK(CompassSetValue)->Arg(0)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

void GaugeSetValue(benchmark::State& state) {
  UpdateDial<tiltpole::CGraphIncline_Left>(state, 180.0);
}
BENCHMARK(GaugeSetValue)->Arg(0)->Arg(10)->Arg(100)->Unit(benchmark::kMicrosecond);

void PlotAddTrackPoint(benchmark::State& state) {
  tiltpole::CGraphMagnetic_XY plot;
  plot.Create(L"", L"", 0, {0, 0, kSide, kSide}, nullptr, 1);
  plot.AddTrackPoint(-400, -400, 0);
  plot.AddTrackPoint(400, 400, 0);
  plot.ZoomAll();
  int i = 0;
  const auto add = [&plot, &i] {
    plot.AddTrackPoint(i * 7 % 401 - 200, i * 11 % 397 - 200, 0);
    ++i;
  };
  while (i < state.range(0)) add();
  for (auto _ : state) add();
}
BENCHMARK(PlotAddTrackPoint)->Arg(0)->Arg(10000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
