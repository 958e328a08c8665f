// What the C interface keeps, gives back and forgets, handle by handle, and what it says where
// there is nothing to give.

#include <cmath>
#include <filesystem>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "support/temporary_folder.h"
#include "tiltpole/c/detail/tip.h"
#include "tiltpole/platform/message_box.h"
#include "tiltpole/tiltpole_c.h"

namespace {

using tiltpole_test::TemporaryFolder;

// The correction turns the sensor's y and z axes round.
TEST(CCorrection, StartsUnscaledAndWithoutOffsets) {
  tiltpole_correction correction = {};
  ASSERT_EQ(tiltpole_correction_default(&correction), TILTPOLE_OK);
  tiltpole_sample sample = {};
  sample.magnetic_a[0] = -5.5;
  sample.magnetic_a[1] = 123.5;
  sample.magnetic_b[2] = -77.25;
  ASSERT_EQ(tiltpole_correct_samples(&sample, 1, &correction, &correction), TILTPOLE_OK);
  EXPECT_EQ(sample.magnetic_a[0], -5.5);
  EXPECT_EQ(sample.magnetic_a[1], -123.5);
  EXPECT_EQ(sample.magnetic_b[2], 77.25);
  EXPECT_EQ(tiltpole_correction_default(nullptr), TILTPOLE_NULL_POINTER);
}

TEST(CPosition, KeepsACorrectionAndABiasForEachMagnetometer) {
  tiltpole_position* position = nullptr;
  ASSERT_EQ(tiltpole_position_create(&position), TILTPOLE_OK);
  tiltpole_correction correction = {};
  tiltpole_correction_default(&correction);
  for (const int magnetometer : {TILTPOLE_MAGNETOMETER_A, TILTPOLE_MAGNETOMETER_B}) {
    correction.x0 = 10.0 + magnetometer;
    tiltpole_position_set_correction(position, magnetometer, &correction);
    tiltpole_position_set_bias_angle(position, magnetometer, 20.0 + magnetometer);
  }
  for (const int magnetometer : {TILTPOLE_MAGNETOMETER_A, TILTPOLE_MAGNETOMETER_B}) {
    double bias = 0.0;
    EXPECT_EQ(tiltpole_position_get_correction(position, magnetometer, &correction), TILTPOLE_OK);
    EXPECT_EQ(tiltpole_position_get_bias_angle(position, magnetometer, &bias), TILTPOLE_OK);
    EXPECT_EQ(correction.x0, 10.0 + magnetometer);
    EXPECT_EQ(bias, 20.0 + magnetometer);
  }
  tiltpole_position_destroy(position);
}

TEST(CCalibration, ForgetsOneTurnAndKeepsTheOther) {
  for (const int cleared : {TILTPOLE_TURN_HORIZONTAL, TILTPOLE_TURN_VERTICAL}) {
    tiltpole_calibration* calibration = nullptr;
    ASSERT_EQ(tiltpole_calibration_create(&calibration), TILTPOLE_OK);
    tiltpole_sample sample = {};
    tiltpole_calibration_add(calibration, TILTPOLE_TURN_HORIZONTAL, &sample, 1);
    tiltpole_calibration_add(calibration, TILTPOLE_TURN_VERTICAL, &sample, 1);
    EXPECT_EQ(tiltpole_calibration_clear(calibration, cleared), TILTPOLE_OK);
    EXPECT_EQ(tiltpole_calibration_get(calibration, cleared, 0, &sample), TILTPOLE_NOT_FOUND);
    EXPECT_EQ(tiltpole_calibration_get(calibration, 1 - cleared, 0, &sample), TILTPOLE_OK);
    tiltpole_calibration_destroy(calibration);
  }
}

TEST(CTransformation, UsesParametersThatItIsGivenAndForgetsItsPairs) {
  tiltpole_transformation* transformation = nullptr;
  ASSERT_EQ(tiltpole_transformation_create(&transformation), TILTPOLE_OK);
  const tiltpole_four_parameters given = {2.0, 0.0, 10.0, 20.0, 0.0, 0.0};
  ASSERT_EQ(tiltpole_transformation_set_parameters(transformation, &given), TILTPOLE_OK);
  tiltpole_four_parameters kept = {};
  tiltpole_transformation_get_parameters(transformation, &kept);
  EXPECT_EQ(kept.scale, 2.0);
  EXPECT_EQ(kept.offset_y, 20.0);
  tiltpole_xy point = {1.0, 3.0};
  tiltpole_transformation_forward(transformation, &point, 1);
  EXPECT_EQ(point.x, 12.0);
  EXPECT_EQ(point.y, 26.0);
  const tiltpole_point_pair pairs[] = {{{0.0, 0.0}, {0.0, 0.0}}, {{1.0, 0.0}, {1.0, 0.0}}};
  tiltpole_transformation_add_pairs(transformation, pairs, 2);
  EXPECT_EQ(tiltpole_transformation_clear_pairs(transformation), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_transformation_estimate(transformation), TILTPOLE_NO_SOLUTION);
  EXPECT_EQ(tiltpole_transformation_clear_pairs(nullptr), TILTPOLE_NULL_POINTER);
  EXPECT_EQ(tiltpole_transformation_set_parameters(nullptr, &given), TILTPOLE_NULL_POINTER);
  EXPECT_EQ(tiltpole_transformation_set_parameters(transformation, nullptr), TILTPOLE_NULL_POINTER);
  tiltpole_transformation_destroy(transformation);
}

TEST(CScreening, WithoutAUsableRecordHasNoSelection) {
  tiltpole_screening* screening = nullptr;
  ASSERT_EQ(tiltpole_screening_create(TILTPOLE_TURN_HORIZONTAL, &screening), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_screening_filter(screening), TILTPOLE_NO_SOLUTION);
  EXPECT_STREQ(tiltpole_last_error(), "no usable record is left");
  std::size_t count = 7;
  tiltpole_sample sample = {};
  EXPECT_EQ(tiltpole_screening_selected(screening, &sample, 1, &count), TILTPOLE_OK);
  EXPECT_EQ(count, 0U);
  count = 7;
  EXPECT_EQ(tiltpole_screening_selected_indices(screening, nullptr, 0, &count), TILTPOLE_OK);
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(tiltpole_screening_select(screening, 0), TILTPOLE_BAD_ARGUMENT);
  EXPECT_EQ(tiltpole_screening_select(screening, 1), TILTPOLE_NO_SOLUTION);
  tiltpole_screening_destroy(screening);
}

TEST(CScreening, FillsALittleRoomWithIndicesAndTellsHowManyThereAre) {
  tiltpole_screening* screening = nullptr;
  ASSERT_EQ(tiltpole_screening_create(TILTPOLE_TURN_HORIZONTAL, &screening), TILTPOLE_OK);
  for (int i = 0; i < 40; ++i) {
    tiltpole_sample sample = {};
    sample.magnetic_a[0] = 3000.0 * std::cos(0.15 * i);
    sample.magnetic_a[1] = 3000.0 * std::sin(0.15 * i);
    tiltpole_screening_add(screening, &sample, 1);
  }
  ASSERT_EQ(tiltpole_screening_filter(screening), TILTPOLE_OK);
  std::size_t indices[] = {99, 99, 99};
  std::size_t count = 0;
  EXPECT_EQ(tiltpole_screening_selected_indices(screening, indices, 2, &count), TILTPOLE_OK);
  EXPECT_GT(count, 2U);
  EXPECT_LT(indices[0], 40U);
  EXPECT_LT(indices[1], 40U);
  EXPECT_NE(indices[0], indices[1]);
  EXPECT_EQ(indices[2], 99U);
  tiltpole_screening_destroy(screening);
}

TEST(CQuality, TellsTheGapsOfEachTurnAndWhereTheyEnd) {
  tiltpole_calibration_quality* quality = nullptr;
  const char* messages[] = {"The ellipse fitting fails, please recalibrate!"};
  tiltpole_sample sample = {};
  sample.magnetic_a[0] = sample.magnetic_b[0] = 3000.0;
  ASSERT_EQ(tiltpole_judge_failed_calibration(&sample, 1, &sample, 1, messages, 1, &quality),
            TILTPOLE_OK);
  tiltpole_quality_summary summary = {};
  tiltpole_quality_summary_of(quality, &summary);
  for (const int turn : {TILTPOLE_TURN_HORIZONTAL, TILTPOLE_TURN_VERTICAL}) {
    const std::size_t gaps = summary.missing_ranges[turn];
    tiltpole_azimuth_range range = {};
    ASSERT_GT(gaps, 0U);
    EXPECT_EQ(tiltpole_quality_missing_at(quality, turn, gaps - 1, &range), TILTPOLE_OK);
    EXPECT_EQ(tiltpole_quality_missing_at(quality, turn, gaps, &range), TILTPOLE_NOT_FOUND);
    EXPECT_STREQ(tiltpole_last_error(), "the turn has fewer gaps");
  }
  tiltpole_calibration_quality_destroy(quality);
}

TEST(CTip, OptionsCarryBothDisturbancesBothWays) {
  tiltpole::RigorousTipOptions options;
  options.Disturbed_A = true;
  tiltpole_tip_options in_c = tiltpole::detail::ToC(options);
  EXPECT_EQ(in_c.disturbed[0], 1);
  EXPECT_EQ(in_c.disturbed[1], 0);
  in_c.disturbed[0] = 0;
  in_c.disturbed[1] = -1;
  EXPECT_FALSE(tiltpole::detail::FromC(&in_c).Disturbed_A);
  EXPECT_TRUE(tiltpole::detail::FromC(&in_c).Disturbed_B);
  options.Disturbed_B = true;
  EXPECT_EQ(tiltpole::detail::ToC(options).disturbed[1], 1);
}

TEST(CTip, WithoutOptionsIsThatOfTheDefaults) {
  tiltpole_sample sample = {};
  sample.incline_x = 8.0;
  sample.magnetic_a[0] = sample.magnetic_b[0] = 2500.0;
  sample.magnetic_a[2] = sample.magnetic_b[2] = -4000.0;
  tiltpole_tip_options options = {};
  tiltpole_tip_options_default(&options);
  tiltpole_rigorous_tip tip = {};
  tiltpole_rigorous_tip of_defaults = {};
  ASSERT_EQ(tiltpole_solve_rigorous_tips(&sample, 1, 2.0, nullptr, &tip), TILTPOLE_OK);
  ASSERT_EQ(tiltpole_solve_rigorous_tips(&sample, 1, 2.0, &options, &of_defaults), TILTPOLE_OK);
  EXPECT_NE(tip.offset.x, 0.0);
  EXPECT_EQ(tip.offset.x, of_defaults.offset.x);
  EXPECT_EQ(tip.source, of_defaults.source);
}

class CParameterFile : public ::testing::Test {
 protected:
  CParameterFile() { tiltpole_parameter_file_create(&file); }
  ~CParameterFile() override { tiltpole_parameter_file_destroy(file); }
  tiltpole_parameter_file* file = nullptr;
};

TEST_F(CParameterFile, ThatIsNotOpenTakesNoEntryOfAnyKind) {
  EXPECT_EQ(tiltpole_parameter_file_write_int(file, "key", 1), TILTPOLE_FILE_ERROR);
  EXPECT_EQ(tiltpole_parameter_file_write_double(file, "key", 1.0), TILTPOLE_FILE_ERROR);
  EXPECT_EQ(tiltpole_parameter_file_write_string(file, "key", "text"), TILTPOLE_FILE_ERROR);
  EXPECT_STREQ(tiltpole_last_error(), "no file is open for writing");
}

TEST_F(CParameterFile, LeavesAValueThatItDoesNotHold) {
  const TemporaryFolder folder;
  tiltpole_test::WriteBytes(folder / L"file.txt", "[name]pole\r\n");
  const std::string path = tiltpole_test::NativePath(folder / L"file.txt").u8string();
  ASSERT_EQ(tiltpole_parameter_file_open_read(file, path.c_str()), TILTPOLE_OK);
  int32_t number = 5;
  char text[] = "before";
  EXPECT_EQ(tiltpole_parameter_file_read_int(file, "none", &number), TILTPOLE_NOT_FOUND);
  EXPECT_EQ(number, 5);
  EXPECT_EQ(tiltpole_parameter_file_read_string(file, "none", text, sizeof text, nullptr),
            TILTPOLE_NOT_FOUND);
  EXPECT_STREQ(text, "before");
  EXPECT_EQ(tiltpole_parameter_file_read_string(file, "name", text, sizeof text, nullptr),
            TILTPOLE_OK);
  EXPECT_STREQ(text, "pole");
}

#ifdef __linux__
TEST_F(CParameterFile, TellsOnClosingThatTheDiskIsFull) {
  ASSERT_TRUE(std::filesystem::exists("/dev/full"));
  ASSERT_EQ(tiltpole_parameter_file_open_write(file, "/dev/full"), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_parameter_file_write_int(file, "key", 1), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_parameter_file_close(file), TILTPOLE_FILE_ERROR);
  EXPECT_STREQ(tiltpole_last_error(), "not every entry could be written");
}
#endif

// Of a fixed size, since there may be no memory for a text.
struct Shown {
  static void Take(const char* text, const char* /*title*/, int icon, void* user) {
    auto& shown = *static_cast<Shown*>(user);
    ++shown.count;
    shown.icon = icon;
    shown.in_full = std::string_view(text) == kText;
    shown.without_memory =
        std::string_view(text) == "A fit failed, and there is no memory to say which.";
  }
  static constexpr std::string_view kText = "The points less than 5, could not fit this turn!";

  int count = 0;
  int icon = -1;
  bool in_full = false;
  bool without_memory = false;
};

TEST(CMessages, AreShownInShortWhereThereIsNoMemoryForTheirText) {
  Shown shown;
  ASSERT_EQ(tiltpole_set_message_handler(Shown::Take, &shown), TILTPOLE_OK);
  const std::wstring text(Shown::kText.begin(), Shown::kText.end());
  const std::wstring title = L"Warning";
  int in_short = 0;
  const long failures = tiltpole_test::FailEachAllocation([&](long after) {
    shown = {};
    const auto ended = tiltpole_test::RunWithFailure(after, [&] {
      tiltpole::detail::ShowMessageBox(text, title, tiltpole::MessageIcon::Exclamation);
    });
    if (ended == tiltpole_test::Ended::Thrown) return ended;
    EXPECT_EQ(shown.count, 1);
    EXPECT_EQ(shown.icon, TILTPOLE_ICON_EXCLAMATION);
    EXPECT_TRUE(shown.in_full || shown.without_memory);
    in_short += shown.without_memory ? 1 : 0;
    return ended;
  });
  EXPECT_GT(failures, 0);
  EXPECT_GT(in_short, 0);
  EXPECT_TRUE(shown.in_full);
  tiltpole_set_message_handler(nullptr, nullptr);
}

}  // namespace
