#include "apps/session/session_writer.h"

#include <cstddef>

#include "apps/session/number_text.h"

namespace tiltpole::session {

SessionWriter::SessionWriter(std::ostream& out, const SessionColumns& columns)
    : csv_(out), columns_(columns) {
  const auto write = [this](const std::vector<std::string>& names) {
    for (const auto& name : names) csv_.Text(name);
  };
  write(RequiredColumns());
  if (columns_.antenna) write(AntennaColumns());
  if (columns_.true_tip) write(TrueTipColumns());
  write(columns_.further);
  csv_.EndRow();
}

void SessionWriter::Write(const SessionSample& sample) {
  time_.clear();
  AppendTimeOfDay(time_, sample.sensors.Tag);
  csv_.Text(NameOf(sample.set));
  csv_.Text(time_);
  csv_.Number(sample.sensors.InclineX);
  csv_.Number(sample.sensors.InclineY);
  csv_.Number(sample.sensors.MagneticX_A);
  csv_.Number(sample.sensors.MagneticY_A);
  csv_.Number(sample.sensors.MagneticZ_A);
  csv_.Number(sample.sensors.MagneticX_B);
  csv_.Number(sample.sensors.MagneticY_B);
  csv_.Number(sample.sensors.MagneticZ_B);
  if (columns_.antenna) WritePosition(sample.antenna);
  if (columns_.true_tip) WritePosition(sample.true_tip);
  for (std::size_t i = 0; i < columns_.further.size(); ++i) {
    csv_.Text(i < sample.further.size() ? sample.further[i] : std::string());
  }
  csv_.EndRow();
}

void SessionWriter::WritePosition(const std::optional<xyhCoordinate>& position) {
  if (!position) {
    for (int i = 0; i < 3; ++i) csv_.Empty();
    return;
  }
  csv_.Number(position->x);
  csv_.Number(position->y);
  csv_.Number(position->h);
}

}  // namespace tiltpole::session
