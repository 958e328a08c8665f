#pragma once

// How far a long command has come, for somebody who watches a terminal.

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "apps/tiltpole/console.h"

namespace tiltpole::cli {

/// A line on a terminal that is rewritten a few times a second, and wiped at the end. Elsewhere
/// nothing is shown.
class Progress {
 public:
  /// @param what   what is going on, in a word or two
  /// @param total  how much there is to do, where that is known
  Progress(Console& console, std::string what, std::optional<std::uint64_t> total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Another row is done; @p done says how much of the total that makes.
  void Row(std::uint64_t done);

 private:
  void Show(std::uint64_t done);

  Console& console_;
  std::string what_;
  std::optional<std::uint64_t> total_;
  std::uint64_t rows_ = 0;
  bool shown_ = false;
  std::chrono::steady_clock::time_point next_;
};

}  // namespace tiltpole::cli
