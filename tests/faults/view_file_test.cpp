// Every file operation fails in turn while a plot keeps its view and takes it back: the stated
// result, the view of before or what the file still tells, and a plot that goes on drawing.

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "controls/recorded.h"
#include "controls/view_files.h"
#include "faults/file_faults.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"

namespace {

using tiltpole::CGraphMagnetic_XY;
using tiltpole_test::FailFileCall;
using tiltpole_test::FileCall;
using tiltpole_test::RecordedTest;
using tiltpole_test::RemoveAfterFileCall;
using tiltpole_test::ShortenFileCall;
using tiltpole_test::StopFileFaults;

class ViewFileFaults : public RecordedTest {
 protected:
  ViewFileFaults() {
    files.Write(files.xy, old);
    plot->Create(nullptr, nullptr, 0, {0, 0, 206, 106}, nullptr, 0);
    plot->ConfigRead();
  }
  // The recorder must find nothing left over.
  void TearDown() override {
    StopFileFaults();
    plot.reset();
    RecordedTest::TearDown();
  }

  // The reading at the lower left corner of the plot->
  void ExpectCorner(int world_x, int world_y) const {
    int x = 0;
    int y = 100;
    plot->WorldToClient(world_x, world_y, x, y);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 100);
  }

  const std::string old = "GRAPHMAGNETIC_XY:10, 20, 0.500000,\r\n";
  const std::string other = "GRAPHMAGNETIC_XY:30, 40, 0.500000,\r\n";
  tiltpole_test::ViewFiles files;
  std::optional<CGraphMagnetic_XY> plot{std::in_place};
};

TEST_F(ViewFileFaults, ReadingFailsWithEachOfItsCallsAndKeepsTheView) {
  files.Write(files.xy, other);
  for (const FileCall call : {FileCall::Open, FileCall::Status, FileCall::Seek, FileCall::Read}) {
    FailFileCall(call);
    EXPECT_EQ(plot->ConfigRead(), 0) << static_cast<int>(call);
    EXPECT_TRUE(StopFileFaults()) << static_cast<int>(call);
    ExpectCorner(10, 20);
  }
  EXPECT_EQ(plot->ConfigRead(), 1);
  ExpectCorner(30, 40);
}

TEST_F(ViewFileFaults, AFileThatShrinksWhileItIsReadGivesTheNumbersThatAreThere) {
  files.Write(files.xy, other);
  ShortenFileCall(FileCall::Read, other.find(" 40"));
  EXPECT_EQ(plot->ConfigRead(), 1);
  EXPECT_TRUE(StopFileFaults());
  ExpectCorner(30, 20);
}

TEST_F(ViewFileFaults, AFileRemovedWhileItIsOpenIsReadAllTheSame) {
  files.Write(files.xy, other);
  RemoveAfterFileCall(FileCall::Open, files.xy.string());
  EXPECT_EQ(plot->ConfigRead(), 1);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_FALSE(files.Exists(files.xy));
  ExpectCorner(30, 40);
}

TEST_F(ViewFileFaults, SavingReportsAFileThatCannotBeOpenedAndLeavesIt) {
  files.Write(files.xy, other);
  FailFileCall(FileCall::Open);
  EXPECT_EQ(plot->ConfigSave(), 0);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(files.Read(files.xy), other);
}

// Deliberate: only the opening tells. The next run of the program then starts with the first view.
TEST_F(ViewFileFaults, SavingDoesNotReportErrorsOfWriting) {
  FailFileCall(FileCall::Close);
  EXPECT_EQ(plot->ConfigSave(), 1);
  EXPECT_TRUE(StopFileFaults());
  FailFileCall(FileCall::Write);
  EXPECT_EQ(plot->ConfigSave(), 1);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(files.Read(files.xy), "");
}

TEST_F(ViewFileFaults, AnEmptyFileThatAFullDiskLeftChangesNoView) {
  FailFileCall(FileCall::Write);
  plot->ConfigSave();
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(plot->ConfigRead(), 1);
  ExpectCorner(10, 20);
}

TEST_F(ViewFileFaults, AShortWriteLeavesTheBeginningOfTheLineWhichGivesItsNumbers) {
  ShortenFileCall(FileCall::Write, old.find(" 20"));
  EXPECT_EQ(plot->ConfigSave(), 1);
  EXPECT_TRUE(StopFileFaults());
  EXPECT_EQ(files.Read(files.xy), "GRAPHMAGNETIC_XY:10,");
  files.Write(files.xy, other);
  plot->ConfigRead();
  files.Write(files.xy, "GRAPHMAGNETIC_XY:10,");
  EXPECT_EQ(plot->ConfigRead(), 1);
  ExpectCorner(10, 40);
}

TEST_F(ViewFileFaults, AFileThatWasRemovedIsMadeAgain) {
  files.Remove();
  EXPECT_EQ(plot->ConfigSave(), 1);
  EXPECT_EQ(files.Read(files.xy), old);
}

TEST_F(ViewFileFaults, APlotWhoseViewCannotBeKeptFitsItsPointsAllTheSame) {
  FailFileCall(FileCall::Open);
  plot->AddTrackPoint(0, 0, 0);
  plot->AddTrackPoint(300, 150, 0);
  plot->ZoomAll();
  EXPECT_TRUE(StopFileFaults());
  int x = 0;
  int y = 0;
  plot->WorldToClient(150, 75, x, y);
  EXPECT_EQ(x, 100);
  EXPECT_EQ(y, 50);
  EXPECT_EQ(files.Read(files.xy), old);
}

}  // namespace
