#pragma once

/// @file
/// The windows of the controls on Qt: real widgets, which a host puts into its layouts.
///
/// A widget keeps the picture of its client area. What a control draws at once goes into that
/// picture, and the part of the screen is updated from it; OnPaint is called only when the control,
/// a change of size or a screen of another scale factor has invalidated the picture. It has as many
/// pixels as the screen.
///
/// A screen reader is told the control's name and value, and the widget of a plot is named after
/// the number of the child, unless the host has set the accessible name, the accessible description
/// or the object name itself.
///
/// As with any widget, a parent deletes its children: a control in a layout is made by new, or
/// lives on the stack and goes before its parent does.

#include <QString>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <string>

#include "tiltpole/controls_export.h"
#include "tiltpole/platform/drawing.h"

namespace tiltpole {

/// How a host names a parent: a widget.
using ParentWindow = QWidget*;

namespace detail {

class QtBitmap;
class QtContext;

/// What both kinds of window have in common on Qt; see tiltpole/platform/window.h for the meaning.
class TILTPOLE_CONTROLS_EXPORT QtWindow : public QWidget {
 public:
  QtWindow();
  ~QtWindow() override;
  QtWindow(const QtWindow&) = delete;
  QtWindow& operator=(const QtWindow&) = delete;

  virtual void OnPaint() = 0;
  virtual int OnEraseBkgnd(DrawingContext* context) = 0;
  virtual void PreSubclassWindow() {}
  virtual Size PreferredSize() const;
  virtual std::wstring AccessibleName() const { return {}; }
  virtual std::wstring AccessibleValue() const { return {}; }

  Rect GetClientRect() const;
  DrawingContext* BeginPaint();
  void EndPaint();
  DrawingContext* TakeContext();
  void ReleaseContext(DrawingContext* context);
  void Invalidate(bool erase);
  void AddStyle(std::uint32_t bits) { style_ |= bits; }
  std::uint32_t GetStyle() const { return style_; }
  void AnnounceValue();

  QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

  /// Draws what stands around the client area.
  virtual void DrawFrame() {}
  /// Whether there is anything to draw on.
  virtual bool Exists() const { return true; }
  /// Pixels between the widget's edge and the client area.
  virtual int FrameWidth() const { return 0; }

 private:
  void PrepareSurface();
  void RepaintSurface();
  void ShowPicture(const QRegion& region);
  void UpdateSoon();

  std::unique_ptr<QtBitmap> surface_;
  std::unique_ptr<QtContext> paint_context_;
  QString told_value_;  ///< what screen readers were last told; a host may have said other things
  std::uint32_t style_ = 0;
  bool subclassed_ = false;
  bool invalid_ = true;
  bool erase_ = true;
};

}  // namespace detail

/// A label in a host's dialog: what the compass and the gauges are.
class TILTPOLE_CONTROLS_EXPORT StaticWindow : public detail::QtWindow {
 public:
  /// Fills the client area with the colour of the widget's window, as a label would.
  int OnEraseBkgnd(DrawingContext* context) override;
};

/// A window of its own class: what the plots are.
///
/// CreateChild gives the widget its parent, place and frame. Until then it shows nothing, and is no
/// window in the sense of the controls, wherever a layout may have put it.
class TILTPOLE_CONTROLS_EXPORT ChildWindow : public detail::QtWindow {
 public:
  /// Erases nothing: such a window has no background.
  /// @return 0
  int OnEraseBkgnd(DrawingContext* context) override;

  /// Makes the window; tiltpole/platform/window.h says what the styles stand for.
  ///
  /// @param[in] window_class  not looked at: widgets have no classes by name
  /// @param[in] extended_style, style  native bits: frame and visibility
  /// @param[in] place   in the parent, frame included [pixels]
  /// @param[in] parent  null: the widget keeps the parent that it has
  /// @param[in] id      becomes the widget's object name
  /// @return false when it was made before
  bool CreateChild(const wchar_t* window_class, std::uint32_t extended_style, std::uint32_t style,
                   const Rect& place, ParentWindow parent, unsigned id);

 protected:
  /// Draws the frame around the kept picture.
  void DrawFrame() override;
  /// Whether CreateChild has made the window.
  bool Exists() const override { return created_; }
  /// Of the sunken frame [pixels]: 0 to 3, by the extended style.
  int FrameWidth() const override { return frame_width_; }

 private:
  bool created_ = false;
  int frame_width_ = 0;
};

}  // namespace tiltpole
