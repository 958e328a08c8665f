#include "apps/tiltpole/messages.h"

#include <string>
#include <utility>

namespace tiltpole::cli {

MessagesToStream::MessagesToStream(std::ostream& err)
    : previous_(SetMessageBoxHandler(
          [&err](const std::wstring& text, const std::wstring& title, MessageIcon) {
            // The library's messages are plain ASCII.
            std::string line;
            for (const wchar_t sign : title + L": " + text) line += static_cast<char>(sign);
            err << "tiltpole: " << line << std::endl;
          })) {}

MessagesToStream::~MessagesToStream() { SetMessageBoxHandler(std::move(previous_)); }

}  // namespace tiltpole::cli
