#include "tiltpole/controls/CGraphIncline_Left.h"

namespace tiltpole {

CGraphIncline_Left::CGraphIncline_Left() : gauge_(*this, detail::kLeftGauge) {}

CGraphIncline_Left::~CGraphIncline_Left() = default;

double CGraphIncline_Left::GetValue() const { return gauge_.GetValue(); }

void CGraphIncline_Left::SetValue(double value) {
  if (gauge_.SetValue(value)) AnnounceValue();
}

Color CGraphIncline_Left::GetMeterBackColor() const { return gauge_.GetMeterBackColor(); }

void CGraphIncline_Left::SetMeterBackColor(Color color) { gauge_.SetMeterBackColor(color); }

void CGraphIncline_Left::SetFix(int value) { gauge_.SetFix(value); }

void CGraphIncline_Left::ClearFix() { gauge_.ClearFix(); }

void CGraphIncline_Left::ReconstructControl() { gauge_.ReconstructControl(); }

void CGraphIncline_Left::DrawBackground(DrawingContext* context, const Rect& client) {
  gauge_.DrawBackground(context, client);
}

void CGraphIncline_Left::DrawPointer(DrawingContext* context, double value) {
  gauge_.DrawPointer(context, value);
}

void CGraphIncline_Left::DrawFixSign(DrawingContext* context) { gauge_.DrawFixSign(context); }

void CGraphIncline_Left::OnPaint() { gauge_.Paint(); }

int CGraphIncline_Left::OnEraseBkgnd(DrawingContext* /*context*/) { return 0; }

void CGraphIncline_Left::PreSubclassWindow() { AddStyle(detail::kLabelStyle); }

Size CGraphIncline_Left::PreferredSize() const { return detail::kPreferredGauge; }

std::wstring CGraphIncline_Left::AccessibleName() const { return L"Inclination, 0 to 180 degrees"; }

std::wstring CGraphIncline_Left::AccessibleValue() const { return gauge_.ValueText(); }

}  // namespace tiltpole
