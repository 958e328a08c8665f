#pragma once

/// @file
/// The two windows that the controls are made of. Which windowing system gives them is chosen when
/// the library is built; a target that links tiltpole::controls has the choice defined.
///
/// A backend defines, in namespace tiltpole:
///
///     using ParentWindow = ...;             // how a host names a parent: QWidget*, HWND
///
///     class StaticWindow { ... };           // a label in a host's dialog: compass and gauges
///     class ChildWindow { ... };            // a window of its own class: the plots
///
/// Neither can be copied. A host makes one with its default constructor, and puts it into its
/// dialog in the manner of its windowing system (see the backend's header). Both offer the
/// following to the control that derives from them.
///
/// Hooks, public and virtual, which the control overrides:
/// - `void OnPaint()`: the window, or a part of it, must be drawn. The control calls BeginPaint,
///   draws all of the client area, and calls EndPaint. It comes from the system's loop, never from
///   within another operation of the window. A std::bad_alloc out of it ends in the window, which
///   has itself painted again.
/// - `int OnEraseBkgnd(DrawingContext* context)`: the background is about to be erased before
///   OnPaint; 0 from the control: nothing was erased, and nothing else erases it. The default of a
///   StaticWindow erases in the system's way; a ChildWindow has no background to erase with.
/// - `void PreSubclassWindow()`: called once, when the window exists (created, or attached to a
///   host's dialog item) and before it first paints. The default does nothing.
/// - `Size PreferredSize() const`: what a layout should give the window if nothing speaks against
///   it [pixels]; the default is 200 x 200.
/// - `std::wstring AccessibleName() const`, `std::wstring AccessibleValue() const`: what a screen
///   reader says of it; asked for when needed. The defaults are empty.
///
/// Services, for the control:
/// - `Rect GetClientRect() const`: the drawable area, always from (0, 0); empty while there is no
///   window.
/// - `DrawingContext* BeginPaint()`, `void EndPaint()`: the context of a paint, which belongs to
///   the window. Only inside of OnPaint; never null there. The window counts as drawn from
///   BeginPaint on: invalidating it after that brings another paint.
/// - `DrawingContext* TakeContext()`, `void ReleaseContext(DrawingContext* context)`: to draw on
///   the window at once, outside of a paint. Null while there is no window to draw on: a
///   StaticWindow that is not attached, a ChildWindow before CreateChild has succeeded. Each
///   context taken is released, null too. What is drawn stays until the next OnPaint.
/// - `void Invalidate(bool erase)`: the whole window is to be painted soon, its background erased
///   before (OnEraseBkgnd) or not. Requests add up: one with erase is not undone by one without.
///   Nothing happens while there is no window.
/// - `void AddStyle(std::uint32_t bits)`, `std::uint32_t GetStyle() const`: the window's native
///   style. Where the windowing system knows no such bits they are only kept.
/// - `void AnnounceValue()`: tells screen readers, if there are any, that AccessibleValue changed.
///
/// A ChildWindow besides:
/// - `bool CreateChild(const wchar_t* window_class, std::uint32_t extended_style,
///   std::uint32_t style, const Rect& place, ParentWindow parent, unsigned id)`: makes the window.
///   The class is registered the first time in the life of the process that its name is used, with
///   redraw on horizontal and vertical changes of size and without cursor, brush and icon. The
///   window has no title. Where styles have no native meaning, the backend does what they stand
///   for: WS_VISIBLE 0x10000000 shows it, WS_EX_CLIENTEDGE 0x200 and WS_EX_STATICEDGE 0x20000 give
///   it a sunken frame of 3 pixels outside of the client area. False when there is no window after
///   the call, or when there was one before.

#include <cstdint>
#include <string>

#include "tiltpole/platform/drawing.h"

#if defined(TILTPOLE_WINDOWING_QT)
#include "tiltpole/platform/qt/window_qt.h"
#elif defined(TILTPOLE_WINDOWING_WIN32)
#include "tiltpole/platform/win32/window_win32.h"
#elif defined(TILTPOLE_WINDOWING_RECORDING)
#include "tiltpole/platform/recording/window_recording.h"
#else
#error "no windowing system: link tiltpole::controls, which says which one it was built for"
#endif

namespace tiltpole::detail {

/// A window's drawing context for as long as it lives; it may have none to give.
template <typename Window>
class TakenContext {
 public:
  explicit TakenContext(Window& window) : window_(window), context_(window.TakeContext()) {}
  ~TakenContext() { window_.ReleaseContext(context_); }
  TakenContext(const TakenContext&) = delete;
  TakenContext& operator=(const TakenContext&) = delete;

  DrawingContext* get() const { return context_; }

 private:
  Window& window_;
  DrawingContext* context_;
};

/// The context of a paint; the paint ends with it, however it ends.
template <typename Window>
class PaintContext {
 public:
  explicit PaintContext(Window& window) : window_(window), context_(*window.BeginPaint()) {}
  ~PaintContext() { window_.EndPaint(); }
  PaintContext(const PaintContext&) = delete;
  PaintContext& operator=(const PaintContext&) = delete;

  DrawingContext& operator*() const { return context_; }

 private:
  Window& window_;
  DrawingContext& context_;
};

}  // namespace tiltpole::detail
