#pragma once

// What the tests of failing allocations share: nothing may be left allocated after a test.

#include <string>

#include <gtest/gtest.h>

#include "calibration/random_session.h"
#include "support/allocations.h"
#include "support/temporary_folder.h"
#include "tiltpole/persistence/CParameterFile.h"
#include "tiltpole/platform/message_box.h"

namespace tiltpole_test {

class Allocations : public ::testing::Test {
 protected:
  void SetUp() override {
#if defined(_WIN32) && !defined(TILTPOLE_STATIC_DEFINE)
    GTEST_SKIP() << "a DLL keeps its own allocator, which a test cannot make fail";
#endif
    // A handler that allocates nothing.
    tiltpole::SetMessageBoxHandler(
        [](const std::wstring&, const std::wstring&, tiltpole::MessageIcon) { ++shown; });
    shown = 0;
    living_ = LivingAllocations();
  }
  // What the run-time keeps from its first use of files is not the library's.
  static void SetUpTestSuite() {
    const TemporaryFolder folder;
    WriteBytes(folder / L"first", "1");
    tiltpole::CParameterFile file;
    file.OpenForRead(folder / L"first");
  }
  void TearDown() override {
    EXPECT_EQ(LivingAllocations(), living_);
    tiltpole::SetMessageBoxHandler(nullptr);
  }

  // Messages since the test began.
  inline static int shown = 0;

 private:
  long living_ = 0;
};

/// The two turns of an ideal pole.
inline Session IdealTurns() {
  return SessionOf(RandomTurns(Kind::Ideal, 40, 40, 5), RandomTurns(Kind::Ideal, 40, 40, 6));
}

}  // namespace tiltpole_test
