// What is shown while a long session is read.

#include "apps/tiltpole/progress.h"

#include <sstream>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace {

using tiltpole::cli::Console;
using tiltpole::cli::Progress;

class ProgressOnAStream : public ::testing::Test {
 protected:
  // Long enough for an update, and on a busy machine for more than one.
  void ReadHalf(Progress& progress) {
    for (std::uint64_t row = 1; row <= 50'000; ++row) {
      progress.Row(row);
      if (row == 10'000) std::this_thread::sleep_for(std::chrono::milliseconds(250));
    }
  }
  bool Begins(const std::string& part) const {
    return err.str().compare(0, part.size(), part) == 0;
  }
  bool Ends(const std::string& part) const {
    const std::string text = err.str();
    return text.size() >= part.size() &&
           text.compare(text.size() - part.size(), part.size(), part) == 0;
  }

  std::istringstream in;
  std::ostringstream out;
  std::ostringstream err;
  Console console{in, out, err};
};

TEST_F(ProgressOnAStream, ATerminalSeesRowsAndShareOnOneLineThatIsWipedAtTheEnd) {
  console.err_is_terminal = true;
  {
    Progress progress(console, "measure", 100'000);
    ReadHalf(progress);
    EXPECT_TRUE(Begins("\rmeasure: ")) << err.str();
    EXPECT_TRUE(Ends(" %\x1b[K")) << err.str();
  }
  EXPECT_TRUE(Ends(" %\x1b[K\r\x1b[K")) << err.str();
  EXPECT_EQ(err.str().find('\n'), std::string::npos);
  EXPECT_EQ(out.str(), "");
}

TEST_F(ProgressOnAStream, WithoutATotalThereIsNoShare) {
  console.err_is_terminal = true;
  Progress progress(console, "measure", std::nullopt);
  ReadHalf(progress);
  EXPECT_TRUE(Ends(" rows\x1b[K")) << err.str();
}

TEST_F(ProgressOnAStream, ASizeThatWasPassedStaysAtAHundredPercent) {
  console.err_is_terminal = true;
  Progress progress(console, "measure", 1'000);
  ReadHalf(progress);
  EXPECT_TRUE(Ends(" rows, 100 %\x1b[K")) << err.str();
}

TEST_F(ProgressOnAStream, AFileOrAPipeSeesNothing) {
  {
    Progress progress(console, "measure", 100'000);
    ReadHalf(progress);
  }
  EXPECT_EQ(err.str(), "");
}

TEST_F(ProgressOnAStream, AShortSessionShowsNothing) {
  console.err_is_terminal = true;
  {
    Progress progress(console, "measure", 10);
    for (std::uint64_t row = 1; row <= 10; ++row) progress.Row(row);
  }
  EXPECT_EQ(err.str(), "");
}

}  // namespace
