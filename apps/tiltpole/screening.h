#pragma once

// A turn of a session, screened.

#include <cstddef>
#include <vector>

#include "apps/session/missing_ranges.h"
#include "apps/session/session_sample.h"

namespace tiltpole::cli {

struct ScreenedTurn {
  std::size_t samples = 0;
  int coverage_percent = 0;
  bool every_sector = false;  ///< each sector of 5 degrees holds a sample
  std::vector<session::MissingRange> missing;
  std::size_t after_time = 0;      ///< left after the samples of a pole that stood still
  std::size_t after_distance = 0;  ///< left after those off the circle
  std::size_t after_azimuth = 0;   ///< left after stretches of repeated azimuths
  bool complete = false;           ///< no two neighbours of the selection are 60 degrees apart
  /// Which samples were selected: their places in the turn, by rising azimuth.
  std::vector<std::size_t> selected;
};

/// Screens the samples of one turn.
/// @param turn   all of one set, `horizontal` or `vertical`
/// @param count  how many samples are wanted; 0 keeps all that pass
ScreenedTurn ScreenTurn(const std::vector<session::SessionSample>& turn, session::SampleSet set,
                        int count);

}  // namespace tiltpole::cli
