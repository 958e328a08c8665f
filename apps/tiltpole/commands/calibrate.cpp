// tiltpole calibrate: fits both magnetometers to the two turns of a session.

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "apps/session/number_text.h"
#include "apps/session/output_file.h"
#include "apps/session/parameter_file.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/commands/option_checks.h"
#include "apps/tiltpole/fitted_parameters.h"
#include "apps/tiltpole/messages.h"
#include "apps/tiltpole/quality_output.h"
#include "apps/tiltpole/report/page.h"
#include "apps/tiltpole/screening.h"
#include "apps/tiltpole/session_table.h"
#include "apps/tiltpole/summary.h"
#include "apps/tiltpole/text_table.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

namespace tiltpole::cli {
namespace {

using session::SampleSet;
using session::SessionSample;

struct CalibrateOptions {
  std::string session;
  std::string output;
  std::string report;
  int screen = 0;
  bool json = false;
};

struct Turns {
  std::vector<PoseSensorData> horizontal;
  std::vector<PoseSensorData> vertical;
};

std::vector<PoseSensorData> TurnOf(const SessionTable& table, SampleSet set, int screen) {
  const std::vector<SessionSample> samples = SamplesOf(table, set);
  std::vector<PoseSensorData> turn;
  if (screen == 0) {
    for (const auto& sample : samples) turn.push_back(sample.sensors);
    return turn;
  }
  for (const std::size_t place : ScreenTurn(samples, set, screen).selected) {
    turn.push_back(samples[place].sensors);
  }
  return turn;
}

Turns ReadTurns(const CalibrateOptions& options, Console& console) {
  const SessionTable table = ReadSession(
      options.session, {SampleSet::Horizontal, SampleSet::Vertical}, console, "calibrate");
  return {TurnOf(table, SampleSet::Horizontal, options.screen),
          TurnOf(table, SampleSet::Vertical, options.screen)};
}

// Readings beyond all measure can overflow in the fit, which then ends without a failure.
bool IsFinite(const FittedParameters& parameters) {
  for (const auto* const correction : {&parameters.correction_a, &parameters.correction_b}) {
    for (const auto& [name, field] : kCorrectionFields) {
      if (!std::isfinite(correction->*field)) return false;
    }
  }
  const Incline_MagneticTranslationParameter& translation = parameters.translation;
  return std::isfinite(translation.dX) && std::isfinite(translation.dY) &&
         std::isfinite(translation.dZ);
}

std::string NameOfSession(const CalibrateOptions& options) {
  return options.session == "-" ? "standard input" : options.session;
}

// Where the report goes, opened before anything is fitted: a place that cannot be written to is
// told at once.
std::unique_ptr<session::OutputFile> OpenReport(const CalibrateOptions& options, Console& console) {
  if (options.report.empty()) return nullptr;
  RefuseOneFileForTwoOutputs(options.output, options.report);
  return std::make_unique<session::OutputFile>(options.report, console.out);
}

// Standard output, unless the report is there already.
std::ostream& SummaryStreamOf(const session::OutputFile* report, Console& console) {
  return report == nullptr ? console.out : SummaryStream(*report, console);
}

void WriteReport(const CalibrateOptions& options, const Turns& turns,
                 const std::optional<FittedParameters>& parameters,
                 const CalibrationQuality& quality, session::OutputFile* report) {
  if (report == nullptr) return;
  const std::string selection =
      options.screen == 0
          ? ""
          : "Selected by the screening, about " + std::to_string(options.screen) + " of each turn.";
  report->Stream() << ReportPage(
      {NameOfSession(options), selection, turns.horizontal, turns.vertical, parameters, quality});
}

// Nothing when the fit failed.
std::optional<FittedParameters> Fit(Turns& turns) {
  CInclineSensor_MagneticAdjust adjust;
  for (auto& sample : turns.horizontal) adjust.Horizontal_Add(&sample);
  for (auto& sample : turns.vertical) adjust.Vertical_Add(&sample);
  const bool fitted = adjust.Adjust() != 0;
  const FittedParameters parameters = {adjust.GetCorrectPar_A(), adjust.GetCorrectPar_B(),
                                       adjust.GetCoorTrans()};
  if (!fitted || !IsFinite(parameters)) return std::nullopt;
  return parameters;
}

void Save(const std::string& path, const FittedParameters& parameters) {
  CInclineSensor_Position position;
  position.SetMagneticCorrectPar_A(parameters.correction_a);
  position.SetMagneticCorrectPar_B(parameters.correction_b);
  position.SetMagneticTranslationPar(parameters.translation);
  session::WriteParameterFile(path, position);
}

void PrintText(const FittedParameters& parameters, const CalibrationQuality& quality,
               std::ostream& out) {
  TextTable table({"parameter", "A", "B"});
  for (const auto& [name, field] : kCorrectionFields) {
    table.Row({name, session::FixedText(parameters.correction_a.*field, 10),
               session::FixedText(parameters.correction_b.*field, 10)});
  }
  table.Print(out);
  out << "translation: dX " << session::FixedText(parameters.translation.dX, 4) << ", dY "
      << session::FixedText(parameters.translation.dY, 4) << ", dZ "
      << session::FixedText(parameters.translation.dZ, 4) << "\n\n";
  PrintQuality(quality, out);
}

void PrintJson(const FittedParameters& parameters, const CalibrationQuality& quality,
               std::ostream& out) {
  nlohmann::ordered_json json;
  for (const auto& [name, field] : kCorrectionFields) {
    json["parameters"]["A"][name] = parameters.correction_a.*field;
    json["parameters"]["B"][name] = parameters.correction_b.*field;
  }
  json["parameters"]["translation"] = {{"dX", parameters.translation.dX},
                                       {"dY", parameters.translation.dY},
                                       {"dZ", parameters.translation.dZ}};
  json["quality"] = ToJson(quality);
  out << json.dump(2) << '\n';
}

[[noreturn]] void Fail(const CalibrateOptions& options, const Turns& turns,
                       const CalibrationQuality& quality, session::OutputFile* report,
                       Console& console) {
  WriteReport(options, turns, std::nullopt, quality, report);
  if (report != nullptr) report->Commit();
  PrintReasons(quality, console.err);
  if (options.json) {
    nlohmann::ordered_json json;
    json["quality"] = ToJson(quality);
    SummaryStreamOf(report, console) << json.dump(2) << '\n';
  }
  throw DataError(NameOfSession(options) + ": the calibration failed with " +
                  std::to_string(turns.horizontal.size()) + " horizontal and " +
                  std::to_string(turns.vertical.size()) + " vertical samples");
}

int Calibrate(const CalibrateOptions& options, Console& console) {
  Turns turns = ReadTurns(options, console);
  const auto report = OpenReport(options, console);
  const MessagesToStream messages(console.err);
  const std::optional<FittedParameters> parameters = Fit(turns);
  if (!parameters) {
    Fail(options, turns, JudgeFailedCalibration(turns.horizontal, turns.vertical, messages.Shown()),
         report.get(), console);
  }
  const CalibrationQuality quality =
      JudgeCalibration(turns.horizontal, turns.vertical, parameters->correction_a,
                       parameters->correction_b, parameters->translation);
  WriteReport(options, turns, parameters, quality, report.get());
  Save(options.output, *parameters);
  if (report) report->Commit();
  (options.json ? PrintJson : PrintText)(*parameters, quality,
                                         SummaryStreamOf(report.get(), console));
  return kDone;
}

}  // namespace

void AddCalibrate(CLI::App& program, Action& action) {
  const auto options = std::make_shared<CalibrateOptions>();
  CLI::App& command = *program.add_subcommand(
      "calibrate",
      "Fit both magnetometers to the horizontal and the vertical turn of a session and write the "
      "parameter file. Prints the parameters, how far the readings of each turn lie off a circle "
      "before and after, the heading error to be expected, and a verdict with its reasons. When "
      "the fit fails, the reasons are told, the exit status is 1 and an old parameter file stays "
      "as it was.");
  command.add_option("session", options->session, "Session file")->required();
  command.add_option("-o,--output", options->output, "Parameter file to write")
      ->required()
      ->check(ParameterFileName());
  command
      .add_option("--screen", options->screen,
                  "Screen both turns and use about so many samples of each; 0 uses all samples")
      ->check(WholeNumberBetween(0, 1'000'000'000))
      ->capture_default_str();
  command.add_option(
      "--report", options->report,
      "HTML page to write, also when the fit fails: the verdict and its reasons, both turns before "
      "and after as pictures, residuals and the expected heading error by direction, all figures");
  command.add_flag("--json", options->json, "The result as JSON");
  RunsWith(command, action, options, Calibrate);
}

}  // namespace tiltpole::cli
