#include "tiltpole/platform/program_path.h"

#include <cstddef>

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>

#include "tiltpole/platform/text.h"
#endif

namespace tiltpole::detail {
namespace {

// Longer than any path that a system can open; stops the search for a buffer that suffices.
constexpr std::size_t kLongestPath = std::size_t{1} << 17;

// Both systems cut a name that does not fit its buffer, so a full buffer is tried again, larger.
template <typename Text, typename Fill>
Text WholeName(Fill fill) {
  for (std::size_t size = 260; size <= kLongestPath; size *= 2) {
    Text name(size, 0);
    const auto length = fill(name.data(), name.size());
    if (length <= 0) return {};
    if (static_cast<std::size_t>(length) < size) {
      name.resize(static_cast<std::size_t>(length));
      return name;
    }
  }
  return {};
}

}  // namespace

#ifdef _WIN32

std::wstring ProgramPath() {
  return WholeName<std::wstring>([](wchar_t* name, std::size_t size) {
    return static_cast<std::ptrdiff_t>(GetModuleFileNameW(nullptr, name, static_cast<DWORD>(size)));
  });
}

#else

std::wstring ProgramPath() {
  return WideText(WholeName<std::string>(
      [](char* name, std::size_t size) { return readlink("/proc/self/exe", name, size); }));
}

#endif

}  // namespace tiltpole::detail
