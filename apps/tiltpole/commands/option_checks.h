#pragma once

// What the options of several subcommands must hold to.

#include <string>

#include <CLI/CLI.hpp>

#include "apps/session/input_error.h"
#include "apps/session/number_text.h"
#include "apps/session/output_file.h"

namespace tiltpole::cli {

/// A finite number in a range, both ends included. CLI::Range lets not-a-number through.
inline CLI::Validator NumberBetween(double least, double most) {
  std::string range;
  session::AppendNumber(range, least);
  range += " to ";
  session::AppendNumber(range, most);
  const auto check = [least, most, range](const std::string& text) -> std::string {
    const auto number = session::ParseNumber(text);
    if (number && *number >= least && *number <= most) return {};
    return text + " is no number from " + range;
  };
  return {check, range};
}

/// A whole number in a range, both ends included, told in the same words.
template <typename Integer>
CLI::Validator WholeNumberBetween(Integer least, Integer most) {
  return CLI::Range(least, most).description(std::to_string(least) + " to " + std::to_string(most));
}

/// The name of a parameter file, which cannot be a stream: it is checked before it is used, and
/// takes the place of an old one.
inline CLI::Validator ParameterFileName() {
  const auto check = [](const std::string& text) -> std::string {
    return text == "-" ? "a parameter file has a name and cannot be a standard stream" : "";
  };
  return {check, "a name, not '-'"};
}

/// Of two outputs in one file the second would take the place of the first.
/// @param b  may be empty: no second output
inline void RefuseOneFileForTwoOutputs(const std::string& a, const std::string& b) {
  if (b.empty() || !session::AreOneOutput(a, b)) return;
  throw session::OutputError(b + ": is named for two outputs");
}

}  // namespace tiltpole::cli
