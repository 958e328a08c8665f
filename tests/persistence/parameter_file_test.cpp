// What a parameter file's bytes are, and what is read from them.

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support/temporary_folder.h"
#include "tiltpole/persistence/CParameterFile.h"

namespace {

using tiltpole::CParameterFile;
using tiltpole_test::ReadBytes;
using tiltpole_test::TemporaryFolder;
using tiltpole_test::WriteBytes;

class ParameterFile : public ::testing::Test {
 protected:
  void Load(const std::string& bytes) {
    WriteBytes(path, bytes);
    ASSERT_EQ(file.OpenForRead(path), 1);
  }
  void OpenForWrite() { ASSERT_EQ(file.OpenForWrite(path), 1); }
  std::string CloseAndReadBytes() {
    EXPECT_TRUE(file.Close());
    return ReadBytes(path);
  }

  TemporaryFolder folder;
  std::wstring path = folder / L"pole.par";
  CParameterFile file;
  std::wstring text = L"before";
  std::int32_t integer = -7;
  double number = -7.0;
};

TEST_F(ParameterFile, IsThePlatformsFile) {
  const tiltpole::PlatformFile& base = file;
  EXPECT_FALSE(base.IsOpen());
}

TEST_F(ParameterFile, WritesAStringLine) {
  OpenForWrite();
  file.WriteString(L"Name", L"abc");
  EXPECT_EQ(CloseAndReadBytes(), "[Name]abc\r\n");
}

TEST_F(ParameterFile, WritesAnIntegerLine) {
  OpenForWrite();
  file.WriteInt(L"Count", 12);
  file.WriteInt(L"Least", std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(CloseAndReadBytes(), "[Count]12\r\n[Least]-2147483648\r\n");
}

TEST_F(ParameterFile, WritesADoubleLineWithTenDecimalsAndNoExponent) {
  OpenForWrite();
  file.WriteDouble(L"MagneticA.a", 1.0);
  file.WriteDouble(L"a", -0.5);
  file.WriteDouble(L"b", 1e-12);
  file.WriteDouble(L"c", 1e20);
  EXPECT_EQ(CloseAndReadBytes(),
            "[MagneticA.a]1.0000000000\r\n"
            "[a]-0.5000000000\r\n"
            "[b]0.0000000000\r\n"
            "[c]100000000000000000000.0000000000\r\n");
}

TEST_F(ParameterFile, WritesLinesInCallOrderAndTheSameKeyTwice) {
  OpenForWrite();
  file.WriteInt(L"b", 1);
  file.WriteString(L"a", L"");
  file.WriteInt(L"b", 2);
  EXPECT_EQ(CloseAndReadBytes(), "[b]1\r\n[a]\r\n[b]2\r\n");
}

TEST_F(ParameterFile, WritesTextBeyondAsciiAsUtf8) {
  OpenForWrite();
  file.WriteString(L"Surveyor", L"M\u00fcller");
  EXPECT_EQ(CloseAndReadBytes(), "[Surveyor]M\xC3\xBCller\r\n");
}

TEST_F(ParameterFile, KeysAndStringsEndAtAZeroCharacter) {
  OpenForWrite();
  file.WriteString(std::wstring(L"ke\0y", 4), std::wstring(L"ab\0c", 4));
  EXPECT_EQ(CloseAndReadBytes(), "[ke]ab\r\n");
}

TEST_F(ParameterFile, OpeningForWriteReplacesTheWholeContent) {
  WriteBytes(path, "[an]old and much longer text\r\n");
  OpenForWrite();
  file.WriteInt(L"b", 1);
  EXPECT_EQ(CloseAndReadBytes(), "[b]1\r\n");
}

TEST_F(ParameterFile, ALineOf99BytesIsWrittenWhole) {
  OpenForWrite();
  file.WriteString(L"k", std::wstring(94, L'x'));
  EXPECT_EQ(CloseAndReadBytes(), "[k]" + std::string(94, 'x') + "\r\n");
}

TEST_F(ParameterFile, ALineOf100BytesLosesItsLineFeed) {
  OpenForWrite();
  file.WriteString(L"k", std::wstring(95, L'x'));
  EXPECT_EQ(CloseAndReadBytes(), "[k]" + std::string(95, 'x') + "\r");
}

TEST_F(ParameterFile, ALineOf101BytesLosesItsEndAndTheNextFollowsOnTheSameLine) {
  OpenForWrite();
  file.WriteString(L"k", std::wstring(96, L'x'));
  file.WriteInt(L"b", 1);
  EXPECT_EQ(CloseAndReadBytes(), "[k]" + std::string(96, 'x') + "[b]1\r\n");
}

TEST_F(ParameterFile, AValueOfEnormousMagnitudeIsCutAt99Bytes) {
  OpenForWrite();
  file.WriteDouble(L"k", -std::numeric_limits<double>::max());
  file.WriteInt(L"b", 1);
  const std::string bytes = CloseAndReadBytes();
  EXPECT_EQ(bytes.size(), 99U + 6);
  EXPECT_EQ(bytes.substr(0, 21), "[k]-17976931348623157");
  EXPECT_EQ(bytes.substr(99), "[b]1\r\n");
}

TEST_F(ParameterFile, AKeyLongerThanTheLineIsCutToo) {
  OpenForWrite();
  file.WriteString(std::wstring(200, L'k'), L"x");
  file.WriteInt(std::wstring(200, L'k'), 1);
  file.WriteDouble(std::wstring(200, L'k'), 1.0);
  const std::string cut = "[" + std::string(98, 'k');
  EXPECT_EQ(CloseAndReadBytes(), cut + cut + cut);
}

TEST_F(ParameterFile, NoCharacterIsCutInTwo) {
  OpenForWrite();
  file.WriteString(L"k", std::wstring(95, L'x') + L"\u00fc");
  EXPECT_EQ(CloseAndReadBytes(), "[k]" + std::string(95, 'x'));
}

TEST_F(ParameterFile, WritingAfterTheFileWasClosedDoesNothing) {
  OpenForWrite();
  file.WriteInt(L"a", 1);
  file.Close();
  file.WriteString(L"b", L"c");
  file.WriteInt(L"b", 2);
  file.WriteDouble(L"b", 2.0);
  EXPECT_EQ(CloseAndReadBytes(), "[a]1\r\n");
}

TEST_F(ParameterFile, ReadsAString) {
  Load("[Name] a b \r\n");
  EXPECT_EQ(file.ReadString(L"Name", text), 1);
  EXPECT_EQ(text, L" a b ") << "no blank is trimmed";
}

TEST_F(ParameterFile, ReadsAnInteger) {
  Load("[Count] -12.7\r\n");
  EXPECT_EQ(file.ReadInt(L"Count", integer), 1);
  EXPECT_EQ(integer, -12);
}

TEST_F(ParameterFile, ReadsADouble) {
  Load("[CoorTrans.dX] 3.25\r\n");
  EXPECT_EQ(file.ReadDouble(L"CoorTrans.dX", number), 1);
  EXPECT_EQ(number, 3.25);
}

TEST_F(ParameterFile, APresentValueThatIsNoNumberIsFoundAndZero) {
  Load("[a]x\r\n");
  EXPECT_EQ(file.ReadInt(L"a", integer), 1);
  EXPECT_EQ(integer, 0);
  EXPECT_EQ(file.ReadDouble(L"a", number), 1);
  EXPECT_EQ(number, 0.0);
}

TEST_F(ParameterFile, ACommaEndsANumber) {
  Load("[a]2,75\r\n");
  EXPECT_EQ(file.ReadDouble(L"a", number), 1);
  EXPECT_EQ(number, 2.0);
}

TEST_F(ParameterFile, AMissingKeyLeavesTheTargetAlone) {
  Load("[a]1\r\n");
  EXPECT_EQ(file.ReadString(L"b", text), 0);
  EXPECT_EQ(file.ReadInt(L"b", integer), 0);
  EXPECT_EQ(file.ReadDouble(L"b", number), 0);
  EXPECT_EQ(text, L"before");
  EXPECT_EQ(integer, -7);
  EXPECT_EQ(number, -7.0);
}

TEST_F(ParameterFile, AnEmptyValueCountsAsMissing) {
  Load("[a]\r\n[b]1\r\n");
  EXPECT_EQ(file.ReadString(L"a", text), 0);
  EXPECT_EQ(file.ReadDouble(L"a", number), 0);
  EXPECT_EQ(text, L"before");
  EXPECT_EQ(number, -7.0);
}

TEST_F(ParameterFile, AValueOfBlanksIsAValue) {
  Load("[a] \r\n");
  EXPECT_EQ(file.ReadString(L"a", text), 1);
  EXPECT_EQ(text, L" ");
}

TEST_F(ParameterFile, AnEntryOnALastLineWithoutCarriageReturnCountsAsMissing) {
  Load("[a]1\r\n[b]2\n");
  EXPECT_EQ(file.ReadInt(L"a", integer), 1);
  EXPECT_EQ(integer, 1);
  EXPECT_EQ(file.ReadInt(L"b", integer), 0);
  EXPECT_EQ(integer, 1);
}

TEST_F(ParameterFile, AValueRunsOverALineFeedToTheNextCarriageReturn) {
  Load("[a]1\n[b]2\r\n");
  EXPECT_EQ(file.ReadString(L"a", text), 1);
  EXPECT_EQ(text, L"1\n[b]2");
}

TEST_F(ParameterFile, ACarriageReturnAloneEndsAValue) {
  Load("[a]1\r[b]2\r");
  EXPECT_EQ(file.ReadInt(L"b", integer), 1);
  EXPECT_EQ(integer, 2);
}

TEST_F(ParameterFile, TheFirstOfDuplicateKeysCounts) {
  Load("[a]1\r\n[a]2\r\n");
  EXPECT_EQ(file.ReadInt(L"a", integer), 1);
  EXPECT_EQ(integer, 1);
}

TEST_F(ParameterFile, AFirstDuplicateWithoutAValueHidesTheSecond) {
  Load("[a]\r\n[a]2\r\n");
  EXPECT_EQ(file.ReadInt(L"a", integer), 0);
}

TEST_F(ParameterFile, AKeyInsideAnotherLineCounts) {
  Load("; was [a]1 until May\r\n[a]2\r\n");
  EXPECT_EQ(file.ReadString(L"a", text), 1);
  EXPECT_EQ(text, L"1 until May");
}

TEST_F(ParameterFile, KeysAreCaseSensitive) {
  Load("[magnetica.a]2\r\n");
  EXPECT_EQ(file.ReadDouble(L"MagneticA.a", number), 0);
}

TEST_F(ParameterFile, AKeyIsNotFoundAsTheEndOfALongerOne) {
  Load("[MagneticA.a]1\r\n");
  EXPECT_EQ(file.ReadDouble(L"a", number), 0);
  EXPECT_EQ(file.ReadDouble(L"MagneticA", number), 0);
}

TEST_F(ParameterFile, BlanksAroundAKeyBelongToIt) {
  Load("[ a ]1\r\n");
  EXPECT_EQ(file.ReadInt(L"a", integer), 0);
  EXPECT_EQ(file.ReadInt(L" a ", integer), 1);
}

TEST_F(ParameterFile, LinesThatAreNoEntriesArePassedOver) {
  Load("\r\n# a comment\r\n]a[1\r\n[a\r\n[a]3\r\n");
  EXPECT_EQ(file.ReadInt(L"a", integer), 1);
  EXPECT_EQ(integer, 3);
}

TEST_F(ParameterFile, EntriesAreReadInAnyOrderAnyNumberOfTimes) {
  Load("[a]1\r\n[b]2\r\n");
  EXPECT_EQ(file.ReadInt(L"b", integer), 1);
  EXPECT_EQ(file.ReadInt(L"a", integer), 1);
  EXPECT_EQ(file.ReadInt(L"b", integer), 1);
  EXPECT_EQ(integer, 2);
}

TEST_F(ParameterFile, ReadsTextBeyondAsciiFromUtf8) {
  Load("[Surveyor]M\xC3\xBCller\r\n");
  EXPECT_EQ(file.ReadString(L"Surveyor", text), 1);
  EXPECT_EQ(text, L"M\u00fcller");
}

TEST_F(ParameterFile, AnEmptyKeyIsAKey) {
  Load("[]5\r\n");
  EXPECT_EQ(file.ReadInt(L"", integer), 1);
  EXPECT_EQ(integer, 5);
}

TEST_F(ParameterFile, NothingIsFoundBeforeAFileIsLoaded) {
  EXPECT_EQ(file.ReadString(L"a", text), 0);
  EXPECT_EQ(text, L"before");
}

TEST_F(ParameterFile, LoadingClosesTheFile) {
  Load("[a]1\r\n");
  EXPECT_FALSE(file.IsOpen());
}

TEST_F(ParameterFile, LoadingAnotherFileForgetsTheFirst) {
  Load("[a]1\r\n");
  Load("[b]2\r\n");
  EXPECT_EQ(file.ReadInt(L"a", integer), 0);
}

TEST_F(ParameterFile, InfinitiesAndNotANumberSurviveAWriteAndARead) {
  OpenForWrite();
  file.WriteDouble(L"a", -std::numeric_limits<double>::infinity());
  file.WriteDouble(L"b", std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(CloseAndReadBytes(), "[a]-inf\r\n[b]nan\r\n");
  ASSERT_EQ(file.OpenForRead(path), 1);
  EXPECT_EQ(file.ReadDouble(L"a", number), 1);
  EXPECT_EQ(number, -std::numeric_limits<double>::infinity());
  EXPECT_EQ(file.ReadDouble(L"b", number), 1);
  EXPECT_TRUE(std::isnan(number));
}

RC_GTEST_FIXTURE_PROP(ParameterFile, AnIntegerSurvivesAWriteAndARead, (std::int32_t value)) {
  OpenForWrite();
  file.WriteInt(L"a", value);
  file.Close();
  RC_ASSERT(file.OpenForRead(path) == 1);
  RC_ASSERT(file.ReadInt(L"a", integer) == 1);
  RC_ASSERT(integer == value);
}

RC_GTEST_FIXTURE_PROP(ParameterFile, ADoubleOfSensibleSizeSurvivesToTenDecimals, ()) {
  const double value = *rc::gen::inRange(-2000000000, 2000000000) / 32768.0;
  OpenForWrite();
  file.WriteDouble(L"a", value);
  file.Close();
  RC_ASSERT(file.OpenForRead(path) == 1);
  RC_ASSERT(file.ReadDouble(L"a", number) == 1);
  RC_ASSERT(std::fabs(number - value) <= 0.5e-10 + 1e-15 * std::fabs(value));
}

RC_GTEST_FIXTURE_PROP(ParameterFile, AnyBytesCanBeLoaded, (const std::string& bytes)) {
  WriteBytes(path, bytes);
  RC_ASSERT(file.OpenForRead(path) == 1);
  file.ReadDouble(L"", number);
  file.ReadString(L"a", text);
}

}  // namespace
