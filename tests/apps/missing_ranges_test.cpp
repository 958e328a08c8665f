#include "apps/session/missing_ranges.h"

#include <gtest/gtest.h>

namespace tiltpole::session {
namespace {

using Ranges = std::vector<MissingRange>;

TEST(MissingRanges, AreNoneWhereEverySectorIsCovered) {
  EXPECT_EQ(MissingRanges(SectorSet().set(), 5), Ranges());
}

TEST(MissingRanges, AreTheWholeCircleAtTheStart) {
  EXPECT_EQ(MissingRanges(SectorSet(), 5), (Ranges{{0, 360}}));
}

TEST(MissingRanges, JoinThroughNorth) {
  SectorSet covered;
  covered.set();
  covered[0] = covered[1] = covered[71] = covered[20] = false;
  EXPECT_EQ(MissingRanges(covered, 5), (Ranges{{100, 105}, {355, 10}}));
}

TEST(MissingRanges, ThatOnlyBeginOrEndInTheNorthStayApart) {
  SectorSet covered;
  covered.set();
  covered[3] = covered[2] = false;
  EXPECT_EQ(MissingRanges(covered, 90), (Ranges{{180, 360}}));
  covered[3] = true;
  covered[0] = false;
  EXPECT_EQ(MissingRanges(covered, 90), (Ranges{{0, 90}, {180, 270}}));
}

}  // namespace
}  // namespace tiltpole::session
