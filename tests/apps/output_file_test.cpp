#include "apps/session/output_file.h"

#include <csignal>
#include <filesystem>
#include <sstream>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

#include "apps/session/input_error.h"
#include "apps/session/input_file.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole::session::InputError;
using tiltpole::session::InputFile;
using tiltpole::session::OutputError;
using tiltpole::session::OutputFile;
using tiltpole_test::TemporaryFolder;

TEST(OutputFile, AppearsWholeOnCommit) {
  const TemporaryFolder folder;
  std::ostringstream standard_output;
  OutputFile file(folder.File("out.csv"), standard_output);
  file.Stream() << "all of it\n";
  EXPECT_FALSE(folder.Has("out.csv"));
  file.Commit();
  EXPECT_EQ(folder.Read("out.csv"), "all of it\n");
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(OutputFile, WithoutCommitTheOldFileStaysAndNothingIsLeftBehind) {
  const TemporaryFolder folder;
  folder.Write("out.csv", "old");
  std::ostringstream standard_output;
  {
    OutputFile file(folder.File("out.csv"), standard_output);
    file.Stream() << "half of";
  }
  EXPECT_EQ(folder.Read("out.csv"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(OutputFile, ReplacesAnOldFileAndKeepsItsPermissions) {
  namespace fs = std::filesystem;
  const TemporaryFolder folder;
  const auto path = fs::u8path(folder.Write("out.csv", "old and longer"));
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  const auto before = fs::status(path).permissions();
  std::ostringstream standard_output;
  OutputFile file(path.u8string(), standard_output);
  file.Stream() << "new";
  file.Commit();
  EXPECT_EQ(folder.Read("out.csv"), "new");
  EXPECT_EQ(fs::status(path).permissions(), before);
}

TEST(OutputFile, ADashIsStandardOutput) {
  std::ostringstream standard_output;
  OutputFile file("-", standard_output);
  EXPECT_TRUE(file.IsStandardOutput());
  file.Stream() << "rows";
  file.Commit();
  EXPECT_EQ(standard_output.str(), "rows");
}

TEST(OutputFile, AClosedStandardOutputIsAnError) {
  std::ostringstream standard_output;
  standard_output.setstate(std::ios::badbit);
  OutputFile file("-", standard_output);
  file.Stream() << "rows";
  EXPECT_THROW(file.Commit(), OutputError);
}

TEST(OutputFile, AFolderAsPathIsAnError) {
  const TemporaryFolder folder;
  std::ostringstream standard_output;
  EXPECT_THROW(OutputFile(folder.File("."), standard_output), OutputError);
}

TEST(OutputFile, AMissingFolderIsAnError) {
  const TemporaryFolder folder;
  std::ostringstream standard_output;
  EXPECT_THROW(OutputFile(folder.File("missing/out.csv"), standard_output), OutputError);
}

TEST(OutputFile, ANameBeyondAsciiIsTakenAsItIs) {
  const TemporaryFolder folder;
  std::ostringstream standard_output;
  OutputFile file(folder.File("Vermessung-\xC3\xA4.csv"), standard_output);
  file.Stream() << "rows";
  file.Commit();
  EXPECT_EQ(folder.Read("Vermessung-\xC3\xA4.csv"), "rows");
}

#ifndef _WIN32
TEST(OutputFile, AFolderWhoseNameIsNoUtf8IsTakenAsItIs) {
  const TemporaryFolder folder;
  std::error_code error;
  if (!std::filesystem::create_directory(folder.File("\xD6l"), error)) {
    GTEST_SKIP() << "this system has no such names";
  }
  std::ostringstream standard_output;
  OutputFile file(folder.File("\xD6l/out.csv"), standard_output);
  file.Stream() << "rows";
  file.Commit();
  EXPECT_EQ(folder.Read("\xD6l/out.csv"), "rows");
}

TEST(OutputFile, TheLongestNameOfTheSystemIsTaken) {
  const TemporaryFolder folder;
  const std::string name = std::string(251, 'a') + ".csv";
  std::ostringstream standard_output;
  OutputFile file(folder.File(name), standard_output);
  file.Stream() << "rows";
  file.Commit();
  EXPECT_EQ(folder.Read(name), "rows");
}

TEST(OutputFile, ASymbolicLinkStaysALink) {
  namespace fs = std::filesystem;
  const TemporaryFolder folder;
  folder.Write("real.csv", "old");
  fs::create_symlink("real.csv", fs::path(folder.File("link.csv")));
  std::ostringstream standard_output;
  OutputFile file(folder.File("link.csv"), standard_output);
  file.Stream() << "new";
  file.Commit();
  EXPECT_TRUE(fs::is_symlink(folder.File("link.csv")));
  EXPECT_EQ(folder.Read("real.csv"), "new");
}

TEST(OutputFile, ASignalRemovesEveryFileInTheMakingAndNoOther) {
  const TemporaryFolder folder;
  const auto end_while_writing = [&folder] {
    tiltpole::session::LetSignalsRemoveFiles();
    std::ostringstream standard_output;
    OutputFile done(folder.File("done.csv"), standard_output);
    done.Commit();
    OutputFile first(folder.File("first.csv"), standard_output);
    OutputFile second(folder.File("second.csv"), standard_output);
    static_cast<void>(std::raise(SIGTERM));
  };
  EXPECT_EXIT(end_while_writing(), testing::KilledBySignal(SIGTERM), "");
  EXPECT_TRUE(folder.Has("done.csv"));
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(OutputFile, AFullDeviceIsAnError) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "this system has no /dev/full";
  std::ostringstream standard_output;
  OutputFile file("/dev/full", standard_output);
  file.Stream() << std::string(100'000, 'x');
  EXPECT_THROW(file.Commit(), OutputError);
  EXPECT_TRUE(std::filesystem::exists("/dev/full"));
}
#endif

TEST(InputFile, AMissingFileIsAnErrorWithItsName) {
  std::istringstream standard_input;
  try {
    const InputFile file("no such file.csv", standard_input);
    FAIL() << "a missing file was opened";
  } catch (const InputError& error) {
    EXPECT_STREQ(error.what(), "no such file.csv: there is no such file");
  }
}

TEST(InputFile, AFolderIsAnError) {
  const TemporaryFolder folder;
  std::istringstream standard_input;
  EXPECT_THROW(InputFile(folder.File("."), standard_input), InputError);
}

TEST(InputFile, ADashIsStandardInput) {
  std::istringstream standard_input("rows");
  InputFile file("-", standard_input);
  std::string text;
  file.Stream() >> text;
  EXPECT_EQ(text, "rows");
  EXPECT_EQ(file.Name(), "standard input");
  EXPECT_FALSE(file.Size().has_value());
}

}  // namespace
