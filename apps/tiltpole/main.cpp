// The program `tiltpole`: what differs between the systems that it runs on.

#include <iostream>
#include <string>
#include <vector>

#include "apps/session/removed_by_signal.h"
#include "apps/tiltpole/command_line.h"

#ifdef _WIN32
// clang-format off
#include <windows.h>
#include <shellapi.h>
// clang-format on
#include <fcntl.h>
#include <io.h>
#else
#include <csignal>

#include <unistd.h>
#endif

namespace {

#ifdef _WIN32
std::string ToUtf8(const wchar_t* text) {
  const int size = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
  std::string result(static_cast<std::size_t>(size > 0 ? size : 1), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text, -1, result.data(), size, nullptr, nullptr);
  result.pop_back();
  return result;
}

// The narrow arguments have lost every sign that the system's code page lacks.
std::vector<std::string> Arguments(int, char**) {
  std::vector<std::string> arguments;
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  for (int i = 1; i < count; ++i) arguments.push_back(ToUtf8(wide[i]));
  LocalFree(wide);
  return arguments;
}

bool ErrorIsTerminal() { return _isatty(_fileno(stderr)) != 0; }

void PrepareStreams() {
  // Files are the same bytes everywhere, also through a pipe.
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
}
#else
std::vector<std::string> Arguments(int count, char** values) {
  return {values + (count > 0 ? 1 : 0), values + count};
}

bool ErrorIsTerminal() { return isatty(STDERR_FILENO) != 0; }

// A file that outgrows the limit of the shell is told like a full disk, and does not end the
// program between an output and its clearing up.
void PrepareStreams() { static_cast<void>(std::signal(SIGXFSZ, SIG_IGN)); }
#endif

}  // namespace

int main(int count, char** values) {
  std::ios::sync_with_stdio(false);
  std::cin.tie(nullptr);
  PrepareStreams();
  tiltpole::session::LetSignalsRemoveFiles();
  tiltpole::cli::Console console{std::cin, std::cout, std::cerr, ErrorIsTerminal()};
  return tiltpole::cli::RunCommandLine(Arguments(count, values), console);
}
