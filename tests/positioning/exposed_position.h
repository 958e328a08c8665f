#pragma once

// The class under test with its protected operations and members in reach.

#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace tiltpole_test {

class ExposedPosition : public tiltpole::CInclineSensor_Position {
 public:
  using CInclineSensor_Position::CalculateYaw_A;
  using CInclineSensor_Position::CalculateYaw_B;
  using CInclineSensor_Position::CoorTrans;
  using CInclineSensor_Position::GetDistance;
  using CInclineSensor_Position::GetInclinePoint;
  using CInclineSensor_Position::GetSolvePoint;
  using CInclineSensor_Position::LastInclineX;
  using CInclineSensor_Position::LastInclineY;
  using CInclineSensor_Position::LastMagneticX_A;
  using CInclineSensor_Position::LastMagneticY_A;
  using CInclineSensor_Position::LastMagneticZ_A;
  using CInclineSensor_Position::MagneticA;
  using CInclineSensor_Position::MagneticB;
  using CInclineSensor_Position::MagneticBiasAngle_A;
  using CInclineSensor_Position::MagneticBiasAngle_B;
  using CInclineSensor_Position::MagneticInterference;
  using CInclineSensor_Position::PoleProjectOffset;
  using CInclineSensor_Position::PoleTriangleAngle;
  using CInclineSensor_Position::Stationary;
};

}  // namespace tiltpole_test
