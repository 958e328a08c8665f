#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "apps/session/input_error.h"
#include "apps/session/session_reader.h"
#include "apps/session/session_writer.h"
#include "support/same_bits.h"

namespace {

using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;
using tiltpole::session::InputError;
using tiltpole::session::SampleSet;
using tiltpole::session::SessionColumns;
using tiltpole::session::SessionReader;
using tiltpole::session::SessionSample;
using tiltpole::session::SessionWriter;
using tiltpole_test::SameBits;

const std::string kHeader =
    "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\n";
const std::string kRow = "measure,08:30:59,1.5,-2.5,1,2,3,4,5,6\n";

std::vector<SessionSample> ReadAll(const std::string& text) {
  std::istringstream in(text);
  SessionReader reader(in, "block.csv");
  std::vector<SessionSample> rows;
  SessionSample sample;
  while (reader.Next(sample)) rows.push_back(sample);
  return rows;
}

const std::string kNoError = "read without an error";

std::string ErrorOf(const std::string& text) {
  try {
    ReadAll(text);
  } catch (const InputError& error) {
    return error.what();
  }
  return kNoError;
}

TEST(SessionFile, ARowFillsTimeTiltsAndReadings) {
  const auto rows = ReadAll(kHeader + kRow);
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].set, SampleSet::Measure);
  EXPECT_EQ(rows[0].sensors.Tag[0], 8);
  EXPECT_EQ(rows[0].sensors.Tag[1], 30);
  EXPECT_EQ(rows[0].sensors.Tag[2], 59);
  EXPECT_EQ(rows[0].sensors.InclineX, 1.5);
  EXPECT_EQ(rows[0].sensors.InclineY, -2.5);
  EXPECT_EQ(rows[0].sensors.MagneticX_A, 1.0);
  EXPECT_EQ(rows[0].sensors.MagneticY_A, 2.0);
  EXPECT_EQ(rows[0].sensors.MagneticZ_A, 3.0);
  EXPECT_EQ(rows[0].sensors.MagneticX_B, 4.0);
  EXPECT_EQ(rows[0].sensors.MagneticY_B, 5.0);
  EXPECT_EQ(rows[0].sensors.MagneticZ_B, 6.0);
  EXPECT_FALSE(rows[0].antenna.has_value());
  EXPECT_FALSE(rows[0].true_tip.has_value());
}

TEST(SessionFile, ColumnsAreFoundByNameInAnyOrder) {
  const auto rows = ReadAll(
      "mag_z_b,mag_y_b,mag_x_b,mag_z_a,mag_y_a,mag_x_a,incline_y,incline_x,time,set\n"
      "6,5,4,3,2,1,-2.5,1.5,00:00:01,vertical\n");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].set, SampleSet::Vertical);
  EXPECT_EQ(rows[0].sensors.InclineX, 1.5);
  EXPECT_EQ(rows[0].sensors.MagneticX_A, 1.0);
  EXPECT_EQ(rows[0].sensors.MagneticZ_B, 6.0);
}

TEST(SessionFile, FurtherColumnsAreCarriedAlongAsText) {
  std::istringstream in(
      "point,set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b,note\n"
      "P 7,measure,08:00:00,0,0,1,2,3,4,5,6,\"corner, \"\"old\"\" wall\"\n");
  SessionReader reader(in, "block.csv");
  SessionSample sample;
  ASSERT_TRUE(reader.Next(sample));
  EXPECT_EQ(reader.Columns().further, (std::vector<std::string>{"point", "note"}));
  EXPECT_EQ(sample.further, (std::vector<std::string>{"P 7", "corner, \"old\" wall"}));
}

TEST(SessionFile, CarriageReturnsAByteOrderMarkAndEmptyLinesMakeNoDifference) {
  const auto rows = ReadAll(
      "\xEF\xBB\xBFset,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b\r\n"
      "\r\n"
      "measure,08:30:59,1.5,-2.5,1,2,3,4,5,6\r\n"
      "\r\n");
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows[0].sensors.MagneticZ_B, 6.0);
}

TEST(SessionFile, EmptyLinesAboveTheHeaderArePassedOver) {
  EXPECT_EQ(ReadAll("\n \r\n" + kHeader + kRow).size(), 1u);
  EXPECT_EQ(ReadAll("\xEF\xBB\xBF\n" + kHeader + kRow).size(), 1u);
  EXPECT_EQ(ErrorOf("\n\nset,,time\n"),
            "block.csv:3: a column has no name; expected a name for every column");
  EXPECT_NE(ErrorOf("\n" + kHeader.substr(4)).find("block.csv:2: column set: missing"),
            std::string::npos);
  EXPECT_EQ(ErrorOf("\n\n"), "block.csv: is empty; expected a header row");
}

TEST(SessionFile, TheLastLineNeedsNoLineEnd) {
  EXPECT_EQ(ReadAll(kHeader + "measure,08:30:59,1.5,-2.5,1,2,3,4,5,6").size(), 1u);
}

TEST(SessionFile, AHeaderAloneIsASessionWithoutRows) { EXPECT_TRUE(ReadAll(kHeader).empty()); }

TEST(SessionFile, AnEmptyFileIsAnError) {
  EXPECT_EQ(ErrorOf(""), "block.csv: is empty; expected a header row");
}

TEST(SessionFile, MissingColumnsAreNamedTogether) {
  EXPECT_EQ(ErrorOf("set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_x_b,mag_y_b,mag_w_b\n"),
            "block.csv:1: column mag_z_a, mag_z_b: missing in the header; expected the columns "
            "set, time, incline_x, incline_y, mag_x_a, mag_y_a, mag_z_a, mag_x_b, mag_y_b, "
            "mag_z_b");
}

TEST(SessionFile, SemicolonsBetweenTheColumnsAreRecognised) {
  EXPECT_NE(ErrorOf("set;time;incline_x\n").find("separated by commas, not semicolons"),
            std::string::npos);
}

TEST(SessionFile, AColumnThatIsThereTwiceIsAnError) {
  EXPECT_EQ(ErrorOf("set,time,set\n"), "block.csv:1: two columns are called 'set'");
}

TEST(SessionFile, AColumnWithoutANameIsAnError) {
  EXPECT_EQ(ErrorOf("set,,time\n"),
            "block.csv:1: a column has no name; expected a name for every column");
}

TEST(SessionFile, HalfAnAntennaPositionInTheHeaderIsAnError) {
  EXPECT_EQ(ErrorOf("antenna_north,antenna_east," + kHeader),
            "block.csv:1: column antenna_height: missing in the header; expected the columns "
            "antenna_north, antenna_east, antenna_height");
}

TEST(SessionFile, TextForANumberIsNamedWithLineAndColumn) {
  EXPECT_EQ(ErrorOf(kHeader + kRow + "measure,08:30:59,1.5,-2.5,abc,2,3,4,5,6\n"),
            "block.csv:3: column mag_x_a: 'abc' is no number; expected a finite decimal number");
}

class SessionFileNumber : public testing::TestWithParam<const char*> {};

TEST_P(SessionFileNumber, IsRefused) {
  const std::string text = GetParam();
  EXPECT_EQ(ErrorOf(kHeader + "measure,08:30:59," + text + ",0,1,2,3,4,5,6\n"),
            "block.csv:2: column incline_x: '" + text +
                "' is no number; expected a finite decimal number");
}

INSTANTIATE_TEST_SUITE_P(NotFiniteOrNotANumber, SessionFileNumber,
                         testing::Values("nan", "NaN", "-nan", "inf", "-inf", "infinity", "",
                                         "1.5x", "1e999", "0x10", "1 2", "--1", "+-1", "1.5.2"));

TEST(SessionFile, ADecimalCommaMakesTooManyFields) {
  EXPECT_EQ(ErrorOf(kHeader + "measure,08:30:59,1,5,-2.5,1,2,3,4,5,6\n"),
            "block.csv:2: the row has 11 fields; expected 10 as in the header");
}

TEST(SessionFile, ARowThatIsCutOffIsAnError) {
  EXPECT_EQ(ErrorOf(kHeader + kRow + "measure,08:30:5"),
            "block.csv:3: the row has 2 fields; expected 10 as in the header");
}

class SessionFileTime : public testing::TestWithParam<const char*> {};

TEST_P(SessionFileTime, IsRefused) {
  const std::string text = GetParam();
  EXPECT_EQ(ErrorOf(kHeader + "measure," + text + ",0,0,1,2,3,4,5,6\n"),
            "block.csv:2: column time: '" + text +
                "' is no time of day; expected HH:MM:SS from 00:00:00 to 23:59:59");
}

INSTANTIATE_TEST_SUITE_P(NotATimeOfDay, SessionFileTime,
                         testing::Values("", "24:00:00", "12:60:00", "12:00:60", "1:02:03",
                                         "12-00-00", "12:00", "aa:bb:cc", "-1:00:00", "12:00:00.5",
                                         "120000"));

TEST(SessionFile, TheFirstAndTheLastSecondOfTheDayAreTimes) {
  EXPECT_EQ(ReadAll(kHeader + "measure,00:00:00,0,0,1,2,3,4,5,6\n").size(), 1u);
  EXPECT_EQ(ReadAll(kHeader + "measure,23:59:59,0,0,1,2,3,4,5,6\n").size(), 1u);
}

TEST(SessionFile, AnUnknownSetIsAnError) {
  EXPECT_EQ(ErrorOf(kHeader + "Measure,08:30:59,0,0,1,2,3,4,5,6\n"),
            "block.csv:2: column set: 'Measure' is no set; expected horizontal, vertical or "
            "measure");
}

TEST(SessionFile, APositionMayBeLeftOutOfARowButNotHalfOfIt) {
  const std::string header =
      "antenna_north,antenna_east,antenna_height,set,time,incline_x,incline_y,mag_x_a,mag_y_a,"
      "mag_z_a,mag_x_b,mag_y_b,mag_z_b\n";
  const auto rows = ReadAll(header + ",,," + kRow + "1,2,3," + kRow);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_FALSE(rows[0].antenna.has_value());
  ASSERT_TRUE(rows[1].antenna.has_value());
  EXPECT_EQ(rows[1].antenna->x, 1.0);
  EXPECT_EQ(rows[1].antenna->y, 2.0);
  EXPECT_EQ(rows[1].antenna->h, 3.0);
  EXPECT_EQ(ErrorOf(header + "1,,3," + kRow),
            "block.csv:2: column antenna_east: '' is no number; expected a finite decimal number");
}

TEST(SessionFile, AQuoteThatDoesNotCloseIsAnError) {
  EXPECT_EQ(ErrorOf(kHeader + "\"measure,08:30:59,0,0,1,2,3,4,5,6\n"),
            "block.csv:2: a quoted field does not end on its line; expected a closing quote");
}

TEST(SessionFile, TextAfterAClosingQuoteIsAnError) {
  EXPECT_EQ(ErrorOf(kHeader + "\"measure\"s,08:30:59,0,0,1,2,3,4,5,6\n"),
            "block.csv:2: text follows the closing quote of a field; expected a comma");
}

TEST(SessionFile, ALineWithoutEndIsRefusedBeforeItFillsTheMemory) {
  EXPECT_EQ(ErrorOf(kHeader + std::string(3'000'000, 'x')),
            "block.csv:2: the line is longer than 1 MB; expected a CSV file");
}

TEST(SessionFile, ControlCharactersDoNotReachTheMessage) {
  const std::string message =
      ErrorOf(kHeader + "measure,08:30:59," + std::string("\x1b[2J\0x", 6) + ",0,1,2,3,4,5,6\n");
  EXPECT_NE(message.find("'?[2J?x' is no number"), std::string::npos) << message;
}

TEST(SessionFile, RowsAcrossTheReadersBufferArrive) {
  std::string text = kHeader;
  for (int i = 0; i < 5000; ++i) {
    text += "measure,08:30:59,0,0,1,2,3,4,5," + std::to_string(i) + "\n";
  }
  const auto rows = ReadAll(text);
  ASSERT_EQ(rows.size(), 5000u);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    ASSERT_EQ(rows[i].sensors.MagneticZ_B, static_cast<double>(i));
  }
}

TEST(SessionFile, WritingGivesTheColumnsInTheirUsualOrder) {
  std::ostringstream out;
  SessionColumns columns;
  columns.antenna = true;
  columns.further = {"note"};
  SessionSample sample;
  sample.set = SampleSet::Horizontal;
  sample.sensors.Tag[0] = 7;
  sample.sensors.InclineX = 0.1;
  sample.antenna = tiltpole::xyhCoordinate{1.25, -2.0, 1e-7};
  sample.further = {"a,b"};
  SessionWriter(out, columns).Write(sample);
  EXPECT_EQ(out.str(),
            "set,time,incline_x,incline_y,mag_x_a,mag_y_a,mag_z_a,mag_x_b,mag_y_b,mag_z_b,"
            "antenna_north,antenna_east,antenna_height,note\n"
            "horizontal,07:00:00,0.1,0,0,0,0,0,0,0,1.25,-2,1e-07,\"a,b\"\n");
}

// Now and then a zero of either sign, which plain bits hardly ever are.
double AnyFiniteDouble() {
  if (*rc::gen::inRange(0, 8) == 0) return *rc::gen::element(0.0, -0.0);
  const auto bits = *rc::gen::suchThat(rc::gen::arbitrary<std::uint64_t>(),
                                       [](std::uint64_t b) { return (b >> 52 & 0x7ff) != 0x7ff; });
  double value = 0.0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

void ExpectSamePosition(const std::optional<xyhCoordinate>& a,
                        const std::optional<xyhCoordinate>& b) {
  RC_ASSERT(a.has_value() && b.has_value());
  RC_ASSERT(SameBits(a->x, b->x));
  RC_ASSERT(SameBits(a->y, b->y));
  RC_ASSERT(SameBits(a->h, b->h));
}

void ExpectSameSample(const SessionSample& a, const SessionSample& b) {
  RC_ASSERT(a.set == b.set);
  for (std::size_t i = 0; i < 3; ++i) RC_ASSERT(a.sensors.Tag[i] == b.sensors.Tag[i]);
  RC_ASSERT(SameBits(a.sensors.InclineX, b.sensors.InclineX));
  RC_ASSERT(SameBits(a.sensors.InclineY, b.sensors.InclineY));
  RC_ASSERT(SameBits(a.sensors.MagneticX_A, b.sensors.MagneticX_A));
  RC_ASSERT(SameBits(a.sensors.MagneticY_A, b.sensors.MagneticY_A));
  RC_ASSERT(SameBits(a.sensors.MagneticZ_A, b.sensors.MagneticZ_A));
  RC_ASSERT(SameBits(a.sensors.MagneticX_B, b.sensors.MagneticX_B));
  RC_ASSERT(SameBits(a.sensors.MagneticY_B, b.sensors.MagneticY_B));
  RC_ASSERT(SameBits(a.sensors.MagneticZ_B, b.sensors.MagneticZ_B));
  ExpectSamePosition(a.antenna, b.antenna);
  ExpectSamePosition(a.true_tip, b.true_tip);
  RC_ASSERT(a.further == b.further);
}

RC_GTEST_PROP(SessionFileProperty, WhatIsWrittenReadsBackBitForBit, ()) {
  SessionSample sample;
  sample.set = *rc::gen::element(SampleSet::Horizontal, SampleSet::Vertical, SampleSet::Measure);
  sample.sensors.Tag[0] = *rc::gen::inRange(0, 24);
  sample.sensors.Tag[1] = *rc::gen::inRange(0, 60);
  sample.sensors.Tag[2] = *rc::gen::inRange(0, 60);
  PoseSensorData& sensors = sample.sensors;
  for (double* const value :
       {&sensors.InclineX, &sensors.InclineY, &sensors.MagneticX_A, &sensors.MagneticY_A,
        &sensors.MagneticZ_A, &sensors.MagneticX_B, &sensors.MagneticY_B, &sensors.MagneticZ_B}) {
    *value = AnyFiniteDouble();
  }
  sample.antenna = xyhCoordinate{AnyFiniteDouble(), AnyFiniteDouble(), AnyFiniteDouble()};
  sample.true_tip = xyhCoordinate{AnyFiniteDouble(), AnyFiniteDouble(), AnyFiniteDouble()};
  sample.further = {*rc::gen::container<std::string>(rc::gen::inRange<char>(' ', '~'))};
  SessionColumns columns;
  columns.antenna = true;
  columns.true_tip = true;
  columns.further = {"note"};

  std::ostringstream out;
  SessionWriter(out, columns).Write(sample);
  const auto rows = ReadAll(out.str());
  RC_ASSERT(rows.size() == 1u);
  ExpectSameSample(rows[0], sample);
}

// The line is one of the rubbish, which begins below the header.
RC_GTEST_PROP(SessionFileProperty, RubbishIsReadOrRefusedWithItsLine,
              (const std::string& rubbish)) {
  const std::string message = ErrorOf(kHeader + rubbish);
  if (message == kNoError) return;
  const std::string file = "block.csv:";
  RC_ASSERT(message.rfind(file, 0) == 0u);
  const int line = std::stoi(message.substr(file.size()));
  RC_ASSERT(line >= 2);
  RC_ASSERT(line <= 2 + std::count(rubbish.begin(), rubbish.end(), '\n'));
}

}  // namespace
