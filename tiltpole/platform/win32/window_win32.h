#pragma once

/// @file
/// The windows of the controls on native Windows: real windows, which a host attaches to the items
/// of its dialogs, or creates.
///
/// A dialog of the host has an item where a control is to be, for example a static text, with the
/// place and the size from the dialog's template. In WM_INITDIALOG the host says
///
///     compass.AttachDialogItem(dialog, IDC_COMPASS);
///
/// and from then on the item is drawn by the control. The object must live as long as it is
/// attached, and be used on the thread of the dialog. When the window is destroyed, the object
/// lets go of it and may be attached again; when the object goes first, an attached window stays
/// what it was before, and a window that the object created is destroyed.
///
/// The text of the window (WM_GETTEXT), from which screen readers tell what stands there, is the
/// control's accessible name and value; a change of value is announced as a change of name.

#include <cstdint>
#include <memory>
#include <string>

#include "tiltpole/controls_export.h"
#include "tiltpole/platform/drawing.h"

// As <windows.h> declares it, which a host need not include for the controls.
struct HWND__;

namespace tiltpole {

/// How a host names a parent: a HWND.
using ParentWindow = HWND__*;

namespace detail {

/// What both kinds of window have in common here; see tiltpole/platform/window.h for the meaning.
class TILTPOLE_CONTROLS_EXPORT Win32Window {
 public:
  Win32Window();
  virtual ~Win32Window();
  Win32Window(const Win32Window&) = delete;
  Win32Window& operator=(const Win32Window&) = delete;

  /// Makes an existing window of this process and thread show the control.
  ///
  /// @return false when the object has a window already, or there is no such window
  bool Attach(ParentWindow window);
  /// The same for the item of a dialog with this id.
  bool AttachDialogItem(ParentWindow dialog, int id);
  /// Lets go of the window, which is from now on what it was before. Without a window: nothing.
  void Detach();
  /// The window that is attached or was created; null without one.
  ParentWindow GetHandle() const { return window_; }

  virtual void OnPaint() = 0;
  virtual int OnEraseBkgnd(DrawingContext* context) = 0;
  virtual void PreSubclassWindow() {}
  virtual Size PreferredSize() const { return {200, 200}; }
  virtual std::wstring AccessibleName() const { return {}; }
  virtual std::wstring AccessibleValue() const { return {}; }

  Rect GetClientRect() const;
  DrawingContext* BeginPaint();
  void EndPaint();
  DrawingContext* TakeContext();
  void ReleaseContext(DrawingContext* context);
  void Invalidate(bool erase);
  void AddStyle(std::uint32_t bits);
  std::uint32_t GetStyle() const;
  void AnnounceValue();

 protected:
  /// Makes a window of its own and attaches to it; it is destroyed with the object.
  bool CreateOwn(const wchar_t* window_class, std::uint32_t extended_style, std::uint32_t style,
                 const Rect& place, ParentWindow parent, unsigned id);
  /// Has the window erased as if nothing had been attached to it.
  int EraseNatively(DrawingContext* context);

 private:
  struct Messages;

  std::wstring AccessibleText() const;

  ParentWindow window_ = nullptr;
  bool owns_window_ = false;
  void* print_device_ = nullptr;  ///< where OnPaint draws instead, while the window is printed
  std::unique_ptr<DrawingContext> paint_context_;
};

}  // namespace detail

/// A label in a host's dialog: what the compass and the gauges are.
class TILTPOLE_CONTROLS_EXPORT StaticWindow : public detail::Win32Window {
 public:
  /// Makes a label of the system and attaches to it, where a host has no dialog template.
  ///
  /// @param[in] place   in the parent's client area [pixels]
  /// @param[in] parent  not null
  /// @return false when the object has a window already, or none could be made
  bool CreateStatic(const Rect& place, ParentWindow parent, unsigned id);

  /// Erases as the system does for a label.
  int OnEraseBkgnd(DrawingContext* context) override;
};

/// A window of its own class: what the plots are. It can be attached to a dialog's item as well.
class TILTPOLE_CONTROLS_EXPORT ChildWindow : public detail::Win32Window {
 public:
  /// Erases nothing: the window's class has no background.
  /// @return 0
  int OnEraseBkgnd(DrawingContext* context) override;

  /// Makes the window, and registers its class where the process has not done so before.
  ///
  /// @param[in] window_class  the class' name
  /// @param[in] extended_style, style  the window's native bits
  /// @param[in] place   in the parent, edges included [pixels]
  /// @param[in] parent  a child needs one
  /// @param[in] id      the child's number in its parent
  /// @return false when the object has a window already, or none could be made
  bool CreateChild(const wchar_t* window_class, std::uint32_t extended_style, std::uint32_t style,
                   const Rect& place, ParentWindow parent, unsigned id);
};

}  // namespace tiltpole
