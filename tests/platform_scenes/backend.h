#pragma once

// What each windowing system gives the scenes.

#include <functional>

#include "platform_scenes/picture.h"
#include "tiltpole/platform/window.h"

namespace scenes {

/// Must live while pictures are taken.
class Session {
 public:
  Session(int& argc, char** argv);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

/// The picture of a drawing in memory, black before.
Picture Drawn(tiltpole::Size size, const std::function<void(tiltpole::DrawingContext&)>& draw);

/// Puts a control into a window with this client area.
void Show(tiltpole::StaticWindow& control, tiltpole::Size size);

/// The parent of a plot to be created. A plot's edges take 3 pixels on each side.
tiltpole::ParentWindow Parent();

/// What a shown control paints into its client area.
Picture Painted(tiltpole::StaticWindow& control);
Picture Painted(tiltpole::ChildWindow& control);

}  // namespace scenes
