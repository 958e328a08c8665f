#include "apps/field/exports.h"

#include <cmath>
#include <iostream>

#include <nlohmann/json.hpp>

#include "apps/field/point_rows.h"
#include "apps/session/number_text.h"
#include "apps/session/output_file.h"

namespace tiltpole::field {
namespace {

using Json = nlohmann::ordered_json;

// To a tenth of a millimetre, as the points file has it.
Json Length(double metres) {
  if (!std::isfinite(metres)) return nullptr;
  return std::nearbyint(metres * 1e4) / 1e4 + 0.0;
}

Json Angle(double degrees) {
  if (!std::isfinite(degrees)) return nullptr;
  return std::nearbyint(degrees * 1e3) / 1e3 + 0.0;
}

Json FlagList(unsigned flags) {
  Json list = Json::array();
  for (std::size_t i = 0; i < kFlagNames.size(); ++i) {
    if ((flags & (1U << i)) != 0) list.push_back(kFlagNames[i]);
  }
  return list;
}

Json Properties(const StoredPoint& point) {
  std::string time;
  session::AppendTimeOfDay(time, point.time);
  Json json = {{"point", point.number},
               {"flags", FlagList(point.flags)},
               {"samples", point.samples},
               {"seconds", Angle(point.seconds)},
               {"offset_north", Length(point.offset.x)},
               {"offset_east", Length(point.offset.y)},
               {"offset_height", Length(point.offset.h)},
               {"sigma_north", Length(point.sigma_north)},
               {"sigma_east", Length(point.sigma_east)},
               {"sigma_height", Length(point.sigma_height)},
               {"ellipse_major", Length(point.semi_major)},
               {"ellipse_minor", Length(point.semi_minor)},
               {"ellipse_azimuth", Angle(point.semi_major_azimuth)},
               {"spread", Length(point.spread)},
               {"tilt", Angle(point.tilt)},
               {"heading", Angle(point.heading)},
               {"pole_length", Length(point.pole_length)},
               {"calibration", point.calibration},
               {"time", time}};
  if (point.true_error) json["true_error"] = Length(*point.true_error);
  return json;
}

Json Feature(const StoredPoint& point) {
  Json geometry = nullptr;
  if (point.position) {
    geometry = {
        {"type", "Point"},
        {"coordinates",
         {Length(point.position->y), Length(point.position->x), Length(point.position->h)}}};
  }
  return {{"type", "Feature"},
          {"id", point.number},
          {"geometry", geometry},
          {"properties", Properties(point)}};
}

}  // namespace

void WriteCsv(const std::vector<StoredPoint>& points, std::ostream& out) {
  out << PointHeader();
  for (const StoredPoint& point : points) out << PointRow(point);
}

void WriteGeoJson(const std::vector<StoredPoint>& points, std::ostream& out) {
  Json json = {{"type", "FeatureCollection"},
               {"grid", "local: east, north, height in metres"},
               {"features", Json::array()}};
  for (const StoredPoint& point : points) json["features"].push_back(Feature(point));
  out << json.dump(2) << '\n';
}

void Export(const std::vector<StoredPoint>& points, ExportFormat format, const std::string& path) {
  session::OutputFile file(path, std::cout);
  (format == ExportFormat::Csv ? WriteCsv : WriteGeoJson)(points, file.Stream());
  file.Commit();
}

}  // namespace tiltpole::field
