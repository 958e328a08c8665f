#include "tiltpole/platform/qt/wide_pen.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace tiltpole::detail {
namespace {

int Rounded(double value) { return static_cast<int>(std::floor(value + 0.5)); }

/// The pixels of a quarter of an ellipse about its middle, from the right to the bottom, each
/// beside the one before. All are in half pixels, so that middles between two pixels are whole
/// numbers.
std::vector<QPoint> Quarter(int width, int height) {
  std::vector<QPoint> points;
  const double a = width / 2.0;
  const double b = height / 2.0;
  // Steps along the axis on which the ellipse moves by less than a pixel.
  const int first_y = height % 2;
  const int first_x = width % 2;
  for (int y = first_y; y <= height; y += 2) {
    const double slope_limit = b * b / std::hypot(a, b);
    const double half = y / 2.0;
    if (half > slope_limit) break;
    // An ellipse of one row alone has its whole width there.
    const double height_share = b > 0.0 ? half * half / (b * b) : 0.0;
    const double x = a * std::sqrt(std::max(0.0, 1.0 - height_share));
    points.push_back({2 * Rounded(x - first_x / 2.0) + first_x, y});
  }
  const int from = points.empty() ? width : points.back().x() - 2;
  for (int x = from; x >= 0; x -= 2) {
    const double half = x / 2.0;
    const double y = b * std::sqrt(std::max(0.0, 1.0 - half * half / (a * a)));
    points.push_back({x, 2 * Rounded(y - first_y / 2.0) + first_y});
  }
  return points;
}

}  // namespace

void WidePen::FillSpan(int left, int right, int y) {
  left = std::max(left, 0);
  right = std::min(right, image_.width());
  auto* const line = reinterpret_cast<QRgb*>(image_.scanLine(y));
  for (int x = left; x < right; ++x) line[x] = color_;
}

// A pixel belongs to the shape when its middle does; one on the right or bottom edge does not.
void WidePen::FillConvex(const QPoint (&corners)[4]) {
  int top = std::numeric_limits<int>::max();
  int bottom = std::numeric_limits<int>::min();
  for (const QPoint& corner : corners) {
    top = std::min(top, corner.y());
    bottom = std::max(bottom, corner.y());
  }
  top = std::max(top, 0);
  bottom = std::min(bottom, image_.height());
  for (int y = top; y < bottom; ++y) {
    double left = std::numeric_limits<double>::max();
    double right = std::numeric_limits<double>::lowest();
    for (int i = 0; i < 4; ++i) {
      const QPoint& p = corners[i];
      const QPoint& q = corners[(i + 1) % 4];
      if (y < std::min(p.y(), q.y()) || y >= std::max(p.y(), q.y())) continue;
      const double x = p.x() + (y - p.y()) * static_cast<double>(q.x() - p.x()) / (q.y() - p.y());
      left = std::min(left, x);
      right = std::max(right, x);
    }
    FillSpan(static_cast<int>(std::ceil(left)), static_cast<int>(std::ceil(right)), y);
  }
}

void WidePen::DrawSegment(QPoint from, QPoint to) {
  const int dx = to.x() - from.x();
  const int dy = to.y() - from.y();
  const double length = std::hypot(dx, dy);
  const double across_x = width_ * std::abs(dy) / length;
  const double across_y = width_ * std::abs(dx) / length;
  const int less_x = Rounded(across_x / 2.0);
  const int less_y = Rounded(across_y / 2.0);
  const int more_x = Rounded((across_x + 1.0) / 2.0);
  const int more_y = Rounded((across_y + 1.0) / 2.0);
  // Along an axis the wider half lies at the left or top.
  if (dx == 0 || dy == 0) {
    const int left = std::min(from.x(), to.x()) - (dx == 0 ? width_ / 2 : 0);
    const int right = std::max(from.x(), to.x()) + (dx == 0 ? width_ - width_ / 2 : 0);
    const int top = std::min(from.y(), to.y()) - (dy == 0 ? width_ / 2 : 0);
    const int bottom = std::max(from.y(), to.y()) + (dy == 0 ? width_ - width_ / 2 : 0);
    for (int y = std::max(top, 0); y < std::min(bottom, image_.height()); ++y) {
      FillSpan(left, right, y);
    }
    return;
  }
  const bool falling = (dx > 0) == (dy > 0);
  if (falling) {
    FillConvex({{from.x() - less_x, from.y() + less_y},
                {from.x() + more_x, from.y() - more_y},
                {to.x() + more_x, to.y() - more_y},
                {to.x() - less_x, to.y() + less_y}});
  } else {
    FillConvex({{from.x() - less_x, from.y() - less_y},
                {from.x() + more_x, from.y() + more_y},
                {to.x() + more_x, to.y() + more_y},
                {to.x() - less_x, to.y() - less_y}});
  }
}

// The disc of the pen's own width.
void WidePen::DrawEnd(QPoint middle) {
  const double radius = width_ / 2.0;
  const int before = width_ / 2;
  const int first = std::max(0, before - middle.y());
  const int last = std::min(width_, before - middle.y() + image_.height());
  for (int row = first; row < last; ++row) {
    const double y = row + 0.5 - radius;
    const double half = std::sqrt(std::max(0.0, radius * radius - y * y));
    const int left = static_cast<int>(std::ceil(radius - half - 0.5));
    const int right = static_cast<int>(std::floor(radius + half - 0.5)) + 1;
    FillSpan(middle.x() - before + left, middle.x() - before + right, middle.y() - before + row);
  }
}

void WidePen::DrawLine(QPoint from, QPoint to) {
  // A polygon's corner given twice: a segment without a length has no direction to be wide across.
  if (from != to) DrawSegment(from, to);
  DrawEnd(from);
  DrawEnd(to);
}

void WidePen::DrawEllipse(const QRect& box) {
  const std::vector<QPoint> quarter = Quarter(box.width() - 1, box.height() - 1);
  const int twice_middle_x = 2 * box.left() + box.width() - 1;
  const int twice_middle_y = 2 * box.top() + box.height() - 1;
  for (const int sign_x : {1, -1}) {
    for (const int sign_y : {1, -1}) {
      QPoint before;
      for (std::size_t i = 0; i < quarter.size(); ++i) {
        const QPoint point((twice_middle_x + sign_x * quarter[i].x()) / 2,
                           (twice_middle_y + sign_y * quarter[i].y()) / 2);
        if (i > 0) DrawSegment(before, point);
        DrawEnd(point);
        before = point;
      }
    }
  }
}

}  // namespace tiltpole::detail
