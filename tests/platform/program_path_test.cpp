#include "tiltpole/platform/program_path.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace {

TEST(ProgramPath, NamesTheRunningExecutable) {
  const std::filesystem::path path(tiltpole::detail::ProgramPath());
  EXPECT_TRUE(path.is_absolute());
  EXPECT_EQ(path.stem(), "tests_platform");
  EXPECT_TRUE(std::filesystem::is_regular_file(path));
}

}  // namespace
