#include "apps/tiltpole/command_line.h"

#include <exception>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/session/input_error.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/messages.h"
#include "tiltpole/version.h"

namespace tiltpole::cli {
namespace {

using AddCommand = void (*)(CLI::App&, Action&);
constexpr AddCommand kCommands[] = {
    AddSimulate, AddCalibrate, AddMeasure, AddScreen, AddParams, AddTransform,
#ifdef TILTPOLE_COMMANDS_DRAW
    AddDraw,
#endif
};

constexpr const char* kFooter =
    "Files are CSV with a header row; '-' stands for standard input or output. An output file\n"
    "appears whole or not at all.\n"
    "Exit status: 0 done; 1 the data could not be used, the messages say why; 2 wrong usage,\n"
    "unreadable input or an output that cannot be written.";

int Fail(const char* what, ExitStatus status, Console& console) {
  console.err << "tiltpole: " << what << std::endl;
  return status;
}

// The parser misses the subcommand before it minds the word that stands in its place.
std::string UsageMessage(const CLI::App* program, const CLI::Error& error) {
  const CLI::App* last = program;
  while (!last->get_subcommands().empty()) last = last->get_subcommands().front();
  const std::vector<std::string> others = last->remaining();
  const bool unknown =
      last->get_require_subcommand_min() > 0 && !others.empty() && others.front()[0] != '-';
  const std::string message = unknown ? session::Quoted(others.front()) + " is no subcommand\n" +
                                            "Run with --help for more information.\n"
                                      : CLI::FailureMessage::simple(program, error);
  return "tiltpole: " + message;
}

int RunAction(const Action& action, Console& console) {
  const MessagesToStream messages(console.err);
  try {
    return action(console);
  } catch (const DataError& error) {
    return Fail(error.what(), kDataUnusable, console);
  } catch (const std::bad_alloc&) {
    return Fail("there is not enough memory", kWrongUsage, console);
  } catch (const std::exception& error) {
    return Fail(error.what(), kWrongUsage, console);
  }
}

int ParseAndRun(const std::vector<std::string>& arguments, Console& console) {
  CLI::App program("Measure with a tilted survey pole.", "tiltpole");
  program.set_version_flag("--version", "tiltpole " TILTPOLE_VERSION);
  program.require_subcommand(1);
  program.footer(kFooter);
  program.failure_message(UsageMessage);
  Action action;
  for (const AddCommand add : kCommands) add(program, action);

  // The parser takes its arguments from the back.
  std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
  try {
    program.parse(reversed);
  } catch (const CLI::ParseError& error) {
    return program.exit(error, console.out, console.err) == 0 ? kDone : kWrongUsage;
  }
  return RunAction(action, console);
}

}  // namespace

int RunCommandLine(const std::vector<std::string>& arguments, Console& console) {
  const int status = ParseAndRun(arguments, console);
  // A summary or a help that nobody can have read is no success, even where all files are written.
  if (console.out.flush() || status != kDone) return status;
  return Fail("standard output: cannot be written to its end", kWrongUsage, console);
}

}  // namespace tiltpole::cli
