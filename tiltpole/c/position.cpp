#include "tiltpole/c/position.h"

#include <string>

#include "tiltpole/c/detail/guard.h"
#include "tiltpole/c/detail/records.h"
#include "tiltpole/platform/text.h"
#include "tiltpole/positioning/CInclineSensor_Position.h"

using namespace tiltpole::detail;

struct tiltpole_position {
  tiltpole::CInclineSensor_Position object;
};

namespace {

template <class Operation>
int OnFile(const void* handle, const char* path, const char* failure, const Operation& operation) {
  return Guarded([&] {
    if (AnyNull(handle, path)) return NullPointer();
    if (operation(WideText(path)) != 1) return Failed(TILTPOLE_FILE_ERROR, failure);
    return static_cast<int>(TILTPOLE_OK);
  });
}

}  // namespace

int tiltpole_position_create(tiltpole_position** position) { return Create(position); }

void tiltpole_position_destroy(tiltpole_position* position) { delete position; }

int tiltpole_position_set_correction(tiltpole_position* position, int magnetometer,
                                     const tiltpole_correction* correction) {
  if (AnyNull(position, correction)) return NullPointer();
  if (!IsOneOfTwo(magnetometer)) return BadMagnetometer();
  if (magnetometer == TILTPOLE_MAGNETOMETER_A) {
    position->object.SetMagneticCorrectPar_A(FromC(*correction));
  } else {
    position->object.SetMagneticCorrectPar_B(FromC(*correction));
  }
  return TILTPOLE_OK;
}

int tiltpole_position_get_correction(const tiltpole_position* position, int magnetometer,
                                     tiltpole_correction* correction) {
  if (AnyNull(position, correction)) return NullPointer();
  if (!IsOneOfTwo(magnetometer)) return BadMagnetometer();
  *correction =
      ToC(magnetometer == TILTPOLE_MAGNETOMETER_A ? position->object.GetMagneticCorrectPar_A()
                                                  : position->object.GetMagneticCorrectPar_B());
  return TILTPOLE_OK;
}

int tiltpole_position_set_translation(tiltpole_position* position,
                                      const tiltpole_translation* translation) {
  if (AnyNull(position, translation)) return NullPointer();
  position->object.SetMagneticTranslationPar(FromC(*translation));
  return TILTPOLE_OK;
}

int tiltpole_position_get_translation(const tiltpole_position* position,
                                      tiltpole_translation* translation) {
  if (AnyNull(position, translation)) return NullPointer();
  *translation = ToC(position->object.GetMagneticTranslationPar());
  return TILTPOLE_OK;
}

int tiltpole_position_set_bias_angle(tiltpole_position* position, int magnetometer,
                                     double degrees) {
  if (AnyNull(position)) return NullPointer();
  if (!IsOneOfTwo(magnetometer)) return BadMagnetometer();
  if (magnetometer == TILTPOLE_MAGNETOMETER_A) {
    position->object.SetMagneticBiasAngle_A(degrees);
  } else {
    position->object.SetMagneticBiasAngle_B(degrees);
  }
  return TILTPOLE_OK;
}

int tiltpole_position_get_bias_angle(const tiltpole_position* position, int magnetometer,
                                     double* degrees) {
  if (AnyNull(position, degrees)) return NullPointer();
  if (!IsOneOfTwo(magnetometer)) return BadMagnetometer();
  *degrees = magnetometer == TILTPOLE_MAGNETOMETER_A ? position->object.GetMagneticBiasAngle_A()
                                                     : position->object.GetMagneticBiasAngle_B();
  return TILTPOLE_OK;
}

int tiltpole_position_read(tiltpole_position* position, const char* path) {
  return OnFile(position, path, "the parameter file could not be read",
                [&](const std::wstring& wide) { return position->object.ConfigRead(wide); });
}

int tiltpole_position_save(const tiltpole_position* position, const char* path) {
  return OnFile(position, path, "the parameter file could not be opened for writing",
                [&](const std::wstring& wide) { return position->object.ConfigSave(wide); });
}

int tiltpole_position_replace(const tiltpole_position* position, const char* path) {
  return OnFile(position, path, "the parameter file could not be replaced; it is as it was",
                [&](const std::wstring& wide) { return position->object.ConfigReplace(wide); });
}

int tiltpole_position_solve(tiltpole_position* position, tiltpole_sample* samples, size_t count,
                            double pole_length, tiltpole_measurement* results) {
  if (AnyNull(position) || NullArray(samples, count) || NullArray(results, count)) {
    return NullPointer();
  }
  for (size_t i = 0; i < count; ++i) {
    auto record = FromC(samples[i]);
    tiltpole::xyhCoordinate tip;
    position->object.Position(record, pole_length, tip);
    samples[i] = ToC(record);
    results[i] = {ToC(tip), position->object.IsStationary(),
                  position->object.IsMagneticInterference()};
  }
  return TILTPOLE_OK;
}

int tiltpole_position_solve_with_heading(tiltpole_position* position, int solution,
                                         const tiltpole_xyh* antenna, const tiltpole_sample* sample,
                                         double pole_length, tiltpole_xyh* tip) {
  if (AnyNull(position, antenna) || AnyNull(sample, tip)) return NullPointer();
  const auto origin = FromC(*antenna);
  const auto record = FromC(*sample);
  auto& object = position->object;
  tiltpole::xyhCoordinate result;
  int solved = 0;
  switch (solution) {
    case TILTPOLE_SOLUTION_GEOMETRY_A:
      solved = object.Position_Geometry_A(origin, record, pole_length, result);
      break;
    case TILTPOLE_SOLUTION_GEOMETRY_B:
      solved = object.Position_Geometry_B(origin, record, pole_length, result);
      break;
    case TILTPOLE_SOLUTION_MATH:
      solved = object.Position_Math(origin, record, pole_length, result);
      break;
    default:
      return Failed(TILTPOLE_BAD_ARGUMENT, "a solution is 0 (A), 1 (B) or 2 (three spheres)");
  }
  if (solved != 1) return Failed(TILTPOLE_NO_SOLUTION, "the three spheres do not meet");
  *tip = ToC(result);
  return TILTPOLE_OK;
}

int tiltpole_angle_to_horizontal(double incline_x, double incline_y, double* degrees) {
  if (AnyNull(degrees)) return NullPointer();
  *degrees = tiltpole::CInclineSensor_Position().GetAngleofPoletoHorizontal(incline_x, incline_y);
  return TILTPOLE_OK;
}
