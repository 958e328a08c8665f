#pragma once

/// @file
/// An off-screen picture together with the context that draws on it.

#include <memory>

#include "tiltpole/platform/drawing.h"

namespace tiltpole::detail {

/// A memory context with a bitmap of its own selected. Either both exist or neither does.
class Layer {
 public:
  Layer() = default;
  ~Layer() { Discard(); }
  Layer(const Layer&) = delete;
  Layer& operator=(const Layer&) = delete;

  bool Exists() const { return context_ != nullptr; }

  /// Whether the layer exists and can be copied to a context as it is.
  bool Fits(const DrawingContext& target) const { return Exists() && context_->HasScaleOf(target); }

  /// Makes the layer, black and of the size of a box, unless it exists. One that no longer fits the
  /// context is discarded before.
  /// @return whether it exists now; not when the system has nothing left to give
  bool CreateOnce(DrawingContext& compatible, const Rect& box);

  /// Brings the layer back to where it was before its creation.
  void Discard();

  /// Null while the layer does not exist.
  DrawingContext* Context() const { return context_.get(); }

 private:
  std::unique_ptr<DrawingContext> context_;
  std::unique_ptr<Bitmap> bitmap_;
  Bitmap* previous_ = nullptr;
};

}  // namespace tiltpole::detail
