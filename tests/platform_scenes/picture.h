#pragma once

// A picture of one scene, as a backend drew it.

#include <string>
#include <vector>

#include "tiltpole/platform/drawing.h"

namespace scenes {

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<tiltpole::Color> pixels;  ///< row by row from the top
};

/// Where text stands, and in which colour: fonts differ between systems.
struct TextBox {
  tiltpole::Rect box;
  tiltpole::Color color;
};

/// Writes a PPM file; the boxes of its texts go into its comments.
bool Save(const Picture& picture, const std::vector<TextBox>& texts, const std::string& path);

}  // namespace scenes
