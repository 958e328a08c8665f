#include "tiltpole/calibration/detail/sweep_thinning.h"

#include <cmath>

namespace tiltpole::detail {
namespace {

/// The smallest step along the sweep [degrees].
constexpr double kSmallestStep = 3.0;

struct Extremes {
  unsigned int maximum = 0;
  unsigned int minimum = 0;
};

Extremes FindExtremes(const CSZMatrix& sweep) {
  Extremes rows;
  for (unsigned int i = 1; i < sweep.GetRow(); ++i) {
    if (sweep.GetData(i, 0) > sweep.GetData(rows.maximum, 0)) {
      rows.maximum = i;
    } else if (sweep.GetData(i, 0) < sweep.GetData(rows.minimum, 0)) {
      rows.minimum = i;
    }
  }
  return rows;
}

// A NaN is neither behind nor within the step, so its row is kept.
bool IsTooClose(double last, double value, bool rising) {
  const bool behind = rising ? value < last : value > last;
  return behind || std::fabs(value - last) < kSmallestStep;
}

}  // namespace

CSZMatrix ThinSweep(const CSZMatrix& sweep) {
  if (sweep.GetRow() == 0 || sweep.GetCol() == 0) return sweep;
  const Extremes extreme = FindExtremes(sweep);
  const bool risesToTheTop = extreme.maximum < extreme.minimum;
  const unsigned int firstCut = risesToTheTop ? extreme.maximum : extreme.minimum;
  const unsigned int secondCut = risesToTheTop ? extreme.minimum : extreme.maximum;

  CSZMatrix kept(sweep.GetRow(), sweep.GetCol());
  if (kept.m_pData == nullptr) return kept;
  unsigned int last = 0;
  const auto keep = [&](unsigned int to, unsigned int from) {
    for (unsigned int j = 0; j < sweep.GetCol(); ++j) kept.SetData(to, j, sweep.GetData(from, j));
  };
  keep(0, 0);
  // Without two different extremes there is no leg and nothing but row 0.
  const unsigned int end = firstCut == secondCut ? 0 : sweep.GetRow();
  for (unsigned int i = 1; i < end; ++i) {
    const bool wraps = i > firstCut && i <= secondCut;
    const bool rising = risesToTheTop != wraps;
    if (!IsTooClose(kept.GetData(last, 0), sweep.GetData(i, 0), rising)) keep(++last, i);
  }
  return kept.Slice(0, 0, static_cast<int>(last), static_cast<int>(sweep.GetCol()) - 1);
}

}  // namespace tiltpole::detail
