#pragma once

// The iterative fit of one magnetometer's correction to its readings over two turns.

#include <cstddef>
#include <vector>

#include "tiltpole/calibration/detail/cross_terms.h"
#include "tiltpole/calibration/detail/line_fit.h"
#include "tiltpole/calibration/detail/readings.h"
#include "tiltpole/calibration/detail/recurrence.h"
#include "tiltpole/calibration/detail/scale_bisection.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"

namespace tiltpole::detail {

/// One fit, from the readings of the horizontal turn (about the z axis) and of the vertical turn
/// (about the y axis). A perfect sensor traces a circle in x-y and a constant z over the first, a
/// circle in x-z and a constant y over the second. Each pass fits the scale b, the cross terms c
/// and d, the scale e and the cross term a in turn; passes follow until the cross terms rest.
///
/// All storage is obtained in the constructor, of the size of the two turns; the passes allocate
/// nothing.
class CorrectionFit {
 public:
  CorrectionFit(Readings horizontal, Readings vertical,
                const ConicSummation& summation = FastestConicSummation());

  /// Carries the fit out, once. Failures are shown to the operator.
  /// @param[out] out  every field on success, untouched on failure
  /// @param[in]  cap  the cap on every loop, at most kIterationCap
  /// @return 1; 0 on failure
  int Run(Incline_MagneticCorrectParameter& out, int cap = kIterationCap);

 private:
  enum class PassEnd { GoOn, Leave, Fail };

  bool PassWouldRepeat();
  PassEnd RunPass();
  bool FitScaleOfY();
  bool FitCrossTermsOfZ();
  bool FitScaleOfZ();
  bool FitCrossTermOfY();
  bool CentreHorizontalTurn();
  bool CentreVerticalTurn();

  void HorizontalSetChanged();
  void VerticalSetChanged();
  void CrossTermOfYChanged();

  Readings horizontal_;
  Readings vertical_;
  Incline_MagneticCorrectParameter par_;
  int cap_ = kIterationCap;
  bool converged_ = true;
  Recurrence<6> passes_;

  // Of the horizontal turn: the share of x in y' = a x + b y, and y' itself.
  std::vector<double> horizontalBase_;
  std::vector<double> horizontalY_;
  AxisSums horizontalX_;
  AxisSize horizontalSizeX_;
  AxisSize horizontalSizeY_;
  ScaledEllipseFits horizontalFits_;

  // Of the vertical turn: the share of x and y in z' = c x + d y + e z.
  std::vector<double> verticalBase_;
  AxisSums verticalX_;
  AxisSize verticalSizeX_;
  AxisSize verticalSizeY_;
  AxisSize verticalSizeZ_;
  ScaledEllipseFits verticalFits_;
  // The fit of the raw readings; it holds for as long as the set does not shrink.
  Shape rawVertical_;

  std::vector<char> inliers_;
};

}  // namespace tiltpole::detail
