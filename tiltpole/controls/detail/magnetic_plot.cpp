#include "tiltpole/controls/detail/magnetic_plot.h"

#include <cmath>
#include <limits>
#include <utility>

#include "tiltpole/controls/detail/plot_axes.h"
#include "tiltpole/controls/detail/plot_view.h"
#include "tiltpole/controls/detail/rounding.h"
#include "tiltpole/controls/detail/view_file.h"

namespace tiltpole::detail {
namespace {

constexpr std::uint32_t kSunkenEdges = 0x20200;  // client edge and static edge
constexpr Color kFieldColor = Rgb(0, 0, 0);
constexpr Color kCenterColor = Rgb(255, 0, 0);
constexpr double kLargestTrustedScale = 1000.0;  // counts per pixel

void DrawCross(DrawingContext& context, Point center) {
  context.MoveTo(Moved(center, -3, 0));
  context.LineTo(Moved(center, 3, 0));
  context.MoveTo(Moved(center, 0, -3));
  context.LineTo(Moved(center, 0, 3));
}

}  // namespace

MagneticPlot::MagneticPlot(ChildWindow& window, const PlotKind& kind)
    : window_(window), kind_(kind), program_folder_(ProgramFolder()), view_(kind.first_view) {
  ConfigRead();
}

void MagneticPlot::Create(std::uint32_t style, const Rect& place, ParentWindow parent,
                          unsigned id) {
  const bool created =
      window_.CreateChild(kind_.window_class, kSunkenEdges, style, place, parent, id);
  client_ = window_.GetClientRect();
  if (created) InvalidateCtrl();
}

void MagneticPlot::AddTrackPoint(const MagneticPoint& point) {
  track_points_.push_back(point);
  if (!DrawAtOnce(point, kind_.track_color)) {
    CountMissed();
    if (missed_ > kind_.missed_limit) {
      missed_ = 0;
      ZoomAll();
    }
  }
  // Deliberate: with a scale that shows next to nothing each new point counts as missed, within the
  // view too, and one outside of it counts twice.
  if (std::fabs(view_.scale) < kSmallestScale || std::fabs(view_.scale) > kLargestTrustedScale) {
    CountMissed();
  }
}

void MagneticPlot::CountMissed() {
  if (missed_ < std::numeric_limits<int>::max()) ++missed_;
}

void MagneticPlot::AddCenterPoint(const MagneticPoint& point) {
  center_points_.push_back(point);
  DrawAtOnce(point, kCenterColor);
}

// Whether the point lies in the view. Only its own cross is drawn, so the cost does not depend on
// the points before it.
bool MagneticPlot::DrawAtOnce(const MagneticPoint& point, Color color) {
  const Point place = Place(point);
  if (!client_.Contains(place)) return false;
  if (points_.Exists()) {
    const bool were_whole = std::exchange(layers_are_whole_, false);
    const SelectedPen pen(*points_.Context(), SolidPen(1, color));
    DrawCross(*points_.Context(), place);
    layers_are_whole_ = were_whole;
  }
  window_.Invalidate(false);
  return true;
}

void MagneticPlot::Clear() {
  track_points_.clear();
  center_points_.clear();
  missed_ = 0;
  InvalidateCtrl();
  window_.Invalidate(true);
}

void MagneticPlot::ZoomAll() {
  const auto fitted = FittedView(track_points_, kind_.vertical, client_);
  if (!fitted) return;
  view_ = *fitted;
  layers_are_whole_ = false;
  ConfigSave();
  InvalidateCtrl();
  window_.Invalidate(true);
}

void MagneticPlot::DrawTrackPoints(DrawingContext* context) const {
  if (context == nullptr) return;
  const SelectedPen pen(*context, SolidPen(1, kind_.track_color));
  DrawPoints(*context, track_points_);
}

void MagneticPlot::DrawCenterPoints(DrawingContext* context) const {
  if (context == nullptr) return;
  const SelectedPen pen(*context, SolidPen(1, kCenterColor));
  DrawPoints(*context, center_points_);
}

void MagneticPlot::DrawPoints(DrawingContext& context,
                              const std::vector<MagneticPoint>& points) const {
  for (const MagneticPoint& point : points) DrawCross(context, Place(point));
}

void MagneticPlot::InvalidateCtrl() {
  {
    const TakenContext<ChildWindow> window_context(window_);
    PrepareLayers(window_context.get());
  }
  DrawLayers();
}

// Deliberate: on one screen the layers keep the size that they were created with, also when the
// window has grown since.
void MagneticPlot::PrepareLayers(DrawingContext* window_context) {
  layers_are_whole_ = false;
  client_ = window_.GetClientRect();
  if (window_context == nullptr) return;
  face_.CreateOnce(*window_context, client_);
  points_.CreateOnce(*window_context, client_);
}

void MagneticPlot::DrawLayers() {
  for (const Layer* const layer : {&face_, &points_}) {
    if (!layer->Exists()) continue;
    layer->Context()->SetBackgroundColor(kFieldColor);
    layer->Context()->FillRectangle(client_, {kFieldColor});
  }
  if (face_.Exists()) DrawAxes(*face_.Context(), client_, kind_.vertical_label);
  DrawTrackPoints(points_.Context());
  DrawCenterPoints(points_.Context());
  layers_are_whole_ = true;
}

Point MagneticPlot::Place(const MagneticPoint& point) const {
  return ClientPoint(view_, client_, point.x, point.*kind_.vertical);
}

void MagneticPlot::WorldToClient(int world_x, int world_v, int& client_x, int& client_y) const {
  const Point place = ClientPoint(view_, client_, world_x, world_v);
  client_x = place.x;
  client_y = place.y;
}

// Deliberate: the pixel's x is what the result for the world's x holds on entry.
void MagneticPlot::ClientToWorld(int client_y, int& world_x, int& world_v) const {
  const Point world = WorldPoint(view_, client_, {world_x, client_y});
  world_x = world.x;
  world_v = world.y;
}

int MagneticPlot::ConfigSave() const {
  return SaveView(kind_, ViewFilePath(kind_, program_folder_), view_);
}

int MagneticPlot::ConfigRead() {
  return LoadView(kind_, ViewFilePath(kind_, program_folder_), view_);
}

void MagneticPlot::Paint() {
  const PaintContext<ChildWindow> paint(window_);
  if (!LayersSuit(*paint)) {
    PrepareLayers(&*paint);
    DrawLayers();
  }
  ShowLayersOn(*paint);
}

// Not after the window has come to a screen of another scale, and not where a drawing failed. A
// layer that the system had nothing left for is no matter for a paint.
bool MagneticPlot::LayersSuit(const DrawingContext& window_context) const {
  for (const Layer* const layer : {&face_, &points_}) {
    if (layer->Exists() && !layer->Fits(window_context)) return false;
  }
  return layers_are_whole_;
}

void MagneticPlot::ShowLayersOn(DrawingContext& window_context) const {
  const Rect client = window_.GetClientRect();
  Layer buffer;
  if (!buffer.CreateOnce(window_context, client)) return;
  DrawingContext& picture = *buffer.Context();
  // Where a layer is missing or too small the picture stays as a new one is, black like the field.
  if (face_.Exists()) picture.CopyBlock(client, *face_.Context(), {0, 0}, RasterOperation::Copy);
  if (points_.Exists()) {
    picture.CopyBlock(client, *points_.Context(), {0, 0}, RasterOperation::Or);
  }
  window_context.CopyBlock(client, picture, {0, 0}, RasterOperation::Copy);
}

std::wstring MagneticPlot::CountText() const {
  return std::to_wstring(track_points_.size()) + L" readings";
}

int DistanceOf(Point a, Point b) {
  const double dx = static_cast<double>(std::int64_t{b.x} - a.x);
  const double dy = static_cast<double>(std::int64_t{b.y} - a.y);
  return TruncateSaturated(std::sqrt(dx * dx + dy * dy));
}

}  // namespace tiltpole::detail
