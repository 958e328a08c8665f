// The matrix as text.

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <locale>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "support/literal_matrix.h"
#include "support/rows.h"
#include "tiltpole/matrix/CSZMatrix.h"

namespace {

using tiltpole::CSZMatrix;
using tiltpole_test::Rows;

TEST(MatrixOutput, HasALineForEachRowAndOneMoreLineEnd) {
  EXPECT_EQ(Rows({{1, 0}, {0, 1}}).Output(),
            L"     1.000     0.000,\r\n"
            L"     0.000     1.000,\r\n"
            L"\r\n");
}

TEST(MatrixOutput, OfAnEmptyMatrixIsOneLineEnd) {
  EXPECT_EQ(CSZMatrix().Output(), L"\r\n");
  EXPECT_EQ(CSZMatrix(0, 3).Output(), L"\r\n");
}

TEST(MatrixOutput, OfRowsWithoutColumnsHasTheirLineEnds) {
  EXPECT_EQ(CSZMatrix(2, 0).Output(), L",\r\n,\r\n\r\n");
}

TEST(MatrixOutput, ALongNumberTakesMoreThanItsField) {
  EXPECT_EQ(Rows({{123456.7891, -1234567.5, 1}}).Output(),
            L"123456.789-1234567.500     1.000,\r\n\r\n");
}

TEST(MatrixOutput, RoundsHalvesThatAreExactToTheEvenDigit) {
  EXPECT_EQ(Rows({{0.0625, 0.1875, -0.0001}}).Output(), L"     0.062     0.188    -0.000,\r\n\r\n");
}

TEST(MatrixOutput, ShowsInfinitiesAndNotANumberInTheirField) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::copysign(std::numeric_limits<double>::quiet_NaN(), 1.0);
  EXPECT_EQ(Rows({{infinity, -infinity, nan}}).Output(),
            L"       inf      -inf       nan,\r\n\r\n");
}

TEST(MatrixOutput, ShowsTheLargestNumberInFull) {
  const std::wstring text = Rows({{std::numeric_limits<double>::max()}}).Output();
  EXPECT_EQ(text.substr(0, 17), L"17976931348623157");
  EXPECT_EQ(text.size(), 309U + 4U + 3U + 2U);
}

TEST(MatrixOutput, LeavesStatusAndCursors) {
  CSZMatrix matrix(2, 2);
  matrix.m_bOK = 5;
  matrix.m_i = 55;
  matrix.m_j = 66;
  static_cast<void>(matrix.Output());
  EXPECT_EQ(matrix.m_bOK, 5);
  EXPECT_EQ(matrix.m_i, 55U);
  EXPECT_EQ(matrix.m_j, 66U);
}

TEST(MatrixOutput, HasAPointInALocaleWithADecimalComma) {
  struct DecimalComma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
  };
  const std::locale previous = std::locale::global(std::locale(std::locale(), new DecimalComma));
  for (const char* const name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "German"}) {
    if (std::setlocale(LC_NUMERIC, name) != nullptr) break;
  }
  const std::wstring text = Rows({{1234.5}}).Output();
  std::setlocale(LC_NUMERIC, "C");
  std::locale::global(previous);
  EXPECT_EQ(text, L"  1234.500,\r\n\r\n");
}

TEST(MatrixOutput, FormatsEveryFiniteNumberAsTheFormattedPrintDoes) {
  EXPECT_TRUE(rc::check([](std::uint64_t bits, bool ordinary, int thousandths) {
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    if (ordinary || !std::isfinite(value)) value = thousandths / 3000.0;
    char field[400];
    const int length = std::snprintf(field, sizeof field, "%10.3f", value);
    RC_ASSERT(length > 0);
    const std::string expected(field, static_cast<std::size_t>(length));
    RC_ASSERT(Rows({{value}}).Output() ==
              std::wstring(expected.begin(), expected.end()) + L",\r\n\r\n");
  }));
}

}  // namespace
