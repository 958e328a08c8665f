// The whole host without its windows.

#include "apps/field/field_model.h"

#include <thread>

#include <gtest/gtest.h>

#include "apps/field/replay_source.h"
#include "apps/field/simulated_source.h"
#include "apps/session/input_error.h"
#include "field_session.h"
#include "full_medium.h"
#include "support/temporary_folder.h"

namespace tiltpole::field {
namespace {

using tiltpole_test::FieldSession;
using tiltpole_test::FieldSessionPlan;
using tiltpole_test::TemporaryFolder;

struct Field : testing::Test {
  TemporaryFolder folder;
  FieldModel model{2.0};
  SimulatedSource* pole = nullptr;

  void UseSession(const FieldSessionPlan& plan = {}) {
    model.SetSource(std::make_unique<ReplaySource>(folder.Write("s.csv", FieldSession(plan))));
    model.Source()->Play();
  }
  void UsePole(std::uint64_t seed = 1) {
    auto source = std::make_unique<SimulatedSource>(seed, 2.0);
    pole = source.get();
    model.SetSource(std::move(source));
  }
  void Let(double seconds) {
    for (double t = 0.0; t < seconds; t += 0.1) model.Advance(0.1);
  }
  void TurnThePole() {
    model.Record(SampleSet::Horizontal);
    pole->SetTurning(36.0);
    Let(10.0);
    pole->SetTurning(0.0);
    model.Record(SampleSet::Vertical);
    pole->SetTurningOver(36.0);
    Let(10.0);
    pole->SetTurningOver(0.0);
    model.Record(std::nullopt);
    pole->StandPlumb();
  }
  void WaitForOutcome() {
    while (model.Run().IsRunning()) {
      model.Advance(0.0);
      std::this_thread::yield();
    }
  }
  void Calibrate() {
    TurnThePole();
    model.StartAdjust();
    WaitForOutcome();
  }
  StoredPoint Store(double most_seconds = 5.0) {
    if (model.Points() == nullptr) model.OpenPoints(folder.File("p.csv"));
    model.StartPoint(1.0);
    Let(most_seconds);
    EXPECT_EQ(model.TakeStoringResult(), StoringResult::Stored);
    return model.Points()->Points().back();
  }
};

TEST_F(Field, SortsASessionsTurnsItself) {
  UseSession();
  Let(80.0);
  EXPECT_EQ(model.Turn(SampleSet::Horizontal).Samples().size(), 360U);
  EXPECT_EQ(model.Turn(SampleSet::Vertical).Samples().size(), 360U);
}

TEST_F(Field, RecordsTheTurnThatTheOperatorNamesForALivePole) {
  UsePole();
  Let(1.0);
  EXPECT_FALSE(model.HasTurns());
  model.Record(SampleSet::Vertical);
  Let(1.0);
  EXPECT_GT(model.Turn(SampleSet::Vertical).Samples().size(), 15U);
  EXPECT_TRUE(model.Turn(SampleSet::Horizontal).Samples().empty());
}

TEST_F(Field, CalibratesALivePoleWell) {
  UsePole();
  Calibrate();
  ASSERT_TRUE(model.Outcome());
  EXPECT_TRUE(model.Outcome()->fitted);
  EXPECT_EQ(model.Outcome()->quality.Result, Verdict::Good);
  EXPECT_TRUE(model.Calibration().calibrated);
}

TEST_F(Field, FailsWithReasonsAndKeepsTheParametersInForce) {
  UsePole();
  Calibrate();
  const double before = model.Calibration().position.GetMagneticCorrectPar_A().x0;
  model.ClearTurns();
  model.Record(SampleSet::Horizontal);
  Let(0.3);
  model.StartAdjust();
  WaitForOutcome();
  ASSERT_TRUE(model.Outcome());
  EXPECT_FALSE(model.Outcome()->fitted);
  EXPECT_FALSE(model.Outcome()->quality.Reasons.empty());
  EXPECT_FALSE(model.Outcome()->messages.empty());
  EXPECT_TRUE(model.Calibration().calibrated);
  EXPECT_EQ(model.Calibration().position.GetMagneticCorrectPar_A().x0, before);
}

TEST_F(Field, StoresAPointNearTheTruthWithoutARemark) {
  UsePole();
  Calibrate();
  pole->PushOver(25.0, 130.0);
  const StoredPoint point = Store();
  EXPECT_EQ(point.flags, 0U);
  EXPECT_LT(point.true_error.value_or(9.0), 0.03);
  EXPECT_EQ(point.calibration, "good");
}

TEST_F(Field, StoresNothingWhileThePoleTurns) {
  UsePole();
  Calibrate();
  model.OpenPoints(folder.File("p.csv"));
  pole->PushOver(20.0, 0.0);
  pole->SetTurning(90.0);
  model.StartPoint(1.0);
  Let(20.0);
  EXPECT_TRUE(model.Points()->Points().empty());
  model.StorePointNow();
  ASSERT_EQ(model.Points()->Points().size(), 1U);
  EXPECT_NE(model.Points()->Points()[0].flags & kPoleMoved, 0U);
}

TEST_F(Field, SaysThatIronWasNearAPoint) {
  UsePole();
  Calibrate();
  pole->PushOver(20.0, 45.0);
  pole->SetIron(true);
  EXPECT_EQ(Store().flags, kMagnetometersDisagree);
}

TEST_F(Field, DoesNotTakeAPoleThatLeansToTheNorthForADisturbedOne) {
  UsePole();
  Calibrate();
  pole->PushOver(20.0, 0.0);
  EXPECT_EQ(Store().flags, 0U);
}

TEST_F(Field, SaysOfEveryPointWithoutACalibrationThatThereIsNone) {
  UsePole();
  pole->PushOver(20.0, 45.0);
  EXPECT_NE(Store().flags & kNotCalibrated, 0U);
}

TEST_F(Field, SaysThatASourceHasFallenSilentAndStoresNothingFromItsLastReading) {
  UsePole();
  Calibrate();
  model.OpenPoints(folder.File("p.csv"));
  pole->SetUnplugged(true);
  Let(1.5);
  EXPECT_FALSE(model.IsSilent());
  Let(1.0);
  EXPECT_TRUE(model.IsSilent());
  EXPECT_FALSE(model.Live());
  model.StorePointNow();
  EXPECT_EQ(model.TakeStoringResult(), StoringResult::NotTold);
  pole->SetUnplugged(false);
  Let(0.3);
  EXPECT_FALSE(model.IsSilent());
  EXPECT_TRUE(model.Live());
}

TEST_F(Field, APausedSourceIsNotSilent) {
  UsePole();
  model.Source()->Pause();
  Let(10.0);
  EXPECT_FALSE(model.IsSilent());
}

TEST_F(Field, KeepsWhatWasAveragedWhenTheSessionEnds) {
  FieldSessionPlan plan;
  plan.points = 1;
  plan.samples_a_point = 15;
  UseSession(plan);
  Let(80.0);
  model.OpenPoints(folder.File("p.csv"));
  model.StartPoint(10.0);
  model.Source()->Play();
  Let(5.0);
  EXPECT_EQ(model.Source()->State(), SourceState::Ended);
  EXPECT_FALSE(model.Live());
  model.StorePointNow();
  EXPECT_EQ(model.TakeStoringResult(), StoringResult::Stored);
  EXPECT_NE(model.Points()->Points()[0].flags & kShortAverage, 0U);
}

TEST_F(Field, FindsThatLoadedParametersBelongToAnotherPole) {
  UsePole();
  TurnThePole();
  CInclineSensor_Position of_another;
  Incline_MagneticCorrectParameter correction;
  correction.x0 = -2500.0;
  correction.y0 = 1800.0;
  correction.z0 = 900.0;
  correction.b = 1.3;
  of_another.SetMagneticCorrectPar_A(correction);
  of_another.SetMagneticCorrectPar_B(correction);
  SaveParameters(folder.File("other.txt"), of_another);
  model.SetCalibration(LoadParameters(folder.File("other.txt")).state);
  EXPECT_TRUE(model.Calibration().calibrated);
  model.StartCheck();
  WaitForOutcome();
  EXPECT_EQ(model.Outcome()->quality.Result, Verdict::Unusable);
  bool said = false;
  for (const QualityReason& reason : model.Outcome()->quality.Reasons) {
    said = said || reason.Code == QualityCode::ParametersOfAnotherPole;
  }
  EXPECT_TRUE(said);
  EXPECT_NE(Store().flags & kNotCalibrated, 0U);
}

TEST_F(Field, SavedParametersAreTheSameAfterLoading) {
  UsePole();
  Calibrate();
  SaveParameters(folder.File("pole.txt"), model.Calibration().position);
  const LoadedParameters loaded = LoadParameters(folder.File("pole.txt"));
  EXPECT_TRUE(loaded.warnings.empty());
  EXPECT_NEAR(loaded.state.position.GetMagneticCorrectPar_B().z0,
              model.Calibration().position.GetMagneticCorrectPar_B().z0, 1e-9);
  EXPECT_EQ(NameOf(loaded.state), "not checked");
}

TEST_F(Field, DoesNotTakeAParameterFileThatWasCutOff) {
  UsePole();
  Calibrate();
  SaveParameters(folder.File("pole.txt"), model.Calibration().position);
  const std::string whole = folder.Read("pole.txt");
  folder.Write("cut.txt", whole.substr(0, whole.size() / 2));
  EXPECT_THROW(LoadParameters(folder.File("cut.txt")), session::InputError);
}

#ifndef _WIN32
TEST_F(Field, KeepsAPointOutOfTheTableThatTheFileDoesNotTake) {
  UsePole();
  Store();
  {
    const tiltpole_test::FullMedium full(folder.Read("p.csv").size() + 20);
    model.StorePointNow();
  }
  EXPECT_EQ(model.TakeStoringResult(), StoringResult::NotWritten);
  EXPECT_NE(model.StoringFault().find("does not take the point"), std::string::npos);
  EXPECT_EQ(model.Points()->Points().size(), 1U);
}
#endif

TEST_F(Field, StoresNothingWithoutAPointsFile) {
  UsePole();
  Let(1.0);
  model.StorePointNow();
  EXPECT_EQ(model.TakeStoringResult(), StoringResult::NotWritten);
  EXPECT_EQ(model.StoringFault(), "no points file is open");
}

TEST(CalibrationRun, LeavesItsOwnerFreeMeanwhile) {
  std::promise<void> release;
  CalibrationRun run;
  run.Start([&release] {
    release.get_future().wait();
    return CalibrationOutcome();
  });
  EXPECT_TRUE(run.IsRunning());
  EXPECT_FALSE(run.Finished());
  release.set_value();
  while (run.IsRunning()) {
    if (run.Finished()) break;
  }
  EXPECT_FALSE(run.IsRunning());
}

}  // namespace
}  // namespace tiltpole::field
