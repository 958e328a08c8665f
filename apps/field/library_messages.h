#pragma once

// The library's warnings, kept instead of shown in a box: they come from the thread that
// calibrates, which must not open windows.

#include <string>
#include <vector>

#include "tiltpole/platform/message_box.h"

namespace tiltpole::field {

/// Collects the library's messages, from any thread, for as long as it lives.
class LibraryMessages {
 public:
  LibraryMessages();
  ~LibraryMessages();
  LibraryMessages(const LibraryMessages&) = delete;
  LibraryMessages& operator=(const LibraryMessages&) = delete;

 private:
  MessageBoxHandler previous_;
};

/// What the library said on this thread since this was last called there.
std::vector<std::wstring> TakeLibraryMessages();

}  // namespace tiltpole::field
