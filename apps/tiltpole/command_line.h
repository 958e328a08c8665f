#pragma once

// The program `tiltpole`, but for its standard streams.

#include <string>
#include <vector>

#include "apps/tiltpole/console.h"

namespace tiltpole::cli {

/// Runs the program.
/// @param arguments  UTF-8, without the program's name
/// @return its exit status, see ExitStatus
int RunCommandLine(const std::vector<std::string>& arguments, Console& console);

}  // namespace tiltpole::cli
