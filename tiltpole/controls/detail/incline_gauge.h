#pragma once

/// @file
/// The writing of both inclination gauges.

#include <string>

#include "tiltpole/controls/detail/gauge_geometry.h"
#include "tiltpole/controls/detail/kept_dial.h"
#include "tiltpole/platform/window.h"

namespace tiltpole::detail {

/// A gauge inside of the control that shows it. The operations mean what those of the control of
/// the same names do.
class InclineGauge {
 public:
  InclineGauge(StaticWindow& window, const GaugeRange& range);

  double GetValue() const { return dial_.value; }
  /// @return whether the value is in the range of the gauge
  bool SetValue(double value);
  Color GetMeterBackColor() const { return dial_.meter_back; }
  void SetMeterBackColor(Color color);
  void SetFix(int value);
  void ClearFix() { dial_.ClearFixes(); }
  void ReconstructControl() { dial_.Reconstruct(); }
  void DrawBackground(DrawingContext* context, const Rect& client);
  void DrawPointer(DrawingContext* context, double value) const;
  void DrawFixSign(DrawingContext* context) const;
  void Paint() { dial_.Paint(); }
  std::wstring ValueText() const;

 private:
  void DrawFrames(DrawingContext& context) const;
  void DrawScale(DrawingContext& context) const;
  void DrawMark(DrawingContext& context, int value) const;

  const GaugeRange range_;
  KeptDial dial_;
  GaugeGeometry geometry_;
};

/// The widest label beside both rows of ticks, and a height that gives every degree a row.
constexpr Size kPreferredGauge = {100, 205};

}  // namespace tiltpole::detail
