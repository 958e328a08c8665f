#pragma once

// The screening of a turn written a second time, for whole turns to be compared with: rows in a
// table instead of records behind pointers, every rule carried out as it reads, nothing shared with
// the library.

#include <vector>

namespace tiltpole::test {

struct PlainRow {
  double first = 0.0;   // counts, on the plane's axes
  double second = 0.0;  // counts
  double third = 0.0;   // counts, out of the plane
  int second_of_day = 0;
  double azimuth = 0.0;
  int forward = 1;
};

using Rows = std::vector<int>;  // places in the table

class PlainScreening {
 public:
  enum class Turn { XY, XZ };

  explicit PlainScreening(Turn turn) : m_turn(turn) {}

  void Add(const PlainRow& row);
  Rows Filter();
  Rows Select(const Rows& rows, int n) const;
  bool IsComplete(const Rows& rows);
  bool IsRecordOK() const;
  int GetRecordRate() const;

  const std::vector<PlainRow>& Table() const { return m_table; }

 private:
  Rows All() const;
  void Fit(const Rows& rows);
  double Azimuth(const PlainRow& row) const;
  void GiveAzimuth(int place);
  Rows Moving(const Rows& rows) const;
  void ExchangeSort(Rows& rows);
  Rows OnCircle(const Rows& rows) const;
  Rows WithoutRepeats(const Rows& rows) const;
  bool IsSectorHit(int sector) const;
  const PlainRow& Row(int place) const { return m_table[static_cast<std::size_t>(place)]; }
  PlainRow& Row(int place) { return m_table[static_cast<std::size_t>(place)]; }

  Turn m_turn;
  std::vector<PlainRow> m_table;
  bool m_fitted = false;
  double m_first = 0.0;
  double m_second = 0.0;
  double m_third = 0.0;
  double m_radius = 0.0;
  int m_previous = -1;
};

}  // namespace tiltpole::test
