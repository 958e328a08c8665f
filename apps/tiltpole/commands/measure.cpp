// tiltpole measure: where the tip is, sample by sample.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/session/csv_writer.h"
#include "apps/session/input_file.h"
#include "apps/session/number_text.h"
#include "apps/session/output_file.h"
#include "apps/session/session_reader.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/measure_summary.h"
#include "apps/tiltpole/parameter_file.h"
#include "apps/tiltpole/progress.h"
#include "apps/tiltpole/summary.h"
#include "apps/tiltpole/tip_solutions.h"

namespace tiltpole::cli {
namespace {

using session::SessionColumns;
using session::SessionSample;

struct MeasureOptions {
  std::string session;
  std::string params;
  double pole_length = 0.0;
  std::string set = "measure";
  std::string solution = "position";
  std::string output = "-";
  bool json = false;
};

constexpr int kDecimals = 6;

const std::vector<std::string> kOffsetColumns = {"offset_north", "offset_east", "offset_height"};
const std::vector<std::string> kTipColumns = {"tip_north", "tip_east", "tip_height"};
const std::vector<std::string> kStateColumns = {"heading_a", "heading_b", "stationary",
                                                "interference"};
const std::vector<std::string> kErrorColumns = {"error_north", "error_east", "error_height",
                                                "error"};

// A column of the input that has the name of a result, as when a result is measured again, gives
// way to it.
bool IsResult(const std::string& column) {
  for (const auto* names : {&kOffsetColumns, &kTipColumns, &kStateColumns, &kErrorColumns}) {
    if (std::find(names->begin(), names->end(), column) != names->end()) return true;
  }
  return false;
}

/// What is known of one sample after measuring.
struct MeasuredTip {
  xyhCoordinate offset;
  std::optional<xyhCoordinate> position;
  std::optional<xyhCoordinate> error;
  bool stationary = false;
  bool interference = false;
};

xyhCoordinate Sum(const xyhCoordinate& a, const xyhCoordinate& b) {
  return {a.x + b.x, a.y + b.y, a.h + b.h};
}

xyhCoordinate Difference(const xyhCoordinate& a, const xyhCoordinate& b) {
  return {a.x - b.x, a.y - b.y, a.h - b.h};
}

double Length(const xyhCoordinate& v) { return std::hypot(v.x, v.y, v.h); }

class RowWriter {
 public:
  RowWriter(std::ostream& out, const SessionColumns& columns) : csv_(out), columns_(columns) {}

  void Write(const SessionSample& sample, const PoseSensorData& measured, const MeasuredTip& tip) {
    if (!header_written_) WriteHeader();
    time_.clear();
    session::AppendTimeOfDay(time_, sample.sensors.Tag);
    csv_.Text(NameOf(sample.set));
    csv_.Text(time_);
    csv_.Number(sample.sensors.InclineX);
    csv_.Number(sample.sensors.InclineY);
    for (std::size_t i = 0; i < sample.further.size(); ++i) {
      if (!IsResult(columns_.further[i])) csv_.Text(sample.further[i]);
    }
    WriteVector(tip.offset);
    if (columns_.antenna) WriteVector(tip.position);
    csv_.Fixed(measured.Yaw_A, kDecimals);
    csv_.Fixed(measured.Yaw_B, kDecimals);
    csv_.Flag(tip.stationary);
    csv_.Flag(tip.interference);
    if (columns_.true_tip && columns_.antenna) WriteError(tip.error);
    csv_.EndRow();
  }

 private:
  // With the first row, so that nothing is written when there is none.
  void WriteHeader() {
    header_written_ = true;
    const auto write = [this](const std::vector<std::string>& names) {
      for (const auto& name : names) csv_.Text(name);
    };
    write({"set", "time", "incline_x", "incline_y"});
    for (const auto& name : columns_.further) {
      if (!IsResult(name)) csv_.Text(name);
    }
    write(kOffsetColumns);
    if (columns_.antenna) write(kTipColumns);
    write(kStateColumns);
    if (columns_.true_tip && columns_.antenna) write(kErrorColumns);
    csv_.EndRow();
  }

  void WriteVector(const std::optional<xyhCoordinate>& vector) {
    for (const auto member : {&xyhCoordinate::x, &xyhCoordinate::y, &xyhCoordinate::h}) {
      if (vector) csv_.Fixed((*vector).*member, kDecimals);
      if (!vector) csv_.Empty();
    }
  }

  void WriteError(const std::optional<xyhCoordinate>& error) {
    WriteVector(error);
    if (error) csv_.Fixed(Length(*error), kDecimals);
    if (!error) csv_.Empty();
  }

  session::CsvWriter csv_;
  const SessionColumns& columns_;
  std::string time_;
  bool header_written_ = false;
};

class Measuring {
 public:
  Measuring(const CInclineSensor_Position& position, double pole_length, std::size_t solution)
      : position_(position), pole_length_(pole_length), solution_(solution), summary_(solution) {}

  /// Works out the tip of one sample; @p measured gets its headings.
  MeasuredTip Measure(const SessionSample& sample, PoseSensorData& measured) {
    measured = sample.sensors;
    const TipOffsets offsets = SolveTip(position_, measured, pole_length_);
    MeasuredTip tip;
    tip.offset = offsets[solution_];
    tip.stationary = position_.IsStationary() != 0;
    tip.interference = position_.IsMagneticInterference() != 0;
    summary_.AddSample(measured, tip.stationary, tip.interference);
    if (!sample.antenna) return tip;

    tip.position = Sum(*sample.antenna, tip.offset);
    if (!sample.true_tip) return tip;
    tip.error = Difference(*tip.position, *sample.true_tip);
    CompareSolutions(sample, offsets);
    return tip;
  }

  const MeasureSummary& Summary() const { return summary_; }

 private:
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
  double pole_length_;
  std::size_t solution_;
  MeasureSummary summary_;
};

CInclineSensor_Position ParametersOf(const MeasureOptions& options, Console& console) {
  if (!options.params.empty()) return ReadUsableParameters(options.params, console.err);
  console.err << "tiltpole: no --params: measuring with default parameters, not calibrated\n";
  return {};
}

int Measure(const MeasureOptions& options, Console& console) {
  session::InputFile input(options.session, console.in);
  session::SessionReader reader(input.Stream(), input.Name());
  Measuring measuring(ParametersOf(options, console), options.pole_length,
                      TipSolutionIndex(options.solution));
  const auto wanted = session::SampleSetFromName(options.set);
  session::OutputFile output(options.output, console.out);
  RowWriter writer(output.Stream(), reader.Columns());
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

}  // namespace

void AddMeasure(CLI::App& program, Action& action) {
  const auto options = std::make_shared<MeasureOptions>();
  CLI::App& command = *program.add_subcommand(
      "measure",
      "Work out the tip for every sample of a set: its offset from the antenna, its position where "
      "the antenna's is given, both headings, the stationary and interference flags, and the error "
      "where the true tip is given. Lengths are metres, angles degrees; 'nan' stands where a "
      "solution has no result. Memory does not grow with the session: up to 20,000 values the "
      "summary's median and 95 % are exact, beyond that they are within 0.1 %; the largest is "
      "always exact.");
  command.add_option("session", options->session, "Session file")->required();
  command.add_option("--params", options->params,
                     "Parameter file; without it the default parameters, not calibrated");
  command.add_option("--pole-length", options->pole_length, "Antenna to tip, metres")
      ->required()
      ->check(CLI::Range(1e-6, 1e6));
  command.add_option("--set", options->set, "Which rows: horizontal, vertical or measure")
      ->check(CLI::IsMember({"horizontal", "vertical", "measure"}))
      ->capture_default_str();
  command
      .add_option("--solution", options->solution,
                  "How the tip is worked out: position, geometry-b, math or rigorous")
      ->check(CLI::IsMember(std::vector<std::string>(kTipSolutions.begin(), kTipSolutions.end())))
      ->capture_default_str();
  command.add_option("-o,--output", options->output, "Where the rows go")->capture_default_str();
  command.add_flag("--json", options->json, kSummaryOptionHelp);
  RunsWith(command, action, options, Measure);
}

}  // namespace tiltpole::cli
