#pragma once

// A session kept in memory, for commands that need all of it.

#include <string>
#include <vector>

#include "apps/session/session_sample.h"
#include "apps/tiltpole/console.h"

namespace tiltpole::cli {

struct SessionTable {
  std::string name;
  session::SessionColumns columns;
  std::vector<session::SessionSample> samples;
};

/// Reads the rows of some sets.
SessionTable ReadSession(const std::string& path, const std::vector<session::SampleSet>& sets,
                         Console& console, const std::string& doing);

/// The rows of one set.
std::vector<session::SessionSample> SamplesOf(const SessionTable& table, session::SampleSet set);

}  // namespace tiltpole::cli
