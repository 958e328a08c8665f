#include "tiltpole/platform/message_box.h"

#include <cstdint>
#include <cstdio>
#include <utility>

#ifdef _WIN32
#include <windows.h>
#endif

namespace tiltpole {
namespace {

MessageBoxHandler& Handler() {
  static MessageBoxHandler handler;
  return handler;
}

#ifdef _WIN32
// A service or a console run by a scheduler has no desktop on which anyone could press a button; a
// modal box would stop it for good.
bool HasVisibleDesktop() {
  USEROBJECTFLAGS flags = {};
  return GetUserObjectInformationW(GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof flags,
                                   nullptr) != 0 &&
         (flags.dwFlags & WSF_VISIBLE) != 0;
}

bool ShowNativeBox(const std::wstring& text, const std::wstring& title, MessageIcon icon) {
  if (!HasVisibleDesktop()) return false;
  const UINT picture = icon == MessageIcon::Stop ? MB_ICONHAND : MB_ICONEXCLAMATION;
  MessageBoxW(nullptr, text.c_str(), title.c_str(), MB_OK | picture);
  return true;
}

detail::FallbackMessageBox fallback_box = ShowNativeBox;
#else
detail::FallbackMessageBox fallback_box = nullptr;
#endif

// The messages are the library's own and plain ASCII; a sign beyond it is shown as a question
// mark rather than by a conversion that depends on the process's locale.
void PrintLine(const std::wstring& text, const std::wstring& title) {
  std::wstring whole = title;
  whole.append(L": ").append(text).append(L"\n");
  std::string line;
  for (const wchar_t sign : whole) {
    line += static_cast<std::uint32_t>(sign) < 0x80U ? static_cast<char>(sign) : '?';
  }
  // Without standard error there is nobody left to tell.
  static_cast<void>(std::fputs(line.c_str(), stderr));
}

}  // namespace

MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler) {
  return std::exchange(Handler(), std::move(handler));
}

namespace detail {

void ShowMessageBox(const std::wstring& text, const std::wstring& title, MessageIcon icon) {
  if (Handler()) {
    Handler()(text, title, icon);
  } else if (fallback_box == nullptr || !fallback_box(text, title, icon)) {
    PrintLine(text, title);
  }
}

void SetFallbackMessageBox(FallbackMessageBox fallback) { fallback_box = fallback; }

}  // namespace detail
}  // namespace tiltpole
