#include "apps/tiltpole/screening.h"

#include <limits>
#include <memory>

#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"
#include "tiltpole/screening/covered_sectors.h"

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
      // Owned by the turn only once it is added: without room for it Add throws.
      this->Add(record.get());
      static_cast<void>(record.release());
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

  std::vector<session::MissingRange> MissingRanges() const {
    return session::MissingRanges(CoveredSectors(this->m_arrRecord, this->m_nSectorAngle),
                                  this->m_nSectorAngle);
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
