// tiltpole transform: a similarity transformation of the plane, estimated from pairs of points.

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "apps/session/csv_reader.h"
#include "apps/session/csv_writer.h"
#include "apps/session/input_error.h"
#include "apps/session/input_file.h"
#include "apps/session/number_text.h"
#include "apps/session/output_file.h"
#include "apps/tiltpole/commands/commands.h"
#include "apps/tiltpole/commands/option_checks.h"
#include "apps/tiltpole/summary.h"
#include "apps/tiltpole/text_table.h"
#include "tiltpole/estimation/CMagneticConvert.h"

namespace tiltpole::cli {
namespace {

constexpr int kDecimals = 6;
constexpr double kDegreesPerRadian = 57.295779513082320877;

struct TransformOptions {
  std::string pairs;
  std::string points;
  bool inverse = false;
  std::string output = "-";
  std::string residuals;
  bool json = false;
};

struct PointPair {
  double source_x, source_y, target_x, target_y;
};

struct Residual {
  double x, y;
  double Length() const { return std::hypot(x, y); }
};

std::vector<PointPair> ReadPairs(const std::string& path, Console& console) {
  session::InputFile input(path, console.in);
  session::CsvReader csv(input.Stream(), input.Name());
  const auto places = csv.Require({"source_x", "source_y", "target_x", "target_y"});
  std::vector<PointPair> pairs;
  while (csv.Next()) {
    pairs.push_back({csv.Number(places[0]), csv.Number(places[1]), csv.Number(places[2]),
                     csv.Number(places[3])});
  }
  return pairs;
}

CMagneticConvert Estimate(const std::vector<PointPair>& pairs, const std::string& name) {
  CMagneticConvert convert;
  bool apart = false;
  for (const auto& pair : pairs) {
    convert.AddPoint(pair.source_x, pair.source_y, pair.target_x, pair.target_y);
    apart = apart || pair.source_x != pairs[0].source_x || pair.source_y != pairs[0].source_y;
  }
  if (!apart) throw DataError(name + ": a transformation needs two different source points");
  convert.CalFourParameter();
  if (!(convert.GetFourParameter().Scale > 0.0)) {
    throw DataError(name + ": the targets do not tell a scale and a rotation");
  }
  return convert;
}

/// How far each source, transformed, lies from its target.
std::vector<Residual> ResidualsOf(const std::vector<PointPair>& pairs,
                                  const CMagneticConvert& convert) {
  std::vector<Residual> residuals;
  for (const auto& pair : pairs) {
    double x = pair.source_x;
    double y = pair.source_y;
    convert.XYtoXY(x, y);
    residuals.push_back({x - pair.target_x, y - pair.target_y});
  }
  return residuals;
}

void WriteResiduals(std::ostream& out, const std::vector<PointPair>& pairs,
                    const std::vector<Residual>& residuals) {
  session::CsvWriter csv(out);
  for (const char* const name :
       {"source_x", "source_y", "target_x", "target_y", "residual_x", "residual_y", "residual"}) {
    csv.Text(name);
  }
  csv.EndRow();
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    csv.Number(pairs[i].source_x);
    csv.Number(pairs[i].source_y);
    csv.Number(pairs[i].target_x);
    csv.Number(pairs[i].target_y);
    csv.Fixed(residuals[i].x, kDecimals);
    csv.Fixed(residuals[i].y, kDecimals);
    csv.Fixed(residuals[i].Length(), kDecimals);
    csv.EndRow();
  }
}

void TransformPoints(const TransformOptions& options, const CMagneticConvert& convert,
                     std::ostream& out, Console& console) {
  session::InputFile input(options.points, console.in);
  session::CsvReader points(input.Stream(), input.Name());
  const auto places = points.Require({"x", "y"});
  session::CsvWriter csv(out);
  for (const auto& name : points.Columns()) csv.Text(name);
  for (const char* const name : {"transformed_x", "transformed_y"}) {
    const auto there = points.Find(name);
    if (there) points.Fail(*there, "stands there already; expected points without it");
    csv.Text(name);
  }
  csv.EndRow();
  while (points.Next()) {
    double x = points.Number(places[0]);
    double y = points.Number(places[1]);
    options.inverse ? convert.XYtoXY1(x, y) : convert.XYtoXY(x, y);
    for (std::size_t i = 0; i < points.Columns().size(); ++i) csv.Text(points.Field(i));
    csv.Fixed(x, kDecimals);
    csv.Fixed(y, kDecimals);
    csv.EndRow();
  }
}

void PrintSummary(const CMagneticConvert& convert, const std::vector<Residual>& residuals,
                  bool as_json, std::ostream& out) {
  const Magnetic_FourParameter par = convert.GetFourParameter();
  double squares = 0.0;
  double largest = 0.0;
  for (const auto& residual : residuals) {
    squares += residual.Length() * residual.Length();
    largest = std::fmax(largest, residual.Length());
  }
  const double rms = std::sqrt(squares / static_cast<double>(residuals.size()));
  if (as_json) {
    nlohmann::ordered_json json;
    json["pairs"] = residuals.size();
    json["scale"] = par.Scale;
    json["rotation_degrees"] = par.Rotation * kDegreesPerRadian;
    json["offset_x"] = par.OffsetX;
    json["offset_y"] = par.OffsetY;
    json["residual_rms"] = rms;
    json["residual_largest"] = largest;
    out << json.dump(2) << '\n';
    return;
  }
  TextTable table({"transformation", "value"});
  table.Row({"pairs", std::to_string(residuals.size())});
  table.Row({"scale", session::FixedText(par.Scale, 10)});
  table.Row({"rotation [degrees]", session::FixedText(par.Rotation * kDegreesPerRadian, 8)});
  table.Row({"offset x", session::FixedText(par.OffsetX, kDecimals)});
  table.Row({"offset y", session::FixedText(par.OffsetY, kDecimals)});
  table.Row({"residual, rms", session::FixedText(rms, kDecimals)});
  table.Row({"residual, largest", session::FixedText(largest, kDecimals)});
  table.Print(out);
}

int Transform(const TransformOptions& options, Console& console) {
  if (options.pairs == "-" && options.points == "-") {
    throw session::InputError("standard input",
                              "cannot serve twice, for the pairs and for the points");
  }
  RefuseOneFileForTwoOutputs(options.output, options.residuals);
  const std::vector<PointPair> pairs = ReadPairs(options.pairs, console);
  const CMagneticConvert convert = Estimate(pairs, options.pairs);
  const std::vector<Residual> residuals = ResidualsOf(pairs, convert);

  session::OutputFile output(options.output, console.out);
  if (options.points.empty()) {
    WriteResiduals(output.Stream(), pairs, residuals);
  } else {
    TransformPoints(options, convert, output.Stream(), console);
  }
  if (!options.residuals.empty()) {
    session::OutputFile residual_file(options.residuals, console.out);
    WriteResiduals(residual_file.Stream(), pairs, residuals);
    residual_file.Commit();
  }
  output.Commit();
  PrintSummary(convert, residuals, options.json, SummaryStream(output, console));
  return kDone;
}

}  // namespace

void AddTransform(CLI::App& program, Action& action) {
  const auto options = std::make_shared<TransformOptions>();
  CLI::App& command = *program.add_subcommand(
      "transform",
      "Estimate scale, rotation and shift between two plane coordinate systems from points known "
      "in both (columns source_x, source_y, target_x, target_y). Without --points the pairs are "
      "written with the residual of each; with it, the points (columns x, y and others) with their "
      "transformed coordinates.");
  command.add_option("pairs", options->pairs, "Point pairs")->required();
  CLI::Option* const points =
      command.add_option("--points", options->points, "Points to transform");
  command.add_flag("--inverse", options->inverse, "Transform the points from target to source")
      ->needs(points);
  command.add_option("--residuals", options->residuals, "Also write the pairs with residuals")
      ->needs(points);
  command.add_option("-o,--output", options->output, "Where the rows go")->capture_default_str();
  command.add_flag("--json", options->json, kSummaryOptionHelp);
  RunsWith(command, action, options, Transform);
}

}  // namespace tiltpole::cli
