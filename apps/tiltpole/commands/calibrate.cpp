// tiltpole calibrate: fits both magnetometers to the two turns of a session.

#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "apps/session/number_text.h"
#include "apps/session/output_file.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/parameter_file.h"
#include "apps/tiltpole/screening.h"
#include "apps/tiltpole/session_table.h"
#include "apps/tiltpole/text_table.h"
#include "apps/tiltpole/turn_scatter.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"

namespace tiltpole::cli {
namespace {

using session::SampleSet;
using session::SessionSample;

const std::array<std::pair<const char*, double Incline_MagneticCorrectParameter::*>, 8> kFields = {
    {{"a", &Incline_MagneticCorrectParameter::a},
     {"b", &Incline_MagneticCorrectParameter::b},
     {"c", &Incline_MagneticCorrectParameter::c},
     {"d", &Incline_MagneticCorrectParameter::d},
     {"e", &Incline_MagneticCorrectParameter::e},
     {"x0", &Incline_MagneticCorrectParameter::x0},
     {"y0", &Incline_MagneticCorrectParameter::y0},
     {"z0", &Incline_MagneticCorrectParameter::z0}}};

struct CalibrateOptions {
  std::string session;
  std::string output;
  int screen = 0;
  bool json = false;
};

struct Turns {
  std::vector<SessionSample> horizontal;
  std::vector<SessionSample> vertical;
};

/// The correction of one magnetometer, and how round its turns are before and after.
struct MagnetometerResult {
  std::string name;
  Incline_MagneticCorrectParameter correction;
  std::array<TurnScatter, 2> before;
  std::array<TurnScatter, 2> after;
};

std::vector<SessionSample> Screened(const std::vector<SessionSample>& turn, SampleSet set,
                                    int count) {
  std::vector<SessionSample> selected;
  for (const std::size_t place : ScreenTurn(turn, set, count).selected) {
    selected.push_back(turn[place]);
  }
  return selected;
}

Turns ReadTurns(const CalibrateOptions& options, Console& console) {
  const SessionTable table = ReadSession(
      options.session, {SampleSet::Horizontal, SampleSet::Vertical}, console, "calibrate");
  Turns turns{SamplesOf(table, SampleSet::Horizontal), SamplesOf(table, SampleSet::Vertical)};
  if (options.screen > 0) {
    turns.horizontal = Screened(turns.horizontal, SampleSet::Horizontal, options.screen);
    turns.vertical = Screened(turns.vertical, SampleSet::Vertical, options.screen);
  }
  return turns;
}

// Readings beyond all measure can overflow in the fit, which then ends without a failure.
bool IsFinite(const CInclineSensor_MagneticAdjust& adjust) {
  for (const auto& correction : {adjust.GetCorrectPar_A(), adjust.GetCorrectPar_B()}) {
    for (const auto& [name, field] : kFields) {
      if (!std::isfinite(correction.*field)) return false;
    }
  }
  const Incline_MagneticTranslationParameter translation = adjust.GetCoorTrans();
  return std::isfinite(translation.dX + translation.dY + translation.dZ);
}

void Fit(CInclineSensor_MagneticAdjust& adjust, const Turns& turns, const std::string& name) {
  for (SessionSample sample : turns.horizontal) adjust.Horizontal_Add(&sample.sensors);
  for (SessionSample sample : turns.vertical) adjust.Vertical_Add(&sample.sensors);
  if (adjust.Adjust() != 0 && IsFinite(adjust)) return;
  throw DataError(name + ": the calibration failed with " +
                  std::to_string(turns.horizontal.size()) + " horizontal and " +
                  std::to_string(turns.vertical.size()) + " vertical samples");
}

std::vector<MagneticReading> ReadingsOf(const std::vector<SessionSample>& turn, bool of_b) {
  std::vector<MagneticReading> readings;
  for (const auto& sample : turn) {
    const PoseSensorData& data = sample.sensors;
    readings.push_back(of_b
                           ? MagneticReading{data.MagneticX_B, data.MagneticY_B, data.MagneticZ_B}
                           : MagneticReading{data.MagneticX_A, data.MagneticY_A, data.MagneticZ_A});
  }
  return readings;
}

MagnetometerResult ResultOf(const Turns& turns, bool of_b,
                            const Incline_MagneticCorrectParameter& correction) {
  const auto horizontal = ReadingsOf(turns.horizontal, of_b);
  const auto vertical = ReadingsOf(turns.vertical, of_b);
  return {of_b ? "B" : "A",
          correction,
          {ScatterBefore(horizontal, TurnPlane::XY), ScatterBefore(vertical, TurnPlane::XZ)},
          {ScatterAfter(horizontal, TurnPlane::XY, correction),
           ScatterAfter(vertical, TurnPlane::XZ, correction)}};
}

constexpr const char* kTurnNames[] = {"horizontal", "vertical"};

void PrintText(const std::array<MagnetometerResult, 2>& results,
               const Incline_MagneticTranslationParameter& translation, std::ostream& out) {
  TextTable parameters({"parameter", "A", "B"});
  for (const auto& [name, field] : kFields) {
    parameters.Row({name, session::FixedText(results[0].correction.*field, 10),
                    session::FixedText(results[1].correction.*field, 10)});
  }
  parameters.Print(out);
  out << "translation: dX " << session::FixedText(translation.dX, 4) << ", dY "
      << session::FixedText(translation.dY, 4) << ", dZ " << session::FixedText(translation.dZ, 4)
      << "\n\n";

  TextTable scatter({"turn's radius [counts]", "mean before", "scatter", "largest", "mean after",
                     "scatter", "largest"});
  for (const auto& result : results) {
    for (std::size_t i = 0; i < 2; ++i) {
      std::vector<std::string> row = {result.name + " " + kTurnNames[i]};
      for (const TurnScatter& turn : {result.before[i], result.after[i]}) {
        row.push_back(session::FixedText(turn.radius, 2));
        row.push_back(session::FixedText(turn.rms, 2));
        row.push_back(session::FixedText(turn.largest, 2));
      }
      scatter.Row(row);
    }
  }
  scatter.Print(out);
}

nlohmann::ordered_json ToJson(const TurnScatter& scatter) {
  return {{"radius", scatter.radius}, {"rms", scatter.rms}, {"largest", scatter.largest}};
}

void PrintJson(const std::array<MagnetometerResult, 2>& results,
               const Incline_MagneticTranslationParameter& translation, std::ostream& out) {
  nlohmann::ordered_json json;
  for (const auto& result : results) {
    nlohmann::ordered_json& entry = json["magnetometer_" + result.name];
    for (const auto& [name, field] : kFields) entry[name] = result.correction.*field;
    for (std::size_t i = 0; i < 2; ++i) {
      entry["radius_before"][kTurnNames[i]] = ToJson(result.before[i]);
      entry["radius_after"][kTurnNames[i]] = ToJson(result.after[i]);
    }
  }
  json["translation"] = {{"dX", translation.dX}, {"dY", translation.dY}, {"dZ", translation.dZ}};
  out << json.dump(2) << '\n';
}

int Calibrate(const CalibrateOptions& options, Console& console) {
  const Turns turns = ReadTurns(options, console);
  CInclineSensor_MagneticAdjust adjust;
  Fit(adjust, turns, options.session);

  CInclineSensor_Position position;
  position.SetMagneticCorrectPar_A(adjust.GetCorrectPar_A());
  position.SetMagneticCorrectPar_B(adjust.GetCorrectPar_B());
  position.SetMagneticTranslationPar(adjust.GetCoorTrans());
  WriteParameterFile(options.output, position);

  const std::array<MagnetometerResult, 2> results = {
      ResultOf(turns, false, adjust.GetCorrectPar_A()),
      ResultOf(turns, true, adjust.GetCorrectPar_B())};
  (options.json ? PrintJson : PrintText)(results, adjust.GetCoorTrans(), console.out);
  return kDone;
}

}  // namespace

void AddCalibrate(CLI::App& program, Action& action) {
  const auto options = std::make_shared<CalibrateOptions>();
  CLI::App& command = *program.add_subcommand(
      "calibrate",
      "Fit both magnetometers to the horizontal and the vertical turn of a session and write the "
      "parameter file. Prints the parameters, and how far the readings of each turn lie off a "
      "circle before (about the middle of their box) and after. When the fit fails, the exit "
      "status "
      "is 1 and an old parameter file stays as it was.");
  command.add_option("session", options->session, "Session file")->required();
  command.add_option("-o,--output", options->output, "Parameter file to write")->required();
  command
      .add_option("--screen", options->screen,
                  "Screen both turns and use about so many samples of each; 0 uses all samples")
      ->check(CLI::Range(0, 1'000'000'000))
      ->capture_default_str();
  command.add_flag("--json", options->json, "The result as JSON");
  RunsWith(command, action, options, Calibrate);
}

}  // namespace tiltpole::cli
