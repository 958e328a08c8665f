// What a parameter file does when the disk, the path or the content does not play along.

#include <filesystem>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "support/ordinary_user.h"
#include "support/temporary_folder.h"
#include "tiltpole/persistence/CParameterFile.h"

namespace {

using tiltpole::CParameterFile;
using tiltpole::detail::PathExists;
using tiltpole_test::ReadBytes;
using tiltpole_test::TemporaryFolder;
using tiltpole_test::WriteBytes;

class ParameterFileFaults : public ::testing::Test {
 protected:
  TemporaryFolder folder;
  std::wstring path = folder / L"pole.par";
  CParameterFile file;
  std::int32_t integer = -7;
};

TEST_F(ParameterFileFaults, AMissingFileIsNotLoaded) { EXPECT_EQ(file.OpenForRead(path), 0); }

TEST_F(ParameterFileFaults, AFolderIsNeitherLoadedNorWritten) {
  EXPECT_EQ(file.OpenForRead(folder.Path()), 0);
  EXPECT_EQ(file.OpenForWrite(folder.Path()), 0);
}

TEST_F(ParameterFileFaults, AnEmptyPathIsNeitherLoadedNorWritten) {
  EXPECT_EQ(file.OpenForRead(L""), 0);
  EXPECT_EQ(file.OpenForWrite(L""), 0);
  EXPECT_EQ(file.OpenForReplace(L""), 0);
}

TEST_F(ParameterFileFaults, NoFolderIsCreated) {
  EXPECT_EQ(file.OpenForWrite(folder / L"missing/pole.par"), 0);
  EXPECT_EQ(file.OpenForReplace(folder / L"missing/pole.par"), 0);
  EXPECT_FALSE(PathExists(folder / L"missing"));
}

TEST_F(ParameterFileFaults, AFailedLoadKeepsTheTextLoadedBefore) {
  WriteBytes(path, "[a]1\r\n");
  ASSERT_EQ(file.OpenForRead(path), 1);
  EXPECT_EQ(file.OpenForRead(folder / L"missing"), 0);
  EXPECT_EQ(file.OpenForRead(folder.Path()), 0);
  EXPECT_EQ(file.ReadInt(L"a", integer), 1);
}

TEST_F(ParameterFileFaults, TheTextEndsAtTheFirstZeroByte) {
  WriteBytes(path, std::string("[a]1\r\n\0[b]2\r\n", 13));
  ASSERT_EQ(file.OpenForRead(path), 1);
  EXPECT_EQ(file.ReadInt(L"a", integer), 1);
  EXPECT_EQ(file.ReadInt(L"b", integer), 0);
}

TEST_F(ParameterFileFaults, AZeroByteInAValueLeavesTheEntryWithoutAnEnd) {
  WriteBytes(path, std::string("[a]1\0\r\n", 7));
  ASSERT_EQ(file.OpenForRead(path), 1);
  EXPECT_EQ(file.ReadInt(L"a", integer), 0);
}

TEST_F(ParameterFileFaults, EntriesAreFoundBehindTenMegabytesOfGarbage) {
  // NOLINTNEXTLINE(bugprone-string-constructor): this long is what the test is about
  std::string garbage(10'000'000, '\0');
  unsigned state = 1;
  for (char& byte : garbage) {
    state = state * 1664525U + 1013904223U;
    byte = static_cast<char>(static_cast<unsigned char>((state >> 24) | 1U));
  }
  WriteBytes(path, garbage + "\r\n[key]5\r\n");
  ASSERT_EQ(file.OpenForRead(path), 1);
  EXPECT_EQ(file.ReadInt(L"key", integer), 1);
  EXPECT_EQ(integer, 5);
  EXPECT_EQ(file.ReadInt(L"missing", integer), 0);
}

#ifdef __linux__
TEST_F(ParameterFileFaults, AFileWithoutPermissionIsNeitherLoadedNorWritten) {
  WriteBytes(path, "[a]1\r\n");
  std::filesystem::permissions(tiltpole_test::NativePath(path), std::filesystem::perms::none);
  const tiltpole_test::OrdinaryUser user;
  if (!user.IsOrdinary()) GTEST_SKIP() << "the superuser cannot act as an ordinary user here";
  EXPECT_TRUE(PathExists(path));
  EXPECT_EQ(file.OpenForRead(path), 0);
  EXPECT_EQ(file.OpenForWrite(path), 0);
}

TEST_F(ParameterFileFaults, AFullDiskShowsInTheResultOfClose) {
  ASSERT_EQ(file.OpenForWrite(L"/dev/full"), 1);
  file.WriteInt(L"a", 1);
  EXPECT_FALSE(file.Close());
}

TEST_F(ParameterFileFaults, AFullDiskLeavesTheOldFileWhenReplacing) {
  WriteBytes(path, "[a]1\r\n");
  std::filesystem::create_symlink("/dev/full", tiltpole_test::NativePath(path + L".new"));
  ASSERT_EQ(file.OpenForReplace(path), 1);
  file.WriteInt(L"a", 2);
  EXPECT_EQ(file.Replace(), 0);
  EXPECT_EQ(ReadBytes(path), "[a]1\r\n");
}
#endif

TEST_F(ParameterFileFaults, ReplacingPutsTheNewFileInThePlaceOfTheOld) {
  WriteBytes(path, "[a]1\r\n[b]1\r\n");
  ASSERT_EQ(file.OpenForReplace(path), 1);
  file.WriteInt(L"a", 2);
  EXPECT_EQ(ReadBytes(path), "[a]1\r\n[b]1\r\n") << "until then the old one stands";
  EXPECT_EQ(file.Replace(), 1);
  EXPECT_EQ(ReadBytes(path), "[a]2\r\n");
  EXPECT_FALSE(PathExists(path + L".new"));
}

TEST_F(ParameterFileFaults, ReplacingCreatesAMissingFile) {
  ASSERT_EQ(file.OpenForReplace(path), 1);
  file.WriteInt(L"a", 2);
  EXPECT_EQ(file.Replace(), 1);
  EXPECT_EQ(ReadBytes(path), "[a]2\r\n");
}

TEST_F(ParameterFileFaults, AFolderIsNotReplaced) {
  std::filesystem::create_directory(tiltpole_test::NativePath(path));
  ASSERT_EQ(file.OpenForReplace(path), 1);
  EXPECT_EQ(file.Replace(), 0);
  EXPECT_TRUE(std::filesystem::is_directory(tiltpole_test::NativePath(path)));
  EXPECT_FALSE(PathExists(path + L".new"));
}

TEST_F(ParameterFileFaults, AReplacementThatIsNotFinishedLeavesNothingBehind) {
  WriteBytes(path, "[a]1\r\n");
  {
    CParameterFile other;
    ASSERT_EQ(other.OpenForReplace(path), 1);
    other.WriteInt(L"a", 2);
  }
  EXPECT_EQ(ReadBytes(path), "[a]1\r\n");
  EXPECT_FALSE(PathExists(path + L".new"));
}

TEST_F(ParameterFileFaults, OpeningAnotherFileAbandonsTheReplacement) {
  WriteBytes(path, "[a]1\r\n");
  ASSERT_EQ(file.OpenForReplace(path), 1);
  ASSERT_EQ(file.OpenForWrite(folder / L"other"), 1);
  EXPECT_FALSE(PathExists(path + L".new"));
  EXPECT_EQ(file.Replace(), 0);
  EXPECT_EQ(ReadBytes(path), "[a]1\r\n");
}

TEST_F(ParameterFileFaults, AReplacementClosedBeforeItIsFinishedIsGivenUp) {
  WriteBytes(path, "[a]1\r\n");
  ASSERT_EQ(file.OpenForReplace(path), 1);
  file.Close();
  EXPECT_EQ(file.Replace(), 0);
  EXPECT_EQ(ReadBytes(path), "[a]1\r\n");
  EXPECT_FALSE(PathExists(path + L".new"));
}

// A path as a system's buffer holds it.
TEST_F(ParameterFileFaults, APathEndsAtAZeroCharacterWhenReplacingToo) {
  WriteBytes(path, "[a]1\r\n");
  ASSERT_EQ(file.OpenForReplace(path + L'\0'), 1);
  file.WriteInt(L"a", 2);
  EXPECT_EQ(ReadBytes(path), "[a]1\r\n");
  EXPECT_EQ(file.Replace(), 1);
  EXPECT_EQ(ReadBytes(path), "[a]2\r\n");
  EXPECT_FALSE(PathExists(path + L".new"));
  EXPECT_EQ(file.OpenForReplace(std::wstring(1, L'\0')), 0);
}

template <class File, class = void>
struct CanCreate : std::false_type {};
template <class File>
struct CanCreate<File, std::void_t<decltype(std::declval<File&>().Create(std::wstring()))>>
    : std::true_type {};

// Otherwise Replace would put the file that it began, empty, in the place of the old one.
TEST_F(ParameterFileFaults, NoOtherFileCanBeOpenedDuringAReplacement) {
  EXPECT_TRUE(CanCreate<tiltpole::PlatformFile>::value);
  EXPECT_FALSE(CanCreate<CParameterFile>::value);
}

TEST_F(ParameterFileFaults, ReplaceWithoutABeginningFails) { EXPECT_EQ(file.Replace(), 0); }

}  // namespace
