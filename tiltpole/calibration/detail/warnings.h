#pragma once

// How the calibration tells the operator that it failed. A failure deep in a fit is followed by
// those of the steps around it, one box each.

#include <string>

#include "tiltpole/platform/message_box.h"

namespace tiltpole::detail {

/// The readings cannot be used at all.
inline void WarnOfInput(const std::wstring& text) {
  ShowMessageBox(text, L"Warning", MessageIcon::Stop);
}

/// The computation failed.
inline void WarnOfFailure(const std::wstring& text) {
  ShowMessageBox(text, L"Warning", MessageIcon::Exclamation);
}

}  // namespace tiltpole::detail
