#pragma once

// Drawing contexts on a window's client area: for a paint, between paints, and for a picture of the
// window that somebody asked for. Each gives back to the system what it took.

#include <memory>

#include <windows.h>

#include "tiltpole/platform/drawing.h"

namespace tiltpole::detail {

/// From BeginPaint to EndPaint. Never null: without a device the drawing comes to nothing.
std::unique_ptr<DrawingContext> MakePaintContext(HWND window);

/// From GetDC to ReleaseDC. Null when the system has nothing left to give.
std::unique_ptr<DrawingContext> MakeClientContext(HWND window);

/// On a device that came with a message and stays with its sender.
std::unique_ptr<DrawingContext> MakeGuestContext(HDC device);

}  // namespace tiltpole::detail
