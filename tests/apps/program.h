#pragma once

// Runs the command line in process, as a shell would.

#include <sstream>
#include <string>
#include <vector>

#include "apps/tiltpole/command_line.h"

namespace tiltpole_test {

struct ProgramRun {
  int status;
  std::string out;
  std::string err;
};

inline ProgramRun RunProgram(const std::vector<std::string>& arguments,
                             const std::string& standard_input = {}) {
  std::istringstream in(standard_input);
  std::ostringstream out;
  std::ostringstream err;
  tiltpole::cli::Console console{in, out, err};
  const int status = tiltpole::cli::RunCommandLine(arguments, console);
  return {status, out.str(), err.str()};
}

}  // namespace tiltpole_test
