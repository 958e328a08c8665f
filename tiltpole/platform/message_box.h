#pragma once

/// @file
/// The modal warning through which calibration and filtering report that they failed.

#include <functional>
#include <string>

#include "tiltpole/export.h"

namespace tiltpole {

/// The picture beside a message's text.
enum class MessageIcon {
  Stop,         ///< the input cannot be used at all
  Exclamation,  ///< the computation failed
};

/// Shows one message and returns when the operator has taken note of it.
using MessageBoxHandler =
    std::function<void(const std::wstring& text, const std::wstring& title, MessageIcon icon)>;

/// Says who shows the library's messages from now on, for the whole process.
///
/// At the start messages go to the windowing system's modal box where the process has one running
/// (on Qt once the first control has been made), else to standard error, a line each. A host that
/// shows warnings its own way, a test, or a program without a window sets a handler of its own.
///
/// **Threads.** Nothing is locked. A host sets the handler while no other thread sets one or runs
/// an operation that may show a message, a calibration or a step of the Kalman filter; for instance
/// before it starts its threads. Where operations fail on several threads at once, each calls it.
///
/// @param[in] handler  called on the thread that runs the failing operation; an empty one brings
///                     back the behaviour at the start. It must not throw, nor call this function:
///                     it would be replaced while it runs.
/// @return the handler that was set before, empty at the start
TILTPOLE_EXPORT MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

namespace detail {

/// Shows a message by the handler in force, and returns when it does.
TILTPOLE_EXPORT void ShowMessageBox(const std::wstring& text, const std::wstring& title,
                                    MessageIcon icon);

/// Shows a message where no handler of the host is set. A windowing system's library puts its own
/// box here; it returns false when it has no way to show one just now.
using FallbackMessageBox = bool (*)(const std::wstring& text, const std::wstring& title,
                                    MessageIcon icon);
TILTPOLE_EXPORT void SetFallbackMessageBox(FallbackMessageBox fallback);

}  // namespace detail
}  // namespace tiltpole
