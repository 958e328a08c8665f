#pragma once

// What the tests of the controls share: a clean recorder before each test, and afterwards nothing
// left over and nothing misused.

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tiltpole/platform/recording/recorder.h"

namespace tiltpole_test {

using Lines = std::vector<std::string>;

class RecordedTest : public ::testing::Test {
 protected:
  RecordedTest() { recorder.Reset(); }
  void TearDown() override {
    EXPECT_EQ(recorder.misuses, Lines{});
    EXPECT_EQ(recorder.living_contexts, 0);
    EXPECT_EQ(recorder.living_bitmaps, 0);
    EXPECT_EQ(recorder.taken_contexts, 0);
  }

  tiltpole::Recorder& recorder = tiltpole::Recorder::Instance();
};

inline bool Contains(const std::string& line, const std::string& text) {
  return line.find(text) != std::string::npos;
}

/// The lines of a block of text, without the empty one at its start.
inline Lines Block(const std::string& text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty()) lines.push_back(line);
  }
  return lines;
}

/// The lines with a text in them.
inline Lines With(const std::string& text, const Lines& lines) {
  Lines found;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
               [&text](const std::string& line) { return Contains(line, text); });
  return found;
}

/// What happens to the window and to whole pictures, without the drawing of pens, lines and texts
/// into memory.
inline Lines Flow(const Lines& lines) {
  Lines flow;
  for (const std::string& line : lines) {
    const bool picture = Contains(line, "create ") || Contains(line, "select ") ||
                         Contains(line, "delete ") || Contains(line, "copy ") ||
                         Contains(line, "or onto ");
    if (picture || Contains(line, "window: ")) flow.push_back(line);
  }
  return flow;
}

}  // namespace tiltpole_test
