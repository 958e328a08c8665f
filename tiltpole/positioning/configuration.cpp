// The calibration in the parameter file.

#include <cstddef>
#include <new>
#include <string>

#include "tiltpole/persistence/CParameterFile.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"
#include "tiltpole/positioning/parameter_keys.h"

namespace tiltpole {
namespace {

template <typename Parameter, typename Show>
void ShowCorrection(Parameter& par, const Show& show) {
  for (auto* value : {&par.a, &par.b, &par.c, &par.d, &par.e, &par.x0, &par.y0, &par.z0}) {
    show(*value);
  }
}

}  // namespace

// Shows every entry of the parameter file, in the order of kParameterKeys.
template <typename Self, typename Visit>
void CInclineSensor_Position::VisitConfig(Self& self, const Visit& visit) {
  std::size_t entry = 0;
  const auto show = [&](auto& value) { visit(kParameterKeys[entry++], value); };
  ShowCorrection(self.MagneticA, show);
  ShowCorrection(self.MagneticB, show);
  for (auto* value : {&self.CoorTrans.dX, &self.CoorTrans.dY, &self.CoorTrans.dZ,
                      &self.MagneticBiasAngle_A, &self.MagneticBiasAngle_B}) {
    show(*value);
  }
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
