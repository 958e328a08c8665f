// A new points file is found again after a power cut: its folder is on the medium, too.

#ifdef __linux__

#include <algorithm>
#include <filesystem>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "apps/field/point_rows.h"
#include "apps/field/point_store.h"
#include "support/temporary_folder.h"

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the linker's own names.
// __wrap_fsync takes the calls of fsync in this program; __real_fsync is the system's.
extern "C" int __real_fsync(int handle);

namespace {

ino_t NumberOf(const char* path) {
  struct stat status = {};
  return stat(path, &status) == 0 ? status.st_ino : 0;
}

std::vector<ino_t> brought_to_medium;

}  // namespace

extern "C" int __wrap_fsync(int handle) {
  struct stat status = {};
  if (fstat(handle, &status) == 0) brought_to_medium.push_back(status.st_ino);
  return __real_fsync(handle);
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

namespace tiltpole::field {
namespace {

using tiltpole_test::TemporaryFolder;

bool IsOnMedium(const std::string& path) {
  return std::count(brought_to_medium.begin(), brought_to_medium.end(), NumberOf(path.c_str())) > 0;
}

TEST(NewPointsFile, IsOnTheMediumWithItsFolder) {
  const TemporaryFolder folder;
  brought_to_medium.clear();
  const PointStore store(folder.File("p.csv"));
  EXPECT_TRUE(IsOnMedium(folder.File("p.csv")));
  EXPECT_TRUE(IsOnMedium(folder.File(".")));
  EXPECT_EQ(folder.Read("p.csv"), PointHeader());
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(NewPointsFile, IsMadeWhereALinkPoints) {
  const TemporaryFolder folder;
  std::filesystem::create_symlink(folder.File("p.csv"), folder.File("link.csv"));
  const PointStore store(folder.File("link.csv"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link.csv")));
  EXPECT_EQ(folder.Read("p.csv"), PointHeader());
}

}  // namespace
}  // namespace tiltpole::field

#endif
