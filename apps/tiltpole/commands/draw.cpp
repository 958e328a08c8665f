// tiltpole draw: the controls as pictures, rendered without a screen.

#include <QApplication>
#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <memory>
#include <string>
#include <vector>

#include "apps/session/input_error.h"
#include "apps/session/input_file.h"
#include "apps/session/output_file.h"
#include "apps/session/session_reader.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/commands/option_checks.h"
#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"
#include "tiltpole/controls/MagneticPoint.h"

namespace tiltpole::cli {
namespace {

struct PictureOptions {
  std::vector<int> size;
  std::string output;
};

struct DialOptions {
  PictureOptions picture;
  double value = 0.0;
  std::vector<int> marks;
};

struct PlotOptions {
  PictureOptions picture;
  std::string session;
  std::string set = "horizontal";
  std::string plane = "xy";
  std::vector<std::vector<int>> centers;
};

// Qt without a screen, for as long as the picture is made.
class OffScreen {
 public:
  OffScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    application_ = std::make_unique<QApplication>(count_, arguments_);
  }

 private:
  int count_ = 1;
  char name_[9] = "tiltpole";
  char* arguments_[2] = {name_, nullptr};
  std::unique_ptr<QApplication> application_;
};

// Made in memory first: an image that writes its own file does not tell of a full disk.
void Save(const QImage& image, const PictureOptions& options, Console& console) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  if (!buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG")) {
    throw session::OutputError(options.output + ": cannot be drawn in this size");
  }
  session::OutputFile file(options.output, console.out);
  file.Stream().write(bytes.constData(), bytes.size());
  file.Commit();
}

template <typename Dial>
QImage RenderDial(Dial& dial, int width, int height, const DialOptions& options) {
  dial.resize(width, height);
  for (const int mark : options.marks) dial.SetFix(mark);
  dial.SetValue(options.value);
  return dial.grab().toImage();
}

int DrawCompass(const DialOptions& options, Console& console) {
  const OffScreen screen;
  CGraphCompass compass;
  Save(RenderDial(compass, options.picture.size[0], options.picture.size[1], options),
       options.picture, console);
  return kDone;
}

// The two gauges of a pair, side by side as a host places them.
int DrawGauges(const DialOptions& options, Console& console) {
  const OffScreen screen;
  const int width = options.picture.size[0];
  const int height = options.picture.size[1];
  CGraphIncline_Left left;
  CGraphIncline_Right right;
  QImage both(width, height, QImage::Format_RGB32);
  QPainter painter(&both);
  painter.drawImage(0, 0, RenderDial(left, width / 2, height, options));
  painter.drawImage(width / 2, 0, RenderDial(right, width - width / 2, height, options));
  painter.end();
  Save(both, options.picture, console);
  return kDone;
}

MagneticPoint ReadingOf(const PoseSensorData& sample) {
  return InWholeCounts(sample.MagneticX_A, sample.MagneticY_A, sample.MagneticZ_A);
}

template <typename Plot>
QImage RenderPlot(const PlotOptions& options, Console& console) {
  constexpr std::uint32_t kVisible = 0x10000000;
  Plot plot;
  plot.Create(L"", L"", kVisible, {0, 0, options.picture.size[0], options.picture.size[1]}, nullptr,
              0);
  session::InputFile file(options.session, console.in);
  session::SessionReader reader(file.Stream(), file.Name());
  const auto wanted = session::SampleSetFromName(options.set);
  session::SessionSample sample;
  bool any = false;
  while (reader.Next(sample)) {
    if (sample.set != wanted) continue;
    const MagneticPoint point = ReadingOf(sample.sensors);
    plot.AddTrackPoint(point.x, point.y, point.z);
    any = true;
  }
  if (!any) throw DataError(file.Name() + ": has no rows of the set " + options.set);
  plot.ZoomAll();
  for (const std::vector<int>& center : options.centers) {
    plot.AddCenterPoint(center[0], center[1], center[2]);
  }
  return plot.grab().toImage();
}

int DrawPlot(const PlotOptions& options, Console& console) {
  const OffScreen screen;
  Save(options.plane == "xz" ? RenderPlot<CGraphMagnetic_XZ>(options, console)
                             : RenderPlot<CGraphMagnetic_XY>(options, console),
       options.picture, console);
  return kDone;
}

void AddPictureOptions(CLI::App& command, PictureOptions& picture, int width, int height) {
  picture.size = {width, height};
  command.add_option("-o,--output", picture.output, "PNG file")->required();
  command.add_option("--size", picture.size, "Of the picture, pixels")
      ->expected(2)
      ->check(WholeNumberBetween(1, 10000))
      ->type_name("WIDTH HEIGHT")
      ->capture_default_str();
}

void AddDial(CLI::App& draw, Action& action, const char* name, const char* what, int width,
             int height, int (*run)(const DialOptions&, Console&)) {
  const auto options = std::make_shared<DialOptions>();
  CLI::App& command = *draw.add_subcommand(name, what);
  command.add_option("--value", options->value, "Degrees")
      ->check(NumberBetween(-1e6, 1e6))
      ->capture_default_str();
  command.add_option("--mark", options->marks, "Whole degrees at which a green mark stands");
  AddPictureOptions(command, options->picture, width, height);
  RunsWith(command, action, options, run);
}

void AddPlot(CLI::App& draw, Action& action) {
  const auto options = std::make_shared<PlotOptions>();
  CLI::App& command = *draw.add_subcommand(
      "plot",
      "The readings of magnetometer A during a turn. As every host with a plot, it keeps the view "
      "that fits them in a file beside the program, where it may write one.");
  command.add_option("session", options->session, "Session file")->required();
  command.add_option("--set", options->set, "Which rows")
      ->check(CLI::IsMember({"horizontal", "vertical", "measure"}))
      ->capture_default_str();
  command.add_option("--plane", options->plane, "Which components")
      ->check(CLI::IsMember({"xy", "xz"}))
      ->capture_default_str();
  command
      .add_option("--center", options->centers,
                  "A centre to show as a red cross, counts; once for each of several")
      ->expected(3)
      ->type_name("X Y Z");
  AddPictureOptions(command, options->picture, 400, 400);
  RunsWith(command, action, options, DrawPlot);
}

}  // namespace

void AddDraw(CLI::App& program, Action& action) {
  CLI::App& draw = *program.add_subcommand("draw", "Render a control to a picture.");
  draw.require_subcommand(1);
  AddDial(draw, action, "compass", "The dial, its needle at a heading.", 400, 400, DrawCompass);
  AddDial(draw, action, "gauges", "The pair of inclination gauges.", 240, 400, DrawGauges);
  AddPlot(draw, action);
}

}  // namespace tiltpole::cli
