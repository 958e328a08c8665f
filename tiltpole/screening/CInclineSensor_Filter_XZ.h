#pragma once

/// @file
/// The screening of a turn about the sensor's y axis.

#include <cstdint>

#include "tiltpole/export.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/screening/PoseSensorCenterParameter.h"
#include "tiltpole/screening/PoseSensorDataArray.h"

namespace tiltpole {

namespace detail {
struct PlaneXZ;
template <class Plane>
class Turn;
}  // namespace detail

/// Screens the samples of a turn of the pole about the sensor's y axis, whose readings of
/// magnetometer A trace a circle in its x-z plane: tells while the pole is turned how much of
/// the circle is covered, and afterwards gives a clean, evenly spread subset for the calibration.
///
/// A host adds each sample with Add(), polls GetRecordRate() and IsRecordOK(), then calls Filter(),
/// Select() and IsComplete(), deletes the arrays that it was given and calls Clear().
///
/// Only the readings of magnetometer A and the time of day are read; of each record, Azimuth and
/// Forward are written. The first axis of the plane is MagneticX_A, the second MagneticZ_A; the
/// third, out of the plane, is MagneticY_A.
///
/// Its twin for the other turn is CInclineSensor_Filter_XY. The two differ in more than the axes:
///
/// | | %CInclineSensor_Filter_XY | %CInclineSensor_Filter_XZ |
/// |---|---|---|
/// | Clear() | makes the centre invalid | leaves the centre valid |
/// | level of the plane | mean over all records | mean over the four extreme records |
/// | Calculate_CenterPar() of no records | 0 | 1 |
/// | radius tolerance [counts] | 200 | 500 |
/// | out-of-plane tolerance [counts] | 100 | 200 |
/// | first member | m_CenterPar | m_arrRecord |
///
/// **Ownership.** A record given to Add() belongs to the object, which deletes it in Clear() or
/// when it is destroyed. An array that an operation returns belongs to the caller, who deletes it,
/// but its records stay the object's: it must not be used after Clear(). The object cannot be
/// copied.
///
/// **Failure.** No operation shows a message. Nothing is thrown but std::bad_alloc, where memory
/// runs out, from Add(), Sort_ByAzimuth(), Filter(), Select() and the three filters that Filter()
/// is made of. The set and the arrays then hold what they held, in its order, and the operation can
/// be repeated. One thread uses an object.
class TILTPOLE_EXPORT CInclineSensor_Filter_XZ {
 public:
  CInclineSensor_Filter_XZ();
  ~CInclineSensor_Filter_XZ();
  CInclineSensor_Filter_XZ(const CInclineSensor_Filter_XZ&) = delete;
  CInclineSensor_Filter_XZ& operator=(const CInclineSensor_Filter_XZ&) = delete;

  /// Appends a record to the set, takes it over, and keeps the azimuths up.
  ///
  /// Every 10th record fits the centre afresh and computes the azimuth of every record; any other
  /// gets only its own, about the centre as it stands, and none before there is a centre. A fit
  /// costs time in proportion to the set.
  ///
  /// @param[in] rec  a record made with `new`, its magnetometer A and Tag filled in; null is
  ///                 ignored. Adding one twice counts it twice; it is deleted once. It stays the
  ///                 host's where std::bad_alloc is thrown.
  void Add(PoseSensorData* rec);

  /// Deletes every record of the set and empties it. Deliberately, and unlike its twin, it leaves
  /// the centre valid: the first nine records of the next turn get azimuths about the old centre.
  void Clear();

  /// @return the centre as it stands; Valid is 0 before the first fit.
  PoseSensorCenterParameter GetCenterPar() const { return m_CenterPar; }

  /// Sorts an array by Azimuth, ascending, in O(n log n), and marks repeats: Forward becomes 0
  /// where a record's azimuth is less than 1e-6 beyond that of the entry before it, else 1. The
  /// first record and one after a null entry keep their flag.
  ///
  /// Null entries, and records whose azimuth is not a number, keep their places. Records of the
  /// same azimuth come in the order that an exchange sort leaves, which need not be the order that
  /// they had.
  ///
  /// @param[in,out] arr  the array; null is ignored.
  void Sort_ByAzimuth(PoseSensorDataArray* arr);

  /// The usable samples of the set, by azimuth: fits the centre and computes all azimuths afresh,
  /// drops samples of a pole that stood still, sorts the others and marks repeats, drops samples
  /// off the circle and then stretches in which too many azimuths repeat.
  ///
  /// The set keeps its records and their order; their Azimuth and Forward are written.
  ///
  /// @return a new array, which the caller deletes (not its records); null when nothing is left.
  PoseSensorDataArray* Filter();

  /// Thins an array: every (size / n)-th record, the quotient truncated, and each record that is
  /// largest or smallest on the first or the second axis, which restarts the count. In the
  /// array's order.
  ///
  /// @param[in] arr  the array, left as it is. Not null by contract; a null one gives null, so that
  ///                 no host can bring the process down.
  /// @param[in] n    how many records are wanted; the result has about as many, and all the entries
  ///                 of the array when n is beyond its size
  /// @return a new array, possibly empty, which the caller deletes (not its records); null for n
  ///         below 1.
  PoseSensorDataArray* Select(const PoseSensorDataArray* arr, int n) const;

  /// Whether no two neighbours in an array lie more than 60 degrees apart. The gap from the last
  /// record round to the first is not looked at.
  ///
  /// Replaces the object's centre by that of the array and computes the azimuths of its records
  /// about it. The records must outlive the object's next Clear().
  ///
  /// @return 1 also for an empty array; 0 for a null one.
  int IsComplete(const PoseSensorDataArray* arr);

  /// Whether every sector of m_nSectorAngle degrees holds a record of the set, by the azimuths as
  /// they stand. A record exactly on a border fills no sector. One pass over the set, at most.
  ///
  /// @return 1 or 0; 0 for an angle below 1, and when the set has fewer records than there are
  ///         sectors (72).
  int IsRecordOK() const;

  /// How much of the circle is covered, counted in sectors as by IsRecordOK(). One pass over the
  /// set, at most.
  ///
  /// @return the percentage, rounded half up: 0 to 100; 0 for an angle below 1.
  int GetRecordRate() const;

 protected:
  /// Computes the circle of an array into m_CenterPar: its centre is the middle of the records' box
  /// in the plane, its radius their mean distance from there, the level of its plane (CenterY) the
  /// mean of MagneticY_A of the four extreme records alone; one that is extreme twice counts twice.
  /// @return 1; 0 for a null array only: one without records gives 1 and leaves the centre as it
  ///         was.
  int Calculate_CenterPar(const PoseSensorDataArray* arr);

  /// Computes the azimuth of every record of an array, in order.
  /// @return 1; 0, and nothing is done, for a null array or without a valid centre.
  int Calculate_Azimuth(const PoseSensorDataArray* arr);

  /// Computes the azimuth of one record about the centre [degrees, above 0 and up to 360 + 1e-6],
  /// and its Forward flag: 1 when it lies at least 1e-6 beyond the azimuth of the record computed
  /// before it, as that stands now, else 0. Without such a record the flag stays.
  ///
  /// Off the axes the angle is counted from the second axis; within 1e-6 counts of an axis it is
  /// set as if counted from the first: a reading on an axis lies 90 degrees away from its
  /// neighbours just off it. An angle below 1e-6 is moved up by 360: a reading that close to the
  /// second axis, yet off it, ends up so little beyond 360.
  ///
  /// @return 1; 0, and nothing is done, for a null record or without a valid centre.
  int Calculate_Azimuth_One(PoseSensorData* rec);

  /// Keeps the first record, and each one that has moved at least 30 counts in the plane, or whose
  /// Tag is at least 3 seconds later, than the last one kept. Across midnight the time counts as
  /// negative.
  /// @return as Filter().
  PoseSensorDataArray* Filter_ByTime(const PoseSensorDataArray* arr) const;

  /// Keeps the records less than 500 counts off the circle and less than 200 counts off its plane.
  /// @return as Filter().
  PoseSensorDataArray* Filter_ByDistance(const PoseSensorDataArray* arr) const;

  /// Keeps the stretches of a sorted array in which not more than a fifth of the records in a
  /// window of ten repeat an azimuth (Forward 0); where more do, the window loses its first record
  /// and moves on by one. The array's last entry is never kept. The array should hold no null
  /// entry: should its last be one, the filter ends before the window that reaches it.
  /// @return as Filter().
  PoseSensorDataArray* Filter_ByAzimuth(const PoseSensorDataArray* arr) const;

  /// The set: the records in the order of their arrival, owned.
  PoseSensorDataArray m_arrRecord;
  /// The current centre.
  PoseSensorCenterParameter m_CenterPar;
  /// The record whose azimuth was computed last; not owned. Only Clear() resets it.
  PoseSensorData* m_pPrevRecord = nullptr;
  /// Width of the coverage sectors [degrees]. Any value is safe: below 1 there are no sectors and
  /// no coverage; beyond 360 there are none either, and IsRecordOK() is 1, as none is missing.
  std::int32_t m_nSectorAngle = 5;

 private:
  detail::Turn<detail::PlaneXZ> AsTurn();
};

}  // namespace tiltpole
