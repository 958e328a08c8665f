#pragma once

// The library's texts and keys, which are plain ASCII, as narrow text.

#include <string>

namespace tiltpole::session {

/// Signs beyond ASCII become question marks.
inline std::string NarrowAscii(const std::wstring& text) {
  std::string result;
  for (const wchar_t sign : text) {
    result += sign > L'\0' && sign < L'\x7f' ? static_cast<char>(sign) : '?';
  }
  return result;
}

}  // namespace tiltpole::session
