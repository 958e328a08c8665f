#pragma once

// The subcommands: one file each, entered in the list in command_line.cpp.

#include <functional>

#include <CLI/CLI.hpp>

#include "apps/tiltpole/console.h"

namespace tiltpole::cli {

/// What the command line asked for, to be run once all of it has been understood.
using Action = std::function<int(Console&)>;

// Each adds its subcommand to the program; the subcommand sets the action.
void AddSimulate(CLI::App& program, Action& action);
void AddParams(CLI::App& program, Action& action);
void AddMeasure(CLI::App& program, Action& action);
void AddCalibrate(CLI::App& program, Action& action);
void AddScreen(CLI::App& program, Action& action);
void AddTransform(CLI::App& program, Action& action);
#ifdef TILTPOLE_COMMANDS_DRAW
void AddDraw(CLI::App& program, Action& action);
#endif

/// Makes a subcommand run @p run with its own options, which live as long as the action.
template <typename Options>
void RunsWith(CLI::App& command, Action& action, const std::shared_ptr<Options>& options,
              int (*run)(const Options&, Console&)) {
  command.callback([&action, options, run] {
    action = [options, run](Console& console) { return run(*options, console); };
  });
}

}  // namespace tiltpole::cli
