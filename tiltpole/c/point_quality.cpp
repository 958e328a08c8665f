// The rigorous tip and the quality of a point.

#include "tiltpole/quality/point_quality.h"

#include "tiltpole/c/detail/guard.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/c/detail/tip.h"
#include "tiltpole/c/quality.h"

using namespace tiltpole::detail;
using tiltpole::HeadingSource;
using tiltpole::PointLimit;
using tiltpole::TipStatus;

// The interface's numbers are those of the library's enumerations.
static_assert(static_cast<int>(TipStatus::Solved) == TILTPOLE_TIP_SOLVED);
static_assert(static_cast<int>(TipStatus::Plumb) == TILTPOLE_TIP_PLUMB);
static_assert(static_cast<int>(TipStatus::HeadingCannotBeTold) ==
              TILTPOLE_TIP_HEADING_CANNOT_BE_TOLD);
static_assert(static_cast<int>(TipStatus::TiltsImpossible) == TILTPOLE_TIP_TILTS_IMPOSSIBLE);
static_assert(static_cast<int>(HeadingSource::None) == TILTPOLE_HEADING_NONE);
static_assert(static_cast<int>(HeadingSource::Magnetometer_A) == TILTPOLE_HEADING_A);
static_assert(static_cast<int>(HeadingSource::Magnetometer_B) == TILTPOLE_HEADING_B);
static_assert(static_cast<int>(HeadingSource::Both) == TILTPOLE_HEADING_BOTH);
static_assert(static_cast<int>(PointLimit::Tilt) == TILTPOLE_LIMIT_TILT);
static_assert(static_cast<int>(PointLimit::Heading) == TILTPOLE_LIMIT_HEADING);
static_assert(static_cast<int>(PointLimit::Length) == TILTPOLE_LIMIT_LENGTH);
static_assert(static_cast<int>(PointLimit::Antenna) == TILTPOLE_LIMIT_ANTENNA);
static_assert(static_cast<int>(PointLimit::NotTold) == TILTPOLE_LIMIT_NOT_TOLD);

namespace {

tiltpole_rigorous_tip TipToC(const tiltpole::RigorousTip& tip) {
  return {ToC(tip.Offset),
          tip.Heading,
          tip.Heading_A,
          tip.Heading_B,
          tip.HeadingDifference,
          tip.Tilt,
          tip.Dip,
          static_cast<int32_t>(tip.Status),
          static_cast<int32_t>(tip.Source),
          tip.Agree ? 1 : 0,
          0};
}

tiltpole_point_quality QualityToC(const tiltpole::PointQuality& quality) {
  return {quality.North,
          quality.East,
          quality.Height,
          quality.SemiMajor,
          quality.SemiMinor,
          quality.SemiMajorAzimuth,
          quality.FromTilt,
          quality.FromHeading,
          quality.FromLength,
          quality.FromAntenna,
          quality.Heading,
          static_cast<int32_t>(quality.Limit),
          0};
}

tiltpole_point_deviations DeviationsToC(const tiltpole::PointDeviations& deviations) {
  return {deviations.Tilt, deviations.HeadingCommon, deviations.Length, deviations.AntennaPlane,
          deviations.AntennaHeight};
}

tiltpole::PointDeviations DeviationsFromC(const tiltpole_point_deviations* deviations) {
  if (deviations == nullptr) return {};
  return {deviations->tilt, deviations->heading_common, deviations->length,
          deviations->antenna_plane, deviations->antenna_height};
}

}  // namespace

int tiltpole_tip_options_default(tiltpole_tip_options* options) {
  if (AnyNull(options)) return NullPointer();
  *options = ToC(tiltpole::RigorousTipOptions());
  return TILTPOLE_OK;
}

int tiltpole_solve_rigorous_tips(const tiltpole_sample* corrected, size_t count, double pole_length,
                                 const tiltpole_tip_options* options, tiltpole_rigorous_tip* tips) {
  return Guarded([&] {
    if (NullArray(corrected, count) || NullArray(tips, count)) return NullPointer();
    const auto taken = FromC(options);
    for (size_t i = 0; i < count; ++i) {
      tips[i] = TipToC(tiltpole::SolveRigorousTip(FromC(corrected[i]), pole_length, taken));
    }
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_point_deviations_default(tiltpole_point_deviations* deviations) {
  if (AnyNull(deviations)) return NullPointer();
  *deviations = DeviationsToC(tiltpole::PointDeviations());
  return TILTPOLE_OK;
}

int tiltpole_judge_points(const tiltpole_sample* corrected, size_t count, double pole_length,
                          const tiltpole_tip_options* options,
                          const tiltpole_point_deviations* deviations,
                          tiltpole_point_quality* qualities) {
  return Guarded([&] {
    if (NullArray(corrected, count) || NullArray(qualities, count)) return NullPointer();
    const auto taken = FromC(options);
    const auto given = DeviationsFromC(deviations);
    for (size_t i = 0; i < count; ++i) {
      qualities[i] =
          QualityToC(tiltpole::JudgePoint(FromC(corrected[i]), pole_length, taken, given));
    }
    return static_cast<int>(TILTPOLE_OK);
  });
}
