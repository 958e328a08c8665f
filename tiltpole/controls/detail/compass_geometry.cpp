#include "tiltpole/controls/detail/compass_geometry.h"

#include <cmath>

#include "tiltpole/controls/detail/kept_dial.h"
#include "tiltpole/controls/detail/rounding.h"

namespace tiltpole::detail {
namespace {

double TickAngle(int index) { return (10 * index - 180) * kPi / 180; }

double BearingAngle(int bearing) { return bearing * kPi / 180 - kPi; }

}  // namespace

CompassGeometry CompassGeometry::In(const Rect& client) {
  const int smaller_side = client.Width() > client.Height() ? client.Height() : client.Width();
  CompassGeometry dial;
  dial.center = client.Center();
  dial.size = SaturatedDifference(smaller_side, 5);
  dial.needle_unit = dial.size / 60;
  dial.outer = RoundToPixel(dial.size / 2.0);
  dial.middle = RoundToPixel(dial.size / 2.0 - dial.size / 50.0);
  dial.inner = RoundToPixel(dial.size / 2.0 - dial.size / 16.0);
  return dial;
}

double CompassGeometry::TickLength() const { return std::fabs(size / 30.0); }

Rect CompassGeometry::Circle(int radius) const { return BoxAround(center, radius); }

Point CompassGeometry::At(double radius, double a) const {
  return {RoundToPixel(center.x - radius * std::sin(a)),
          RoundToPixel(center.y + radius * std::cos(a))};
}

Point CompassGeometry::TickStart(int index) const { return At(inner, TickAngle(index)); }

Point CompassGeometry::TickEnd(int index) const {
  const double length = IsMajorTick(index) ? TickLength() : TickLength() / 2;
  return At(inner - length, TickAngle(index));
}

Rect CompassGeometry::LabelBox(int index) const {
  return BoxAround(At(inner - 35.0, TickAngle(index)), kLabelReach);
}

Point CompassGeometry::MarkStart(int bearing) const { return At(middle, BearingAngle(bearing)); }

Point CompassGeometry::MarkEnd(int bearing) const { return At(inner, BearingAngle(bearing)); }

CompassNeedle CompassGeometry::Needle(double heading) const {
  const double t = heading * kPi / 180;
  const int breadth = 18 * needle_unit;
  const double across = breadth * std::cos(t) / 8;
  const double down = breadth * std::sin(t) / 8;
  return {{RoundToPixel(center.x - across), RoundToPixel(center.y - down)},
          {RoundToPixel(center.x + size / 3.0 * std::sin(t)),
           RoundToPixel(center.y - size / 3.0 * std::cos(t))},
          {RoundToPixel(center.x + across), RoundToPixel(center.y + down)},
          {RoundToPixel(center.x - size * std::sin(t) / 6),
           RoundToPixel(center.y + size * std::cos(t) / 6)}};
}

}  // namespace tiltpole::detail
