#pragma once

// The window bases of the recording backend: windows without a screen, which a test moves, paints
// and asks. See platform/window.h for what the control side means.

#include <cstdint>
#include <memory>
#include <string>

#include "tiltpole/platform/drawing.h"
#include "tiltpole/platform/recording/recording_context.h"

namespace tiltpole {

/// The parent's name.
using ParentWindow = const char*;

class RecordingWindow {
 public:
  virtual ~RecordingWindow();
  RecordingWindow(const RecordingWindow&) = delete;
  RecordingWindow& operator=(const RecordingWindow&) = delete;

  virtual void OnPaint();
  virtual int OnEraseBkgnd(DrawingContext* context);
  virtual void PreSubclassWindow();
  virtual Size PreferredSize() const;
  virtual std::wstring AccessibleName() const;
  virtual std::wstring AccessibleValue() const;

  Rect GetClientRect() const;
  DrawingContext* BeginPaint();
  void EndPaint();
  DrawingContext* TakeContext();
  void ReleaseContext(DrawingContext* context);
  void Invalidate(bool erase);
  void AddStyle(std::uint32_t bits);
  std::uint32_t GetStyle() const { return style_; }
  void AnnounceValue() { ++announcements; }

  /// @name For tests
  /// @{
  /// The window gets another size; nothing else happens.
  void Resize(Size client) { client_ = client; }
  /// What the system does when it has nothing else to do: erases and paints what is invalid.
  /// @return whether there was something to paint
  bool PaintIfInvalid();
  bool IsInvalid() const { return invalid_; }
  bool IsEraseDue() const { return erase_due_; }
  /// How often screen readers were told of a change.
  int announcements = 0;
  /// A window that has no drawing context to give just now.
  bool gives_contexts = true;
  /// @}

 protected:
  RecordingWindow();
  void Exist(Size client);
  bool Exists() const { return exists_; }
  std::uint32_t style_ = 0;

 private:
  bool exists_ = false;
  bool invalid_ = false;
  bool erase_due_ = false;
  Size client_;
  std::unique_ptr<RecordingContext> paint_context_;
  std::unique_ptr<RecordingContext> taken_context_;
};

class StaticWindow : public RecordingWindow {
 public:
  /// For tests: a host's dialog item of this size becomes the window.
  void Attach(Size client);
};

class ChildWindow : public RecordingWindow {
 public:
  int OnEraseBkgnd(DrawingContext* context) override;
  bool CreateChild(const wchar_t* window_class, std::uint32_t extended_style, std::uint32_t style,
                   const Rect& place, ParentWindow parent, unsigned id);

  /// For tests: the system refuses to create the window.
  bool can_be_created = true;
};

}  // namespace tiltpole
