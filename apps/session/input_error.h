#pragma once

// What is wrong with a file that a program was given: which file, which line, which column, and
// what was expected there.

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tiltpole::session {

/// An input that cannot be read as what it should be. `what()` is one line for the user, for
/// example `block.csv:17: column mag_x_a: 'abc' is no number; expected a finite decimal number`.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;

  /// About a file as a whole.
  InputError(const std::string& file, std::string_view message)
      : std::runtime_error(file + ": " + std::string(message)) {}

  /// About one line; lines count from 1.
  InputError(const std::string& file, std::size_t line, std::string_view message)
      : InputError(file + ":" + std::to_string(line), message) {}

  /// About one field, by the name of its column.
  InputError(const std::string& file, std::size_t line, std::string_view column,
             std::string_view message)
      : InputError(file, line, "column " + std::string(column) + ": " + std::string(message)) {}
};

/// An output that cannot be written.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// @p text in single quotes, cut short and free of control characters: fit for a message.
std::string Quoted(std::string_view text);

}  // namespace tiltpole::session
