#include "tiltpole/controls/detail/kept_dial.h"

#include <algorithm>
#include <utility>

namespace tiltpole::detail {

KeptDial::KeptDial(StaticWindow& window, FaceDrawing face, FrontDrawing front)
    : window_(window), draw_face_(std::move(face)), draw_front_(std::move(front)) {}

void KeptDial::Paint() {
  const PaintContext<StaticWindow> paint(window_);
  client_ = window_.GetClientRect();
  if (!face_.Fits(*paint) && face_.CreateOnce(*paint, client_)) DrawFace();
  if (face_.Exists()) ShowOn(*paint);
}

// Half a face must not be kept.
void KeptDial::DrawFace() {
  try {
    draw_face_(face_.Context(), client_);
  } catch (...) {
    face_.Discard();
    throw;
  }
}

void KeptDial::ShowAtOnce() {
  if (!face_.Exists() || client_.Width() <= 0) return;
  const TakenContext<StaticWindow> window_context(window_);
  if (window_context.get() != nullptr) ShowOn(*window_context.get());
}

void KeptDial::ShowOn(DrawingContext& window_context) {
  Layer buffer;
  if (!buffer.CreateOnce(window_context, client_)) return;
  buffer.Context()->CopyBlock(client_, *face_.Context(), {0, 0}, RasterOperation::Copy);
  draw_front_(buffer.Context());
  window_context.CopyBlock(client_, *buffer.Context(), {0, 0}, RasterOperation::Copy);
}

void KeptDial::Reconstruct() {
  face_.Discard();
  window_.Invalidate(true);
}

void KeptDial::AddFix(int fix, const FrontDrawing& draw) {
  if (std::find(fixes_.begin(), fixes_.end(), fix) != fixes_.end()) return;
  fixes_.push_back(fix);
  const TakenContext<StaticWindow> window_context(window_);
  if (window_context.get() != nullptr) draw(window_context.get());
}

void KeptDial::ClearFixes() {
  fixes_.clear();
  window_.Invalidate(false);
}

Font ScaleFont() { return {L"Tahoma", 18, 700, 0}; }

void SetScaleText(DrawingContext& face) {
  face.SetBackgroundMode(BackgroundMode::Transparent);
  face.SetTextColor(Rgb(0, 0, 255));
}

}  // namespace tiltpole::detail
