#include "apps/tiltpole/quantiles.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "apps/session/random.h"

namespace {

using tiltpole::cli::Quantiles;

TEST(Quantiles, AreNotNumbersWithoutValues) {
  const Quantiles none;
  EXPECT_TRUE(std::isnan(none.At(0.5)));
  EXPECT_TRUE(std::isnan(none.Largest()));
  EXPECT_EQ(none.Count(), 0u);
}

TEST(Quantiles, AreTheSmallestValueThatTheShareDoesNotExceed) {
  Quantiles values;
  for (const double value : {4.0, 1.0, 3.0, 2.0}) values.Add(value);
  EXPECT_EQ(values.At(0.0), 1.0);
  EXPECT_EQ(values.At(0.5), 2.0);
  EXPECT_EQ(values.At(0.51), 3.0);
  EXPECT_EQ(values.At(0.95), 4.0);
  EXPECT_EQ(values.Largest(), 4.0);
}

TEST(Quantiles, CountWhatIsNoNumberApart) {
  Quantiles values;
  values.Add(std::nan(""));
  values.Add(7.0);
  EXPECT_EQ(values.Count(), 1u);
  EXPECT_EQ(values.NotANumberCount(), 1u);
  EXPECT_EQ(values.At(0.5), 7.0);
}

TEST(Quantiles, StayWithinAThousandthWhereThereAreManyValues) {
  tiltpole::session::Random random(5);
  Quantiles values;
  std::vector<double> all;
  for (std::size_t i = 0; i < 3 * Quantiles::kExactCount; ++i) {
    all.push_back(std::fabs(random.Normal()) * 0.01);
    values.Add(all.back());
  }
  std::sort(all.begin(), all.end());
  EXPECT_NEAR(values.At(0.5) / all[all.size() / 2 - 1], 1.0, 1e-3);
  EXPECT_NEAR(values.At(0.95) / all[all.size() * 95 / 100 - 1], 1.0, 1e-3);
  EXPECT_EQ(values.Largest(), all.back());
}

TEST(Quantiles, OneValueBeyondTheExactCountChangesLittle) {
  Quantiles exact;
  Quantiles binned;
  for (std::size_t i = 1; i <= Quantiles::kExactCount; ++i) {
    exact.Add(static_cast<double>(i));
    binned.Add(static_cast<double>(i));
  }
  binned.Add(1.0);
  EXPECT_EQ(exact.At(0.5), 10000.0);
  EXPECT_NEAR(binned.At(0.5), 10000.0, 10.0);
}

TEST(Quantiles, HoldZeroInfinityAndTheEndsOfTheRange) {
  Quantiles values;
  for (std::size_t i = 0; i <= Quantiles::kExactCount; ++i) values.Add(0.0);
  for (const double value : {1e-300, 1e300, std::numeric_limits<double>::infinity()}) {
    values.Add(value);
  }
  EXPECT_LT(values.At(0.5), 1e-11);
  EXPECT_TRUE(std::isinf(values.Largest()));
}

}  // namespace
