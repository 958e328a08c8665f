#include "tiltpole/estimation/CMagneticConvert.h"

#include <cmath>

namespace tiltpole {
namespace {

struct PairMeans {
  double source_x = 0.0;
  double source_y = 0.0;
  double target_x = 0.0;
  double target_y = 0.0;
};

PairMeans MeansOf(const std::vector<FourParameterPoint>& points) {
  PairMeans mean;
  for (const FourParameterPoint& point : points) {
    mean.source_x += point.SourceX;
    mean.source_y += point.SourceY;
    mean.target_x += point.TargetX;
    mean.target_y += point.TargetY;
  }
  const auto count = static_cast<double>(points.size());
  mean.source_x /= count;
  mean.source_y /= count;
  mean.target_x /= count;
  mean.target_y /= count;
  return mean;
}

void Centre(std::vector<FourParameterPoint>& points, const PairMeans& mean) {
  for (FourParameterPoint& point : points) {
    point.CentredSourceX = point.SourceX - mean.source_x;
    point.CentredSourceY = point.SourceY - mean.source_y;
    point.CentredTargetX = point.TargetX - mean.target_x;
    point.CentredTargetY = point.TargetY - mean.target_y;
  }
}

}  // namespace

void CMagneticConvert::AddPoint(double SourceX, double SourceY, double TargetX, double TargetY) {
  FourParameterPoint point;
  point.SourceX = SourceX;
  point.SourceY = SourceY;
  point.TargetX = TargetX;
  point.TargetY = TargetY;
  points_.push_back(point);
}

void CMagneticConvert::ClearPoints() { points_.clear(); }

int CMagneticConvert::CalFourParameter() {
  if (points_.empty()) return 0;
  const PairMeans mean = MeansOf(points_);
  Centre(points_, mean);

  double xY = 0.0;
  double yX = 0.0;
  double xX = 0.0;
  double yY = 0.0;
  double xx = 0.0;
  double yy = 0.0;
  for (const FourParameterPoint& point : points_) {
    xY += point.CentredSourceX * point.CentredTargetY;
    yX += point.CentredSourceY * point.CentredTargetX;
    xX += point.CentredSourceX * point.CentredTargetX;
    yY += point.CentredSourceY * point.CentredTargetY;
    xx += point.CentredSourceX * point.CentredSourceX;
    yy += point.CentredSourceY * point.CentredSourceY;
  }
  const double sine_part = xY - yX;
  const double cosine_part = xX + yY;
  const double spread = xx + yy;

  // Deliberate: the offsets are 0 here, not the difference of the means; a host that fits one pair
  // gets the identity. No rounding is allowed for: sources at one point that their mean misses in
  // its last digit give parameters without meaning.
  if (spread == 0.0) {
    parameter_.Rotation = 0.0;
    parameter_.OffsetX = 0.0;
    parameter_.OffsetY = 0.0;
    parameter_.Scale = 1.0;
    return 1;
  }
  parameter_.Rotation = std::atan2(sine_part, cosine_part);
  parameter_.Scale = std::sqrt(sine_part * sine_part + cosine_part * cosine_part) / spread;
  const double k = parameter_.Scale;
  const double sine = std::sin(parameter_.Rotation);
  const double cosine = std::cos(parameter_.Rotation);
  parameter_.OffsetX = mean.target_x - k * cosine * mean.source_x + k * sine * mean.source_y;
  parameter_.OffsetY = mean.target_y - k * sine * mean.source_x - k * cosine * mean.source_y;
  return 1;
}

void CMagneticConvert::SetFourParameter(double OffsetX, double OffsetY, double Rotation,
                                        double Scale, double CenterX, double CenterY) {
  parameter_.OffsetX = OffsetX;
  parameter_.OffsetY = OffsetY;
  parameter_.Rotation = Rotation;
  parameter_.Scale = Scale;
  parameter_.CenterX = CenterX;
  parameter_.CenterY = CenterY;
}

Magnetic_FourParameter CMagneticConvert::GetFourParameter() const { return parameter_; }

void CMagneticConvert::XYtoXY(double& x, double& y) const {
  const double k = parameter_.Scale;
  const double sine = std::sin(parameter_.Rotation);
  const double cosine = std::cos(parameter_.Rotation);
  const double cx = parameter_.CenterX;
  const double cy = parameter_.CenterY;
  // Deliberate: the terms of the centre are scaled too, so with k other than 1 the centre is no
  // fixed point; hosts rely on the numbers as they are.
  const double px = (1.0 - cosine) * cx + sine * cy + (1.0 - k) * cx;
  const double py = (1.0 - cosine) * cy - sine * cx + (1.0 - k) * cy;
  const double source_x = x;
  const double source_y = y;
  x = k * (cosine * source_x - sine * source_y + px) + parameter_.OffsetX;
  y = k * (sine * source_x + cosine * source_y + py) + parameter_.OffsetY;
}

void CMagneticConvert::XYtoXY1(double& x, double& y) const {
  // Deliberate: the centre has no part in the way back.
  const double k = parameter_.Scale;
  const double sine = std::sin(parameter_.Rotation);
  const double cosine = std::cos(parameter_.Rotation);
  const double dx = parameter_.OffsetX;
  const double dy = parameter_.OffsetY;
  const double target_x = x;
  const double target_y = y;
  x = -(dx * cosine + dy * sine) / k + (target_x * cosine + target_y * sine) / k;
  y = (dx * sine - dy * cosine) / k + (-target_x * sine + target_y * cosine) / k;
}

}  // namespace tiltpole
