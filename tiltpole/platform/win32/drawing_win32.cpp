#include "tiltpole/platform/win32/drawing_win32.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tiltpole {
namespace {

COLORREF ToGdi(Color color) { return RGB(color.red, color.green, color.blue); }

POINT ToGdi(Point point) { return {LimitCoordinate(point.x), LimitCoordinate(point.y)}; }

RECT ToGdi(const Rect& box) {
  return {LimitCoordinate(box.left), LimitCoordinate(box.top), LimitCoordinate(box.right),
          LimitCoordinate(box.bottom)};
}

/// The box with its coordinates limited and its edges in the right order.
RECT Ordered(const Rect& box) {
  const RECT limited = ToGdi(box);
  return {std::min(limited.left, limited.right), std::min(limited.top, limited.bottom),
          std::max(limited.left, limited.right), std::max(limited.top, limited.bottom)};
}

bool IsEmpty(const RECT& box) { return box.left >= box.right || box.top >= box.bottom; }

}  // namespace

Color SystemButtonFaceColor() {
  const DWORD color = GetSysColor(COLOR_BTNFACE);
  return Rgb(GetRValue(color), GetGValue(color), GetBValue(color));
}

namespace detail {

std::unique_ptr<Win32Bitmap> MakeScreenBitmap(int width, int height) {
  if (width < 1 || height < 1) width = height = 1;
  // The screen says which colours: a memory device says black and white until it has a bitmap with
  // colours.
  const HDC screen = GetDC(nullptr);
  const HBITMAP handle =
      CreateCompatibleBitmap(screen, LimitCoordinate(width), LimitCoordinate(height));
  const MemoryDevice device(screen);
  ReleaseDC(nullptr, screen);
  if (handle == nullptr) return nullptr;
  auto bitmap = std::make_unique<Win32Bitmap>(handle, GdiObject(handle));
  const HGDIOBJ first = SelectObject(device.handle(), handle);
  PatBlt(device.handle(), 0, 0, LimitCoordinate(width), LimitCoordinate(height), BLACKNESS);
  SelectObject(device.handle(), first);
  return bitmap;
}

Win32Context::Win32Context(HDC device) : device_(device), state_before_(SaveDC(device)) {}

Win32Context::~Win32Context() {
  // What was selected before is selected again, and only then are the objects made here deleted.
  RestoreDC(device_, state_before_);
}

std::unique_ptr<DrawingContext> Win32Context::CreateCompatibleContext() {
  MemoryDevice device(device_);
  if (device.handle() == nullptr) return nullptr;
  return std::make_unique<Win32MemoryContext>(std::move(device));
}

std::unique_ptr<Bitmap> Win32Context::CreateCompatibleBitmap(int width, int height) {
  return MakeScreenBitmap(width, height);
}

Bitmap* Win32Context::SelectBitmap(Bitmap* /*bitmap*/) { return nullptr; }

void Win32Context::Select(GdiObject object, GdiObject& kept) {
  if (object.get() == nullptr) return;
  SelectObject(device_, object.get());
  kept = std::move(object);
}

Pen Win32Context::SelectPen(const Pen& pen) {
  const int style = pen.style == Pen::Style::Null ? PS_NULL : PS_SOLID;
  Select(GdiObject(CreatePen(style, std::clamp(pen.width, 1, kCoordinateLimit), ToGdi(pen.color))),
         pen_object_);
  return std::exchange(pen_, pen);
}

Brush Win32Context::SelectBrush(const Brush& brush) {
  Select(GdiObject(CreateSolidBrush(ToGdi(brush.color))), brush_object_);
  return std::exchange(brush_, brush);
}

Font Win32Context::SelectFont(Font font) {
  if (font.face.empty()) {
    SelectObject(device_, GetStockObject(SYSTEM_FONT));
  } else {
    Select(GdiObject(CreateFontW(LimitCoordinate(font.height), 0, 0, 0,
                                 std::clamp(font.weight, 0, 1000), 0, 0, 0, 0, 0, 0, 0,
                                 static_cast<DWORD>(font.pitch_and_family), font.face.c_str())),
           font_object_);
  }
  return std::exchange(font_, std::move(font));
}

Color Win32Context::SetTextColor(Color color) {
  ::SetTextColor(device_, ToGdi(color));
  return std::exchange(text_color_, color);
}

Color Win32Context::SetBackgroundColor(Color color) {
  SetBkColor(device_, ToGdi(color));
  return std::exchange(background_color_, color);
}

BackgroundMode Win32Context::SetBackgroundMode(BackgroundMode mode) {
  SetBkMode(device_, mode == BackgroundMode::Opaque ? OPAQUE : TRANSPARENT);
  return std::exchange(background_mode_, mode);
}

void Win32Context::MoveTo(Point point) { position_ = point; }

void Win32Context::LineTo(Point point) {
  const POINT from = ToGdi(std::exchange(position_, point));
  const POINT to = ToGdi(point);
  // A wide pen would leave a dot.
  if (from.x == to.x && from.y == to.y) return;
  MoveToEx(device_, from.x, from.y, nullptr);
  ::LineTo(device_, to.x, to.y);
}

void Win32Context::DrawRectangle(const Rect& box) {
  const RECT ordered = Ordered(box);
  if (IsEmpty(ordered)) return;
  Rectangle(device_, ordered.left, ordered.top, ordered.right, ordered.bottom);
}

void Win32Context::DrawEllipse(const Rect& box) {
  const RECT ordered = Ordered(box);
  if (IsEmpty(ordered)) return;
  Ellipse(device_, ordered.left, ordered.top, ordered.right, ordered.bottom);
}

void Win32Context::DrawPolygon(const Point* corners, int count) {
  if (count < 2) return;
  std::vector<POINT> native(static_cast<std::size_t>(count));
  std::transform(corners, corners + count, native.begin(), [](Point p) { return ToGdi(p); });
  Polygon(device_, native.data(), count);
}

void Win32Context::FillRectangle(const Rect& box, const Brush& brush) {
  const RECT limited = ToGdi(box);
  if (IsEmpty(limited)) return;
  const GdiObject object(CreateSolidBrush(ToGdi(brush.color)));
  FillRect(device_, &limited, static_cast<HBRUSH>(object.get()));
}

void Win32Context::DrawCenteredText(const std::wstring& text, const Rect& box) {
  RECT limited = Ordered(box);
  DrawTextW(device_, text.data(), static_cast<int>(text.size()), &limited, DT_CENTER);
}

void Win32Context::DrawTextAt(Point point, TextClip clip, const Rect* clip_box,
                              const std::wstring& text) {
  const POINT corner = ToGdi(point);
  const RECT native_box = clip_box != nullptr ? Ordered(*clip_box) : RECT{};
  ExtTextOutW(device_, corner.x, corner.y, static_cast<UINT>(clip),
              clip_box != nullptr ? &native_box : nullptr, text.data(),
              static_cast<UINT>(text.size()), nullptr);
}

void Win32Context::CopyBlock(const Rect& place, DrawingContext& source, Point source_corner,
                             RasterOperation operation) {
  const RECT to = ToGdi(place);
  if (IsEmpty(to)) return;
  const POINT from = ToGdi(source_corner);
  BitBlt(device_, to.left, to.top, to.right - to.left, to.bottom - to.top,
         static_cast<Win32Context&>(source).device_, from.x, from.y, static_cast<DWORD>(operation));
}

Win32MemoryContext::Win32MemoryContext(MemoryDevice device)
    : MemoryDevice(std::move(device)),
      Win32Context(handle()),
      first_bitmap_(static_cast<HBITMAP>(GetCurrentObject(handle(), OBJ_BITMAP))),
      selected_(&first_bitmap_) {}

Bitmap* Win32MemoryContext::SelectBitmap(Bitmap* bitmap) {
  if (bitmap == nullptr) return selected_;
  SelectObject(handle(), static_cast<Win32Bitmap*>(bitmap)->handle());
  return std::exchange(selected_, bitmap);
}

}  // namespace detail
}  // namespace tiltpole
