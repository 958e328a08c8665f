// The sizes that the controls ask a layout for: those of the dialogs that they were made for.

#include <gtest/gtest.h>

#include "tiltpole/controls/CGraphCompass.h"
#include "tiltpole/controls/CGraphIncline_Left.h"
#include "tiltpole/controls/CGraphIncline_Right.h"
#include "tiltpole/controls/CGraphMagnetic_XY.h"
#include "tiltpole/controls/CGraphMagnetic_XZ.h"

namespace {

template <typename Control>
void ExpectPreferredSize(int width, int height) {
  const Control control;
  EXPECT_EQ(control.PreferredSize().width, width);
  EXPECT_EQ(control.PreferredSize().height, height);
}

TEST(PreferredSize, IsASquareForTheCompassAndThePlots) {
  ExpectPreferredSize<tiltpole::CGraphCompass>(205, 205);
  ExpectPreferredSize<tiltpole::CGraphMagnetic_XY>(205, 205);
  ExpectPreferredSize<tiltpole::CGraphMagnetic_XZ>(205, 205);
}

TEST(PreferredSize, IsHalfAsWideForTheGauges) {
  ExpectPreferredSize<tiltpole::CGraphIncline_Left>(100, 205);
  ExpectPreferredSize<tiltpole::CGraphIncline_Right>(100, 205);
}

}  // namespace
