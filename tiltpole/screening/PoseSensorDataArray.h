#pragma once

/// @file
/// The array of record pointers that the screening of turns takes and returns.

#include <vector>

#include "tiltpole/export.h"
#include "tiltpole/records/PoseSensorData.h"

namespace tiltpole {

/// A growable, ordered array of pointers to records. It never owns the records: destroying,
/// emptying or copying it leaves them alone. Entries may be null.
///
/// Every index is allowed: reading outside [0, GetSize()) gives null, writing there does nothing.
class TILTPOLE_EXPORT PoseSensorDataArray {
 public:
  /// @return the number of entries, null ones included.
  int GetSize() const { return static_cast<int>(m_entries.size()); }

  /// @return the entry at @p index; null outside the array.
  PoseSensorData* GetAt(int index) const { return Holds(index) ? *At(index) : nullptr; }

  /// The entry at @p index, to read as GetAt() does.
  PoseSensorData* operator[](int index) const { return GetAt(index); }

  /// The entry at @p index, to read or to replace. Outside the array it is a spare entry that
  /// reads as null, and what is written there is forgotten.
  /// @return a reference that holds until the next call of Add(), RemoveAll() or this operator.
  PoseSensorData*& operator[](int index);

  /// Appends an entry, in constant time on average. Without memory std::bad_alloc is thrown, and
  /// the array is as it was; nothing else of it throws, but for copying it.
  /// @return the new entry's index.
  int Add(PoseSensorData* rec);

  /// Replaces the entry at @p index; outside the array nothing happens.
  void SetAt(int index, PoseSensorData* rec);

  /// Empties the array. The records stay.
  void RemoveAll() { m_entries.clear(); }

  /// @name For range-based loops over the entries in order
  /// @{

  /// The first entry, to read; like the three others it holds until the next Add() or RemoveAll().
  PoseSensorData* const* begin() const { return m_entries.data(); }
  /// Behind the last entry.
  PoseSensorData* const* end() const { return m_entries.data() + m_entries.size(); }
  /// The first entry, to read or to replace.
  PoseSensorData** begin() { return m_entries.data(); }
  /// Behind the last entry.
  PoseSensorData** end() { return m_entries.data() + m_entries.size(); }
  /// @}

 private:
  bool Holds(int index) const { return index >= 0 && index < GetSize(); }
  PoseSensorData* const* At(int index) const { return m_entries.data() + index; }

  std::vector<PoseSensorData*> m_entries;
  PoseSensorData* m_spare = nullptr;
};

}  // namespace tiltpole
