// Any bytes as a session file: rows, or a message of one line that says what is wrong; and rows
// written again read as the same.

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "apps/session/input_error.h"
#include "apps/session/session_reader.h"
#include "apps/session/session_writer.h"
#include "fuzz/bytes.h"
#include "fuzz/require.h"

namespace {

using tiltpole::xyhCoordinate;
using tiltpole::session::InputError;
using tiltpole::session::SessionColumns;
using tiltpole::session::SessionReader;
using tiltpole::session::SessionSample;
using tiltpole::session::SessionWriter;
using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;

struct Session {
  SessionColumns columns;
  std::vector<SessionSample> samples;
};

Session Read(const std::string& bytes) {
  std::istringstream in(bytes);
  SessionReader reader(in, "session.csv");
  Session session;
  session.columns = reader.Columns();
  SessionSample sample;
  while (reader.Next(sample)) session.samples.push_back(sample);
  return session;
}

bool Same(const std::optional<xyhCoordinate>& a, const std::optional<xyhCoordinate>& b) {
  if (!a || !b) return a.has_value() == b.has_value();
  return a->x == b->x && a->y == b->y && a->h == b->h;
}

bool SameTime(const tiltpole::PoseSensorData& a, const tiltpole::PoseSensorData& b) {
  return a.Tag[0] == b.Tag[0] && a.Tag[1] == b.Tag[1] && a.Tag[2] == b.Tag[2];
}

bool Same(const SessionSample& a, const SessionSample& b) {
  return a.set == b.set && SameTime(a.sensors, b.sensors) &&
         a.sensors.InclineX == b.sensors.InclineX && a.sensors.InclineY == b.sensors.InclineY &&
         a.sensors.MagneticX_A == b.sensors.MagneticX_A &&
         a.sensors.MagneticY_A == b.sensors.MagneticY_A &&
         a.sensors.MagneticZ_A == b.sensors.MagneticZ_A &&
         a.sensors.MagneticX_B == b.sensors.MagneticX_B &&
         a.sensors.MagneticY_B == b.sensors.MagneticY_B &&
         a.sensors.MagneticZ_B == b.sensors.MagneticZ_B && Same(a.antenna, b.antenna) &&
         Same(a.true_tip, b.true_tip) && a.further == b.further;
}

std::string Written(const Session& session) {
  std::ostringstream out;
  SessionWriter writer(out, session.columns);
  for (const SessionSample& sample : session.samples) writer.Write(sample);
  return out.str();
}

void RequireOneLine(const std::string& message) {
  Require(!message.empty(), "a message says something");
  Require(std::none_of(message.begin(), message.end(),
                       [](char sign) { return static_cast<unsigned char>(sign) < 0x20; }),
          "a message is one line without control characters");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Session session;
  try {
    session = Read(Bytes(data, size).Rest());
  } catch (const InputError& error) {
    RequireOneLine(error.what());
    return 0;
  }
  const Session again = Read(Written(session));
  Require(again.columns.further == session.columns.further, "the same further columns");
  Require(again.samples.size() == session.samples.size(), "as many rows");
  for (std::size_t i = 0; i < session.samples.size(); ++i) {
    Require(Same(again.samples[i], session.samples[i]), "the same rows");
  }
  return 0;
}
