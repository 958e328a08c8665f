// Points are in their file before they count as stored.

#include <filesystem>
#include <sstream>
#include <system_error>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "apps/field/exports.h"
#include "apps/field/point_rows.h"
#include "apps/field/point_store.h"
#include "apps/session/input_error.h"
#include "full_medium.h"
#include "support/temporary_folder.h"

namespace tiltpole::field {
namespace {

using tiltpole_test::TemporaryFolder;

StoredPoint SomePoint() {
  StoredPoint point;
  point.number = 7;
  point.flags = kPoleMoved | kNotCalibrated;
  point.samples = 41;
  point.seconds = 2.05;
  point.position = xyhCoordinate{1000.1234, -2000.5, 50.25};
  point.offset = {0.5, -0.25, -1.9};
  point.sigma_north = 0.004;
  point.sigma_east = 0.003;
  point.sigma_height = 0.002;
  point.semi_major = 0.0045;
  point.semi_minor = 0.0025;
  point.semi_major_azimuth = 12.5;
  point.spread = 0.0011;
  point.tilt = 15.25;
  point.heading = 271.125;
  point.pole_length = 2.0;
  point.calibration = "good";
  point.true_error = 0.0123;
  point.time[0] = 9;
  point.time[1] = 8;
  point.time[2] = 7;
  return point;
}

TEST(PointRow, ReadsBackAsItWasWritten) {
  const std::string row = PointRow(SomePoint());
  EXPECT_EQ(row,
            "7,pole_moved+not_calibrated,41,2.05,1000.1234,-2000.5000,50.2500,0.5000,-0.2500,"
            "-1.9000,0.0040,0.0030,0.0020,0.0045,0.0025,12.500,0.0011,15.250,271.125,2.0000,good,"
            "0.0123,09:08:07\n");
  EXPECT_EQ(PointRow(PointFromRow(row)), row);
}

TEST(PointRow, KeepsAPointWithoutAntennaAndWithoutTruth) {
  StoredPoint point = SomePoint();
  point.position.reset();
  point.true_error.reset();
  point.flags = kNoAntenna;
  const StoredPoint read = PointFromRow(PointRow(point));
  EXPECT_FALSE(read.position);
  EXPECT_FALSE(read.true_error);
  EXPECT_EQ(read.flags, kNoAntenna);
}

TEST(PointRow, IsNoPointWhereverItIsCutOff) {
  const std::string row = PointRow(SomePoint());
  for (std::size_t length = 0; length + 1 < row.size(); ++length) {
    EXPECT_THROW(PointFromRow(row.substr(0, length)), session::InputError) << length;
  }
}

TEST(PointStore, AppendsEachPointAtOnceAndNumbersIt) {
  const TemporaryFolder folder;
  PointStore store(folder.File("p.csv"));
  EXPECT_EQ(folder.Read("p.csv"), PointHeader());
  store.Append(SomePoint());
  store.Append(SomePoint());
  ASSERT_EQ(store.Points().size(), 2U);
  EXPECT_EQ(store.Points()[1].number, 2);
  EXPECT_EQ(folder.Read("p.csv"),
            PointHeader() + PointRow(store.Points()[0]) + PointRow(store.Points()[1]));
}

TEST(PointStore, TakesUpThePointsOfTheDayBefore) {
  const TemporaryFolder folder;
  PointStore(folder.File("p.csv")).Append(SomePoint());
  PointStore store(folder.File("p.csv"));
  ASSERT_EQ(store.Points().size(), 1U);
  store.Append(SomePoint());
  EXPECT_EQ(store.Points()[1].number, 2);
}

TEST(PointStore, LeavesARowThatWasCutOffAndGoesOnBelowIt) {
  const TemporaryFolder folder;
  PointStore(folder.File("p.csv")).Append(SomePoint());
  const std::string cut = folder.Read("p.csv") + "2,ok,41,2.0";
  folder.Write("p.csv", cut);
  {
    PointStore store(folder.File("p.csv"));
    EXPECT_EQ(store.Points().size(), 1U);
    EXPECT_EQ(store.UnreadableRows(), 1);
    store.Append(SomePoint());
  }
  EXPECT_EQ(folder.Read("p.csv").substr(0, cut.size()), cut);
  const PointStore again(folder.File("p.csv"));
  EXPECT_EQ(again.Points().size(), 2U);
  EXPECT_EQ(again.UnreadableRows(), 1);
}

TEST(PointStore, CompletesAHeaderThatWasCutOff) {
  const TemporaryFolder folder;
  folder.Write("p.csv", "point,fl");
  PointStore(folder.File("p.csv")).Append(SomePoint());
  EXPECT_EQ(PointStore(folder.File("p.csv")).Points().size(), 1U);
}

TEST(PointStore, LeavesAFileAloneThatHoldsSomethingElse) {
  const TemporaryFolder folder;
  folder.Write("p.csv", "my other data\n");
  EXPECT_THROW(PointStore store(folder.File("p.csv")), session::InputError);
  EXPECT_EQ(folder.Read("p.csv"), "my other data\n");
}

TEST(PointStore, SaysThatAFolderCannotBeWrittenTo) {
  const TemporaryFolder folder;
  EXPECT_THROW(PointStore store(folder.File("no/such/folder/p.csv")), session::OutputError);
  EXPECT_THROW(PointStore store(""), session::OutputError);
}

TEST(PointStore, RefusesWhatIsNoPlainFile) {
  const TemporaryFolder folder;
  EXPECT_THROW(PointStore store(folder.File(".")), session::InputError);
#ifndef _WIN32
  EXPECT_THROW(PointStore store("/dev/zero"), session::InputError);
#endif
}

TEST(PointStore, KnowsItsFileByAnyName) {
  const TemporaryFolder folder;
  const PointStore store(folder.File("p.csv"));
  EXPECT_TRUE(store.IsAt(folder.File("p.csv")));
  EXPECT_TRUE(store.IsAt(folder.File("./p.csv")));
  EXPECT_TRUE(store.IsAt(std::filesystem::relative(folder.File("p.csv")).u8string()));
  EXPECT_FALSE(store.IsAt(folder.File("q.csv")));
  EXPECT_FALSE(store.IsAt(folder.File("no/p.csv")));
  EXPECT_FALSE(store.IsAt(folder.Write("copy.csv", folder.Read("p.csv"))));
}

TEST(PointStore, KnowsItsFileWhenItWasOpenedByARelativeName) {
  const TemporaryFolder folder;
  const PointStore store(std::filesystem::relative(folder.File("p.csv")).u8string());
  EXPECT_TRUE(store.IsAt(folder.File("p.csv")));
}

TEST(PointStore, KnowsThePlaceOfItsFileWhenThatWasRemoved) {
  const TemporaryFolder folder;
  const PointStore store(std::filesystem::relative(folder.File("p.csv")).u8string());
  std::error_code error;
  if (!std::filesystem::remove(folder.File("p.csv"), error)) {
    GTEST_SKIP() << "this system removes no file that is open";
  }
  EXPECT_TRUE(store.IsAt(folder.File("./p.csv")));
  EXPECT_FALSE(store.IsAt(folder.File("q.csv")));
}

TEST(PointStore, KnowsItsFileOverLinks) {
  const TemporaryFolder folder;
  const PointStore store(folder.File("p.csv"));
  std::error_code error;
  std::filesystem::create_symlink(folder.File("p.csv"), folder.File("link.csv"), error);
  if (!error) std::filesystem::create_hard_link(folder.File("p.csv"), folder.File("q.csv"), error);
  if (error) GTEST_SKIP() << "links: " << error.message();
  EXPECT_TRUE(store.IsAt(folder.File("link.csv")));
  EXPECT_TRUE(store.IsAt(folder.File("q.csv")));
  EXPECT_TRUE(PointStore(folder.File("link.csv")).IsAt(folder.File("p.csv")));
}

#ifndef _WIN32
TEST(PointStore, DoesNotCountAPointThatTheMediumDoesNotTakeAndGoesOnWhenThereIsRoom) {
  const TemporaryFolder folder;
  PointStore store(folder.File("p.csv"));
  store.Append(SomePoint());
  {
    const tiltpole_test::FullMedium full(folder.Read("p.csv").size() + 20);
    EXPECT_THROW(store.Append(SomePoint()), session::OutputError);
    EXPECT_THROW(store.Append(SomePoint()), session::OutputError);
  }
  EXPECT_EQ(store.Points().size(), 1U);
  store.Append(SomePoint());
  EXPECT_EQ(store.Points().size(), 2U);
  const PointStore again(folder.File("p.csv"));
  EXPECT_EQ(again.Points().size(), 2U);
  EXPECT_EQ(again.UnreadableRows(), 1);
}
#endif

TEST(Export, CsvIsThePointsFileAgain) {
  const TemporaryFolder folder;
  PointStore store(folder.File("p.csv"));
  store.Append(SomePoint());
  Export(store.Points(), ExportFormat::Csv, folder.File("out.csv"));
  EXPECT_EQ(folder.Read("out.csv"), folder.Read("p.csv"));
}

TEST(Export, GeoJsonHasEastNorthHeight) {
  std::ostringstream out;
  WriteGeoJson({SomePoint()}, out);
  const auto json = nlohmann::json::parse(out.str());
  EXPECT_EQ(json["type"], "FeatureCollection");
  const auto& feature = json["features"][0];
  EXPECT_EQ(feature["geometry"]["type"], "Point");
  EXPECT_EQ(feature["geometry"]["coordinates"], nlohmann::json({-2000.5, 1000.1234, 50.25}));
  EXPECT_EQ(feature["properties"]["flags"], nlohmann::json({"pole_moved", "not_calibrated"}));
  EXPECT_EQ(feature["properties"]["time"], "09:08:07");
}

TEST(Export, GeoJsonHasNoPlaceForAPointWithoutAntenna) {
  StoredPoint point = SomePoint();
  point.position.reset();
  std::ostringstream out;
  WriteGeoJson({point}, out);
  const auto json = nlohmann::json::parse(out.str());
  EXPECT_TRUE(json["features"][0]["geometry"].is_null());
  EXPECT_EQ(json["features"][0]["properties"]["offset_north"], 0.5);
}

TEST(Export, SaysThatThereIsNoSuchFolder) {
  const TemporaryFolder folder;
  EXPECT_THROW(Export({SomePoint()}, ExportFormat::Csv, folder.File("no/folder.csv")),
               session::OutputError);
}

#ifndef _WIN32
TEST(Export, FailsOnAFullMediumWithoutTouchingTheOldFile) {
  const TemporaryFolder folder;
  folder.Write("old.csv", "old");
  {
    const tiltpole_test::FullMedium full(20);
    EXPECT_THROW(Export({SomePoint()}, ExportFormat::Csv, folder.File("old.csv")),
                 session::OutputError);
  }
  EXPECT_EQ(folder.Read("old.csv"), "old");
  EXPECT_EQ(folder.CountFiles(), 1);
}
#endif

}  // namespace
}  // namespace tiltpole::field
