#pragma once

// Tables for people.

#include <ostream>
#include <string>
#include <vector>

namespace tiltpole::cli {

/// Rows of cells whose columns are as wide as they need to be: the first column to the left, the
/// others to the right.
class TextTable {
 public:
  explicit TextTable(std::vector<std::string> header) { rows_.push_back(std::move(header)); }
  void Row(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  void Print(std::ostream& out) const;

 private:
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace tiltpole::cli
