// From start to exported points with the simulated pole, in a real window.

#include <array>
#include <filesystem>
#include <limits>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "robot.h"
#include "support/temporary_folder.h"

namespace tiltpole::field {
namespace {

using tiltpole_test::Robot;
using tiltpole_test::TemporaryFolder;

struct LivePole : testing::Test {
  TemporaryFolder folder;
  MainWindow window{2.0};
  Robot robot{window};

  void SetUp() override {
    window.OpenPoints(QString::fromStdString(folder.File("points.csv")));
    window.Source().OpenSimulatedPole();
  }

  void RecordBothTurns() {
    const auto complete = [this](SampleSet turn) {
      return [this, turn] { return window.Model().Turn(turn).IsComplete(); };
    };
    robot.SetSpeed(5.0);
    robot.Click("record_horizontal");
    robot.HoldUntil("turn_right", complete(SampleSet::Horizontal));
    robot.Click("record_horizontal");
    robot.Click("record_vertical");
    robot.HoldUntil("turn_over", complete(SampleSet::Vertical));
    robot.Click("record_vertical");
    robot.Click("plumb");
  }

  std::size_t Stored() { return window.Model().Points()->Points().size(); }

  std::array<QWidget*, 3> AllDials() {
    return {window.findChild<QWidget*>("compass"), window.findChild<QWidget*>("gauge_along"),
            window.findChild<QWidget*>("gauge_across")};
  }

  const StoredPoint& StoreOne() {
    const std::size_t before = Stored();
    robot.Click("store");
    EXPECT_TRUE(robot.WaitUntil([this, before] { return Stored() > before; }));
    return window.Model().Points()->Points().back();
  }
};

TEST_F(LivePole, LeadsFromTheTurnsToExportedPoints) {
  robot.LookAtBothSizes("field-calibrate-start");
  RecordBothTurns();
  robot.Click("adjust");
  ASSERT_TRUE(robot.WaitForText("verdict", "Calibrated: "));
  robot.LookAtBothSizes("field-calibrate-done");

  robot.Click("tab_measure");
  robot.DragOnPad({20, -15});
  robot.SetSpeed(5.0);
  const StoredPoint first = StoreOne();
  EXPECT_EQ(first.flags, 0U);
  EXPECT_LT(first.true_error.value_or(9.0), 0.08);
  robot.Click("walk");
  robot.Key("pole_pad", Qt::Key_Home);
  for (int i = 0; i < 4; ++i) robot.Key("pole_pad", Qt::Key_Left, Qt::ShiftModifier);
  for (int i = 0; i < 9; ++i) robot.Key("pole_pad", Qt::Key_Right);
  const StoredPoint second = StoreOne();
  EXPECT_NEAR(second.tilt, 20.0, 0.2);
  EXPECT_EQ(second.flags, 0U);
  EXPECT_LT(second.true_error.value_or(9.0), 0.08);
  robot.LookAtBothSizes("field-measure");

  robot.ChooseFromMenu("more", 2, folder.File("points-out.csv"));
  ASSERT_TRUE(robot.WaitForText("notice", ": 2"));
  robot.Click("notice_seen");
  robot.ChooseFromMenu("more", 3, folder.File("points-out.geojson"));
  ASSERT_TRUE(robot.WaitForText("notice", ": 2"));
  EXPECT_EQ(folder.Read("points-out.csv"), folder.Read("points.csv"));
  const auto json = nlohmann::json::parse(folder.Read("points-out.geojson"));
  ASSERT_EQ(json["features"].size(), 2U);
  EXPECT_NEAR(json["features"][1]["geometry"]["coordinates"][1].get<double>(), 1005.0, 0.08);
}

TEST_F(LivePole, SaysOnTheScreenWhatIsWrongWithAReadingAndOnThePointToo) {
  robot.Click("tab_measure");
  robot.SetSpeed(5.0);
  ASSERT_TRUE(robot.WaitForText("flag_calibration", "NOT CALIBRATED"));
  robot.DragOnPad({0, 25});
  robot.Click("iron");
  ASSERT_TRUE(robot.WaitForText("flag_magnetic", "DISAGREE"));
  const StoredPoint iron = StoreOne();
  EXPECT_EQ(iron.flags, kNotCalibrated | kMagnetometersDisagree);
  robot.HoldUntil("turn_left", [this] { return robot.Read("flag_still") == "MOVING"; });

  // A point is under way while the pole turns; the operator insists.
  const std::size_t before = Stored();
  robot.Click("store");
  robot.HoldUntil("turn_left", [this] { return robot.Read("guidance") == "Hold the pole still."; });
  EXPECT_EQ(Stored(), before);
  robot.Click("store");
  EXPECT_FALSE(window.Model().Average().IsActive());
  robot.Click("store_now");
  ASSERT_TRUE(robot.WaitUntil([this, before] { return Stored() > before; }));
  EXPECT_NE(window.Model().Points()->Points().back().flags & kShortAverage, 0U);
  robot.LookAtBothSizes("field-measure-flags");
}

TEST_F(LivePole, DoesNotExportOverThePointsFileThatWasOpenedByAnotherName) {
  namespace fs = std::filesystem;
  window.OpenPoints(QString::fromStdString(fs::relative(folder.File("points.csv")).u8string()));
  robot.Click("tab_measure");
  robot.SetSpeed(5.0);
  StoreOne();
  robot.ChooseFromMenu("more", 2, folder.File("points.csv"));
  ASSERT_TRUE(robot.WaitForText("notice", "the points file itself"));
  robot.Click("notice_seen");
  StoreOne();
  EXPECT_EQ(PointStore(folder.File("points.csv")).Points().size(), 2U);
}

TEST_F(LivePole, SaysThatNoSamplesArriveAndGoesOnWhenTheyDo) {
  robot.Click("tab_measure");
  robot.Click("unplug");
  ASSERT_TRUE(robot.WaitForText("source_state", "NO SAMPLES"));
  EXPECT_NE(robot.Read("notice").find("No samples arrive"), std::string::npos);
  EXPECT_EQ(robot.Read("flag_still"), "No samples");
  EXPECT_EQ(robot.Read("offset_0"), "–");
  EXPECT_EQ(robot.Read("instead_of_compass"), "No samples");
  for (const QWidget* const dial : AllDials()) EXPECT_FALSE(dial->isVisible());
  EXPECT_FALSE(robot.See<QPushButton>("store_now")->isEnabled());
  robot.LookAtBothSizes("field-measure-silent");
  robot.Click("notice_seen");
  robot.Click("unplug");
  ASSERT_TRUE(robot.WaitForText("source_state", "Running"));
  ASSERT_TRUE(robot.WaitUntil([this] { return robot.Read("offset_0") != "–"; }));
  for (const QWidget* const dial : AllDials()) EXPECT_TRUE(dial->isVisible());
}

TEST_F(LivePole, ShowsNoDialBeforeTheFirstSample) {
  window.Model().Source()->Pause();
  robot.Click("tab_measure");
  ASSERT_TRUE(robot.WaitForText("source_state", "Paused"));
  EXPECT_EQ(robot.Read("instead_of_compass"), "No samples");
  for (const QWidget* const dial : AllDials()) EXPECT_FALSE(dial->isVisible());
}

TEST(DialsOnAPole, ShowNoNeedleForAHeadingThatCannotBeTold) {
  Dials dials(nullptr);
  Reading reading;
  dials.Show(reading);
  dials.show();
  EXPECT_TRUE(dials.findChild<QWidget*>("compass")->isVisible());
  reading.tip.Heading = std::numeric_limits<double>::quiet_NaN();
  dials.Show(reading);
  EXPECT_FALSE(dials.findChild<QWidget*>("compass")->isVisible());
  EXPECT_TRUE(dials.findChild<QWidget*>("gauge_along")->isVisible());
  EXPECT_EQ(dials.findChild<QLabel*>("instead_of_compass")->text(), "No heading");
}

}  // namespace
}  // namespace tiltpole::field
