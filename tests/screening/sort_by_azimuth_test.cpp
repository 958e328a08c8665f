// Sorting by azimuth: the exchange sort's exact result, and the marks of repeats.

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "screening/twins.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using MaybeAzimuth = std::optional<double>;  // none is a null entry

Records WithAzimuths(const std::vector<MaybeAzimuth>& azimuths) {
  Records records;
  for (const MaybeAzimuth& azimuth : azimuths) {
    if (azimuth.has_value()) {
      records.Add(PoseSensorData()).Azimuth = *azimuth;
    } else {
      records.AddNull();
    }
  }
  return records;
}

// The order and the flags to be met, as the rule has them word by word.
void ExchangeSort(PoseSensorDataArray& arr) {
  const int size = arr.GetSize();
  for (int i = 0; i + 1 < size; ++i) {
    if (arr[i] == nullptr) continue;
    for (int j = i + 1; j < size; ++j) {
      if (arr[j] == nullptr || !(arr[j]->Azimuth < arr[i]->Azimuth)) continue;
      PoseSensorData* held = arr[i];
      arr[i] = arr[j];
      arr[j] = held;
    }
  }
}

std::vector<int> FlagsAfterMarking(const PoseSensorDataArray& sorted) {
  std::vector<int> flags;
  for (int i = 0; i < sorted.GetSize(); ++i) {
    if (sorted.GetAt(i) == nullptr) {
      flags.push_back(-1);
    } else if (i == 0 || sorted.GetAt(i - 1) == nullptr) {
      flags.push_back(sorted.GetAt(i)->Forward);
    } else {
      flags.push_back(sorted.GetAt(i)->Azimuth - sorted.GetAt(i - 1)->Azimuth < 1e-6 ? 0 : 1);
    }
  }
  return flags;
}

std::vector<int> Flags(const PoseSensorDataArray& arr) {
  std::vector<int> flags;
  for (const PoseSensorData* rec : arr) flags.push_back(rec == nullptr ? -1 : rec->Forward);
  return flags;
}

std::string Shown(const std::vector<MaybeAzimuth>& azimuths) {
  std::ostringstream shown;
  for (const MaybeAzimuth& azimuth : azimuths) {
    if (azimuth.has_value()) {
      shown << *azimuth << ' ';
    } else {
      shown << "null ";
    }
  }
  return shown.str();
}

testing::AssertionResult SortsLikeTheExchangeSort(const std::vector<MaybeAzimuth>& azimuths) {
  Records records = WithAzimuths(azimuths);
  PoseSensorDataArray expected = *records.Array();
  ExchangeSort(expected);
  const std::vector<int> expectedFlags = FlagsAfterMarking(expected);

  ScreeningXY().Sort_ByAzimuth(records.Array());

  if (records.PlacesOf(*records.Array()) != records.PlacesOf(expected)) {
    return testing::AssertionFailure() << "another order for " << Shown(azimuths);
  }
  if (Flags(*records.Array()) != expectedFlags) {
    return testing::AssertionFailure() << "other flags for " << Shown(azimuths);
  }
  return testing::AssertionSuccess();
}

// Every sequence of this length over these values.
void CompareEverySequence(const std::vector<MaybeAzimuth>& values, std::size_t length) {
  std::vector<std::size_t> digits(length, 0);
  for (;;) {
    std::vector<MaybeAzimuth> sequence;
    sequence.reserve(length);
    for (const std::size_t digit : digits) sequence.push_back(values[digit]);
    ASSERT_TRUE(SortsLikeTheExchangeSort(sequence));
    std::size_t place = 0;
    while (place < length && ++digits[place] == values.size()) digits[place++] = 0;
    if (place == length) return;
  }
}

template <class Twin>
class RotationSort : public ::testing::Test {
 protected:
  std::vector<int> OrderOf(const std::vector<MaybeAzimuth>& azimuths) {
    records = WithAzimuths(azimuths);
    screening.Sort_ByAzimuth(records.Array());
    return records.PlacesOf(*records.Array());
  }

  Records records;
  typename Twin::Screening screening;
};
TYPED_TEST_SUITE(RotationSort, BothTwins, TwinNames);

using Order = std::vector<int>;

TYPED_TEST(RotationSort, SortsAscendingAndMarksTheRepeat) {
  EXPECT_EQ(this->OrderOf({30.0, 10.0, 10.0, 20.0}), (Order{1, 2, 3, 0}));
  EXPECT_EQ(Flags(*this->records.Array()), (Order{1, 0, 1, 1}));
}

TYPED_TEST(RotationSort, IgnoresANullArray) {
  auto* later = new PoseSensorData();
  auto* earlier = new PoseSensorData();
  this->screening.Add(later);
  this->screening.Add(earlier);
  later->Azimuth = 20.0;
  earlier->Azimuth = 10.0;
  this->screening.Sort_ByAzimuth(nullptr);
  EXPECT_EQ(this->screening.m_arrRecord.GetAt(0), later);
  EXPECT_EQ(this->screening.m_arrRecord.GetAt(1), earlier);
}

TYPED_TEST(RotationSort, TakesAnEmptyArray) { EXPECT_EQ(this->OrderOf({}), Order{}); }

TYPED_TEST(RotationSort, ASmallerRecordSendsTheFirstOfTwoEqualOnesBehindTheOther) {
  EXPECT_EQ(this->OrderOf({2.0, 2.0, 1.0}), (Order{2, 1, 0}));
}

TYPED_TEST(RotationSort, ASmallerRecordBetweenTwoEqualOnesLeavesTheirOrder) {
  EXPECT_EQ(this->OrderOf({2.0, 1.0, 2.0}), (Order{1, 0, 2}));
}

TYPED_TEST(RotationSort, ALargerRecordLeavesTheOrderOfEqualOnes) {
  EXPECT_EQ(this->OrderOf({2.0, 3.0, 2.0, 3.0, 2.0}), (Order{0, 2, 4, 3, 1}));
}

TYPED_TEST(RotationSort, NullEntriesNeverMove) {
  EXPECT_EQ(this->OrderOf({{}, 3.0, {}, 2.0, 1.0, {}}), (Order{-1, 2, -1, 1, 0, -1}));
}

TYPED_TEST(RotationSort, RecordsWhoseAzimuthIsNotANumberNeverMove) {
  EXPECT_EQ(this->OrderOf({kNaN, 3.0, kNaN, 2.0, 1.0, kNaN}), (Order{0, 4, 2, 3, 1, 5}));
}

TYPED_TEST(RotationSort, InfiniteAzimuthsSortToTheEnds) {
  EXPECT_EQ(this->OrderOf({kInfinity, 1.0, -kInfinity}), (Order{2, 1, 0}));
}

TYPED_TEST(RotationSort, TheTwoZerosAreEqual) {
  EXPECT_EQ(this->OrderOf({0.0, -0.0, 1.0}), (Order{0, 1, 2}));
  EXPECT_EQ(this->OrderOf({0.0, -0.0, -1.0}), (Order{2, 1, 0}));
}

TYPED_TEST(RotationSort, AStepBelowTheEpsilonIsARepeat) {
  const double below = std::nextafter(1e-6, 0.0);
  this->OrderOf({0.0, below});
  EXPECT_EQ(Flags(*this->records.Array()), (Order{1, 0}));
  this->OrderOf({0.0, 1e-6});
  EXPECT_EQ(Flags(*this->records.Array()), (Order{1, 1}));
}

TYPED_TEST(RotationSort, SetsTheFlagOfARecordThatIsNoRepeat) {
  this->records = WithAzimuths({1.0, 2.0});
  this->records[1].Forward = 0;
  this->screening.Sort_ByAzimuth(this->records.Array());
  EXPECT_EQ(this->records[1].Forward, 1);
}

TYPED_TEST(RotationSort, TheFirstRecordKeepsItsFlag) {
  this->records = WithAzimuths({2.0, 1.0});
  this->records[1].Forward = 7;
  this->screening.Sort_ByAzimuth(this->records.Array());
  EXPECT_EQ(this->records[1].Forward, 7);
}

TYPED_TEST(RotationSort, ARecordAfterANullEntryKeepsItsFlag) {
  this->records = WithAzimuths({1.0, {}, 1.0});
  this->records[1].Forward = 7;
  this->screening.Sort_ByAzimuth(this->records.Array());
  EXPECT_EQ(this->records[1].Forward, 7);
}

TYPED_TEST(RotationSort, ARecordAfterOneWithoutANumberIsNoRepeat) {
  this->OrderOf({kNaN, 1.0});
  EXPECT_EQ(Flags(*this->records.Array()), (Order{1, 1}));
}

TEST(RotationSort, GivesTheExchangeSortsResultForEveryShortSequence) {
  for (std::size_t length = 0; length <= 6; ++length) {
    CompareEverySequence({1.0, 2.0, 3.0, std::nullopt, kNaN}, length);
  }
}

TEST(RotationSort, GivesTheExchangeSortsResultForEverySequenceOfThreeValues) {
  for (std::size_t length = 7; length <= 9; ++length) CompareEverySequence({1.0, 2.0, 3.0}, length);
}

TEST(RotationSort, GivesTheExchangeSortsResultForEverySequenceOfZerosAndInfinities) {
  for (std::size_t length = 2; length <= 6; ++length) {
    CompareEverySequence({0.0, -0.0, kInfinity, -kInfinity}, length);
  }
}

TEST(RotationSort, GivesTheExchangeSortsResultForLongArraysWithManyTies) {
  std::mt19937 random(20240607);
  for (const unsigned values : {2U, 3U, 7U, 40U, 1000U}) {
    std::vector<MaybeAzimuth> azimuths;
    for (int i = 0; i < 1500; ++i) {
      const auto drawn = random() % (values + 2);
      if (drawn == values) {
        azimuths.emplace_back(std::nullopt);
      } else {
        azimuths.emplace_back(drawn > values ? kNaN : static_cast<double>(drawn) * 0.36);
      }
    }
    EXPECT_TRUE(SortsLikeTheExchangeSort(azimuths));
  }
}

// The arrays on which turning the queue record by record would take longest.
TEST(RotationSort, GivesTheExchangeSortsResultWhereSmallerRecordsAlternateWithEqualOnes) {
  std::vector<MaybeAzimuth> azimuths;
  for (int i = 0; i < 700; ++i) {
    azimuths.emplace_back(2.0);
    azimuths.emplace_back(i % 3 == 0 ? 1.0 : 1.0 - i * 1e-3);
  }
  EXPECT_TRUE(SortsLikeTheExchangeSort(azimuths));
}

TEST(RotationSort, GivesTheExchangeSortsResultForRandomArrays) {
  EXPECT_TRUE(rc::check([](const std::vector<std::uint8_t>& drawn) {
    std::vector<MaybeAzimuth> azimuths;
    for (const std::uint8_t value : drawn) {
      if (value % 16 == 15) {
        azimuths.emplace_back(value < 128 ? MaybeAzimuth() : MaybeAzimuth(kNaN));
      } else {
        const int eighth = value / 8;  // many azimuths alike
        azimuths.emplace_back(eighth * 11.25);
      }
    }
    RC_ASSERT(bool(SortsLikeTheExchangeSort(azimuths)));
  }));
}

}  // namespace
