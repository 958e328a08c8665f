#include "tiltpole/controls/detail/gauge_geometry.h"

#include "tiltpole/controls/detail/kept_dial.h"
#include "tiltpole/controls/detail/rounding.h"

namespace tiltpole::detail {

GaugeGeometry GaugeGeometry::In(const Rect& client) {
  const Rect middle = GrownRect(client, -5, 0, -5, 0);
  return {client, middle, GrownRect(middle, -15, 0, -15, 0)};
}

int GaugeGeometry::TickRow(int index) const {
  const double step = scale.Height() / 18.0;
  return RoundToPixel(scale.bottom - step * index);
}

Rect GaugeGeometry::LabelBox(int row) const {
  const Point scale_edge = {scale.left, row};
  return BoxAround(Moved(scale_edge, 10 + kLabelReach, kLabelReach / 2), kLabelReach);
}

int GaugeGeometry::ValueRow(const GaugeRange& range, double value) const {
  const double height = scale.Height();
  return range.rises ? RoundToPixel(scale.bottom - height * value / 180)
                     : RoundToPixel(scale.top + height * (value - 180) / 180);
}

int GaugeGeometry::MarkRow(const GaugeRange& range, int value) const {
  const std::int64_t height = scale.Height();
  return range.rises
             ? RoundToPixel(scale.bottom - static_cast<double>(height * value) / 180.0)
             : RoundToPixel(scale.top +
                            static_cast<double>(height * (std::int64_t{value} - 180)) / 180.0);
}

}  // namespace tiltpole::detail
