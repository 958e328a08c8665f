#pragma once

// A folder of its own for a test, gone with everything in it when the test ends.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

#include "tiltpole/platform/text.h"

namespace tiltpole_test {

// The standard library turns wide text into a path by the process's locale on some systems.
inline std::filesystem::path NativePath(const std::wstring& path) {
  return std::filesystem::u8path(tiltpole::detail::NarrowText(path));
}

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::random_device source;
    do {
      const std::uint64_t number = (std::uint64_t{source()} << 32) | source();
      path_ = std::filesystem::temp_directory_path() / ("tiltpole_test_" + std::to_string(number));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // The wide path of a file in the folder, whether or not it is there.
  std::wstring operator/(const std::wstring& name) const { return Path() + L"/" + name; }
  std::wstring Path() const { return tiltpole::detail::WideText(path_.u8string()); }

  // The same for tests that, like the hosts, hold paths as UTF-8.
  std::string File(const std::string& name) const {
    return (path_ / std::filesystem::u8path(name)).u8string();
  }
  std::string Write(const std::string& name, const std::string& content) const {
    std::ofstream(path_ / std::filesystem::u8path(name), std::ios::binary) << content;
    return File(name);
  }
  std::string Read(const std::string& name) const {
    std::ifstream in(path_ / std::filesystem::u8path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  bool Has(const std::string& name) const {
    return std::filesystem::exists(path_ / std::filesystem::u8path(name));
  }
  std::ptrdiff_t CountFiles() const {
    return std::distance(std::filesystem::directory_iterator(path_), {});
  }

 private:
  std::filesystem::path path_;
};

inline void WriteBytes(const std::wstring& path, const std::string& bytes) {
  std::ofstream(NativePath(path), std::ios::binary) << bytes;
}

inline std::string ReadBytes(const std::wstring& path) {
  std::ifstream file(NativePath(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace tiltpole_test
