#pragma once

// The solver once more, the plain way: every step written down as it is stated and every sine
// computed where it stands. The library computes each of them once; this shows that no bit changes.

#include <cmath>

#include "tiltpole/records/Incline_MagneticCorrectParameter.h"
#include "tiltpole/records/Incline_MagneticTranslationParameter.h"
#include "tiltpole/records/PoseSensorData.h"
#include "tiltpole/records/xyhCoordinate.h"

namespace tiltpole_test {

class PlainPosition {
 public:
  tiltpole::Incline_MagneticCorrectParameter MagneticA;
  tiltpole::Incline_MagneticCorrectParameter MagneticB;
  tiltpole::Incline_MagneticTranslationParameter CoorTrans;
  double LastX = 0.0, LastY = 0.0, LastZ = 0.0, LastInclineX = 0.0, LastInclineY = 0.0;
  double PoleTriangleAngle = 0.0, PoleProjectOffset = 0.0;
  double BiasA = 0.0, BiasB = 0.0;
  int Stationary = 0, Interference = 0;

  void CalculateYaw_A(tiltpole::PoseSensorData& d) {
    const double alpha = Radians(d.InclineX);
    const double beta = Radians(d.InclineY);
    Correct(MagneticA, d.MagneticX_A, d.MagneticY_A, d.MagneticZ_A);
    const double X = d.MagneticX_A;
    const double Y = d.MagneticY_A;
    const double Z = d.MagneticZ_A;
    const double S = std::fabs(X - LastX) + std::fabs(Y - LastY) + std::fabs(Z - LastZ);
    if (!(S > 1000.0) && !(std::fabs(d.InclineX - LastInclineX) > 0.5) &&
        !(std::fabs(d.InclineY - LastInclineY) > 0.5)) {
      Stationary = 1;
    } else {
      LastX = X;
      LastY = Y;
      LastZ = Z;
      LastInclineX = d.InclineX;
      LastInclineY = d.InclineY;
      Stationary = 0;
    }
    d.Yaw_A = Degrees(Heading(alpha, beta, X, Y, Z)) - BiasA;
    if (d.Yaw_A < 0) {
      d.Yaw_A = d.Yaw_A + 360.0;
    } else if (d.Yaw_A > 360.0) {
      d.Yaw_A = d.Yaw_A - 360.0;
    }
    const double gamma =
        std::acos((Square(std::cos(alpha)) * Square(std::sin(beta)) +
                   Square(std::cos(beta)) * Square(std::sin(alpha)) - Square(std::sin(beta)) -
                   Square(std::sin(alpha))) /
                  (2.0 * std::cos(alpha) * std::cos(beta) * std::sin(alpha) * std::sin(beta)));
    d.YawY_A = d.Yaw_A - Degrees(gamma);
  }

  void CalculateYaw_B(tiltpole::PoseSensorData& d) {
    const double alpha = Radians(-d.InclineX);
    const double beta = Radians(-d.InclineY);
    Correct(MagneticB, d.MagneticX_B, d.MagneticY_B, d.MagneticZ_B);
    const double Ex = -(d.MagneticX_A + CoorTrans.dX);
    const double Ey = -(d.MagneticY_A + CoorTrans.dY);
    const double Ez = d.MagneticZ_A + CoorTrans.dZ;
    const double S = std::fabs(Ex - d.MagneticX_B) + std::fabs(Ey - d.MagneticY_B) +
                     std::fabs(Ez - d.MagneticZ_B);
    Interference = S > 300.0 ? 1 : 0;
    const double XB = d.MagneticX_B;
    const double YB = d.MagneticY_B;
    d.MagneticX_B = XB * std::cos(0.0) + YB * std::sin(0.0);
    d.MagneticY_B = -XB * std::sin(0.0) + YB * std::cos(0.0);
    d.Yaw_B =
        Degrees(Heading(alpha, beta, d.MagneticX_B, d.MagneticY_B, d.MagneticZ_B)) + 0.0 - BiasB;
    if (d.Yaw_B < 0) {
      d.Yaw_B = d.Yaw_B + 360.0;
    } else if (d.Yaw_B > 360.0) {
      d.Yaw_B = d.Yaw_B - 360.0;
    }
  }

  double PoletoHorizontal(double tiltX, double tiltY) const {
    const double a = Radians(tiltX);
    const double b = Radians(tiltY);
    return Degrees(1.5707963267948966 -
                   std::asin(std::sqrt(Square(std::sin(b)) + Square(std::sin(a)))));
  }

  double PoleProject(double tiltX, double tiltY, double Y) const {
    double ignored_angle = 0.0;
    double ignored_offset = 0.0;
    return Project(tiltX, tiltY, Y, false, ignored_angle, ignored_offset);
  }

  void Geometry_A(const tiltpole::xyhCoordinate& O, const tiltpole::PoseSensorData& d, double L,
                  tiltpole::xyhCoordinate& result) {
    const double phi = Radians(PoletoHorizontal(d.InclineX, d.InclineY));
    const double R = Radians(
        Project(d.InclineX, d.InclineY, d.Yaw_A, true, PoleTriangleAngle, PoleProjectOffset));
    result.x = O.x + L * std::cos(phi) * std::cos(R);
    result.y = O.y + L * std::cos(phi) * std::sin(R);
    result.h = O.h - L * std::sin(phi);
    PoleTriangleAngle = 180.0;
  }

  void Geometry_B(const tiltpole::xyhCoordinate& O, const tiltpole::PoseSensorData& d, double L,
                  tiltpole::xyhCoordinate& result) const {
    const double phi = Radians(PoletoHorizontal(d.InclineX, d.InclineY));
    double R = PoleProject(Radians(-d.InclineX), Radians(-d.InclineY), d.Yaw_B);
    if (R > 360.0) {
      R = R - 360.0;
    } else if (R < 0) {
      R = R + 360.0;
    }
    R = Radians(R);
    result.x = O.x + L * std::cos(phi) * std::cos(R);
    result.y = O.y + L * std::cos(phi) * std::sin(R);
    result.h = O.h - L * std::sin(phi);
  }

  void Position(tiltpole::PoseSensorData& d, double L, tiltpole::xyhCoordinate& P) {
    CalculateYaw_A(d);
    CalculateYaw_B(d);
    if (std::fabs(Radians(d.InclineX)) < 1e-6 && std::fabs(Radians(d.InclineY)) < 1e-6) {
      P.x = 0.0;
      P.y = 0.0;
      P.h = -L;
      return;
    }
    Geometry_A(tiltpole::xyhCoordinate(), d, L, P);
    double RA = PoleProject(d.InclineX, d.InclineY, d.Yaw_A) - 180.0;
    if (RA < 1e-6) RA = RA + 360.0;
    double RB = PoleProject(-d.InclineX, -d.InclineY, d.Yaw_B) - 180.0;
    if (RB < 1e-6) RB = RB + 360.0;
    if (std::fabs(RB - RA) > 5.0) Interference = 1;
  }

  tiltpole::xyhCoordinate InclinePoint(const tiltpole::xyhCoordinate& P, double s, double e,
                                       double z) const {
    tiltpole::xyhCoordinate point;
    point.x = P.x - s * std::cos(Radians(e)) * std::cos(Radians(z));
    point.y = P.y - s * std::cos(Radians(e)) * std::sin(Radians(z));
    point.h = P.h - s * std::sin(Radians(e));
    return point;
  }

  double Distance(const tiltpole::xyhCoordinate& from, const tiltpole::xyhCoordinate& to) const {
    const double D2 = Square(to.x - from.x) + Square(to.y - from.y) + Square(to.h - from.h);
    return D2 > 1e-6 ? std::sqrt(D2) : 0.0;
  }

  int SolvePoint(const tiltpole::xyhCoordinate& P1, const tiltpole::xyhCoordinate& P2,
                 const tiltpole::xyhCoordinate& P3, double r1, double r2, double r3,
                 tiltpole::xyhCoordinate& result) const {
    const double e12 = (PowerOfOrigin(P1, r1) - PowerOfOrigin(P2, r2)) / 2;
    const double e23 = (PowerOfOrigin(P2, r2) - PowerOfOrigin(P3, r3)) / 2;
    const tiltpole::xyhCoordinate d12 = {P2.x - P1.x, P2.y - P1.y, P2.h - P1.h};
    const tiltpole::xyhCoordinate d23 = {P3.x - P2.x, P3.y - P2.y, P3.h - P2.h};
    const double for_h = d12.h * d23.y - d12.y * d23.h;
    const double for_y = d12.y * d23.h - d23.y * d12.h;
    const double H0 = (d23.y * e12 - d12.y * e23) / for_h;
    const double H1 = (d12.x * d23.y - d23.x * d12.y) / for_h;
    const double Y0 = (d23.h * e12 - d12.h * e23) / for_y;
    const double Y1 = (d12.x * d23.h - d23.x * d12.h) / for_y;
    const double a = 1 + Square(Y1) + Square(H1);
    const double b = -2 * (P1.x + (Y0 - P1.y) * Y1 + H1 * (H0 - P1.h));
    const double c = Square(P1.x) + Square(Y0 - P1.y) + Square(H0 - P1.h) - Square(r1);
    const double delta = Square(b) - 4 * a * c;
    if (delta < 1e-9) return 0;
    const double x1 = (-b + std::sqrt(delta)) / (2 * a);
    const double x2 = (-b - std::sqrt(delta)) / (2 * a);
    const bool second = (H0 - H1 * x2) - (H0 - H1 * x1) < 1e-6;
    result.x = second ? x2 : x1;
    result.y = Y0 - Y1 * result.x;
    result.h = H0 - H1 * result.x;
    return 1;
  }

  int Math(const tiltpole::xyhCoordinate& A, const tiltpole::PoseSensorData& d, double L,
           tiltpole::xyhCoordinate& result) const {
    const double R = std::sqrt(Square(L) + Square(2.0));
    return SolvePoint(A, InclinePoint(A, 2.0, d.InclineX, d.Yaw_A),
                      InclinePoint(A, 2.0, d.InclineY, d.YawY_A), L, R, R, result);
  }

  double Direction(double x, double y) const {
    if (std::fabs(x) < 1e-6 && y > 0) return 90.0;
    if (std::fabs(x) < 1e-6 && y < 0) return 270.0;
    if (std::fabs(x) < 1e-6) return 0.0;
    if (x > 0 && y > 0) return Degrees(std::atan(y / x));
    if (x < 0) return 180.0 + Degrees(std::atan(y / x));
    if (x > 0 && y < 0) return 360.0 + Degrees(std::atan(y / x));
    return 0.0;
  }

 private:
  static double PowerOfOrigin(const tiltpole::xyhCoordinate& P, double r) {
    return Square(r) - Square(P.x) - Square(P.y) - Square(P.h);
  }
  static double Radians(double degrees) { return degrees * 3.141592653589793 / 180.0; }
  static double Degrees(double radians) { return radians * 180.0 / 3.141592653589793; }
  static double Square(double value) { return value * value; }

  static void Correct(const tiltpole::Incline_MagneticCorrectParameter& par, double& x, double& y,
                      double& z) {
    const double mx = x;
    const double my = y;
    const double mz = z;
    x = mx - par.x0;
    y = -(par.a * mx + par.b * my - par.y0);
    z = -(par.c * mx + par.d * my + par.e * mz - par.z0);
  }

  static double Heading(double alpha, double beta, double X, double Y, double Z) {
    const double Hy = std::cos(beta) * Y - std::sin(beta) * Z;
    const double Hx = std::cos(alpha) * X + std::sin(alpha) * std::sin(beta) * Y +
                      std::sin(alpha) * std::cos(beta) * Z;
    double psi = 0.0;
    if (std::fabs(Hx) < 1e-6) {
      if (Hy > 1e-6) {
        psi = 4.71238898038469;
      } else if (Hy < -1e-6) {
        psi = 1.5707963267948966;
      } else {
        psi = 0.0;
      }
    } else if (Hx > 1e-6 && Hy < -1e-6) {
      psi = -std::atan(Hy / Hx);
    } else if (Hx > 1e-6 && Hy > 1e-6) {
      psi = 6.283185307179586 - std::atan(Hy / Hx);
    } else if (Hx < -1e-6) {
      psi = 3.141592653589793 - std::atan(Hy / Hx);
    }
    return psi;
  }

  static double Project(double tiltX, double tiltY, double Y, bool clamp, double& triangle_angle,
                        double& offset) {
    const double alpha = Radians(tiltX);
    const double beta = Radians(tiltY);
    const double phi =
        1.5707963267948966 - std::asin(std::sqrt(Square(std::sin(beta)) + Square(std::sin(alpha))));
    const auto cot = [](double angle) { return 1.0 / std::tan(angle); };
    const auto csc = [](double angle) { return 1.0 / std::sin(angle); };
    const auto angle_of = [clamp](double p, double q, double r, double s, double& t) {
      t = std::sqrt(q * q + s * s);
      double cosine = (p * p + r * r - t * t) / (2.0 * p * r);
      if (clamp && cosine > 1.0) cosine = 1.0;
      if (clamp && cosine < -1.0) cosine = -1.0;
      return std::acos(cosine);
    };
    double R = 0.0;
    double t = 0.0;
    if (std::fabs(alpha) < 1e-6) {
      if (beta > 0) {
        R = Y - 90.0;
        offset = -90.0;
      } else {
        R = Y + 90.0;
        offset = 90.0;
      }
      triangle_angle = 90.0;
    } else if (std::fabs(beta) < 1e-6) {
      if (alpha > 0) {
        R = Y;
        offset = 0.0;
      } else {
        R = Y + 180.0;
        offset = 180.0;
      }
      triangle_angle = 90.0;
    } else if (alpha > 0 && beta > 0) {
      const double r = cot(beta);
      const double A = angle_of(cot(alpha), csc(alpha), r, csc(beta), t);
      R = Y - Degrees(std::acos(r * std::sin(A) / t));
      triangle_angle = Degrees(A);
      offset = -Degrees(std::acos(r * std::sin(A) / t));
    } else if (alpha < 0 && beta > 0) {
      const double r = cot(phi);
      const double A = angle_of(std::fabs(cot(alpha)), std::fabs(csc(alpha)), r, csc(phi), t);
      R = Y - Degrees(A);
      triangle_angle = Degrees(std::acos(r * std::sin(A) / t));
      offset = -Degrees(A);
    } else if (alpha < 0 && beta < 0) {
      const double p = std::fabs(cot(alpha));
      const double q = std::fabs(csc(alpha));
      const double A = angle_of(p, q, cot(phi), csc(phi), t);
      R = Y + Degrees(A);
      triangle_angle = Degrees(std::acos(
          (Square(p) + Square(std::fabs(cot(beta))) - Square(q) - Square(std::fabs(csc(beta)))) /
          (2.0 * p * std::fabs(cot(beta)))));
      offset = Degrees(A);
    } else {
      const double p = std::fabs(cot(beta));
      const double r = cot(phi);
      const double A = angle_of(p, std::fabs(csc(beta)), r, csc(phi), t);
      R = Y + Degrees(std::acos(p * std::sin(A) / t));
      triangle_angle = Degrees(std::acos(r * std::sin(A) / t));
      offset = Degrees(std::acos(p * std::sin(A) / t));
    }
    if (R > 360.0) {
      R = R - 360.0;
    } else if (R < 0) {
      R = R + 360.0;
    }
    return R;
  }
};

}  // namespace tiltpole_test
