#pragma once

/// @file
/// What compass and gauges have in common: a face that is drawn once and kept, a value and marks
/// that are drawn over it, and the way to the window without flicker.

#include <functional>
#include <vector>

#include "tiltpole/controls/detail/layer.h"
#include "tiltpole/platform/window.h"

namespace tiltpole::detail {

/// The style bit that PreSubclassWindow adds to the windows of compass and gauges: SS_ENDELLIPSIS,
/// which asks a native label to shorten its text. These controls paint over any text.
constexpr std::uint32_t kLabelStyle = 0x4000;

/// Where the scale's labels stand: a text in the upper half of a box of twice this size.
constexpr int kLabelReach = 17;

/// Colours of the face.
constexpr Color kDialBlue = Rgb(0, 153, 255);
constexpr Color kDialYellow = Rgb(255, 204, 0);
constexpr Color kDialGround = Rgb(204, 255, 102);
constexpr Color kTickColor = Rgb(255, 0, 255);
constexpr Color kNeedleColor = Rgb(255, 0, 0);
constexpr Color kFixColor = Rgb(0, 255, 0);

class KeptDial {
 public:
  using FaceDrawing = std::function<void(DrawingContext* face, const Rect& client)>;
  using FrontDrawing = std::function<void(DrawingContext* buffer)>;

  /// @param[in] window  the control itself, which outlives this object
  /// @param[in] face    draws what is kept
  /// @param[in] front   draws value and marks over a copy of the face
  KeptDial(StaticWindow& window, FaceDrawing face, FrontDrawing front);

  /// The whole answer to a paint message.
  void Paint();

  /// Brings value and marks to the window at once, if there is a face; else the next paint does.
  void ShowAtOnce();

  /// Discards the face, so that the next paint draws it anew.
  void Reconstruct();

  /// Adds a mark unless there is one of the same number, and draws it alone onto the window.
  void AddFix(int fix, const FrontDrawing& draw);

  /// Removes all marks; they vanish with the next paint.
  void ClearFixes();

  const std::vector<int>& Fixes() const { return fixes_; }

  double value = 0.0;
  Color meter_back = Rgb(102, 255, 255);

 private:
  void DrawFace();
  void ShowOn(DrawingContext& window_context);

  StaticWindow& window_;
  const FaceDrawing draw_face_;
  const FrontDrawing draw_front_;
  Rect client_;
  Layer face_;
  std::vector<int> fixes_;
};

/// Gets a face ready for its scale: bold blue labels without a background of their own.
void SetScaleText(DrawingContext& face);

/// The font of the scale's labels.
Font ScaleFont();

}  // namespace tiltpole::detail
