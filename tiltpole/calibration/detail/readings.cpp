#include "tiltpole/calibration/detail/readings.h"

#include "tiltpole/calibration/detail/storage.h"

namespace tiltpole::detail {
namespace {

std::vector<double> ColumnOf(const CSZMatrix& data, unsigned int column) {
  std::vector<double> values(data.GetRow(), 0.0);
  if (column >= data.GetCol()) return values;
  for (unsigned int row = 0; row < data.GetRow(); ++row) values[row] = data.GetData(row, column);
  return values;
}

}  // namespace

Readings ReadingsOf(const CSZMatrix& data) {
  RequireStorage(data);
  return {ColumnOf(data, 0), ColumnOf(data, 1), ColumnOf(data, 2), data.GetCol()};
}

void KeepMarked(const std::vector<char>& marks, Readings& readings) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < readings.Count(); ++i) {
    if (marks[i] == 0) continue;
    readings.x[kept] = readings.x[i];
    readings.y[kept] = readings.y[i];
    readings.z[kept] = readings.z[i];
    ++kept;
  }
  readings.x.resize(kept);
  readings.y.resize(kept);
  readings.z.resize(kept);
}

}  // namespace tiltpole::detail
