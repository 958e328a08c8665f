#include "screenshot.h"

#include <cstdint>
#include <fstream>
#include <vector>

bool SaveScreenshot(HWND window, const char* path) {
  RECT client = {};
  GetClientRect(window, &client);
  const HDC shown = GetDC(window);
  const HDC copy = CreateCompatibleDC(shown);
  const HBITMAP bitmap = CreateCompatibleBitmap(shown, client.right, client.bottom);
  const HGDIOBJ before = SelectObject(copy, bitmap);
  BitBlt(copy, 0, 0, client.right, client.bottom, shown, 0, 0, SRCCOPY);
  SelectObject(copy, before);

  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = client.right;
  format.bmiHeader.biHeight = -client.bottom;  // the top row first
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(client.right) *
                                    static_cast<std::size_t>(client.bottom));
  GetDIBits(copy, bitmap, 0, static_cast<UINT>(client.bottom), pixels.data(), &format,
            DIB_RGB_COLORS);
  DeleteObject(bitmap);
  DeleteDC(copy);
  ReleaseDC(window, shown);

  std::ofstream file(path, std::ios::binary);
  file << "P6\n" << client.right << ' ' << client.bottom << "\n255\n";
  for (const std::uint32_t pixel : pixels) {
    file.put(static_cast<char>(pixel >> 16U & 0xFFU));
    file.put(static_cast<char>(pixel >> 8U & 0xFFU));
    file.put(static_cast<char>(pixel & 0xFFU));
  }
  return file.flush().good();
}
