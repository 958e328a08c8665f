#pragma once

// The library's modal messages, for a program without windows.

#include <ostream>

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

 private:
  MessageBoxHandler previous_;
};

}  // namespace tiltpole::cli
