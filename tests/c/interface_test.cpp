// The C interface gives what the classes behind it give, bit for bit, and says what went wrong.

#include <cmath>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "quality/simulated_session.h"
#include "support/allocations.h"
#include "support/temporary_folder.h"
#include "tiltpole/c/detail/guard.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/calibration/CInclineSensor_MagneticAdjust.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/quality/calibration_quality.h"
#include "tiltpole/quality/parameter_check.h"
#include "tiltpole/quality/point_quality.h"
#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/tiltpole_c.h"

namespace {

using tiltpole::detail::FromC;
using tiltpole::detail::ToC;
using tiltpole_test::TemporaryFolder;

std::string Utf8(const std::wstring& text) { return tiltpole::detail::NarrowText(text); }

struct Session {
  Session() {
    tiltpole_test::Random random(7);
    tiltpole_test::SimulatedSession session;
    session.A = tiltpole_test::RandomMagnetometer(random, 5000.0, 3.0);
    session.B = tiltpole_test::RandomMagnetometer(random, 5000.0, 3.0);
    tiltpole_test::RecordTurns(session, random);
    for (const auto& sample : session.horizontal) horizontal.push_back(ToC(sample));
    for (const auto& sample : session.vertical) vertical.push_back(ToC(sample));
  }
  std::vector<tiltpole_sample> horizontal;
  std::vector<tiltpole_sample> vertical;
};

// To the bit: the sign of a zero counts, and what is not a number equals itself.
template <class T>
bool SameBytes(const T& a, const T& b) {
  // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison,cert-exp42-c,cert-flp37-c)
  return std::memcmp(&a, &b, sizeof a) == 0;
}

TEST(CInterface, SamplesCarryEveryFieldBothWays) {
  tiltpole_sample sample = {};
  double number = 1.0;
  for (double* field : {&sample.incline_x, &sample.incline_y, &sample.yaw_a, &sample.yaw_b,
                        &sample.yaw_y_a, &sample.azimuth, &sample.host_angle}) {
    *field = number++;
  }
  for (double& field : sample.magnetic_a) field = number++;
  for (double& field : sample.magnetic_b) field = number++;
  for (double& field : sample.aux) field = number++;
  for (int32_t& field : sample.time) field = static_cast<int32_t>(number++);
  sample.forward = static_cast<int32_t>(number++);
  EXPECT_TRUE(SameBytes(ToC(FromC(sample)), sample));
}

// Programs that were compiled with an earlier version hand over structs of these sizes.
TEST(CInterface, StructsKeepTheirSizesAndHaveNoGaps) {
  EXPECT_EQ(sizeof(tiltpole_sample), 20 * sizeof(double) + 4 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_xyh), 3 * sizeof(double));
  EXPECT_EQ(sizeof(tiltpole_correction), 8 * sizeof(double));
  EXPECT_EQ(sizeof(tiltpole_translation), 3 * sizeof(double));
  EXPECT_EQ(sizeof(tiltpole_measurement), 3 * sizeof(double) + 2 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_center), 4 * sizeof(double) + 2 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_xy), 2 * sizeof(double));
  EXPECT_EQ(sizeof(tiltpole_point_pair), 4 * sizeof(double));
  EXPECT_EQ(sizeof(tiltpole_four_parameters), 6 * sizeof(double));
}

TEST(CInterface, StructsOfTheQualityKeepTheirSizesAndHaveNoGaps) {
  EXPECT_EQ(sizeof(tiltpole_tip_options), 5 * sizeof(double) + 2 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_rigorous_tip), 9 * sizeof(double) + 4 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_point_deviations), 5 * sizeof(double));
  EXPECT_EQ(sizeof(tiltpole_point_quality), 11 * sizeof(double) + 2 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_quality_summary), 9 * sizeof(double) + 10 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_turn_figures), 8 * sizeof(double) + 4 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_magnetometer_quality), 43 * sizeof(double) + 16 * sizeof(int32_t));
  EXPECT_EQ(sizeof(tiltpole_heading_error), 3 * sizeof(double));
  EXPECT_EQ(sizeof(tiltpole_azimuth_range), 2 * sizeof(double));
  EXPECT_EQ(sizeof(tiltpole_quality_reason), 4 * sizeof(int32_t) + sizeof(const char*));
}

TEST(CInterface, SamplesStartWithTheRecordsDefaults) {
  tiltpole_sample sample;
  ASSERT_EQ(tiltpole_sample_default(&sample), TILTPOLE_OK);
  EXPECT_EQ(sample.host_angle, 90.0);
  EXPECT_EQ(sample.forward, 1);
  EXPECT_EQ(sample.magnetic_b[2], 0.0);
}

TEST(CInterface, ACalibrationGivesTheBitsOfTheClass) {
  const Session session;
  tiltpole::CInclineSensor_MagneticAdjust plain;
  for (const auto& sample : session.horizontal) {
    const auto record = FromC(sample);
    plain.Horizontal_Add(&record);
  }
  for (const auto& sample : session.vertical) {
    const auto record = FromC(sample);
    plain.Vertical_Add(&record);
  }
  ASSERT_EQ(plain.Adjust(), 1);

  tiltpole_calibration* calibration = nullptr;
  ASSERT_EQ(tiltpole_calibration_create(&calibration), TILTPOLE_OK);
  tiltpole_calibration_add(calibration, TILTPOLE_TURN_HORIZONTAL, session.horizontal.data(),
                           session.horizontal.size());
  tiltpole_calibration_add(calibration, TILTPOLE_TURN_VERTICAL, session.vertical.data(),
                           session.vertical.size());
  tiltpole_sample sample = {};
  EXPECT_EQ(tiltpole_calibration_get(calibration, TILTPOLE_TURN_VERTICAL, 3, &sample), TILTPOLE_OK);
  EXPECT_TRUE(SameBytes(sample, session.vertical[3]));
  EXPECT_EQ(tiltpole_calibration_get(calibration, TILTPOLE_TURN_VERTICAL, session.vertical.size(),
                                     &sample),
            TILTPOLE_NOT_FOUND);
  EXPECT_EQ(tiltpole_calibration_get(calibration, TILTPOLE_TURN_HORIZONTAL, SIZE_MAX, &sample),
            TILTPOLE_NOT_FOUND);
  ASSERT_EQ(tiltpole_calibration_adjust(calibration), TILTPOLE_OK) << tiltpole_last_error();
  tiltpole_correction a = {};
  tiltpole_correction b = {};
  tiltpole_translation translation = {};
  tiltpole_calibration_result(calibration, &a, &b, &translation);
  EXPECT_TRUE(SameBytes(a, ToC(plain.GetCorrectPar_A())));
  EXPECT_TRUE(SameBytes(b, ToC(plain.GetCorrectPar_B())));
  EXPECT_TRUE(SameBytes(translation, ToC(plain.GetCoorTrans())));
  tiltpole_calibration_clear(calibration, TILTPOLE_TURN_VERTICAL);
  EXPECT_EQ(tiltpole_calibration_get(calibration, TILTPOLE_TURN_VERTICAL, 0, &sample),
            TILTPOLE_NOT_FOUND);
  tiltpole_calibration_destroy(calibration);
}

TEST(CInterface, SolvingAWholeSessionGivesTheBitsOfTheClass) {
  const Session session;
  auto samples = session.vertical;
  std::vector<tiltpole_measurement> measured(samples.size());
  tiltpole_position* position = nullptr;
  ASSERT_EQ(tiltpole_position_create(&position), TILTPOLE_OK);
  ASSERT_EQ(tiltpole_position_set_bias_angle(position, TILTPOLE_MAGNETOMETER_A, 3.0), TILTPOLE_OK);
  ASSERT_EQ(tiltpole_position_solve(position, samples.data(), samples.size(), 1.8, measured.data()),
            TILTPOLE_OK);
  tiltpole_position_destroy(position);

  tiltpole::CInclineSensor_Position plain;
  plain.SetMagneticBiasAngle_A(3.0);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    auto record = FromC(session.vertical[i]);
    tiltpole::xyhCoordinate tip;
    plain.Position(record, 1.8, tip);
    EXPECT_TRUE(SameBytes(samples[i], ToC(record)));
    EXPECT_TRUE(SameBytes(measured[i].offset, ToC(tip)));
    EXPECT_EQ(measured[i].stationary, plain.IsStationary());
    EXPECT_EQ(measured[i].interference, plain.IsMagneticInterference());
  }
}

TEST(CInterface, EverySolutionWithAHeadingIsTheClasssOwn) {
  tiltpole_sample sample = {};
  sample.incline_x = 8.0;
  sample.incline_y = -5.0;
  sample.yaw_a = 30.0;
  sample.yaw_b = 31.0;
  sample.yaw_y_a = 299.0;
  const tiltpole_xyh antenna = {100.0, 200.0, 50.0};
  tiltpole_position* position = nullptr;
  ASSERT_EQ(tiltpole_position_create(&position), TILTPOLE_OK);
  tiltpole::CInclineSensor_Position plain;
  tiltpole::xyhCoordinate expected;
  tiltpole_xyh tip = {};
  plain.Position_Geometry_A(FromC(antenna), FromC(sample), 2.0, expected);
  EXPECT_EQ(tiltpole_position_solve_with_heading(position, TILTPOLE_SOLUTION_GEOMETRY_A, &antenna,
                                                 &sample, 2.0, &tip),
            TILTPOLE_OK);
  EXPECT_TRUE(SameBytes(tip, ToC(expected)));
  plain.Position_Geometry_B(FromC(antenna), FromC(sample), 2.0, expected);
  EXPECT_EQ(tiltpole_position_solve_with_heading(position, TILTPOLE_SOLUTION_GEOMETRY_B, &antenna,
                                                 &sample, 2.0, &tip),
            TILTPOLE_OK);
  EXPECT_TRUE(SameBytes(tip, ToC(expected)));
  ASSERT_EQ(plain.Position_Math(FromC(antenna), FromC(sample), 2.0, expected), 1);
  EXPECT_EQ(tiltpole_position_solve_with_heading(position, TILTPOLE_SOLUTION_MATH, &antenna,
                                                 &sample, 2.0, &tip),
            TILTPOLE_OK);
  EXPECT_TRUE(SameBytes(tip, ToC(expected)));
  double angle = 0.0;
  EXPECT_EQ(tiltpole_angle_to_horizontal(8.0, -5.0, &angle), TILTPOLE_OK);
  EXPECT_EQ(angle, plain.GetAngleofPoletoHorizontal(8.0, -5.0));
  tiltpole_position_destroy(position);
}

// Of a pole without length the spheres only touch.
TEST(CInterface, SpheresThatDoNotMeetLeaveTheTipAlone) {
  tiltpole_sample sample = {};
  sample.incline_x = 8.0;
  sample.incline_y = -5.0;
  sample.yaw_y_a = 270.0;
  const tiltpole_xyh antenna = {0.0, 0.0, 0.0};
  tiltpole_xyh tip = {1.0, 2.0, 3.0};
  tiltpole_position* position = nullptr;
  ASSERT_EQ(tiltpole_position_create(&position), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_position_solve_with_heading(position, TILTPOLE_SOLUTION_MATH, &antenna,
                                                 &sample, 0.0, &tip),
            TILTPOLE_NO_SOLUTION);
  EXPECT_EQ(tip.x, 1.0);
  EXPECT_STREQ(tiltpole_last_error(), "the three spheres do not meet");
  tiltpole_position_destroy(position);
}

TEST(CInterface, ScreeningSelectsWhatTheClassSelects) {
  const Session session;
  tiltpole::CInclineSensor_Filter_XY plain;
  for (const auto& sample : session.horizontal) {
    plain.Add(new tiltpole::PoseSensorData(FromC(sample)));
  }
  tiltpole_screening* screening = nullptr;
  ASSERT_EQ(tiltpole_screening_create(TILTPOLE_TURN_HORIZONTAL, &screening), TILTPOLE_OK);
  tiltpole_screening_add(screening, session.horizontal.data(), session.horizontal.size());
  int32_t percent = -1;
  int32_t covered = -1;
  tiltpole_screening_coverage(screening, &percent);
  tiltpole_screening_is_covered(screening, &covered);
  EXPECT_EQ(percent, plain.GetRecordRate());
  EXPECT_EQ(covered, plain.IsRecordOK());

  const std::unique_ptr<tiltpole::PoseSensorDataArray> expected(plain.Filter());
  ASSERT_EQ(tiltpole_screening_filter(screening), TILTPOLE_OK);
  std::vector<tiltpole_sample> selected(session.horizontal.size());
  std::size_t count = 0;
  tiltpole_screening_selected(screening, selected.data(), selected.size(), &count);
  ASSERT_EQ(count, static_cast<std::size_t>(expected->GetSize()));
  for (std::size_t i = 0; i < count; ++i) {
    EXPECT_TRUE(SameBytes(selected[i], ToC(*expected->GetAt(static_cast<int>(i)))));
  }
  tiltpole_screening_destroy(screening);
}

TEST(CInterface, ALittleRoomIsFilledAndTheWholeCountTold) {
  const Session session;
  tiltpole_screening* screening = nullptr;
  ASSERT_EQ(tiltpole_screening_create(TILTPOLE_TURN_VERTICAL, &screening), TILTPOLE_OK);
  tiltpole_screening_add(screening, session.vertical.data(), session.vertical.size());
  tiltpole_sample two[3] = {};
  two[2].host_angle = -1.0;
  std::size_t count = 0;
  EXPECT_EQ(tiltpole_screening_records(screening, two, 2, &count), TILTPOLE_OK);
  EXPECT_EQ(count, session.vertical.size());
  EXPECT_EQ(two[1].magnetic_a[0], session.vertical[1].magnetic_a[0]);
  EXPECT_EQ(two[2].host_angle, -1.0);
  tiltpole_screening_destroy(screening);
}

TEST(CInterface, TheQualityReportIsTheLibrarysOwn) {
  const Session session;
  const tiltpole_correction unscaled = ToC(tiltpole::Incline_MagneticCorrectParameter());
  const tiltpole_translation none = {};
  tiltpole_calibration_quality* quality = nullptr;
  ASSERT_EQ(tiltpole_judge_calibration(session.horizontal.data(), session.horizontal.size(),
                                       session.vertical.data(), session.vertical.size() / 2,
                                       &unscaled, &unscaled, &none, &quality),
            TILTPOLE_OK);
  const auto horizontal = FromC(session.horizontal.data(), session.horizontal.size());
  const auto vertical = FromC(session.vertical.data(), session.vertical.size() / 2);
  const auto plain = tiltpole::JudgeCalibration(horizontal, vertical, {}, {}, {});
  tiltpole_quality_summary summary = {};
  tiltpole_quality_summary_of(quality, &summary);
  EXPECT_EQ(summary.verdict, static_cast<int>(plain.Result));
  EXPECT_EQ(summary.field_strength_ratio, plain.FieldStrengthRatio);
  ASSERT_EQ(summary.reasons, plain.Reasons.size());
  ASSERT_GT(summary.reasons, 0U);
  for (std::size_t i = 0; i < plain.Reasons.size(); ++i) {
    tiltpole_quality_reason reason = {};
    ASSERT_EQ(tiltpole_quality_reason_at(quality, i, &reason), TILTPOLE_OK);
    EXPECT_EQ(reason.code, static_cast<int>(plain.Reasons[i].Code));
    EXPECT_EQ(reason.sentence, Utf8(plain.Reasons[i].Sentence));
  }
  ASSERT_EQ(summary.missing_ranges[TILTPOLE_TURN_VERTICAL], plain.Vertical.Missing.size());
  ASSERT_GT(plain.Vertical.Missing.size(), 0U);
  tiltpole_azimuth_range range = {};
  ASSERT_EQ(tiltpole_quality_missing_at(quality, TILTPOLE_TURN_VERTICAL, 0, &range), TILTPOLE_OK);
  EXPECT_EQ(range.from, plain.Vertical.Missing[0].From);
  EXPECT_EQ(range.to, plain.Vertical.Missing[0].To);
  tiltpole_magnetometer_quality figures = {};
  tiltpole_quality_magnetometer(quality, TILTPOLE_MAGNETOMETER_B, &figures);
  EXPECT_EQ(figures.heading_largest, plain.B.Heading.Largest);
  EXPECT_EQ(figures.before[TILTPOLE_TURN_VERTICAL].radius_mean, plain.B.VerticalBefore.RadiusMean);
  EXPECT_EQ(figures.after[TILTPOLE_TURN_HORIZONTAL].dropped, plain.B.HorizontalDropped);
  EXPECT_EQ(figures.dip, plain.B.Dip);
  tiltpole_calibration_quality_destroy(quality);
}

TEST(CInterface, ParametersOfAnotherPoleAreFoundOut) {
  const Session session;
  const auto& turn = session.vertical;
  const tiltpole_correction wrong = ToC(tiltpole::Incline_MagneticCorrectParameter());
  tiltpole_calibration_quality* quality = nullptr;
  ASSERT_EQ(tiltpole_check_parameters(turn.data(), turn.size(), &wrong, &wrong, &quality),
            TILTPOLE_OK);
  const auto plain = tiltpole::CheckParameters(FromC(turn.data(), turn.size()), {}, {});
  ASSERT_GT(plain.size(), 0U);
  tiltpole_quality_summary summary = {};
  tiltpole_quality_summary_of(quality, &summary);
  EXPECT_EQ(summary.reasons, plain.size());
  EXPECT_GT(summary.verdict, TILTPOLE_VERDICT_GOOD);
  tiltpole_quality_reason reason = {};
  ASSERT_EQ(tiltpole_quality_reason_at(quality, 0, &reason), TILTPOLE_OK);
  EXPECT_EQ(reason.sentence, Utf8(plain[0].Sentence));
  tiltpole_calibration_quality_destroy(quality);
}

TEST(CInterface, TheQualityOfAPointIsTheLibrarysOwn) {
  const Session session;
  tiltpole_tip_options options = {};
  tiltpole_tip_options_default(&options);
  options.disturbed[1] = 1;
  options.bias_angle[0] = 2.0;
  tiltpole_point_deviations deviations = {};
  tiltpole_point_deviations_default(&deviations);
  deviations.antenna_plane = 0.01;
  tiltpole::RigorousTipOptions plain_options;
  plain_options.Disturbed_B = true;
  plain_options.MagneticBiasAngle_A = 2.0;
  tiltpole::PointDeviations plain_deviations;
  plain_deviations.AntennaPlane = 0.01;
  tiltpole_sample sample = session.horizontal[5];
  sample.incline_x = 12.0;
  tiltpole_rigorous_tip tip = {};
  tiltpole_point_quality quality = {};
  ASSERT_EQ(tiltpole_solve_rigorous_tips(&sample, 1, 2.0, &options, &tip), TILTPOLE_OK);
  ASSERT_EQ(tiltpole_judge_points(&sample, 1, 2.0, &options, &deviations, &quality), TILTPOLE_OK);
  const auto plain_tip = tiltpole::SolveRigorousTip(FromC(sample), 2.0, plain_options);
  const auto plain = tiltpole::JudgePoint(FromC(sample), 2.0, plain_options, plain_deviations);
  EXPECT_TRUE(SameBytes(tip.offset, ToC(plain_tip.Offset)));
  EXPECT_EQ(tip.source, TILTPOLE_HEADING_A);
  EXPECT_EQ(tip.dip, plain_tip.Dip);
  EXPECT_EQ(quality.north, plain.North);
  EXPECT_EQ(quality.from_antenna, plain.FromAntenna);
  EXPECT_EQ(quality.limit, static_cast<int>(plain.Limit));
}

TEST(CInterface, PathsAndTextsAreUtf8) {
  const TemporaryFolder folder;
  const std::string path = Utf8(folder / L"m\u00fchle \u6771.txt");
  tiltpole_parameter_file* file = nullptr;
  ASSERT_EQ(tiltpole_parameter_file_create(&file), TILTPOLE_OK);
  ASSERT_EQ(tiltpole_parameter_file_open_write(file, path.c_str()), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_parameter_file_write_string(file, "name", "M\xc3\xbchle"), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_parameter_file_write_double(file, "length", 2.5), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_parameter_file_write_int(file, "count", -7), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_parameter_file_close(file), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_test::ReadBytes(folder / L"m\u00fchle \u6771.txt"),
            "[name]M\xc3\xbchle\r\n[length]2.5000000000\r\n[count]-7\r\n");
  ASSERT_EQ(tiltpole_parameter_file_open_read(file, path.c_str()), TILTPOLE_OK);
  double length = 0.0;
  int32_t number = 0;
  char name[20];
  std::size_t size = 0;
  EXPECT_EQ(tiltpole_parameter_file_read_double(file, "length", &length), TILTPOLE_OK);
  EXPECT_EQ(length, 2.5);
  EXPECT_EQ(tiltpole_parameter_file_read_int(file, "count", &number), TILTPOLE_OK);
  EXPECT_EQ(number, -7);
  EXPECT_EQ(tiltpole_parameter_file_read_string(file, "name", name, sizeof name, &size),
            TILTPOLE_OK);
  EXPECT_STREQ(name, "M\xc3\xbchle");
  EXPECT_EQ(size, 6U);
  EXPECT_EQ(tiltpole_parameter_file_read_double(file, "none", &length), TILTPOLE_NOT_FOUND);
  EXPECT_EQ(length, 2.5);
  tiltpole_parameter_file_destroy(file);
}

TEST(CInterface, ATextThatDoesNotFitIsCutBetweenCharacters) {
  const TemporaryFolder folder;
  const std::string path = Utf8(folder / L"file.txt");
  tiltpole_test::WriteBytes(folder / L"file.txt", "[name]M\xc3\xbchle\r\n");
  tiltpole_parameter_file* file = nullptr;
  ASSERT_EQ(tiltpole_parameter_file_create(&file), TILTPOLE_OK);
  ASSERT_EQ(tiltpole_parameter_file_open_read(file, path.c_str()), TILTPOLE_OK);
  char name[3];
  std::size_t size = 0;
  EXPECT_EQ(tiltpole_parameter_file_read_string(file, "name", name, sizeof name, &size),
            TILTPOLE_OK);
  EXPECT_STREQ(name, "M");
  EXPECT_EQ(size, 6U);
  EXPECT_EQ(tiltpole_parameter_file_read_string(file, "name", nullptr, 0, &size), TILTPOLE_OK);
  tiltpole_parameter_file_destroy(file);
}

TEST(CInterface, AFileThatIsNotThereIsAFileError) {
  const TemporaryFolder folder;
  const std::string missing = Utf8(folder / L"missing.txt");
  const std::string no_folder = Utf8(folder / L"none/file.txt");
  tiltpole_position* position = nullptr;
  tiltpole_parameter_file* file = nullptr;
  ASSERT_EQ(tiltpole_position_create(&position), TILTPOLE_OK);
  ASSERT_EQ(tiltpole_parameter_file_create(&file), TILTPOLE_OK);
  EXPECT_EQ(tiltpole_position_read(position, missing.c_str()), TILTPOLE_FILE_ERROR);
  EXPECT_EQ(tiltpole_position_save(position, no_folder.c_str()), TILTPOLE_FILE_ERROR);
  EXPECT_EQ(tiltpole_position_replace(position, no_folder.c_str()), TILTPOLE_FILE_ERROR);
  EXPECT_EQ(tiltpole_parameter_file_open_read(file, missing.c_str()), TILTPOLE_FILE_ERROR);
  EXPECT_EQ(tiltpole_parameter_file_open_write(file, no_folder.c_str()), TILTPOLE_FILE_ERROR);
  EXPECT_EQ(tiltpole_parameter_file_write_int(file, "key", 1), TILTPOLE_FILE_ERROR);
  tiltpole_position_destroy(position);
  tiltpole_parameter_file_destroy(file);
}

TEST(CInterface, ParametersSurviveAReplacedFile) {
  const TemporaryFolder folder;
  const std::string path = Utf8(folder / L"pole.txt");
  tiltpole_position* position = nullptr;
  ASSERT_EQ(tiltpole_position_create(&position), TILTPOLE_OK);
  tiltpole_translation translation = {1.0, 2.0, 3.0};
  tiltpole_position_set_translation(position, &translation);
  tiltpole_position_set_bias_angle(position, TILTPOLE_MAGNETOMETER_B, -4.0);
  ASSERT_EQ(tiltpole_position_replace(position, path.c_str()), TILTPOLE_OK);
  translation = {};
  tiltpole_position_set_translation(position, &translation);
  ASSERT_EQ(tiltpole_position_read(position, path.c_str()), TILTPOLE_OK);
  tiltpole_position_get_translation(position, &translation);
  double bias = 0.0;
  tiltpole_position_get_bias_angle(position, TILTPOLE_MAGNETOMETER_B, &bias);
  EXPECT_EQ(translation.dz, 3.0);
  EXPECT_EQ(bias, -4.0);
  tiltpole_position_destroy(position);
}

TEST(CInterface, EachThreadHasItsOwnLastError) {
  tiltpole_sample_default(nullptr);
  const std::string here = tiltpole_last_error();
  std::string there = "unset";
  std::thread([&] { there = tiltpole_last_error(); }).join();
  EXPECT_NE(here, "");
  EXPECT_EQ(there, "");
}

TEST(CInterface, WhateverIsThrownBecomesAnError) {
  using tiltpole::detail::Guarded;
  EXPECT_EQ(Guarded([]() -> int { throw std::bad_alloc(); }), TILTPOLE_OUT_OF_MEMORY);
  EXPECT_EQ(Guarded([]() -> int { throw std::runtime_error("the moon is full"); }),
            TILTPOLE_UNEXPECTED_ERROR);
  EXPECT_STREQ(tiltpole_last_error(), "the moon is full");
  EXPECT_EQ(Guarded([]() -> int { throw 5; }), TILTPOLE_UNEXPECTED_ERROR);
}

TEST(CInterface, ALongReasonIsCut) {
  tiltpole::detail::Failed(TILTPOLE_UNEXPECTED_ERROR, std::string(1000, 'x').c_str());
  EXPECT_EQ(std::strlen(tiltpole_last_error()), 159U);
}

// Lets one allocation of the work after the other fail, until it has no further one. Where it came
// to its result all the same, that is undone.
// @return how often there was no memory
template <class Work, class Undo>
int FailuresUntilDone(const Work& work, const Undo& undo) {
  int failures = 0;
  for (long after = 0;; ++after) {
    tiltpole_test::FailAllocationAfter(after);
    const int result = work();
    if (!tiltpole_test::StopFailing()) {
      EXPECT_EQ(result, TILTPOLE_OK);
      return failures;
    }
    if (result == TILTPOLE_OK) {
      undo();
    } else {
      EXPECT_EQ(result, TILTPOLE_OUT_OF_MEMORY) << "allocation " << after;
      ++failures;
    }
  }
}

TEST(CInterface, EveryHandleThatHasNoMemorySaysSo) {
  const long before = tiltpole_test::LivingAllocations();
  tiltpole_position* position = nullptr;
  EXPECT_EQ(FailuresUntilDone([&] { return tiltpole_position_create(&position); }, [] {}), 1);
  EXPECT_STREQ(tiltpole_last_error(), "there is no memory for this");
  tiltpole_position_destroy(position);
  tiltpole_screening* screening = nullptr;
  EXPECT_GT(FailuresUntilDone([&] { return tiltpole_screening_create(1, &screening); }, [] {}), 0);
  tiltpole_screening_destroy(screening);
  EXPECT_EQ(tiltpole_test::LivingAllocations(), before);
}

TEST(CInterface, ARecordThatCouldNotBeAddedIsNeitherLostNorDeletedTwice) {
  const Session session;
  const long before = tiltpole_test::LivingAllocations();
  tiltpole_screening* screening = nullptr;
  ASSERT_EQ(tiltpole_screening_create(TILTPOLE_TURN_HORIZONTAL, &screening), TILTPOLE_OK);
  const auto no_undo = [] { ADD_FAILURE() << "an allocation failed without notice"; };
  for (std::size_t i = 0; i < 40; ++i) {
    EXPECT_GT(
        FailuresUntilDone(
            [&] { return tiltpole_screening_add(screening, &session.horizontal[i], 1); }, no_undo),
        0);
    std::size_t count = 0;
    tiltpole_screening_records(screening, nullptr, 0, &count);
    ASSERT_EQ(count, i + 1);
  }
  EXPECT_GT(FailuresUntilDone([&] { return tiltpole_screening_filter(screening); }, [] {}), 0);
  EXPECT_GT(FailuresUntilDone([&] { return tiltpole_screening_select(screening, 10); }, [] {}), 0);
  tiltpole_screening_destroy(screening);
  EXPECT_EQ(tiltpole_test::LivingAllocations(), before);
}

TEST(CInterface, AReportThatHasNoMemorySaysSo) {
  const Session session;
  const long before = tiltpole_test::LivingAllocations();
  tiltpole_calibration_quality* quality = nullptr;
  const char* messages[] = {"Ellipse fitting Failure!"};
  EXPECT_GT(FailuresUntilDone(
                [&] {
                  return tiltpole_judge_failed_calibration(session.horizontal.data(), 20,
                                                           session.vertical.data(), 20, messages, 1,
                                                           &quality);
                },
                [&] { tiltpole_calibration_quality_destroy(quality); }),
            10);
  tiltpole_calibration_quality_destroy(quality);
  EXPECT_EQ(tiltpole_test::LivingAllocations(), before);
}

}  // namespace
