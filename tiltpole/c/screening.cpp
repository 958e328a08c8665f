#include "tiltpole/c/screening.h"

#include <memory>
#include <unordered_map>
#include <variant>
#include <vector>

#include "tiltpole/c/detail/guard.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"

using namespace tiltpole::detail;
using tiltpole::PoseSensorData;
using tiltpole::PoseSensorDataArray;

struct tiltpole_screening {
  explicit tiltpole_screening(int turn) {
    if (turn == TILTPOLE_TURN_VERTICAL) twin.emplace<tiltpole::CInclineSensor_Filter_XZ>();
  }

  std::variant<tiltpole::CInclineSensor_Filter_XY, tiltpole::CInclineSensor_Filter_XZ> twin;
  // The records, which the twin owns, in the order of their arrival.
  std::vector<PoseSensorData*> records;
  std::unique_ptr<PoseSensorDataArray> selection;
};

namespace {

template <class Screening, class Operation>
auto OnTwin(Screening* screening, const Operation& operation) {
  return std::visit(operation, screening->twin);
}

void Append(tiltpole_screening* screening, const tiltpole_sample& sample) {
  auto record = std::make_unique<PoseSensorData>(FromC(sample));
  screening->records.push_back(record.get());
  try {
    OnTwin(screening, [&](auto& twin) { twin.Add(record.get()); });
  } catch (...) {
    screening->records.pop_back();
    throw;
  }
  static_cast<void>(record.release());
}

template <class Array>
void CopyOut(const Array& records, tiltpole_sample* samples, size_t capacity) {
  size_t i = 0;
  for (const PoseSensorData* record : records) {
    if (i == capacity) break;
    samples[i++] = ToC(*record);
  }
}

size_t SelectionSize(const tiltpole_screening* screening) {
  return screening->selection ? static_cast<size_t>(screening->selection->GetSize()) : 0;
}

}  // namespace

int tiltpole_screening_create(int turn, tiltpole_screening** screening) {
  if (!IsOneOfTwo(turn)) return BadTurn();
  return Create(screening, turn);
}

void tiltpole_screening_destroy(tiltpole_screening* screening) { delete screening; }

int tiltpole_screening_add(tiltpole_screening* screening, const tiltpole_sample* samples,
                           size_t count) {
  return Guarded([&] {
    if (AnyNull(screening) || NullArray(samples, count)) return NullPointer();
    for (size_t i = 0; i < count; ++i) Append(screening, samples[i]);
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_screening_clear(tiltpole_screening* screening) {
  return Guarded([&] {
    if (AnyNull(screening)) return NullPointer();
    screening->selection.reset();
    screening->records.clear();
    OnTwin(screening, [](auto& twin) { twin.Clear(); });
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_screening_coverage(const tiltpole_screening* screening, int32_t* percent) {
  return Guarded([&] {
    if (AnyNull(screening) || AnyNull(percent)) return NullPointer();
    *percent = OnTwin(screening, [](const auto& twin) { return twin.GetRecordRate(); });
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_screening_is_covered(const tiltpole_screening* screening, int32_t* covered) {
  return Guarded([&] {
    if (AnyNull(screening) || AnyNull(covered)) return NullPointer();
    *covered = OnTwin(screening, [](const auto& twin) { return twin.IsRecordOK(); });
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_screening_center(const tiltpole_screening* screening, tiltpole_center* center) {
  if (AnyNull(screening) || AnyNull(center)) return NullPointer();
  const auto par = OnTwin(screening, [](const auto& twin) { return twin.GetCenterPar(); });
  *center = {par.CenterX, par.CenterY, par.CenterZ, par.Radius, par.Valid, 0};
  return TILTPOLE_OK;
}

int tiltpole_screening_filter(tiltpole_screening* screening) {
  return Guarded([&] {
    if (AnyNull(screening)) return NullPointer();
    screening->selection.reset(OnTwin(screening, [](auto& twin) { return twin.Filter(); }));
    if (screening->selection) return static_cast<int>(TILTPOLE_OK);
    return Failed(TILTPOLE_NO_SOLUTION, "no usable record is left");
  });
}

int tiltpole_screening_select(tiltpole_screening* screening, int32_t wanted) {
  return Guarded([&] {
    if (AnyNull(screening)) return NullPointer();
    if (wanted < 1) return Failed(TILTPOLE_BAD_ARGUMENT, "at least 1 record must be wanted");
    if (!screening->selection) {
      return Failed(TILTPOLE_NO_SOLUTION, "there is no selection to thin; filter first");
    }
    screening->selection.reset(OnTwin(screening, [&](const auto& twin) {
      return twin.Select(screening->selection.get(), wanted);
    }));
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_screening_is_complete(tiltpole_screening* screening, int32_t* complete) {
  return Guarded([&] {
    if (AnyNull(screening) || AnyNull(complete)) return NullPointer();
    *complete =
        OnTwin(screening, [&](auto& twin) { return twin.IsComplete(screening->selection.get()); });
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_screening_selected(const tiltpole_screening* screening, tiltpole_sample* samples,
                                size_t capacity, size_t* count) {
  if (AnyNull(screening) || AnyNull(count) || NullArray(samples, capacity)) return NullPointer();
  *count = SelectionSize(screening);
  if (screening->selection) CopyOut(*screening->selection, samples, capacity);
  return TILTPOLE_OK;
}

int tiltpole_screening_selected_indices(const tiltpole_screening* screening, size_t* indices,
                                        size_t capacity, size_t* count) {
  return Guarded([&] {
    if (AnyNull(screening) || AnyNull(count) || NullArray(indices, capacity)) return NullPointer();
    *count = SelectionSize(screening);
    std::unordered_map<const PoseSensorData*, size_t> index_of;
    index_of.reserve(screening->records.size());
    for (const PoseSensorData* record : screening->records) {
      index_of.emplace(record, index_of.size());
    }
    for (size_t i = 0; i < *count && i < capacity; ++i) {
      indices[i] = index_of.at(screening->selection->GetAt(static_cast<int>(i)));
    }
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_screening_records(const tiltpole_screening* screening, tiltpole_sample* samples,
                               size_t capacity, size_t* count) {
  if (AnyNull(screening) || AnyNull(count) || NullArray(samples, capacity)) return NullPointer();
  *count = screening->records.size();
  CopyOut(screening->records, samples, capacity);
  return TILTPOLE_OK;
}
