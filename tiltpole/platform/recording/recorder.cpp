#include "tiltpole/platform/recording/recorder.h"

#include <utility>

namespace tiltpole {

Recorder& Recorder::Instance() {
  static Recorder recorder;
  return recorder;
}

void Recorder::Reset() { *this = Recorder(); }

void Recorder::Write(const std::string& line) {
  if (keeps_lines) lines_.push_back(line);
}

void Recorder::WriteMisuse(const std::string& line) { misuses.push_back(line); }

std::vector<std::string> Recorder::TakeLines() { return std::exchange(lines_, {}); }

}  // namespace tiltpole
