// The box that comes up when a host has set no handler: a real one, read and closed by a second
// thread in the operator's place.

#include <chrono>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

#include "tiltpole/platform/message_box.h"

namespace {

class BoxReader {
 public:
  explicit BoxReader(const wchar_t* title) : operator_([this, title] { Read(title); }) {}
  ~BoxReader() {
    if (operator_.joinable()) operator_.join();
  }
  BoxReader(const BoxReader&) = delete;
  BoxReader& operator=(const BoxReader&) = delete;

  void Finish() { operator_.join(); }

  std::wstring text;
  HICON icon = nullptr;
  HWND owner = nullptr;

 private:
  static std::wstring TextOf(HWND window) {
    wchar_t buffer[200] = L"";
    SendMessageW(window, WM_GETTEXT, 200, reinterpret_cast<LPARAM>(buffer));
    return buffer;
  }

  void Read(const wchar_t* title) {
    HWND box = nullptr;
    for (int i = 0; i < 1000 && box == nullptr; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      box = FindWindowW(L"#32770", title);
    }
    if (box == nullptr) return;
    owner = GetWindow(box, GW_OWNER);
    for (HWND part = GetWindow(box, GW_CHILD); part != nullptr;
         part = GetWindow(part, GW_HWNDNEXT)) {
      if (const auto shown = SendMessageW(part, STM_GETICON, 0, 0); shown != 0) {
        icon = reinterpret_cast<HICON>(shown);
      } else if (const std::wstring label = TextOf(part); label.size() > text.size()) {
        text = label;
      }
    }
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  }

  std::thread operator_;
};

TEST(Win32Messages, ComeUpInAModalBoxWithoutAnOwner) {
  BoxReader reader(L"Warning of the test");
  tiltpole::detail::ShowMessageBox(L"The turn has holes", L"Warning of the test",
                                   tiltpole::MessageIcon::Stop);
  reader.Finish();
  EXPECT_EQ(reader.text, L"The turn has holes");
  EXPECT_EQ(reader.icon, LoadIconA(nullptr, IDI_HAND));
  EXPECT_EQ(reader.owner, nullptr);
}

TEST(Win32Messages, OfAFailedComputationShowAnExclamationMark) {
  BoxReader reader(L"Second warning of the test");
  tiltpole::detail::ShowMessageBox(L"No circle fits", L"Second warning of the test",
                                   tiltpole::MessageIcon::Exclamation);
  reader.Finish();
  EXPECT_EQ(reader.text, L"No circle fits");
  EXPECT_EQ(reader.icon, LoadIconA(nullptr, IDI_EXCLAMATION));
}

TEST(Win32Messages, GoToTheHostsHandlerOnceItHasSetOne) {
  std::wstring seen;
  tiltpole::SetMessageBoxHandler(
      [&](const std::wstring& text, const std::wstring&, tiltpole::MessageIcon) { seen = text; });
  tiltpole::detail::ShowMessageBox(L"To the host", L"Warning", tiltpole::MessageIcon::Stop);
  tiltpole::SetMessageBoxHandler(nullptr);
  EXPECT_EQ(seen, L"To the host");
}

}  // namespace
