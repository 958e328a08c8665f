#include <limits>

#include <gtest/gtest.h>

#include "tiltpole/controls/MagneticPoint.h"

using tiltpole::InWholeCounts;
using tiltpole::MagneticPoint;

namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

void ExpectPoint(const MagneticPoint& point, int x, int y, int z) {
  EXPECT_EQ(point.x, x);
  EXPECT_EQ(point.y, y);
  EXPECT_EQ(point.z, z);
}

}  // namespace

TEST(MagneticPoint, AReadingLosesItsFractions) {
  ExpectPoint(InWholeCounts(611.9, -452.9, 0.9), 611, -452, 0);
}

TEST(MagneticPoint, AReadingBeyondAnIntBecomesItsNearestEnd) {
  ExpectPoint(InWholeCounts(1e300, -1e300, 2147483648.0), kMax, kMin, kMax);
  ExpectPoint(InWholeCounts(kInfinity, -kInfinity, -2147483649.0), kMax, kMin, kMin);
}

TEST(MagneticPoint, TheEndsOfAnIntAreKept) {
  ExpectPoint(InWholeCounts(2147483647.0, 2147483647.5, 2147483646.0), kMax, kMax, kMax - 1);
  ExpectPoint(InWholeCounts(-2147483648.0, -2147483648.5, -2147483647.0), kMin, kMin, kMin + 1);
}

TEST(MagneticPoint, AComponentThatIsNoNumberIs0AndTheOthersStay) {
  ExpectPoint(InWholeCounts(kNaN, 2.0, 3.0), 0, 2, 3);
  ExpectPoint(InWholeCounts(1.0, -kNaN, 3.0), 1, 0, 3);
  ExpectPoint(InWholeCounts(1.0, 2.0, kNaN), 1, 2, 0);
}
