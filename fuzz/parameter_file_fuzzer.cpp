// Any bytes as a parameter file: every entry is found and read as a plain search in the bytes reads
// it, and what was read can be saved and read again.

#include <cstdlib>
#include <string>

#include "fuzz/bytes.h"
#include "fuzz/require.h"
#include "support/literal_matrix.h"
#include "support/temporary_folder.h"
#include "tiltpole/persistence/CParameterFile.h"
#include "tiltpole/platform/text.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace {

using tiltpole::CInclineSensor_Position;
using tiltpole::CParameterFile;
using tiltpole_fuzz::Bytes;
using tiltpole_fuzz::Require;
using tiltpole_test::ReadBytes;
using tiltpole_test::TemporaryFolder;
using tiltpole_test::WriteBytes;

constexpr std::size_t kLongestLine = 99;

// The value of an entry, or nothing.
std::string PlainValue(const std::string& text, const std::string& key) {
  const std::string pattern = "[" + key + "]";
  const std::size_t found = text.find(pattern);
  if (found == std::string::npos) return {};
  const std::size_t begin = found + pattern.size();
  const std::size_t end = text.find('\r', begin);
  return end == std::string::npos ? std::string() : text.substr(begin, end - begin);
}

std::int32_t PlainInt(const std::string& value) {
  const long long number = std::strtoll(value.c_str(), nullptr, 10);
  if (number > 2147483647) return 2147483647;
  if (number < -2147483647 - 1) return -2147483647 - 1;
  return static_cast<std::int32_t>(number);
}

void CompareEntry(const CParameterFile& file, const std::string& text, const std::string& key) {
  const std::wstring wide_key = tiltpole::detail::WideText(key);
  const std::string value = PlainValue(text, key);
  const int there = value.empty() ? 0 : 1;
  std::wstring string = L"before";
  std::int32_t integer = -7;
  double number = -7.0;
  Require(file.ReadString(wide_key, string) == there, "a string where there is an entry");
  Require(file.ReadInt(wide_key, integer) == there, "an integer where there is an entry");
  Require(file.ReadDouble(wide_key, number) == there, "a number where there is an entry");
  Require(string == (there != 0 ? tiltpole::detail::WideText(value) : L"before"), "its text");
  Require(integer == (there != 0 ? PlainInt(value) : -7), "its integer");
#ifndef _WIN32  // whose C library reads hexadecimal numbers and long digits in its own way
  Require(tiltpole_test::SameBits(number, there != 0 ? std::strtod(value.c_str(), nullptr) : -7.0),
          "its number");
#endif
}

void SaveAndReadAgain(CInclineSensor_Position& position, const TemporaryFolder& folder) {
  const std::wstring saved = folder / L"saved";
  const std::wstring replaced = folder / L"replaced";
  Require(position.ConfigSave(saved) == 1, "what was read can be saved");
  Require(position.ConfigReplace(replaced) == 1, "and put in the place of another");
  const std::string text = ReadBytes(saved);
  Require(text == ReadBytes(replaced), "both ways of saving write the same");
  Require(text.size() <= 21 * kLongestLine, "each of 21 lines has its limit");
  CInclineSensor_Position again;
  Require(again.ConfigRead(saved) == 1, "what was saved can be read");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TemporaryFolder folder;
  const std::wstring path = folder / L"pole.par";
  const std::string bytes = Bytes(data, size).Rest();
  WriteBytes(path, bytes);

  CParameterFile file;
  Require(file.OpenForRead(path) == 1, "a file of any bytes is loaded");
  const std::string text = bytes.substr(0, bytes.find('\0'));
  for (const char* key : {"MagneticA.a", "MagneticB.z0", "CoorTrans.dX", "a", ""}) {
    CompareEntry(file, text, key);
  }

  CInclineSensor_Position position;
  Require(position.ConfigRead(path) == 1, "a file of any bytes is a configuration");
  SaveAndReadAgain(position, folder);
  return 0;
}
