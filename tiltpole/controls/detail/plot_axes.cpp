#include "tiltpole/controls/detail/plot_axes.h"

#include "tiltpole/controls/detail/rounding.h"

namespace tiltpole::detail {
namespace {

constexpr Color kAxisColor = Rgb(0, 255, 255);
constexpr Color kLabelColor = Rgb(255, 0, 255);

// Deliberate: no system has a face of this name, so the text comes in what the system puts in its
// place, chosen by the family of sans-serif faces (32).
const Font& LabelFont() {
  static const Font font = {L"Arical", 14, 150, 32};
  return font;
}

void DrawLabel(DrawingContext& face, Point place, const wchar_t* text) {
  face.DrawTextAt(place, TextClip::Clipped, nullptr, text);
}

}  // namespace

void DrawAxes(DrawingContext& face, const Rect& client, const wchar_t* vertical_label) {
  const Point corner = Moved({client.left, client.bottom}, 20, -20);
  const SelectedPen pen(face, SolidPen(1, kAxisColor));
  face.MoveTo(corner);
  face.LineTo(Moved(corner, 50, 0));
  face.LineTo(Moved(corner, 47, -3));
  face.LineTo(Moved(corner, 47, 3));
  face.LineTo(Moved(corner, 50, 0));
  face.MoveTo(corner);
  face.LineTo(Moved(corner, 0, -50));
  face.LineTo(Moved(corner, -3, -47));
  face.LineTo(Moved(corner, 3, -47));
  face.LineTo(Moved(corner, 0, -50));

  const SelectedFont font(face, LabelFont());
  face.SetTextColor(kLabelColor);
  DrawLabel(face, Moved(corner, -3, -68), vertical_label);
  DrawLabel(face, Moved(corner, 55, -8), L"X");
}

}  // namespace tiltpole::detail
