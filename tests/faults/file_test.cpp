// Every file operation fails in turn while parameters and views are saved and read: the stated
// result, no torn object, and no lost file where none may be lost.

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "faults/file_faults.h"
#include "support/temporary_folder.h"
#include "tiltpole/persistence/CParameterFile.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace {

using tiltpole::CInclineSensor_Position;
using tiltpole::CParameterFile;
using tiltpole_test::FailFileCall;
using tiltpole_test::FileCall;
using tiltpole_test::ReadBytes;
using tiltpole_test::RemoveAfterFileCall;
using tiltpole_test::ShortenFileCall;
using tiltpole_test::StopFileFaults;
using tiltpole_test::TemporaryFolder;

class FileFaults : public ::testing::Test {
 protected:
  FileFaults() {
    position.SetMagneticBiasAngle_A(12.5);
    position.ConfigSave(path);
    old = ReadBytes(path);
    position.SetMagneticBiasAngle_A(25.0);
  }
  ~FileFaults() override { StopFileFaults(); }

  std::string Native() const { return tiltpole_test::NativePath(path).string(); }
  bool IsBesideLeft() const {
    return std::filesystem::exists(tiltpole_test::NativePath(path + L".new"));
  }

  TemporaryFolder folder;
  const std::wstring path = folder / L"pole.par";
  std::string old;
  CInclineSensor_Position position;
};

TEST_F(FileFaults, ReadingFailsWithEachOfItsCallsAndChangesNothing) {
  for (const FileCall call :
       {FileCall::Access, FileCall::Open, FileCall::Status, FileCall::Seek, FileCall::Read}) {
    FailFileCall(call);
    EXPECT_EQ(position.ConfigRead(path), 0) << static_cast<int>(call);
    EXPECT_TRUE(StopFileFaults()) << static_cast<int>(call);
    EXPECT_EQ(position.GetMagneticBiasAngle_A(), 25.0);
  }
  EXPECT_EQ(position.ConfigRead(path), 1);
  EXPECT_EQ(position.GetMagneticBiasAngle_A(), 12.5);
}

TEST_F(FileFaults, AFailedReadKeepsTheTextLoadedBefore) {
  CParameterFile file;
  ASSERT_EQ(file.OpenForRead(path), 1);
  FailFileCall(FileCall::Read);
  EXPECT_EQ(file.OpenForRead(path), 0);
  EXPECT_TRUE(StopFileFaults());
  double angle = 0.0;
  EXPECT_EQ(file.ReadDouble(L"MagneticBiasAngle_A", angle), 1);
  EXPECT_EQ(angle, 12.5);
}

TEST_F(FileFaults, AFileThatShrinksWhileItIsReadGivesTheEntriesThatAreThere) {
  ShortenFileCall(FileCall::Read, old.find("[MagneticBiasAngle_A]"));
  CInclineSensor_Position read;
  read.SetMagneticBiasAngle_A(99.0);
  EXPECT_EQ(read.ConfigRead(path), 1);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(read.GetMagneticBiasAngle_A(), 99.0);
}

TEST_F(FileFaults, AFileRemovedBetweenTheTestForItAndItsOpeningIsMissing) {
  RemoveAfterFileCall(FileCall::Access, Native());
  EXPECT_EQ(position.ConfigRead(path), 0);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(position.GetMagneticBiasAngle_A(), 25.0);
}

TEST_F(FileFaults, SavingReportsAFileThatCannotBeOpenedAndLeavesIt) {
  FailFileCall(FileCall::Open);
  EXPECT_EQ(position.ConfigSave(path), 0);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(ReadBytes(path), old);
}

TEST_F(FileFaults, SavingDoesNotReportErrorsOfWriting) {
  FailFileCall(FileCall::Close);
  EXPECT_EQ(position.ConfigSave(path), 1);
  EXPECT_TRUE(StopFileFaults());
  FailFileCall(FileCall::Write, 3);
  EXPECT_EQ(position.ConfigSave(path), 1);
  EXPECT_TRUE(StopFileFaults());
}

TEST_F(FileFaults, EveryFailedOrShortWriteShowsWhenTheFileIsClosed) {
  for (int after = 0; after < 3; ++after) {
    CParameterFile file;
    ASSERT_EQ(file.OpenForWrite(path), 1);
    FailFileCall(FileCall::Write, after);
    for (int line = 0; line < 3; ++line) file.WriteInt(L"a", line);
    EXPECT_TRUE(StopFileFaults());
    EXPECT_FALSE(file.Close()) << after;
  }
  CParameterFile file;
  ASSERT_EQ(file.OpenForWrite(path), 1);
  ShortenFileCall(FileCall::Write, 2);
  file.WriteInt(L"a", 1);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_FALSE(file.Close());
}

TEST_F(FileFaults, AFailureOfTheCloseItselfShowsAndTheFileIsClosed) {
  CParameterFile file;
  ASSERT_EQ(file.OpenForWrite(path), 1);
  FailFileCall(FileCall::Close);
  EXPECT_FALSE(file.Close());
  EXPECT_TRUE(StopFileFaults());
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(file.OpenForRead(path), 1);
}

TEST_F(FileFaults, ReplacingFailsWithEachOfItsCallsAndLeavesTheOldFileAlone) {
  for (const FileCall call : {FileCall::Open, FileCall::Write, FileCall::Flush, FileCall::Sync,
                              FileCall::Close, FileCall::Rename}) {
    FailFileCall(call);
    EXPECT_EQ(position.ConfigReplace(path), 0) << static_cast<int>(call);
    EXPECT_TRUE(StopFileFaults()) << static_cast<int>(call);
    EXPECT_EQ(ReadBytes(path), old) << static_cast<int>(call);
    EXPECT_FALSE(IsBesideLeft()) << static_cast<int>(call);
  }
  EXPECT_EQ(position.ConfigReplace(path), 1);
  EXPECT_NE(ReadBytes(path), old);
}

TEST_F(FileFaults, EachOfTheWritesOfAReplacementMayFail) {
  for (int line = 0; line < 21; ++line) {
    FailFileCall(FileCall::Write, line);
    EXPECT_EQ(position.ConfigReplace(path), 0) << line;
    EXPECT_TRUE(StopFileFaults()) << line;
    EXPECT_EQ(ReadBytes(path), old);
  }
}

// The folder cannot be brought onto the medium everywhere; the new file stands all the same.
TEST_F(FileFaults, AFolderThatCannotBeSyncedDoesNotUndoAReplacement) {
  FailFileCall(FileCall::Sync, 1);
  EXPECT_EQ(position.ConfigReplace(path), 1);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_NE(ReadBytes(path), old);
}

}  // namespace
