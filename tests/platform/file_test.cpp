#include "tiltpole/platform/file.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace {

using tiltpole::PlatformFile;
using tiltpole::detail::BringToMedium;
using tiltpole::detail::MoveOverFile;
using tiltpole::detail::PathExists;
using tiltpole::detail::RemoveFile;
using tiltpole_test::ReadBytes;
using tiltpole_test::TemporaryFolder;
using tiltpole_test::WriteBytes;

class PlatformFileTest : public ::testing::Test {
 protected:
  TemporaryFolder folder;
  PlatformFile file;
  std::string bytes = "before";
};

TEST_F(PlatformFileTest, WritesBytesAsTheyAre) {
  ASSERT_TRUE(file.Create(folder / L"a"));
  EXPECT_TRUE(file.Write(std::string("1\r\n\n\0\x80", 6)));
  EXPECT_TRUE(file.Close());
  EXPECT_EQ(ReadBytes(folder / L"a"), std::string("1\r\n\n\0\x80", 6));
}

TEST_F(PlatformFileTest, AFileNamedWithoutAFolderIsReplacedInTheCurrentOne) {
  const std::filesystem::path before = std::filesystem::current_path();
  WriteBytes(folder / L"new", "new");
  WriteBytes(folder / L"old", "old");
  std::filesystem::current_path(tiltpole_test::NativePath(folder.Path()));
  EXPECT_TRUE(MoveOverFile(L"new", L"old"));
  EXPECT_FALSE(MoveOverFile(L"new", L"old"));
  std::filesystem::current_path(before);
  EXPECT_EQ(ReadBytes(folder / L"old"), "new");
  EXPECT_FALSE(PathExists(folder / L"new"));
}

TEST_F(PlatformFileTest, CreateEmptiesAFileThatExists) {
  WriteBytes(folder / L"a", "a long old text");
  ASSERT_TRUE(file.Create(folder / L"a"));
  file.Close();
  EXPECT_EQ(ReadBytes(folder / L"a"), "");
}

TEST_F(PlatformFileTest, ReadsTheWholeFile) {
  WriteBytes(folder / L"a", std::string("1\r\n\0\x1A\x80 2", 8));
  ASSERT_TRUE(file.OpenExisting(folder / L"a"));
  EXPECT_TRUE(file.Read(bytes));
  EXPECT_EQ(bytes, std::string("1\r\n\0\x1A\x80 2", 8));
}

TEST_F(PlatformFileTest, ReadsNoMoreThanAsked) {
  WriteBytes(folder / L"a", std::string(2000, 'x'));
  ASSERT_TRUE(file.OpenExisting(folder / L"a"));
  EXPECT_TRUE(file.Read(bytes, 999));
  EXPECT_EQ(bytes, std::string(999, 'x'));
}

TEST_F(PlatformFileTest, ReadsFromTheStartEveryTime) {
  WriteBytes(folder / L"a", "abc");
  ASSERT_TRUE(file.OpenExisting(folder / L"a"));
  EXPECT_TRUE(file.Read(bytes, 1));
  EXPECT_TRUE(file.Read(bytes));
  EXPECT_EQ(bytes, "abc");
}

TEST_F(PlatformFileTest, AnEmptyFileReadsAsNothing) {
  WriteBytes(folder / L"a", "");
  ASSERT_TRUE(file.OpenExisting(folder / L"a"));
  EXPECT_TRUE(file.Read(bytes));
  EXPECT_EQ(bytes, "");
}

TEST_F(PlatformFileTest, AMissingFileCannotBeOpened) {
  EXPECT_FALSE(file.OpenExisting(folder / L"a"));
  EXPECT_FALSE(file.IsOpen());
}

TEST_F(PlatformFileTest, AFolderCanBeNeitherReadNorWritten) {
  EXPECT_FALSE(file.OpenExisting(folder.Path()) && file.Read(bytes));
  EXPECT_EQ(bytes, "before");
  EXPECT_FALSE(file.Create(folder.Path()));
}

TEST_F(PlatformFileTest, AFileInAMissingFolderCannotBeCreated) {
  EXPECT_FALSE(file.Create(folder / L"missing/a"));
}

TEST_F(PlatformFileTest, WithoutAnOpenFileNothingIsReadOrWritten) {
  EXPECT_FALSE(file.Read(bytes));
  EXPECT_FALSE(file.Write("x"));
  EXPECT_FALSE(file.Flush());
  EXPECT_EQ(bytes, "before");
}

TEST_F(PlatformFileTest, AFileOpenForWritingCannotBeRead) {
  ASSERT_TRUE(file.Create(folder / L"a"));
  EXPECT_TRUE(file.Write("abc"));
  EXPECT_TRUE(file.Flush());
  EXPECT_FALSE(file.Read(bytes));
  EXPECT_EQ(bytes, "before");
}

TEST_F(PlatformFileTest, AFileOpenForReadingCannotBeWritten) {
  WriteBytes(folder / L"a", "abc");
  ASSERT_TRUE(file.OpenExisting(folder / L"a"));
  EXPECT_FALSE(file.Write("x"));
  EXPECT_FALSE(file.Close());
  EXPECT_EQ(ReadBytes(folder / L"a"), "abc");
}

TEST_F(PlatformFileTest, OpeningAnotherFileClosesTheFirst) {
  ASSERT_TRUE(file.Create(folder / L"a"));
  EXPECT_TRUE(file.Write("abc"));
  ASSERT_TRUE(file.Create(folder / L"b"));
  EXPECT_EQ(ReadBytes(folder / L"a"), "abc");
}

TEST_F(PlatformFileTest, TheDestructorClosesTheFile) {
  {
    PlatformFile other;
    ASSERT_TRUE(other.Create(folder / L"a"));
    EXPECT_TRUE(other.Write("abc"));
  }
  EXPECT_EQ(ReadBytes(folder / L"a"), "abc");
}

TEST_F(PlatformFileTest, ClosingTwiceDoesNothing) {
  ASSERT_TRUE(file.Create(folder / L"a"));
  EXPECT_TRUE(file.Close());
  EXPECT_TRUE(file.Close());
}

TEST_F(PlatformFileTest, PathsBeyondAsciiWork) {
  const std::wstring path = folder / L"M\u00fcnchen \u6e2c\u91cf \U0001F9ED.cfg";
  ASSERT_TRUE(file.Create(path));
  EXPECT_TRUE(file.Write("abc"));
  file.Close();
  EXPECT_TRUE(PathExists(path));
  EXPECT_EQ(ReadBytes(path), "abc");
}

#ifdef __linux__
TEST_F(PlatformFileTest, AFullDiskIsNoticedAtTheLatestOnClosing) {
  ASSERT_TRUE(file.Create(L"/dev/full"));
  file.Write("abc");
  EXPECT_FALSE(file.Close());
}

TEST_F(PlatformFileTest, AFullDiskIsNoticedOnFlushing) {
  ASSERT_TRUE(file.Create(L"/dev/full"));
  file.Write("abc");
  EXPECT_FALSE(file.Flush());
  EXPECT_FALSE(file.Close());
}

TEST_F(PlatformFileTest, ADeviceWithoutLengthReadsAsNothing) {
  ASSERT_TRUE(file.OpenExisting(L"/dev/zero"));
  EXPECT_TRUE(file.Read(bytes));
  EXPECT_EQ(bytes, "");
}
#endif

TEST_F(PlatformFileTest, AFileAfterAFailedOneStartsAfresh) {
  WriteBytes(folder / L"a", "abc");
  ASSERT_TRUE(file.OpenExisting(folder / L"a"));
  EXPECT_FALSE(file.Write("x"));
  ASSERT_TRUE(file.Create(folder / L"b"));
  EXPECT_TRUE(file.Write("x"));
  EXPECT_TRUE(file.Close());
}

TEST_F(PlatformFileTest, FilesAndFoldersExistAndNothingElseDoes) {
  WriteBytes(folder / L"a", "");
  EXPECT_TRUE(PathExists(folder / L"a"));
  EXPECT_TRUE(PathExists(folder.Path()));
  EXPECT_FALSE(PathExists(folder / L"b"));
  EXPECT_FALSE(PathExists(L""));
}

TEST_F(PlatformFileTest, BringingAFileToTheMediumLeavesItAsItIs) {
  WriteBytes(folder / L"a", "text");
  EXPECT_TRUE(BringToMedium(tiltpole_test::NativePath(folder / L"a").c_str()));
  EXPECT_EQ(ReadBytes(folder / L"a"), "text");
}

TEST_F(PlatformFileTest, AMissingFileIsNotBroughtToTheMedium) {
  EXPECT_FALSE(BringToMedium(tiltpole_test::NativePath(folder / L"a").c_str()));
  EXPECT_FALSE(PathExists(folder / L"a"));
}

TEST_F(PlatformFileTest, MovingOverAFileReplacesIt) {
  WriteBytes(folder / L"new", "new");
  WriteBytes(folder / L"a", "old");
  EXPECT_TRUE(MoveOverFile(folder / L"new", folder / L"a"));
  EXPECT_EQ(ReadBytes(folder / L"a"), "new");
  EXPECT_FALSE(PathExists(folder / L"new"));
}

TEST_F(PlatformFileTest, MovingToAFreeNameIsPlainRenaming) {
  WriteBytes(folder / L"new", "new");
  EXPECT_TRUE(MoveOverFile(folder / L"new", folder / L"a"));
  EXPECT_EQ(ReadBytes(folder / L"a"), "new");
}

TEST_F(PlatformFileTest, AFolderIsNotReplaced) {
  WriteBytes(folder / L"new", "new");
  std::filesystem::create_directory(folder / L"a");
  EXPECT_FALSE(MoveOverFile(folder / L"new", folder / L"a"));
  EXPECT_EQ(ReadBytes(folder / L"new"), "new");
}

TEST_F(PlatformFileTest, AMissingFileIsNotMoved) {
  WriteBytes(folder / L"a", "old");
  EXPECT_FALSE(MoveOverFile(folder / L"new", folder / L"a"));
  EXPECT_EQ(ReadBytes(folder / L"a"), "old");
}

TEST_F(PlatformFileTest, RemovingAFileThatIsNotThereDoesNothing) {
  WriteBytes(folder / L"a", "");
  RemoveFile(folder / L"a");
  EXPECT_FALSE(PathExists(folder / L"a"));
  RemoveFile(folder / L"a");
}

}  // namespace
