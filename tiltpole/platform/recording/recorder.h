#pragma once

// What the recording backend writes down, for tests: each call as a line of text, in the order of
// the calls, and what is alive. It is one for the process and not installed.

#include <string>
#include <vector>

namespace tiltpole {

class Recorder {
 public:
  static Recorder& Instance();

  /// Forgets everything written down and starts numbering anew. Not while contexts are alive.
  void Reset();

  void Write(const std::string& line);
  /// Writes down a use of the vocabulary that its contract forbids.
  void WriteMisuse(const std::string& line);

  /// What was written since the last call.
  std::vector<std::string> TakeLines();

  /// A test with a million calls does without their text.
  bool keeps_lines = true;
  /// A system that has no more contexts or bitmaps to give.
  bool has_resources = true;
  /// A system that has contexts left, but no bitmaps.
  bool has_bitmaps = true;
  /// Device pixels to a pixel on the screen that new contexts are for.
  int screen_scale = 1;

  std::vector<std::string> misuses;
  int living_contexts = 0;
  int living_bitmaps = 0;
  int taken_contexts = 0;
  int next_context = 1;
  int next_bitmap = 1;
  /// Calls of drawing contexts.
  long long calls = 0;

 private:
  Recorder() = default;
  std::vector<std::string> lines_;
};

}  // namespace tiltpole
