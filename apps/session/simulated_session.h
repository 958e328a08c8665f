#pragma once

// A whole session with the simulated pole: both turns and a block of points.

#include <cstdint>

#include "apps/session/session_sample.h"
#include "apps/session/simulated_pole.h"

namespace tiltpole::session {

/// What is done with the pole.
struct SessionPlan {
  std::int64_t samples_per_turn = 360;
  std::int64_t points = 100;
  double largest_tilt = 45.0;  ///< of the pole at the points, 0 to 90 [degrees]
  double wobble = 0.0;         ///< how far the pole sways during the turns [degrees]
};

/// Makes the rows of a session one by one: a turn about the vertical, a turn about the sensor's y
/// axis, then the points, with the antenna's position and where the tip really is.
///
/// The points lie in a square block, five metres apart. The pole's tilts there spread evenly up to
/// the largest and lean in all directions; headings are random. Ten samples share a second.
class SimulatedSession {
 public:
  /// @param pole  stays the caller's, and must outlive the session
  SimulatedSession(const SessionPlan& plan, SimulatedPole& pole, std::uint64_t seed);

  static SessionColumns Columns();
  std::int64_t Rows() const { return 2 * plan_.samples_per_turn + plan_.points; }
  /// Makes the next row; false when all are made.
  bool Next(SessionSample& sample);

 private:
  Attitude AttitudeInTurn(SampleSet set, std::int64_t index) const;
  Attitude AttitudeAtPoint(std::int64_t index);
  void Place(SessionSample& sample, std::int64_t index, const Attitude& attitude) const;

  SessionPlan plan_;
  SimulatedPole& pole_;
  Random random_;
  std::int64_t row_ = 0;
  std::int64_t points_in_line_ = 1;
};

}  // namespace tiltpole::session
