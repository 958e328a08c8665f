#include "tiltpole/controls/detail/layer.h"

#include <utility>

namespace tiltpole::detail {

bool Layer::CreateOnce(DrawingContext& compatible, const Rect& box) {
  if (Fits(compatible)) return true;
  Discard();
  auto context = compatible.CreateCompatibleContext();
  auto bitmap = compatible.CreateCompatibleBitmap(box.Width(), box.Height());
  if (context == nullptr || bitmap == nullptr) return false;
  previous_ = context->SelectBitmap(bitmap.get());
  context_ = std::move(context);
  bitmap_ = std::move(bitmap);
  return true;
}

void Layer::Discard() {
  if (!Exists()) return;
  context_->SelectBitmap(previous_);
  context_.reset();
  bitmap_.reset();
}

}  // namespace tiltpole::detail
