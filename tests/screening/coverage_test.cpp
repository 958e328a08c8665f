// How complete a turn is: sectors of the circle, and gaps between neighbours.

#include <climits>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "screening/twins.h"
#include "tiltpole/screening/covered_sectors.h"

namespace {

using namespace tiltpole;
using namespace tiltpole::test;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

template <class Twin>
class RotationCoverage : public ::testing::Test {
 protected:
  // Coverage counts the azimuths as they stand, so they can be set.
  void AddAt(double azimuth) {
    auto* rec = new PoseSensorData();
    rec->Azimuth = azimuth;
    screening.m_arrRecord.Add(rec);
  }
  void AddInEachSectorOfFive(int count) {
    for (int i = 0; i < count; ++i) AddAt(5.0 * i + 2.5);
  }

  typename Twin::Screening screening;
};
TYPED_TEST_SUITE(RotationCoverage, BothTwins, TwinNames);

TYPED_TEST(RotationCoverage, OfAnEmptySetIsNothing) {
  EXPECT_EQ(this->screening.GetRecordRate(), 0);
  EXPECT_EQ(this->screening.IsRecordOK(), 0);
}

TYPED_TEST(RotationCoverage, IsCompleteWithOneRecordInEachSector) {
  this->AddInEachSectorOfFive(72);
  EXPECT_EQ(this->screening.IsRecordOK(), 1);
  EXPECT_EQ(this->screening.GetRecordRate(), 100);
}

TYPED_TEST(RotationCoverage, IsNotCompleteWithOneSectorMissing) {
  this->AddInEachSectorOfFive(71);
  this->AddAt(2.5);
  EXPECT_EQ(this->screening.IsRecordOK(), 0);
  EXPECT_EQ(this->screening.GetRecordRate(), 99);
}

TYPED_TEST(RotationCoverage, FewerRecordsThanSectorsAreNeverEnough) {
  // With sectors of 100 degrees three are asked for; of 130 degrees, two.
  this->AddAt(50.0);
  this->AddAt(150.0);
  this->screening.m_nSectorAngle = 100;
  EXPECT_EQ(this->screening.IsRecordOK(), 0);
  this->screening.m_nSectorAngle = 130;
  EXPECT_EQ(this->screening.IsRecordOK(), 1);

  this->screening.Clear();
  this->screening.m_nSectorAngle = 5;
  this->AddInEachSectorOfFive(71);
  EXPECT_EQ(this->screening.IsRecordOK(), 0);
}

TYPED_TEST(RotationCoverage, NullEntriesCountAsRecordsButFillNothing) {
  this->AddInEachSectorOfFive(71);
  this->screening.m_arrRecord.Add(nullptr);
  EXPECT_EQ(this->screening.IsRecordOK(), 0);
  EXPECT_EQ(this->screening.GetRecordRate(), 99);
}

TYPED_TEST(RotationCoverage, HalfTheSectorsAreFiftyPercent) {
  this->AddInEachSectorOfFive(36);
  EXPECT_EQ(this->screening.GetRecordRate(), 50);
}

TYPED_TEST(RotationCoverage, IsRoundedHalfUp) {
  this->AddInEachSectorOfFive(1);
  EXPECT_EQ(this->screening.GetRecordRate(), 1);  // 1.39
  this->AddAt(7.0);
  EXPECT_EQ(this->screening.GetRecordRate(), 3);  // 2.78
  this->screening.m_nSectorAngle = 9;
  EXPECT_EQ(this->screening.GetRecordRate(), 3);  // 2.5
}

TYPED_TEST(RotationCoverage, EveryShareOfTheCircleIsRoundedHalfUp) {
  this->screening.m_nSectorAngle = 1;
  for (int filled = 1; filled <= 360; ++filled) {
    this->AddAt(filled - 0.5);
    EXPECT_EQ(this->screening.GetRecordRate(), static_cast<int>(filled * 100.0 / 360.0 + 0.5));
  }
}

TYPED_TEST(RotationCoverage, SeveralRecordsFillASectorOnce) {
  for (const double azimuth : {1.0, 2.0, 3.0, 4.0, 4.999}) this->AddAt(azimuth);
  EXPECT_EQ(this->screening.GetRecordRate(), 1);
}

TYPED_TEST(RotationCoverage, ARecordOnASectorBorderFillsNoSector) {
  for (int border = 0; border <= 360; border += 5) this->AddAt(border);
  EXPECT_EQ(this->screening.m_arrRecord.GetSize(), 73);
  EXPECT_EQ(this->screening.GetRecordRate(), 0);
  EXPECT_EQ(this->screening.IsRecordOK(), 0);
}

TYPED_TEST(RotationCoverage, ARecordJustInsideABorderFillsItsOwnSector) {
  for (int i = 0; i < 72; ++i) this->AddAt(std::nextafter(5.0 * (i + 1), 0.0));
  EXPECT_EQ(this->screening.GetRecordRate(), 100);
  this->screening.Clear();
  for (int i = 0; i < 72; ++i) this->AddAt(std::nextafter(5.0 * i, 360.0));
  EXPECT_EQ(this->screening.GetRecordRate(), 100);
  EXPECT_EQ(this->screening.IsRecordOK(), 1);
}

TYPED_TEST(RotationCoverage, AzimuthsOutsideTheCircleFillNothing) {
  for (const double azimuth : {kNaN, kInfinity, -kInfinity, -2.5, 360.0000001, 362.5, 1e300}) {
    this->AddAt(azimuth);
  }
  EXPECT_EQ(this->screening.GetRecordRate(), 0);
}

TYPED_TEST(RotationCoverage, CountsWhatTheHostHasWrittenIntoTheRecords) {
  this->AddInEachSectorOfFive(2);
  this->screening.m_arrRecord.GetAt(1)->Azimuth = 2.0;
  EXPECT_EQ(this->screening.GetRecordRate(), 1);
}

TYPED_TEST(RotationCoverage, WithoutASectorAngleIsNothing) {
  this->AddInEachSectorOfFive(72);
  for (const int angle : {0, -1, -5, -360, -361, INT_MIN}) {
    this->screening.m_nSectorAngle = angle;
    EXPECT_EQ(this->screening.GetRecordRate(), 0);
    EXPECT_EQ(this->screening.IsRecordOK(), 0);
  }
}

TYPED_TEST(RotationCoverage, SectorsThatDoNotDivideTheCircleLeaveARestOfItOut) {
  // 51 sectors of 7 degrees end at 357.
  this->screening.m_nSectorAngle = 7;
  for (int i = 0; i < 51; ++i) this->AddAt(7.0 * i + 3.5);
  EXPECT_EQ(this->screening.IsRecordOK(), 1);
  EXPECT_EQ(this->screening.GetRecordRate(), 99);
  this->AddAt(358.0);
  EXPECT_EQ(this->screening.GetRecordRate(), 99);
}

TYPED_TEST(RotationCoverage, OneSectorCanBeTheWholeCircle) {
  this->screening.m_nSectorAngle = 360;
  EXPECT_EQ(this->screening.IsRecordOK(), 0);
  this->AddAt(180.0);
  EXPECT_EQ(this->screening.IsRecordOK(), 1);
  EXPECT_EQ(this->screening.GetRecordRate(), 100);
}

TYPED_TEST(RotationCoverage, AnAngleBeyondTheCircleLeavesNoSectorThatCouldBeMissing) {
  for (const int angle : {361, 720, INT_MAX}) {
    this->screening.m_nSectorAngle = angle;
    EXPECT_EQ(this->screening.IsRecordOK(), 1);
    EXPECT_EQ(this->screening.GetRecordRate(), 0);
  }
}

TYPED_TEST(RotationCoverage, CanBeToldSectorBySector) {
  for (const double azimuth : {2.5, 10.0, 182.0, 359.9}) this->AddAt(azimuth);
  this->screening.m_arrRecord.Add(nullptr);
  SectorSet expected;
  expected[0] = expected[36] = expected[71] = true;
  EXPECT_EQ(CoveredSectors(this->screening.m_arrRecord, 5), expected);
  EXPECT_EQ(CoveredSectors(this->screening.m_arrRecord, 0), SectorSet());
  EXPECT_EQ(CoveredSectors(this->screening.m_arrRecord, 361), SectorSet());
}

// The rule word by word, one pass over the set for each sector.
int SectorsHitOneByOne(const PoseSensorDataArray& arr, int width) {
  int hit = 0;
  for (int i = 0; i < 360 / width; ++i) {
    bool isHit = false;
    for (const PoseSensorData* rec : arr) {
      isHit = isHit || (i * width < rec->Azimuth && rec->Azimuth < (i + 1) * width);
    }
    if (isHit) ++hit;
  }
  return hit;
}

TEST(RotationCoverage, OnePassCountsTheSectorsThatOneByOneAreHit) {
  EXPECT_TRUE(rc::check([](const std::vector<std::int16_t>& drawn) {
    PoseSensorDataArray arr;
    ScreeningXY screening;
    for (const std::int16_t value : drawn) {
      auto* rec = new PoseSensorData();
      screening.m_arrRecord.Add(rec);
      // Whole degrees and half ones from -20 to 379, and their neighbours among the doubles.
      const double degrees = (value / 4 % 400) * 0.5 + 90.0;
      const double neighbours[] = {degrees, std::nextafter(degrees, -1e9),
                                   std::nextafter(degrees, 1e9), degrees * 1.9};
      rec->Azimuth = neighbours[value & 3];
    }
    screening.m_nSectorAngle = *rc::gen::inRange(1, 400);
    const int width = screening.m_nSectorAngle;
    const int hit = SectorsHitOneByOne(screening.m_arrRecord, width);
    const bool isEnough = screening.m_arrRecord.GetSize() >= 360 / width;
    RC_ASSERT(screening.GetRecordRate() == static_cast<int>(hit * width * 100.0 / 360.0 + 0.5));
    RC_ASSERT(screening.IsRecordOK() == (isEnough && hit == 360 / width ? 1 : 0));
    RC_ASSERT(CoveredSectors(screening.m_arrRecord, width).count() == std::size_t(hit));
  }));
}

template <class Twin>
void CheckThatCoverageNeverFallsBetweenFits(const std::vector<std::uint16_t>& drawn) {
  typename Twin::Screening screening;
  int before = 0;
  for (const std::uint16_t value : drawn) {
    const double radius = 500.0 + value % 100;
    screening.Add(new PoseSensorData(OnCircle<Twin>(value % 3600 * 0.1, radius)));
    const int rate = screening.GetRecordRate();
    const bool isFit = screening.m_arrRecord.GetSize() % 10 == 0;
    RC_ASSERT(isFit || rate >= before);
    before = rate;
  }
}

TEST(RotationCoverage, NeverFallsWhileRecordsAreAddedBetweenTwoFits) {
  EXPECT_TRUE(rc::check([](const std::vector<std::uint16_t>& drawn) {
    CheckThatCoverageNeverFallsBetweenFits<XY>(drawn);
    CheckThatCoverageNeverFallsBetweenFits<XZ>(drawn);
  }));
}

template <class Twin>
double AzimuthAboutOrigin(PoseSensorData rec) {
  typename Twin::Screening screening;
  screening.m_CenterPar = Twin::Center(0.0, 0.0, 0.0, 1.0);
  screening.Calculate_Azimuth_One(&rec);
  return rec.Azimuth;
}

// A reading whose azimuth about the origin is exactly this: nudged until it is.
template <class Twin>
PoseSensorData ExactlyAt(double azimuth) {
  for (double radius = 1000.0; radius < 1001.0; radius += 1.0 / 64) {
    PoseSensorData rec = OnCircle<Twin>(azimuth, radius);
    const double start = rec.MagneticX_A;
    for (const double towards : {-1e9, 1e9}) {
      rec.MagneticX_A = start;
      for (int nudge = 0; nudge < 20; ++nudge) {
        if (AzimuthAboutOrigin<Twin>(rec) == azimuth) return rec;
        rec.MagneticX_A = std::nextafter(rec.MagneticX_A, towards);
      }
    }
  }
  ADD_FAILURE() << "found no reading at " << azimuth;
  return {};
}

// The next reading beyond this azimuth, which lies in the first quadrant.
template <class Twin>
PoseSensorData JustBeyond(double azimuth) {
  PoseSensorData rec = ExactlyAt<Twin>(azimuth);
  while (AzimuthAboutOrigin<Twin>(rec) <= azimuth) {
    rec.MagneticX_A = std::nextafter(rec.MagneticX_A, 1e9);
  }
  return rec;
}

// The reading on the other side of the origin: with both, the middle of the box is the origin.
PoseSensorData Opposite(PoseSensorData rec) {
  rec.MagneticX_A = -rec.MagneticX_A;
  rec.MagneticY_A = -rec.MagneticY_A;
  rec.MagneticZ_A = -rec.MagneticZ_A;
  return rec;
}

template <class Twin>
class RotationCompleteness : public ::testing::Test {
 protected:
  int IsComplete(Records records) {
    const int complete = screening.IsComplete(records.Array());
    for (const PoseSensorData* rec : *records.Array()) azimuths.push_back(rec->Azimuth);
    screening.m_pPrevRecord = nullptr;
    return complete;
  }

  typename Twin::Screening screening;
  std::vector<double> azimuths;
};
TYPED_TEST_SUITE(RotationCompleteness, BothTwins, TwinNames);

TYPED_TEST(RotationCompleteness, GapsOfExactlySixtyDegreesAreAllowed) {
  const PoseSensorData at10 = ExactlyAt<TypeParam>(10.0);
  const PoseSensorData at70 = ExactlyAt<TypeParam>(70.0);
  const PoseSensorData at130 = ExactlyAt<TypeParam>(130.0);
  EXPECT_EQ(this->IsComplete({at10, at70, at130, Opposite(at10), Opposite(at70), Opposite(at130)}),
            1);
  EXPECT_EQ(this->azimuths, (std::vector<double>{10.0, 70.0, 130.0, 190.0, 250.0, 310.0}));
}

TYPED_TEST(RotationCompleteness, AGapBeyondSixtyDegreesIsNot) {
  const PoseSensorData at10 = ExactlyAt<TypeParam>(10.0);
  const PoseSensorData at70 = JustBeyond<TypeParam>(70.0);
  const PoseSensorData at130 = ExactlyAt<TypeParam>(130.0);
  EXPECT_EQ(this->IsComplete({at10, at70, at130, Opposite(at10), Opposite(at70), Opposite(at130)}),
            0);
}

TYPED_TEST(RotationCompleteness, AGapOfSeventyDegreesIsFound) {
  const PoseSensorData at10 = OnCircle<TypeParam>(10.0);
  const PoseSensorData at80 = OnCircle<TypeParam>(80.0);
  const PoseSensorData at130 = OnCircle<TypeParam>(130.0);
  const PoseSensorData inside45 = OnCircle<TypeParam>(45.0, 500.0);
  const PoseSensorData inside225 = OnCircle<TypeParam>(225.0, 500.0);
  EXPECT_EQ(this->IsComplete(
                {at10, at80, at130, Opposite(at10), inside225, Opposite(at80), Opposite(at130)}),
            0);
  EXPECT_EQ(this->IsComplete({at10, inside45, at80, at130, Opposite(at10), inside225,
                              Opposite(at80), Opposite(at130)}),
            1);
}

TYPED_TEST(RotationCompleteness, AStepBackBeyondSixtyDegreesIsAGapAsWell) {
  const PoseSensorData at45 = OnCircle<TypeParam>(45.0);
  EXPECT_EQ(this->IsComplete({Opposite(at45), at45}), 0);
}

TYPED_TEST(RotationCompleteness, TheGapRoundFromTheLastToTheFirstIsNotLookedAt) {
  // From 320 to 40 degrees nothing is covered. Four readings touch a box about the origin.
  Records records = {TypeParam::Reading(839.1, 1000.0), TypeParam::Reading(1000.0, 87.5),
                     OnCircle<TypeParam>(140.0),        TypeParam::Reading(-87.5, -1000.0),
                     OnCircle<TypeParam>(230.0),        TypeParam::Reading(-1000.0, 87.5),
                     OnCircle<TypeParam>(320.0)};
  EXPECT_EQ(this->screening.IsComplete(records.Array()), 1);
}

TYPED_TEST(RotationCompleteness, OfANullArrayIsNotGiven) {
  EXPECT_EQ(this->screening.IsComplete(nullptr), 0);
}

TYPED_TEST(RotationCompleteness, OfAnArrayWithoutRecordsIsGiven) {
  PoseSensorDataArray arr;
  EXPECT_EQ(this->screening.IsComplete(&arr), 1);
  arr.Add(nullptr);
  EXPECT_EQ(this->screening.IsComplete(&arr), 1);
}

TYPED_TEST(RotationCompleteness, PassesOverNullEntries) {
  Records records;
  records.Add(OnCircle<TypeParam>(45.0));
  records.AddNull();
  records.Add(OnCircle<TypeParam>(225.0));
  EXPECT_EQ(this->screening.IsComplete(records.Array()), 0);
}

TYPED_TEST(RotationCompleteness, ReplacesTheCentreByThatOfTheArray) {
  this->screening.m_CenterPar = TypeParam::Center(1e6, 1e6, 1e6, 1.0);
  Records records = {TypeParam::Reading(3.0, 4.0), TypeParam::Reading(5.0, 8.0)};
  this->screening.IsComplete(records.Array());
  EXPECT_EQ(this->screening.GetCenterPar().CenterX, 4.0);
  EXPECT_EQ(this->screening.GetCenterPar().Radius, std::sqrt(5.0));
  EXPECT_EQ(this->screening.m_pPrevRecord, &records[1]);
}

}  // namespace
