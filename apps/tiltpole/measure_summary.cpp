#include "apps/tiltpole/measure_summary.h"

#include <cmath>
#include <string>

#include "apps/session/number_text.h"
#include "apps/tiltpole/text_table.h"

namespace tiltpole::cli {
namespace {

constexpr double kBandLimits[] = {0.0, 5.0, 10.0, 15.0, 20.0, 30.0, 45.0, 60.0, 90.0};

// B's x axis points against A's.
double HeadingDifference(const PoseSensorData& sample) {
  return std::fabs(std::remainder(sample.Yaw_B - sample.Yaw_A - 180.0, 360.0));
}

std::vector<std::string> Cells(const std::string& name, const Quantiles& values, double unit,
                               int decimals) {
  const auto text = [&](double value) { return session::FixedText(value * unit, decimals); };
  return {name,
          std::to_string(values.Count()),
          text(values.At(0.5)),
          text(values.At(0.95)),
          text(values.Largest()),
          std::to_string(values.NotANumberCount())};
}

nlohmann::ordered_json ToJsonObject(const Quantiles& values) {
  nlohmann::ordered_json json;
  json["count"] = values.Count();
  json["undetermined"] = values.NotANumberCount();
  json["median"] = values.At(0.5);
  json["p95"] = values.At(0.95);
  json["largest"] = values.Largest();
  return json;
}

}  // namespace

MeasureSummary::MeasureSummary(std::size_t solution) : solution_(solution) {
  for (std::size_t i = 0; i + 1 < std::size(kBandLimits); ++i) {
    bands_.push_back({kBandLimits[i], kBandLimits[i + 1], {}});
  }
}

void MeasureSummary::AddSample(const PoseSensorData& sample, bool stationary, bool interference) {
  ++samples_;
  stationary_ += stationary ? 1 : 0;
  interference_ += interference ? 1 : 0;
  heading_difference_.Add(HeadingDifference(sample));
}

void MeasureSummary::AddErrors(double tilt, const std::array<double, 4>& errors) {
  for (std::size_t i = 0; i < errors.size(); ++i) errors_[i].Add(errors[i]);
  for (auto& band : bands_) {
    const bool last = &band == &bands_.back();
    if (tilt >= band.from && (tilt < band.to || last)) band.errors.Add(errors[solution_]);
  }
}

bool MeasureSummary::HasTruth() const {
  return errors_[solution_].Count() + errors_[solution_].NotANumberCount() > 0;
}

void MeasureSummary::PrintText(std::ostream& out) const {
  const auto share = [this](std::uint64_t count) {
    const double percent = 100.0 * static_cast<double>(count) / static_cast<double>(samples_);
    return std::to_string(count) + " (" + session::FixedText(percent, 1) + " %)";
  };
  out << "samples: " << std::to_string(samples_) << ", stationary: " << share(stationary_)
      << ", magnetic interference: " << share(interference_) << "\n\n";

  TextTable headings({"heading [degrees]", "samples", "median", "95 %", "largest", "undetermined"});
  headings.Row(Cells("B against A", heading_difference_, 1.0, 3));
  headings.Print(out);
  if (!HasTruth()) return;

  out << "\nTip error of the solution '" << kTipSolutions[solution_] << "' by the pole's tilt\n";
  TextTable tilts(
      {"tilt [degrees]", "samples", "median [mm]", "95 % [mm]", "largest [mm]", "undetermined"});
  for (const auto& band : bands_) {
    if (band.errors.Count() + band.errors.NotANumberCount() == 0) continue;
    const std::string name =
        session::FixedText(band.from, 0) + " to " + session::FixedText(band.to, 0);
    tilts.Row(Cells(name, band.errors, 1000.0, 2));
  }
  tilts.Row(Cells("all", errors_[solution_], 1000.0, 2));
  tilts.Print(out);

  out << "\nTip error of every solution\n";
  TextTable solutions(
      {"solution", "samples", "median [mm]", "95 % [mm]", "largest [mm]", "undetermined"});
  for (std::size_t i = 0; i < errors_.size(); ++i) {
    solutions.Row(Cells(kTipSolutions[i], errors_[i], 1000.0, 2));
  }
  solutions.Print(out);
}

nlohmann::ordered_json MeasureSummary::ToJson() const {
  nlohmann::ordered_json json;
  json["samples"] = samples_;
  json["stationary"] = stationary_;
  json["interference"] = interference_;
  json["solution"] = kTipSolutions[solution_];
  json["heading_difference_degrees"] = ToJsonObject(heading_difference_);
  if (!HasTruth()) return json;
  json["error_metres"] = ToJsonObject(errors_[solution_]);
  json["error_metres_by_tilt"] = nlohmann::ordered_json::array();
  for (const auto& band : bands_) {
    nlohmann::ordered_json entry = ToJsonObject(band.errors);
    entry["tilt_from"] = band.from;
    entry["tilt_to"] = band.to;
    json["error_metres_by_tilt"].push_back(entry);
  }
  for (std::size_t i = 0; i < errors_.size(); ++i) {
    json["error_metres_by_solution"][kTipSolutions[i]] = ToJsonObject(errors_[i]);
  }
  return json;
}

}  // namespace tiltpole::cli
