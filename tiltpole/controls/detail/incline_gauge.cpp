#include "tiltpole/controls/detail/incline_gauge.h"

#include "tiltpole/controls/detail/rounding.h"
#include "tiltpole/platform/text.h"

namespace tiltpole::detail {
namespace {

constexpr Pen kMarkPen = SolidPen(3, kFixColor);

void DrawRow(DrawingContext& context, int left, int right, int row) {
  context.MoveTo({left, row});
  context.LineTo({right, row});
}

}  // namespace

InclineGauge::InclineGauge(StaticWindow& window, const GaugeRange& range)
    : range_(range),
      dial_(
          window,
          [this](DrawingContext* face, const Rect& client) { DrawBackground(face, client); },
          [this](DrawingContext* buffer) {
            DrawPointer(buffer, dial_.value);
            DrawFixSign(buffer);
          }) {}

bool InclineGauge::SetValue(double value) {
  // Written so that not-a-number is refused too.
  const bool shown = value >= range_.smallest && value <= range_.largest;
  if (!shown) return false;
  dial_.value = value;
  dial_.ShowAtOnce();
  return true;
}

void InclineGauge::SetMeterBackColor(Color color) {
  dial_.meter_back = color;
  ReconstructControl();
}

void InclineGauge::SetFix(int value) {
  if (value < range_.smallest || value > range_.largest) return;
  dial_.AddFix(value, [this, value](DrawingContext* window) {
    const SelectedPen pen(*window, kMarkPen);
    DrawMark(*window, value);
  });
}

void InclineGauge::DrawBackground(DrawingContext* context, const Rect& client) {
  if (context == nullptr) return;
  context->FillRectangle(client, {dial_.meter_back});
  geometry_ = GaugeGeometry::In(client);
  const SelectedBrush ground(*context, {kDialGround});
  const SelectedPen pen(*context, SolidPen(2, kDialBlue));
  DrawFrames(*context);

  context->SelectPen(SolidPen(2, kTickColor));
  const SelectedFont font(*context, ScaleFont());
  SetScaleText(*context);
  DrawScale(*context);
}

void InclineGauge::DrawFrames(DrawingContext& context) const {
  context.DrawRectangle(geometry_.outer);
  context.SelectPen(SolidPen(2, kDialYellow));
  context.DrawRectangle(geometry_.middle);
  context.SelectPen(SolidPen(2, kDialBlue));
  context.DrawRectangle(geometry_.scale);
}

void InclineGauge::DrawScale(DrawingContext& context) const {
  const Rect& scale = geometry_.scale;
  for (int i = 1; i <= 17; ++i) {
    const bool has_label = i % 3 == 0;
    const int length = has_label ? 10 : 5;
    const int row = geometry_.TickRow(i);
    DrawRow(context, scale.left, SaturatedSum(scale.left, length), row);
    DrawRow(context, SaturatedDifference(scale.right, length), scale.right, row);
    if (!has_label) continue;
    // Deliberate: both gauges carry the angle to the nearer end, 30, 60, 90, 60, 30, not their own
    // degrees, so the right one does not say 210 where it shows 210.
    context.DrawCenteredText(std::to_wstring(GaugeLabel(i)), geometry_.LabelBox(row));
  }
}

void InclineGauge::DrawPointer(DrawingContext* context, double value) const {
  if (context == nullptr) return;
  const SelectedPen pen(*context, SolidPen(2, kNeedleColor));
  DrawRow(*context, geometry_.scale.left, geometry_.scale.right, geometry_.ValueRow(range_, value));
}

void InclineGauge::DrawFixSign(DrawingContext* context) const {
  if (context == nullptr) return;
  const SelectedPen pen(*context, kMarkPen);
  for (const int value : dial_.Fixes()) DrawMark(*context, value);
}

void InclineGauge::DrawMark(DrawingContext& context, int value) const {
  DrawRow(context, geometry_.middle.left, geometry_.scale.left, geometry_.MarkRow(range_, value));
}

std::wstring InclineGauge::ValueText() const { return FormatFixed(dial_.value, 1) + L" degrees"; }

}  // namespace tiltpole::detail
