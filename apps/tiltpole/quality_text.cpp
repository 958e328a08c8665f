#include <string>
#include <vector>

#include "apps/session/ascii_text.h"
#include "apps/session/number_text.h"
#include "apps/tiltpole/quality_output.h"
#include "apps/tiltpole/text_table.h"

namespace tiltpole::cli {
namespace {

std::string Text(double value) { return session::FixedText(value, 2); }

std::vector<std::string> TurnRow(const std::string& name, const TurnFigures& before,
                                 const TurnFigures& after) {
  std::vector<std::string> row = {name, std::to_string(after.Samples)};
  for (const TurnFigures* const turn : {&before, &after}) {
    row.push_back(Text(turn->RadiusMean));
    row.push_back(Text(turn->RadiusScatter));
    row.push_back(Text(turn->RadiusScatterLargest));
    row.push_back(Text(turn->OutOfPlaneScatter));
  }
  return row;
}

void PrintTurns(const CalibrationQuality& quality, std::ostream& out) {
  TextTable table({"turn's radius [counts]", "samples", "before", "scatter", "largest",
                   "out of plane", "after", "scatter", "largest", "out of plane"});
  table.Row(TurnRow("A horizontal", quality.A.HorizontalBefore, quality.A.HorizontalAfter));
  table.Row(TurnRow("A vertical", quality.A.VerticalBefore, quality.A.VerticalAfter));
  table.Row(TurnRow("B horizontal", quality.B.HorizontalBefore, quality.B.HorizontalAfter));
  table.Row(TurnRow("B vertical", quality.B.VerticalBefore, quality.B.VerticalAfter));
  table.Print(out);
}

std::vector<std::string> HeadingRow(const std::string& name, const HeadingError& heading) {
  return {name,
          Text(heading.Mean),
          Text(heading.StandardDeviation),
          Text(heading.Largest),
          Text(heading.Noise),
          Text(heading.Tilted),
          Text(heading.TiltedLargest)};
}

void PrintHeadings(const CalibrationQuality& quality, std::ostream& out) {
  TextTable table({"expected heading error [degrees]", "mean", "deviation", "largest", "noise",
                   "tilted by 30", "largest"});
  table.Row(HeadingRow("A", quality.A.Heading));
  table.Row(HeadingRow("B", quality.B.Heading));
  const HeadingDifference& difference = quality.Difference;
  table.Row({"B against A, as read", Text(difference.Mean), Text(difference.StandardDeviation),
             Text(difference.Largest)});
  table.Print(out);
  out << "The largest errors of A and B leave out the noise of one reading, which the deviation "
         "holds.\n";
}

std::vector<std::string> FieldRow(const std::string& name, const MagnetometerQuality& one) {
  return {name,
          Text(one.FieldStrength),
          Text(one.FieldStrengthVertical),
          Text(one.Dip),
          std::to_string(one.HorizontalUsed),
          std::to_string(one.HorizontalDropped),
          std::to_string(one.VerticalUsed),
          std::to_string(one.VerticalDropped)};
}

void PrintFields(const CalibrationQuality& quality, std::ostream& out) {
  TextTable table({"magnetometer", "field, horizontal", "vertical", "dip", "horizontal used",
                   "dropped", "vertical used", "dropped"});
  table.Row(FieldRow("A", quality.A));
  table.Row(FieldRow("B", quality.B));
  table.Print(out);
}

std::string MissingText(const TurnCoverage& coverage) {
  std::string text;
  for (const auto& range : coverage.Missing) {
    text += (text.empty() ? "" : ", ") + session::FixedText(range.From, 0) + " to " +
            session::FixedText(range.To, 0);
  }
  return text.empty() ? "none" : text;
}

void PrintCoverage(const std::string& name, const TurnCoverage& coverage, std::ostream& out) {
  out << name << " turn: " << session::FixedText(coverage.CoveredPercent, 0)
      << " % covered, missing directions [degrees]: " << MissingText(coverage) << '\n';
}

}  // namespace

std::string NameOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::Good:
      return "good";
    case Verdict::Usable:
      return "usable";
    case Verdict::Poor:
      return "poor";
    case Verdict::Unusable:
      break;
  }
  return "unusable";
}

void PrintReasons(const CalibrationQuality& quality, std::ostream& out) {
  for (const auto& reason : quality.Reasons) {
    out << "- (" << NameOf(reason.Weight) << ") " << session::NarrowAscii(reason.Sentence) << '\n';
  }
}

void PrintQuality(const CalibrationQuality& quality, std::ostream& out) {
  PrintTurns(quality, out);
  out << '\n';
  PrintHeadings(quality, out);
  out << '\n';
  PrintFields(quality, out);
  out << '\n';
  PrintCoverage("horizontal", quality.Horizontal, out);
  PrintCoverage("vertical", quality.Vertical, out);
  out << "\nverdict: " << NameOf(quality.Result) << '\n';
  PrintReasons(quality, out);
}

}  // namespace tiltpole::cli
