// Pictures of the controls, as the command line makes them.

#include <QImage>
#include <QRect>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "program.h"
#include "sessions.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole::session::SampleSet;
using tiltpole_test::kSessionHeader;
using tiltpole_test::Only;
using tiltpole_test::ProgramRun;
using tiltpole_test::RunProgram;
using tiltpole_test::Simulated;
using tiltpole_test::TemporaryFolder;

constexpr QRgb kRed = 0xFFFF0000U;    // needle, centres
constexpr QRgb kGreen = 0xFF00FF00U;  // marks, readings in the x-z plane
constexpr QRgb kWhite = 0xFFFFFFFFU;  // readings in the x-y plane

struct Drawn {
  ProgramRun run;
  QImage image;
};

Drawn Draw(std::vector<std::string> arguments, const std::string& standard_input = {}) {
  const TemporaryFolder folder;
  arguments.insert(arguments.begin(), "draw");
  arguments.insert(arguments.end(), {"-o", folder.File("picture.png")});
  Drawn drawn{RunProgram(arguments, standard_input), {}};
  const std::string bytes = folder.Has("picture.png") ? folder.Read("picture.png") : "";
  drawn.image.loadFromData(QByteArray(bytes.data(), static_cast<int>(bytes.size())), "PNG");
  drawn.image = drawn.image.convertToFormat(QImage::Format_ARGB32);
  return drawn;
}

struct Stain {
  int pixels = 0;
  QRect box;
};

Stain Find(const QImage& image, QRgb color) {
  Stain stain;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixel(x, y) != color) continue;
      ++stain.pixels;
      stain.box |= QRect(x, y, 1, 1);
    }
  }
  return stain;
}

TEST(Draw, APictureHasTheSizeAskedFor) {
  EXPECT_EQ(Draw({"compass"}).image.size(), QSize(400, 400));
  EXPECT_EQ(Draw({"gauges"}).image.size(), QSize(240, 400));
  EXPECT_EQ(Draw({"compass", "--size", "301", "200"}).image.size(), QSize(301, 200));
  EXPECT_EQ(Draw({"gauges", "--size", "201", "300"}).image.size(), QSize(201, 300));
  EXPECT_EQ(Draw({"plot", "-", "--size", "222", "111"}, Simulated()).image.size(), QSize(222, 111));
}

TEST(Draw, APictureOfOnePixelIsAPicture) {
  EXPECT_EQ(Draw({"compass", "--size", "1", "1"}).image.size(), QSize(1, 1));
  EXPECT_EQ(Draw({"gauges", "--size", "1", "1"}).image.size(), QSize(1, 1));
}

TEST(Draw, AValueThatIsNoNumberIsWrongUsage) {
  for (const char* const value : {"nan", "inf", "-inf"}) {
    EXPECT_EQ(Draw({"compass", "--value", value}).run.status, 2) << value;
    EXPECT_EQ(Draw({"gauges", "--value", value}).run.status, 2) << value;
  }
}

TEST(Draw, ADashIsStandardOutput) {
  const ProgramRun run = RunProgram({"draw", "compass", "--size", "31", "21", "-o", "-"});
  EXPECT_EQ(run.status, 0);
  const QImage image =
      QImage::fromData(QByteArray(run.out.data(), static_cast<int>(run.out.size())), "PNG");
  EXPECT_EQ(image.size(), QSize(31, 21));
}

TEST(Draw, ASizeThatNoPictureHasIsAnError) {
  for (const char* const width : {"0", "-1", "10001", "wide"}) {
    const auto drawn = Draw({"compass", "--size", width, "300"});
    EXPECT_EQ(drawn.run.status, 2) << width;
    EXPECT_TRUE(drawn.image.isNull()) << width;
  }
}

TEST(Draw, WhatToDrawAndWhereToMustBeSaid) {
  EXPECT_EQ(RunProgram({"draw"}).status, 2);
  EXPECT_EQ(RunProgram({"draw", "clock", "-o", "clock.png"}).status, 2);
  EXPECT_EQ(RunProgram({"draw", "compass"}).status, 2);
}

TEST(Draw, TheNeedleFollowsTheHeading) {
  const Stain north = Find(Draw({"compass", "--value", "0"}).image, kRed);
  const Stain east = Find(Draw({"compass", "--value", "90"}).image, kRed);
  EXPECT_GT(north.pixels, 100);
  EXPECT_GT(north.box.height(), 3 * north.box.width());
  EXPECT_GT(east.box.width(), 3 * east.box.height());
}

TEST(Draw, OppositeHeadingsAreToldApart) {
  EXPECT_NE(Draw({"compass", "--value", "0"}).image, Draw({"compass", "--value", "180"}).image);
  EXPECT_EQ(Draw({"compass", "--value", "37"}).image, Draw({"compass", "--value", "37"}).image);
}

TEST(Draw, AMarkStandsAtItsBearing) {
  EXPECT_EQ(Find(Draw({"compass"}).image, kGreen).pixels, 0);
  const Stain east = Find(Draw({"compass", "--mark", "90"}).image, kGreen);
  EXPECT_GT(east.pixels, 0);
  EXPECT_GT(east.box.left(), 200);
  const Stain both = Find(Draw({"compass", "--mark", "90", "270"}).image, kGreen);
  EXPECT_LT(both.box.left(), 200);
  EXPECT_EQ(both.box.right(), east.box.right());
}

Stain NeedleIn(const std::string& value, int left) {
  return Find(Draw({"gauges", "--value", value}).image.copy(left, 0, 120, 400), kRed);
}

TEST(Draw, TheGaugesShareAWholeTurn) {
  EXPECT_GT(NeedleIn("90", 0).pixels, 20);
  EXPECT_EQ(NeedleIn("90", 120).pixels, 0);
  EXPECT_GT(NeedleIn("270", 120).pixels, 20);
  EXPECT_GT(NeedleIn("180", 0).pixels, 20);
  EXPECT_GT(NeedleIn("180", 120).pixels, 20);
}

TEST(Draw, TheGaugesNeedleFollowsTheInclination) {
  EXPECT_NE(NeedleIn("30", 0).box.center().y(), NeedleIn("150", 0).box.center().y());
  EXPECT_NE(NeedleIn("210", 120).box.center().y(), NeedleIn("330", 120).box.center().y());
}

TEST(Draw, APlotShowsTheTurnInThePlaneAskedFor) {
  const std::string session = Simulated();
  const Stain level = Find(Draw({"plot", "-"}, session).image, kWhite);
  EXPECT_GT(level.pixels, 200);
  EXPECT_GT(level.box.width(), 200);
  EXPECT_GT(level.box.height(), 200);
  const Stain steep =
      Find(Draw({"plot", "-", "--set", "vertical", "--plane", "xz"}, session).image, kGreen);
  EXPECT_GT(steep.pixels, 200);
  EXPECT_GT(steep.box.width(), 200);
  EXPECT_GT(steep.box.height(), 200);
}

TEST(Draw, ACentreIsARedCross) {
  const std::string session = Simulated();
  EXPECT_EQ(Find(Draw({"plot", "-"}, session).image, kRed).pixels, 0);
  EXPECT_GT(Find(Draw({"plot", "-", "--center", "600", "-450", "0"}, session).image, kRed).pixels,
            0);
}

TEST(Draw, ASessionWithoutRowsOfTheSetCannotBeDrawn) {
  const auto drawn =
      Draw({"plot", "-", "--set", "vertical"}, Only(Simulated(), {SampleSet::Horizontal}, 20));
  EXPECT_EQ(drawn.run.status, 1);
  EXPECT_NE(drawn.run.err.find("has no rows of the set vertical"), std::string::npos);
  EXPECT_TRUE(drawn.image.isNull());
}

TEST(Draw, ASessionThatCannotBeReadIsAnError) {
  EXPECT_EQ(Draw({"plot", "no such file.csv"}).run.status, 2);
  const auto drawn =
      Draw({"plot", "-"}, std::string(kSessionHeader) + "horizontal,08:00:00,0,0,x,2,3,4,5,6\n");
  EXPECT_EQ(drawn.run.status, 2);
  EXPECT_NE(drawn.run.err.find("column mag_x_a"), std::string::npos) << drawn.run.err;
  EXPECT_EQ(Draw({"plot", "-", "--plane", "yz"}, Simulated()).run.status, 2);
}

TEST(Draw, IntoAMissingFolderIsAnError) {
  const TemporaryFolder folder;
  const auto run = RunProgram({"draw", "compass", "-o", folder.File("missing/compass.png")});
  EXPECT_EQ(run.status, 2);
  EXPECT_NE(run.err.find("cannot be opened for writing"), std::string::npos) << run.err;
  EXPECT_EQ(folder.CountFiles(), 0);
}

TEST(Draw, AnOldPictureStaysWhenTheNewOneCannotBeMade) {
  const TemporaryFolder folder;
  folder.Write("plot.png", "old");
  const auto run = RunProgram({"draw", "plot", "-", "-o", folder.File("plot.png")}, kSessionHeader);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(folder.Read("plot.png"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}

TEST(Draw, ANewPictureTakesTheOldOnesPlace) {
  const TemporaryFolder folder;
  folder.Write("compass.png", "old");
  EXPECT_EQ(RunProgram({"draw", "compass", "-o", folder.File("compass.png")}).status, 0);
  EXPECT_EQ(folder.Read("compass.png").substr(1, 3), "PNG");
  EXPECT_EQ(folder.CountFiles(), 1);
}

}  // namespace
