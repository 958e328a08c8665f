#pragma once

// Catches the library's modal messages for as long as it lives, so that a test can compare texts,
// icons and their order.

#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "tiltpole/platform/message_box.h"

namespace tiltpole_test {

struct ShownMessage {
  std::wstring text;
  std::wstring title;
  tiltpole::MessageIcon icon;

  friend bool operator==(const ShownMessage& a, const ShownMessage& b) {
    return a.text == b.text && a.title == b.title && a.icon == b.icon;
  }
  friend std::ostream& operator<<(std::ostream& out, const ShownMessage& message) {
    return out << std::string(message.text.begin(), message.text.end()) << " ["
               << std::string(message.title.begin(), message.title.end()) << ", "
               << (message.icon == tiltpole::MessageIcon::Stop ? "stop" : "exclamation") << "]";
  }
};

inline ShownMessage StopMessage(std::wstring text) {
  return {std::move(text), L"Warning", tiltpole::MessageIcon::Stop};
}

inline ShownMessage ExclamationMessage(std::wstring text) {
  return {std::move(text), L"Warning", tiltpole::MessageIcon::Exclamation};
}

class MessageCapture {
 public:
  MessageCapture()
      : previous_(tiltpole::SetMessageBoxHandler([this](const std::wstring& text,
                                                        const std::wstring& title,
                                                        tiltpole::MessageIcon icon) {
          shown.push_back({text, title, icon});
        })) {}
  ~MessageCapture() { tiltpole::SetMessageBoxHandler(std::move(previous_)); }
  MessageCapture(const MessageCapture&) = delete;
  MessageCapture& operator=(const MessageCapture&) = delete;

  std::vector<ShownMessage> shown;

 private:
  tiltpole::MessageBoxHandler previous_;
};

}  // namespace tiltpole_test
