#include "tiltpole/platform/win32/window_contexts.h"

#include <utility>

#include "tiltpole/platform/win32/drawing_win32.h"

namespace tiltpole::detail {
namespace {

class PaintSession {
 public:
  explicit PaintSession(HWND window) : window_(window), device_(::BeginPaint(window, &paint_)) {}
  ~PaintSession() { ::EndPaint(window_, &paint_); }
  PaintSession(const PaintSession&) = delete;
  PaintSession& operator=(const PaintSession&) = delete;

  HDC device() const { return device_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_ = {};
  HDC device_;
};

class ClientSession {
 public:
  explicit ClientSession(HWND window) : window_(window), device_(GetDC(window)) {}
  ~ClientSession() {
    if (device_ != nullptr) ReleaseDC(window_, device_);
  }
  ClientSession(const ClientSession&) = delete;
  ClientSession& operator=(const ClientSession&) = delete;

  HDC device() const { return device_; }

 private:
  HWND window_;
  HDC device_;
};

// The session is a base, so that the device outlives what the context puts back.
template <typename Session>
class SessionContext : private Session, public Win32Context {
 public:
  explicit SessionContext(HWND window) : Session(window), Win32Context(Session::device()) {
    // A label's class lends out the parent's clip region, which would let a drawing run over the
    // neighbours.
    RECT client = {};
    GetClientRect(window, &client);
    IntersectClipRect(Session::device(), 0, 0, client.right, client.bottom);
  }

  using Win32Context::device;
};

}  // namespace

std::unique_ptr<DrawingContext> MakePaintContext(HWND window) {
  return std::make_unique<SessionContext<PaintSession>>(window);
}

std::unique_ptr<DrawingContext> MakeClientContext(HWND window) {
  auto context = std::make_unique<SessionContext<ClientSession>>(window);
  if (context->device() == nullptr) return nullptr;
  return context;
}

std::unique_ptr<DrawingContext> MakeGuestContext(HDC device) {
  return std::make_unique<Win32Context>(device);
}

}  // namespace tiltpole::detail
