// An output is on the medium before it takes the old one's place, so that a power cut leaves one of
// the two whole.

#include "apps/session/output_file.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "apps/session/input_error.h"
#include "apps/session/parameter_file.h"
#include "faults/file_faults.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole::CInclineSensor_Position;
using tiltpole::session::OutputError;
using tiltpole::session::OutputFile;
using tiltpole::session::WriteParameterFile;
using tiltpole_test::FailFileCall;
using tiltpole_test::FileCall;
using tiltpole_test::StopFileFaults;
using tiltpole_test::TemporaryFolder;

class OutputFileFaults : public ::testing::Test {
 protected:
  ~OutputFileFaults() override { StopFileFaults(); }

  void WriteRows() {
    OutputFile file(out, standard_output);
    file.Stream() << "new";
    file.Commit();
  }

  TemporaryFolder folder;
  const std::string out = folder.Write("out", "old");
  std::ostringstream standard_output;
};

TEST_F(OutputFileFaults, RowsThatDoNotReachTheMediumLeaveTheOldFile) {
  FailFileCall(FileCall::Sync);
  EXPECT_THROW(WriteRows(), OutputError);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(folder.Read("out"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST_F(OutputFileFaults, ParametersThatDoNotReachTheMediumLeaveTheOldFile) {
  FailFileCall(FileCall::Sync);
  EXPECT_THROW(WriteParameterFile(out, CInclineSensor_Position()), OutputError);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(folder.Read("out"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}

// The folder cannot be brought onto the medium everywhere; the new file stands all the same.
TEST_F(OutputFileFaults, AFolderThatCannotBeSyncedDoesNotUndoAnOutput) {
  FailFileCall(FileCall::Sync, 1);
  WriteRows();
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(folder.Read("out"), "new");
}

}  // namespace
