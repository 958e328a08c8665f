#pragma once

/// @file
/// A round dial that shows a heading.

#include <string>

#include "tiltpole/controls/detail/compass_geometry.h"
#include "tiltpole/controls/detail/kept_dial.h"
#include "tiltpole/platform/window.h"

namespace tiltpole {

/// A compass: a ring with a scale of degrees, 0 at the top and clockwise, a needle that points at
/// the heading, and short green marks at bearings that the host sets.
///
/// A host puts the control into its dialog (a label of its windowing system becomes the control),
/// and calls SetValue for each new heading. The face is drawn once and kept; an update draws needle
/// and marks over a copy of it off screen and copies the result to the window, so nothing flickers.
/// The cost of an update does not depend on how many came before it.
///
/// The control does not notice that its window's size changed: after that, the host calls
/// ReconstructControl. On a screen of another scale the face is drawn anew by itself.
///
/// The dial's diameter is the smaller side of the client area less 5 pixels. In smaller windows the
/// shapes degenerate; nothing fails. All calls come from the thread of the user interface.
///
/// Where memory runs out, std::bad_alloc leaves an operation: what it had taken from the windowing
/// system is given back, and a later paint shows the whole picture. Nothing else is thrown.
class TILTPOLE_CONTROLS_EXPORT CGraphCompass : public StaticWindow {
 public:
  CGraphCompass();
  ~CGraphCompass() override;

  /// The heading shown [degrees]; 0 at the start.
  double GetValue() const;

  /// Shows a heading, at once if the window has been painted before, else with the next paint.
  ///
  /// @param[in] heading  clockwise from the top [degrees]. It is neither wrapped nor limited: 450
  ///                     points where 90 does. Not-a-number and infinities draw a needle whose
  ///                     corners all lie at the window's corner (0, 0).
  void SetValue(double heading);

  /// The colour around the dial; RGB(102,255,255) at the start.
  Color GetMeterBackColor() const;

  /// Sets the colour around the dial and has everything drawn anew.
  void SetMeterBackColor(Color color);

  /// Adds a green mark and draws it at once; it stays through all repaints until ClearFix.
  ///
  /// @param[in] bearing  clockwise from the top [whole degrees], any int. The same number again
  ///                     changes nothing; -330 and 30 are two marks at one place.
  void SetFix(int bearing);

  /// Removes all marks; the next paint shows none. Invalidates the window without erasing it.
  void ClearFix();

  /// Discards the face, so that the next paint draws it with the window's size and the colours of
  /// then. Invalidates the window, erasing it.
  void ReconstructControl();

  /// Draws the face: the ground, three circles, 36 ticks, 12 labels ("0" to "330").
  ///
  /// @param[in] context  null: nothing happens. Its text colour and background mode are changed;
  ///                     pen, brush and font are put back.
  /// @param[in] client   where to. Needle and marks refer to the last face drawn.
  void DrawBackground(DrawingContext* context, const Rect& client);

  /// Draws the needle over the last face drawn.
  ///
  /// One of the needle's edges is light, two pixels wide, the other dark, one pixel. Up to a
  /// heading of exactly 90 the light one is the edge clockwise of the tip, above 90 the other one.
  ///
  /// @param[in] context  null: nothing happens
  /// @param[in] heading  [degrees], as in SetValue; the value of the control stays
  void DrawPointer(DrawingContext* context, double heading);

  /// Draws all marks, in the order in which they were set.
  ///
  /// @param[in] context  null: nothing happens
  void DrawFixSign(DrawingContext* context);

  /// Paints the window: face, needle and marks in one copy.
  void OnPaint() override;

  /// Erases nothing, since the paint covers the whole client area.
  /// @return 0
  int OnEraseBkgnd(DrawingContext* context) override;

  /// Adds the style bit 0x4000 to the window, which has a native label shorten its text; where
  /// styles have no meaning it is only kept.
  void PreSubclassWindow() override;

  /// 205 x 205 pixels, for a layout that asks.
  Size PreferredSize() const override;
  /// What a screen reader calls it: the compass, in English.
  std::wstring AccessibleName() const override;
  /// The heading with one digit after the point, in degrees.
  std::wstring AccessibleValue() const override;

 private:
  void DrawMark(DrawingContext& context, int bearing) const;

  detail::KeptDial dial_;
  detail::CompassGeometry geometry_;
  Color light_edge_;
};

}  // namespace tiltpole
