// tiltpole params: shows and checks a parameter file.

#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "apps/session/number_text.h"
#include "apps/session/parameter_file.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/commands/option_checks.h"
#include "apps/tiltpole/text_table.h"

namespace tiltpole::cli {
namespace {

struct ParamsOptions {
  std::string file;
  bool json = false;
};

void PrintText(const session::ParameterFileContent& content, std::ostream& out) {
  TextTable table({"entry", "value"});
  for (const auto& entry : content.entries) {
    table.Row({entry.key, session::FixedText(entry.value, 10)});
  }
  table.Print(out);
}

void PrintJson(const session::ParameterFileContent& content, std::ostream& out) {
  nlohmann::ordered_json json;
  json["usable"] = content.problems.empty();
  json["entries"] = nlohmann::ordered_json::object();
  for (const auto& entry : content.entries) json["entries"][entry.key] = entry.value;
  json["problems"] = content.problems;
  json["warnings"] = content.warnings;
  out << json.dump(2) << '\n';
}

int Params(const ParamsOptions& options, Console& console) {
  const session::ParameterFileContent content = session::ReadParameterFile(options.file);
  (options.json ? PrintJson : PrintText)(content, console.out);
  for (const auto& messages : {content.problems, content.warnings}) {
    for (const auto& message : messages) {
      console.err << "tiltpole: " << options.file << ": " << message << '\n';
    }
  }
  return content.problems.empty() ? kDone : kDataUnusable;
}

}  // namespace

void AddParams(CLI::App& program, Action& action) {
  const auto options = std::make_shared<ParamsOptions>();
  CLI::App& command = *program.add_subcommand(
      "params",
      "Show and check a parameter file. Exit status 1 when an entry is missing or no number.");
  command.add_option("file", options->file, "Parameter file")
      ->required()
      ->check(ParameterFileName());
  command.add_flag("--json", options->json, "As JSON");
  RunsWith(command, action, options, Params);
}

}  // namespace tiltpole::cli
