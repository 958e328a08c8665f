// Any sequence of calls of the five controls, upon windows that write down what is drawn: nothing
// is misused, and everything taken is given back.

#include "fuzz/bytes.h"
#include "fuzz/require.h"
#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"
#include "tiltpole/platform/recording/recorder.h"

namespace {

using tiltpole::Point;
using tiltpole::Recorder;
using tiltpole::RecordingContext;
using tiltpole::Rect;
using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;

constexpr int kSteps = 100;

// Mostly a window as there are on screens.
tiltpole::Size AnySize(Bytes& bytes) {
  const bool usual = bytes.Byte() % 4 != 1;
  const int width = usual ? bytes.Byte() * 4 : bytes.AnyInt();
  const int height = usual ? bytes.Byte() * 4 : bytes.AnyInt();
  return {width, height};
}

Rect AnyRect(Bytes& bytes) {
  const tiltpole::Size size = AnySize(bytes);
  if (bytes.Byte() % 4 != 1) return {0, 0, size.width, size.height};
  return {bytes.AnyInt(), bytes.AnyInt(), bytes.AnyInt(), bytes.AnyInt()};
}

// What can go wrong around any control.
template <class Control>
void Disturb(Bytes& bytes, Control& control) {
  const std::uint8_t what = bytes.Byte();
  control.gives_contexts = what % 8 != 1;
  Recorder::Instance().has_resources = what % 16 != 2;
}

template <class Dial>
void DrawDial(Bytes& bytes, Dial& dial) {
  RecordingContext context;
  RecordingContext* const given = bytes.Byte() % 8 == 1 ? nullptr : &context;
  if (bytes.Flag()) dial.DrawBackground(given, AnyRect(bytes));
  dial.DrawPointer(given, bytes.AnyDouble());
  dial.DrawFixSign(given);
}

template <class Dial>
void PlayDial(Bytes& bytes) {
  Dial dial;
  if (bytes.Byte() % 8 != 1) dial.Attach(AnySize(bytes));
  for (int step = 0; step < kSteps && !bytes.Empty(); ++step) {
    switch (bytes.Byte() % 10) {
      case 0:
        dial.SetValue(bytes.AnyDouble());
        break;
      case 1:
        dial.SetFix(bytes.AnyInt());
        break;
      case 2:
        dial.ClearFix();
        break;
      case 3:
        dial.ReconstructControl();
        break;
      case 4:
        dial.Resize(AnySize(bytes));
        break;
      case 5:
        dial.SetMeterBackColor(tiltpole::Rgb(bytes.Byte(), bytes.Byte(), bytes.Byte()));
        break;
      case 6:
        DrawDial(bytes, dial);
        break;
      case 7:
        Disturb(bytes, dial);
        break;
      case 8:
        static_cast<void>(dial.AccessibleValue());
        break;
      default:
        dial.PaintIfInvalid();
    }
  }
}

template <class Plot>
void StepPlot(Bytes& bytes, Plot& plot) {
  RecordingContext context;
  int x = bytes.AnyInt();
  int v = bytes.AnyInt();
  switch (bytes.Byte() % 14) {
    case 0:
    case 1:
    case 2:
    case 3:
      return plot.AddTrackPoint(x, v, v);
    case 4:
      return plot.AddCenterPoint(x, v, v);
    case 5:
      return bytes.Byte() % 4 == 1 ? plot.Clear() : plot.InvalidateCtrl();
    case 6:
      return plot.ZoomAll();
    case 7:
      return plot.Resize(AnySize(bytes));
    case 8:
      return Disturb(bytes, plot);
    case 9:
      plot.DrawTrackPoints(bytes.Flag() ? nullptr : &context);
      return plot.DrawCenterPoints(bytes.Flag() ? nullptr : &context);
    case 10:
      plot.WorldToClient(x, v, x, v);
      plot.ClientToWorld(x, v, x, v);
      Require(plot.GetDistance(Point{x, v}, Point{bytes.AnyInt(), bytes.AnyInt()}) >= 0,
              "no distance is negative");
      return;
    case 11:
      plot.ConfigSave();
      plot.ConfigRead();
      return;
    case 12:
      static_cast<void>(plot.AccessibleValue());
      plot.Create(nullptr, nullptr, 0, AnyRect(bytes), nullptr, bytes.Byte());
      return;
    default:
      plot.PaintIfInvalid();
  }
}

template <class Plot>
void PlayPlot(Bytes& bytes) {
  Plot plot;
  plot.can_be_created = bytes.Byte() % 8 != 1;
  plot.Create(nullptr, nullptr, 0, AnyRect(bytes), nullptr, 0);
  for (int step = 0; step < kSteps && !bytes.Empty(); ++step) StepPlot(bytes, plot);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Recorder& recorder = Recorder::Instance();
  recorder.Reset();
  recorder.keeps_lines = false;
  recorder.has_resources = true;
  Bytes bytes(data, size);
  switch (bytes.Byte() % 5) {
    case 0:
      PlayDial<tiltpole::CGraphCompass>(bytes);
      break;
    case 1:
      PlayDial<tiltpole::CGraphIncline_Left>(bytes);
      break;
    case 2:
      PlayDial<tiltpole::CGraphIncline_Right>(bytes);
      break;
    case 3:
      PlayPlot<tiltpole::CGraphMagnetic_XY>(bytes);
      break;
    default:
      PlayPlot<tiltpole::CGraphMagnetic_XZ>(bytes);
  }
  Require(recorder.misuses.empty(), "no drawing call is misused");
  Require(recorder.living_contexts == 0 && recorder.living_bitmaps == 0, "nothing is left over");
  Require(recorder.taken_contexts == 0, "every context taken was released");
  return 0;
}
