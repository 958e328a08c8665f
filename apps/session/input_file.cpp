#include "apps/session/input_file.h"

#include <system_error>

#include "apps/session/input_error.h"

namespace tiltpole::session {

InputFile::InputFile(const std::string& path, std::istream& standard_input) : name_(path) {
  if (path == "-") {
    name_ = "standard input";
    standard_input_ = &standard_input;
    return;
  }
  const auto native = std::filesystem::u8path(path);
  std::error_code error;
  const auto status = std::filesystem::status(native, error);
  if (!std::filesystem::exists(status)) throw InputError(path, "there is no such file");
  if (std::filesystem::is_directory(status)) throw InputError(path, "is a folder, not a file");
  file_.open(native, std::ios::binary);
  if (!file_) throw InputError(path, "cannot be opened for reading");
  if (std::filesystem::is_regular_file(status)) {
    const auto size = std::filesystem::file_size(native, error);
    if (!error) size_ = size;
  }
}

}  // namespace tiltpole::session
