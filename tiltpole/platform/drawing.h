#pragma once

/// @file
/// The drawing vocabulary of the controls: a small set of operations with the meaning that the
/// native drawing system of Windows (GDI) gives them. The backends say how each is done; this
/// header says what must come out, so that a control looks the same whatever draws it.
///
/// Coordinates are whole pixels, x to the right and y downwards; the pixel (x, y) is the unit
/// square from the corner (x, y) to (x + 1, y + 1). Outlines and fills are not smoothed: a pixel is
/// covered or it is not. Where a screen has more than one device pixel to a pixel of these
/// coordinates, a backend draws the same shapes in the finer raster; a picture that a control keeps
/// is drawn anew when the number changes (DrawingContext::HasScaleOf).
///
/// Every operation takes every int. What a backend hands on is first limited to
/// +-kCoordinateLimit, far outside of any window, so a shape that reaches beyond may bend out
/// there, and nothing overflows.

#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "tiltpole/controls_export.h"

namespace tiltpole {

/// A 24-bit colour.
struct Color {
  std::uint8_t red = 0;    ///< 0 to 255
  std::uint8_t green = 0;  ///< 0 to 255
  std::uint8_t blue = 0;   ///< 0 to 255

  /// Whether all three parts are alike.
  friend constexpr bool operator==(const Color& a, const Color& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
  }
  /// Whether any part differs.
  friend constexpr bool operator!=(const Color& a, const Color& b) { return !(a == b); }
};

/// The colour of three parts, each 0 to 255.
constexpr Color Rgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  return {red, green, blue};
}

/// A place [pixels].
struct Point {
  int x = 0;  ///< to the right
  int y = 0;  ///< downwards

  /// Whether both coordinates are alike.
  friend constexpr bool operator==(const Point& a, const Point& b) {
    return a.x == b.x && a.y == b.y;
  }
  /// Whether a coordinate differs.
  friend constexpr bool operator!=(const Point& a, const Point& b) { return !(a == b); }
};

/// A size [pixels].
struct Size {
  int width = 0;   ///< to the right
  int height = 0;  ///< downwards
};

namespace detail {

/// The sum and the difference of any two ints, kept at the nearest end of the range.
constexpr int SaturatedInt(std::int64_t value) {
  using Limits = std::numeric_limits<int>;
  if (value < Limits::min()) return Limits::min();
  if (value > Limits::max()) return Limits::max();
  return static_cast<int>(value);
}
constexpr int SaturatedSum(int a, int b) { return SaturatedInt(std::int64_t{a} + b); }
constexpr int SaturatedDifference(int a, int b) { return SaturatedInt(std::int64_t{a} - b); }

}  // namespace detail

/// A box: the left and top edges belong to it, the right and bottom edges are outside.
struct Rect {
  int left = 0;    ///< first column
  int top = 0;     ///< first row
  int right = 0;   ///< the column after the last
  int bottom = 0;  ///< the row after the last

  /// Columns, negative with the edges in the wrong order; kept within the range of int.
  constexpr int Width() const { return detail::SaturatedDifference(right, left); }
  /// Rows, likewise.
  constexpr int Height() const { return detail::SaturatedDifference(bottom, top); }
  /// The middle of opposite edges, halves truncated towards zero.
  constexpr Point Center() const {
    return {static_cast<int>((std::int64_t{left} + right) / 2),
            static_cast<int>((std::int64_t{top} + bottom) / 2)};
  }
  /// Whether a pixel belongs to the box.
  constexpr bool Contains(Point point) const {
    return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
  }

  /// Whether all four edges are alike.
  friend constexpr bool operator==(const Rect& a, const Rect& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
  }
  /// Whether an edge differs.
  friend constexpr bool operator!=(const Rect& a, const Rect& b) { return !(a == b); }
};

/// No coordinate beyond this, on either side of zero, reaches a drawing system: each of them can
/// compute safely with these, and no window is as large.
constexpr int kCoordinateLimit = 30000;

/// A coordinate as a backend hands it on to the drawing system.
constexpr int LimitCoordinate(int coordinate) {
  if (coordinate < -kCoordinateLimit) return -kCoordinateLimit;
  if (coordinate > kCoordinateLimit) return kCoordinateLimit;
  return coordinate;
}

/// What lines and outlines are drawn with.
///
/// A solid pen of width 1 (or less) sets the pixels next to the ideal line. A wider one is a round
/// pen moved along the line with its middle on it: ends and joins are round.
/// The null pen draws nothing: shapes have no outline then, and a filled rectangle or ellipse is
/// one pixel smaller at the right and at the bottom, as if the outline were there but invisible.
struct Pen {
  /// Whether it draws at all.
  enum class Style {
    Solid,  ///< a line without gaps
    Null,   ///< nothing
  };

  Style style = Style::Solid;  ///< whether it draws
  int width = 1;               ///< [pixels]
  Color color;                 ///< of the line; black by default

  /// Whether style, width and colour are alike.
  friend bool operator==(const Pen& a, const Pen& b) {
    return a.style == b.style && a.width == b.width && a.color == b.color;
  }
};

/// A pen that draws.
/// @param[in] width  [pixels]
/// @param[in] color  of the line
constexpr Pen SolidPen(int width, Color color) { return {Pen::Style::Solid, width, color}; }
/// The pen that draws nothing.
constexpr Pen NullPen() { return {Pen::Style::Null, 1, {}}; }

/// What the inside of shapes is filled with: one solid colour.
struct Brush {
  Color color;  ///< black by default

  /// Whether the colours are alike.
  friend bool operator==(const Brush& a, const Brush& b) { return a.color == b.color; }
};

/// A font, asked for by name. Where the system lacks the face, its own choice stands in, and the
/// cell height holds all the same.
struct Font {
  std::wstring face;  ///< empty: the font that a context starts with (the system's)
  int height = 0;     ///< of a character cell, from the top of accents to the descent [pixels]
  int weight = 0;     ///< 0 whatever is usual, 400 normal, 700 bold
  /// Which kind of face may stand in: 0 any, 32 one of varying width without serifs.
  int pitch_and_family = 0;

  /// Whether the same font is asked for.
  friend bool operator==(const Font& a, const Font& b) {
    return a.face == b.face && a.height == b.height && a.weight == b.weight &&
           a.pitch_and_family == b.pitch_and_family;
  }
};

/// What becomes of the character cells behind a text.
enum class BackgroundMode {
  Opaque,       ///< they are filled with the background colour
  Transparent,  ///< they stay as they are
};

/// How a block copy combines source and destination; the values are the native codes.
enum class RasterOperation : std::uint32_t {
  Copy = 0x00CC0020,  ///< SRCCOPY: the source replaces the destination
  Or = 0x00EE0086,    ///< SRCPAINT: bit by bit, source or destination
};

/// The options of DrawTextAt; the value is the native bit.
enum class TextClip : std::uint32_t {
  None = 0,
  Clipped = 4,  ///< ETO_CLIPPED: to the clip rectangle. Without one it has no effect.
};

/// An off-screen picture with the colours of a window. It comes black.
///
/// It belongs to the one who created it. It must outlive its being selected into a context.
class TILTPOLE_CONTROLS_EXPORT Bitmap {
 public:
  virtual ~Bitmap();
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;

 protected:
  Bitmap();
};

/// Something to draw on: a window's client area while it paints or between paints, or a bitmap.
///
/// A context starts with: a solid 1-pixel black pen, a solid white brush, the system's font, black
/// text on an opaque white background, the current position (0, 0). Drawing outside of the window
/// or bitmap is clipped without a trace.
class TILTPOLE_CONTROLS_EXPORT DrawingContext {
 public:
  virtual ~DrawingContext();
  DrawingContext(const DrawingContext&) = delete;
  DrawingContext& operator=(const DrawingContext&) = delete;

  /// @name Memory contexts and bitmaps
  /// @{

  /// A context that draws into memory, in the manner of this one.
  ///
  /// It starts with a bitmap of its own of one pixel. It does not refer to this context and may
  /// outlive it.
  /// @return null when the system has nothing left to give
  virtual std::unique_ptr<DrawingContext> CreateCompatibleContext() = 0;

  /// A black bitmap with the colours of this context.
  ///
  /// @param[in] width,height  [pixels]; where one is below 1 the bitmap has a single pixel
  /// @return null when the system has nothing left to give
  virtual std::unique_ptr<Bitmap> CreateCompatibleBitmap(int width, int height) = 0;

  /// Makes a memory context draw into a bitmap. Not for the context of a window.
  ///
  /// A bitmap can be selected into one context at a time; a context that goes away lets go of it.
  ///
  /// @param[in] bitmap  made by the same backend; null is ignored
  /// @return the bitmap that was selected before: the context's own one at first, which may be
  ///         selected back as long as the context lives
  virtual Bitmap* SelectBitmap(Bitmap* bitmap) = 0;

  /// Whether both contexts have as many device pixels to a pixel of these coordinates. A window
  /// that comes to another screen may get another number; a picture in memory keeps its own, and no
  /// longer fits the window when it is copied there.
  ///
  /// @param[in] other  of the same backend
  virtual bool HasScaleOf(const DrawingContext& other) const = 0;
  /// @}

  /// @name What is drawn with
  /// Each returns what was in force before, so that it can be put back.
  /// @{

  /// The pen of lines and outlines.
  virtual Pen SelectPen(const Pen& pen) = 0;
  /// The brush that fills rectangles, ellipses and polygons.
  virtual Brush SelectBrush(const Brush& brush) = 0;
  /// The font of texts.
  virtual Font SelectFont(Font font) = 0;
  /// The colour of texts.
  virtual Color SetTextColor(Color color) = 0;
  /// The colour of the cells behind a text, where the mode is opaque.
  virtual Color SetBackgroundColor(Color color) = 0;
  /// Whether the cells behind a text are filled.
  virtual BackgroundMode SetBackgroundMode(BackgroundMode mode) = 0;
  /// @}

  /// @name Lines and shapes
  /// @{

  /// Makes a point the current position, and draws nothing.
  virtual void MoveTo(Point point) = 0;

  /// Draws with the pen from the current position up to, but without, the pixel of a point, which
  /// becomes the current position. To the current position itself: nothing.
  virtual void LineTo(Point point) = 0;

  /// A rectangle filled with the brush and outlined with the pen. The middle of the outline runs on
  /// the outermost pixels inside of the box: columns left and right - 1, rows top and bottom - 1.
  /// Edges in the wrong order are put right; an empty box draws nothing.
  virtual void DrawRectangle(const Rect& box) = 0;

  /// The ellipse that the same box encloses, filled with the brush and outlined with the pen.
  virtual void DrawEllipse(const Rect& box) = 0;

  /// A closed polygon outlined with the pen and filled with the brush, where the outline crosses
  /// itself by the even-odd rule. The current position stays.
  ///
  /// @param[in] corners,count  at least two corners; with fewer nothing is drawn
  virtual void DrawPolygon(const Point* corners, int count) = 0;

  /// Fills all pixels of a box with a brush, without an outline. An empty box, or one with its
  /// edges in the wrong order, fills nothing.
  virtual void FillRectangle(const Rect& box, const Brush& brush) = 0;
  /// @}

  /// @name Text
  /// One line without line ends, in the font, text colour and background in force.
  /// @{

  /// Text with the top of its cells at the top of a box, horizontally in the middle of the box,
  /// clipped to the box (DT_CENTER and nothing else).
  virtual void DrawCenteredText(const std::wstring& text, const Rect& box) = 0;

  /// Text with the top left corner of its first cell at a point.
  ///
  /// @param[in] clip_box  what TextClip::Clipped clips to; null: nothing is clipped
  virtual void DrawTextAt(Point point, TextClip clip, const Rect* clip_box,
                          const std::wstring& text) = 0;
  /// @}

  /// Copies a block of pixels from another context of the same backend.
  ///
  /// Pixels that lie outside of the source leave the destination as it was.
  ///
  /// @param[in] place  where to, in this context; an empty box copies nothing
  /// @param[in] source,source_corner  from where: the pixel that goes to the top left of place
  virtual void CopyBlock(const Rect& place, DrawingContext& source, Point source_corner,
                         RasterOperation operation) = 0;

 protected:
  DrawingContext();
};

/// The colour in which the system shows the face of a button. Defined by the backend.
TILTPOLE_CONTROLS_EXPORT Color SystemButtonFaceColor();

namespace detail {

/// Selects a pen for as long as it lives, and then puts back what was there. The font and the brush
/// have the same below.
class SelectedPen {
 public:
  SelectedPen(DrawingContext& context, const Pen& pen)
      : context_(context), previous_(context.SelectPen(pen)) {}
  ~SelectedPen() { context_.SelectPen(previous_); }
  SelectedPen(const SelectedPen&) = delete;
  SelectedPen& operator=(const SelectedPen&) = delete;

 private:
  DrawingContext& context_;
  Pen previous_;
};

class SelectedBrush {
 public:
  SelectedBrush(DrawingContext& context, const Brush& brush)
      : context_(context), previous_(context.SelectBrush(brush)) {}
  ~SelectedBrush() { context_.SelectBrush(previous_); }
  SelectedBrush(const SelectedBrush&) = delete;
  SelectedBrush& operator=(const SelectedBrush&) = delete;

 private:
  DrawingContext& context_;
  Brush previous_;
};

class SelectedFont {
 public:
  SelectedFont(DrawingContext& context, const Font& font)
      : context_(context), previous_(context.SelectFont(font)) {}
  // Moved: putting a font back must not need memory.
  ~SelectedFont() { context_.SelectFont(std::move(previous_)); }
  SelectedFont(const SelectedFont&) = delete;
  SelectedFont& operator=(const SelectedFont&) = delete;

 private:
  DrawingContext& context_;
  Font previous_;
};

}  // namespace detail
}  // namespace tiltpole
