// Every allocation fails in turn while a turn is screened and judged: std::bad_alloc leaves the
// operation, what it was given is as it was, and the operation can be repeated.

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "faults/allocation_fixture.h"
#include "support/allocations.h"
#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/parameter_check.h"
#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"

namespace {

using namespace tiltpole;
using tiltpole_test::Allocations;
using tiltpole_test::Ended;
using tiltpole_test::FailEachAllocation;
using tiltpole_test::IdealTurns;
using tiltpole_test::RunWithFailure;

template <class Screening>
class ScreeningAllocations : public Allocations {
 protected:
  static void AddTurn(Screening& screening) {
    for (int i = 0; i < 89; ++i) Add(screening, i);
  }
  static void Add(Screening& screening, int i) {
    auto rec = std::make_unique<PoseSensorData>();
    rec->MagneticX_A = 1000.0 * std::sin(0.07 * i + 0.01);
    rec->MagneticY_A = 1000.0 * std::cos(0.07 * i + 0.01);
    rec->MagneticZ_A = rec->MagneticY_A;
    screening.Add(rec.get());
    static_cast<void>(rec.release());
  }
};

using BothScreenings = ::testing::Types<CInclineSensor_Filter_XY, CInclineSensor_Filter_XZ>;
struct ScreeningNames {
  template <class Screening>
  static std::string GetName(int index) {
    return index == 0 ? "XY" : "XZ";
  }
};
TYPED_TEST_SUITE(ScreeningAllocations, BothScreenings, ScreeningNames);

TYPED_TEST(ScreeningAllocations, ARecordThatCannotBeAddedStaysTheHosts) {
  // The 64th record is the first beyond the room for so many; the 90th fits the centre.
  for (const int records : {0, 64, 89}) {
    FailEachAllocation([&](long after) {
      TypeParam screening;
      for (int i = 0; i < records; ++i) this->Add(screening, i);
      const int rate = screening.GetRecordRate();
      auto rec = std::make_unique<PoseSensorData>();
      const Ended ended = RunWithFailure(after, [&] { screening.Add(rec.get()); });
      if (ended == Ended::Thrown) {
        EXPECT_EQ(screening.GetRecordRate(), rate);
      } else {
        static_cast<void>(rec.release());
      }
      return ended;
    });
  }
}

TYPED_TEST(ScreeningAllocations, AFilterThatHadNoRoomCanBeRepeated) {
  TypeParam undisturbed;
  this->AddTurn(undisturbed);
  const std::unique_ptr<PoseSensorDataArray> expected(undisturbed.Filter());
  ASSERT_NE(expected, nullptr);
  const int complete = undisturbed.IsComplete(expected.get());
  const long failures = FailEachAllocation([&](long after) {
    TypeParam screening;
    this->AddTurn(screening);
    std::unique_ptr<PoseSensorDataArray> kept;
    const Ended ended = RunWithFailure(after, [&] { kept.reset(screening.Filter()); });
    if (ended != Ended::Done) kept.reset(screening.Filter());
    EXPECT_EQ(kept->GetSize(), expected->GetSize());
    EXPECT_EQ(screening.IsComplete(kept.get()), complete);
    return ended;
  });
  EXPECT_GT(failures, 3);
}

TYPED_TEST(ScreeningAllocations, ASelectionThatHadNoRoomChangesNothing) {
  TypeParam screening;
  this->AddTurn(screening);
  const std::unique_ptr<PoseSensorDataArray> kept(screening.Filter());
  const int size = kept->GetSize();
  const long failures = FailEachAllocation([&](long after) {
    std::unique_ptr<PoseSensorDataArray> selected;
    const Ended ended =
        RunWithFailure(after, [&] { selected.reset(screening.Select(kept.get(), 20)); });
    EXPECT_EQ(selected != nullptr, ended == Ended::Done);
    EXPECT_EQ(kept->GetSize(), size);
    return ended;
  });
  EXPECT_GT(failures, 1);
}

// The order of equal azimuths needs room of its own for each of them.
TYPED_TEST(ScreeningAllocations, AnArrayThatCannotBeSortedKeepsItsOrderAndItsMarks) {
  std::vector<PoseSensorData> records(30);
  double azimuth = 300.0;
  for (PoseSensorData& rec : records) {
    rec.Azimuth = 30.0 * std::ceil(azimuth / 30.0);
    azimuth -= 10.0;
  }
  const long failures = FailEachAllocation([&](long after) {
    PoseSensorDataArray arr;
    for (PoseSensorData& rec : records) {
      rec.Forward = 7;
      arr.Add(&rec);
    }
    TypeParam screening;
    const Ended ended = RunWithFailure(after, [&] { screening.Sort_ByAzimuth(&arr); });
    if (ended == Ended::Thrown) {
      int place = 0;
      for (const PoseSensorData& rec : records) EXPECT_EQ(arr[place++], &rec) << "after " << after;
      for (const PoseSensorData& rec : records) EXPECT_EQ(rec.Forward, 7) << "after " << after;
    } else {
      EXPECT_EQ(ended, Ended::Done);
      EXPECT_EQ(arr[0]->Azimuth, 30.0);
      EXPECT_EQ(arr[29]->Azimuth, 300.0);
    }
    return ended;
  });
  EXPECT_GT(failures, 10);
}

TEST_F(Allocations, AJudgementThatHadNoRoomThrows) {
  const tiltpole_test::Session samples = IdealTurns();
  const long judged = FailEachAllocation([&](long after) {
    return RunWithFailure(
        after, [&] { JudgeCalibration(samples.horizontal, samples.vertical, {}, {}, {}); });
  });
  EXPECT_GT(judged, 3);
  const std::vector<std::wstring> messages = {L"The ellipse fitting fails, please recalibrate!"};
  const long failed = FailEachAllocation([&](long after) {
    return RunWithFailure(
        after, [&] { JudgeFailedCalibration(samples.horizontal, samples.vertical, messages); });
  });
  EXPECT_GT(failed, 3);
}

TEST_F(Allocations, ACheckOfParametersThatHadNoRoomThrowsAndFindsTheSameWhenRepeated) {
  std::vector<PoseSensorData> samples = IdealTurns().horizontal;
  Incline_MagneticCorrectParameter foreign;
  foreign.x0 = 1000.0;
  const std::size_t findings = CheckParameters(samples, foreign, {}).size();
  ASSERT_GT(findings, 0U);
  const long failures = FailEachAllocation([&](long after) {
    std::size_t found = 0;
    const Ended ended =
        RunWithFailure(after, [&] { found = CheckParameters(samples, foreign, {}).size(); });
    EXPECT_NE(ended, Ended::Coped);
    EXPECT_EQ(found, ended == Ended::Done ? findings : 0U);
    return ended;
  });
  EXPECT_GT(failures, 10);
}

}  // namespace
