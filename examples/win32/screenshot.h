#pragma once

#include <windows.h>

/// Writes what a window's client area shows to a PPM file.
bool SaveScreenshot(HWND window, const char* path);
