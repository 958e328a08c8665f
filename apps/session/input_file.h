#pragma once

// A file to read, or standard input for `-`.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <istream>
#include <optional>
#include <string>

namespace tiltpole::session {

/// A file opened for reading in binary; InputError where that is not possible.
class InputFile {
 public:
  /// @param path            UTF-8; `-` means @p standard_input
  /// @param standard_input  stays the caller's, and must outlive this object
  InputFile(const std::string& path, std::istream& standard_input);

  std::istream& Stream() { return standard_input_ != nullptr ? *standard_input_ : file_; }
  /// What messages call it.
  const std::string& Name() const { return name_; }
  /// Its size in bytes, where it has one: for showing progress.
  std::optional<std::uintmax_t> Size() const { return size_; }

 private:
  std::string name_;
  std::istream* standard_input_ = nullptr;
  std::ifstream file_;
  std::optional<std::uintmax_t> size_;
};

}  // namespace tiltpole::session
