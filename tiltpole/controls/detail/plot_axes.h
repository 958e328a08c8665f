#pragma once

#include "tiltpole/platform/drawing.h"

namespace tiltpole::detail {

// The two arrows in a plot's lower left corner and their labels, which tell its plane.
void DrawAxes(DrawingContext& face, const Rect& client, const wchar_t* vertical_label);

}  // namespace tiltpole::detail
