#pragma once

// Plays a part of the C interface beside the C++ classes behind it. Each player has one handle, or
// none: then every call must say so. The calls of all players come in any order.

#include <memory>
#include <vector>

#include "fuzz/bytes.h"
#include "tiltpole/tiltpole_c.h"

namespace tiltpole_fuzz {

/// What the calls of all players take and leave for each other.
struct Shared {
  /// Of each turn, raw.
  std::vector<tiltpole_sample> samples[2];
  tiltpole_correction correction[2] = {};
  tiltpole_translation translation = {};
};

class Player {
 public:
  Player() = default;
  virtual ~Player() = default;
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  /// One call, or two that belong together.
  virtual void Step(Bytes& bytes, Shared& shared) = 0;
};

std::unique_ptr<Player> CalibrationPlayer();
std::unique_ptr<Player> ParameterFilePlayer();
std::unique_ptr<Player> PositionPlayer();
std::unique_ptr<Player> QualityPlayer();
std::unique_ptr<Player> HorizontalScreeningPlayer();
std::unique_ptr<Player> TipPlayer();
std::unique_ptr<Player> TransformationPlayer();
std::unique_ptr<Player> VerticalScreeningPlayer();

}  // namespace tiltpole_fuzz
