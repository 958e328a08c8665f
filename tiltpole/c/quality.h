#ifndef TILTPOLE_C_QUALITY_H
#define TILTPOLE_C_QUALITY_H

/// @file
/// The rigorous tip, and how far to trust a point and a calibration; see
/// tiltpole/quality/rigorous_tip.h, point_quality.h and calibration_quality.h.

#include "tiltpole/c/types.h"

#ifdef __cplusplus
extern "C" {
#endif

// NOLINTBEGIN(modernize-use-using): C has typedefs only

/// @name The rigorous tip
/// @{

/// How a rigorous tip came out.
enum {
  TILTPOLE_TIP_SOLVED = 0,
  TILTPOLE_TIP_PLUMB = 1,
  TILTPOLE_TIP_HEADING_CANNOT_BE_TOLD = 2,
  TILTPOLE_TIP_TILTS_IMPOSSIBLE = 3
};
/// Which magnetometers a rigorous tip's heading comes from.
enum {
  TILTPOLE_HEADING_NONE = 0,
  TILTPOLE_HEADING_A = 1,
  TILTPOLE_HEADING_B = 2,
  TILTPOLE_HEADING_BOTH = 3
};

/// What is taken for granted about the magnetometers, A and B; tiltpole_tip_options_default() sets
/// the defaults.
typedef struct tiltpole_tip_options {
  double bias_angle[2];               ///< subtracted from each heading [degrees]; 0
  double heading_deviation[2];        ///< standard deviation of each heading [degrees]; 1
  double largest_heading_difference;  ///< headings further apart do not agree [degrees]; 5
  int32_t disturbed[2];               ///< not 0 to leave a magnetometer out; 0
} tiltpole_tip_options;

/// The tip and what it rests on. What cannot be told is not a number.
typedef struct tiltpole_rigorous_tip {
  tiltpole_xyh offset;        ///< of the tip from the antenna
  double heading;             ///< that the tip rests on [degrees]
  double heading_a;           ///< by magnetometer A alone
  double heading_b;           ///< by magnetometer B alone
  double heading_difference;  ///< B's heading less A's [degrees]
  double tilt;                ///< between pole and plumb line [degrees]
  double dip;                 ///< of the field, downwards positive [degrees]
  int32_t status;             ///< TILTPOLE_TIP_...
  int32_t source;             ///< TILTPOLE_HEADING_...
  int32_t agree;              ///< 1 when both told a direction and agree
  int32_t reserved;           ///< 0
} tiltpole_rigorous_tip;

/// Sets the defaults: biases 0, deviations 1, the largest difference 5, neither disturbed.
TILTPOLE_C_API int tiltpole_tip_options_default(tiltpole_tip_options* options);

/// Solves the tips of samples with corrected readings.
/// @param[in] options  null for the defaults
TILTPOLE_C_API int tiltpole_solve_rigorous_tips(const tiltpole_sample* corrected, size_t count,
                                                double pole_length,
                                                const tiltpole_tip_options* options,
                                                tiltpole_rigorous_tip* tips);
/// @}
/// @name The quality of a point
/// @{

/// What brings the largest part of a point's uncertainty.
enum {
  TILTPOLE_LIMIT_TILT = 0,
  TILTPOLE_LIMIT_HEADING = 1,
  TILTPOLE_LIMIT_LENGTH = 2,
  TILTPOLE_LIMIT_ANTENNA = 3,
  TILTPOLE_LIMIT_NOT_TOLD = 4
};

/// Standard deviations beside the headings'; tiltpole_point_deviations_default() sets the defaults.
typedef struct tiltpole_point_deviations {
  double tilt;            ///< of each tilt [degrees]; 0.1
  double heading_common;  ///< of what both headings share [degrees]; 0
  double length;          ///< of the pole length; 0.001
  double antenna_plane;   ///< of the antenna's north and east; 0
  double antenna_height;  ///< of the antenna's height; 0
} tiltpole_point_deviations;

/// Standard deviations of a tip, in the unit of the length; see tiltpole::PointQuality.
typedef struct tiltpole_point_quality {
  double north;               ///< along heading 0; not a number without a heading
  double east;                ///< along heading 90 degrees; not a number without a heading
  double height;              ///< upwards
  double semi_major;          ///< longer semi-axis of the horizontal error ellipse
  double semi_minor;          ///< shorter semi-axis
  double semi_major_azimuth;  ///< of the longer semi-axis [degrees, 0 to 180)
  double from_tilt;           ///< what the tilts alone would bring, all three directions together
  double from_heading;        ///< what the heading alone would bring
  double from_length;         ///< what the pole length alone would bring
  double from_antenna;        ///< what the antenna alone would bring
  double heading;             ///< of the heading that the tip rests on [degrees]
  int32_t limit;              ///< TILTPOLE_LIMIT_...
  int32_t reserved;           ///< 0
} tiltpole_point_quality;

/// Sets the defaults: 0.1 degrees of tilt, 0.001 of length, the others 0.
TILTPOLE_C_API int tiltpole_point_deviations_default(tiltpole_point_deviations* deviations);

/// Judges the tips that tiltpole_solve_rigorous_tips() gives for the same arguments.
/// @param[in] options, deviations  null for the defaults
TILTPOLE_C_API int tiltpole_judge_points(const tiltpole_sample* corrected, size_t count,
                                         double pole_length, const tiltpole_tip_options* options,
                                         const tiltpole_point_deviations* deviations,
                                         tiltpole_point_quality* qualities);
/// @}
/// @name The quality of a calibration
/// @{

/// How far a calibration can be trusted, from best to worst.
enum {
  TILTPOLE_VERDICT_GOOD = 0,
  TILTPOLE_VERDICT_USABLE = 1,
  TILTPOLE_VERDICT_POOR = 2,
  TILTPOLE_VERDICT_UNUSABLE = 3
};

/// A report on a calibration. It comes from a function that judges or checks, and is the caller's
/// to destroy.
typedef struct tiltpole_calibration_quality tiltpole_calibration_quality;

/// The report's figures for the whole pole; see tiltpole::CalibrationQuality.
typedef struct tiltpole_quality_summary {
  double heading_difference_mean;       ///< B's heading less A's over the horizontal turn [degrees]
  double heading_difference_deviation;  ///< standard deviation of that difference [degrees]
  double heading_difference_largest;    ///< largest without its sign [degrees]
  double scale_ratio_y;                 ///< A's correction b over B's
  double scale_ratio_z;                 ///< A's correction e over B's
  double field_strength_ratio;          ///< A's over B's
  double dip_difference;                ///< A's less B's [degrees]
  double covered_percent[2];            ///< of each turn's circle
  int32_t samples[2];                   ///< of each turn
  int32_t verdict;                      ///< TILTPOLE_VERDICT_...
  int32_t calibrated;                   ///< 0 in the report on a failed calibration
  uint32_t reasons;                     ///< how many tiltpole_quality_reason_at() gives
  uint32_t missing_ranges[2];  ///< how many tiltpole_quality_missing_at() gives for each turn
  uint32_t heading_errors[2];  ///< how many tiltpole_quality_heading_errors() gives
  uint32_t reserved;           ///< 0
} tiltpole_quality_summary;

/// One magnetometer in one turn [counts]; see tiltpole::TurnFigures.
typedef struct tiltpole_turn_figures {
  double centre_first;                  ///< of the circle, on the x axis
  double centre_second;                 ///< on the y axis, in the vertical turn on the z axis
  double radius_mean;                   ///< mean distance from the centre, corrected: from 0
  double radius_scatter;                ///< root mean square of the distances from the mean
  double radius_scatter_largest;        ///< largest of them
  double out_of_plane_mean;             ///< mean of the third axis
  double out_of_plane_scatter;          ///< root mean square of the third axis about its mean
  double out_of_plane_scatter_largest;  ///< largest of them
  int32_t samples;                      ///< that the figures rest on
  int32_t used;                         ///< samples that the fit rests on
  int32_t dropped;                      ///< samples that the fit left out
  int32_t reserved;                     ///< 0
} tiltpole_turn_figures;

/// One magnetometer's part; see tiltpole::MagnetometerQuality and tiltpole::HeadingError.
typedef struct tiltpole_magnetometer_quality {
  tiltpole_turn_figures before[2];  ///< of each turn, raw
  tiltpole_turn_figures after[2];   ///< of each turn, corrected
  double heading_mean;              ///< expected heading error over all directions [degrees]
  double heading_deviation;         ///< of one reading's error about that mean [degrees]
  double heading_root_mean_square;  ///< of one reading, any direction [degrees]
  double heading_largest;          ///< in the worst direction, without noise, at most 180 [degrees]
  double heading_systematic;       ///< what every reading in a direction shares [degrees]
  double heading_noise;            ///< standard deviation of one reading about it [degrees]
  double heading_tilted;           ///< root mean square at 30 degrees of tilt [degrees]
  double heading_tilted_largest;   ///< in the worst direction at that tilt, at most 180 [degrees]
  double field_strength;           ///< from the horizontal turn [counts of the x axis]
  double field_strength_vertical;  ///< from the vertical turn [counts of the x axis]
  double dip;                      ///< of the field, downwards positive [degrees]
} tiltpole_magnetometer_quality;

/// The expected heading error in one direction [degrees].
typedef struct tiltpole_heading_error {
  double heading;    ///< the direction
  double error;      ///< what every measurement there shares
  double deviation;  ///< standard deviation of the error as it is known
} tiltpole_heading_error;

/// Directions without a sample, clockwise [degrees, 0 to 360]: 0 to 360 where there is none at all.
typedef struct tiltpole_azimuth_range {
  double from;  ///< not below `to` where the range passes 0
  double to;    ///< the end
} tiltpole_azimuth_range;

/// One finding; the codes are those of tiltpole::QualityCode and never change.
typedef struct tiltpole_quality_reason {
  int32_t code;          ///< what was found
  int32_t weight;        ///< the verdict can be no better than this: TILTPOLE_VERDICT_...
  int32_t magnetometer;  ///< TILTPOLE_MAGNETOMETER_..., -1 for both
  int32_t turn;          ///< TILTPOLE_TURN_..., -1 for both
  const char* sentence;  ///< English; the report's, until it is destroyed
} tiltpole_quality_reason;

/// Judges parameters by the raw samples of both turns.
TILTPOLE_C_API int tiltpole_judge_calibration(
    const tiltpole_sample* horizontal, size_t horizontal_count, const tiltpole_sample* vertical,
    size_t vertical_count, const tiltpole_correction* correction_a,
    const tiltpole_correction* correction_b, const tiltpole_translation* translation,
    tiltpole_calibration_quality** quality);

/// Says why a calibration failed.
/// @param[in] messages  the texts of the messages that it showed, in order
TILTPOLE_C_API int tiltpole_judge_failed_calibration(
    const tiltpole_sample* horizontal, size_t horizontal_count, const tiltpole_sample* vertical,
    size_t vertical_count, const char* const* messages, size_t message_count,
    tiltpole_calibration_quality** quality);

/// Holds parameters against ordinary raw samples of one place, as after loading a parameter file.
/// @param[out] quality  a report that holds reasons alone: none when the parameters fit. Its
///                      verdict is the worst of their weights.
TILTPOLE_C_API int tiltpole_check_parameters(const tiltpole_sample* samples, size_t count,
                                             const tiltpole_correction* correction_a,
                                             const tiltpole_correction* correction_b,
                                             tiltpole_calibration_quality** quality);

/// Gives a report and its sentences back; null does nothing.
TILTPOLE_C_API void tiltpole_calibration_quality_destroy(tiltpole_calibration_quality* quality);

/// The figures for the whole pole.
TILTPOLE_C_API int tiltpole_quality_summary_of(const tiltpole_calibration_quality* quality,
                                               tiltpole_quality_summary* summary);
/// The figures of a magnetometer, TILTPOLE_MAGNETOMETER_....
TILTPOLE_C_API int tiltpole_quality_magnetometer(const tiltpole_calibration_quality* quality,
                                                 int magnetometer,
                                                 tiltpole_magnetometer_quality* figures);
/// The expected heading errors of a magnetometer by direction: 72, or none where they cannot be
/// told.
TILTPOLE_C_API int tiltpole_quality_heading_errors(const tiltpole_calibration_quality* quality,
                                                   int magnetometer, tiltpole_heading_error* errors,
                                                   size_t capacity, size_t* count);
/// Reasons stand worst first; TILTPOLE_NOT_FOUND beyond the last.
TILTPOLE_C_API int tiltpole_quality_reason_at(const tiltpole_calibration_quality* quality,
                                              size_t index, tiltpole_quality_reason* reason);
/// Gaps in a turn; TILTPOLE_NOT_FOUND beyond the last.
TILTPOLE_C_API int tiltpole_quality_missing_at(const tiltpole_calibration_quality* quality,
                                               int turn, size_t index,
                                               tiltpole_azimuth_range* range);
/// The options of a rigorous tip that the calibration's quality suggests; biases 0.
TILTPOLE_C_API int tiltpole_quality_tip_options(const tiltpole_calibration_quality* quality,
                                                tiltpole_tip_options* options);
/// @}

// NOLINTEND(modernize-use-using)

#ifdef __cplusplus
}
#endif

#endif
