#include "tiltpole/controls/CGraphCompass.h"

#include <array>

#include "tiltpole/controls/detail/rounding.h"
#include "tiltpole/platform/text.h"

namespace tiltpole {
namespace {

using detail::SelectedBrush;
using detail::SelectedFont;
using detail::SelectedPen;

constexpr Color kDarkEdge = Rgb(233, 87, 50);
constexpr Pen kMarkPen = SolidPen(3, detail::kFixColor);

void DrawCircles(DrawingContext& context, const detail::CompassGeometry& geometry) {
  context.DrawEllipse(geometry.Circle(geometry.outer));
  context.SelectPen(SolidPen(2, detail::kDialYellow));
  context.DrawEllipse(geometry.Circle(geometry.middle));
  context.SelectPen(SolidPen(2, detail::kDialBlue));
  context.DrawEllipse(geometry.Circle(geometry.inner));
}

void DrawScale(DrawingContext& context, const detail::CompassGeometry& geometry) {
  for (int i = 0; i < 36; ++i) {
    context.MoveTo(geometry.TickStart(i));
    context.LineTo(geometry.TickEnd(i));
    if (!detail::IsMajorTick(i)) continue;
    context.DrawCenteredText(std::to_wstring(10 * i), geometry.LabelBox(i));
  }
}

void DrawEdge(DrawingContext& context, const detail::CompassNeedle& needle, Point side) {
  context.MoveTo(needle.tip);
  context.LineTo(side);
  context.LineTo(needle.tail);
}

}  // namespace

CGraphCompass::CGraphCompass()
    : dial_(
          *this, [this](DrawingContext* face, const Rect& client) { DrawBackground(face, client); },
          [this](DrawingContext* buffer) {
            DrawPointer(buffer, dial_.value);
            DrawFixSign(buffer);
          }),
      light_edge_(SystemButtonFaceColor()) {}

CGraphCompass::~CGraphCompass() = default;

double CGraphCompass::GetValue() const { return dial_.value; }

void CGraphCompass::SetValue(double heading) {
  dial_.value = heading;
  dial_.ShowAtOnce();
  AnnounceValue();
}

Color CGraphCompass::GetMeterBackColor() const { return dial_.meter_back; }

void CGraphCompass::SetMeterBackColor(Color color) {
  dial_.meter_back = color;
  ReconstructControl();
}

void CGraphCompass::SetFix(int bearing) {
  dial_.AddFix(bearing, [this, bearing](DrawingContext* window) {
    const SelectedPen pen(*window, kMarkPen);
    DrawMark(*window, bearing);
  });
}

void CGraphCompass::ClearFix() { dial_.ClearFixes(); }

void CGraphCompass::ReconstructControl() { dial_.Reconstruct(); }

void CGraphCompass::DrawBackground(DrawingContext* context, const Rect& client) {
  if (context == nullptr) return;
  context->FillRectangle(client, {dial_.meter_back});
  geometry_ = detail::CompassGeometry::In(client);
  const SelectedBrush ground(*context, {detail::kDialGround});
  const SelectedPen pen(*context, SolidPen(2, detail::kDialBlue));
  DrawCircles(*context, geometry_);

  context->SelectPen(SolidPen(2, detail::kTickColor));
  const SelectedFont font(*context, detail::ScaleFont());
  detail::SetScaleText(*context);
  DrawScale(*context, geometry_);
}

void CGraphCompass::DrawPointer(DrawingContext* context, double heading) {
  if (context == nullptr) return;
  const detail::CompassNeedle needle = geometry_.Needle(heading);
  const SelectedBrush brush(*context, {detail::kNeedleColor});
  const SelectedPen pen(*context, SolidPen(1, detail::kNeedleColor));
  const std::array<Point, 4> corners = {needle.side_a, needle.tip, needle.side_b, needle.tail};
  context->DrawPolygon(corners.data(), static_cast<int>(corners.size()));

  // Deliberate: the light changes sides at 90 degrees, not where the needle turns downwards or at
  // half a turn, and by the number as it is, so that 450 is lit otherwise than 90.
  const bool light_falls_on_a = heading > 90.0;
  context->SelectPen(SolidPen(2, light_edge_));
  DrawEdge(*context, needle, light_falls_on_a ? needle.side_a : needle.side_b);
  context->SelectPen(SolidPen(1, kDarkEdge));
  DrawEdge(*context, needle, light_falls_on_a ? needle.side_b : needle.side_a);

  context->SelectBrush({Rgb(0, 0, 0)});
  context->DrawEllipse(detail::BoxAround(geometry_.center, 2, 3));
}

void CGraphCompass::DrawFixSign(DrawingContext* context) {
  if (context == nullptr) return;
  const SelectedPen pen(*context, kMarkPen);
  for (const int bearing : dial_.Fixes()) DrawMark(*context, bearing);
}

void CGraphCompass::DrawMark(DrawingContext& context, int bearing) const {
  context.MoveTo(geometry_.MarkStart(bearing));
  context.LineTo(geometry_.MarkEnd(bearing));
}

void CGraphCompass::OnPaint() { dial_.Paint(); }

int CGraphCompass::OnEraseBkgnd(DrawingContext* /*context*/) { return 0; }

void CGraphCompass::PreSubclassWindow() { AddStyle(detail::kLabelStyle); }

// The size of the dialogs that the dial was made for. Its labels stand apart there, but for the
// three at the bottom, 150, 180 and 210, which touch.
Size CGraphCompass::PreferredSize() const { return {205, 205}; }

std::wstring CGraphCompass::AccessibleName() const { return L"Compass"; }

std::wstring CGraphCompass::AccessibleValue() const {
  return detail::FormatFixed(dial_.value, 1) + L" degrees";
}

}  // namespace tiltpole
