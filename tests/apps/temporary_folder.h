#pragma once

// A folder for one test's files, removed with all that it holds.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>

namespace tiltpole_test {

class TemporaryFolder {
 public:
  TemporaryFolder()
      : path_(std::filesystem::temp_directory_path() /
              ("tiltpole_test_" + std::to_string(std::random_device()()))) {
    std::filesystem::create_directory(path_);
  }
  ~TemporaryFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// The path of a file in the folder, as UTF-8.
  std::string File(const std::string& name) const {
    return (path_ / std::filesystem::u8path(name)).u8string();
  }
  std::string Write(const std::string& name, const std::string& content) const {
    std::ofstream(std::filesystem::u8path(File(name)), std::ios::binary) << content;
    return File(name);
  }
  std::string Read(const std::string& name) const {
    std::ifstream in(std::filesystem::u8path(File(name)), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  bool Has(const std::string& name) const {
    return std::filesystem::exists(std::filesystem::u8path(File(name)));
  }
  int CountFiles() const {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      count += entry.path().empty() ? 0 : 1;
    }
    return count;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tiltpole_test
