#include "apps/session/parameter_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <sstream>

#include "apps/session/ascii_text.h"
#include "apps/session/input_error.h"
#include "apps/session/input_file.h"
#include "apps/session/number_text.h"
#include "apps/session/output_file.h"
#include "tiltpole/persistence/CParameterFile.h"
#include "tiltpole/platform/file.h"
#include "tiltpole/positioning/parameter_keys.h"

namespace tiltpole::session {
namespace fs = std::filesystem;
namespace {

// As long as the file says it is: a device may have no end.
std::string TextOf(const std::wstring& path) {
  PlatformFile file;
  std::string text;
  if (file.OpenExisting(path)) file.Read(text);
  return text;
}

// Where the entry is that counts: the first.
std::string LineOf(const std::string& key, const std::string& text) {
  const std::string before = text.substr(0, text.find("[" + key + "]"));
  return "line " + std::to_string(1 + std::count(before.begin(), before.end(), '\n'));
}

void CheckEntry(const CParameterFile& file, const std::wstring& wide_key, const std::string& whole,
                ParameterFileContent& content) {
  const std::string key = NarrowAscii(wide_key);
  std::wstring text;
  if (file.ReadString(wide_key, text) == 0) {
    content.problems.push_back(key + " is missing");
    return;
  }
  double value = 0.0;
  file.ReadDouble(wide_key, value);
  content.entries.push_back({key, value});
  if (!ParseNumber(NarrowAscii(text))) {
    content.problems.push_back(LineOf(key, whole) + ": " + key + " is " +
                               Quoted(NarrowAscii(text)) + "; expected a finite decimal number");
  }
}

void WarnOfDuplicates(const std::string& text, std::vector<std::string>& warnings) {
  for (const wchar_t* const wide_key : kParameterKeys) {
    const std::string key = NarrowAscii(wide_key);
    const std::string entry = "[" + key + "]";
    const std::size_t first = text.find(entry);
    if (first == std::string::npos) continue;
    if (text.find(entry, first + 1) != std::string::npos) {
      warnings.push_back(key + " stands there more than once; the first counts");
    }
  }
}

void WarnOfOddCorrection(const std::string& name, const Incline_MagneticCorrectParameter& par,
                         std::vector<std::string>& warnings) {
  for (const auto& [field, scale] : {std::pair{".b", par.b}, std::pair{".e", par.e}}) {
    if (scale <= 0.0 || scale > 2.0) {
      warnings.push_back(name + field + " is " + FixedText(scale, 4) +
                         "; a calibration gives scales between 0 and 2");
    }
  }
  if (std::fabs(par.a) > 1.0 || std::fabs(par.c) > 1.0 || std::fabs(par.d) > 1.0) {
    warnings.push_back(name + ": a cross term is beyond 1");
  }
}

bool IsDefault(const Incline_MagneticCorrectParameter& par) {
  return par.x0 == 0.0 && par.y0 == 0.0 && par.z0 == 0.0 && par.a == 0.0 && par.c == 0.0 &&
         par.d == 0.0 && par.b == 1.0 && par.e == 1.0;
}

void JudgeValues(ParameterFileContent& content) {
  const auto par_a = content.position.GetMagneticCorrectPar_A();
  const auto par_b = content.position.GetMagneticCorrectPar_B();
  content.calibrated = !IsDefault(par_a) || !IsDefault(par_b);
  // What stands for an entry that is missing or no number says nothing of the calibration.
  if (!content.problems.empty()) return;
  WarnOfOddCorrection("MagneticA", par_a, content.warnings);
  WarnOfOddCorrection("MagneticB", par_b, content.warnings);
  if (!content.calibrated) {
    content.warnings.emplace_back("both corrections are the default: nothing is calibrated");
  }
}

// Saving does not report a full disk.
bool IsWhole(const fs::path& path) {
  try {
    return ReadParameterFile(path.u8string()).problems.empty();
  } catch (const InputError&) {
    return false;
  }
}

}  // namespace

ParameterFileContent ReadParameterFile(const std::string& path) {
  // Says why a path cannot be opened, which the library does not.
  std::istringstream no_standard_input;
  const InputFile openable(path, no_standard_input);
  const std::wstring wide_path = fs::u8path(path).wstring();
  ParameterFileContent content;
  CParameterFile file;
  if (file.OpenForRead(wide_path) == 0 || content.position.ConfigRead(wide_path) == 0) {
    throw InputError(path, "cannot be read");
  }
  const std::string text = TextOf(wide_path);
  for (const wchar_t* const key : kParameterKeys) CheckEntry(file, key, text, content);
  if (content.entries.empty()) {
    throw InputError(path, "is no parameter file; expected entries such as [MagneticA.a]0.0");
  }
  WarnOfDuplicates(text, content.warnings);
  JudgeValues(content);
  return content;
}

void WriteParameterFile(const std::string& path, const CInclineSensor_Position& position) {
  PendingFile pending(path);
  // Nothing stands under this name that a ConfigReplace would have to keep.
  if (position.ConfigSave(pending.Path().wstring()) == 0) {
    throw OutputError(path + ": cannot be opened for writing");
  }
  if (!IsWhole(pending.Path())) {
    throw OutputError(path + ": cannot be written to its end");
  }
  pending.Commit();
}

}  // namespace tiltpole::session
