#include "tiltpole/platform/win32/window_win32.h"

// <commctrl.h> needs the types of <windows.h>.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <cwchar>

#include "tiltpole/platform/memory_failure.h"
#include "tiltpole/platform/win32/drawing_win32.h"
#include "tiltpole/platform/win32/window_contexts.h"

namespace tiltpole {
namespace detail {
namespace {

// Registered once per name; the class outlives every window, and its procedure is the system's own,
// so that nothing dangles when the library is unloaded.
bool RegisterOnce(const wchar_t* name) {
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  if (GetClassInfoExW(instance, name, &description) != 0) return true;
  description = {};
  description.cbSize = sizeof description;
  description.style = CS_HREDRAW | CS_VREDRAW;
  description.lpfnWndProc = DefWindowProcW;
  description.hInstance = instance;
  description.lpszClassName = name;
  return RegisterClassExW(&description) != 0;
}

// As WM_GETTEXT answers: at most `room` characters with the final zero, and how many without it.
LRESULT CopyText(const std::wstring& text, WPARAM room, wchar_t* target) {
  if (room == 0) return 0;
  const std::size_t length = std::min<std::size_t>(text.size(), static_cast<std::size_t>(room) - 1);
  std::wmemcpy(target, text.data(), length);
  target[length] = L'\0';
  return static_cast<LRESULT>(length);
}

}  // namespace

// The window's messages on their way to the system's own procedure for it, out of which no
// exception may come.
struct Win32Window::Messages {
  static LRESULT CALLBACK Handle(HWND window, UINT message, WPARAM first, LPARAM second,
                                 UINT_PTR /*id*/, DWORD_PTR object) {
    auto& self = *reinterpret_cast<Win32Window*>(object);
    switch (message) {
      case WM_PAINT:
        Paint(self);
        return 0;
      case WM_PRINTCLIENT:
        Print(self, reinterpret_cast<HDC>(first));
        return 0;
      case WM_ERASEBKGND:
        return Erase(self, reinterpret_cast<HDC>(first));
      case WM_GETTEXTLENGTH:
        if (const std::wstring text = Text(self); !text.empty()) {
          return static_cast<LRESULT>(text.size());
        }
        break;
      case WM_GETTEXT:
        if (const std::wstring text = Text(self); !text.empty()) {
          return CopyText(text, first, reinterpret_cast<wchar_t*>(second));
        }
        break;
      case WM_NCDESTROY:
        self.owns_window_ = false;
        self.Detach();
        break;
      default:
        break;
    }
    return DefSubclassProc(window, message, first, second);
  }

  static void Paint(Win32Window& self) {
    if (HadMemoryFor([&] { self.OnPaint(); })) return;
    self.EndPaint();
    self.Invalidate(true);
  }

  static void Print(Win32Window& self, HDC device) {
    const Printing printing(self, device);
    HadMemoryFor([&] { self.OnPaint(); });
  }

  static LRESULT Erase(Win32Window& self, HDC device) {
    LRESULT erased = 0;
    HadMemoryFor([&] {
      const auto context = MakeGuestContext(device);
      erased = self.OnEraseBkgnd(context.get());
    });
    return erased;
  }

  // Empty too where there is no memory for it; the system then answers with the window's own text.
  static std::wstring Text(const Win32Window& self) {
    std::wstring text;
    HadMemoryFor([&] { text = self.AccessibleText(); });
    return text;
  }

  // Draws on another device than the window's for as long as it lives.
  struct Printing {
    Printing(Win32Window& window, HDC device) : window_(window) { window_.print_device_ = device; }
    ~Printing() { window_.print_device_ = nullptr; }
    Printing(const Printing&) = delete;
    Printing& operator=(const Printing&) = delete;

   private:
    Win32Window& window_;
  };

  static UINT_PTR Id(const Win32Window& window) { return reinterpret_cast<UINT_PTR>(&window); }
};

Win32Window::Win32Window() = default;

Win32Window::~Win32Window() {
  // The control is gone by now: its window must not ask it for anything any more.
  const HWND own = owns_window_ ? window_ : nullptr;
  Detach();
  if (own != nullptr) DestroyWindow(own);
}

bool Win32Window::Attach(ParentWindow window) {
  if (window_ != nullptr || IsWindow(window) == 0) return false;
  window_ = window;
  PreSubclassWindow();
  if (SetWindowSubclass(window, Messages::Handle, Messages::Id(*this),
                        reinterpret_cast<DWORD_PTR>(this)) == 0) {
    window_ = nullptr;
    return false;
  }
  Invalidate(true);
  return true;
}

bool Win32Window::AttachDialogItem(ParentWindow dialog, int id) {
  return Attach(GetDlgItem(dialog, id));
}

void Win32Window::Detach() {
  if (window_ == nullptr) return;
  paint_context_.reset();
  RemoveWindowSubclass(window_, Messages::Handle, Messages::Id(*this));
  Invalidate(true);
  window_ = nullptr;
  owns_window_ = false;
}

bool Win32Window::CreateOwn(const wchar_t* window_class, std::uint32_t extended_style,
                            std::uint32_t style, const Rect& place, ParentWindow parent,
                            unsigned id) {
  if (window_ != nullptr) return false;
  const HWND window = CreateWindowExW(
      extended_style, window_class, nullptr, style, LimitCoordinate(place.left),
      LimitCoordinate(place.top), LimitCoordinate(place.Width()), LimitCoordinate(place.Height()),
      parent, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), GetModuleHandleW(nullptr),
      nullptr);
  if (window == nullptr) return false;
  if (!Attach(window)) {
    DestroyWindow(window);
    return false;
  }
  owns_window_ = true;
  return true;
}

Rect Win32Window::GetClientRect() const {
  RECT client = {};
  if (window_ != nullptr) ::GetClientRect(window_, &client);
  return {0, 0, static_cast<int>(client.right), static_cast<int>(client.bottom)};
}

DrawingContext* Win32Window::BeginPaint() {
  paint_context_ = print_device_ != nullptr ? MakeGuestContext(static_cast<HDC>(print_device_))
                                            : MakePaintContext(window_);
  return paint_context_.get();
}

void Win32Window::EndPaint() { paint_context_.reset(); }

DrawingContext* Win32Window::TakeContext() {
  return window_ != nullptr ? MakeClientContext(window_).release() : nullptr;
}

void Win32Window::ReleaseContext(DrawingContext* context) {
  const std::unique_ptr<DrawingContext> released(context);
}

void Win32Window::Invalidate(bool erase) {
  if (window_ != nullptr) InvalidateRect(window_, nullptr, erase ? TRUE : FALSE);
}

void Win32Window::AddStyle(std::uint32_t bits) {
  if (window_ == nullptr) return;
  SetWindowLongW(window_, GWL_STYLE, static_cast<LONG>(GetStyle() | bits));
}

std::uint32_t Win32Window::GetStyle() const {
  return window_ != nullptr ? static_cast<std::uint32_t>(GetWindowLongW(window_, GWL_STYLE)) : 0;
}

void Win32Window::AnnounceValue() {
  if (window_ != nullptr) {
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window_, OBJID_CLIENT, CHILDID_SELF);
  }
}

int Win32Window::EraseNatively(DrawingContext* context) {
  const HDC device = static_cast<Win32Context*>(context)->device();
  return static_cast<int>(
      DefSubclassProc(window_, WM_ERASEBKGND, reinterpret_cast<WPARAM>(device), 0));
}

std::wstring Win32Window::AccessibleText() const {
  const std::wstring name = AccessibleName();
  const std::wstring value = AccessibleValue();
  return name.empty() || value.empty() ? name + value : name + L": " + value;
}

}  // namespace detail

bool StaticWindow::CreateStatic(const Rect& place, ParentWindow parent, unsigned id) {
  return CreateOwn(L"STATIC", 0, WS_CHILD | WS_VISIBLE, place, parent, id);
}

int StaticWindow::OnEraseBkgnd(DrawingContext* context) { return EraseNatively(context); }

int ChildWindow::OnEraseBkgnd(DrawingContext* /*context*/) { return 0; }

bool ChildWindow::CreateChild(const wchar_t* window_class, std::uint32_t extended_style,
                              std::uint32_t style, const Rect& place, ParentWindow parent,
                              unsigned id) {
  return detail::RegisterOnce(window_class) &&
         CreateOwn(window_class, extended_style, style, place, parent, id);
}

}  // namespace tiltpole
