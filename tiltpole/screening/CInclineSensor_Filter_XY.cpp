#include "tiltpole/screening/CInclineSensor_Filter_XY.h"

#include "tiltpole/screening/detail/planes.h"
#include "tiltpole/screening/detail/select.h"
#include "tiltpole/screening/detail/turn.h"

namespace tiltpole {

using detail::PlaneXY;

CInclineSensor_Filter_XY::CInclineSensor_Filter_XY() = default;

CInclineSensor_Filter_XY::~CInclineSensor_Filter_XY() { Clear(); }

void CInclineSensor_Filter_XY::Add(PoseSensorData* rec) { AsTurn().Add(rec); }

void CInclineSensor_Filter_XY::Clear() { AsTurn().Clear(); }

void CInclineSensor_Filter_XY::Sort_ByAzimuth(PoseSensorDataArray* arr) {
  detail::SortAndMarkRepeats(arr);
}

PoseSensorDataArray* CInclineSensor_Filter_XY::Filter() { return AsTurn().Filter().release(); }

PoseSensorDataArray* CInclineSensor_Filter_XY::Select(const PoseSensorDataArray* arr, int n) const {
  return detail::Select<PlaneXY>(arr, n).release();
}

int CInclineSensor_Filter_XY::IsComplete(const PoseSensorDataArray* arr) {
  return AsTurn().IsComplete(arr);
}

int CInclineSensor_Filter_XY::IsRecordOK() const {
  return detail::IsEverySectorFilled(m_arrRecord, m_nSectorAngle) ? 1 : 0;
}

int CInclineSensor_Filter_XY::GetRecordRate() const {
  return detail::FilledPercentage(m_arrRecord, m_nSectorAngle);
}

int CInclineSensor_Filter_XY::Calculate_CenterPar(const PoseSensorDataArray* arr) {
  return AsTurn().FitCenter(arr);
}

int CInclineSensor_Filter_XY::Calculate_Azimuth(const PoseSensorDataArray* arr) {
  return AsTurn().CalculateAzimuths(arr);
}

int CInclineSensor_Filter_XY::Calculate_Azimuth_One(PoseSensorData* rec) {
  return AsTurn().CalculateAzimuth(rec);
}

PoseSensorDataArray* CInclineSensor_Filter_XY::Filter_ByTime(const PoseSensorDataArray* arr) const {
  return detail::FilterByTime<PlaneXY>(arr).release();
}

PoseSensorDataArray* CInclineSensor_Filter_XY::Filter_ByDistance(
    const PoseSensorDataArray* arr) const {
  return detail::FilterByDistance<PlaneXY>(arr, m_CenterPar).release();
}

PoseSensorDataArray* CInclineSensor_Filter_XY::Filter_ByAzimuth(
    const PoseSensorDataArray* arr) const {
  return detail::FilterByAzimuth(arr).release();
}

detail::Turn<PlaneXY> CInclineSensor_Filter_XY::AsTurn() {
  return {m_CenterPar, m_pPrevRecord, m_arrRecord};
}

}  // namespace tiltpole
