#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"

#include "tiltpole/screening/detail/planes.h"
#include "tiltpole/screening/detail/select.h"
#include "tiltpole/screening/detail/turn.h"

namespace tiltpole {

using detail::PlaneXZ;

CInclineSensor_Filter_XZ::CInclineSensor_Filter_XZ() = default;

CInclineSensor_Filter_XZ::~CInclineSensor_Filter_XZ() { Clear(); }

void CInclineSensor_Filter_XZ::Add(PoseSensorData* rec) { AsTurn().Add(rec); }

void CInclineSensor_Filter_XZ::Clear() { AsTurn().Clear(); }

void CInclineSensor_Filter_XZ::Sort_ByAzimuth(PoseSensorDataArray* arr) {
  detail::SortAndMarkRepeats(arr);
}

PoseSensorDataArray* CInclineSensor_Filter_XZ::Filter() { return AsTurn().Filter().release(); }

PoseSensorDataArray* CInclineSensor_Filter_XZ::Select(const PoseSensorDataArray* arr, int n) const {
  return detail::Select<PlaneXZ>(arr, n).release();
}

int CInclineSensor_Filter_XZ::IsComplete(const PoseSensorDataArray* arr) {
  return AsTurn().IsComplete(arr);
}

int CInclineSensor_Filter_XZ::IsRecordOK() const {
  return detail::IsEverySectorFilled(m_arrRecord, m_nSectorAngle) ? 1 : 0;
}

int CInclineSensor_Filter_XZ::GetRecordRate() const {
  return detail::FilledPercentage(m_arrRecord, m_nSectorAngle);
}

int CInclineSensor_Filter_XZ::Calculate_CenterPar(const PoseSensorDataArray* arr) {
  return AsTurn().FitCenter(arr);
}

int CInclineSensor_Filter_XZ::Calculate_Azimuth(const PoseSensorDataArray* arr) {
  return AsTurn().CalculateAzimuths(arr);
}

int CInclineSensor_Filter_XZ::Calculate_Azimuth_One(PoseSensorData* rec) {
  return AsTurn().CalculateAzimuth(rec);
}

PoseSensorDataArray* CInclineSensor_Filter_XZ::Filter_ByTime(const PoseSensorDataArray* arr) const {
  return detail::FilterByTime<PlaneXZ>(arr).release();
}

PoseSensorDataArray* CInclineSensor_Filter_XZ::Filter_ByDistance(
    const PoseSensorDataArray* arr) const {
  return detail::FilterByDistance<PlaneXZ>(arr, m_CenterPar).release();
}

PoseSensorDataArray* CInclineSensor_Filter_XZ::Filter_ByAzimuth(
    const PoseSensorDataArray* arr) const {
  return detail::FilterByAzimuth(arr).release();
}

detail::Turn<PlaneXZ> CInclineSensor_Filter_XZ::AsTurn() {
  return {m_CenterPar, m_pPrevRecord, m_arrRecord};
}

}  // namespace tiltpole
