// The calibration in the parameter file.

#include <new>
#include <string>

#include "tiltpole/persistence/CParameterFile.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"

namespace tiltpole {
namespace {

// Deliberate: a, b, c, d, e and then the centre, which is not the order of the record's fields.
template <typename Parameter, typename Visit>
void VisitCorrection(const std::wstring& name, Parameter& par, const Visit& visit) {
  visit(name + L".a", par.a);
  visit(name + L".b", par.b);
  visit(name + L".c", par.c);
  visit(name + L".d", par.d);
  visit(name + L".e", par.e);
  visit(name + L".x0", par.x0);
  visit(name + L".y0", par.y0);
  visit(name + L".z0", par.z0);
}

}  // namespace

// Shows every entry of the parameter file, in the order of its lines.
template <typename Self, typename Visit>
void CInclineSensor_Position::VisitConfig(Self& self, const Visit& visit) {
  VisitCorrection(L"MagneticA", self.MagneticA, visit);
  VisitCorrection(L"MagneticB", self.MagneticB, visit);
  visit(L"CoorTrans.dX", self.CoorTrans.dX);
  visit(L"CoorTrans.dY", self.CoorTrans.dY);
  visit(L"CoorTrans.dZ", self.CoorTrans.dZ);
  visit(L"MagneticBiasAngle_A", self.MagneticBiasAngle_A);
  visit(L"MagneticBiasAngle_B", self.MagneticBiasAngle_B);
}

void CInclineSensor_Position::WriteConfig(CParameterFile& file) const {
  VisitConfig(*this,
              [&file](const std::wstring& key, double value) { file.WriteDouble(key, value); });
}

int CInclineSensor_Position::ConfigSave(const std::wstring& path) const {
  try {
    CParameterFile file;
    if (file.OpenForWrite(path) == 0) return 0;
    WriteConfig(file);
    // Deliberate: a write error is not reported; ConfigReplace is for hosts that must know.
    file.Close();
    return 1;
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

int CInclineSensor_Position::ConfigReplace(const std::wstring& path) const {
  try {
    CParameterFile file;
    if (file.OpenForReplace(path) == 0) return 0;
    WriteConfig(file);
    return file.Replace();
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

int CInclineSensor_Position::ConfigRead(const std::wstring& path) {
  try {
    CParameterFile file;
    if (file.OpenForRead(path) == 0) return 0;
    CInclineSensor_Position read = *this;
    VisitConfig(read,
                [&file](const std::wstring& key, double& value) { file.ReadDouble(key, value); });
    *this = read;
    return 1;
  } catch (const std::bad_alloc&) {
    return 0;
  }
}

}  // namespace tiltpole
