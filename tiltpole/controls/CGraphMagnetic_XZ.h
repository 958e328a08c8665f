#pragma once

/// @file
/// A scatter plot of magnetometer readings: x to the right, z upwards.

#include <string>

#include "tiltpole/controls/MagneticPoint.h"
#include "tiltpole/controls/detail/magnetic_plot.h"
#include "tiltpole/platform/window.h"

namespace tiltpole {

/// A black field with a small green cross for each reading, at its x and z components, and red
/// crosses for centres that the host sets; two arrows say which axis is which. CGraphMagnetic_XY is
/// its companion.
///
/// A host calls Create, which makes the window, and then AddTrackPoint for each reading. Only the
/// new cross is drawn then, whatever came before. Once more than 5 readings have fallen outside
/// of the view, it is fitted to all of them (ZoomAll).
///
/// The view is kept from one run to the next in the file GraphMagnetic_XZ.cfg in the folder of the
/// running program (the folder is its full file name, of which at most 260 characters count, cut
/// before the last separator). On Windows the two are joined with a backslash, elsewhere with a
/// slash. Where that folder cannot be written to, the view lives as long as the control. The file
/// is one line:
///
///     GRAPHMAGNETIC_XZ:0, -500, 3.000000,
///
/// with the reading that the left edge shows, the one that the bottom edge shows [counts], and the
/// scale [counts per pixel].
///
/// The picture keeps the size that the window had when it was created, or when it came to a screen
/// of another scale. All calls come from the thread of the user interface.
///
/// Where memory runs out, std::bad_alloc leaves an operation: what it had taken from the windowing
/// system is given back, and a later paint shows the whole picture. Nothing else is thrown.
class TILTPOLE_CONTROLS_EXPORT CGraphMagnetic_XZ : public ChildWindow {
 public:
  /// Loads the view of the run before; without one the view starts at (0, -500), at the left and
  /// the bottom edge, with 3 counts per pixel.
  CGraphMagnetic_XZ();
  ~CGraphMagnetic_XZ() override;

  /// Creates the window, a child with a sunken edge, and draws the picture.
  ///
  /// @param[in] ClassName,WindowName  ignored, may be null
  /// @param[in] Style   the window's native style; 0x50000000 is a visible child
  /// @param[in] Place   position and size, edges included, in the parent [pixels]
  /// @param[in] Parent  as the windowing system names it; null: none
  /// @param[in] Id      the child's number in its parent
  /// @return 1, also when the window could not be created. The plot then collects points and draws
  ///         nothing.
  int Create(const wchar_t* ClassName, const wchar_t* WindowName, std::uint32_t Style,
             const Rect& Place, ParentWindow Parent, unsigned Id);

  /// Adds a reading and draws its cross at once when it lies in the view.
  ///
  /// Otherwise it counts as missed, and the first reading after 5 missed ones fits the view. A
  /// scale below 1e-6 or above 1000 counts per pixel lets every reading count (once more).
  ///
  /// @param[in] x,y,z  the reading [counts], any ints; y is kept, but not shown
  void AddTrackPoint(int x, int y, int z);

  /// Adds a centre and draws its red cross at once when it lies in the view. It never moves the
  /// view.
  void AddCenterPoint(int x, int y, int z);

  /// Forgets all readings and centres, and redraws. The view stays.
  void Clear();

  /// Fits the view to the readings, not to the centres, so that they stand in the middle with a
  /// margin of one half, saves it, and redraws. With fewer than two readings nothing happens.
  ///
  /// When all readings are alike the scale becomes 0, and every point stands at the pixel (0, 0).
  /// While the window has no area the scale becomes infinite or not-a-number, and so it is saved;
  /// the next fit puts it right.
  void ZoomAll();

  /// The distance of two points of the client area [pixels], truncated; at most the largest int.
  int GetDistance(const Point& a, const Point& b) const;

  /// Draws the crosses of all readings, in their order, whether or not they lie in the view.
  ///
  /// @param[in] context  null: nothing happens
  void DrawTrackPoints(DrawingContext* context);

  /// Draws the crosses of all centres, in their order, whether or not they lie in the view.
  ///
  /// @param[in] context  null: nothing happens
  void DrawCenterPoints(DrawingContext* context);

  /// Redraws axes, readings and centres off screen; the window shows them with its next paint.
  void InvalidateCtrl();

  /// The pixel at which a reading stands, rounded by adding one half and truncating towards zero.
  ///
  /// @param[in] WorldX,WorldV  x and z of the reading [counts]
  /// @param[out] ClientX,ClientY  the pixel. (0, 0) while the scale is below 1e-6 or not-a-number;
  ///             the bottom left corner while it is infinite. What lies beyond the range of an int
  ///             becomes its nearest end.
  void WorldToClient(int WorldX, int WorldV, int& ClientX, int& ClientY) const;

  /// The reading that a pixel shows, truncated towards zero.
  ///
  /// Mind the way in: the pixel's x is taken from WorldX.
  ///
  ///     int world_x = pixel_x, world_v = 0;
  ///     plot.ClientToWorld(pixel_x, pixel_y, world_x, world_v);
  ///
  /// @param[in] ClientX  not looked at
  /// @param[in] ClientY  the pixel's y
  /// @param[in,out] WorldX  the pixel's x on entry; x of the reading on return [counts]
  /// @param[out] WorldV  z of the reading [counts]
  void ClientToWorld(int ClientX, int ClientY, int& WorldX, int& WorldV) const;

  /// Writes the view to its file.
  /// @return 1; 0 when the file cannot be opened for writing, and it is as it was then. A full disk
  ///         is not reported: it leaves an empty file or the beginning of the line.
  int ConfigSave();

  /// Takes the view from its file, of which the first 999 bytes count; a number that is missing
  /// there leaves its part of the view, and nothing is drawn.
  /// @return 1, or 0 when there is no file to read; the view stays then
  int ConfigRead();

  /// Paints the window: the field with the axes, and the crosses over it, in one copy.
  void OnPaint() override;

  /// 205 x 205 pixels, for a layout that asks.
  Size PreferredSize() const override;
  /// What a screen reader calls it: the plot with its axes, in English.
  std::wstring AccessibleName() const override;
  /// How many readings were added.
  std::wstring AccessibleValue() const override;

 private:
  detail::MagneticPlot plot_;
};

}  // namespace tiltpole
