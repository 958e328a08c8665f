#pragma once

// The library's modal messages, for a program without windows.

#include <ostream>
#include <string>
#include <vector>

#include "tiltpole/platform/message_box.h"

namespace tiltpole::cli {

/// Writes the library's messages to a stream, a line each, for as long as it lives.
class MessagesToStream {
 public:
  /// @param err  must outlive this object
  explicit MessagesToStream(std::ostream& err);
  ~MessagesToStream();
  MessagesToStream(const MessagesToStream&) = delete;
  MessagesToStream& operator=(const MessagesToStream&) = delete;

  /// The texts of the messages so far.
  const std::vector<std::wstring>& Shown() const { return shown_; }

 private:
  std::vector<std::wstring> shown_;
  MessageBoxHandler previous_;
};

}  // namespace tiltpole::cli
