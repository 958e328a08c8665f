#include "tiltpole/screening/PoseSensorDataArray.h"

namespace tiltpole {

PoseSensorData*& PoseSensorDataArray::operator[](int index) {
  if (Holds(index)) return *(begin() + index);
  m_spare = nullptr;
  return m_spare;
}

int PoseSensorDataArray::Add(PoseSensorData* rec) {
  m_entries.push_back(rec);
  return GetSize() - 1;
}

void PoseSensorDataArray::SetAt(int index, PoseSensorData* rec) {
  if (Holds(index)) *(begin() + index) = rec;
}

}  // namespace tiltpole
