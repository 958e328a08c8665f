#pragma once

// What a command reads from and writes to.

#include <istream>
#include <ostream>
#include <stdexcept>

namespace tiltpole::cli {

/// The program's standard streams; a test gives its own.
struct Console {
  std::istream& in;
  std::ostream& out;
  std::ostream& err;
  /// Whether somebody watches `err`, so that progress is worth showing there.
  bool err_is_terminal = false;
};

/// How a command ends.
enum ExitStatus : int {
  kDone = 0,
  kDataUnusable = 1,  ///< the input was read, but cannot be used; the messages say why
  kWrongUsage = 2,    ///< wrong arguments, unreadable input or an output that cannot be written
};

/// Data that were read but cannot be used: exit status 1.
class DataError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tiltpole::cli
