#include "apps/field/coverage_ring.h"

#include <QPainter>
#include <QPainterPath>
#include <QtMath>
#include <algorithm>
#include <cmath>

namespace tiltpole::field {
namespace {

constexpr double kRingWidth = 0.12;  // of the diameter; leaves room for what stands in the ring
constexpr double kOverlap = 0.6;     // degrees
const QColor kCovered(0, 90, 32);
const QColor kMissing(255, 255, 255);

QRectF InnerCircle(const QRectF& outer) {
  const double ring = outer.width() * kRingWidth;
  return outer.adjusted(ring, ring, -ring, -ring);
}

QPointF OnCircle(const QRectF& circle, double screen_angle, double share) {
  const double radians = qDegreesToRadians(screen_angle);
  const double radius = share * circle.width() / 2.0;
  return circle.center() + QPointF(std::cos(radians) * radius, -std::sin(radians) * radius);
}

}  // namespace

CoverageRing::CoverageRing(const TurnRecording& turn, QWidget* parent)
    : QWidget(parent), turn_(turn) {}

double CoverageRing::ScreenAngle(double direction) const {
  return turn_.Turn() == SampleSet::Horizontal ? 90.0 - direction : direction;
}

void CoverageRing::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double side = std::min(width(), height()) - 4.0;
  const QRectF outer((width() - side) / 2.0, (height() - side) / 2.0, side, side);
  DrawSectors(painter, outer);
  DrawLabels(painter, outer);
  DrawDirection(painter, outer);
}

void CoverageRing::DrawSectors(QPainter& painter, const QRectF& outer) const {
  const QRectF inner = InnerCircle(outer);
  const SectorSet& covered = turn_.Covered();
  painter.setPen(Qt::NoPen);
  painter.setBrush(kMissing);
  painter.drawEllipse(outer);
  painter.setBrush(kCovered);
  for (std::size_t i = 0; i < kSectors; ++i) {
    if (!covered[i]) continue;
    const double a = ScreenAngle(static_cast<double>(i) * kSectorWidth);
    const double b = ScreenAngle(static_cast<double>(i + 1) * kSectorWidth);
    // A little wider than the sector, so that neighbours show no seam.
    painter.drawPie(outer, static_cast<int>(std::lround(16.0 * std::min(a, b))),
                    static_cast<int>(std::lround(16.0 * (std::fabs(b - a) + kOverlap))));
  }
  painter.setBrush(Qt::white);
  painter.drawEllipse(inner);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Qt::black, 2.0));
  painter.drawEllipse(outer.adjusted(1, 1, -1, -1));
  painter.drawEllipse(inner);
}

void CoverageRing::DrawLabels(QPainter& painter, const QRectF& outer) const {
  painter.setPen(Qt::black);
  QFont font = painter.font();
  font.setBold(true);
  font.setPixelSize(std::max(12, qRound(outer.width() * 0.118)));
  painter.setFont(font);
  painter.drawText(outer, Qt::AlignCenter, tr("%1 %").arg(turn_.CoveredPercent()));
  font.setPixelSize(std::max(11, static_cast<int>(outer.width() * 0.085)));
  painter.setFont(font);
  constexpr double kGap = 3.0;
  const QRectF room = InnerCircle(outer).adjusted(kGap, kGap, -kGap, -kGap);
  const bool compass = turn_.Turn() == SampleSet::Horizontal;
  painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter, compass ? tr("E") : tr("x"));
  painter.drawText(room, Qt::AlignHCenter | Qt::AlignTop, compass ? tr("N") : tr("z"));
  if (!compass) return;
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter, tr("W"));
  painter.drawText(room, Qt::AlignHCenter | Qt::AlignBottom, tr("S"));
}

void CoverageRing::DrawDirection(QPainter& painter, const QRectF& outer) const {
  if (!turn_.LastDirection()) return;
  const double angle = ScreenAngle(*turn_.LastDirection());
  const QPointF corners[] = {OnCircle(outer, angle, 1.0 - 2.0 * kRingWidth),
                             OnCircle(outer, angle - 7.0, 1.0), OnCircle(outer, angle + 7.0, 1.0)};
  painter.setPen(QPen(Qt::white, 2.0));
  painter.setBrush(QColor(200, 0, 0));
  painter.drawPolygon(corners, 3);
}

}  // namespace tiltpole::field
