#pragma once

// What all pictures of the report are made of: a scale from values to places, ticks, points.

#include <string>
#include <vector>

#include "apps/session/number_text.h"
#include "apps/tiltpole/report/markup.h"

namespace tiltpole::cli {

/// The place of a value along one axis.
struct Scale {
  double from = 0.0;
  double to = 1.0;
  double place_from = 0.0;
  double place_to = 1.0;

  double operator()(double value) const {
    return place_from + (value - from) / (to - from) * (place_to - place_from);
  }
  bool Holds(double value) const { return value >= from && value <= to; }
};

/// Where the curve or the points stand in a picture.
struct Chart {
  Scale x;
  Scale y;
};

struct Tick {
  double value;
  std::string text;
};

/// Ticks at 1, 2 or 5 times a power of ten, three to seven of them.
std::vector<Tick> RoundTicks(const Scale& scale);
/// Ticks every 90 degrees from 0 to 360.
std::vector<Tick> AzimuthTicks();

/// A coordinate in a picture.
inline std::string Place(double value) { return session::FixedText(value, 1); }

/// Begins a picture of a size, with a name for those who cannot see it; Close ends it.
void OpenPicture(Markup& page, const char* kind, double width, double height,
                 const std::string& name);
void Line(Markup& page, const char* kind, double x1, double y1, double x2, double y2);
/// @param anchor  start, middle or end: which part of the text stands at the place
void Label(Markup& page, double x, double y, const char* anchor, const std::string& text);
/// The chart's frame with grid lines, their values and what the axes are.
void Axes(Markup& page, const Chart& chart, const std::vector<Tick>& x_ticks,
          const std::vector<Tick>& y_ticks, const std::string& x_name, const std::string& y_name);

/// Dots, as one path: a page with thousands of them stays small. One outside of the chart is put on
/// its edge, in another colour.
class Dots {
 public:
  void Add(const Chart& chart, double x, double y);
  void Draw(Markup& page) const;
  int Beyond() const { return beyond_; }

 private:
  std::string inside_path_;
  std::string beyond_path_;
  int inside_ = 0;
  int beyond_ = 0;
};

}  // namespace tiltpole::cli
