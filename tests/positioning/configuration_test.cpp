// The calibration in its file: which bytes, which values, and what a damaged file gives.

#include <cmath>
#include <filesystem>
#include <limits>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "positioning/exposed_position.h"
#include "support/ordinary_user.h"
#include "support/temporary_folder.h"
#include "tiltpole/platform/file.h"

namespace {

using tiltpole_test::ExposedPosition;
using tiltpole_test::ReadBytes;
using tiltpole_test::TemporaryFolder;
using tiltpole_test::WriteBytes;

const char* const kDefaultFile =
    "[MagneticA.a]0.0000000000\r\n"
    "[MagneticA.b]1.0000000000\r\n"
    "[MagneticA.c]0.0000000000\r\n"
    "[MagneticA.d]0.0000000000\r\n"
    "[MagneticA.e]1.0000000000\r\n"
    "[MagneticA.x0]0.0000000000\r\n"
    "[MagneticA.y0]0.0000000000\r\n"
    "[MagneticA.z0]0.0000000000\r\n"
    "[MagneticB.a]0.0000000000\r\n"
    "[MagneticB.b]1.0000000000\r\n"
    "[MagneticB.c]0.0000000000\r\n"
    "[MagneticB.d]0.0000000000\r\n"
    "[MagneticB.e]1.0000000000\r\n"
    "[MagneticB.x0]0.0000000000\r\n"
    "[MagneticB.y0]0.0000000000\r\n"
    "[MagneticB.z0]0.0000000000\r\n"
    "[CoorTrans.dX]0.0000000000\r\n"
    "[CoorTrans.dY]0.0000000000\r\n"
    "[CoorTrans.dZ]0.0000000000\r\n"
    "[MagneticBiasAngle_A]0.0000000000\r\n"
    "[MagneticBiasAngle_B]0.0000000000\r\n";

// Every value different from every other and from its default.
ExposedPosition Numbered() {
  ExposedPosition position;
  double next = 1.5;
  for (double* value :
       {&position.MagneticA.a,  &position.MagneticA.b,         &position.MagneticA.c,
        &position.MagneticA.d,  &position.MagneticA.e,         &position.MagneticA.x0,
        &position.MagneticA.y0, &position.MagneticA.z0,        &position.MagneticB.a,
        &position.MagneticB.b,  &position.MagneticB.c,         &position.MagneticB.d,
        &position.MagneticB.e,  &position.MagneticB.x0,        &position.MagneticB.y0,
        &position.MagneticB.z0, &position.CoorTrans.dX,        &position.CoorTrans.dY,
        &position.CoorTrans.dZ, &position.MagneticBiasAngle_A, &position.MagneticBiasAngle_B}) {
    *value = next;
    next += 1.0;
  }
  return position;
}

const char* const kNumberedFile =
    "[MagneticA.a]1.5000000000\r\n"
    "[MagneticA.b]2.5000000000\r\n"
    "[MagneticA.c]3.5000000000\r\n"
    "[MagneticA.d]4.5000000000\r\n"
    "[MagneticA.e]5.5000000000\r\n"
    "[MagneticA.x0]6.5000000000\r\n"
    "[MagneticA.y0]7.5000000000\r\n"
    "[MagneticA.z0]8.5000000000\r\n"
    "[MagneticB.a]9.5000000000\r\n"
    "[MagneticB.b]10.5000000000\r\n"
    "[MagneticB.c]11.5000000000\r\n"
    "[MagneticB.d]12.5000000000\r\n"
    "[MagneticB.e]13.5000000000\r\n"
    "[MagneticB.x0]14.5000000000\r\n"
    "[MagneticB.y0]15.5000000000\r\n"
    "[MagneticB.z0]16.5000000000\r\n"
    "[CoorTrans.dX]17.5000000000\r\n"
    "[CoorTrans.dY]18.5000000000\r\n"
    "[CoorTrans.dZ]19.5000000000\r\n"
    "[MagneticBiasAngle_A]20.5000000000\r\n"
    "[MagneticBiasAngle_B]21.5000000000\r\n";

class PositionConfig : public ::testing::Test {
 protected:
  // What a file with the parameters in force would hold.
  std::string InForce() {
    EXPECT_EQ(position.ConfigSave(other), 1);
    return ReadBytes(other);
  }
  void Read(const std::string& bytes) {
    WriteBytes(path, bytes);
    EXPECT_EQ(position.ConfigRead(path), 1);
  }

  TemporaryFolder folder;
  std::wstring path = folder / L"pole.par";
  std::wstring other = folder / L"other.par";
  ExposedPosition position;
};

TEST_F(PositionConfig, TheDefaultsAreWrittenByteForByte) {
  EXPECT_EQ(position.ConfigSave(path), 1);
  EXPECT_EQ(ReadBytes(path), kDefaultFile);
}

TEST_F(PositionConfig, EveryValueIsWrittenUnderItsKey) {
  position = Numbered();
  EXPECT_EQ(position.ConfigSave(path), 1);
  EXPECT_EQ(ReadBytes(path), kNumberedFile);
}

TEST_F(PositionConfig, EveryValueIsReadFromItsKey) {
  Read(kNumberedFile);
  EXPECT_EQ(InForce(), kNumberedFile);
}

TEST_F(PositionConfig, ReadingABiasAngleDoesNotLoseItToTheCorrection) {
  Read(kNumberedFile);
  EXPECT_EQ(position.GetMagneticBiasAngle_A(), 20.5);
  EXPECT_EQ(position.GetMagneticBiasAngle_B(), 21.5);
}

TEST_F(PositionConfig, ReadingLeavesTheFlagsAndTheReferencesAlone) {
  position.Stationary = 1;
  position.MagneticInterference = 1;
  position.LastInclineX = 3.0;
  Read(kNumberedFile);
  EXPECT_EQ(position.IsStationary(), 1);
  EXPECT_EQ(position.IsMagneticInterference(), 1);
  EXPECT_EQ(position.LastInclineX, 3.0);
}

TEST_F(PositionConfig, NegativeValuesKeepTheirSign) {
  position.MagneticA.a = -0.5;
  position.ConfigSave(path);
  EXPECT_EQ(ReadBytes(path).substr(0, 28), "[MagneticA.a]-0.5000000000\r\n");
}

TEST_F(PositionConfig, VerySmallValuesDoNotSurvive) {
  position.MagneticA.a = 1e-12;
  position.ConfigSave(path);
  EXPECT_EQ(ReadBytes(path), kDefaultFile);
  position.ConfigRead(path);
  EXPECT_EQ(position.MagneticA.a, 0.0);
}

TEST_F(PositionConfig, SavingReplacesTheWholeContent) {
  WriteBytes(path, std::string(5000, 'x'));
  EXPECT_EQ(position.ConfigSave(path), 1);
  EXPECT_EQ(ReadBytes(path), kDefaultFile);
}

TEST_F(PositionConfig, AnEmptyFileChangesNothing) {
  position = Numbered();
  Read("");
  EXPECT_EQ(InForce(), kNumberedFile);
}

TEST_F(PositionConfig, ASingleEntryChangesItsMemberAlone) {
  Read("[MagneticA.a]2.5\r\n");
  EXPECT_EQ(position.MagneticA.a, 2.5);
  position.MagneticA.a = 0.0;
  EXPECT_EQ(InForce(), kDefaultFile);
}

TEST_F(PositionConfig, ALeadingBlankIsAccepted) {
  Read("[CoorTrans.dX] 3.25\r\n");
  EXPECT_EQ(position.CoorTrans.dX, 3.25);
}

TEST_F(PositionConfig, TextThatIsNoNumberBecomesZero) {
  position = Numbered();
  Read("[CoorTrans.dX]x\r\n");
  EXPECT_EQ(position.CoorTrans.dX, 0.0);
}

TEST_F(PositionConfig, ANumberIsStoredAsFarAsItGoes) {
  Read("[CoorTrans.dX]3.5abc\r\n[CoorTrans.dY]4,5\r\n");
  EXPECT_EQ(position.CoorTrans.dX, 3.5);
  EXPECT_EQ(position.CoorTrans.dY, 4.0);
}

TEST_F(PositionConfig, KeysAreCaseSensitive) {
  Read("[magnetica.a]2\r\n");
  EXPECT_EQ(position.MagneticA.a, 0.0);
}

TEST_F(PositionConfig, AMissingFileChangesNothing) {
  position = Numbered();
  EXPECT_EQ(position.ConfigRead(path), 0);
  EXPECT_EQ(InForce(), kNumberedFile);
}

TEST_F(PositionConfig, AFolderIsNeitherReadNorWritten) {
  position = Numbered();
  EXPECT_EQ(position.ConfigRead(folder.Path()), 0);
  EXPECT_EQ(position.ConfigSave(folder.Path()), 0);
  EXPECT_EQ(position.ConfigReplace(folder.Path()), 0);
  EXPECT_EQ(InForce(), kNumberedFile);
}

TEST_F(PositionConfig, AKeyWithoutAValueLeavesItsMemberAlone) {
  position = Numbered();
  Read("[MagneticA.a]\r\n");
  EXPECT_EQ(InForce(), kNumberedFile);
}

TEST_F(PositionConfig, AnEntryOnALastLineWithoutCarriageReturnLeavesItsMemberAlone) {
  position = Numbered();
  Read("[MagneticA.a]7\r\n[MagneticA.b]8");
  EXPECT_EQ(position.MagneticA.a, 7.0);
  EXPECT_EQ(position.MagneticA.b, 2.5);
}

TEST_F(PositionConfig, TheFirstOfDuplicateKeysCounts) {
  Read("[MagneticA.a]7\r\n[MagneticA.a]8\r\n");
  EXPECT_EQ(position.MagneticA.a, 7.0);
}

TEST_F(PositionConfig, AKeyInsideAnotherLineCounts) {
  Read("see [MagneticA.a]7 in the log\r\n[MagneticA.a]8\r\n");
  EXPECT_EQ(position.MagneticA.a, 7.0);
}

TEST_F(PositionConfig, LinesThatAreNoEntriesArePassedOver) {
  Read("; comment\r\n\r\nMagneticA.a=3\r\n[MagneticA.a]7\r\n");
  EXPECT_EQ(position.MagneticA.a, 7.0);
}

TEST_F(PositionConfig, AZeroByteEndsTheFile) {
  Read(std::string("[MagneticA.a]7\r\n\0[MagneticA.b]8\r\n", 33));
  EXPECT_EQ(position.MagneticA.a, 7.0);
  EXPECT_EQ(position.MagneticA.b, 1.0);
}

TEST_F(PositionConfig, TenMegabytesOfGarbageChangeNothing) {
  position = Numbered();
  // NOLINTNEXTLINE(bugprone-string-constructor): this long is what the test is about
  std::string garbage(10'000'000, 'x');
  for (std::size_t i = 0; i < garbage.size(); i += 7) garbage[i] = '\xE9';
  for (std::size_t i = 0; i < garbage.size(); i += 53) garbage[i] = '[';
  for (std::size_t i = 0; i < garbage.size(); i += 101) garbage[i] = '\r';
  Read(garbage);
  EXPECT_EQ(InForce(), kNumberedFile);
}

TEST_F(PositionConfig, InfinitiesAndNotANumberSurvive) {
  position.MagneticA.a = std::numeric_limits<double>::infinity();
  position.MagneticA.b = std::numeric_limits<double>::quiet_NaN();
  position.ConfigSave(path);
  ExposedPosition read;
  EXPECT_EQ(read.ConfigRead(path), 1);
  EXPECT_EQ(read.MagneticA.a, std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(read.MagneticA.b));
}

TEST_F(PositionConfig, AnEnormousValueIsCutAndTheOthersSurvive) {
  position = Numbered();
  position.MagneticA.a = 1e300;
  position.ConfigSave(path);
  const std::string bytes = ReadBytes(path);
  EXPECT_EQ(bytes.substr(99, 28), "[MagneticA.b]2.5000000000\r\n[");
  ExposedPosition read;
  EXPECT_EQ(read.ConfigRead(path), 1);
  EXPECT_EQ(read.MagneticA.a, std::stod("1" + bytes.substr(14, 85)))
      << "the first 86 digits of 301";
  read.MagneticA.a = position.MagneticA.a = 0.0;
  read.ConfigSave(path);
  const std::string others = ReadBytes(path);
  position.ConfigSave(path);
  EXPECT_EQ(others, ReadBytes(path));
}

TEST_F(PositionConfig, ALargestValueThatFitsItsLineSurvives) {
  position.MagneticBiasAngle_B = 1e62;
  position.ConfigSave(path);
  ExposedPosition read;
  EXPECT_EQ(read.ConfigRead(path), 1);
  EXPECT_EQ(read.MagneticBiasAngle_B, 1e62);
}

TEST_F(PositionConfig, PathsBeyondAsciiWork) {
  const std::wstring umlaut = folder / L"M\u00fcnchen \u6e2c\u91cf.par";
  EXPECT_EQ(position.ConfigSave(umlaut), 1);
  EXPECT_EQ(ReadBytes(umlaut), kDefaultFile);
  EXPECT_EQ(position.ConfigRead(umlaut), 1);
}

TEST_F(PositionConfig, ReplacingWritesTheSameBytesAndLeavesNothingBeside) {
  WriteBytes(path, "old");
  position = Numbered();
  EXPECT_EQ(position.ConfigReplace(path), 1);
  EXPECT_EQ(ReadBytes(path), kNumberedFile);
  EXPECT_FALSE(tiltpole::detail::PathExists(path + L".new"));
}

TEST_F(PositionConfig, ReplacingAFileThatIsNotThereCreatesIt) {
  EXPECT_EQ(position.ConfigReplace(path), 1);
  EXPECT_EQ(ReadBytes(path), kDefaultFile);
}

TEST_F(PositionConfig, ReplacingInAMissingFolderFails) {
  EXPECT_EQ(position.ConfigReplace(folder / L"missing/pole.par"), 0);
}

#ifdef __linux__
TEST_F(PositionConfig, AFullDiskDoesNotShowInTheResultOfSaving) {
  EXPECT_EQ(position.ConfigSave(L"/dev/full"), 1);
}

TEST_F(PositionConfig, AFullDiskFailsReplacingAndLeavesTheOldFile) {
  WriteBytes(path, "old");
  std::filesystem::create_symlink("/dev/full", tiltpole_test::NativePath(path + L".new"));
  EXPECT_EQ(position.ConfigReplace(path), 0);
  EXPECT_EQ(ReadBytes(path), "old");
}

TEST_F(PositionConfig, AFileWithoutPermissionIsNeitherReadNorWritten) {
  WriteBytes(path, "[MagneticA.a]7\r\n");
  std::filesystem::permissions(tiltpole_test::NativePath(path), std::filesystem::perms::none);
  const tiltpole_test::OrdinaryUser user;
  if (!user.IsOrdinary()) GTEST_SKIP() << "the superuser cannot act as an ordinary user here";
  EXPECT_EQ(position.ConfigRead(path), 0);
  EXPECT_EQ(position.ConfigSave(path), 0);
  EXPECT_EQ(position.MagneticA.a, 0.0);
}
#endif

RC_GTEST_FIXTURE_PROP(PositionConfig, ASaveAndALoadKeepTenDecimals, ()) {
  const auto value = [] { return *rc::gen::inRange(-2000000000, 2000000000) / 65537.0; };
  position.MagneticA.a = value();
  position.MagneticB.z0 = value();
  position.CoorTrans.dY = value();
  position.MagneticBiasAngle_B = value();
  RC_ASSERT(position.ConfigSave(path) == 1);
  ExposedPosition read;
  RC_ASSERT(read.ConfigRead(path) == 1);
  const auto kept = [](double a, double b) { return std::fabs(a - b) <= 0.6e-10; };
  RC_ASSERT(kept(read.MagneticA.a, position.MagneticA.a));
  RC_ASSERT(kept(read.MagneticB.z0, position.MagneticB.z0));
  RC_ASSERT(kept(read.CoorTrans.dY, position.CoorTrans.dY));
  RC_ASSERT(kept(read.MagneticBiasAngle_B, position.MagneticBiasAngle_B));
  RC_ASSERT(read.ConfigSave(other) == 1);
  RC_ASSERT(ReadBytes(other) == ReadBytes(path));
}

}  // namespace
