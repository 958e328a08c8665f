#include "tiltpole/platform/text.h"

#include <cmath>
#include <cstdio>
#include <cwchar>
#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support/same_bits.h"

namespace {

using tiltpole::detail::CutNarrowText;
using tiltpole::detail::FormatFixed;
using tiltpole::detail::NarrowText;
using tiltpole::detail::ParseDouble;
using tiltpole::detail::ParseInt;
using tiltpole::detail::WideText;
using tiltpole_test::SameBits;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// U+1F9ED as the target's wide text: one unit of 32 bits or two of 16.
const std::wstring kCompass = L"\U0001F9ED";

TEST(NarrowText, AsciiIsOneByteASign) {
  EXPECT_EQ(NarrowText(L"[MagneticA.a]1.0\r\n"), "[MagneticA.a]1.0\r\n");
}

TEST(NarrowText, SignsBeyondAsciiBecomeUtf8) {
  EXPECT_EQ(NarrowText(L"\u00fc\u6e2c" + kCompass), "\xC3\xBC\xE6\xB8\xAC\xF0\x9F\xA7\xAD");
}

TEST(NarrowText, HalfASurrogatePairBecomesTheReplacementCharacter) {
  EXPECT_EQ(NarrowText(std::wstring(1, static_cast<wchar_t>(0xD800)) + L"a"),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(NarrowText(std::wstring(1, static_cast<wchar_t>(0xDC00))), "\xEF\xBF\xBD");
}

TEST(NarrowText, AZeroCharacterIsCarriedLikeAnyOther) {
  EXPECT_EQ(NarrowText(std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(WideText, Utf8BecomesWideText) {
  EXPECT_EQ(WideText("a\xC3\xBC\xE6\xB8\xAC\xF0\x9F\xA7\xAD"), L"a\u00fc\u6e2c" + kCompass);
}

TEST(WideText, EveryByteOfNoSequenceBecomesAReplacementCharacter) {
  EXPECT_EQ(WideText("\xFF"), L"\uFFFD");
  EXPECT_EQ(WideText("\x80"
                     "1"),
            L"\uFFFD"
            L"1");
  EXPECT_EQ(WideText("\xFC"
                     "a"),
            L"\uFFFD"
            L"a")
      << "a Latin-1 letter keeps its neighbours";
}

TEST(WideText, ACutSequenceBecomesReplacementCharacters) {
  EXPECT_EQ(WideText("\xE6\xB8"), L"\uFFFD\uFFFD");
  EXPECT_EQ(WideText("\xE6\xB8]"), L"\uFFFD\uFFFD]");
}

TEST(WideText, OverlongSequencesSurrogatesAndValuesBeyondUnicodeAreNoCharacters) {
  EXPECT_EQ(WideText("\xC1\x81"), L"\uFFFD\uFFFD");
  EXPECT_EQ(WideText("\xE0\x81\x81"), L"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(WideText("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(WideText("\xF4\x90\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD");
}

RC_GTEST_PROP(WideText, AnyBytesBecomeATextThatSurvivesTheWayBack, (const std::string& bytes)) {
  const std::wstring text = WideText(bytes);
  RC_ASSERT(WideText(NarrowText(text)) == text);
}

TEST(CutNarrowText, AShortTextStaysWhole) { EXPECT_EQ(CutNarrowText("abc", 3), "abc"); }

TEST(CutNarrowText, ALongTextKeepsItsFirstBytes) { EXPECT_EQ(CutNarrowText("abcd", 3), "abc"); }

TEST(CutNarrowText, ACharacterIsNotCutInTwo) {
  EXPECT_EQ(CutNarrowText("ab\xC3\xBC", 3), "ab");
  EXPECT_EQ(CutNarrowText("\x80\x80\x80", 2), "") << "bytes that continue nothing";
  EXPECT_EQ(CutNarrowText("\xE6\xB8\xAC"
                          "c",
                          3),
            "\xE6\xB8\xAC");
}

TEST(ParseInt, TakesBlanksASignAndDigitsAndIgnoresTheRest) {
  EXPECT_EQ(ParseInt(L"12"), 12);
  EXPECT_EQ(ParseInt(L" \t\n\v\f\r-12x34"), -12);
  EXPECT_EQ(ParseInt(L"+7.9"), 7);
  EXPECT_EQ(ParseInt(L"007"), 7);
}

TEST(ParseInt, TextWithoutDigitsIsZero) {
  EXPECT_EQ(ParseInt(L""), 0);
  EXPECT_EQ(ParseInt(L"x1"), 0);
  EXPECT_EQ(ParseInt(L"- 1"), 0);
  EXPECT_EQ(ParseInt(L"+-1"), 0);
  EXPECT_EQ(ParseInt(L"\u0661"), 0) << "digits of other scripts are none";
  EXPECT_EQ(ParseInt(L"\b1"), 0) << "a control character before the tab is no blank";
  EXPECT_EQ(ParseInt(L"\x0E"
                     L"1"),
            0)
      << "nor is one after the carriage return";
}

TEST(ParseInt, ANumberBeyondTheRangeBecomesItsNearestEnd) {
  EXPECT_EQ(ParseInt(L"2147483647"), 2147483647);
  EXPECT_EQ(ParseInt(L"2147483648"), 2147483647);
  EXPECT_EQ(ParseInt(L"-2147483648"), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ParseInt(L"-99999999999999999999999999"), std::numeric_limits<std::int32_t>::min());
}

TEST(ParseDouble, ReadsDecimalNumbers) {
  EXPECT_EQ(ParseDouble(L"2.5"), 2.5);
  EXPECT_EQ(ParseDouble(L" \t\r\n\v\f3.25"), 3.25);
  EXPECT_EQ(ParseDouble(L"+.5"), 0.5);
  EXPECT_EQ(ParseDouble(L"-5."), -5.0);
  EXPECT_EQ(ParseDouble(L"1e3"), 1000.0);
  EXPECT_EQ(ParseDouble(L"1E-2"), 0.01);
}

TEST(ParseDouble, IgnoresWhateverFollows) {
  EXPECT_EQ(ParseDouble(L"2.5[MagneticA.b]1.0"), 2.5);
  EXPECT_EQ(ParseDouble(L"1,5"), 1.0) << "a comma ends the number in every locale";
  EXPECT_EQ(ParseDouble(L"1{5"), 1.0) << "and so does a sign beyond the letters";
  EXPECT_EQ(ParseDouble(L"1e"), 1.0);
  EXPECT_EQ(ParseDouble(L"1e+"), 1.0);
  EXPECT_EQ(ParseDouble(L"1.2.3"), 1.2);
  EXPECT_EQ(ParseDouble(std::wstring(L"1\0"
                                     L"2",
                                     3)),
            1.0);
}

TEST(ParseDouble, TextThatIsNoNumberIsZero) {
  EXPECT_EQ(ParseDouble(L""), 0.0);
  EXPECT_EQ(ParseDouble(L"x"), 0.0);
  EXPECT_EQ(ParseDouble(L"."), 0.0);
  EXPECT_EQ(ParseDouble(L"--1"), 0.0);
  EXPECT_EQ(ParseDouble(L"+-1"), 0.0);
  EXPECT_EQ(ParseDouble(L"-+1"), 0.0);
  EXPECT_EQ(ParseDouble(L"++1"), 0.0);
  EXPECT_EQ(ParseDouble(L"- 1"), 0.0);
  EXPECT_EQ(ParseDouble(L"e5"), 0.0);
  EXPECT_FALSE(std::signbit(ParseDouble(L"-x"))) << "a sign without a number counts for nothing";
}

TEST(ParseDouble, ReadsHexadecimalNumbers) {
  EXPECT_EQ(ParseDouble(L"0x1.8p3"), 12.0);
  EXPECT_EQ(ParseDouble(L"-0XFF"), -255.0);
  EXPECT_EQ(ParseDouble(L"0x.8"), 0.5);
  EXPECT_EQ(ParseDouble(L"0x"), 0.0);
  EXPECT_EQ(ParseDouble(L"0x."), 0.0);
  EXPECT_EQ(ParseDouble(L"0x1p"), 1.0);
  EXPECT_EQ(ParseDouble(L"0x-1"), 0.0);
}

TEST(ParseDouble, ReadsInfinitiesAndNotANumber) {
  EXPECT_EQ(ParseDouble(L"inf"), kInfinity);
  EXPECT_EQ(ParseDouble(L"-Infinity"), -kInfinity);
  EXPECT_EQ(ParseDouble(L"infinite"), kInfinity);
  EXPECT_TRUE(std::isnan(ParseDouble(L"NaN")));
  EXPECT_TRUE(std::isnan(ParseDouble(L"-nan(12)")));
  EXPECT_EQ(ParseDouble(L"in"), 0.0);
}

TEST(ParseDouble, ANumberTooLargeIsInfinite) {
  EXPECT_EQ(ParseDouble(L"1e309"), kInfinity);
  EXPECT_EQ(ParseDouble(L"-1e99999999999999999999"), -kInfinity);
  EXPECT_EQ(ParseDouble(std::wstring(400, L'9')), kInfinity);
  EXPECT_EQ(ParseDouble(L"0." + std::wstring(400, L'0') + L"1e800"), kInfinity);
  EXPECT_EQ(ParseDouble(L"0x1p1024"), kInfinity);
}

TEST(ParseDouble, ANumberTooSmallIsAZeroOfItsSign) {
  EXPECT_EQ(ParseDouble(L"1e-400"), 0.0);
  EXPECT_TRUE(std::signbit(ParseDouble(L"-1e-99999999999999999999")));
  EXPECT_EQ(ParseDouble(L"0." + std::wstring(400, L'0') + L"1"), 0.0);
  EXPECT_EQ(ParseDouble(std::wstring(400, L'9') + L"e-800"), 0.0);
  EXPECT_EQ(ParseDouble(L"0x1p-1076"), 0.0);
  EXPECT_EQ(ParseDouble(L"0e999999999999"), 0.0);
}

TEST(ParseDouble, KeepsSubnormalNumbers) {
  EXPECT_EQ(ParseDouble(L"4.9e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(ParseDouble(L"1e-310"), 1e-310);
}

// Elsewhere the C library's own conversion differs: the oldest one on Windows knows neither
// hexadecimal numbers nor infinities.
#ifdef __GLIBC__
RC_GTEST_PROP(ParseDouble, AgreesWithTheCLibrary, ()) {
  const auto text = *rc::gen::container<std::wstring>(
      rc::gen::elementOf(std::wstring(L"  \t++--00123456789..eExXpPaAfFinINtTyY()_,[")));
  RC_LOG() << NarrowText(text);
  RC_ASSERT(SameBits(ParseDouble(text), std::wcstod(text.c_str(), nullptr)));
}

RC_GTEST_PROP(ParseDouble, AgreesWithTheCLibraryOnDecimalNumbers, ()) {
  const auto digits =
      rc::gen::container<std::wstring>(rc::gen::elementOf(std::wstring(L"0123456789")));
  const std::wstring text =
      *digits + L"." + *digits + L"e" + std::to_wstring(*rc::gen::inRange(-345, 330));
  RC_ASSERT(SameBits(ParseDouble(text), std::wcstod(text.c_str(), nullptr)));
}

RC_GTEST_PROP(ParseDouble, AgreesWithTheCLibraryOnHexadecimalNumbers, ()) {
  const auto digits =
      rc::gen::container<std::wstring>(rc::gen::elementOf(std::wstring(L"0123456789abcDEF")));
  const std::wstring text =
      L"0x" + *digits + L"." + *digits + L"p" + std::to_wstring(*rc::gen::inRange(-1100, 1100));
  RC_ASSERT(SameBits(ParseDouble(text), std::wcstod(text.c_str(), nullptr)));
}

RC_GTEST_PROP(ParseInt, AgreesWithTheCLibraryInTheRange, ()) {
  const auto text =
      *rc::gen::container<std::wstring>(rc::gen::elementOf(std::wstring(L"  \t++--0123456789x.")));
  const long value = std::wcstol(text.c_str(), nullptr, 10);
  RC_PRE(value >= -2147483647L - 1 && value <= 2147483647L);
  RC_ASSERT(ParseInt(text) == value);
}
#endif

TEST(FormatFixed, WritesTheDigitsAskedFor) {
  EXPECT_EQ(FormatFixed(-0.5, 10), L"-0.5000000000");
  EXPECT_EQ(FormatFixed(2.5, 6), L"2.500000");
  EXPECT_EQ(FormatFixed(1e-12, 10), L"0.0000000000");
  EXPECT_EQ(FormatFixed(-0.0, 10), L"-0.0000000000");
}

TEST(FormatFixed, WritesEveryDigitOfTheLargestDouble) {
  const std::wstring text = FormatFixed(-std::numeric_limits<double>::max(), 10);
  EXPECT_EQ(text.size(), 1U + 309 + 1 + 10);
  EXPECT_EQ(text.substr(0, 18), L"-17976931348623157");
}

TEST(FormatFixed, RoundsTheExactValueOfTheDouble) {
  EXPECT_EQ(FormatFixed(0.125, 2), L"0.12") << "a tie goes to the even digit";
  EXPECT_EQ(FormatFixed(1.005, 2), L"1.00") << "the double lies below the decimal number";
}

TEST(FormatFixed, NamesWhatIsNoFiniteNumber) {
  EXPECT_EQ(FormatFixed(kInfinity, 10), L"inf");
  EXPECT_EQ(FormatFixed(-kInfinity, 10), L"-inf");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::quiet_NaN(), 10), L"nan");
}

RC_GTEST_PROP(FormatFixed, AgreesWithPrintf, (double value)) {
  char expected[512];
  std::snprintf(expected, sizeof expected, "%.10f", value);
  RC_ASSERT(NarrowText(FormatFixed(value, 10)) == std::string(expected));
}

}  // namespace
