#include "apps/tiltpole/messages.h"

#include <utility>

#include "apps/session/ascii_text.h"

namespace tiltpole::cli {

MessagesToStream::MessagesToStream(std::ostream& err)
    : previous_(SetMessageBoxHandler(
          [this, &err](const std::wstring& text, const std::wstring& title, MessageIcon) {
            shown_.push_back(text);
            err << "tiltpole: " << session::NarrowAscii(title) << ": " << session::NarrowAscii(text)
                << std::endl;
          })) {}

MessagesToStream::~MessagesToStream() { SetMessageBoxHandler(std::move(previous_)); }

}  // namespace tiltpole::cli
