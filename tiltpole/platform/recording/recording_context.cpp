#include "tiltpole/platform/recording/recording_context.h"

#include <utility>

#include "tiltpole/platform/recording/recorder.h"

namespace tiltpole {
namespace {

Recorder& TheRecorder() { return Recorder::Instance(); }

std::string Show(Color color) {
  return "RGB(" + std::to_string(color.red) + "," + std::to_string(color.green) + "," +
         std::to_string(color.blue) + ")";
}

std::string Show(Point point) {
  return "(" + std::to_string(point.x) + "," + std::to_string(point.y) + ")";
}

std::string Show(const Rect& box) {
  return "(" + std::to_string(box.left) + "," + std::to_string(box.top) + "," +
         std::to_string(box.right) + "," + std::to_string(box.bottom) + ")";
}

std::string Show(const Font& font) {
  if (font.face.empty()) return "font of the system";
  return "font " + std::string(font.face.begin(), font.face.end()) + " height " +
         std::to_string(font.height) + " weight " + std::to_string(font.weight) + " family " +
         std::to_string(font.pitch_and_family);
}

std::string Show(const std::wstring& text) {
  return "\"" + std::string(text.begin(), text.end()) + "\"";
}

std::string NameOfNewContext(RecordingContext::Kind kind) {
  if (kind == RecordingContext::Kind::Window) return "window";
  return "memory " + std::to_string(TheRecorder().next_context++);
}

// What a context was made with does not count as a bitmap that someone has to delete.
constexpr const char* kOwnBitmap = "own bitmap";

}  // namespace

// Where the lines are not kept, they are not even made.
template <typename MakeLine>
void RecordingContext::Write(MakeLine make_line) {
  ++TheRecorder().calls;
  if (!TheRecorder().keeps_lines) return;
  lines_.push_back(make_line());
  TheRecorder().Write(name_ + ": " + lines_.back());
}

RecordingBitmap::RecordingBitmap(std::string bitmap_name, Size bitmap_size)
    : name(std::move(bitmap_name)), size(bitmap_size) {
  if (name != kOwnBitmap) ++TheRecorder().living_bitmaps;
}

RecordingBitmap::~RecordingBitmap() {
  if (name == kOwnBitmap) return;
  --TheRecorder().living_bitmaps;
  if (selected) TheRecorder().WriteMisuse(name + " deleted while it is selected");
  if (TheRecorder().keeps_lines) TheRecorder().Write("delete " + name);
}

RecordingContext::RecordingContext(Kind kind)
    : name_(NameOfNewContext(kind)),
      scale_(TheRecorder().screen_scale),
      own_bitmap_(kOwnBitmap, {1, 1}) {
  own_bitmap_.selected = true;
  ++TheRecorder().living_contexts;
}

RecordingContext::~RecordingContext() {
  --TheRecorder().living_contexts;
  if (!(pen_ == kFirstPen)) TheRecorder().WriteMisuse(name_ + " deleted with a pen selected");
  if (!(brush_ == kFirstBrush)) TheRecorder().WriteMisuse(name_ + " deleted with a brush selected");
  if (!(font_ == Font{})) TheRecorder().WriteMisuse(name_ + " deleted with a font selected");
  bitmap_->selected = false;
  if (name_ != "window" && TheRecorder().keeps_lines) TheRecorder().Write("delete " + name_);
}

std::unique_ptr<DrawingContext> RecordingContext::CreateCompatibleContext() {
  if (!TheRecorder().has_resources) return nullptr;
  auto context = std::make_unique<RecordingContext>();
  Write([&] { return "create " + context->Name(); });
  return context;
}

std::unique_ptr<Bitmap> RecordingContext::CreateCompatibleBitmap(int width, int height) {
  if (!TheRecorder().has_resources || !TheRecorder().has_bitmaps) return nullptr;
  auto bitmap = std::make_unique<RecordingBitmap>(
      "bitmap " + std::to_string(TheRecorder().next_bitmap++), Size{width, height});
  Write([&] {
    return "create " + bitmap->name + " of " + std::to_string(width) + "x" + std::to_string(height);
  });
  return bitmap;
}

Bitmap* RecordingContext::SelectBitmap(Bitmap* bitmap) {
  auto* const selected = static_cast<RecordingBitmap*>(bitmap);
  if (selected == nullptr) return bitmap_;
  if (name_ == "window") TheRecorder().WriteMisuse("a bitmap selected into the window");
  if (selected->selected) TheRecorder().WriteMisuse(selected->name + " selected twice");
  Write([&] { return "select " + selected->name; });
  bitmap_->selected = false;
  selected->selected = true;
  return std::exchange(bitmap_, selected);
}

bool RecordingContext::HasScaleOf(const DrawingContext& other) const {
  return scale_ == static_cast<const RecordingContext&>(other).scale_;
}

Pen RecordingContext::SelectPen(const Pen& pen) {
  Write([&] {
    return pen.style == Pen::Style::Null
               ? "pen null"
               : "pen solid " + std::to_string(pen.width) + " " + Show(pen.color);
  });
  return std::exchange(pen_, pen);
}

Brush RecordingContext::SelectBrush(const Brush& brush) {
  Write([&] { return "brush " + Show(brush.color); });
  return std::exchange(brush_, brush);
}

Font RecordingContext::SelectFont(Font font) {
  Write([&] { return Show(font); });
  return std::exchange(font_, std::move(font));
}

Color RecordingContext::SetTextColor(Color color) {
  Write([&] { return "text colour " + Show(color); });
  return std::exchange(text_color_, color);
}

Color RecordingContext::SetBackgroundColor(Color color) {
  Write([&] { return "background colour " + Show(color); });
  return std::exchange(background_color_, color);
}

BackgroundMode RecordingContext::SetBackgroundMode(BackgroundMode mode) {
  Write([&] {
    return mode == BackgroundMode::Opaque ? "background opaque" : "background transparent";
  });
  return std::exchange(background_mode_, mode);
}

void RecordingContext::MoveTo(Point point) { position_ = point; }

void RecordingContext::LineTo(Point point) {
  Write([&] { return "line " + Show(position_) + "-" + Show(point); });
  position_ = point;
}

void RecordingContext::DrawRectangle(const Rect& box) {
  Write([&] { return "rectangle " + Show(box); });
}

void RecordingContext::DrawEllipse(const Rect& box) {
  Write([&] { return "ellipse " + Show(box); });
}

void RecordingContext::DrawPolygon(const Point* corners, int count) {
  std::string line = "polygon";
  for (int i = 0; i < count; ++i) line += " " + Show(corners[i]);
  Write([&] { return line; });
}

void RecordingContext::FillRectangle(const Rect& box, const Brush& brush) {
  Write([&] { return "fill " + Show(box) + " " + Show(brush.color); });
}

void RecordingContext::DrawCenteredText(const std::wstring& text, const Rect& box) {
  Write([&] { return "text " + Show(text) + " centred in " + Show(box); });
}

void RecordingContext::DrawTextAt(Point point, TextClip clip, const Rect* clip_box,
                                  const std::wstring& text) {
  std::string line = "text " + Show(text) + " at " + Show(point);
  if (clip == TextClip::Clipped) line += " clipped";
  if (clip_box != nullptr) line += " to " + Show(*clip_box);
  Write([&] { return line; });
}

void RecordingContext::CopyBlock(const Rect& place, DrawingContext& source, Point source_corner,
                                 RasterOperation operation) {
  Write([&] {
    return (operation == RasterOperation::Copy ? "copy to " : "or onto ") + Show(place) + " from " +
           static_cast<RecordingContext&>(source).Name() + " " + Show(source_corner);
  });
}

std::vector<std::string> RecordingContext::TakeLines() { return std::exchange(lines_, {}); }

Color SystemButtonFaceColor() { return Rgb(240, 240, 240); }

}  // namespace tiltpole
