// Draws fixed scenes and writes them to files, so that the windowing systems can be compared.
// usage: platform_scenes FOLDER

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "platform_scenes/backend.h"
#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"

namespace {

using scenes::Drawn;
using scenes::Painted;
using scenes::TextBox;
using tiltpole::Brush;
using tiltpole::DrawingContext;
using tiltpole::NullPen;
using tiltpole::Point;
using tiltpole::Rgb;
using tiltpole::Size;
using tiltpole::SolidPen;

constexpr double kPi = 3.141592653589793;
constexpr tiltpole::Color kScaleText = Rgb(0, 0, 255);
constexpr tiltpole::Color kPlotText = Rgb(255, 0, 255);

std::string folder;
bool all_saved = true;

// The needle's light edge has a colour that the system chooses; here it is the same everywhere.
void SettleSystemColor(scenes::Picture& picture) {
  std::replace(picture.pixels.begin(), picture.pixels.end(), tiltpole::SystemButtonFaceColor(),
               Rgb(240, 240, 240));
}

void Save(const std::string& name, scenes::Picture picture,
          const std::vector<TextBox>& texts = {}) {
  SettleSystemColor(picture);
  const std::string path = folder + "/" + name + ".ppm";
  if (scenes::Save(picture, texts, path)) return;
  std::fprintf(stderr, "cannot write %s\n", path.c_str());
  all_saved = false;
}

int Rounded(double value) { return static_cast<int>(value + 0.5); }

// A star of lines in all directions, with each width that the controls use.
void DrawStar(DrawingContext& context, int width) {
  context.SelectPen(SolidPen(width, Rgb(255, 255, 255)));
  for (int degrees = 0; degrees < 360; degrees += 15) {
    const double angle = degrees * kPi / 180.0;
    context.MoveTo({Rounded(100 + 20 * std::sin(angle)), Rounded(100 - 20 * std::cos(angle))});
    context.LineTo({Rounded(100 + 90 * std::sin(angle)), Rounded(100 - 90 * std::cos(angle))});
  }
}

void DrawShapes(DrawingContext& context) {
  int left = 10;
  context.SelectBrush(Brush{Rgb(204, 255, 102)});
  for (const tiltpole::Pen& pen : {SolidPen(1, Rgb(255, 0, 0)), SolidPen(2, Rgb(0, 153, 255)),
                                   SolidPen(3, Rgb(0, 255, 0)), NullPen()}) {
    context.SelectPen(pen);
    context.DrawRectangle({left, 10, left + 40, 50});
    context.DrawRectangle({left, 60, left + 41, 95});
    context.DrawEllipse({left, 110, left + 40, 150});
    context.DrawEllipse({left, 160, left + 41, 195});
    const Point kite[] = {{left, 230}, {left + 20, 205}, {left + 40, 230}, {left + 20, 280}};
    context.DrawPolygon(kite, 4);
    context.FillRectangle({left + 5, 290, left + 35, 299}, Brush{Rgb(102, 255, 255)});
    left += 50;
  }
}

std::vector<TextBox> CompassTexts(Size size) {
  const int cx = size.width / 2;
  const int cy = size.height / 2;
  const int diameter = (size.width > size.height ? size.height : size.width) - 5;
  const double radius = Rounded(diameter / 2.0 - diameter / 16.0) - 35;
  std::vector<TextBox> texts;
  for (int degrees = 0; degrees < 360; degrees += 30) {
    const double angle = degrees * kPi / 180.0;
    const int x = Rounded(cx + radius * std::sin(angle));
    const int y = Rounded(cy - radius * std::cos(angle));
    texts.push_back({{x - 17, y - 17, x + 17, y + 1}, kScaleText});
  }
  return texts;
}

std::vector<TextBox> GaugeTexts(Size size) {
  std::vector<TextBox> texts;
  for (int i = 3; i < 18; i += 3) {
    const int x = 20 + 10 + 17;
    const int y = Rounded(size.height - size.height / 18.0 * i) + 8;
    texts.push_back({{x - 17, y - 17, x + 17, y + 1}, kScaleText});
  }
  return texts;
}

std::vector<TextBox> PlotTexts(Size size) {
  const int x = 20;
  const int y = size.height - 20;
  return {{{x - 3, y - 68, x + 13, y - 54}, kPlotText},
          {{x + 55, y - 8, x + 71, y + 6}, kPlotText}};
}

void SaveCompass(const std::string& name, Size size, double heading) {
  tiltpole::CGraphCompass compass;
  scenes::Show(compass, size);
  compass.SetValue(heading);
  for (const int bearing : {0, 45, 200}) compass.SetFix(bearing);
  Save(name, Painted(compass), CompassTexts(size));
}

template <typename Gauge>
void SaveGauge(const std::string& name, Size size, double value, int fix) {
  Gauge gauge;
  scenes::Show(gauge, size);
  gauge.SetValue(value);
  gauge.SetFix(fix);
  Save(name, Painted(gauge), GaugeTexts(size));
}

template <typename Plot>
void SavePlot(const std::string& name, Size size) {
  Plot plot;
  constexpr std::uint32_t kVisibleChild = 0x50000000;
  plot.Create(nullptr, nullptr, kVisibleChild, {0, 0, size.width + 6, size.height + 6},
              scenes::Parent(), 2);
  for (int degrees = 0; degrees < 360; degrees += 7) {
    const int x = Rounded(1000 + 500 * std::cos(degrees * kPi / 180.0));
    const int v = Rounded(2000 + 400 * std::sin(degrees * kPi / 180.0));
    plot.AddTrackPoint(x, v, v);
  }
  plot.AddCenterPoint(1000, 2000, 2000);
  plot.ZoomAll();
  Save(name, Painted(plot), PlotTexts(size));
}

}  // namespace

int main(int argc, char** argv) {
  const scenes::Session session(argc, argv);
  if (argc != 2) {
    std::fputs("usage: platform_scenes FOLDER\n", stderr);
    return 2;
  }
  folder = argv[1];
  for (const int width : {1, 2, 3}) {
    Save("lines_" + std::to_string(width),
         Drawn({200, 200}, [width](DrawingContext& context) { DrawStar(context, width); }));
  }
  Save("shapes", Drawn({210, 300}, DrawShapes));
  SaveCompass("compass_north", {260, 240}, 0.0);
  SaveCompass("compass_east", {300, 300}, 90.0);
  SaveCompass("compass_southwest", {301, 280}, 217.5);
  // So small that the labels run into each other.
  SaveCompass("compass_dialog", {205, 155}, 312.0);
  SaveGauge<tiltpole::CGraphIncline_Left>("gauge_left", {100, 180}, 37.0, 90);
  SaveGauge<tiltpole::CGraphIncline_Right>("gauge_right", {121, 255}, 323.0, 270);
  SavePlot<tiltpole::CGraphMagnetic_XY>("plot_xy", {200, 100});
  SavePlot<tiltpole::CGraphMagnetic_XZ>("plot_xz", {301, 240});
  return all_saved ? 0 : 1;
}
