// Whole turns, against the screening written a second time and against the truth of the turn.

#include <cmath>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "screening/plain_screening.h"
#include "screening/twins.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

template <class Twin>
constexpr PlainScreening::Turn kPlainTurn = PlainScreening::Turn::XY;
template <>
constexpr PlainScreening::Turn kPlainTurn<XZ> = PlainScreening::Turn::XZ;

// A turn as an operator makes it: unevenly, with rests, steps back, noise in whole counts, a few
// readings disturbed, over midnight.
std::vector<PlainRow> OperatorsTurn(int count, unsigned seed) {
  std::mt19937 random(seed);
  const auto uniform = [&random](double from, double to) {
    return from + (to - from) * (static_cast<double>(random() >> 5) / 134217728.0);
  };
  std::vector<PlainRow> rows;
  double direction = uniform(0.0, 6.0);
  double milliseconds = (86400.0 - 0.05 * count) * 1000.0;
  int resting = 0;
  for (int i = 0; i < count; ++i) {
    if (resting == 0 && uniform(0.0, 1.0) < 0.02) resting = 30;
    resting = resting > 0 ? resting - 1 : 0;
    direction += resting > 0 ? 0.0 : uniform(-0.02, 0.06);
    milliseconds += 100.0;
    const bool isDisturbed = uniform(0.0, 1.0) < 0.03;
    PlainRow row;
    row.first = std::round(340.0 + 4000.0 * std::sin(direction) + uniform(-40.0, 40.0) +
                           (isDisturbed ? uniform(-900.0, 900.0) : 0.0));
    row.second = std::round(-520.0 + 4000.0 * std::cos(direction) + uniform(-40.0, 40.0));
    row.third =
        std::round(-150.0 + uniform(-60.0, 60.0) + (isDisturbed ? uniform(-400.0, 400.0) : 0.0));
    row.second_of_day = static_cast<int>(milliseconds / 1000.0) % 86400;
    rows.push_back(row);
  }
  return rows;
}

template <class Twin>
PoseSensorData* NewRecord(const PlainRow& row) {
  auto* rec = new PoseSensorData(Twin::Reading(row.first, row.second, row.third));
  rec->Tag[0] = row.second_of_day / 3600;
  rec->Tag[1] = row.second_of_day / 60 % 60;
  rec->Tag[2] = row.second_of_day % 60;
  return rec;
}

// One turn in both writings.
template <class Twin>
class BothWritings {
 public:
  void Add(const PlainRow& row) {
    plain.Add(row);
    screening.Add(NewRecord<Twin>(row));
  }

  Rows RowsOf(const PoseSensorDataArray* arr) const {
    Rows rows;
    if (arr == nullptr) return rows;
    for (const PoseSensorData* rec : *arr) rows.push_back(RowOf(rec));
    return rows;
  }

  testing::AssertionResult AgreeOnAzimuthAndForward() const {
    for (int i = 0; i < screening.m_arrRecord.GetSize(); ++i) {
      const PoseSensorData& rec = *screening.m_arrRecord.GetAt(i);
      const PlainRow& row = plain.Table()[static_cast<std::size_t>(i)];
      if (rec.Azimuth != row.azimuth || rec.Forward != row.forward) {
        return testing::AssertionFailure()
               << "record " << i << ": " << rec.Azimuth << ", " << rec.Forward << " and "
               << row.azimuth << ", " << row.forward;
      }
    }
    return testing::AssertionSuccess();
  }

  typename Twin::Screening screening;
  PlainScreening plain{kPlainTurn<Twin>};

 private:
  int RowOf(const PoseSensorData* rec) const {
    for (int i = 0; i < screening.m_arrRecord.GetSize(); ++i) {
      if (screening.m_arrRecord.GetAt(i) == rec) return i;
    }
    return -1;
  }
};

template <class Twin>
class RotationWholeTurn : public ::testing::Test {};
TYPED_TEST_SUITE(RotationWholeTurn, BothTwins, TwinNames);

TYPED_TEST(RotationWholeTurn, GivesTheSameRecordsAzimuthsAndFlagsAsThePlainWriting) {
  BothWritings<TypeParam> both;
  for (const PlainRow& row : OperatorsTurn(1205, 7)) both.Add(row);
  ASSERT_TRUE(both.AgreeOnAzimuthAndForward());
  EXPECT_EQ(both.screening.GetRecordRate(), both.plain.GetRecordRate());
  EXPECT_EQ(both.screening.IsRecordOK(), both.plain.IsRecordOK() ? 1 : 0);

  const Owned filtered(both.screening.Filter());
  const Rows filteredRows = both.plain.Filter();
  EXPECT_GT(filteredRows.size(), 300U);
  EXPECT_LT(filteredRows.size(), 1100U);
  EXPECT_EQ(both.RowsOf(filtered.get()), filteredRows);
  ASSERT_TRUE(both.AgreeOnAzimuthAndForward());

  const Owned selected(both.screening.Select(filtered.get(), 40));
  const Rows selectedRows = both.plain.Select(filteredRows, 40);
  EXPECT_GE(selectedRows.size(), 40U);
  EXPECT_EQ(both.RowsOf(selected.get()), selectedRows);

  EXPECT_EQ(both.screening.IsComplete(selected.get()), both.plain.IsComplete(selectedRows) ? 1 : 0);
  EXPECT_TRUE(both.AgreeOnAzimuthAndForward());
  EXPECT_EQ(both.RowsOf(&both.screening.m_arrRecord).size(), 1205U);
}

TYPED_TEST(RotationWholeTurn, AgreesWithThePlainWritingAfterEveryAdd) {
  BothWritings<TypeParam> both;
  for (const PlainRow& row : OperatorsTurn(150, 3)) {
    both.Add(row);
    ASSERT_TRUE(both.AgreeOnAzimuthAndForward());
    ASSERT_EQ(both.screening.GetRecordRate(), both.plain.GetRecordRate());
    ASSERT_EQ(both.screening.IsRecordOK(), both.plain.IsRecordOK() ? 1 : 0);
  }
}

template <class Twin>
void CheckAgainstThePlainWriting(const std::vector<std::uint16_t>& drawn, int n) {
  BothWritings<Twin> both;
  for (const std::uint16_t value : drawn) {
    // Few places, so that azimuths repeat and readings lie on the axes.
    PlainRow row;
    row.first = (value % 9 - 4) * 100.0;
    row.second = (value / 9 % 9 - 4) * 100.0;
    row.third = (value / 81 % 5 - 2) * 60.0;
    row.second_of_day = 86390 + value / 405 % 20;
    row.second_of_day %= 86400;
    both.Add(row);
  }
  const Owned filtered(both.screening.Filter());
  const Rows filteredRows = both.plain.Filter();
  RC_ASSERT(both.RowsOf(filtered.get()) == filteredRows);
  RC_ASSERT(bool(both.AgreeOnAzimuthAndForward()));
  if (filtered == nullptr) return;

  const Owned selected(both.screening.Select(filtered.get(), n));
  RC_ASSERT(both.RowsOf(selected.get()) == both.plain.Select(filteredRows, n));
  RC_ASSERT((both.screening.IsComplete(filtered.get()) == 1) ==
            both.plain.IsComplete(filteredRows));
  RC_ASSERT(bool(both.AgreeOnAzimuthAndForward()));
}

TEST(RotationWholeTurn, AgreesWithThePlainWritingForAnyTurn) {
  EXPECT_TRUE(rc::check([] {
    const auto drawn = *rc::gen::container<std::vector<std::uint16_t>>(
        *rc::gen::inRange<std::size_t>(0, 120), rc::gen::arbitrary<std::uint16_t>());
    const int n = *rc::gen::inRange(1, 50);
    CheckAgainstThePlainWriting<XY>(drawn, n);
    CheckAgainstThePlainWriting<XZ>(drawn, n);
  }));
}

// A turn without noise, whose centre, radius, level and directions are known.
TYPED_TEST(RotationWholeTurn, FindsTheCircleOfACleanTurn) {
  typename TypeParam::Screening screening;
  const int count = 720;
  for (int i = 0; i < count; ++i) {
    const PoseSensorData offset = OnCircle<TypeParam>(0.5 * i + 0.25, 3000.0);
    auto* rec = new PoseSensorData(TypeParam::Reading(0.0, 0.0, 77.0));
    rec->MagneticX_A += 250.0 + offset.MagneticX_A;
    rec->MagneticY_A += offset.MagneticY_A;
    rec->MagneticZ_A += offset.MagneticZ_A;
    screening.Add(rec);
  }
  EXPECT_EQ(screening.GetRecordRate(), 100);
  EXPECT_EQ(screening.IsRecordOK(), 1);

  const Owned filtered(screening.Filter());
  ASSERT_NE(filtered, nullptr);
  // Neighbours lie 26.2 counts apart, and no time passes: every second sample counts as moved.
  EXPECT_EQ(filtered->GetSize(), count / 2 - 1);
  const PoseSensorCenterParameter expected = TypeParam::Center(250.0, 0.0, 77.0, 3000.0);
  const PoseSensorCenterParameter center = screening.GetCenterPar();
  EXPECT_NEAR(center.CenterX, expected.CenterX, 0.03);
  EXPECT_NEAR(center.CenterY, expected.CenterY, 0.03);
  EXPECT_NEAR(center.CenterZ, expected.CenterZ, 0.03);
  EXPECT_NEAR(center.Radius, expected.Radius, 0.03);
  for (int i = 0; i < filtered->GetSize(); ++i) {
    EXPECT_NEAR(filtered->GetAt(i)->Azimuth, i + 0.25, 1e-3);
  }
  EXPECT_EQ(screening.IsComplete(filtered.get()), 1);
}

TYPED_TEST(RotationWholeTurn, FilterOfAnEmptySetIsANullArray) {
  typename TypeParam::Screening screening;
  EXPECT_EQ(screening.Filter(), nullptr);
}

TYPED_TEST(RotationWholeTurn, FilterGivesTheFirstRecordsTheirAzimuthsToo) {
  typename TypeParam::Screening screening;
  screening.Add(new PoseSensorData(OnCircle<TypeParam>(45.0)));
  screening.Add(new PoseSensorData(OnCircle<TypeParam>(225.0)));
  const Owned filtered(screening.Filter());
  EXPECT_EQ(screening.GetCenterPar().Valid, 1);
  ASSERT_NE(filtered, nullptr);
  // The last sample is never kept.
  ASSERT_EQ(filtered->GetSize(), 1);
  EXPECT_EQ(filtered->GetAt(0), screening.m_arrRecord.GetAt(0));
  EXPECT_NEAR(filtered->GetAt(0)->Azimuth, 45.0, 1e-9);
}

// Sorting leaves the flag of the record that comes first, here the one that was a step back.
TYPED_TEST(RotationWholeTurn, FilterCountsTheFlagThatTheFirstSortedRecordBroughtAlong) {
  typename TypeParam::Screening screening;
  screening.Add(new PoseSensorData(OnCircle<TypeParam>(225.0)));
  screening.Add(new PoseSensorData(OnCircle<TypeParam>(45.0)));
  EXPECT_EQ(screening.Filter(), nullptr);
}

TYPED_TEST(RotationWholeTurn, FilterLeavesTheOrderOfTheSet) {
  typename TypeParam::Screening screening;
  std::vector<PoseSensorData*> added;
  for (const double azimuth : {300.0, 200.0, 100.0, 10.0}) {
    added.push_back(new PoseSensorData(OnCircle<TypeParam>(azimuth)));
    screening.Add(added.back());
  }
  const Owned filtered(screening.Filter());
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(screening.m_arrRecord.GetAt(i), added[static_cast<std::size_t>(i)]);
  }
}

}  // namespace
