#pragma once

// Where a command's summary goes.

#include "apps/session/output_file.h"
#include "apps/tiltpole/console.h"

namespace tiltpole::cli {

/// Standard output, unless the rows are there already: then standard error.
inline std::ostream& SummaryStream(const session::OutputFile& output, Console& console) {
  return output.IsStandardOutput() ? console.err : console.out;
}

inline constexpr const char* kSummaryOptionHelp =
    "The summary as JSON. It goes to standard output, or to standard error where the rows are on "
    "standard output";

}  // namespace tiltpole::cli
