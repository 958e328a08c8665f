#pragma once

// A report of the library as the C interface should show it.

#include <cstdint>

#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/tiltpole_c.h"

namespace tiltpole_fuzz {

inline tiltpole_quality_summary ExpectedSummary(const tiltpole::CalibrationQuality& of) {
  const auto size = [](const auto& items) { return static_cast<std::uint32_t>(items.size()); };
  tiltpole_quality_summary summary = {};
  summary.heading_difference_mean = of.Difference.Mean;
  summary.heading_difference_deviation = of.Difference.StandardDeviation;
  summary.heading_difference_largest = of.Difference.Largest;
  summary.scale_ratio_y = of.ScaleRatioY;
  summary.scale_ratio_z = of.ScaleRatioZ;
  summary.field_strength_ratio = of.FieldStrengthRatio;
  summary.dip_difference = of.DipDifference;
  summary.covered_percent[0] = of.Horizontal.CoveredPercent;
  summary.covered_percent[1] = of.Vertical.CoveredPercent;
  summary.samples[0] = of.Horizontal.Samples;
  summary.samples[1] = of.Vertical.Samples;
  summary.verdict = static_cast<int>(of.Result);
  summary.calibrated = of.Calibrated ? 1 : 0;
  summary.reasons = size(of.Reasons);
  summary.missing_ranges[0] = size(of.Horizontal.Missing);
  summary.missing_ranges[1] = size(of.Vertical.Missing);
  summary.heading_errors[0] = size(of.A.Heading.ByHeading);
  summary.heading_errors[1] = size(of.B.Heading.ByHeading);
  return summary;
}

inline tiltpole_turn_figures ExpectedTurn(const tiltpole::TurnFigures& of, int used, int dropped) {
  tiltpole_turn_figures figures = {};
  figures.centre_first = of.CentreFirst;
  figures.centre_second = of.CentreSecond;
  figures.radius_mean = of.RadiusMean;
  figures.radius_scatter = of.RadiusScatter;
  figures.radius_scatter_largest = of.RadiusScatterLargest;
  figures.out_of_plane_mean = of.OutOfPlaneMean;
  figures.out_of_plane_scatter = of.OutOfPlaneScatter;
  figures.out_of_plane_scatter_largest = of.OutOfPlaneScatterLargest;
  figures.samples = of.Samples;
  figures.used = used;
  figures.dropped = dropped;
  return figures;
}

inline tiltpole_magnetometer_quality ExpectedMagnetometer(const tiltpole::MagnetometerQuality& of) {
  tiltpole_magnetometer_quality expected = {};
  expected.before[0] = ExpectedTurn(of.HorizontalBefore, of.HorizontalUsed, of.HorizontalDropped);
  expected.before[1] = ExpectedTurn(of.VerticalBefore, of.VerticalUsed, of.VerticalDropped);
  expected.after[0] = ExpectedTurn(of.HorizontalAfter, of.HorizontalUsed, of.HorizontalDropped);
  expected.after[1] = ExpectedTurn(of.VerticalAfter, of.VerticalUsed, of.VerticalDropped);
  expected.heading_mean = of.Heading.Mean;
  expected.heading_deviation = of.Heading.StandardDeviation;
  expected.heading_root_mean_square = of.Heading.RootMeanSquare;
  expected.heading_largest = of.Heading.Largest;
  expected.heading_systematic = of.Heading.Systematic;
  expected.heading_noise = of.Heading.Noise;
  expected.heading_tilted = of.Heading.Tilted;
  expected.heading_tilted_largest = of.Heading.TiltedLargest;
  expected.field_strength = of.FieldStrength;
  expected.field_strength_vertical = of.FieldStrengthVertical;
  expected.dip = of.Dip;
  return expected;
}

}  // namespace tiltpole_fuzz
