#pragma once

// The drawing vocabulary on GDI, whose meaning it has: a thin layer that keeps what is selected, so
// that it can be told and put back, and that frees every object it made.

#include <memory>
#include <string>
#include <utility>

#include <windows.h>

#include "tiltpole/platform/drawing.h"

namespace tiltpole::detail {

/// A GDI object that is deleted when it is no longer used.
class GdiObject {
 public:
  explicit GdiObject(HGDIOBJ object = nullptr) : object_(object) {}
  ~GdiObject() {
    if (object_ != nullptr) DeleteObject(object_);
  }
  GdiObject(GdiObject&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  GdiObject& operator=(GdiObject&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  GdiObject(const GdiObject&) = delete;
  GdiObject& operator=(const GdiObject&) = delete;

  HGDIOBJ get() const { return object_; }

 private:
  HGDIOBJ object_;
};

class Win32Bitmap : public Bitmap {
 public:
  /// @param[in] owned  keeps the bitmap from leaking; empty for one that the system looks after
  explicit Win32Bitmap(HBITMAP handle, GdiObject owned = GdiObject())
      : handle_(handle), owned_(std::move(owned)) {}

  HBITMAP handle() const { return handle_; }

 private:
  HBITMAP handle_;
  GdiObject owned_;
};

/// Draws on a device context that somebody else owns; it leaves it as it was.
class Win32Context : public DrawingContext {
 public:
  explicit Win32Context(HDC device);
  ~Win32Context() override;

  HDC device() const { return device_; }

  std::unique_ptr<DrawingContext> CreateCompatibleContext() override;
  std::unique_ptr<Bitmap> CreateCompatibleBitmap(int width, int height) override;
  Bitmap* SelectBitmap(Bitmap* bitmap) override;
  /// GDI counts device pixels on every screen.
  bool HasScaleOf(const DrawingContext& /*other*/) const override { return true; }
  Pen SelectPen(const Pen& pen) override;
  Brush SelectBrush(const Brush& brush) override;
  Font SelectFont(Font font) override;
  Color SetTextColor(Color color) override;
  Color SetBackgroundColor(Color color) override;
  BackgroundMode SetBackgroundMode(BackgroundMode mode) override;
  void MoveTo(Point point) override;
  void LineTo(Point point) override;
  void DrawRectangle(const Rect& box) override;
  void DrawEllipse(const Rect& box) override;
  void DrawPolygon(const Point* corners, int count) override;
  void FillRectangle(const Rect& box, const Brush& brush) override;
  void DrawCenteredText(const std::wstring& text, const Rect& box) override;
  void DrawTextAt(Point point, TextClip clip, const Rect* clip_box,
                  const std::wstring& text) override;
  void CopyBlock(const Rect& place, DrawingContext& source, Point source_corner,
                 RasterOperation operation) override;

 private:
  /// Selects the object and frees the one that was selected for the same purpose before.
  void Select(GdiObject object, GdiObject& kept);

  HDC device_;
  int state_before_;
  Pen pen_ = SolidPen(1, Rgb(0, 0, 0));
  Brush brush_ = {Rgb(255, 255, 255)};
  Font font_;
  Color text_color_ = Rgb(0, 0, 0);
  Color background_color_ = Rgb(255, 255, 255);
  BackgroundMode background_mode_ = BackgroundMode::Opaque;
  Point position_;
  GdiObject pen_object_;
  GdiObject brush_object_;
  GdiObject font_object_;
};

/// A device context in memory for as long as it lives.
class MemoryDevice {
 public:
  explicit MemoryDevice(HDC like) : handle_(CreateCompatibleDC(like)) {}
  ~MemoryDevice() {
    if (handle_ != nullptr) DeleteDC(handle_);
  }
  MemoryDevice(MemoryDevice&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  MemoryDevice& operator=(MemoryDevice&&) = delete;
  MemoryDevice(const MemoryDevice&) = delete;
  MemoryDevice& operator=(const MemoryDevice&) = delete;

  HDC handle() const { return handle_; }

 private:
  HDC handle_;
};

/// Draws into memory. The device is a base, so that it outlives what the context puts back.
class Win32MemoryContext : private MemoryDevice, public Win32Context {
 public:
  explicit Win32MemoryContext(MemoryDevice device);

  Bitmap* SelectBitmap(Bitmap* bitmap) override;

 private:
  Win32Bitmap first_bitmap_;  ///< the one pixel that every memory device comes with
  Bitmap* selected_;
};

/// A bitmap with the colours of the screen, black all over.
std::unique_ptr<Win32Bitmap> MakeScreenBitmap(int width, int height);

}  // namespace tiltpole::detail
