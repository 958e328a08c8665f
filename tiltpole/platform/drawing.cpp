#include "tiltpole/platform/drawing.h"

namespace tiltpole {

Bitmap::Bitmap() = default;
Bitmap::~Bitmap() = default;

DrawingContext::DrawingContext() = default;
DrawingContext::~DrawingContext() = default;

}  // namespace tiltpole
