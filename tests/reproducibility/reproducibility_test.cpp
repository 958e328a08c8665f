// The same bits on every target, and where the platform's trigonometric functions decide, no more
// difference than docs/reproducibility.md states.
//
// With TILTPOLE_WRITE_REFERENCES set in the environment the tables are written anew.

#include <cmath>
#include <cstdio>

#include <gtest/gtest.h>

#include "reproducibility/findings.h"
#include "reproducibility/limits.h"
#include "reproducibility/tables.h"

namespace {

using tiltpole_test::Digest;
using tiltpole_test::Findings;
using tiltpole_test::Table;

const Findings& TheFindings() {
  static const Findings findings = [] {
    Findings made;
    RunPositions(made);
    RunScreenings(made);
    RunCalibrations(made);
    RunMatrices(made);
    RunTransformations(made);
    return made;
  }();
  return findings;
}

TEST(Reproducibility, TheBatteryReachesBothOutcomesOfEverything) {
  for (const auto& [name, count] : TheFindings().counts) {
    std::printf("%-30s %6d\n", name.c_str(), count);
  }
  auto counts = TheFindings().counts;
  EXPECT_GE(counts["calibrations that succeed"], 40);
  EXPECT_LT(counts["calibrations that succeed"], 50);
  for (const char* twin : {"Filter_XY: records kept", "Filter_XZ: records kept"}) {
    EXPECT_GT(counts[twin], 20000);
  }
  for (const char* flag : {"samples that stand still", "samples with interference"}) {
    EXPECT_GT(counts[flag], 1000);
    EXPECT_LT(counts[flag], 99000);
  }
}

Table TableOf(const std::map<std::string, Digest>& digests) {
  Table table;
  for (const auto& [name, digest] : digests) {
    table[name].push_back(tiltpole_test::Hex(digest.Value()));
  }
  return table;
}

void HoldAgainst(const std::string& file, const std::string& heading,
                 const std::map<std::string, Digest>& digests) {
  const Table found = TableOf(digests);
  if (tiltpole_test::WritesReferences()) tiltpole_test::WriteTable(file, heading, found);
  const Table expected = tiltpole_test::ReadTable(file);
  ASSERT_FALSE(expected.empty()) << file << " could not be read";
  for (const auto& [name, words] : expected) {
    ASSERT_EQ(found.count(name), 1U) << name;
    EXPECT_EQ(found.at(name), words) << name;
  }
  EXPECT_EQ(found.size(), expected.size());
}

TEST(Reproducibility, ArithmeticAndSquareRootsAgreeBitForBit) {
  HoldAgainst("digests.txt", "Results of arithmetic and square roots alone: one digest everywhere.",
              TheFindings().exact);
}

TEST(Reproducibility, DecisionsAreTheSameEverywhere) {
  HoldAgainst("decisions.txt", "Answers that rest on trigonometric results: one digest everywhere.",
              TheFindings().decisions);
}

double Difference(double a, double b) {
  if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b) ? 0.0 : HUGE_VAL;
  return std::fabs(a - b);
}

TEST(Reproducibility, TrigonometricResultsDifferByNoMoreThanStated) {
  Table found;
  for (const auto& [name, values] : TheFindings().traced) {
    for (const double value : values) {
      found[name].push_back(tiltpole_test::Hex(tiltpole_test::BitsOf(value)));
    }
  }
  if (tiltpole_test::WritesReferences()) {
    tiltpole_test::WriteTable("results.txt", "Results that pass through trigonometric functions.",
                              found);
  }
  const Table expected = tiltpole_test::ReadTable("results.txt");
  ASSERT_EQ(found.size(), expected.size());
  for (const auto& [name, words] : expected) {
    const auto& values = TheFindings().traced.at(name);
    ASSERT_EQ(values.size(), words.size()) << name;
    double largest = 0.0;
    int different = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
      const double difference = Difference(values[i], tiltpole_test::DoubleFromHex(words[i]));
      if (difference > 0.0) ++different;
      largest = std::fmax(largest, difference);
    }
    std::printf("%-42s %4d of %4u differ, by up to %.2g\n", name.c_str(), different,
                static_cast<unsigned>(words.size()), largest);
    EXPECT_LE(largest, tiltpole_test::LargestResultDifference(name)) << name;
  }
}

// Not a promise: where it does not hold, the differences are those of the test before.
TEST(Reproducibility, ItIsToldWhetherEveryTrigonometricResultAgrees) {
  const Table found = TableOf(TheFindings().whole);
  if (tiltpole_test::WritesReferences()) {
    tiltpole_test::WriteTable("whole.txt", "All results of a kind, on the machine of results.txt.",
                              found);
  }
  const Table expected = tiltpole_test::ReadTable("whole.txt");
  ASSERT_EQ(found.size(), expected.size());
  for (const auto& [name, words] : expected) {
    ASSERT_EQ(found.count(name), 1U) << name;
    std::printf("%-30s %s\n", name.c_str(),
                found.at(name) == words ? "all agree" : "not all agree");
  }
}

double Call(const std::string& function, double x, double y) {
  if (function == "sin") return std::sin(x);
  if (function == "cos") return std::cos(x);
  if (function == "tan") return std::tan(x);
  if (function == "asin") return std::asin(x);
  if (function == "acos") return std::acos(x);
  if (function == "atan") return std::atan(x);
  if (function == "atan2") return std::atan2(x, y);
  if (function == "hypot") return std::hypot(x, y);
  ADD_FAILURE() << "no such function: " << function;
  return 0.0;
}

// How many doubles apart two of one sign lie.
std::uint64_t Steps(double a, double b) {
  const std::uint64_t p = tiltpole_test::BitsOf(a);
  const std::uint64_t q = tiltpole_test::BitsOf(b);
  return p > q ? p - q : q - p;
}

TEST(Reproducibility, FunctionsOfThePlatformAreAsCloseToTheTruthAsStated) {
  const Table values = tiltpole_test::ReadTable("function_values.txt");
  ASSERT_EQ(values.size(), 8U);
  for (const auto& [function, words] : values) {
    const std::size_t row = function == "atan2" || function == "hypot" ? 3 : 2;
    int different = 0;
    std::uint64_t largest = 0;
    for (std::size_t i = 0; i + row <= words.size(); i += row) {
      const double x = tiltpole_test::DoubleFromHex(words[i]);
      const double y = tiltpole_test::DoubleFromHex(words[i + 1]);
      const double truth = tiltpole_test::DoubleFromHex(words[i + row - 1]);
      const std::uint64_t steps = Steps(Call(function, x, y), truth);
      if (steps > 0) ++different;
      if (steps > largest) largest = steps;
    }
    std::printf("%-6s %3d of %u not rounded correctly, by up to %u steps\n", function.c_str(),
                different, static_cast<unsigned>(words.size() / row),
                static_cast<unsigned>(largest));
    EXPECT_LE(largest, tiltpole_test::LargestFunctionDifference(function)) << function;
  }
}

}  // namespace
