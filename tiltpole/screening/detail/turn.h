#pragma once

// What both screenings do, written once over the table of what differs. A Turn refers to the
// members of the object that it works for, whichever order its class declares them in.

#include <algorithm>
#include <functional>

#include "tiltpole/records/detail/angles.h"
#include "tiltpole/screening/PoseSensorCenterParameter.h"
#include "tiltpole/screening/PoseSensorDataArray.h"
#include "tiltpole/screening/detail/azimuth.h"
#include "tiltpole/screening/detail/center.h"
#include "tiltpole/screening/detail/coverage.h"
#include "tiltpole/screening/detail/filter_by_azimuth.h"
#include "tiltpole/screening/detail/filters.h"
#include "tiltpole/screening/detail/sort_by_azimuth.h"

namespace tiltpole::detail {

inline constexpr int kRecordsPerFit = 10;

inline void SortAndMarkRepeats(PoseSensorDataArray* arr) {
  if (arr == nullptr) return;
  SortByAzimuth(*arr);
  MarkRepeats(*arr);
}

// A record that was added more than once is deleted once.
inline void DeleteEachOnce(PoseSensorDataArray& arr) {
  std::sort(arr.begin(), arr.end(), std::less<>());
  std::for_each(arr.begin(), std::unique(arr.begin(), arr.end()),
                [](const PoseSensorData* rec) { delete rec; });
}

template <class Plane>
class Turn {
 public:
  Turn(PoseSensorCenterParameter& center, PoseSensorData*& previous, PoseSensorDataArray& records)
      : m_center(center), m_previous(previous), m_records(records) {}

  // Each fit starts afresh: the host may have changed records that the set already holds, and sees
  // its changes count here.
  void Add(PoseSensorData* rec) {
    if (rec == nullptr) return;
    m_records.Add(rec);
    if (m_records.GetSize() % kRecordsPerFit != 0) {
      CalculateAzimuth(rec);
    } else if (FitCenter(&m_records) != 0) {
      CalculateAzimuths(&m_records);
    }
  }

  void Clear() {
    if constexpr (Plane::kClearInvalidatesCenter) m_center.Valid = 0;
    DeleteEachOnce(m_records);
    m_records.RemoveAll();
    m_previous = nullptr;
  }

  int FitCenter(const PoseSensorDataArray* arr) { return CalculateCenter<Plane>(arr, m_center); }

  int CalculateAzimuths(const PoseSensorDataArray* arr) {
    if (arr == nullptr || m_center.Valid == 0) return 0;
    for (PoseSensorData* rec : *arr) CalculateAzimuth(rec);
    return 1;
  }

  int CalculateAzimuth(PoseSensorData* rec) {
    if (rec == nullptr || m_center.Valid == 0) return 0;
    rec->Azimuth = AzimuthAboutCenter(rec->MagneticX_A - m_center.CenterX,
                                      rec->*Plane::kSecond - m_center.*Plane::kCenterSecond);
    // The predecessor's azimuth counts as it stands now, after this record's is written: a record
    // that is its own predecessor has not moved on.
    if (m_previous != nullptr) {
      rec->Forward = rec->Azimuth - m_previous->Azimuth >= kEpsilon ? 1 : 0;
    }
    m_previous = rec;
    return 1;
  }

  OwnedArray Filter() {
    FitCenter(&m_records);
    CalculateAzimuths(&m_records);
    OwnedArray kept = FilterByTime<Plane>(&m_records);
    SortAndMarkRepeats(kept.get());
    if (m_center.Valid != 0) kept = FilterByDistance<Plane>(kept.get(), m_center);
    return FilterByAzimuth(kept.get());
  }

  int IsComplete(const PoseSensorDataArray* arr) {
    if (arr == nullptr) return 0;
    FitCenter(arr);
    CalculateAzimuths(arr);
    return HasGap(*arr) ? 0 : 1;
  }

 private:
  PoseSensorCenterParameter& m_center;
  PoseSensorData*& m_previous;
  PoseSensorDataArray& m_records;
};

}  // namespace tiltpole::detail
