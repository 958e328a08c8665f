#pragma once

// The view files of the plots beside the running test program: none before and after each test.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tiltpole/controls/detail/view_file.h"

namespace tiltpole_test {

class ViewFiles {
 public:
  ViewFiles() { Remove(); }
  ~ViewFiles() { Remove(); }
  ViewFiles(const ViewFiles&) = delete;
  ViewFiles& operator=(const ViewFiles&) = delete;

  static bool Exists(const std::filesystem::path& path) { return std::filesystem::exists(path); }
  static std::string Read(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  static void Write(const std::filesystem::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }

  const std::filesystem::path xy =
      tiltpole::detail::ViewFilePath(tiltpole::detail::kPlotXY, tiltpole::detail::ProgramFolder());
  const std::filesystem::path xz =
      tiltpole::detail::ViewFilePath(tiltpole::detail::kPlotXZ, tiltpole::detail::ProgramFolder());

  void Remove() const {
    std::error_code ignored;
    std::filesystem::remove_all(xy, ignored);
    std::filesystem::remove_all(xz, ignored);
  }
};

}  // namespace tiltpole_test
