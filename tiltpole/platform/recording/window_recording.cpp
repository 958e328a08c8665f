#include "tiltpole/platform/recording/window_recording.h"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "tiltpole/platform/recording/recorder.h"

namespace tiltpole {
namespace {

// Where the lines are not kept, they are not even made: so giving back needs no memory.
void Write(std::string_view line) {
  if (Recorder::Instance().keeps_lines) Recorder::Instance().Write("window: " + std::string(line));
}

std::string Hexadecimal(std::uint32_t bits) {
  std::ostringstream stream;
  stream << "0x" << std::hex << bits;
  return stream.str();
}

// A client edge of two pixels and a static edge of one stand between the window and its client
// area on either side.
Size ClientSize(const Rect& place, std::uint32_t extended_style) {
  const int edges =
      ((extended_style & 0x200U) != 0 ? 4 : 0) + ((extended_style & 0x20000U) != 0 ? 2 : 0);
  return {std::max(0, detail::SaturatedDifference(place.Width(), edges)),
          std::max(0, detail::SaturatedDifference(place.Height(), edges))};
}

}  // namespace

RecordingWindow::RecordingWindow() = default;
RecordingWindow::~RecordingWindow() = default;

void RecordingWindow::OnPaint() {
  BeginPaint();
  EndPaint();
}

int RecordingWindow::OnEraseBkgnd(DrawingContext* /*context*/) { return 1; }

void RecordingWindow::PreSubclassWindow() {}

Size RecordingWindow::PreferredSize() const { return {200, 200}; }

std::wstring RecordingWindow::AccessibleName() const { return {}; }

std::wstring RecordingWindow::AccessibleValue() const { return {}; }

Rect RecordingWindow::GetClientRect() const { return {0, 0, client_.width, client_.height}; }

DrawingContext* RecordingWindow::BeginPaint() {
  Write("begin paint");
  invalid_ = false;
  erase_due_ = false;
  paint_context_ = std::make_unique<RecordingContext>(RecordingContext::Kind::Window);
  return paint_context_.get();
}

void RecordingWindow::EndPaint() {
  paint_context_.reset();
  Write("end paint");
}

DrawingContext* RecordingWindow::TakeContext() {
  if (!exists_ || !gives_contexts) return nullptr;
  Recorder& recorder = Recorder::Instance();
  if (taken_context_ != nullptr) recorder.WriteMisuse("a second context taken");
  Write("take context");
  taken_context_ = std::make_unique<RecordingContext>(RecordingContext::Kind::Window);
  ++recorder.taken_contexts;
  return taken_context_.get();
}

void RecordingWindow::ReleaseContext(DrawingContext* context) {
  if (context == nullptr) return;
  Recorder& recorder = Recorder::Instance();
  if (context != taken_context_.get()) recorder.WriteMisuse("a context released that is not taken");
  taken_context_.reset();
  --recorder.taken_contexts;
  Write("release context");
}

void RecordingWindow::Invalidate(bool erase) {
  if (!exists_) return;
  Write(erase ? "invalidate with erase" : "invalidate without erase");
  invalid_ = true;
  erase_due_ = erase_due_ || erase;
}

void RecordingWindow::AddStyle(std::uint32_t bits) { style_ |= bits; }

bool RecordingWindow::PaintIfInvalid() {
  if (!invalid_) return false;
  if (erase_due_) {
    RecordingContext context(RecordingContext::Kind::Window);
    Write(OnEraseBkgnd(&context) != 0 ? "erased" : "not erased");
  }
  OnPaint();
  return true;
}

void RecordingWindow::Exist(Size client) {
  exists_ = true;
  client_ = client;
  invalid_ = true;
  erase_due_ = true;
}

void StaticWindow::Attach(Size client) {
  Exist(client);
  PreSubclassWindow();
}

int ChildWindow::OnEraseBkgnd(DrawingContext* /*context*/) { return 0; }

bool ChildWindow::CreateChild(const wchar_t* window_class, std::uint32_t extended_style,
                              std::uint32_t style, const Rect& place, ParentWindow parent,
                              unsigned id) {
  if (!can_be_created || Exists()) return false;
  const std::wstring name = window_class;
  Write("create class " + std::string(name.begin(), name.end()) + " styles " +
        Hexadecimal(extended_style) + " " + Hexadecimal(style) + " at (" +
        std::to_string(place.left) + "," + std::to_string(place.top) + ") of " +
        std::to_string(place.Width()) + "x" + std::to_string(place.Height()) + " in " +
        (parent == nullptr ? "none" : parent) + " id " + std::to_string(id));
  style_ = style;
  Exist(ClientSize(place, extended_style));
  PreSubclassWindow();
  return true;
}

}  // namespace tiltpole
