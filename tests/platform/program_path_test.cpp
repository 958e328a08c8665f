#include "tiltpole/platform/program_path.h"

#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace {

TEST(ProgramPath, NamesTheRunningExecutable) {
  const std::filesystem::path path(tiltpole::detail::ProgramPath());
  EXPECT_TRUE(path.is_absolute());
  EXPECT_EQ(path.stem(), "tests_platform");
  EXPECT_TRUE(std::filesystem::is_regular_file(path));
}

#ifdef __linux__
TEST(ProgramPath, IsWholeInAFolderWhoseNameIsLongerThanTheFirstBuffer) {
  const tiltpole_test::TemporaryFolder folder;
  std::filesystem::path deep = tiltpole_test::NativePath(folder.Path());
  for (const char letter : {'a', 'b', 'c'}) deep /= std::string(200, letter);
  std::filesystem::create_directories(deep);
  const std::filesystem::path copy = deep / "tests_platform";
  std::filesystem::copy_file(std::filesystem::path(tiltpole::detail::ProgramPath()), copy);
  // The copy asks for its own name with the test above.
  const std::string command = "'" + copy.string() +
                              "' --gtest_filter=ProgramPath.NamesTheRunningExecutable "
                              ">/dev/null 2>&1";
  // NOLINTNEXTLINE(cert-env33-c): of a name that the test itself has made
  const int status = std::system(command.c_str());
  constexpr int kNotForThisProcessor = 126 << 8;
  if (status == kNotForThisProcessor) GTEST_SKIP() << "an emulated program cannot start another";
  EXPECT_EQ(status, 0);
}
#endif

}  // namespace
