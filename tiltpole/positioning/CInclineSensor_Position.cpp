#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace tiltpole {

// Deliberate: a new correction makes the old bias angle meaningless, so setting one resets the
// other. A host sets the correction first and the bias angle after it.
void CInclineSensor_Position::SetMagneticCorrectPar_A(Incline_MagneticCorrectParameter par) {
  MagneticA = par;
  MagneticBiasAngle_A = 0.0;
}

void CInclineSensor_Position::SetMagneticCorrectPar_B(Incline_MagneticCorrectParameter par) {
  MagneticB = par;
  MagneticBiasAngle_B = 0.0;
}

Incline_MagneticCorrectParameter CInclineSensor_Position::GetMagneticCorrectPar_A() const {
  return MagneticA;
}

Incline_MagneticCorrectParameter CInclineSensor_Position::GetMagneticCorrectPar_B() const {
  return MagneticB;
}

void CInclineSensor_Position::SetMagneticTranslationPar(Incline_MagneticTranslationParameter par) {
  CoorTrans = par;
}

Incline_MagneticTranslationParameter CInclineSensor_Position::GetMagneticTranslationPar() const {
  return CoorTrans;
}

void CInclineSensor_Position::SetMagneticBiasAngle_A(double bias) { MagneticBiasAngle_A = bias; }

void CInclineSensor_Position::SetMagneticBiasAngle_B(double bias) { MagneticBiasAngle_B = bias; }

double CInclineSensor_Position::GetMagneticBiasAngle_A() const { return MagneticBiasAngle_A; }

double CInclineSensor_Position::GetMagneticBiasAngle_B() const { return MagneticBiasAngle_B; }

int CInclineSensor_Position::IsStationary() const { return Stationary; }

int CInclineSensor_Position::IsMagneticInterference() const { return MagneticInterference; }

}  // namespace tiltpole
