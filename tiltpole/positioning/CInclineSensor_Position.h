#pragma once

/// @file
/// From one sample of the tilted pole to the position of its tip.

#include <cstdint>
#include <string>

#include "tiltpole/export.h"
#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/magnetic_correction.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole {

class CParameterFile;

namespace detail {
struct Tilt;
struct TipAzimuth;
}  // namespace detail

/// Places the tip of a tilted pole: corrects both magnetometers' readings, derives a
/// tilt-compensated heading from each, watches whether the pole stands still and whether the
/// magnetometers agree, and solves the tip.
///
/// Frames: the sensor's x axis points forward; with z up the y axis points left of x. A tilt is
/// positive when its axis rises. Headings run clockwise from the direction in which the corrected
/// field has its x component: from magnetic north, plus the bias angle. In the plane x grows along
/// heading 0 and y along heading 90; h grows upwards.
///
/// Use: set the parameters once (ConfigRead, or the setters: corrections first, bias angles after
/// them, since a correction resets its bias angle); then give every sample to Position, and ask
/// IsStationary and IsMagneticInterference about it.
///
/// A plain value of about 230 bytes: copying copies everything, the flags and references of the
/// last sample included. Nothing allocates but the three operations on the parameter file. An
/// object serves one thread. No operation throws, and none reports degenerate geometry:
/// not-a-number and infinities flow into the results.
class TILTPOLE_EXPORT CInclineSensor_Position {
 public:
  /// Both corrections leave a reading unscaled, the translation and the bias angles are 0, both
  /// flags and all references of the stationarity test are 0.
  CInclineSensor_Position() = default;

  /// @name Parameters
  /// @{

  /// Takes the correction of magnetometer A and sets its bias angle to 0.
  void SetMagneticCorrectPar_A(Incline_MagneticCorrectParameter par);
  /// Takes the correction of magnetometer B and sets its bias angle to 0.
  void SetMagneticCorrectPar_B(Incline_MagneticCorrectParameter par);
  /// The correction of magnetometer A.
  Incline_MagneticCorrectParameter GetMagneticCorrectPar_A() const;
  /// The correction of magnetometer B.
  Incline_MagneticCorrectParameter GetMagneticCorrectPar_B() const;
  /// Takes the translation between the corrected frames; the bias angles stay.
  void SetMagneticTranslationPar(Incline_MagneticTranslationParameter par);
  /// The translation between the corrected frames.
  Incline_MagneticTranslationParameter GetMagneticTranslationPar() const;
  /// Takes what is subtracted from magnetometer A's heading [degrees].
  void SetMagneticBiasAngle_A(double bias);
  /// Takes what is subtracted from magnetometer B's heading [degrees].
  void SetMagneticBiasAngle_B(double bias);
  /// What is subtracted from magnetometer A's heading [degrees].
  double GetMagneticBiasAngle_A() const;
  /// What is subtracted from magnetometer B's heading [degrees].
  double GetMagneticBiasAngle_B() const;

  /// @}
  /// @name The parameter file
  /// 21 lines, see CParameterFile for their form: for each magnetometer "MagneticA.a", "b", "c",
  /// "d", "e", "x0", "y0", "z0", then "CoorTrans.dX", "dY", "dZ", "MagneticBiasAngle_A" and
  /// "MagneticBiasAngle_B", each with ten digits after the point.
  /// @{

  /// Writes the parameters to a file, replacing its whole content.
  ///
  /// The file is emptied first and written after, without waiting for the medium: a full disk, or a
  /// power cut before the system has brought the lines there, leaves an empty file or one that ends
  /// within a line, and the result does not tell. ConfigRead takes from such a file what is whole
  /// and keeps the members for the rest. A value of more than 64 digits before its point can leave
  /// its line cut, see CParameterFile::WriteString; it is then read back as far as it goes.
  ///
  /// @param[in] path  the full path; no folder or extension is added
  /// @return 1 when the file was opened (write errors are not reported); 0 when it could not be,
  ///         and nothing was changed, or when memory ran out
  int ConfigSave(const std::wstring& path) const;

  /// Writes the same bytes as ConfigSave so that they survive a power cut: beside the file first
  /// (its name with ".new" appended), onto the medium, and then in its place in one step. Whoever
  /// reads the path finds the old file or the new one, whole. Takes as long as the medium needs.
  ///
  /// @param[in] path  the full path; a link there is replaced by a plain file
  /// @return 1 when the new file stands at the path; else 0 (not permitted, disk full, out of
  ///         memory), and the old file is as it was
  int ConfigReplace(const std::wstring& path) const;

  /// Reads the parameters from a file. An entry that is missing, empty or without the end of its
  /// line leaves its member as it was; one that is no number sets it to 0.
  ///
  /// @param[in] path  the full path
  /// @return 1 when the file was read, whether or not it held any entry; 0 when it could not be,
  ///         and no member was changed
  int ConfigRead(const std::wstring& path);

  /// @}
  /// @name Measuring
  /// @{

  /// Solves the tip of one sample, as its offset from the antenna.
  ///
  /// Computes both headings, sets both flags, and places the tip with Position_Geometry_A about the
  /// origin. Raises the interference flag also when the lean directions seen through A and through
  /// B differ by more than 5 degrees; the difference is not wrapped at north, so a pole that leans
  /// within a few degrees of heading 0 can raise it with both magnetometers in order.
  ///
  /// When both tilts are within 1e-6 radians of 0 the pole is plumb: the result is (0, 0, -L).
  ///
  /// Accuracy with ideal sensors. The headings read `InclineY` as the turn about the x axis (roll),
  /// the solution reads it as the elevation of the y axis. The two agree to first order only, so
  /// whichever the sensor reports, the model has an error of its own that grows with the tilt. The
  /// worst case over all headings, lean directions and dips of the magnetic field to 70 degrees,
  /// for a pole of 2 m:
  ///
  ///     tilt of     sensor reports elevations    sensor reports the roll
  ///     the pole    heading       tip            heading    tip
  ///      5 deg      0.021 deg     0.06 mm        exact        0.26 mm
  ///     10 deg      0.17 deg      1.0 mm         exact        2.1 mm
  ///     15 deg      0.58 deg      5.2 mm         exact        7.2 mm
  ///     20 deg      1.4 deg       17 mm          exact       17 mm
  ///     30 deg      4.8 deg       84 mm          exact       64 mm
  ///     45 deg     17 deg        413 mm          exact      275 mm
  ///
  /// The error of the tip grows in proportion to the pole's length.
  ///
  /// @param[in,out] data     the sample, raw; its magnetometer fields are replaced by the corrected
  ///                         readings and its headings written. Give every sample once: a second
  ///                         pass corrects it twice.
  /// @param[in] pole_length  from the antenna's phase centre to the tip, in any unit
  /// @param[out] result      the tip's offset from the antenna, in that unit
  /// @return 1
  int Position(PoseSensorData& data, double pole_length, xyhCoordinate& result);

  /// Whether the last sample matched the reference: the corrected reading of A within 1000 counts
  /// (sum of absolute differences) and both tilts within 0.5 degrees. The reference is the first
  /// sample of the still period, so a slow drift ends it; before the first sample it is all zeros.
  ///
  /// @return 1 or 0; 0 before the first sample
  int IsStationary() const;

  /// Whether the magnetometers disagreed on the last sample: B's corrected reading lies more than
  /// 300 counts (sum of absolute differences) from what A's lets expect, or their lean directions
  /// differ (see Position).
  ///
  /// @return 1 or 0; 0 before the first sample
  int IsMagneticInterference() const;

  /// @}
  /// @name Solutions and angles for hosts that have headings of their own
  /// @{

  /// The tip by plane trigonometry from the two tilts and `Yaw_A`.
  ///
  /// Exact where the tilts are the elevations of the two axes and the heading is true: within 1e-9
  /// of the pole length in all four tilt quadrants, from 0.01 to 60 degrees of tilt. An axis whose
  /// tilt is below 1e-6 radians is taken as level, which moves the tip by up to 2e-6 of the length.
  ///
  /// @param[in] origin       the antenna
  /// @param[in] data         `InclineX`, `InclineY`, `Yaw_A` are read
  /// @param[in] pole_length  in the unit of the origin
  /// @param[out] result      the tip
  /// @return 1
  int Position_Geometry_A(xyhCoordinate origin, PoseSensorData data, double pole_length,
                          xyhCoordinate& result);

  /// The tip by plane trigonometry from the two tilts and `Yaw_B`.
  ///
  /// The tip's height and distance are those of Position_Geometry_A, its direction is that of a
  /// pole which leans by a 57th of the tilt: the direction is found with tilts in radians where
  /// degrees are expected. The largest errors of the tip of a 2 m pole, with elevations and a true
  /// heading:
  ///
  ///     tilt     0.1 to 3 deg    5 deg      10 deg    15 deg    20 deg    30 deg    45 deg
  ///     tip      0.11 mm         0.35 mm    2.8 mm    9.4 mm    22 mm     76 mm     263 mm
  ///
  /// Up to 3 degrees that is because an axis within 0.0032 degrees of level is taken as level here.
  /// A pole that is tilted by no more than that has the largest error of this kind, 0.16 mm.
  ///
  /// @param[in] origin       the antenna
  /// @param[in] data         `InclineX`, `InclineY`, `Yaw_B` are read
  /// @param[in] pole_length  in the unit of the origin
  /// @param[out] result      the tip
  /// @return 1
  int Position_Geometry_B(xyhCoordinate origin, PoseSensorData data, double pole_length,
                          xyhCoordinate& result);

  /// The tip as the lower intersection of three spheres: about the antenna with the pole's length,
  /// and about two points 2.0 units along the sensor's axes with the distance that a right angle at
  /// the antenna gives. Needs `Yaw_A` and `YawY_A`, so it runs after Position on the same record.
  ///
  /// Exact about the origin where the tilts are elevations and the heading is true. Give it no
  /// antenna in grid coordinates: their squares cancel in the solution, which costs up to 0.3 mm at
  /// (100, 200, 300) m, some centimetres at 1 km, and more than a metre, or the solution itself, at
  /// 540 km. Solve about (0, 0, 0) and add the antenna.
  ///
  /// After Position it carries the same error of the heading, and so of the tip. For a pole of 2 m
  /// the two differ by less than a millionth of a millimetre from 0.1 degrees of tilt on, but for
  /// an axis that Position takes as level (see Position_Geometry_A), where it is up to 0.004 mm. Of
  /// use for checking one against the other; it fails where either tilt is exactly 0 (not a
  /// number).
  ///
  /// @param[in] antenna      the antenna
  /// @param[in] data         `InclineX`, `InclineY`, `Yaw_A`, `YawY_A` are read
  /// @param[in] pole_length  in the unit of the antenna's position
  /// @param[out] result      the tip; unchanged where the result is 0
  /// @return 1 when a tip was found, not a number when either tilt is exactly 0; 0 when the spheres
  ///         do not meet
  int Position_Math(xyhCoordinate antenna, PoseSensorData data, double pole_length,
                    xyhCoordinate& result);

  /// The angle between the pole and the horizontal plane.
  ///
  /// The pole is normal to both sensor axes, so its deviation from the plumb line is
  /// asin(sqrt(sin^2 a + sin^2 b)), with a and b the elevations of the x and the y axis.
  ///
  /// @param[in] tiltX  elevation of the sensor's x axis [degrees]
  /// @param[in] tiltY  elevation of the sensor's y axis [degrees]
  /// @return the angle [degrees]: 90 for a plumb pole; not a number when the two tilts cannot
  ///         belong to perpendicular axes (sin^2 a + sin^2 b > 1)
  double GetAngleofPoletoHorizontal(double tiltX, double tiltY) const;

  /// The azimuth of the tip, seen from the antenna.
  ///
  /// Unlike in Position_Geometry_A nothing is clamped: tilts that cannot belong to perpendicular
  /// axes give an azimuth that is not a number.
  ///
  /// @param[in] tiltX    elevation of the sensor's x axis [degrees]
  /// @param[in] tiltY    elevation of the sensor's y axis [degrees]
  /// @param[in] heading  of the x axis' horizontal projection [degrees]
  /// @return the azimuth [degrees, 0 to 360]; wrapped once, so a heading outside 0 to 360 can leave
  ///         the range
  double GetAngleofPoleProject(double tiltX, double tiltY, double heading) const;

  /// The direction of a vector, counter-clockwise from the x axis.
  ///
  /// @return [degrees, 0 to 360]; 90 or 270 where x is shorter than 1e-6, 0 where y is 0 too
  double ConverseYaw_True(double x, double y) const;

  /// @}

 protected:
  /// Corrects magnetometer A in place, runs the stationarity test, and writes `Yaw_A` and `YawY_A`.
  ///
  /// `YawY_A` is not wrapped, and not a number when either tilt is exactly 0.
  ///
  /// @return 1
  int CalculateYaw_A(PoseSensorData& data);

  /// Corrects magnetometer B in place, runs the interference test, and writes `Yaw_B`. Comes after
  /// CalculateYaw_A on the same record, whose corrected reading it asks.
  ///
  /// @return 1
  int CalculateYaw_B(PoseSensorData& data);

  /// The point at a length from another, against the direction that rises at @p elevation [degrees]
  /// along @p azimuth [degrees].
  xyhCoordinate GetInclinePoint(xyhCoordinate point, double length, double elevation,
                                double azimuth) const;

  /// The distance of two points; 0 up to a distance of 0.001.
  double GetDistance(xyhCoordinate from, xyhCoordinate to) const;

  /// The lower of the two points at the distances @p r1, @p r2, @p r3 from three centres.
  ///
  /// @param[out] result  the point; unchanged where the result is 0. Not a number when the centres'
  ///                     plane does not determine it as a function of x: centres at one height
  ///                     among them.
  /// @return 1, or 0 when the spheres do not meet or only touch
  int GetSolvePoint(xyhCoordinate P1, xyhCoordinate P2, xyhCoordinate P3, double r1, double r2,
                    double r3, xyhCoordinate& result) const;

  Incline_MagneticCorrectParameter MagneticA;      ///< the correction of magnetometer A
  Incline_MagneticCorrectParameter MagneticB;      ///< the correction of magnetometer B
  Incline_MagneticTranslationParameter CoorTrans;  ///< between the corrected frames
  double LastMagneticX_A = 0.0;  ///< reference of the stationarity test, corrected [counts]
  double LastMagneticY_A = 0.0;  ///< @copydoc LastMagneticX_A
  double LastMagneticZ_A = 0.0;  ///< @copydoc LastMagneticX_A
  double LastInclineX = 0.0;     ///< reference of the stationarity test [degrees]
  double LastInclineY = 0.0;     ///< @copydoc LastInclineX
  /// Working angle of Position_Geometry_A; 180.0 after every run of it, whatever the sample.
  double PoleTriangleAngle = 0.0;
  /// From `Yaw_A` to the azimuth of the tip, as Position_Geometry_A found it [degrees].
  double PoleProjectOffset = 0.0;
  double MagneticBiasAngle_A = 0.0;       ///< subtracted from A's heading [degrees]
  double MagneticBiasAngle_B = 0.0;       ///< subtracted from B's heading [degrees]
  std::int32_t Stationary = 0;            ///< the flag of IsStationary
  std::int32_t MagneticInterference = 0;  ///< the flag of IsMagneticInterference

 private:
  void UpdateHeading_A(const detail::Tilt& tilt, PoseSensorData& data);
  void UpdateHeading_B(const detail::Tilt& reversed, PoseSensorData& data);
  void UpdateStationary(const MagneticReading& field, double inclineX, double inclineY);
  void KeepTipAzimuth(const detail::TipAzimuth& tip);
  template <typename Self, typename Visit>
  static void VisitConfig(Self& self, const Visit& visit);
  void WriteConfig(CParameterFile& file) const;
};

}  // namespace tiltpole
