#pragma once

// Points for other programs.

#include <ostream>
#include <string>
#include <vector>

#include "apps/field/stored_point.h"

namespace tiltpole::field {

enum class ExportFormat { Csv, GeoJson };

/// The points as CSV with a header row, numbers as in the points file.
void WriteCsv(const std::vector<StoredPoint>& points, std::ostream& out);

/// The points as a GeoJSON FeatureCollection. Coordinates are east, north, height in metres of the
/// antenna's grid; a point without an antenna position has no geometry, its offset is among the
/// properties.
void WriteGeoJson(const std::vector<StoredPoint>& points, std::ostream& out);

/// Writes a file that appears whole or not at all; session::OutputError if that fails.
/// @param path  UTF-8
void Export(const std::vector<StoredPoint>& points, ExportFormat format, const std::string& path);

}  // namespace tiltpole::field
