// A process with a comma for the decimal point writes and reads the same bytes.

#include <clocale>
#include <cstdlib>
#include <locale>
#include <string>

#include <gtest/gtest.h>

#include "positioning/exposed_position.h"
#include "support/temporary_folder.h"

namespace {

using tiltpole_test::ExposedPosition;
using tiltpole_test::ReadBytes;
using tiltpole_test::TemporaryFolder;

bool DecimalPointIsComma() { return std::string(std::localeconv()->decimal_point) == ","; }

// The name of a locale with a comma that this system has, or nothing.
std::string SetCommaLocale() {
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "nl_NL.UTF-8",
                           "German_Germany.1252", "de-DE"}) {
    if (std::setlocale(LC_ALL, name) != nullptr && DecimalPointIsComma()) return name;
  }
  return {};
}

class PositionLocale : public ::testing::Test {
 protected:
  PositionLocale() { position.MagneticA.x0 = -12345.0625; }
  ~PositionLocale() override {
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, "C");
  }

  void ExpectTheSameBytesAndValues() {
    EXPECT_EQ(position.ConfigSave(path), 1);
    EXPECT_NE(ReadBytes(path).find("[MagneticA.x0]-12345.0625000000\r\n"), std::string::npos);
    ExposedPosition read;
    EXPECT_EQ(read.ConfigRead(path), 1);
    EXPECT_EQ(read.MagneticA.x0, -12345.0625);
  }

  TemporaryFolder folder;
  std::wstring path = folder / L"M\u00fcnchen.par";
  ExposedPosition position;
};

TEST_F(PositionLocale, ACommaDecimalLocaleOfTheCLibraryChangesNothing) {
  if (SetCommaLocale().empty()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  ExpectTheSameBytesAndValues();
}

#ifdef __linux__
TEST_F(PositionLocale, AToolkitThatTakesTheLocaleOfTheEnvironmentChangesNothing) {
  const std::string name = SetCommaLocale();
  if (name.empty()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  std::setlocale(LC_ALL, "C");
  setenv("LC_ALL", name.c_str(), 1);
  std::setlocale(LC_ALL, "");
  unsetenv("LC_ALL");
  ASSERT_TRUE(DecimalPointIsComma());
  ExpectTheSameBytesAndValues();
}
#endif

TEST_F(PositionLocale, ACommaDecimalLocaleOfTheStreamsChangesNothing) {
  class Comma : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  class WideComma : public std::numpunct<wchar_t> {
    wchar_t do_decimal_point() const override { return L','; }
    wchar_t do_thousands_sep() const override { return L'.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale::global(std::locale(std::locale(std::locale::classic(), new Comma), new WideComma));
  ExpectTheSameBytesAndValues();
}

}  // namespace
