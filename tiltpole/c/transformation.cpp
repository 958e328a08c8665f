#include "tiltpole/c/transformation.h"

#include "tiltpole/c/detail/guard.h"
#include "tiltpole/estimation/CMagneticConvert.h"

using namespace tiltpole::detail;

struct tiltpole_transformation {
  tiltpole::CMagneticConvert object;
};

int tiltpole_transformation_create(tiltpole_transformation** transformation) {
  return Create(transformation);
}

void tiltpole_transformation_destroy(tiltpole_transformation* transformation) {
  delete transformation;
}

int tiltpole_transformation_add_pairs(tiltpole_transformation* transformation,
                                      const tiltpole_point_pair* pairs, size_t count) {
  return Guarded([&] {
    if (AnyNull(transformation) || NullArray(pairs, count)) return NullPointer();
    for (size_t i = 0; i < count; ++i) {
      const auto& [source, target] = pairs[i];
      transformation->object.AddPoint(source.x, source.y, target.x, target.y);
    }
    return static_cast<int>(TILTPOLE_OK);
  });
}

int tiltpole_transformation_clear_pairs(tiltpole_transformation* transformation) {
  if (AnyNull(transformation)) return NullPointer();
  transformation->object.ClearPoints();
  return TILTPOLE_OK;
}

int tiltpole_transformation_estimate(tiltpole_transformation* transformation) {
  return Guarded([&] {
    if (AnyNull(transformation)) return NullPointer();
    if (transformation->object.CalFourParameter() == 1) return static_cast<int>(TILTPOLE_OK);
    return Failed(TILTPOLE_NO_SOLUTION, "there are no pairs to estimate from");
  });
}

int tiltpole_transformation_set_parameters(tiltpole_transformation* transformation,
                                           const tiltpole_four_parameters* parameters) {
  if (AnyNull(transformation) || AnyNull(parameters)) return NullPointer();
  transformation->object.SetFourParameter(parameters->offset_x, parameters->offset_y,
                                          parameters->rotation, parameters->scale,
                                          parameters->center_x, parameters->center_y);
  return TILTPOLE_OK;
}

int tiltpole_transformation_get_parameters(const tiltpole_transformation* transformation,
                                           tiltpole_four_parameters* parameters) {
  if (AnyNull(transformation) || AnyNull(parameters)) return NullPointer();
  const auto par = transformation->object.GetFourParameter();
  *parameters = {par.Scale, par.Rotation, par.OffsetX, par.OffsetY, par.CenterX, par.CenterY};
  return TILTPOLE_OK;
}

int tiltpole_transformation_forward(const tiltpole_transformation* transformation,
                                    tiltpole_xy* points, size_t count) {
  if (AnyNull(transformation) || NullArray(points, count)) return NullPointer();
  for (size_t i = 0; i < count; ++i) transformation->object.XYtoXY(points[i].x, points[i].y);
  return TILTPOLE_OK;
}

int tiltpole_transformation_inverse(const tiltpole_transformation* transformation,
                                    tiltpole_xy* points, size_t count) {
  if (AnyNull(transformation) || NullArray(points, count)) return NullPointer();
  for (size_t i = 0; i < count; ++i) transformation->object.XYtoXY1(points[i].x, points[i].y);
  return TILTPOLE_OK;
}
