// From start to exported points with a session file, in a real window; and what can go wrong with
// files.

#include <thread>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "field_session.h"
#include "robot.h"
#include "support/temporary_folder.h"

namespace tiltpole::field {
namespace {

using tiltpole_test::FieldSession;
using tiltpole_test::FieldSessionPlan;
using tiltpole_test::Robot;
using tiltpole_test::TemporaryFolder;

struct ReplayedSession : testing::Test {
  TemporaryFolder folder;
  MainWindow window{2.0};
  Robot robot{window};

  void SetUp() override { window.OpenPoints(QString::fromStdString(folder.File("points.csv"))); }

  void Open(const std::string& content) {
    robot.ChooseFromMenu("source", 0, folder.Write("session.csv", content));
    ASSERT_NE(window.Model().Source(), nullptr);
    robot.SetSpeed(20.0);
  }
  /// Plays both turns, after which a session waits.
  void PlayTurns() {
    robot.Click("play");
    EXPECT_TRUE(robot.WaitUntil(
        [this] { return window.Model().Turn(SampleSet::Vertical).Samples().size() == 360; }));
    EXPECT_TRUE(robot.WaitForText("source_state", "Paused"));
  }
  std::size_t Stored() { return window.Model().Points()->Points().size(); }
  void OtherPoleParameters(const std::string& name) {
    Incline_MagneticCorrectParameter correction;
    correction.x0 = -2500.0;
    correction.y0 = 1800.0;
    correction.b = 1.3;
    CInclineSensor_Position position;
    position.SetMagneticCorrectPar_A(correction);
    position.SetMagneticCorrectPar_B(correction);
    SaveParameters(folder.File(name), position);
  }
};

TEST_F(ReplayedSession, LeadsFromTheTurnsToExportedPoints) {
  Open(FieldSession());
  PlayTurns();
  ASSERT_TRUE(robot.WaitForText("state_vertical", "Samples: 360"));
  robot.Click("adjust");
  ASSERT_TRUE(robot.WaitForText("verdict", "Calibrated: Good"));
  robot.ClickAndType("save_parameters", folder.File("pole"));
  ASSERT_TRUE(robot.WaitForText("notice", "saved"));
  EXPECT_TRUE(folder.Has("pole.txt"));
  robot.Click("notice_seen");

  robot.Click("tab_measure");
  robot.SetSpeed(1.0);
  robot.Click("play");
  for (std::size_t point = 1; point <= 3; ++point) {
    robot.Click("store");
    ASSERT_TRUE(robot.WaitUntil([&] { return Stored() == point; }));
  }
  for (const StoredPoint& point : window.Model().Points()->Points()) {
    EXPECT_EQ(point.flags, 0U) << point.number;
    EXPECT_LT(point.true_error.value_or(9.0), 0.05) << point.number;
  }
  robot.ChooseFromMenu("more", 3, folder.File("out.geojson"));
  ASSERT_TRUE(robot.WaitForText("notice", ": 3"));
  const auto json = nlohmann::json::parse(folder.Read("out.geojson"));
  EXPECT_EQ(json["features"].size(), 3U);
  ASSERT_TRUE(robot.WaitForText("source_state", "ended"));
  EXPECT_EQ(robot.Read("flag_still"), "No samples");
}

TEST_F(ReplayedSession, ShowsWhichDirectionsAreMissingAndWhatToDo) {
  std::string session = FieldSession();
  // Without the rows of the first turn from 40 to 110 degrees.
  std::size_t from = 0;
  for (int line = 0; line < 41; ++line) from = session.find('\n', from) + 1;
  std::size_t to = from;
  for (int line = 0; line < 70; ++line) to = session.find('\n', to) + 1;
  Open(session.erase(from, to - from));
  PlayTurns();
  ASSERT_TRUE(robot.WaitForText("state_horizontal", "Missing: "));
  robot.Click("adjust");
  ASSERT_TRUE(robot.WaitForText("reasons", "Turn the pole through the directions"));
  robot.LookAtBothSizes("field-calibrate-missing");
}

TEST_F(ReplayedSession, SaysWhyACalibrationFailed) {
  FieldSessionPlan plan;
  plan.samples_a_turn = 4;
  plan.points = 0;
  Open(FieldSession(plan));
  robot.Click("play");
  ASSERT_TRUE(robot.WaitForText("source_state", "ended"));
  robot.Click("adjust");
  ASSERT_TRUE(robot.WaitForText("verdict", "failed"));
  EXPECT_NE(robot.Read("reasons").find("4 samples"), std::string::npos) << robot.Read("reasons");
  robot.LookAtBothSizes("field-calibrate-failed");
}

TEST_F(ReplayedSession, SaysWhereASessionIsCutOffAndKeepsEverythingBefore) {
  const std::string whole = FieldSession();
  std::size_t end = 0;
  for (int line = 0; line < 760; ++line) end = whole.find('\n', end) + 1;
  Open(whole.substr(0, end + 25));
  PlayTurns();
  robot.Click("tab_measure");
  robot.Click("store");
  robot.SetSpeed(1.0);
  robot.Click("play");
  ASSERT_TRUE(robot.WaitForText("notice", "cannot be read further"));
  EXPECT_NE(robot.Read("notice").find("session.csv:761"), std::string::npos);
  EXPECT_EQ(window.Model().Turn(SampleSet::Vertical).Samples().size(), 360U);
  EXPECT_EQ(Stored(), 1U);
  EXPECT_EQ(window.Model().Points()->Points()[0].flags, kNotCalibrated | kMagnetometersDisagree);
  robot.LookAtBothSizes("field-measure-cut-off");
}

TEST_F(ReplayedSession, SaysThatAParameterFileBelongsToAnotherPole) {
  FieldSessionPlan plan;
  plan.points = 0;
  Open(FieldSession(plan));
  robot.Click("play");
  ASSERT_TRUE(robot.WaitForText("source_state", "ended"));
  OtherPoleParameters("other.txt");
  robot.ClickAndType("load_parameters", folder.File("other.txt"));
  ASSERT_TRUE(robot.WaitForText("verdict", "These parameters for this pole: Unusable"));
  EXPECT_NE(robot.Read("reasons").find("pole"), std::string::npos);
  robot.LookAtBothSizes("field-calibrate-other-pole");
  robot.Click("tab_measure");
  ASSERT_TRUE(robot.WaitForText("flag_calibration", "CALIBRATION UNUSABLE"));
}

TEST_F(ReplayedSession, SaysThatLoadedParametersWereNotHeldAgainstThisPole) {
  OtherPoleParameters("other.txt");
  robot.ClickAndType("load_parameters", folder.File("other.txt"));
  ASSERT_TRUE(robot.WaitForText("notice", "not known"));
  ASSERT_TRUE(robot.WaitForText("verdict", "Loaded, not checked"));
}

TEST_F(ReplayedSession, RefusesParametersThatCannotBeReadAndKeepsTheOldOnes) {
  robot.ClickAndType("load_parameters", folder.Write("bad.txt", "[MagneticA.a]0.1\r\n"));
  ASSERT_TRUE(robot.WaitForText("notice", "Not loaded"));
  EXPECT_EQ(robot.Read("verdict"), "NOT CALIBRATED");
}

TEST_F(ReplayedSession, RefusesASessionThatIsNone) {
  robot.ChooseFromMenu("source", 0, folder.Write("x.csv", "a,b\n1,2\n"));
  ASSERT_TRUE(robot.WaitForText("notice", "cannot be opened"));
}

TEST_F(ReplayedSession, KeepsTheWindowAliveWhileItCalibrates) {
  std::promise<void> release;
  window.Model().Run().Start([&release] {
    release.get_future().wait();
    return CalibrationOutcome();
  });
  ASSERT_TRUE(robot.WaitForText("verdict", "Working it out"));
  EXPECT_FALSE(robot.See<QPushButton>("load_parameters")->isEnabled());
  robot.Click("tab_measure");
  EXPECT_TRUE(robot.See<QPushButton>("store")->isVisible());
  robot.Click("tab_calibrate");
  EXPECT_TRUE(window.Model().Run().IsRunning());
  release.set_value();
  ASSERT_TRUE(robot.WaitForText("verdict", "failed"));
}

TEST_F(ReplayedSession, IsWorkedByTheKeysOfAHandheldAlone) {
  robot.ChooseFromMenuByKeys("source", 0, folder.Write("session.csv", FieldSession()));
  ASSERT_NE(window.Model().Source(), nullptr);
  robot.PressByKeys("speed");
  EXPECT_EQ(window.Model().Source()->Speed(), 2.0);
  ASSERT_TRUE(robot.PressUntil(
      Qt::Key_F9, [this] { return window.Model().Source()->State() == SourceState::Running; }));
  ASSERT_TRUE(robot.WaitUntil([this] { return window.Model().HasTurns(); }));
  ASSERT_TRUE(robot.PressUntil(
      Qt::Key_F2, [this] { return robot.See<QPushButton>("tab_measure")->isChecked(); }));
  EXPECT_TRUE(robot.See<QPushButton>("store")->isVisible());
  ASSERT_TRUE(robot.PressUntil(Qt::Key_F6, [this] { return Stored() == 1; }));
  EXPECT_NE(window.Model().Points()->Points()[0].flags & kNotCalibrated, 0U);
}

}  // namespace
}  // namespace tiltpole::field
