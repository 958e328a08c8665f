#pragma once

/// @file
/// The left one of the two inclination gauges.

#include <string>

#include "tiltpole/controls/detail/incline_gauge.h"
#include "tiltpole/platform/window.h"

namespace tiltpole {

/// The left gauge of a pair that shows an angle of a whole turn: 0 to 180 degrees, rising from the
/// bottom edge to the top. A value that grows past 180 passes over to CGraphIncline_Right, at the
/// top; both show 180.
///
/// Both keep their face and update without flicker in the way of CGraphCompass, which also tells
/// when a host must call ReconstructControl. All calls come from the thread of the user interface.
///
/// Where memory runs out, std::bad_alloc leaves an operation: what it had taken from the windowing
/// system is given back, and a later paint shows the whole picture. Nothing else is thrown.
class TILTPOLE_CONTROLS_EXPORT CGraphIncline_Left : public StaticWindow {
 public:
  CGraphIncline_Left();
  ~CGraphIncline_Left() override;

  /// The value shown [degrees]; 0 at the start.
  double GetValue() const;

  /// Shows a value, at once if the window has been painted before, else with the next paint.
  ///
  /// @param[in] value  0 to 180, both included [degrees]. Any other, and not-a-number, is
  ///                   ignored: the value before stays.
  void SetValue(double value);

  /// The colour behind the frames; RGB(102,255,255) at the start.
  Color GetMeterBackColor() const;

  /// Sets the colour behind the frames and has everything drawn anew.
  void SetMeterBackColor(Color color);

  /// Adds a green mark left of the scale and draws it at once; it stays until ClearFix.
  ///
  /// @param[in] value  0 to 180, both included [whole degrees]; any other is ignored, as is one
  ///                   that has its mark already
  void SetFix(int value);

  /// Removes all marks; the next paint shows none. Invalidates the window without erasing it.
  void ClearFix();

  /// Discards the face, so that the next paint draws it with the window's size and the colours of
  /// then. Invalidates the window, erasing it.
  void ReconstructControl();

  /// Draws the face: three frames, 17 pairs of ticks, and the labels 30, 60, 90, 60, 30, which say
  /// the angle to the nearer end of the scale on both gauges.
  ///
  /// @param[in] context  null: nothing happens. Its text colour and background mode are changed;
  ///                     pen, brush and font are put back.
  /// @param[in] client   where to. Value and marks refer to the last face drawn. Where it is less
  ///                     than 40 pixels wide the scale has its sides exchanged.
  void DrawBackground(DrawingContext* context, const Rect& client);

  /// Draws the red line of a value over the last face drawn.
  ///
  /// @param[in] context  null: nothing happens
  /// @param[in] value    [degrees], any double; beyond the range the line lies outside of the
  ///                     scale, and that of not-a-number in row 0. The value of the control stays.
  void DrawPointer(DrawingContext* context, double value);

  /// Draws all marks, in the order in which they were set.
  ///
  /// @param[in] context  null: nothing happens
  void DrawFixSign(DrawingContext* context);

  /// Paints the window: face, value and marks in one copy.
  void OnPaint() override;

  /// Erases nothing, since the paint covers the whole client area.
  /// @return 0
  int OnEraseBkgnd(DrawingContext* context) override;

  /// Adds the style bit 0x4000 to the window, which has a native label shorten its text; where
  /// styles have no meaning it is only kept.
  void PreSubclassWindow() override;

  /// 100 x 205 pixels, for a layout that asks.
  Size PreferredSize() const override;
  /// What a screen reader calls it: the gauge with its range, in English.
  std::wstring AccessibleName() const override;
  /// The value with one digit after the point, in degrees.
  std::wstring AccessibleValue() const override;

 private:
  detail::InclineGauge gauge_;
};

}  // namespace tiltpole
