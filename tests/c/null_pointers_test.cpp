// Every function, with null in every place that needs more, and with numbers that mean nothing.

#include <cmath>

#include <gtest/gtest.h>

#include "tiltpole/tiltpole_c.h"

namespace {

class NullPointers : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(tiltpole_position_create(&position), TILTPOLE_OK);
    ASSERT_EQ(tiltpole_parameter_file_create(&file), TILTPOLE_OK);
    ASSERT_EQ(tiltpole_calibration_create(&calibration), TILTPOLE_OK);
    ASSERT_EQ(tiltpole_screening_create(TILTPOLE_TURN_HORIZONTAL, &screening), TILTPOLE_OK);
    ASSERT_EQ(tiltpole_transformation_create(&transformation), TILTPOLE_OK);
    ASSERT_EQ(tiltpole_judge_failed_calibration(nullptr, 0, nullptr, 0, nullptr, 0, &quality),
              TILTPOLE_OK);
  }
  void TearDown() override {
    tiltpole_position_destroy(position);
    tiltpole_parameter_file_destroy(file);
    tiltpole_calibration_destroy(calibration);
    tiltpole_screening_destroy(screening);
    tiltpole_transformation_destroy(transformation);
    tiltpole_calibration_quality_destroy(quality);
  }

  tiltpole_position* position = nullptr;
  tiltpole_parameter_file* file = nullptr;
  tiltpole_calibration* calibration = nullptr;
  tiltpole_screening* screening = nullptr;
  tiltpole_transformation* transformation = nullptr;
  tiltpole_calibration_quality* quality = nullptr;
  tiltpole_sample sample = {};
  tiltpole_correction correction = {};
  tiltpole_translation translation = {};
  tiltpole_xyh xyh = {};
  tiltpole_measurement measurement = {};
  double number = 0.0;
  int32_t integer = 0;
  size_t count = 0;
};

#define EXPECT_NULL_POINTER(call) EXPECT_EQ(call, TILTPOLE_NULL_POINTER) << #call
#define EXPECT_BAD_ARGUMENT(call) EXPECT_EQ(call, TILTPOLE_BAD_ARGUMENT) << #call

TEST_F(NullPointers, DestroyingNullDoesNothing) {
  tiltpole_position_destroy(nullptr);
  tiltpole_parameter_file_destroy(nullptr);
  tiltpole_calibration_destroy(nullptr);
  tiltpole_screening_destroy(nullptr);
  tiltpole_transformation_destroy(nullptr);
  tiltpole_calibration_quality_destroy(nullptr);
}

TEST_F(NullPointers, CreatingIntoNullIsAnError) {
  EXPECT_NULL_POINTER(tiltpole_position_create(nullptr));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_create(nullptr));
  EXPECT_NULL_POINTER(tiltpole_calibration_create(nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_create(TILTPOLE_TURN_VERTICAL, nullptr));
  EXPECT_NULL_POINTER(tiltpole_transformation_create(nullptr));
}

TEST_F(NullPointers, DefaultsIntoNullAreAnError) {
  EXPECT_NULL_POINTER(tiltpole_sample_default(nullptr));
  EXPECT_NULL_POINTER(tiltpole_correction_default(nullptr));
  EXPECT_NULL_POINTER(tiltpole_tip_options_default(nullptr));
  EXPECT_NULL_POINTER(tiltpole_point_deviations_default(nullptr));
}

TEST_F(NullPointers, PositioningRefusesThem) {
  EXPECT_NULL_POINTER(tiltpole_correct_samples(nullptr, 1, &correction, &correction));
  EXPECT_NULL_POINTER(tiltpole_correct_samples(&sample, 1, nullptr, &correction));
  EXPECT_NULL_POINTER(tiltpole_correct_samples(&sample, 1, &correction, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_set_correction(nullptr, 0, &correction));
  EXPECT_NULL_POINTER(tiltpole_position_set_correction(position, 0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_get_correction(nullptr, 0, &correction));
  EXPECT_NULL_POINTER(tiltpole_position_get_correction(position, 0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_set_translation(nullptr, &translation));
  EXPECT_NULL_POINTER(tiltpole_position_set_translation(position, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_get_translation(nullptr, &translation));
  EXPECT_NULL_POINTER(tiltpole_position_get_translation(position, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_set_bias_angle(nullptr, 0, 1.0));
  EXPECT_NULL_POINTER(tiltpole_position_get_bias_angle(nullptr, 0, &number));
  EXPECT_NULL_POINTER(tiltpole_position_get_bias_angle(position, 0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_read(nullptr, "a"));
  EXPECT_NULL_POINTER(tiltpole_position_read(position, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_save(nullptr, "a"));
  EXPECT_NULL_POINTER(tiltpole_position_save(position, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_replace(nullptr, "a"));
  EXPECT_NULL_POINTER(tiltpole_position_replace(position, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_solve(nullptr, &sample, 1, 2.0, &measurement));
  EXPECT_NULL_POINTER(tiltpole_position_solve(position, nullptr, 1, 2.0, &measurement));
  EXPECT_NULL_POINTER(tiltpole_position_solve(position, &sample, 1, 2.0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_position_solve_with_heading(nullptr, 0, &xyh, &sample, 2.0, &xyh));
  EXPECT_NULL_POINTER(
      tiltpole_position_solve_with_heading(position, 0, nullptr, &sample, 2.0, &xyh));
  EXPECT_NULL_POINTER(tiltpole_position_solve_with_heading(position, 0, &xyh, nullptr, 2.0, &xyh));
  EXPECT_NULL_POINTER(
      tiltpole_position_solve_with_heading(position, 0, &xyh, &sample, 2.0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_angle_to_horizontal(1.0, 1.0, nullptr));
}

TEST_F(NullPointers, ParameterFilesRefuseThem) {
  char text[4];
  EXPECT_NULL_POINTER(tiltpole_parameter_file_open_read(nullptr, "a"));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_open_read(file, nullptr));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_open_write(nullptr, "a"));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_open_write(file, nullptr));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_close(nullptr));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_double(nullptr, "k", &number));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_double(file, nullptr, &number));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_double(file, "k", nullptr));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_int(nullptr, "k", &integer));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_int(file, nullptr, &integer));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_int(file, "k", nullptr));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_string(nullptr, "k", text, 4, &count));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_string(file, nullptr, text, 4, &count));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_read_string(file, "k", nullptr, 4, &count));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_write_double(nullptr, "k", 1.0));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_write_double(file, nullptr, 1.0));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_write_int(nullptr, "k", 1));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_write_int(file, nullptr, 1));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_write_string(nullptr, "k", "v"));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_write_string(file, nullptr, "v"));
  EXPECT_NULL_POINTER(tiltpole_parameter_file_write_string(file, "k", nullptr));
}

TEST_F(NullPointers, CalibrationRefusesThem) {
  EXPECT_NULL_POINTER(tiltpole_calibration_add(nullptr, 0, &sample, 1));
  EXPECT_NULL_POINTER(tiltpole_calibration_add(calibration, 0, nullptr, 1));
  EXPECT_NULL_POINTER(tiltpole_calibration_clear(nullptr, 0));
  EXPECT_NULL_POINTER(tiltpole_calibration_get(nullptr, 0, 0, &sample));
  EXPECT_NULL_POINTER(tiltpole_calibration_get(calibration, 0, 0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_calibration_adjust(nullptr));
  EXPECT_NULL_POINTER(tiltpole_calibration_result(nullptr, &correction, nullptr, nullptr));
  EXPECT_EQ(tiltpole_calibration_result(calibration, nullptr, nullptr, nullptr), TILTPOLE_OK);
}

TEST_F(NullPointers, ScreeningRefusesThem) {
  tiltpole_center center = {};
  EXPECT_NULL_POINTER(tiltpole_screening_add(nullptr, &sample, 1));
  EXPECT_NULL_POINTER(tiltpole_screening_add(screening, nullptr, 1));
  EXPECT_NULL_POINTER(tiltpole_screening_clear(nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_coverage(nullptr, &integer));
  EXPECT_NULL_POINTER(tiltpole_screening_coverage(screening, nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_is_covered(nullptr, &integer));
  EXPECT_NULL_POINTER(tiltpole_screening_is_covered(screening, nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_center(nullptr, &center));
  EXPECT_NULL_POINTER(tiltpole_screening_center(screening, nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_filter(nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_select(nullptr, 1));
  EXPECT_NULL_POINTER(tiltpole_screening_is_complete(nullptr, &integer));
  EXPECT_NULL_POINTER(tiltpole_screening_is_complete(screening, nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_selected(nullptr, &sample, 1, &count));
  EXPECT_NULL_POINTER(tiltpole_screening_selected(screening, nullptr, 1, &count));
  EXPECT_NULL_POINTER(tiltpole_screening_selected(screening, &sample, 1, nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_selected_indices(nullptr, &count, 1, &count));
  EXPECT_NULL_POINTER(tiltpole_screening_selected_indices(screening, nullptr, 1, &count));
  EXPECT_NULL_POINTER(tiltpole_screening_selected_indices(screening, &count, 1, nullptr));
  EXPECT_NULL_POINTER(tiltpole_screening_records(nullptr, &sample, 1, &count));
  EXPECT_NULL_POINTER(tiltpole_screening_records(screening, nullptr, 1, &count));
  EXPECT_NULL_POINTER(tiltpole_screening_records(screening, &sample, 1, nullptr));
}

TEST_F(NullPointers, TransformationRefusesThem) {
  tiltpole_four_parameters parameters = {};
  tiltpole_xy point = {};
  const tiltpole_point_pair pair = {};
  EXPECT_NULL_POINTER(tiltpole_transformation_add_pairs(nullptr, &pair, 1));
  EXPECT_NULL_POINTER(tiltpole_transformation_add_pairs(transformation, nullptr, 1));
  EXPECT_NULL_POINTER(tiltpole_transformation_clear_pairs(nullptr));
  EXPECT_NULL_POINTER(tiltpole_transformation_estimate(nullptr));
  EXPECT_NULL_POINTER(tiltpole_transformation_set_parameters(nullptr, &parameters));
  EXPECT_NULL_POINTER(tiltpole_transformation_set_parameters(transformation, nullptr));
  EXPECT_NULL_POINTER(tiltpole_transformation_get_parameters(nullptr, &parameters));
  EXPECT_NULL_POINTER(tiltpole_transformation_get_parameters(transformation, nullptr));
  EXPECT_NULL_POINTER(tiltpole_transformation_forward(nullptr, &point, 1));
  EXPECT_NULL_POINTER(tiltpole_transformation_forward(transformation, nullptr, 1));
  EXPECT_NULL_POINTER(tiltpole_transformation_inverse(nullptr, &point, 1));
  EXPECT_NULL_POINTER(tiltpole_transformation_inverse(transformation, nullptr, 1));
}

TEST_F(NullPointers, PointQualityRefusesThem) {
  tiltpole_rigorous_tip tip = {};
  tiltpole_point_quality point = {};
  EXPECT_NULL_POINTER(tiltpole_solve_rigorous_tips(nullptr, 1, 2.0, nullptr, &tip));
  EXPECT_NULL_POINTER(tiltpole_solve_rigorous_tips(&sample, 1, 2.0, nullptr, nullptr));
  EXPECT_NULL_POINTER(tiltpole_judge_points(nullptr, 1, 2.0, nullptr, nullptr, &point));
  EXPECT_NULL_POINTER(tiltpole_judge_points(&sample, 1, 2.0, nullptr, nullptr, nullptr));
}

TEST_F(NullPointers, CalibrationQualityRefusesThem) {
  tiltpole_calibration_quality* made = nullptr;
  tiltpole_quality_summary summary = {};
  tiltpole_magnetometer_quality figures = {};
  tiltpole_heading_error error = {};
  tiltpole_quality_reason reason = {};
  tiltpole_azimuth_range range = {};
  tiltpole_tip_options options = {};
  const char* no_text = nullptr;
  const auto* s = &sample;
  const auto* c = &correction;
  const auto* t = &translation;
  EXPECT_NULL_POINTER(tiltpole_judge_calibration(nullptr, 1, s, 1, c, c, t, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_calibration(s, 1, nullptr, 1, c, c, t, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_calibration(s, 1, s, 1, nullptr, c, t, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_calibration(s, 1, s, 1, c, nullptr, t, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_calibration(s, 1, s, 1, c, c, nullptr, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_calibration(s, 1, s, 1, c, c, t, nullptr));
  EXPECT_NULL_POINTER(tiltpole_judge_failed_calibration(nullptr, 1, s, 1, nullptr, 0, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_failed_calibration(s, 1, nullptr, 1, nullptr, 0, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_failed_calibration(s, 1, s, 1, nullptr, 1, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_failed_calibration(s, 1, s, 1, &no_text, 1, &made));
  EXPECT_NULL_POINTER(tiltpole_judge_failed_calibration(s, 1, s, 1, nullptr, 0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_check_parameters(nullptr, 1, c, c, &made));
  EXPECT_NULL_POINTER(tiltpole_check_parameters(s, 1, nullptr, c, &made));
  EXPECT_NULL_POINTER(tiltpole_check_parameters(s, 1, c, nullptr, &made));
  EXPECT_NULL_POINTER(tiltpole_check_parameters(s, 1, c, c, nullptr));
  EXPECT_EQ(made, nullptr);
  EXPECT_NULL_POINTER(tiltpole_quality_summary_of(nullptr, &summary));
  EXPECT_NULL_POINTER(tiltpole_quality_summary_of(quality, nullptr));
  EXPECT_NULL_POINTER(tiltpole_quality_magnetometer(nullptr, 0, &figures));
  EXPECT_NULL_POINTER(tiltpole_quality_magnetometer(quality, 0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_quality_heading_errors(nullptr, 0, &error, 1, &count));
  EXPECT_NULL_POINTER(tiltpole_quality_heading_errors(quality, 0, nullptr, 1, &count));
  EXPECT_NULL_POINTER(tiltpole_quality_heading_errors(quality, 0, &error, 1, nullptr));
  EXPECT_NULL_POINTER(tiltpole_quality_reason_at(nullptr, 0, &reason));
  EXPECT_NULL_POINTER(tiltpole_quality_reason_at(quality, 0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_quality_missing_at(nullptr, 0, 0, &range));
  EXPECT_NULL_POINTER(tiltpole_quality_missing_at(quality, 0, 0, nullptr));
  EXPECT_NULL_POINTER(tiltpole_quality_tip_options(nullptr, &options));
  EXPECT_NULL_POINTER(tiltpole_quality_tip_options(quality, nullptr));
}

TEST_F(NullPointers, AMagnetometerThatThereIsNotIsAnError) {
  tiltpole_magnetometer_quality figures = {};
  for (const int none : {-1, 2}) {
    EXPECT_BAD_ARGUMENT(tiltpole_position_set_correction(position, none, &correction));
    EXPECT_BAD_ARGUMENT(tiltpole_position_get_correction(position, none, &correction));
    EXPECT_BAD_ARGUMENT(tiltpole_position_set_bias_angle(position, none, 1.0));
    EXPECT_BAD_ARGUMENT(tiltpole_position_get_bias_angle(position, none, &number));
    EXPECT_BAD_ARGUMENT(tiltpole_quality_magnetometer(quality, none, &figures));
    EXPECT_BAD_ARGUMENT(tiltpole_quality_heading_errors(quality, none, nullptr, 0, &count));
  }
}

TEST_F(NullPointers, ATurnThatThereIsNotIsAnError) {
  tiltpole_screening* made = nullptr;
  tiltpole_azimuth_range range = {};
  for (const int none : {-1, 2}) {
    EXPECT_BAD_ARGUMENT(tiltpole_calibration_add(calibration, none, &sample, 1));
    EXPECT_BAD_ARGUMENT(tiltpole_calibration_clear(calibration, none));
    EXPECT_BAD_ARGUMENT(tiltpole_calibration_get(calibration, none, 0, &sample));
    EXPECT_BAD_ARGUMENT(tiltpole_screening_create(none, &made));
    EXPECT_BAD_ARGUMENT(tiltpole_quality_missing_at(quality, none, 0, &range));
  }
  EXPECT_EQ(made, nullptr);
}

TEST_F(NullPointers, ASolutionThatThereIsNotIsAnError) {
  EXPECT_BAD_ARGUMENT(tiltpole_position_solve_with_heading(position, 3, &xyh, &sample, 2.0, &xyh));
  EXPECT_BAD_ARGUMENT(tiltpole_position_solve_with_heading(position, -1, &xyh, &sample, 2.0, &xyh));
}

TEST_F(NullPointers, AnEmptyArrayMayBeNull) {
  EXPECT_EQ(tiltpole_position_solve(position, nullptr, 0, 2.0, nullptr), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_calibration_add(calibration, 0, nullptr, 0), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_screening_add(screening, nullptr, 0), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_transformation_forward(transformation, nullptr, 0), TILTPOLE_OK);
}

}  // namespace
