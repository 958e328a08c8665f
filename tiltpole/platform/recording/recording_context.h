#pragma once

// A drawing context that draws nothing and writes down what it is told. See recorder.h.

#include <memory>
#include <string>
#include <vector>

#include "tiltpole/platform/drawing.h"

namespace tiltpole {

class RecordingBitmap final : public Bitmap {
 public:
  RecordingBitmap(std::string bitmap_name, Size bitmap_size);
  ~RecordingBitmap() override;

  const std::string name;
  const Size size;
  bool selected = false;
};

/// Each call is a line in the recorder, after the name of the context ("window: ",
/// "memory 1: "), and one in the context's own list, without a name.
class RecordingContext final : public DrawingContext {
 public:
  enum class Kind { Window, Memory };

  explicit RecordingContext(Kind kind = Kind::Memory);
  ~RecordingContext() override;

  std::unique_ptr<DrawingContext> CreateCompatibleContext() override;
  std::unique_ptr<Bitmap> CreateCompatibleBitmap(int width, int height) override;
  Bitmap* SelectBitmap(Bitmap* bitmap) override;
  bool HasScaleOf(const DrawingContext& other) const override;
  Pen SelectPen(const Pen& pen) override;
  Brush SelectBrush(const Brush& brush) override;
  Font SelectFont(Font font) override;
  Color SetTextColor(Color color) override;
  Color SetBackgroundColor(Color color) override;
  BackgroundMode SetBackgroundMode(BackgroundMode mode) override;
  void MoveTo(Point point) override;
  void LineTo(Point point) override;
  void DrawRectangle(const Rect& box) override;
  void DrawEllipse(const Rect& box) override;
  void DrawPolygon(const Point* corners, int count) override;
  void FillRectangle(const Rect& box, const Brush& brush) override;
  void DrawCenteredText(const std::wstring& text, const Rect& box) override;
  void DrawTextAt(Point point, TextClip clip, const Rect* clip_box,
                  const std::wstring& text) override;
  void CopyBlock(const Rect& place, DrawingContext& source, Point source_corner,
                 RasterOperation operation) override;

  const std::string& Name() const { return name_; }
  /// What this context was told, from the start or the last call of this.
  std::vector<std::string> TakeLines();

 private:
  template <typename MakeLine>
  void Write(MakeLine make_line);

  const std::string name_;
  const int scale_;
  std::vector<std::string> lines_;
  RecordingBitmap own_bitmap_;
  RecordingBitmap* bitmap_ = &own_bitmap_;
  static constexpr Pen kFirstPen = SolidPen(1, Rgb(0, 0, 0));
  static constexpr Brush kFirstBrush = {Rgb(255, 255, 255)};

  Pen pen_ = kFirstPen;
  Brush brush_ = kFirstBrush;
  Font font_;
  Color text_color_ = Rgb(0, 0, 0);
  Color background_color_ = Rgb(255, 255, 255);
  BackgroundMode background_mode_ = BackgroundMode::Opaque;
  Point position_;
};

}  // namespace tiltpole
