#include "tiltpole/platform/message_box.h"

#include <string>

#include <gtest/gtest.h>

#include "support/message_capture.h"

namespace {

using tiltpole::MessageIcon;
using tiltpole::detail::SetFallbackMessageBox;
using tiltpole::detail::ShowMessageBox;
using tiltpole_test::MessageCapture;
using tiltpole_test::StopMessage;

// Without a windowing system's box and without a handler, as a program on a console is.
class MessagesOnAConsole : public ::testing::Test {
 protected:
  MessagesOnAConsole() { SetFallbackMessageBox(nullptr); }
  ~MessagesOnAConsole() override { SetFallbackMessageBox(nullptr); }

  std::string PrintedFor(const std::wstring& text, const std::wstring& title) {
    ::testing::internal::CaptureStderr();
    ShowMessageBox(text, title, MessageIcon::Stop);
    return ::testing::internal::GetCapturedStderr();
  }
};

TEST_F(MessagesOnAConsole, AreALineOnStandardErrorAfterTheirTitle) {
  EXPECT_EQ(PrintedFor(L"The turn has holes", L"Warning"), "Warning: The turn has holes\n");
}

TEST_F(MessagesOnAConsole, ShowSignsBeyondAsciiAsQuestionMarksInEveryLocale) {
  EXPECT_EQ(PrintedFor(L"\u00fc\u6e2c.", L"\u007f\u0080"), "\x7f?: ??.\n");
}

TEST_F(MessagesOnAConsole, AreALineAlsoWhereTheWindowingSystemCannotShowABox) {
  SetFallbackMessageBox(
      [](const std::wstring&, const std::wstring&, MessageIcon) { return false; });
  EXPECT_EQ(PrintedFor(L"text", L"title"), "title: text\n");
}

TEST_F(MessagesOnAConsole, AreNotPrintedWhereTheWindowingSystemHasShownABox) {
  SetFallbackMessageBox([](const std::wstring&, const std::wstring&, MessageIcon) { return true; });
  EXPECT_EQ(PrintedFor(L"text", L"title"), "");
}

TEST_F(MessagesOnAConsole, GoToTheHandlerAloneWhenThereIsOne) {
  const MessageCapture capture;
  EXPECT_EQ(PrintedFor(L"text", L"Warning"), "");
  ASSERT_EQ(capture.shown.size(), 1U);
  EXPECT_EQ(capture.shown[0], StopMessage(L"text"));
}

TEST_F(MessagesOnAConsole, ComeBackWhenTheHandlerIsTakenAway) {
  auto previous =
      tiltpole::SetMessageBoxHandler([](const std::wstring&, const std::wstring&, MessageIcon) {});
  EXPECT_FALSE(previous);
  EXPECT_TRUE(tiltpole::SetMessageBoxHandler(nullptr));
  EXPECT_EQ(PrintedFor(L"text", L"title"), "title: text\n");
}

}  // namespace
