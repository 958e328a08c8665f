#include "tiltpole/controls/CGraphIncline_Right.h"

namespace tiltpole {

CGraphIncline_Right::CGraphIncline_Right() : gauge_(*this, detail::kRightGauge) {}

CGraphIncline_Right::~CGraphIncline_Right() = default;

double CGraphIncline_Right::GetValue() const { return gauge_.GetValue(); }

void CGraphIncline_Right::SetValue(double value) {
  if (gauge_.SetValue(value)) AnnounceValue();
}

Color CGraphIncline_Right::GetMeterBackColor() const { return gauge_.GetMeterBackColor(); }

void CGraphIncline_Right::SetMeterBackColor(Color color) { gauge_.SetMeterBackColor(color); }

void CGraphIncline_Right::SetFix(int value) { gauge_.SetFix(value); }

void CGraphIncline_Right::ClearFix() { gauge_.ClearFix(); }

void CGraphIncline_Right::ReconstructControl() { gauge_.ReconstructControl(); }

void CGraphIncline_Right::DrawBackground(DrawingContext* context, const Rect& client) {
  gauge_.DrawBackground(context, client);
}

void CGraphIncline_Right::DrawPointer(DrawingContext* context, double value) {
  gauge_.DrawPointer(context, value);
}

void CGraphIncline_Right::DrawFixSign(DrawingContext* context) { gauge_.DrawFixSign(context); }

void CGraphIncline_Right::OnPaint() { gauge_.Paint(); }

int CGraphIncline_Right::OnEraseBkgnd(DrawingContext* /*context*/) { return 0; }

void CGraphIncline_Right::PreSubclassWindow() { AddStyle(detail::kLabelStyle); }

Size CGraphIncline_Right::PreferredSize() const { return detail::kPreferredGauge; }

std::wstring CGraphIncline_Right::AccessibleName() const {
  return L"Inclination, 180 to 360 degrees";
}

std::wstring CGraphIncline_Right::AccessibleValue() const { return gauge_.ValueText(); }

}  // namespace tiltpole
