// tiltpole measure: where the tip is, sample by sample.

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "apps/session/input_file.h"
#include "apps/session/output_file.h"
#include "apps/session/parameter_file.h"
#include "apps/session/session_reader.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/commands/option_checks.h"
#include "apps/tiltpole/measure_summary.h"
#include "apps/tiltpole/measured_rows.h"
#include "apps/tiltpole/progress.h"
#include "apps/tiltpole/summary.h"
#include "apps/tiltpole/tip_solutions.h"
#include "tiltpole/quality/point_quality.h"

namespace tiltpole::cli {
namespace {

using session::SessionSample;

struct MeasureOptions {
  std::string session;
  std::string params;
  double pole_length = 0.0;
  std::string set = "measure";
  std::string solution = "position";
  PointDeviations deviations;
  double heading_deviation = 1.0;
  bool no_deviations = false;
  std::string output = "-";
  bool json = false;
};

xyhCoordinate Sum(const xyhCoordinate& a, const xyhCoordinate& b) {
  return {a.x + b.x, a.y + b.y, a.h + b.h};
}

xyhCoordinate Difference(const xyhCoordinate& a, const xyhCoordinate& b) {
  return {a.x - b.x, a.y - b.y, a.h - b.h};
}

class Measuring {
 public:
  Measuring(const CInclineSensor_Position& position, const MeasureOptions& options)
      : position_(position),
        options_(options),
        solution_(TipSolutionIndex(options.solution)),
        summary_(solution_) {
    tip_options_.MagneticBiasAngle_A = position.GetMagneticBiasAngle_A();
    tip_options_.MagneticBiasAngle_B = position.GetMagneticBiasAngle_B();
    tip_options_.HeadingDeviation_A = options.heading_deviation;
    tip_options_.HeadingDeviation_B = options.heading_deviation;
  }

  /// Works out the tip of one sample; @p measured gets its headings.
  MeasuredTip Measure(const SessionSample& sample, PoseSensorData& measured) {
    measured = sample.sensors;
    const TipOffsets offsets = SolveTip(position_, measured, options_.pole_length, tip_options_);
    MeasuredTip tip;
    tip.offset = offsets[solution_];
    tip.stationary = position_.IsStationary() != 0;
    tip.interference = position_.IsMagneticInterference() != 0;
    summary_.AddSample(measured, tip.stationary, tip.interference);
    if (!options_.no_deviations) tip.deviations = DeviationsOf(measured);
    if (!sample.antenna) return tip;

    tip.position = Sum(*sample.antenna, tip.offset);
    if (!sample.true_tip) return tip;
    tip.error = Difference(*tip.position, *sample.true_tip);
    CompareSolutions(sample, offsets);
    return tip;
  }

  const MeasureSummary& Summary() const { return summary_; }

 private:
  xyhCoordinate DeviationsOf(const PoseSensorData& measured) const {
    const PointQuality quality =
        JudgePoint(measured, options_.pole_length, tip_options_, options_.deviations);
    return {quality.North, quality.East, quality.Height};
  }

  void CompareSolutions(const SessionSample& sample, const TipOffsets& offsets) {
    std::array<double, 4> errors{};
    for (std::size_t i = 0; i < errors.size(); ++i) {
      errors[i] = Length(Difference(Sum(*sample.antenna, offsets[i]), *sample.true_tip));
    }
    const double to_horizontal =
        position_.GetAngleofPoletoHorizontal(sample.sensors.InclineX, sample.sensors.InclineY);
    summary_.AddErrors(90.0 - to_horizontal, errors);
  }

  CInclineSensor_Position position_;
  const MeasureOptions& options_;
  RigorousTipOptions tip_options_;
  std::size_t solution_;
  MeasureSummary summary_;
};

std::string Joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const auto& part : parts) text += (text.empty() ? "" : "; ") + part;
  return text;
}

CInclineSensor_Position ReadUsableParameters(const std::string& path, std::ostream& warnings) {
  const session::ParameterFileContent content = session::ReadParameterFile(path);
  if (!content.problems.empty()) throw DataError(path + ": " + Joined(content.problems));
  for (const auto& warning : content.warnings) {
    warnings << "tiltpole: " << path << ": " << warning << '\n';
  }
  return content.position;
}

CInclineSensor_Position ParametersOf(const MeasureOptions& options, Console& console) {
  if (!options.params.empty()) return ReadUsableParameters(options.params, console.err);
  console.err << "tiltpole: no --params: measuring with default parameters, not calibrated\n";
  return {};
}

int Measure(const MeasureOptions& options, Console& console) {
  session::InputFile input(options.session, console.in);
  session::SessionReader reader(input.Stream(), input.Name());
  Measuring measuring(ParametersOf(options, console), options);
  const auto wanted = session::SampleSetFromName(options.set);
  session::OutputFile output(options.output, console.out);
  MeasuredRowWriter writer(output.Stream(), reader.Columns(), !options.no_deviations);
  {
    Progress progress(console, "measure", input.Size());
    SessionSample sample;
    PoseSensorData measured;
    while (output.Stream() && reader.Next(sample)) {
      progress.Row(reader.Table().BytesRead());
      if (sample.set != wanted) continue;
      const MeasuredTip tip = measuring.Measure(sample, measured);
      writer.Write(sample, measured, tip);
    }
  }
  const MeasureSummary& summary = measuring.Summary();
  if (output.Stream() && summary.Samples() == 0) {
    throw DataError(input.Name() + ": no row belongs to the set '" + options.set + "'");
  }
  output.Commit();
  std::ostream& summary_stream = SummaryStream(output, console);
  if (options.json) summary_stream << summary.ToJson().dump(2) << '\n';
  if (!options.json) summary.PrintText(summary_stream);
  return kDone;
}

void AddDeviationOptions(CLI::App& command, MeasureOptions& options) {
  const auto add = [&command](const char* name, double& value, const char* help) {
    command.add_option(name, value, help)->check(NumberBetween(0.0, 1e6))->capture_default_str();
  };
  PointDeviations& deviations = options.deviations;
  add("--tilt-sd", deviations.Tilt, "Standard deviation of each tilt, degrees");
  command
      .add_option("--heading-sd", options.heading_deviation,
                  "Standard deviation of each magnetometer's heading, degrees")
      ->check(NumberBetween(1e-9, 360.0))
      ->capture_default_str();
  add("--length-sd", deviations.Length, "Standard deviation of the pole length, metres");
  add("--antenna-sd", deviations.AntennaPlane,
      "Standard deviation of the antenna's north and east, metres");
  add("--antenna-height-sd", deviations.AntennaHeight,
      "Standard deviation of the antenna's height, metres");
  command.add_flag(
      "--no-deviations", options.no_deviations,
      "Leave the tip's standard deviations out, which is faster. They are those of the "
      "rigorous solution: another one's own error comes on top");
}

}  // namespace

void AddMeasure(CLI::App& program, Action& action) {
  const auto options = std::make_shared<MeasureOptions>();
  CLI::App& command = *program.add_subcommand(
      "measure",
      "Work out the tip for every sample of a set: its offset from the antenna, its position where "
      "the antenna's is given, both headings, the stationary and interference flags, the tip's "
      "standard deviations, and the error where the true tip is given. Lengths are metres, angles "
      "degrees; 'nan' stands where a solution has no result. Memory does not grow with the "
      "session: "
      "up to 20,000 values the summary's median and 95 % are exact, beyond that they are within "
      "0.1 %; the largest is always exact.");
  command.add_option("session", options->session, "Session file")->required();
  command
      .add_option("--params", options->params,
                  "Parameter file; without it the default parameters, not calibrated")
      ->check(ParameterFileName());
  command.add_option("--pole-length", options->pole_length, "Antenna to tip, metres")
      ->required()
      ->check(NumberBetween(1e-6, 1e6));
  command.add_option("--set", options->set, "Which rows: horizontal, vertical or measure")
      ->check(CLI::IsMember({"horizontal", "vertical", "measure"}))
      ->capture_default_str();
  command
      .add_option("--solution", options->solution,
                  "How the tip is worked out: position, geometry-b, math or rigorous")
      ->check(CLI::IsMember(std::vector<std::string>(kTipSolutions.begin(), kTipSolutions.end())))
      ->capture_default_str();
  AddDeviationOptions(command, *options);
  command.add_option("-o,--output", options->output, "Where the rows go")->capture_default_str();
  command.add_flag("--json", options->json, kSummaryOptionHelp);
  RunsWith(command, action, options, Measure);
}

}  // namespace tiltpole::cli
