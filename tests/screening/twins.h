#pragma once

// The two screenings for tests that hold for both, with their protected members opened, and how a
// reading in the plane of each is written into a record.

#include <cmath>
#include <deque>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tiltpole/screening/CInclineSensor_Filter_XY.h"
#include "tiltpole/screening/CInclineSensor_Filter_XZ.h"

namespace tiltpole::test {

template <class Base>
struct Opened : Base {
  using Base::Calculate_Azimuth;
  using Base::Calculate_Azimuth_One;
  using Base::Calculate_CenterPar;
  using Base::Filter_ByAzimuth;
  using Base::Filter_ByDistance;
  using Base::Filter_ByTime;
  using Base::m_arrRecord;
  using Base::m_CenterPar;
  using Base::m_nSectorAngle;
  using Base::m_pPrevRecord;
};

using ScreeningXY = Opened<CInclineSensor_Filter_XY>;
using ScreeningXZ = Opened<CInclineSensor_Filter_XZ>;

struct XY {
  using Screening = ScreeningXY;
  static constexpr const char* kName = "XY";

  static PoseSensorData Reading(double first, double second, double third = 0.0) {
    PoseSensorData rec;
    rec.MagneticX_A = first;
    rec.MagneticY_A = second;
    rec.MagneticZ_A = third;
    return rec;
  }
  static PoseSensorCenterParameter Center(double first, double second, double third,
                                          double radius) {
    return {1, first, second, third, radius};
  }
};

struct XZ {
  using Screening = ScreeningXZ;
  static constexpr const char* kName = "XZ";

  static PoseSensorData Reading(double first, double second, double third = 0.0) {
    PoseSensorData rec;
    rec.MagneticX_A = first;
    rec.MagneticZ_A = second;
    rec.MagneticY_A = third;
    return rec;
  }
  static PoseSensorCenterParameter Center(double first, double second, double third,
                                          double radius) {
    return {1, first, third, second, radius};
  }
};

using BothTwins = ::testing::Types<XY, XZ>;

struct TwinNames {
  template <class Twin>
  static std::string GetName(int) {
    return Twin::kName;
  }
};

// A reading on the circle of the given radius about the origin, at an azimuth off the axes.
template <class Twin>
PoseSensorData OnCircle(double azimuth, double radius = 1000.0, double third = 0.0) {
  const double radians = azimuth * 3.141592653589793 / 180.0;
  return Twin::Reading(radius * std::sin(radians), radius * std::cos(radians), third);
}

// Records on the stack of a test and an array that points at them.
class Records {
 public:
  Records() = default;
  Records(std::initializer_list<PoseSensorData> records) {
    for (const PoseSensorData& rec : records) Add(rec);
  }
  // A copy's array would point at the records of its model.
  Records(Records&&) = default;
  Records& operator=(Records&&) = default;

  PoseSensorData& Add(const PoseSensorData& rec) {
    m_held.push_back(rec);
    m_array.Add(&m_held.back());
    return m_held.back();
  }
  void AddNull() { m_array.Add(nullptr); }

  PoseSensorData& operator[](std::size_t i) { return m_held[i]; }
  PoseSensorDataArray* Array() { return &m_array; }

  // The places, counted among the records added, of what an array holds; -1 for null.
  std::vector<int> PlacesOf(const PoseSensorDataArray& arr) const {
    std::vector<int> places;
    for (const PoseSensorData* rec : arr) places.push_back(PlaceOf(rec));
    return places;
  }

 private:
  int PlaceOf(const PoseSensorData* rec) const {
    for (std::size_t i = 0; i < m_held.size(); ++i)
      if (&m_held[i] == rec) return static_cast<int>(i);
    return -1;
  }

  std::deque<PoseSensorData> m_held;
  PoseSensorDataArray m_array;
};

using Owned = std::unique_ptr<PoseSensorDataArray>;

}  // namespace tiltpole::test
