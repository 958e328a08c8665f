#pragma once

// Sessions for tests of commands.

#include <sstream>
#include <string>
#include <vector>

#include "apps/session/session_reader.h"
#include "apps/session/session_writer.h"
#include "program.h"

namespace tiltpole_test {

constexpr const char* kSessionHeader =
    "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n";

inline std::string Simulated(const std::vector<std::string>& further = {}) {
  std::vector<std::string> arguments = {"simulate"};
  arguments.insert(arguments.end(), further.begin(), further.end());
  return RunProgram(arguments).out;
}

/// The rows of a session that belong to some sets, at most so many of each.
inline std::string Only(const std::string& session,
                        const std::vector<tiltpole::session::SampleSet>& sets, int most) {
  std::istringstream in(session);
  std::ostringstream out;
  tiltpole::session::SessionReader reader(in, "session");
  tiltpole::session::SessionWriter writer(out, reader.Columns());
  tiltpole::session::SessionSample sample;
  int counts[3] = {0, 0, 0};
  while (reader.Next(sample)) {
    for (const auto set : sets) {
      if (sample.set == set && counts[static_cast<int>(set)]++ < most) writer.Write(sample);
    }
  }
  return out.str();
}

}  // namespace tiltpole_test
