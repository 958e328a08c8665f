#include "screening/plain_screening.h"

#include <cmath>
#include <utility>

namespace tiltpole::test {

Rows PlainScreening::All() const {
  Rows all;
  for (int place = 0; place < static_cast<int>(m_table.size()); ++place) all.push_back(place);
  return all;
}

void PlainScreening::Add(const PlainRow& row) {
  m_table.push_back(row);
  const Rows all = All();
  if (all.size() % 10 == 0) {
    Fit(all);
    for (const int place : all) GiveAzimuth(place);
  } else if (m_fitted) {
    GiveAzimuth(all.back());
  }
}

void PlainScreening::Fit(const Rows& rows) {
  if (rows.empty()) return;
  int top = rows[0], bottom = rows[0], right = rows[0], left = rows[0];
  double levels = 0.0;
  for (const int i : rows) {
    if (Row(i).first > Row(top).first) top = i;
    if (Row(i).first < Row(bottom).first) bottom = i;
    if (Row(i).second > Row(right).second) right = i;
    if (Row(i).second < Row(left).second) left = i;
    levels += Row(i).third;
  }
  m_first = (Row(bottom).first + Row(top).first) / 2;
  m_second = (Row(left).second + Row(right).second) / 2;
  m_third = m_turn == Turn::XY
                ? levels / static_cast<double>(rows.size())
                : (Row(top).third + Row(bottom).third + Row(right).third + Row(left).third) / 4;
  double distances = 0.0;
  for (const int i : rows) {
    distances += std::sqrt((Row(i).first - m_first) * (Row(i).first - m_first) +
                           (Row(i).second - m_second) * (Row(i).second - m_second));
  }
  m_radius = distances / static_cast<double>(rows.size());
  m_fitted = true;
}

double PlainScreening::Azimuth(const PlainRow& row) const {
  const double d1 = row.first - m_first;
  const double d2 = row.second - m_second;
  const double t = std::atan(std::fabs(d1 / d2)) * 180.0 / 3.141592653589793;
  double a = 0.0;
  // NOLINTNEXTLINE(bugprone-branch-clone): case by case, as the rule is stated
  if (std::fabs(d1) < 1e-6 && std::fabs(d2) < 1e-6) {
    a = 0.0;
  } else if (std::fabs(d1) < 1e-6 && d2 > 1e-6) {
    a = 90.0;
  } else if (std::fabs(d1) < 1e-6) {
    a = 270.0;
  } else if (std::fabs(d2) < 1e-6 && d1 > 1e-6) {
    a = 0.0;
  } else if (std::fabs(d2) < 1e-6) {
    a = 180.0;
  } else if (d1 > 1e-6 && d2 > 1e-6) {
    a = t;
  } else if (d1 > 1e-6 && d2 < 1e-6) {
    a = 180.0 - t;
  } else if (d1 < 1e-6 && d2 < 1e-6) {
    a = 180.0 + t;
  } else {
    a = 360.0 - t;
  }
  if (a < 1e-6) a += 360.0;
  return a;
}

void PlainScreening::GiveAzimuth(int place) {
  PlainRow& row = Row(place);
  row.azimuth = Azimuth(row);
  if (m_previous >= 0) row.forward = row.azimuth - Row(m_previous).azimuth >= 1e-6 ? 1 : 0;
  m_previous = place;
}

Rows PlainScreening::Filter() {
  const Rows all = All();
  Fit(all);
  if (m_fitted) {
    for (const int place : all) GiveAzimuth(place);
  }
  Rows rows = Moving(all);
  ExchangeSort(rows);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    Row(rows[i]).forward = Row(rows[i]).azimuth - Row(rows[i - 1]).azimuth < 1e-6 ? 0 : 1;
  }
  return WithoutRepeats(OnCircle(rows));
}

Rows PlainScreening::Moving(const Rows& rows) const {
  Rows moving;
  for (const int i : rows) {
    if (!moving.empty()) {
      const PlainRow& last = Row(moving.back());
      const double s = std::sqrt((Row(i).first - last.first) * (Row(i).first - last.first) +
                                 (Row(i).second - last.second) * (Row(i).second - last.second));
      if (!(s >= 30.0) && Row(i).second_of_day - last.second_of_day < 3) continue;
    }
    moving.push_back(i);
  }
  return moving;
}

void PlainScreening::ExchangeSort(Rows& rows) {
  for (std::size_t i = 0; i + 1 < rows.size(); ++i) {
    for (std::size_t j = i + 1; j < rows.size(); ++j) {
      if (Row(rows[j]).azimuth < Row(rows[i]).azimuth) std::swap(rows[i], rows[j]);
    }
  }
}

Rows PlainScreening::OnCircle(const Rows& rows) const {
  const double radial = m_turn == Turn::XY ? 200.0 : 500.0;
  const double level = m_turn == Turn::XY ? 100.0 : 200.0;
  Rows kept;
  for (const int i : rows) {
    const double rho = std::sqrt((Row(i).first - m_first) * (Row(i).first - m_first) +
                                 (Row(i).second - m_second) * (Row(i).second - m_second));
    if (std::fabs(rho - m_radius) < radial && std::fabs(Row(i).third - m_third) < level) {
      kept.push_back(i);
    }
  }
  return kept;
}

Rows PlainScreening::WithoutRepeats(const Rows& rows) const {
  Rows kept;
  const int size = static_cast<int>(rows.size());
  int start = 0, n = 0, back = 0;
  while (start < size) {
    for (int j = start; j < size; ++j) {
      const bool repeats = Row(rows[static_cast<std::size_t>(j)]).forward == 0;
      n = n + 1;
      if (repeats) back = back + 1;
      if (n < 10 && j != size - 1) continue;
      if (double(back) / double(n) > 0.2) {
        start = start + 1;
        n = 1;
        back = 0;
      } else {
        kept.insert(kept.end(), rows.begin() + start, rows.begin() + j);
        start = j;
        n = 1;
        back = repeats ? 1 : 0;
      }
      break;
    }
    if (start == size - 1) break;
  }
  return kept;
}

Rows PlainScreening::Select(const Rows& rows, int n) const {
  const int size = static_cast<int>(rows.size());
  if (n > size) return rows;
  int top = rows[0], bottom = rows[0], right = rows[0], left = rows[0];
  for (const int i : rows) {
    if (Row(i).first > Row(top).first) top = i;
    if (Row(i).first < Row(bottom).first) bottom = i;
    if (Row(i).second > Row(right).second) right = i;
    if (Row(i).second < Row(left).second) left = i;
  }
  Rows selected;
  int k = 0;
  for (const int i : rows) {
    k = k + 1;
    if (i == top || i == bottom || i == right || i == left || k >= size / n) {
      selected.push_back(i);
      k = 0;
    }
  }
  return selected;
}

bool PlainScreening::IsComplete(const Rows& rows) {
  Fit(rows);
  for (const int place : rows) GiveAzimuth(place);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (std::fabs(Row(rows[i]).azimuth - Row(rows[i - 1]).azimuth) > 60.0) return false;
  }
  return true;
}

bool PlainScreening::IsSectorHit(int sector) const {
  for (const PlainRow& row : m_table) {
    if (sector * 5 < row.azimuth && row.azimuth < (sector + 1) * 5) return true;
  }
  return false;
}

bool PlainScreening::IsRecordOK() const {
  if (m_table.size() < 72) return false;
  for (int sector = 0; sector < 72; ++sector) {
    if (!IsSectorHit(sector)) return false;
  }
  return true;
}

int PlainScreening::GetRecordRate() const {
  int hit = 0;
  for (int sector = 0; sector < 72; ++sector) {
    if (IsSectorHit(sector)) ++hit;
  }
  return static_cast<int>(hit * 5 * 100.0 / 360.0 + 0.5);
}

}  // namespace tiltpole::test
