/* A whole day with the pole, in C: calibrate, judge, screen, keep the parameters, measure,
   transform. Prints what does not hold and returns how much that was. */

#include <math.h>
#include <stdio.h>
#include <string.h>

#include "tiltpole/tiltpole_c.h"

static int failures = 0;

static void Check(int holds, const char* what, int line) {
  if (holds) return;
  ++failures;
  printf("line %d: %s (last error: %s)\n", line, what, tiltpole_last_error());
}
#define CHECK(condition) Check((condition), #condition, __LINE__)
#define CHECK_OK(call) Check((call) == TILTPOLE_OK, #call, __LINE__)

enum { kSamples = 120 };
static const double kDegree = 3.14159265358979323846 / 180.0;

/* A sensor in a field of (hx, hy, hz) along its axes, with offsets that a calibration has to find,
   in whole counts. B is mounted half a turn about z. */
static void Read(tiltpole_sample* sample, double hx, double hy, double hz) {
  sample->magnetic_a[0] = floor(hx + 310.0);
  sample->magnetic_a[1] = floor(1.1 * hy - 220.0);
  sample->magnetic_a[2] = floor(0.9 * hz + 130.0);
  sample->magnetic_b[0] = floor(-hx - 90.0);
  sample->magnetic_b[1] = floor(-0.95 * hy + 40.0);
  sample->magnetic_b[2] = floor(1.05 * hz - 75.0);
}

/* The field is 2500 counts towards north, 4330 down; z is up the pole, y left of x. */
static void MakeTurns(tiltpole_sample* horizontal, tiltpole_sample* vertical) {
  for (int i = 0; i < kSamples; ++i) {
    const double angle = (3.0 * i + 1.0) * kDegree;
    tiltpole_sample_default(&horizontal[i]);
    tiltpole_sample_default(&vertical[i]);
    Read(&horizontal[i], 2500.0 * cos(angle), 2500.0 * sin(angle), -4330.0);
    Read(&vertical[i], 5000.0 * cos(angle), 0.0, -5000.0 * sin(angle));
    vertical[i].incline_x = asin(sin(angle - 60.0 * kDegree)) / kDegree;
    vertical[i].time[2] = horizontal[i].time[2] = i % 60;
    vertical[i].time[1] = horizontal[i].time[1] = i / 60;
  }
}

static int shown = 0;
static char last_text[200];
static void Take(const char* text, const char* title, int icon, void* user) {
  ++shown;
  *(int*)user += 1;
  strncpy(last_text, text, sizeof last_text - 1);
  CHECK(strcmp(title, "Warning") == 0);
  CHECK(icon == TILTPOLE_ICON_STOP || icon == TILTPOLE_ICON_EXCLAMATION);
}

static void FailWithoutSamples(void) {
  int user = 0;
  tiltpole_calibration* calibration = NULL;
  CHECK_OK(tiltpole_set_message_handler(Take, &user));
  CHECK_OK(tiltpole_calibration_create(&calibration));
  CHECK(tiltpole_calibration_adjust(calibration) == TILTPOLE_NO_SOLUTION);
  CHECK(shown > 0 && user == shown && last_text[0] != '\0');
  CHECK(strstr(tiltpole_last_error(), "cannot be calibrated") != NULL);
  tiltpole_calibration_destroy(calibration);

  const char* messages[1];
  messages[0] = last_text;
  tiltpole_calibration_quality* quality = NULL;
  tiltpole_quality_summary summary;
  tiltpole_quality_reason reason;
  CHECK_OK(tiltpole_judge_failed_calibration(NULL, 0, NULL, 0, messages, 1, &quality));
  CHECK_OK(tiltpole_quality_summary_of(quality, &summary));
  CHECK(summary.verdict == TILTPOLE_VERDICT_UNUSABLE && summary.calibrated == 0);
  CHECK(summary.reasons > 0);
  CHECK_OK(tiltpole_quality_reason_at(quality, 0, &reason));
  CHECK(reason.code > 0 && strlen(reason.sentence) > 10);
  CHECK(tiltpole_quality_reason_at(quality, summary.reasons, &reason) == TILTPOLE_NOT_FOUND);
  tiltpole_calibration_quality_destroy(quality);
  CHECK_OK(tiltpole_set_message_handler(NULL, NULL));
}

static void Screen(const tiltpole_sample* turn, int kind) {
  static tiltpole_sample selected[kSamples];
  static size_t indices[kSamples];
  tiltpole_screening* screening = NULL;
  tiltpole_center center;
  int32_t percent = 0;
  int32_t answer = 0;
  size_t count = 0;
  size_t again = 0;
  CHECK_OK(tiltpole_screening_create(kind, &screening));
  CHECK_OK(tiltpole_screening_add(screening, turn, kSamples));
  CHECK_OK(tiltpole_screening_coverage(screening, &percent));
  CHECK(percent > 90);
  CHECK_OK(tiltpole_screening_filter(screening));
  CHECK_OK(tiltpole_screening_select(screening, 30));
  CHECK_OK(tiltpole_screening_is_complete(screening, &answer));
  CHECK(answer == 1);
  CHECK_OK(tiltpole_screening_center(screening, &center));
  CHECK(center.valid == 1 && center.radius > 2000.0);
  CHECK_OK(tiltpole_screening_selected(screening, NULL, 0, &count));
  CHECK(count >= 30 && count <= kSamples);
  CHECK_OK(tiltpole_screening_selected(screening, selected, kSamples, &again));
  CHECK_OK(tiltpole_screening_selected_indices(screening, indices, kSamples, &count));
  CHECK(again == count);
  for (size_t i = 0; i < count; ++i) {
    CHECK(indices[i] < kSamples);
    CHECK(selected[i].magnetic_a[0] == turn[indices[i]].magnetic_a[0]);
  }
  CHECK_OK(tiltpole_screening_clear(screening));
  CHECK_OK(tiltpole_screening_records(screening, NULL, 0, &count));
  CHECK(count == 0);
  CHECK(tiltpole_screening_select(screening, 30) == TILTPOLE_NO_SOLUTION);
  tiltpole_screening_destroy(screening);
}

static void JudgeThe(const tiltpole_sample* horizontal, const tiltpole_sample* vertical,
                     const tiltpole_correction* a, const tiltpole_correction* b,
                     const tiltpole_translation* translation, tiltpole_tip_options* options) {
  tiltpole_calibration_quality* quality = NULL;
  tiltpole_quality_summary summary;
  tiltpole_magnetometer_quality figures;
  tiltpole_heading_error errors[72];
  size_t count = 0;
  CHECK_OK(tiltpole_judge_calibration(horizontal, kSamples, vertical, kSamples, a, b, translation,
                                      &quality));
  CHECK_OK(tiltpole_quality_summary_of(quality, &summary));
  CHECK(summary.calibrated == 1 && summary.samples[0] == kSamples);
  CHECK(summary.verdict <= TILTPOLE_VERDICT_USABLE);
  CHECK_OK(tiltpole_quality_magnetometer(quality, TILTPOLE_MAGNETOMETER_B, &figures));
  CHECK(figures.after[TILTPOLE_TURN_HORIZONTAL].samples == kSamples);
  CHECK(fabs(figures.after[TILTPOLE_TURN_HORIZONTAL].radius_mean - 2500.0) < 5.0);
  CHECK(figures.heading_root_mean_square < 1.0);
  CHECK_OK(tiltpole_quality_heading_errors(quality, TILTPOLE_MAGNETOMETER_A, errors, 72, &count));
  CHECK(count == 72 && errors[71].heading == 355.0);
  CHECK_OK(tiltpole_quality_tip_options(quality, options));
  tiltpole_calibration_quality_destroy(quality);
}

static void Measure(tiltpole_position* position, const tiltpole_tip_options* options,
                    const tiltpole_correction* a, const tiltpole_correction* b) {
  tiltpole_sample sample;
  tiltpole_sample corrected;
  tiltpole_measurement measured;
  tiltpole_rigorous_tip tip;
  tiltpole_point_quality quality;
  tiltpole_xyh again;
  const tiltpole_xyh origin = {0.0, 0.0, 0.0};
  /* Heading 0, the x axis rises by 10 degrees: the tip lies 2 sin 10 ahead. */
  const double rise = 10.0 * kDegree;
  tiltpole_sample_default(&sample);
  sample.incline_x = 10.0;
  Read(&sample, 2500.0 * cos(rise) - 4330.0 * sin(rise), 0.0,
       -2500.0 * sin(rise) - 4330.0 * cos(rise));
  corrected = sample;
  CHECK_OK(tiltpole_position_solve(position, &sample, 1, 2.0, &measured));
  CHECK(fabs(measured.offset.x - 2.0 * sin(rise)) < 0.01);
  CHECK(fabs(measured.offset.y) < 0.01);
  CHECK(fabs(measured.offset.h + 2.0 * cos(rise)) < 1e-9);
  CHECK(measured.interference == 0);
  CHECK_OK(tiltpole_position_solve_with_heading(position, TILTPOLE_SOLUTION_GEOMETRY_A, &origin,
                                                &sample, 2.0, &again));
  CHECK(again.x == measured.offset.x && again.h == measured.offset.h);
  CHECK_OK(tiltpole_correct_samples(&corrected, 1, a, b));
  CHECK(corrected.magnetic_a[0] == sample.magnetic_a[0]);
  CHECK_OK(tiltpole_solve_rigorous_tips(&corrected, 1, 2.0, options, &tip));
  CHECK(tip.status == TILTPOLE_TIP_SOLVED && fabs(tip.offset.x - 2.0 * sin(rise)) < 0.01);
  CHECK_OK(tiltpole_judge_points(&corrected, 1, 2.0, options, NULL, &quality));
  CHECK(quality.height > 0.0 && quality.height < 0.1);
}

static void CalibrateAndMeasure(const char* path) {
  static tiltpole_sample horizontal[kSamples];
  static tiltpole_sample vertical[kSamples];
  tiltpole_calibration* calibration = NULL;
  tiltpole_position* position = NULL;
  tiltpole_position* next_day = NULL;
  tiltpole_correction a;
  tiltpole_correction b;
  tiltpole_correction read;
  tiltpole_translation translation;
  tiltpole_tip_options options;
  MakeTurns(horizontal, vertical);
  Screen(horizontal, TILTPOLE_TURN_HORIZONTAL);
  Screen(vertical, TILTPOLE_TURN_VERTICAL);
  CHECK_OK(tiltpole_calibration_create(&calibration));
  CHECK_OK(tiltpole_calibration_add(calibration, TILTPOLE_TURN_HORIZONTAL, horizontal, kSamples));
  CHECK_OK(tiltpole_calibration_add(calibration, TILTPOLE_TURN_VERTICAL, vertical, kSamples));
  CHECK_OK(tiltpole_calibration_adjust(calibration));
  CHECK_OK(tiltpole_calibration_result(calibration, &a, &b, &translation));
  CHECK(fabs(a.x0 - 310.0) < 1.0 && fabs(a.b * 1.1 - 1.0) < 1e-3);
  tiltpole_calibration_destroy(calibration);
  JudgeThe(horizontal, vertical, &a, &b, &translation, &options);

  CHECK_OK(tiltpole_position_create(&position));
  CHECK_OK(tiltpole_position_set_correction(position, TILTPOLE_MAGNETOMETER_A, &a));
  CHECK_OK(tiltpole_position_set_correction(position, TILTPOLE_MAGNETOMETER_B, &b));
  CHECK_OK(tiltpole_position_set_translation(position, &translation));
  CHECK_OK(tiltpole_position_save(position, path));
  CHECK_OK(tiltpole_position_create(&next_day));
  CHECK_OK(tiltpole_position_read(next_day, path));
  CHECK_OK(tiltpole_position_get_correction(next_day, TILTPOLE_MAGNETOMETER_A, &read));
  CHECK(fabs(read.x0 - a.x0) < 1e-9);
  Measure(position, &options, &a, &b);
  tiltpole_position_destroy(position);
  tiltpole_position_destroy(next_day);
}

static void Transform(void) {
  const tiltpole_point_pair pairs[] = {
      {{0.0, 0.0}, {10.0, 20.0}}, {{1.0, 0.0}, {10.0, 22.0}}, {{0.0, 1.0}, {8.0, 20.0}}};
  tiltpole_xy point = {1.0, 1.0};
  tiltpole_four_parameters parameters;
  tiltpole_transformation* transformation = NULL;
  CHECK_OK(tiltpole_transformation_create(&transformation));
  CHECK(tiltpole_transformation_estimate(transformation) == TILTPOLE_NO_SOLUTION);
  CHECK_OK(tiltpole_transformation_add_pairs(transformation, pairs, 3));
  CHECK_OK(tiltpole_transformation_estimate(transformation));
  CHECK_OK(tiltpole_transformation_get_parameters(transformation, &parameters));
  CHECK(fabs(parameters.scale - 2.0) < 1e-12);
  CHECK_OK(tiltpole_transformation_forward(transformation, &point, 1));
  CHECK(fabs(point.x - 8.0) < 1e-12 && fabs(point.y - 22.0) < 1e-12);
  CHECK_OK(tiltpole_transformation_inverse(transformation, &point, 1));
  CHECK(fabs(point.x - 1.0) < 1e-12 && fabs(point.y - 1.0) < 1e-12);
  tiltpole_transformation_destroy(transformation);
}

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  CHECK(tiltpole_last_error()[0] == '\0');
  CHECK(strchr(tiltpole_version(), '.') != NULL);
  FailWithoutSamples();
  CalibrateAndMeasure(argv[1]);
  Transform();
  if (failures == 0) printf("all of it holds\n");
  return failures == 0 ? 0 : 1;
}
