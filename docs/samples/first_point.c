/* From one sample to a measured point, in C. */

#include <stdio.h>

#include "tiltpole/tiltpole_c.h"

int main(void) {
  tiltpole_position* position = NULL;
  tiltpole_sample sample;
  tiltpole_measurement measured;
  if (tiltpole_position_create(&position) != TILTPOLE_OK) {
    fprintf(stderr, "%s\n", tiltpole_last_error());
    return 1;
  }
  if (tiltpole_position_read(position, "pole.txt") != TILTPOLE_OK) {
    fprintf(stderr, "%s: the readings are taken as they are\n", tiltpole_last_error());
  }
  tiltpole_sample_default(&sample);
  sample.incline_x = 3.0;
  sample.incline_y = 4.0;
  sample.magnetic_a[0] = 2000.0;
  sample.magnetic_a[1] = 500.0;
  sample.magnetic_a[2] = -4500.0;
  sample.magnetic_b[0] = -2000.0;
  sample.magnetic_b[1] = -500.0;
  sample.magnetic_b[2] = -4500.0;
  tiltpole_position_solve(position, &sample, 1, 2.0, &measured);
  printf("heading %.1f, the tip lies %.3f %.3f %.3f from the antenna\n", sample.yaw_a,
         measured.offset.x, measured.offset.y, measured.offset.h);
  tiltpole_position_destroy(position);
  return 0;
}
