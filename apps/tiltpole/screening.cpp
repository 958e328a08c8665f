#include "apps/tiltpole/screening.h"

#include <limits>
#include <memory>

#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"

namespace tiltpole::cli {
namespace {

using Records = std::unique_ptr<PoseSensorDataArray>;

std::size_t SizeOf(const Records& records) {
  return records ? static_cast<std::size_t>(records->GetSize()) : 0;
}

/// The library's screening, with the steps of its filter in view.
template <typename Filter>
class Turn : public Filter {
 public:
  void AddAll(const std::vector<session::SessionSample>& samples) {
    for (std::size_t i = 0; i < samples.size(); ++i) {
      auto record = std::make_unique<PoseSensorData>(samples[i].sensors);
      record->Aux[0] = static_cast<double>(i);
      this->Add(record.release());
    }
  }

  // The first two steps read neither azimuths nor flags, so they give again what they gave within
  // Filter().
  void CountSteps(ScreenedTurn& result) const {
    const Records moved(this->Filter_ByTime(&this->m_arrRecord));
    const Records on_circle(moved ? this->Filter_ByDistance(moved.get()) : nullptr);
    result.after_time = SizeOf(moved);
    result.after_distance = SizeOf(on_circle);
  }

  std::vector<AzimuthRange> MissingRanges() const {
    const int width = this->m_nSectorAngle;
    const int sectors = 360 / width;
    std::vector<bool> hit(static_cast<std::size_t>(sectors));
    for (const PoseSensorData* const record : this->m_arrRecord) {
      const double azimuth = record->Azimuth;
      if (!(azimuth > 0.0 && azimuth < 360.0)) continue;
      const int sector = static_cast<int>(azimuth) / width;
      // As the library counts: an azimuth on a border fills no sector.
      if (sector < sectors && azimuth > sector * width)
        hit[static_cast<std::size_t>(sector)] = true;
    }
    std::vector<AzimuthRange> ranges;
    for (int i = 0; i < sectors; ++i) {
      if (hit[static_cast<std::size_t>(i)]) continue;
      const bool goes_on = !ranges.empty() && ranges.back().to == i * width;
      if (goes_on) ranges.back().to += width;
      if (!goes_on) ranges.push_back({i * width, (i + 1) * width});
    }
    JoinThroughNorth(ranges);
    return ranges;
  }

 private:
  static void JoinThroughNorth(std::vector<AzimuthRange>& ranges) {
    if (ranges.size() < 2 || ranges.front().from != 0 || ranges.back().to != 360) return;
    ranges.back().to = ranges.front().to;
    ranges.erase(ranges.begin());
  }
};

template <typename Filter>
ScreenedTurn Screen(const std::vector<session::SessionSample>& samples, int count) {
  ScreenedTurn result;
  result.samples = samples.size();
  Turn<Filter> turn;
  turn.AddAll(samples);
  const Records filtered(turn.Filter());
  result.after_azimuth = SizeOf(filtered);
  turn.CountSteps(result);
  result.coverage_percent = turn.GetRecordRate();
  result.every_sector = turn.IsRecordOK() != 0;
  result.missing = turn.MissingRanges();
  if (!filtered) return result;

  const int wanted = count > 0 ? count : std::numeric_limits<int>::max();
  const Records selected(turn.Select(filtered.get(), wanted));
  for (const PoseSensorData* const record : *selected) {
    result.selected.push_back(static_cast<std::size_t>(record->Aux[0]));
  }
  // Last, since it fits the centre to the selection.
  result.complete = turn.IsComplete(selected.get()) != 0;
  return result;
}

}  // namespace

ScreenedTurn ScreenTurn(const std::vector<session::SessionSample>& turn, session::SampleSet set,
                        int count) {
  return set == session::SampleSet::Horizontal ? Screen<CInclineSensor_Filter_XY>(turn, count)
                                               : Screen<CInclineSensor_Filter_XZ>(turn, count);
}

}  // namespace tiltpole::cli
