#pragma once

/// @file
/// The writing of both scatter plots.

#include <string>
#include <vector>

#include "tiltpole/controls/detail/layer.h"
#include "tiltpole/controls/detail/plot_kind.h"
#include "tiltpole/platform/window.h"

namespace tiltpole::detail {

/// A plot inside of the control that shows it. The operations mean what those of the control of the
/// same names do.
class MagneticPlot {
 public:
  MagneticPlot(ChildWindow& window, const PlotKind& kind);

  void Create(std::uint32_t style, const Rect& place, ParentWindow parent, unsigned id);
  void AddTrackPoint(const MagneticPoint& point);
  void AddCenterPoint(const MagneticPoint& point);
  void Clear();
  void ZoomAll();
  void DrawTrackPoints(DrawingContext* context) const;
  void DrawCenterPoints(DrawingContext* context) const;
  void InvalidateCtrl();
  void WorldToClient(int world_x, int world_v, int& client_x, int& client_y) const;
  void ClientToWorld(int client_y, int& world_x, int& world_v) const;
  int ConfigSave() const;
  int ConfigRead();
  void Paint();
  std::wstring CountText() const;

 private:
  Point Place(const MagneticPoint& point) const;
  void DrawPoints(DrawingContext& context, const std::vector<MagneticPoint>& points) const;
  bool DrawAtOnce(const MagneticPoint& point, Color color);
  void CountMissed();
  void PrepareLayers(DrawingContext* window_context);
  void DrawLayers();
  bool LayersSuit(const DrawingContext& window_context) const;
  void ShowLayersOn(DrawingContext& window_context) const;

  ChildWindow& window_;
  const PlotKind& kind_;
  const std::wstring program_folder_;
  PlotView view_;
  Rect client_;
  int missed_ = 0;
  std::vector<MagneticPoint> track_points_;
  std::vector<MagneticPoint> center_points_;
  Layer face_;
  Layer points_;
  bool layers_are_whole_ = true;  ///< not while, or after, memory ran out in the drawing of them
};

/// The distance of two points, truncated; at most the largest int.
int DistanceOf(Point a, Point b);

}  // namespace tiltpole::detail
