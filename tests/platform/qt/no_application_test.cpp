// A program that is linked with the controls and has no application running, before it makes one or
// after it has ended: messages go where they go without a windowing system.

#include <string>

#include <gtest/gtest.h>

#include "tiltpole/platform/message_box.h"
#include "tiltpole/platform/qt/message_box_qt.h"

namespace {

TEST(QtMessages, WithoutAnApplicationGoToStandardError) {
  tiltpole::detail::ShowMessagesInQtBoxes();
  ::testing::internal::CaptureStderr();
  tiltpole::detail::ShowMessageBox(L"The turn has holes", L"Warning", tiltpole::MessageIcon::Stop);
  const std::string shown = ::testing::internal::GetCapturedStderr();
  EXPECT_NE(shown.find("The turn has holes"), std::string::npos) << shown;
}

}  // namespace
