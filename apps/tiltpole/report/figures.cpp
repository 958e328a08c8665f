#include "apps/tiltpole/report/figures.h"

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "apps/session/number_text.h"

namespace tiltpole::cli {
namespace {

using Cells = std::vector<std::string>;

std::string Number(double value, int decimals) {
  return std::isfinite(value) ? session::FixedText(value, decimals) : "–";
}

std::string Counts(double value) { return Number(value, 1); }
std::string Degrees(double value) { return Number(value, 2); }

// A table that scrolls by itself where the screen is too narrow for it.
class Table {
 public:
  Table(Markup& page, const Cells& header) : page_(page) {
    page_.Open("div", {{"class", "table"}});
    page_.Open("table");
    page_.Open("thead");
    WriteRow("th", header);
    page_.Close();
    page_.Open("tbody");
  }
  ~Table() {
    for (int i = 0; i < 3; ++i) page_.Close();
  }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  void Row(const Cells& cells) { WriteRow("td", cells); }

 private:
  void WriteRow(const char* kind, const Cells& cells) {
    page_.Open("tr");
    for (std::size_t i = 0; i < cells.size(); ++i) page_.Leaf(i == 0 ? "th" : kind, cells[i]);
    page_.Close();
  }

  Markup& page_;
};

using Turns = std::array<const TurnFigures*, 4>;

void WriteTurnRows(Table& table, const std::string& when, const Turns& turns) {
  const auto row = [&](const std::string& what, double TurnFigures::*figure) {
    Cells cells = {what + ", " + when};
    for (const TurnFigures* const turn : turns) cells.push_back(Counts(turn->*figure));
    table.Row(cells);
  };
  row("Radius", &TurnFigures::RadiusMean);
  row("Scatter of the radius", &TurnFigures::RadiusScatter);
  row("Largest", &TurnFigures::RadiusScatterLargest);
  row("Scatter out of the plane", &TurnFigures::OutOfPlaneScatter);
}

Cells HeadingRow(const std::string& what, const CalibrationQuality& quality,
                 double HeadingError::*figure) {
  return {what, Degrees(quality.A.Heading.*figure), Degrees(quality.B.Heading.*figure)};
}

}  // namespace

void WriteTurnFigures(Markup& page, const CalibrationQuality& quality) {
  const MagnetometerQuality& a = quality.A;
  const MagnetometerQuality& b = quality.B;
  Table table(page, {"Turns [counts]", "A horizontal", "A vertical", "B horizontal", "B vertical"});
  table.Row({"Samples", std::to_string(a.HorizontalBefore.Samples),
             std::to_string(a.VerticalBefore.Samples), std::to_string(b.HorizontalBefore.Samples),
             std::to_string(b.VerticalBefore.Samples)});
  if (quality.Calibrated) {
    table.Row({"Left out by the fit", std::to_string(a.HorizontalDropped),
               std::to_string(a.VerticalDropped), std::to_string(b.HorizontalDropped),
               std::to_string(b.VerticalDropped)});
  }
  WriteTurnRows(table, "before",
                {&a.HorizontalBefore, &a.VerticalBefore, &b.HorizontalBefore, &b.VerticalBefore});
  if (!quality.Calibrated) return;
  WriteTurnRows(table, "after",
                {&a.HorizontalAfter, &a.VerticalAfter, &b.HorizontalAfter, &b.VerticalAfter});
}

void WriteHeadingFigures(Markup& page, const CalibrationQuality& quality) {
  {
    Table table(page, {"Expected heading error [degrees]", "A", "B"});
    table.Row(
        HeadingRow("One reading, any direction (rms)", quality, &HeadingError::RootMeanSquare));
    table.Row(HeadingRow("Mean", quality, &HeadingError::Mean));
    table.Row(HeadingRow("Standard deviation", quality, &HeadingError::StandardDeviation));
    table.Row(HeadingRow("Largest in any direction", quality, &HeadingError::Largest));
    table.Row(HeadingRow("Noise of one reading", quality, &HeadingError::Noise));
    table.Row(HeadingRow("Pole tilted by 30 degrees (rms)", quality, &HeadingError::Tilted));
    table.Row(
        HeadingRow("Pole tilted by 30 degrees, largest", quality, &HeadingError::TiltedLargest));
  }
  const HeadingDifference& difference = quality.Difference;
  Table table(page, {"Heading of B less that of A [degrees]", "Mean", "Deviation", "Largest"});
  table.Row({"Over the horizontal turn, as read", Degrees(difference.Mean),
             Degrees(difference.StandardDeviation), Degrees(difference.Largest)});
}

void WriteFieldFigures(Markup& page, const CalibrationQuality& quality) {
  const MagnetometerQuality& a = quality.A;
  const MagnetometerQuality& b = quality.B;
  Table table(page, {"Field", "A", "B", "A against B"});
  table.Row({"Strength in the horizontal turn [counts]", Counts(a.FieldStrength),
             Counts(b.FieldStrength), "ratio " + Number(quality.FieldStrengthRatio, 3)});
  table.Row({"Strength in the vertical turn [counts]", Counts(a.FieldStrengthVertical),
             Counts(b.FieldStrengthVertical), ""});
  table.Row({"Dip [degrees]", Degrees(a.Dip), Degrees(b.Dip),
             "difference " + Degrees(quality.DipDifference)});
}

void WriteParameters(Markup& page, const FittedParameters& parameters) {
  {
    Table table(page, {"Parameter", "A", "B"});
    for (const auto& [name, field] : kCorrectionFields) {
      const bool is_count = name[1] != '\0';
      const int decimals = is_count ? 4 : 10;
      table.Row({std::string(name) + (is_count ? " [counts]" : ""),
                 Number(parameters.correction_a.*field, decimals),
                 Number(parameters.correction_b.*field, decimals)});
    }
  }
  const Incline_MagneticTranslationParameter& translation = parameters.translation;
  Table table(page, {"Translation from A to B [counts]", "dX", "dY", "dZ"});
  table.Row({"", Number(translation.dX, 4), Number(translation.dY, 4), Number(translation.dZ, 4)});
}

}  // namespace tiltpole::cli
