// tiltpole screen: how complete a turn is, and a clean, evenly spread part of it.

#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "apps/session/output_file.h"
#include "apps/session/session_writer.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/commands/option_checks.h"
#include "apps/tiltpole/screening.h"
#include "apps/tiltpole/session_table.h"
#include "apps/tiltpole/summary.h"
#include "apps/tiltpole/text_table.h"

namespace tiltpole::cli {
namespace {

struct ScreenOptions {
  std::string session;
  std::string set;
  int select = 0;
  std::string output = "-";
  bool json = false;
};

std::string MissingText(const ScreenedTurn& turn) {
  std::string text;
  for (const auto& range : turn.missing) {
    text +=
        (text.empty() ? "" : ", ") + std::to_string(range.from) + " to " + std::to_string(range.to);
  }
  return text.empty() ? "none" : text;
}

void PrintText(const ScreenedTurn& turn, std::ostream& out) {
  TextTable table({"turn", "result"});
  table.Row({"samples", std::to_string(turn.samples)});
  table.Row({"coverage", std::to_string(turn.coverage_percent) + " %"});
  table.Row({"every sector of 5 degrees hit", turn.every_sector ? "yes" : "no"});
  table.Row({"left after the time filter", std::to_string(turn.after_time)});
  table.Row({"left after the distance filter", std::to_string(turn.after_distance)});
  table.Row({"left after the azimuth filter", std::to_string(turn.after_azimuth)});
  table.Row({"selected", std::to_string(turn.selected.size())});
  table.Row({"selection complete", turn.complete ? "yes" : "no"});
  table.Print(out);
  out << "missing azimuths [degrees]: " << MissingText(turn) << '\n';
}

void PrintJson(const ScreenedTurn& turn, std::ostream& out) {
  nlohmann::ordered_json json;
  json["samples"] = turn.samples;
  json["coverage_percent"] = turn.coverage_percent;
  json["every_sector"] = turn.every_sector;
  json["missing_azimuths"] = nlohmann::ordered_json::array();
  for (const auto& range : turn.missing) {
    json["missing_azimuths"].push_back({{"from", range.from}, {"to", range.to}});
  }
  json["after_time_filter"] = turn.after_time;
  json["after_distance_filter"] = turn.after_distance;
  json["after_azimuth_filter"] = turn.after_azimuth;
  json["selected"] = turn.selected.size();
  json["complete"] = turn.complete;
  out << json.dump(2) << '\n';
}

int Screen(const ScreenOptions& options, Console& console) {
  const session::SampleSet set = *session::SampleSetFromName(options.set);
  const SessionTable table = ReadSession(options.session, {set}, console, "screen");
  if (table.samples.empty()) {
    throw DataError(table.name + ": no row belongs to the set '" + options.set + "'");
  }
  const ScreenedTurn turn = ScreenTurn(table.samples, set, options.select);

  session::OutputFile output(options.output, console.out);
  std::ostream& summary = SummaryStream(output, console);
  (options.json ? PrintJson : PrintText)(turn, summary);
  if (turn.selected.empty()) throw DataError(table.name + ": the filters leave no sample");
  session::SessionWriter writer(output.Stream(), table.columns);
  for (const std::size_t place : turn.selected) writer.Write(table.samples[place]);
  output.Commit();
  return kDone;
}

}  // namespace

void AddScreen(CLI::App& program, Action& action) {
  const auto options = std::make_shared<ScreenOptions>();
  CLI::App& command = *program.add_subcommand(
      "screen",
      "Screen one turn of a session: how much of the circle is covered, which azimuths are "
      "missing, how many samples each filter leaves; write the selected samples, by rising "
      "azimuth, "
      "as a session. Azimuths are directions of magnetometer A's reading about the turn's centre.");
  command.add_option("session", options->session, "Session file")->required();
  command.add_option("--set", options->set, "Which turn: horizontal or vertical")
      ->required()
      ->check(CLI::IsMember({"horizontal", "vertical"}));
  command
      .add_option("--select", options->select,
                  "Thin to about so many samples; 0 keeps all that pass the filters")
      ->check(WholeNumberBetween(0, 1'000'000'000))
      ->capture_default_str();
  command.add_option("-o,--output", options->output, "Where the rows go")->capture_default_str();
  command.add_flag("--json", options->json, kSummaryOptionHelp);
  RunsWith(command, action, options, Screen);
}

}  // namespace tiltpole::cli
