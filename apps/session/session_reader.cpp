#include "apps/session/session_reader.h"

#include <algorithm>
#include <utility>

#include "apps/session/input_error.h"
#include "apps/session/number_text.h"

namespace tiltpole::session {

SessionReader::SessionReader(std::istream& in, std::string name)
    : csv_(in, std::move(name)),
      required_(csv_.Require(RequiredColumns())),
      antenna_(FindTriple(AntennaColumns())),
      true_tip_(FindTriple(TrueTipColumns())) {
  columns_.antenna = antenna_.has_value();
  columns_.true_tip = true_tip_.has_value();
  FindFurther();
}

std::optional<SessionReader::Triple> SessionReader::FindTriple(
    const std::vector<std::string>& names) const {
  const auto there = [this](const std::string& name) { return csv_.Find(name).has_value(); };
  if (std::none_of(names.begin(), names.end(), there)) return std::nullopt;
  const auto places = csv_.Require(names);
  return Triple{places[0], places[1], places[2]};
}

void SessionReader::FindFurther() {
  const auto known = [](const std::string& name) {
    for (const auto* names : {&RequiredColumns(), &AntennaColumns(), &TrueTipColumns()}) {
      if (std::find(names->begin(), names->end(), name) != names->end()) return true;
    }
    return false;
  };
  for (std::size_t i = 0; i < csv_.Columns().size(); ++i) {
    if (known(csv_.Columns()[i])) continue;
    further_.push_back(i);
    columns_.further.push_back(csv_.Columns()[i]);
  }
}

// A position may be left out of a row, but not a part of it.
std::optional<xyhCoordinate> SessionReader::ReadTriple(const std::optional<Triple>& places) const {
  if (!places) return std::nullopt;
  const auto empty = [this](std::size_t i) { return Trimmed(csv_.Field(i)).empty(); };
  if (std::all_of(places->begin(), places->end(), empty)) return std::nullopt;
  xyhCoordinate position;
  position.x = csv_.Number((*places)[0]);
  position.y = csv_.Number((*places)[1]);
  position.h = csv_.Number((*places)[2]);
  return position;
}

bool SessionReader::Next(SessionSample& sample) {
  if (!csv_.Next()) return false;

  const auto set = SampleSetFromName(Trimmed(csv_.Field(required_[0])));
  if (!set) {
    csv_.Fail(required_[0], Quoted(csv_.Field(required_[0])) +
                                " is no set; expected horizontal, vertical or measure");
  }
  const auto time = ParseTimeOfDay(csv_.Field(required_[1]));
  if (!time) {
    csv_.Fail(required_[1], Quoted(csv_.Field(required_[1])) +
                                " is no time of day; expected HH:MM:SS from 00:00:00 to 23:59:59");
  }
  sample.set = *set;
  sample.sensors = PoseSensorData();
  sample.sensors.Tag = *time;
  sample.sensors.InclineX = csv_.Number(required_[2]);
  sample.sensors.InclineY = csv_.Number(required_[3]);
  sample.sensors.MagneticX_A = csv_.Number(required_[4]);
  sample.sensors.MagneticY_A = csv_.Number(required_[5]);
  sample.sensors.MagneticZ_A = csv_.Number(required_[6]);
  sample.sensors.MagneticX_B = csv_.Number(required_[7]);
  sample.sensors.MagneticY_B = csv_.Number(required_[8]);
  sample.sensors.MagneticZ_B = csv_.Number(required_[9]);
  sample.antenna = ReadTriple(antenna_);
  sample.true_tip = ReadTriple(true_tip_);
  sample.further.resize(further_.size());
  for (std::size_t i = 0; i < further_.size(); ++i) sample.further[i] = csv_.Field(further_[i]);
  return true;
}

}  // namespace tiltpole::session
