// The tables of samples and tips beside this file: every row must come out as it says.

#include <algorithm>
#include <fstream>
#include <locale>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "positioning/exposed_position.h"
#include "positioning/true_pole.h"

namespace {

using tiltpole::PoseSensorData;
using tiltpole::xyhCoordinate;
using tiltpole_test::AngleBetween;
using tiltpole_test::DistanceBetween;
using tiltpole_test::ExposedPosition;

class Row {
 public:
  Row(const std::vector<std::string>& header, const std::vector<std::string>& cells,
      const std::string& place)
      : place_(place) {
    for (std::size_t i = 0; i < header.size() && i < cells.size(); ++i) {
      cells_[header[i]] = cells[i];
    }
    EXPECT_EQ(header.size(), cells.size()) << place;
  }

  std::string Place() const { return place_ + " " + Text("name"); }

  double Number(const std::string& column) const {
    std::istringstream text(Text(column));
    text.imbue(std::locale::classic());
    double value = 0.0;
    EXPECT_TRUE(text >> value && text.eof()) << Place() << ": " << column << " is no number";
    return value;
  }

  PoseSensorData Tilts() const {
    PoseSensorData data;
    data.InclineX = Number("incline_x");
    data.InclineY = Number("incline_y");
    return data;
  }

  xyhCoordinate Tip() const {
    xyhCoordinate tip;
    tip.x = Number("tip_x");
    tip.y = Number("tip_y");
    tip.h = Number("tip_h");
    return tip;
  }

 private:
  std::string Text(const std::string& column) const {
    const auto found = cells_.find(column);
    EXPECT_NE(found, cells_.end()) << place_ << ": no column " << column;
    return found == cells_.end() ? std::string() : found->second;
  }

  std::string place_;
  std::map<std::string, std::string> cells_;
};

std::vector<std::string> Cells(std::string line) {
  line.erase(std::remove(line.begin(), line.end(), '\r'), line.end());
  std::vector<std::string> cells;
  std::istringstream rest(line);
  for (std::string cell; std::getline(rest, cell, ',');) cells.push_back(cell);
  return cells;
}

std::vector<Row> Table(const std::string& name) {
  std::ifstream file(std::string(TIP_TABLES) + "/" + name);
  std::vector<std::string> header;
  std::vector<Row> rows;
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (line.empty() || line.front() == '#' || line == "\r") continue;
    if (header.empty()) {
      header = Cells(line);
    } else {
      rows.emplace_back(header, Cells(line), name + ":" + std::to_string(number));
    }
  }
  return rows;
}

TEST(TipTable, EveryTipFollowsFromTiltsAndHeading) {
  const std::vector<Row> rows = Table("tips_from_headings.csv");
  EXPECT_GE(rows.size(), 19U) << "rows were lost";
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Place());
    PoseSensorData data = row.Tilts();
    data.Yaw_A = row.Number("heading");
    ExposedPosition position;
    xyhCoordinate tip;
    position.Position_Geometry_A(xyhCoordinate(), data, row.Number("pole_length"), tip);
    EXPECT_LE(DistanceBetween(tip, row.Tip()), row.Number("tolerance"));
  }
}

TEST(TipTable, EveryTipFollowsFromTheReadings) {
  const std::vector<Row> rows = Table("tips_from_readings.csv");
  EXPECT_GE(rows.size(), 9U) << "rows were lost";
  for (const Row& row : rows) {
    SCOPED_TRACE(row.Place());
    PoseSensorData data = row.Tilts();
    data.MagneticX_A = row.Number("mag_x_a");
    data.MagneticY_A = row.Number("mag_y_a");
    data.MagneticZ_A = row.Number("mag_z_a");
    data.MagneticX_B = row.Number("mag_x_b");
    data.MagneticY_B = row.Number("mag_y_b");
    data.MagneticZ_B = row.Number("mag_z_b");
    ExposedPosition position;
    xyhCoordinate tip;
    position.Position(data, row.Number("pole_length"), tip);
    EXPECT_LE(AngleBetween(data.Yaw_A, row.Number("heading")), 1e-7);
    EXPECT_LE(AngleBetween(data.Yaw_B, row.Number("heading") + 180.0), 1e-7);
    EXPECT_LE(DistanceBetween(tip, row.Tip()), row.Number("tolerance"));
    EXPECT_EQ(position.IsMagneticInterference(), 0);
  }
}

}  // namespace
