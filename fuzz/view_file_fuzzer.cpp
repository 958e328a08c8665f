// Any bytes as the view file of a plot: read as a plain search in the bytes reads it, and a plot
// draws with whatever view that gives.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "fuzz/bytes.h"
#include "fuzz/require.h"
#include "support/literal_matrix.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"
#include "tiltpole/controls/detail/view_file.h"
#include "tiltpole/platform/recording/recorder.h"
#include "tiltpole/platform/text.h"

namespace {

using tiltpole::CGraphMagnetic_XY;
using tiltpole::CGraphMagnetic_XZ;
using tiltpole::Recorder;
using tiltpole::detail::PlotKind;
using tiltpole::detail::PlotView;
using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;

constexpr std::size_t kLongestViewFile = 999;

bool TakeField(std::string& rest, std::string& field) {
  if (rest.empty()) return false;
  const std::size_t comma = rest.find(',');
  field = rest.substr(0, comma);
  rest = comma == std::string::npos ? std::string() : rest.substr(comma + 1);
  return true;
}

int PlainInt(const std::string& value) {
  const long long number = std::strtoll(value.c_str(), nullptr, 10);
  if (number > 2147483647) return 2147483647;
  if (number < -2147483647 - 1) return -2147483647 - 1;
  return static_cast<int>(number);
}

PlotView PlainView(const std::string& bytes, const std::string& prefix, PlotView view) {
  const std::string text = bytes.substr(0, std::min(kLongestViewFile, bytes.find('\0')));
  const std::size_t found = text.find(prefix);
  if (found == std::string::npos) return view;
  std::string rest = text.substr(found + prefix.size());
  std::string field;
  if (TakeField(rest, field)) view.left_x = PlainInt(field);
  if (TakeField(rest, field)) view.bottom_v = PlainInt(field);
  if (TakeField(rest, field)) view.scale = std::strtod(field.c_str(), nullptr);
  return view;
}

template <class Plot>
void Draw(int x, int v) {
  Plot plot;
  plot.Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
  for (int i = 0; i < 12; ++i) plot.AddTrackPoint(x, v, v);
  plot.AddCenterPoint(v, x, x);
  int client_x = x;
  int client_y = v;
  plot.WorldToClient(x, v, client_x, client_y);
  plot.ClientToWorld(x, v, client_x, client_y);
  plot.PaintIfInvalid();
  Require(plot.ConfigSave() == 1, "a view is saved");
}

template <class Plot>
void PlayAs(const PlotKind& kind, const std::string& bytes, int x, int v) {
  namespace detail = tiltpole::detail;
  const std::wstring path = detail::ViewFilePath(kind, detail::ProgramFolder());
  const auto native = std::filesystem::u8path(detail::NarrowText(path));
  std::ofstream(native, std::ios::binary) << bytes;

  PlotView view = {1, 2, 3.0};
  Require(detail::LoadView(kind, path, view) == 1, "a file of any bytes is read");
  const PlotView plain =
      PlainView(bytes, detail::NarrowText(std::wstring(kind.view_prefix)), {1, 2, 3.0});
  Require(view.left_x == plain.left_x, "the left edge");
  Require(view.bottom_v == plain.bottom_v, "the bottom edge");
#ifndef _WIN32  // whose C library reads hexadecimal numbers and long digits in its own way
  Require(tiltpole_test::SameBits(view.scale, plain.scale), "the scale");
#endif
  Draw<Plot>(x, v);
  std::filesystem::remove(native);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Recorder& recorder = Recorder::Instance();
  recorder.Reset();
  recorder.keeps_lines = false;
  Bytes bytes(data, size);
  const bool is_xy = bytes.Flag();
  const int x = bytes.AnyInt();
  const int v = bytes.AnyInt();
  const std::string content = bytes.Rest();
  if (is_xy) {
    PlayAs<CGraphMagnetic_XY>(tiltpole::detail::kPlotXY, content, x, v);
  } else {
    PlayAs<CGraphMagnetic_XZ>(tiltpole::detail::kPlotXZ, content, x, v);
  }
  Require(recorder.misuses.empty(), "no drawing call is misused");
  Require(recorder.living_contexts == 0 && recorder.living_bitmaps == 0, "nothing is left over");
  return 0;
}
