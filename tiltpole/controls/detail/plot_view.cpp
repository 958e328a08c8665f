#include "tiltpole/controls/detail/plot_view.h"

#include <algorithm>

#include "tiltpole/controls/detail/rounding.h"

namespace tiltpole::detail {
namespace {

// Differences and sums of two ints need one bit more than an int has.
double Difference(int a, int b) { return static_cast<double>(std::int64_t{a} - b); }
double Sum(int a, int b) { return static_cast<double>(std::int64_t{a} + b); }

struct Extent {
  std::int32_t smallest;
  std::int32_t largest;

  void Include(std::int32_t value) {
    smallest = std::min(smallest, value);
    largest = std::max(largest, value);
  }
};

std::int32_t CenteringOrigin(const Extent& extent, int pixels, double scale) {
  return RoundToPixel(Sum(extent.smallest, extent.largest) / 2.0 - pixels * scale / 2.0);
}

}  // namespace

Point ClientPoint(const PlotView& view, const Rect& client, int world_x, int world_v) {
  if (view.scale < kSmallestScale) return {0, 0};
  return {RoundToPixel(client.left + Difference(world_x, view.left_x) / view.scale),
          RoundToPixel(client.bottom - Difference(world_v, view.bottom_v) / view.scale)};
}

Point WorldPoint(const PlotView& view, const Rect& client, Point pixel) {
  return {TruncateSaturated(view.left_x + Difference(pixel.x, client.left) * view.scale),
          TruncateSaturated(view.bottom_v + Difference(client.bottom, pixel.y) * view.scale)};
}

std::optional<PlotView> FittedView(const std::vector<MagneticPoint>& points,
                                   std::int32_t MagneticPoint::*vertical, const Rect& client) {
  if (points.size() < 2) return std::nullopt;
  Extent x = {points.front().x, points.front().x};
  Extent v = {points.front().*vertical, points.front().*vertical};
  for (const MagneticPoint& point : points) {
    x.Include(point.x);
    v.Include(point.*vertical);
  }
  const double scale_x = Difference(x.largest, x.smallest) / client.Width();
  const double scale_v = Difference(v.largest, v.smallest) / client.Height();
  const double scale = (scale_x > scale_v ? scale_x : scale_v) * 1.5;
  return PlotView{CenteringOrigin(x, client.Width(), scale),
                  CenteringOrigin(v, client.Height(), scale), scale};
}

}  // namespace tiltpole::detail
