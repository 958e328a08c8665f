// Who deletes what: the set its records, each once; the caller the arrays, never the records.

#include <memory>

#include <gtest/gtest.h>

#include "screening/delete_watch.h"
#include "screening/twins.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

template <class Twin>
class RotationOwnership : public ::testing::Test {
 protected:
  // 40 records round a circle, 9 degrees apart.
  void FillTurn(typename Twin::Screening& screening) {
    for (int i = 0; i < 40; ++i) {
      screening.Add(watch.Watch(new PoseSensorData(OnCircle<Twin>(1.0 + 9.0 * i))));
    }
  }

  DeleteWatch watch;
};
TYPED_TEST_SUITE(RotationOwnership, BothTwins, TwinNames);

TYPED_TEST(RotationOwnership, ClearDeletesEachRecordOnce) {
  typename TypeParam::Screening screening;
  this->FillTurn(screening);
  EXPECT_EQ(this->watch.DeletedTimes(0), 40);
  screening.Clear();
  EXPECT_EQ(this->watch.DeletedTimes(1), 40);
}

TYPED_TEST(RotationOwnership, DestructionDeletesEachRecordOnce) {
  {
    typename TypeParam::Screening screening;
    this->FillTurn(screening);
  }
  EXPECT_EQ(this->watch.DeletedTimes(1), 40);
}

TYPED_TEST(RotationOwnership, DestructionAfterClearDeletesNothingAgain) {
  {
    typename TypeParam::Screening screening;
    this->FillTurn(screening);
    screening.Clear();
    screening.Clear();
  }
  EXPECT_EQ(this->watch.DeletedTimes(1), 40);
}

TYPED_TEST(RotationOwnership, ArraysNeverDeleteRecords) {
  typename TypeParam::Screening screening;
  this->FillTurn(screening);
  {
    const Owned filtered(screening.Filter());
    ASSERT_NE(filtered, nullptr);
    const Owned thinned(screening.Select(filtered.get(), 10));
    const Owned all(screening.Select(filtered.get(), 1000));
    const Owned moved(screening.Filter_ByTime(&screening.m_arrRecord));
    const Owned onCircle(screening.Filter_ByDistance(&screening.m_arrRecord));
    const Owned spread(screening.Filter_ByAzimuth(&screening.m_arrRecord));
    PoseSensorDataArray copy = *filtered;
    copy.RemoveAll();
  }
  EXPECT_EQ(this->watch.DeletedTimes(0), 40);
  EXPECT_EQ(screening.m_arrRecord.GetSize(), 40);
}

TYPED_TEST(RotationOwnership, AnArrayMayBeDeletedAfterTheRecordsAreGone) {
  auto screening = std::make_unique<typename TypeParam::Screening>();
  this->FillTurn(*screening);
  const Owned filtered(screening->Filter());
  ASSERT_NE(filtered, nullptr);
  screening.reset();
  EXPECT_EQ(this->watch.DeletedTimes(1), 40);
}

TYPED_TEST(RotationOwnership, ARecordThatTheFiltersDropIsDeletedWithTheOthers) {
  typename TypeParam::Screening screening;
  this->FillTurn(screening);
  screening.Add(this->watch.Watch(new PoseSensorData(OnCircle<TypeParam>(5.0, 1.0))));
  const Owned filtered(screening.Filter());
  screening.Clear();
  EXPECT_EQ(this->watch.DeletedTimes(1), 41);
}

TYPED_TEST(RotationOwnership, ARecordAddedTwiceIsDeletedOnce) {
  typename TypeParam::Screening screening;
  this->FillTurn(screening);
  screening.Add(screening.m_arrRecord.GetAt(3));
  screening.Add(screening.m_arrRecord.GetAt(17));
  EXPECT_EQ(screening.m_arrRecord.GetSize(), 42);
  screening.Clear();
  EXPECT_EQ(this->watch.DeletedTimes(1), 40);
}

TYPED_TEST(RotationOwnership, ClearPassesOverNullEntriesOfTheSet) {
  typename TypeParam::Screening screening;
  this->FillTurn(screening);
  screening.m_arrRecord.Add(nullptr);
  screening.Clear();
  EXPECT_EQ(this->watch.DeletedTimes(1), 40);
  EXPECT_EQ(screening.m_arrRecord.GetSize(), 0);
}

TYPED_TEST(RotationOwnership, ARecordTakenOutOfTheSetIsNotDeleted) {
  typename TypeParam::Screening screening;
  this->FillTurn(screening);
  const std::unique_ptr<PoseSensorData> takenOut(screening.m_arrRecord.GetAt(5));
  screening.m_arrRecord.SetAt(5, nullptr);
  screening.Clear();
  EXPECT_EQ(this->watch.DeletedTimes(1), 39);
  EXPECT_EQ(this->watch.DeletedTimes(0), 1);
}

}  // namespace
