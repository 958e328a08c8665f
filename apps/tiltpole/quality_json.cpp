#include "apps/session/ascii_text.h"
#include "apps/tiltpole/quality_output.h"

namespace tiltpole::cli {
namespace {

using Json = nlohmann::ordered_json;

Json ToJsonObject(const TurnFigures& turn) {
  return {{"samples", turn.Samples},
          {"centre_first", turn.CentreFirst},
          {"centre_second", turn.CentreSecond},
          {"radius_mean", turn.RadiusMean},
          {"radius_scatter", turn.RadiusScatter},
          {"radius_scatter_largest", turn.RadiusScatterLargest},
          {"out_of_plane_mean", turn.OutOfPlaneMean},
          {"out_of_plane_scatter", turn.OutOfPlaneScatter},
          {"out_of_plane_scatter_largest", turn.OutOfPlaneScatterLargest}};
}

Json ToJsonObject(const HeadingError& error) {
  Json json = {{"mean", error.Mean},
               {"standard_deviation", error.StandardDeviation},
               {"root_mean_square", error.RootMeanSquare},
               {"largest", error.Largest},
               {"systematic", error.Systematic},
               {"noise", error.Noise},
               {"tilted_30", error.Tilted},
               {"tilted_30_largest", error.TiltedLargest}};
  json["by_heading"] = Json::array();
  for (const auto& at : error.ByHeading) {
    json["by_heading"].push_back(
        {{"heading", at.Heading}, {"error", at.Error}, {"deviation", at.Deviation}});
  }
  return json;
}

Json ToJsonObject(const MagnetometerQuality& one) {
  Json json;
  json["horizontal_before"] = ToJsonObject(one.HorizontalBefore);
  json["horizontal_after"] = ToJsonObject(one.HorizontalAfter);
  json["vertical_before"] = ToJsonObject(one.VerticalBefore);
  json["vertical_after"] = ToJsonObject(one.VerticalAfter);
  json["expected_heading_error_degrees"] = ToJsonObject(one.Heading);
  json["field_strength"] = one.FieldStrength;
  json["field_strength_vertical"] = one.FieldStrengthVertical;
  json["dip"] = one.Dip;
  json["horizontal_used"] = one.HorizontalUsed;
  json["horizontal_dropped"] = one.HorizontalDropped;
  json["vertical_used"] = one.VerticalUsed;
  json["vertical_dropped"] = one.VerticalDropped;
  return json;
}

Json ToJsonObject(const TurnCoverage& coverage) {
  Json json = {{"samples", coverage.Samples}, {"covered_percent", coverage.CoveredPercent}};
  json["missing"] = Json::array();
  for (const auto& range : coverage.Missing) {
    json["missing"].push_back({{"from", range.From}, {"to", range.To}});
  }
  return json;
}

const char* NameOf(ConcernedMagnetometer magnetometer) {
  if (magnetometer == ConcernedMagnetometer::Both) return "both";
  return magnetometer == ConcernedMagnetometer::A ? "A" : "B";
}

const char* NameOf(ConcernedTurn turn) {
  if (turn == ConcernedTurn::Both) return "both";
  return turn == ConcernedTurn::Horizontal ? "horizontal" : "vertical";
}

Json ToJsonObject(const QualityReason& reason) {
  return {{"code", static_cast<int>(reason.Code)},
          {"weight", cli::NameOf(reason.Weight)},
          {"magnetometer", NameOf(reason.Magnetometer)},
          {"turn", NameOf(reason.Turn)},
          {"sentence", session::NarrowAscii(reason.Sentence)}};
}

}  // namespace

nlohmann::ordered_json ToJson(const CalibrationQuality& quality) {
  Json json;
  json["verdict"] = cli::NameOf(quality.Result);
  json["calibrated"] = quality.Calibrated;
  json["reasons"] = Json::array();
  for (const auto& reason : quality.Reasons) json["reasons"].push_back(ToJsonObject(reason));
  json["magnetometer_A"] = ToJsonObject(quality.A);
  json["magnetometer_B"] = ToJsonObject(quality.B);
  json["horizontal"] = ToJsonObject(quality.Horizontal);
  json["vertical"] = ToJsonObject(quality.Vertical);
  json["heading_difference_degrees"] = {
      {"mean", quality.Difference.Mean},
      {"standard_deviation", quality.Difference.StandardDeviation},
      {"largest", quality.Difference.Largest}};
  json["scale_ratio_y"] = quality.ScaleRatioY;
  json["scale_ratio_z"] = quality.ScaleRatioZ;
  json["field_strength_ratio"] = quality.FieldStrengthRatio;
  json["dip_difference"] = quality.DipDifference;
  return json;
}

}  // namespace tiltpole::cli
